// What one thread has done, and the log lines and alerts that must follow from it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "tests/support/stand_in_dialogs.h"

namespace stress {

// A plain value: every thread keeps one, and they are added up in the end.
class Tally {
public:
    // One operation of that kind.
    void did(const std::string& kind, long times = 1) { operations_[kind] += times; }
    // One log line that must be there, and one that may, as it is written on a change only.
    void logs(const std::string& line) { ++must_[line]; }
    void mayLog(const std::string& line) { ++may_[line]; }
    void shows(const twtest::ShownAlert& alert) { ++alerts_[alert.message]; }

    Tally& operator+=(const Tally& other);

    const std::map<std::string, long>& operations() const { return operations_; }
    // Sentences about lines that are too many, missing or unexpected.
    std::vector<std::string> compareLog(const std::vector<std::string>& lines) const;
    // The same for alerts.
    std::vector<std::string> compareAlerts(const std::vector<twtest::ShownAlert>& alerts) const;

private:
    using Counts = std::map<std::string, long>;

    Counts operations_;
    Counts must_;
    Counts may_;
    Counts alerts_;
};

}  // namespace stress
