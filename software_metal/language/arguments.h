// Stands behind a kernel text: turns what is bound to an index into the kernel's own parameter.
// Only parameters with an address space can be bound; others do not compile.
namespace metal_arguments {

template <int N, class F>
struct ParameterOf;
template <class A, class... B>
struct ParameterOf<0, void(A, B...)> {
    typedef A Type;
};
template <int N, class A, class... B>
struct ParameterOf<N, void(A, B...)> {
    typedef typename ParameterOf<N - 1, void(B...)>::Type Type;
};

template <class T>
struct Bound;
#ifdef METAL_FLAT
template <class T>
struct Bound<T*> {
    static T* from(void* memory) { return (T*)memory; }
};
template <class T>
struct Bound<T&> {
    static T& from(void* memory) { return *(T*)memory; }
};
#else
template <class T>
struct Bound<device T*> {
    static device T* from(void* memory) { return (device T*)memory; }
};
template <class T>
struct Bound<device T&> {
    static device T& from(void* memory) { return *(device T*)memory; }
};
template <class T>
struct Bound<constant T*> {
    static constant T* from(void* memory) { return (constant T*)memory; }
};
template <class T>
struct Bound<constant T&> {
    static constant T& from(void* memory) { return *(constant T*)memory; }
};
#endif

template <int N, class F>
inline typename ParameterOf<N, F>::Type get(F&, void* memory) {
    return Bound<typename ParameterOf<N, F>::Type>::from(memory);
}

}  // namespace metal_arguments

#define METAL_RUNNER extern "C" __attribute__((visibility("default")))
