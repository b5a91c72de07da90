#include "session_script.h"

#include "host_sim/values/error.h"

namespace {

// Only a region of the output is shown, so that writes outside it are caught.
void renderOnce(host_sim::Host& host, host_sim::Instance& effect) {
    host_sim::Frame input(host.format(8), 4, 3);
    host_sim::Frame output(host.format(8), 8, 6, {.padding = 12, .fill = 0x11});
    output.select({2, 1, 4, 3});
    effect.render(input, output);
}

void useText(host_sim::Instance& effect) {
    const host_sim::ArbitraryCalls calls = effect.arbitraryCalls(kText);
    calls.compare(effect.arbitrary(kText), effect.arbitrary(kText));
    effect.scan(kText, "scanned");
    effect.flatten(kText);
    effect.print(kText);
    effect.unflatten(kText, {'f', 'l', 'a', 't'});
}

void useEffect(host_sim::Host& host) {
    host.start();
    host_sim::Instance& effect = host.apply();
    renderOnce(host, effect);
    effect.press(kButton);  // an update of the UI follows
    effect.command(PF_Cmd_DO_DIALOG);
    effect.label(kButton);
    useText(effect);
}

}  // namespace

std::vector<std::string> runSession(const host_sim::Personality& personality) {
    host_sim::Host host(TEST_MODULE, personality);
    std::string stop;
    try {
        useEffect(host);
    } catch (const host_sim::SimError& error) {
        stop = error.what();
    }
    std::vector<std::string> problems = host.close();
    if (!stop.empty()) problems.push_back(stop);
    return problems;
}

host_sim::Personality withFault(host_sim::Personality personality, const std::string& fault) {
    personality.name = fault;
    return personality;
}
