#include "fuzz/session/script.h"

#include <utility>

namespace session_fuzz {
namespace {

constexpr std::uint8_t kEnd = 0xFF;
constexpr std::uint8_t kAsItIs = 0xFE;

}  // namespace

std::vector<Bytes> recordsOf(const std::uint8_t* bytes, std::size_t size, std::size_t most) {
    std::vector<Bytes> records;
    Bytes record;
    for (std::size_t i = 0; i < size && records.size() < most; ++i) {
        if (bytes[i] == kEnd) {
            records.push_back(std::exchange(record, {}));
        } else if (bytes[i] != kAsItIs) {
            record.push_back(bytes[i]);
        } else if (++i < size) {
            record.push_back(bytes[i]);
        }
    }
    if (records.size() < most && !record.empty()) records.push_back(std::move(record));
    return records;
}

}  // namespace session_fuzz
