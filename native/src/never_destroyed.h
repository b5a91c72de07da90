// State of the process.
#pragma once

#include <cstddef>
#include <new>
#include <utility>

namespace tw {

// A T that is made and never destroyed; for every object with a destructor that lives as long as
// the process. A host may call the plug-in until its process has ended: from handlers that run at
// exit, and on threads that still run then, when destructors of statics have already been called.
// The end of the process is what frees it. Being held in place, what it owns stays reachable from
// the module's data, which leak checkers look through.
//
// Threads: as a function's static it is made once, whichever thread comes first.
template <typename T>
class NeverDestroyed {
public:
    template <typename... Arguments>
    explicit NeverDestroyed(Arguments&&... arguments) {
        ::new (static_cast<void*>(storage_)) T(std::forward<Arguments>(arguments)...);
    }
    NeverDestroyed(const NeverDestroyed&) = delete;
    NeverDestroyed& operator=(const NeverDestroyed&) = delete;

    T& operator*() { return *std::launder(reinterpret_cast<T*>(storage_)); }
    T* operator->() { return &**this; }

private:
    alignas(T) std::byte storage_[sizeof(T)];
};

}  // namespace tw
