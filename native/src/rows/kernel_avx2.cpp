#include "native/src/rows/row_kernel.h"

#if defined(__x86_64__)
#include <immintrin.h>

#include <concepts>
#include <cstring>

#include "native/src/engine/pixel.h"
#include "native/src/rows/vector_target.h"

TW_TARGET_BEGIN("avx2")
#include "native/src/rows/two_pass_rows.h"

namespace tw {
namespace {

struct Avx2 {
    static constexpr int kBlocks = 2;
    static constexpr std::uint8_t kNoByte = 0x80;
    using Floats = __m256;
    using Ints = __m256i;
    using Mask = __m256;
    using FloatOrder = __m256i;

    static Floats set(float value) { return _mm256_set1_ps(value); }
    static Ints setInts(std::int32_t value) { return _mm256_set1_epi32(value); }
    static Floats load(const float* at) { return _mm256_loadu_ps(at); }
    static void store(float* at, Floats value) { _mm256_storeu_ps(at, value); }
    static void storeInts(std::int32_t* at, Ints value) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(at), value);
    }
    static Ints loadBytes(const std::uint8_t* at) {
        return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(at));
    }
    static void storeBytes(std::uint8_t* at, Ints value) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(at), value);
    }

    static Floats add(Floats a, Floats b) { return _mm256_add_ps(a, b); }
    static Floats sub(Floats a, Floats b) { return _mm256_sub_ps(a, b); }
    static Floats mul(Floats a, Floats b) { return _mm256_mul_ps(a, b); }
    static Floats div(Floats a, Floats b) { return _mm256_div_ps(a, b); }
    static Floats mulAdd(Floats a, Floats b, Floats c) { return add(mul(a, b), c); }
    static Ints addInts(Ints a, Ints b) { return _mm256_add_epi32(a, b); }
    static Ints orBits(Ints a, Ints b) { return _mm256_or_si256(a, b); }
    static Ints timesTwelve(Ints a) {
        const Ints four = _mm256_slli_epi32(a, 2);
        return addInts(four, addInts(four, four));
    }
    static Floats wholePart(Floats t) {
        return _mm256_round_ps(t, _MM_FROUND_TO_ZERO | _MM_FROUND_NO_EXC);
    }
    static Ints toInts(Floats t) { return _mm256_cvttps_epi32(t); }
    static Floats toFloats(Ints a) { return _mm256_cvtepi32_ps(a); }

    static Floats minOrNaN(Floats a, Floats b) { return _mm256_min_ps(a, b); }
    static Floats clampToUnit(Floats u) {
        return minNonNegative(_mm256_max_ps(u, _mm256_setzero_ps()), set(1.0f));
    }
    static Floats maxNonNegative(Floats a, Floats b) {
        return _mm256_castsi256_ps(
            _mm256_max_epi32(_mm256_castps_si256(a), _mm256_castps_si256(b)));
    }
    static Floats minNonNegative(Floats a, Floats b) {
        return _mm256_castsi256_ps(
            _mm256_min_epi32(_mm256_castps_si256(a), _mm256_castps_si256(b)));
    }
    static Mask above(Floats a, Floats b) {
        return _mm256_castsi256_ps(
            _mm256_cmpgt_epi32(_mm256_castps_si256(a), _mm256_castps_si256(b)));
    }
    static Floats nextDownWhere(Mask mask, Floats a) {
        return _mm256_castsi256_ps(addInts(_mm256_castps_si256(a), _mm256_castps_si256(mask)));
    }
    static Ints selectInts(Mask mask, Ints yes, Ints no) {
        const Ints bits = _mm256_castps_si256(mask);
        return orBits(_mm256_and_si256(bits, yes), _mm256_andnot_si256(bits, no));
    }

    template <int k>
    static Floats spread(Floats plane) {
        return _mm256_permute_ps(plane, k * 0x55);
    }
    static Floats rotateDown(Floats a) { return _mm256_permute_ps(a, 0x39); }
    static Floats gather(const char* base, const std::int32_t* offsets) {
        const __m128 low = _mm_loadu_ps(reinterpret_cast<const float*>(base + offsets[0]));
        const __m128 high = _mm_loadu_ps(reinterpret_cast<const float*>(base + offsets[4]));
        return _mm256_insertf128_ps(_mm256_castps128_ps256(low), high, 1);
    }
    static void loadPlanes(const float* src, Floats (&plane)[4]) {
        const Floats p0 = load(src);
        const Floats p1 = load(src + 8);
        const Floats p2 = load(src + 16);
        const Floats p3 = load(src + 24);
        const __m256d low01 = _mm256_castps_pd(_mm256_unpacklo_ps(p0, p1));
        const __m256d low23 = _mm256_castps_pd(_mm256_unpacklo_ps(p2, p3));
        const __m256d high01 = _mm256_castps_pd(_mm256_unpackhi_ps(p0, p1));
        const __m256d high23 = _mm256_castps_pd(_mm256_unpackhi_ps(p2, p3));
        plane[0] = _mm256_castpd_ps(_mm256_unpacklo_pd(low01, low23));
        plane[1] = _mm256_castpd_ps(_mm256_unpackhi_pd(low01, low23));
        plane[2] = _mm256_castpd_ps(_mm256_unpacklo_pd(high01, high23));
        plane[3] = _mm256_castpd_ps(_mm256_unpackhi_pd(high01, high23));
    }

    static FloatOrder floatOrder(const std::int32_t (&from)[4]) {
        return _mm256_setr_epi32(from[0], from[1], from[2], from[3], from[0], from[1], from[2],
                                 from[3]);
    }
    static Floats reorder(Floats pixels, FloatOrder order) {
        return _mm256_permutevar_ps(pixels, order);
    }
    static Ints elementMask(int element) {
        return _mm256_cmpeq_epi32(_mm256_setr_epi32(0, 1, 2, 3, 0, 1, 2, 3), setInts(element));
    }
    static Floats selectBits(Ints mask, Floats yes, Floats no) {
        return _mm256_blendv_ps(no, yes, _mm256_castsi256_ps(mask));
    }

    static Ints repeat(const std::uint8_t (&block)[16]) {
        return _mm256_broadcastsi128_si256(_mm_load_si128(reinterpret_cast<const __m128i*>(block)));
    }
    static Ints shuffleBytes(Ints a, Ints from) { return _mm256_shuffle_epi8(a, from); }
    static Ints packBytes(Ints q0, Ints q1, Ints q2, Ints q3) {
        return _mm256_packus_epi16(_mm256_packs_epi32(q0, q1), _mm256_packs_epi32(q2, q3));
    }
};

}  // namespace

constinit const RowKernels kAvx2Rows = rowKernelsOf<Avx2>("avx2");

}  // namespace tw
TW_TARGET_END

#endif
