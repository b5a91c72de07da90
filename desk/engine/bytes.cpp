#include "desk/engine/bytes.h"

#include <cstdint>
#include <new>

namespace desk {

std::size_t countOf(double count) {
    if (!(count >= 0.0 && count <= PTRDIFF_MAX)) throw std::bad_alloc();
    return static_cast<std::size_t>(count);
}

emscripten::val Bytes::view() {
    return emscripten::val(emscripten::typed_memory_view(bytes.size(), data()));
}

emscripten::val Floats::view() {
    return emscripten::val(emscripten::typed_memory_view(values.size(), values.data()));
}

}  // namespace desk
