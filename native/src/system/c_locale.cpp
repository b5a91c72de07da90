#include "native/src/c_locale.h"

namespace tw {
namespace {

// Made once and kept until the process ends, as threads may be using it to the last.
locale_t cLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
}

}  // namespace

CLocaleScope::CLocaleScope() : before_(uselocale(cLocale())) {}

CLocaleScope::~CLocaleScope() {
    uselocale(before_);
}

}  // namespace tw
