// Process locales that differ from "C" in what matters here: the decimal separator, or the bytes
// that count as letters. Where the system has no such locale it is built in a temporary folder.
#pragma once

#include <clocale>
#include <cstdlib>
#include <string>

#include "tests/support/temp_folder.h"

namespace twtest {

class ScopedLocale {
public:
    // `charmap` as localedef names it ("UTF-8", "ISO-8859-1"), `name` as setlocale wants it.
    ScopedLocale(const std::string& name, const std::string& charmap) {
        active_ = std::setlocale(LC_ALL, name.c_str()) != nullptr || build(name, charmap);
    }
    ScopedLocale(const ScopedLocale&) = delete;
    ScopedLocale& operator=(const ScopedLocale&) = delete;
    ~ScopedLocale() { std::setlocale(LC_ALL, "C"); }

    bool active() const { return active_; }

private:
    bool build(const std::string& name, const std::string& charmap) {
        const std::string command = "localedef -i de_DE -f " + charmap + " '" + (folder_ / name) +
                                    "' >'" + (folder_ / "messages") + "' 2>&1";
        if (std::system(command.c_str()) != 0) return false;
        setenv("LOCPATH", folder_.path().c_str(), 1);
        return std::setlocale(LC_ALL, name.c_str()) != nullptr;
    }

    TempFolder folder_;
    bool active_ = false;
};

class CommaLocale : public ScopedLocale {
public:
    CommaLocale() : ScopedLocale("de_DE.UTF-8", "UTF-8") {}

    // False where no such locale can be had, or where it turns out to write 0.5 with a full stop.
    bool usable() const { return active() && std::string(std::localeconv()->decimal_point) == ","; }
};

}  // namespace twtest
