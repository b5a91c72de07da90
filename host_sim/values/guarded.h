// A record between canary bytes, as it is handed to the effect.
#pragma once

#include <algorithm>
#include <array>
#include <cstring>

namespace host_sim {

constexpr unsigned char kCanary = 0xE7;

template <class Record>
class Guarded {
public:
    // Copies padding bytes too, since whole records are compared later.
    explicit Guarded(const Record& record) {
        std::memcpy(&record_, &record, sizeof(Record));
        std::memcpy(&given_, &record, sizeof(Record));
        before_.fill(kCanary);
        after_.fill(kCanary);
    }

    Record& operator*() { return record_; }
    Record* operator->() { return &record_; }
    Record* get() { return &record_; }

    // Whether nothing was written beside the record.
    bool isIntact() const {
        const auto whole = [](unsigned char byte) { return byte == kCanary; };
        return std::all_of(before_.begin(), before_.end(), whole) &&
               std::all_of(after_.begin(), after_.end(), whole);
    }

    // Whether the record's bytes still are those it was made with.
    bool isUnchanged() const { return std::memcmp(&record_, &given_, sizeof(Record)) == 0; }

private:
    std::array<unsigned char, 64> before_;
    Record record_;
    std::array<unsigned char, 64> after_;
    Record given_;
};

}  // namespace host_sim
