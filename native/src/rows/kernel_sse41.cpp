#include "native/src/rows/row_kernel.h"

// WebAssembly has these instructions under other names, and a header that knows them.
#if defined(__x86_64__) || defined(__wasm_simd128__)
#include <immintrin.h>

#include <concepts>
#include <cstring>

#include "native/src/engine/pixel.h"
#include "native/src/rows/vector_target.h"

TW_TARGET_BEGIN("sse4.1")
#include "native/src/rows/two_pass_rows.h"

namespace tw {
namespace {

struct Sse41 {
    static constexpr int kBlocks = 1;
    static constexpr std::uint8_t kNoByte = 0x80;
    using Floats = __m128;
    using Ints = __m128i;
    using Mask = __m128;
    using FloatOrder = __m128i;

    static Floats set(float value) { return _mm_set1_ps(value); }
    static Ints setInts(std::int32_t value) { return _mm_set1_epi32(value); }
    static Floats load(const float* at) { return _mm_loadu_ps(at); }
    static void store(float* at, Floats value) { _mm_storeu_ps(at, value); }
    static void storeInts(std::int32_t* at, Ints value) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(at), value);
    }
    static Ints loadBytes(const std::uint8_t* at) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    }
    static void storeBytes(std::uint8_t* at, Ints value) {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(at), value);
    }

    static Floats add(Floats a, Floats b) { return _mm_add_ps(a, b); }
    static Floats sub(Floats a, Floats b) { return _mm_sub_ps(a, b); }
    static Floats mul(Floats a, Floats b) { return _mm_mul_ps(a, b); }
    static Floats div(Floats a, Floats b) { return _mm_div_ps(a, b); }
    static Floats mulAdd(Floats a, Floats b, Floats c) { return add(mul(a, b), c); }
    static Ints addInts(Ints a, Ints b) { return _mm_add_epi32(a, b); }
    static Ints orBits(Ints a, Ints b) { return _mm_or_si128(a, b); }
    static Ints timesTwelve(Ints a) {
        const Ints four = _mm_slli_epi32(a, 2);
        return addInts(four, addInts(four, four));
    }
    static Floats wholePart(Floats t) {
        return _mm_round_ps(t, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
    }
#if defined(__wasm_simd128__)
    // What Emscripten has in the place of SSE2's instruction is a loop.
    static Ints toInts(Floats t) { return wasm_i32x4_trunc_sat_f32x4(t); }
#else
    static Ints toInts(Floats t) { return _mm_cvttps_epi32(t); }
#endif
    static Floats toFloats(Ints a) { return _mm_cvtepi32_ps(a); }

    static Floats minOrNaN(Floats a, Floats b) { return _mm_min_ps(a, b); }
    static Floats clampToUnit(Floats u) {
        return minNonNegative(_mm_max_ps(u, _mm_setzero_ps()), set(1.0f));
    }
    static Floats maxNonNegative(Floats a, Floats b) {
        return _mm_castsi128_ps(_mm_max_epi32(_mm_castps_si128(a), _mm_castps_si128(b)));
    }
    static Floats minNonNegative(Floats a, Floats b) {
        return _mm_castsi128_ps(_mm_min_epi32(_mm_castps_si128(a), _mm_castps_si128(b)));
    }
    static Mask above(Floats a, Floats b) {
        return _mm_castsi128_ps(_mm_cmpgt_epi32(_mm_castps_si128(a), _mm_castps_si128(b)));
    }
    static Floats nextDownWhere(Mask mask, Floats a) {
        return _mm_castsi128_ps(addInts(_mm_castps_si128(a), _mm_castps_si128(mask)));
    }
    static Ints selectInts(Mask mask, Ints yes, Ints no) {
        const Ints bits = _mm_castps_si128(mask);
        return orBits(_mm_and_si128(bits, yes), _mm_andnot_si128(bits, no));
    }

    template <int k>
    static Floats spread(Floats plane) {
        return _mm_shuffle_ps(plane, plane, k * 0x55);
    }
    static Floats rotateDown(Floats a) { return _mm_shuffle_ps(a, a, 0x39); }
    static Floats gather(const char* base, const std::int32_t* offsets) {
        return _mm_loadu_ps(reinterpret_cast<const float*>(base + offsets[0]));
    }
    static void loadPlanes(const float* src, Floats (&plane)[4]) {
        const Floats p0 = load(src);
        const Floats p1 = load(src + 4);
        const Floats p2 = load(src + 8);
        const Floats p3 = load(src + 12);
        const __m128d low01 = _mm_castps_pd(_mm_unpacklo_ps(p0, p1));
        const __m128d low23 = _mm_castps_pd(_mm_unpacklo_ps(p2, p3));
        const __m128d high01 = _mm_castps_pd(_mm_unpackhi_ps(p0, p1));
        const __m128d high23 = _mm_castps_pd(_mm_unpackhi_ps(p2, p3));
        plane[0] = _mm_castpd_ps(_mm_unpacklo_pd(low01, low23));
        plane[1] = _mm_castpd_ps(_mm_unpackhi_pd(low01, low23));
        plane[2] = _mm_castpd_ps(_mm_unpacklo_pd(high01, high23));
        plane[3] = _mm_castpd_ps(_mm_unpackhi_pd(high01, high23));
    }

    static FloatOrder floatOrder(const std::int32_t (&from)[4]) {
        constexpr std::int32_t kBytes = 0x03020100;
        constexpr std::int32_t kNext = 0x04040404;
        return _mm_setr_epi32(kBytes + from[0] * kNext, kBytes + from[1] * kNext,
                              kBytes + from[2] * kNext, kBytes + from[3] * kNext);
    }
    static Floats reorder(Floats pixels, FloatOrder order) {
        return _mm_castsi128_ps(_mm_shuffle_epi8(_mm_castps_si128(pixels), order));
    }
    static Ints elementMask(int element) {
        return _mm_cmpeq_epi32(_mm_setr_epi32(0, 1, 2, 3), setInts(element));
    }
    static Floats selectBits(Ints mask, Floats yes, Floats no) {
        return _mm_blendv_ps(no, yes, _mm_castsi128_ps(mask));
    }

    static Ints repeat(const std::uint8_t (&block)[16]) {
        return _mm_load_si128(reinterpret_cast<const __m128i*>(block));
    }
    static Ints shuffleBytes(Ints a, Ints from) { return _mm_shuffle_epi8(a, from); }
    static Ints packBytes(Ints q0, Ints q1, Ints q2, Ints q3) {
        return _mm_packus_epi16(_mm_packs_epi32(q0, q1), _mm_packs_epi32(q2, q3));
    }
};

}  // namespace

constinit const RowKernels kSse41Rows = rowKernelsOf<Sse41>("sse4.1");

}  // namespace tw
TW_TARGET_END

#endif
