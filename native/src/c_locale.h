// Number texts that do not depend on the locale the host has set.
#pragma once

#include <clocale>
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

namespace tw {

// While it lives, the calling thread formats and scans numbers as in the C locale. Other threads
// and the process's own locale are left alone: the host may be using them. Where the system cannot
// provide the C locale object the scope changes nothing.
class CLocaleScope {
public:
    CLocaleScope();
    ~CLocaleScope();
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
    locale_t before_;
};

}  // namespace tw
