// Stands before a kernel text and makes C++14, as clang 16 reads it, the Metal language: its types,
// its address spaces, the functions of namespace metal that kernels here may use, and none of the
// words that it lacks.
//
//   METAL_FLAT   address spaces vanish: the sanitizers check accesses through the ordinary one only
//   METAL_LINT   `thread` becomes visible in the syntax tree, as volatile
#pragma once

typedef unsigned char uchar;
typedef unsigned short ushort;
typedef unsigned int uint;
typedef unsigned long ulong;
typedef unsigned long size_t;
typedef int int32_t;
typedef unsigned int uint32_t;
typedef _Float16 half;

namespace metal_vectors {

template <class T, unsigned N>
using Vector = T __attribute__((ext_vector_type(N)));

// What an argument of a constructor brings: one scalar, or all components of a vector.
template <class A>
struct Lanes {
    enum { count = 1, isVector = 0 };
    static A at(A scalar, int) { return scalar; }
};
template <class T, unsigned N>
struct Lanes<T __attribute__((ext_vector_type(N)))> {
    enum { count = N, isVector = 1 };
    static T at(Vector<T, N> vector, int i) { return vector[i]; }
};

template <int... counts>
struct Sum;
template <>
struct Sum<> {
    enum { value = 0 };
};
template <int first, int... rest>
struct Sum<first, rest...> {
    enum { value = first + Sum<rest...>::value };
};

template <class T, unsigned N>
struct Make {
    // One scalar fills all components; otherwise their numbers must add up.
    template <class A, class... B>
    static Vector<T, N> of(A first, B... rest) {
        constexpr bool fills = sizeof...(B) == 0 && !Lanes<A>::isVector;
        static_assert(fills || int(Sum<Lanes<A>::count, Lanes<B>::count...>::value) == int(N),
                      "wrong number of components");
        Vector<T, N> made;
        int filled = append(made, 0, first, fills ? int(N) : int(Lanes<A>::count));
        const int order[] = {0, (filled = append(made, filled, rest, int(Lanes<B>::count)))...};
        (void)order;
        return made;
    }

private:
    template <class A>
    static int append(Vector<T, N>& made, int filled, A argument, int count) {
        for (int i = 0; i < count; ++i)
            made[filled + i] = (T)Lanes<A>::at(argument, i);
        return filled + count;
    }
};

}  // namespace metal_vectors

typedef float float2 __attribute__((ext_vector_type(2)));
typedef float float3 __attribute__((ext_vector_type(3)));
typedef float float4 __attribute__((ext_vector_type(4)));
typedef half half4 __attribute__((ext_vector_type(4)));
typedef uint uint2 __attribute__((ext_vector_type(2)));

// With an argument list the name is a constructor, without one it stays the type.
#define float2(...) metal_vectors::Make<float, 2>::of(__VA_ARGS__)
#define float3(...) metal_vectors::Make<float, 3>::of(__VA_ARGS__)
#define float4(...) metal_vectors::Make<float, 4>::of(__VA_ARGS__)
#define half4(...) metal_vectors::Make<half, 4>::of(__VA_ARGS__)
#define uint2(...) metal_vectors::Make<uint, 2>::of(__VA_ARGS__)

namespace metal {

inline int min(int a, int b) {
    return b < a ? b : a;
}
inline int max(int a, int b) {
    return a < b ? b : a;
}
// A not-a-number loses against a number, as in the precise forms there.
inline float min(float a, float b) {
    return __builtin_fminf(a, b);
}
inline float max(float a, float b) {
    return __builtin_fmaxf(a, b);
}
// Rounded once, whatever the processor has.
inline float fma(float a, float b, float c) {
    return __builtin_fmaf(a, b, c);
}
inline float floor(float x) {
    return __builtin_floorf(x);
}
inline bool isnan(float x) {
    return __builtin_isnan(x);
}

}  // namespace metal

#ifdef METAL_FLAT
#define device
#define constant const
#define threadgroup
#else
#define device __attribute__((address_space(1)))
#define constant const __attribute__((address_space(2)))
#define threadgroup __attribute__((address_space(3)))
#endif
#ifdef METAL_LINT
#define thread volatile
#define kernel
#else
#define thread
#define kernel static
#endif

// "constant" brings a const that the kernel text may say as well.
#pragma clang diagnostic ignored "-Wduplicate-decl-specifier"
#pragma GCC poison double new delete throw try catch goto dynamic_cast typeid virtual asm wchar_t
#pragma GCC poison thread_local char16_t char32_t register noexcept friend std _Float16 __fp16
// "long long" is no type there. With `long` a name, two of them do not make one.
typedef long metal_long;
#define long metal_long
