// Included before every source of the module: Emscripten's C++ library of Debian 12 is older than
// the compiler and lacks std::bit_cast.
#pragma once

#include <version>

#if !defined(__cpp_lib_bit_cast)
namespace std {

template <class To, class From>
constexpr To bit_cast(const From& from) noexcept {
    static_assert(sizeof(To) == sizeof(From));
    return __builtin_bit_cast(To, from);
}

}  // namespace std
#endif
