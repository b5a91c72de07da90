#include "desk/engine/bytes.h"

namespace desk {

emscripten::val Bytes::view() {
    return emscripten::val(emscripten::typed_memory_view(bytes.size(), data()));
}

emscripten::val Floats::view() {
    return emscripten::val(emscripten::typed_memory_view(values.size(), values.data()));
}

}  // namespace desk
