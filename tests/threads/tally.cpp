#include "tests/threads/tally.h"

namespace stress {
namespace {

using Counts = std::map<std::string, long>;

void add(Counts& to, const Counts& from) {
    for (const auto& [name, count] : from)
        to[name] += count;
}

long countOf(const Counts& counts, const std::string& name) {
    const auto found = counts.find(name);
    return found == counts.end() ? 0 : found->second;
}

// Each text must be there as often as `must` says, and up to as much oftener as `may` says.
std::vector<std::string> compare(Counts found, const Counts& must, const Counts& may) {
    for (const auto& [text, count] : must)
        found[text] += 0;
    std::vector<std::string> wrong;
    for (const auto& [text, count] : found) {
        const long least = countOf(must, text);
        const long most = least + countOf(may, text);
        if (count >= least && count <= most) continue;
        wrong.push_back("\"" + text + "\" is there " + std::to_string(count) + " time(s), not " +
                        std::to_string(least) + " to " + std::to_string(most));
    }
    return wrong;
}

}  // namespace

Tally& Tally::operator+=(const Tally& other) {
    add(operations_, other.operations_);
    add(must_, other.must_);
    add(may_, other.may_);
    add(alerts_, other.alerts_);
    return *this;
}

std::vector<std::string> Tally::compareLog(const std::vector<std::string>& lines) const {
    Counts found;
    for (const std::string& line : lines)
        ++found[line];
    return compare(found, must_, may_);
}

std::vector<std::string> Tally::compareAlerts(const std::vector<twtest::ShownAlert>& alerts) const {
    Counts found;
    for (const twtest::ShownAlert& alert : alerts)
        ++found[alert.message];
    return compare(found, alerts_, {});
}

}  // namespace stress
