// What an instruction set gives to the two passes (two_pass.h, two_pass_rows.h).
#pragma once

#include <concepts>
#include <cstdint>

namespace tw {

// A vector is kBlocks blocks of 4 elements of 32 bits. All steps work element by element unless
// they say otherwise. Floating-point arithmetic is IEEE 754's in single precision, rounded to
// nearest, denormals included; the passes rely on the rules told here and on nothing else, so that
// every instruction set gives the same bits.
template <typename Isa>
concept VectorTypes = requires {
    typename Isa::Floats;
    typename Isa::Ints;  // signed; also plain bits, and 16 bytes a block
    typename Isa::Mask;  // what `above` answers, whatever the processor keeps it in
    typename Isa::FloatOrder;
    requires std::same_as<decltype(Isa::kBlocks), const int>;
    // As an index of shuffleBytes: a byte of 0.
    requires std::same_as<decltype(Isa::kNoByte), const std::uint8_t>;
};

// Memory needs no alignment beyond its element's, but for `repeat`.
template <typename Isa, typename Floats = typename Isa::Floats, typename Ints = typename Isa::Ints>
concept VectorMemory =
    requires(Floats a, Ints i, float value, const float* floats, float* floatsOut, const char* base,
             const std::int32_t* offsets, std::int32_t* intsOut, const std::uint8_t* bytes,
             std::uint8_t* bytesOut, Floats (&planes)[4], const std::uint8_t (&block)[16]) {
        { Isa::set(value) } -> std::same_as<Floats>;
        { Isa::setInts(std::int32_t{}) } -> std::same_as<Ints>;
        // All bits are kept, also those of signalling NaNs.
        { Isa::load(floats) } -> std::same_as<Floats>;
        Isa::store(floatsOut, a);
        Isa::storeInts(intsOut, i);
        { Isa::loadBytes(bytes) } -> std::same_as<Ints>;
        Isa::storeBytes(bytesOut, i);
        // The same 16 bytes in every block; they are aligned to 16.
        { Isa::repeat(block) } -> std::same_as<Ints>;
        // Block j: the 4 floats that lie base + offsets[4 * j] bytes on.
        { Isa::gather(base, offsets) } -> std::same_as<Floats>;
        // Pixels of 4 floats as planes: channel c of pixel kBlocks * k + j becomes element k of
        // block j of planes[c].
        Isa::loadPlanes(floats, planes);
    };

template <typename Isa, typename Floats = typename Isa::Floats, typename Ints = typename Isa::Ints>
concept VectorArithmetic = requires(Floats a, Floats b, Floats c, Ints i, Ints j) {
    { Isa::add(a, b) } -> std::same_as<Floats>;
    { Isa::sub(a, b) } -> std::same_as<Floats>;
    { Isa::mul(a, b) } -> std::same_as<Floats>;
    { Isa::div(a, b) } -> std::same_as<Floats>;
    // a * b + c, rounded as tw::mulAdd rounds on this processor family.
    { Isa::mulAdd(a, b, c) } -> std::same_as<Floats>;
    { Isa::addInts(i, j) } -> std::same_as<Ints>;
    { Isa::orBits(i, j) } -> std::same_as<Ints>;
    // 12 times an int of 0 .. 256^3: the bytes of that many lattice points.
    { Isa::timesTwelve(i) } -> std::same_as<Ints>;
    // Towards zero. a: 0 .. 255, or -0, which stays -0; never NaN.
    { Isa::wholePart(a) } -> std::same_as<Floats>;
    // Towards zero. NaN, and what lies below all ints, becomes an int that is not above 0; nothing
    // lies above them. -0 becomes 0.
    { Isa::toInts(a) } -> std::same_as<Ints>;
    // Exact. i: 0 .. 255.
    { Isa::toFloats(i) } -> std::same_as<Floats>;
};

template <typename Isa, typename Floats = typename Isa::Floats, typename Ints = typename Isa::Ints,
          typename Mask = typename Isa::Mask>
concept VectorChoices = requires(Floats a, Floats b, Ints i, Ints j, Mask mask) {
    // To 0 .. 1; NaN becomes 0, -0 either zero.
    { Isa::clampToUnit(a) } -> std::same_as<Floats>;
    // The smaller one of a, a number above 0, and b; NaN where b is NaN.
    { Isa::minOrNaN(a, b) } -> std::same_as<Floats>;
    // Of numbers from -0 up, never NaN. -0 lies below 0.
    { Isa::minNonNegative(a, b) } -> std::same_as<Floats>;
    { Isa::maxNonNegative(a, b) } -> std::same_as<Floats>;
    // a > b by their bits as integers, which is their order as numbers from 0 up; -1, the bits that
    // nextDownWhere makes of 0, lies below them all.
    { Isa::above(a, b) } -> std::same_as<Mask>;
    // Where the mask is set, the bits of `a` less one: the next float down from a number above 0.
    { Isa::nextDownWhere(mask, a) } -> std::same_as<Floats>;
    { Isa::selectInts(mask, i, j) } -> std::same_as<Ints>;
    // Each element of i has all bits set or none. Chooses bits, so that NaNs stay as they are.
    { Isa::selectBits(i, a, b) } -> std::same_as<Floats>;
    // Such an i: set in one element (0 .. 3) of every block.
    { Isa::elementMask(int{}) } -> std::same_as<Ints>;
};

// All of these move bits within each block and change none.
template <typename Isa, typename Floats = typename Isa::Floats, typename Ints = typename Isa::Ints>
concept VectorMoves = requires(Floats a, Ints i, Ints j, const std::int32_t (&from)[4],
                               typename Isa::FloatOrder order) {
    // Element 3 of each block over that block; likewise for 0, 1 and 2.
    { Isa::template spread<3>(a) } -> std::same_as<Floats>;
    // Elements 1, 2, 3, 0.
    { Isa::rotateDown(a) } -> std::same_as<Floats>;
    // Element k of each block is that block's element from[k].
    { Isa::floatOrder(from) } -> std::same_as<typename Isa::FloatOrder>;
    { Isa::reorder(a, order) } -> std::same_as<Floats>;
    // Byte k of each block is byte j[k] of that block of i, or 0 where j[k] is kNoByte.
    { Isa::shuffleBytes(i, j) } -> std::same_as<Ints>;
    // Ints limited to 0 .. 255. Block j: block j of the first argument as 4 bytes, then of the
    // second, the third and the fourth.
    { Isa::packBytes(i, i, i, i) } -> std::same_as<Ints>;
};

template <typename Isa>
concept InstructionSet = VectorTypes<Isa> && VectorMemory<Isa> && VectorArithmetic<Isa> &&
                         VectorChoices<Isa> && VectorMoves<Isa>;

// One that can write around the caches as well: `stream` stores to memory that is aligned to the
// vector; after finishStreams other threads that are told of it see what was written.
template <typename Isa>
concept StreamingInstructionSet =
    InstructionSet<Isa> && requires(float* floatsOut, typename Isa::Floats a) {
        Isa::stream(floatsOut, a);
        Isa::finishStreams();
    };

}  // namespace tw
