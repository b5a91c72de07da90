#include "native/src/rows/row_kernel.h"

#if defined(__x86_64__)
#include <immintrin.h>

#include <concepts>
#include <cstring>

#include "native/src/engine/pixel.h"
#include "native/src/rows/vector_target.h"

// The compiler's own header makes its "undefined" vectors by initialising them with themselves.
#if !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wuninitialized"
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

TW_TARGET_BEGIN("avx512f,avx512bw,avx512dq,avx512vl")
#include "native/src/rows/two_pass_rows.h"

namespace tw {
namespace {

struct Avx512 {
    static constexpr int kBlocks = 4;
    static constexpr std::uint8_t kNoByte = 0x80;
    using Floats = __m512;
    using Ints = __m512i;
    using Mask = __mmask16;
    using FloatOrder = __m512i;

    static Floats set(float value) { return _mm512_set1_ps(value); }
    static Ints setInts(std::int32_t value) { return _mm512_set1_epi32(value); }
    static Floats load(const float* at) { return _mm512_loadu_ps(at); }
    static void store(float* at, Floats value) { _mm512_storeu_ps(at, value); }
    static void stream(float* at, Floats value) { _mm512_stream_ps(at, value); }
    static void finishStreams() { _mm_sfence(); }
    static void storeInts(std::int32_t* at, Ints value) { _mm512_storeu_si512(at, value); }
    static Ints loadBytes(const std::uint8_t* at) { return _mm512_loadu_si512(at); }
    static void storeBytes(std::uint8_t* at, Ints value) { _mm512_storeu_si512(at, value); }

    static Floats add(Floats a, Floats b) { return _mm512_add_ps(a, b); }
    static Floats sub(Floats a, Floats b) { return _mm512_sub_ps(a, b); }
    static Floats mul(Floats a, Floats b) { return _mm512_mul_ps(a, b); }
    static Floats div(Floats a, Floats b) { return _mm512_div_ps(a, b); }
    static Floats mulAdd(Floats a, Floats b, Floats c) { return add(mul(a, b), c); }
    static Ints addInts(Ints a, Ints b) { return _mm512_add_epi32(a, b); }
    static Ints orBits(Ints a, Ints b) { return _mm512_or_si512(a, b); }
    static Ints timesTwelve(Ints a) {
        const Ints four = _mm512_slli_epi32(a, 2);
        return addInts(four, addInts(four, four));
    }
    static Floats wholePart(Floats t) {
        return _mm512_roundscale_ps(t, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
    }
    static Ints toInts(Floats t) { return _mm512_cvttps_epi32(t); }
    static Floats toFloats(Ints a) { return _mm512_cvtepi32_ps(a); }

    static Floats minOrNaN(Floats a, Floats b) { return _mm512_min_ps(a, b); }
    static Floats clampToUnit(Floats u) {
        return minNonNegative(_mm512_max_ps(u, _mm512_setzero_ps()), set(1.0f));
    }
    static Floats maxNonNegative(Floats a, Floats b) {
        return _mm512_castsi512_ps(
            _mm512_max_epi32(_mm512_castps_si512(a), _mm512_castps_si512(b)));
    }
    static Floats minNonNegative(Floats a, Floats b) {
        return _mm512_castsi512_ps(
            _mm512_min_epi32(_mm512_castps_si512(a), _mm512_castps_si512(b)));
    }
    static Mask above(Floats a, Floats b) {
        return _mm512_cmpgt_epi32_mask(_mm512_castps_si512(a), _mm512_castps_si512(b));
    }
    static Floats nextDownWhere(Mask mask, Floats a) {
        const Ints bits = _mm512_castps_si512(a);
        return _mm512_castsi512_ps(_mm512_mask_add_epi32(bits, mask, bits, setInts(-1)));
    }
    static Ints selectInts(Mask mask, Ints yes, Ints no) {
        return _mm512_mask_blend_epi32(mask, no, yes);
    }

    template <int k>
    static Floats spread(Floats plane) {
        return _mm512_permute_ps(plane, k * 0x55);
    }
    static Floats rotateDown(Floats a) { return _mm512_permute_ps(a, 0x39); }
    static __m128 corner(const char* base, std::int32_t offset) {
        return _mm_loadu_ps(reinterpret_cast<const float*>(base + offset));
    }
    // Keeps a compiler from taking the steps that lead to `a` apart: left alone, one makes two
    // halves of a gather and joins them, which costs more shuffles than inserting from memory.
    static Floats asWritten(Floats a) {
        asm("" : "+v"(a));
        return a;
    }
    static Floats gather(const char* base, const std::int32_t* offsets) {
        Floats all = _mm512_castps128_ps512(corner(base, offsets[0]));
        all = asWritten(_mm512_insertf32x4(all, corner(base, offsets[4]), 1));
        all = asWritten(_mm512_insertf32x4(all, corner(base, offsets[8]), 2));
        return asWritten(_mm512_insertf32x4(all, corner(base, offsets[12]), 3));
    }
    static void loadPlanes(const float* src, Floats (&plane)[4]) {
        const Floats p0 = load(src);
        const Floats p1 = load(src + 16);
        const Floats p2 = load(src + 32);
        const Floats p3 = load(src + 48);
        const __m512d low01 = _mm512_castps_pd(_mm512_unpacklo_ps(p0, p1));
        const __m512d low23 = _mm512_castps_pd(_mm512_unpacklo_ps(p2, p3));
        const __m512d high01 = _mm512_castps_pd(_mm512_unpackhi_ps(p0, p1));
        const __m512d high23 = _mm512_castps_pd(_mm512_unpackhi_ps(p2, p3));
        plane[0] = _mm512_castpd_ps(_mm512_unpacklo_pd(low01, low23));
        plane[1] = _mm512_castpd_ps(_mm512_unpackhi_pd(low01, low23));
        plane[2] = _mm512_castpd_ps(_mm512_unpacklo_pd(high01, high23));
        plane[3] = _mm512_castpd_ps(_mm512_unpackhi_pd(high01, high23));
    }

    static FloatOrder floatOrder(const std::int32_t (&from)[4]) {
        return _mm512_broadcast_i32x4(_mm_setr_epi32(from[0], from[1], from[2], from[3]));
    }
    static Floats reorder(Floats pixels, FloatOrder order) {
        return _mm512_permutevar_ps(pixels, order);
    }
    static Ints elementMask(int element) {
        return _mm512_broadcast_i32x4(
            _mm_cmpeq_epi32(_mm_setr_epi32(0, 1, 2, 3), _mm_set1_epi32(element)));
    }
    // Not by a mask register, which would have to be filled again and again.
    static Floats selectBits(Ints mask, Floats yes, Floats no) {
        return _mm512_castsi512_ps(_mm512_ternarylogic_epi32(mask, _mm512_castps_si512(yes),
                                                             _mm512_castps_si512(no), 0xCA));
    }

    static Ints repeat(const std::uint8_t (&block)[16]) {
        return _mm512_broadcast_i32x4(_mm_load_si128(reinterpret_cast<const __m128i*>(block)));
    }
    static Ints shuffleBytes(Ints a, Ints from) { return _mm512_shuffle_epi8(a, from); }
    static Ints packBytes(Ints q0, Ints q1, Ints q2, Ints q3) {
        return _mm512_packus_epi16(_mm512_packs_epi32(q0, q1), _mm512_packs_epi32(q2, q3));
    }
};

}  // namespace

constinit const RowKernels kAvx512Rows = rowKernelsOf<Avx512>("avx512");

}  // namespace tw
TW_TARGET_END

#if !defined(__clang__)
#pragma GCC diagnostic pop
#endif

#endif
