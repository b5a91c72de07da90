#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>

#include "looks/words.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/look_commands.h"
#include "tintwell_host/look_files/each_file.h"
#include "tintwell_host/look_files/look_file.h"
#include "tintwell_host/look_files/table.h"

namespace program {
namespace {

using Json = nlohmann::ordered_json;
using looks::spell;

// What the look is, in one line; empty for one that could not be read.
std::string headOf(const looks::Check& check) {
    if (!check.facts) return {};
    const tw::Lut3D& lut = check.lut;
    std::string head = lut.name.empty() ? "without a name" : "\"" + lut.name + "\"";
    if (lut.id != 0) head += ", match " + std::to_string(lut.id);
    head += ", " + std::to_string(lut.size) + " points an axis, values " +
            spell(check.facts->lowest) + " to " + spell(check.facts->highest);
    if (check.precision) {
        head += "; the text keeps them within " + spell(check.precision->largest) +
                " steps of 8 bits, " + spell(check.precision->mean) + " on average";
    }
    return head;
}

void print(const CheckedLook& look) {
    std::printf("%s: %s\n", plain(look.origin).c_str(),
                look.check.works ? "works" : "would not work");
    if (const std::string head = headOf(look.check); !head.empty()) {
        std::printf("        %s\n", plain(head).c_str());
    }
    for (const looks::Finding& finding : look.check.findings) {
        std::printf("  %-5s %s\n", looks::wordOf(finding.weight), plain(finding.words).c_str());
        if (!finding.advice.empty()) std::printf("        %s\n", finding.advice.c_str());
    }
}

Json jsonOf(const looks::ChannelFacts& channel) {
    return {{"fall", channel.fall},
            {"fallAt", channel.fallAt},
            {"flatUpTo", channel.flatUpTo},
            {"flatFrom", channel.flatFrom}};
}

Json jsonOf(const looks::Facts& facts) {
    return {{"points", facts.points},
            {"notNumbers", facts.notNumbers},
            {"lowest", facts.lowest},
            {"highest", facts.highest},
            {"below", facts.below},
            {"above", facts.above},
            {"duplicates", facts.duplicates},
            {"largestChange", facts.largestChange},
            {"black", facts.black},
            {"white", facts.white},
            {"cast", facts.cast},
            {"castAt", facts.castAt},
            {"red", jsonOf(facts.channels[0])},
            {"green", jsonOf(facts.channels[1])},
            {"blue", jsonOf(facts.channels[2])}};
}

Json jsonOf(const CheckedLook& look) {
    const looks::Check& check = look.check;
    Json json = {{"look", look.origin}, {"works", check.works}};
    if (check.lut.size != 0) {
        json["name"] = check.lut.name;
        json["match"] = check.lut.id;
        json["size"] = check.lut.size;
    }
    json["findings"] = Json::array();
    for (const looks::Finding& finding : check.findings) {
        json["findings"].push_back({{"weight", looks::wordOf(finding.weight)},
                                    {"id", finding.id},
                                    {"words", finding.words},
                                    {"advice", finding.advice}});
    }
    if (check.facts) json["facts"] = jsonOf(*check.facts);
    if (check.precision) {
        json["precision"] = {{"largest", check.precision->largest},
                             {"mean", check.precision->mean}};
    }
    return json;
}

std::string verdictOn(std::size_t bad, std::size_t all) {
    if (bad == 0) return {};
    if (all == 1) return "the look would not work";
    return std::to_string(bad) + " of " + std::to_string(all) + " looks would not work";
}

// Throws Failure when there is something to fail for.
void finish(std::string verdict, const std::optional<Failure>& unread) {
    if (unread) verdict += (verdict.empty() ? "" : ", and ") + std::string(unread->what());
    if (verdict.empty()) return;
    std::fflush(stdout);
    throw Failure(verdict, unread ? unread->exit() : Exit::kWrongInput);
}

}  // namespace

void runCheck(const CheckOptions& options) {
    std::size_t all = 0;
    std::size_t bad = 0;
    Json list = Json::array();
    const auto take = [&](const CheckedLook& look) {
        if (!options.json && all > 0) std::puts("");
        options.json ? list.push_back(jsonOf(look)) : print(look);
        ++all;
        if (!look.check.works) ++bad;
    };
    const std::optional<Failure> unread =
        readEach(options.files, [&take](const std::string& file) { checkFile(file, take); });
    if (options.json) {
        std::printf("%s\n", list.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
    }
    finish(verdictOn(bad, all), unread);
}

}  // namespace program
