#include "looks/finding.h"

namespace looks {

const char* wordOf(Weight weight) {
    switch (weight) {
        case Weight::kFatal:
            return "fatal";
        case Weight::kTrap:
            return "trap";
        case Weight::kNote:
            break;
    }
    return "note";
}

}  // namespace looks
