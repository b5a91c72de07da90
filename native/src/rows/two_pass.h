// The vector kernels' common arithmetic, bit for bit that of sampleTetra. Included by each of them
// inside its target region, after everything else, and by no other file; what is included here of
// the standard library must have been included before the region.
//
// A batch of pixels is graded in two passes. The first finds for each pixel its cell, and the
// weights and corners of its tetrahedron, and leaves them in small arrays in the first-level cache;
// the second fetches the corners and blends. Both loops have short chains of dependent steps and
// run near the processor's throughput; a single loop would wait for its own loads.
#pragma once

#include <cstddef>
#include <cstdint>

#include "native/src/lut_engine.h"
#include "native/src/rows/isa.h"

namespace tw {
namespace {

// Colours come in two layouts: planes (one vector a channel, one element a pixel) and pixels (one
// block a pixel: red, green, blue, and a fourth element that is not used). kGroup pixels make a
// plane. Step k of a group works on element k of every block of its planes, so that spreading a
// weight over its pixel's block stays within the block.
template <InstructionSet Isa>
class TwoPass {
public:
    using Floats = typename Isa::Floats;
    using Ints = typename Isa::Ints;
    using Mask = typename Isa::Mask;

    static constexpr int kGroup = Isa::kBlocks * 4;
    static constexpr int kBatch = 64;

    // What the first pass leaves to the second.
    struct Batch {
        alignas(64) float weight[4][kBatch];
        // Offsets of the corners in bytes.
        alignas(64) std::int32_t lowest[kBatch];
        alignas(64) std::int32_t first[kBatch];
        alignas(64) std::int32_t second[kBatch];
    };

    TwoPass(const Lut3D& lut, float amount);

    // First pass, for the group of a batch that starts with pixel `at`.
    void place(Floats r, Floats g, Floats b, Batch& batch, int at) const;

    // The weights of a placed group, as planes.
    struct Weights {
        Floats w0, w1, w2, w3;
    };
    static Weights weights(const Batch& batch, int at) {
        return {Isa::load(batch.weight[0] + at), Isa::load(batch.weight[1] + at),
                Isa::load(batch.weight[2] + at), Isa::load(batch.weight[3] + at)};
    }

    // Second pass, step k of a placed group: what the LUT makes of its colours, in pixel layout.
    template <int k>
    Floats sample(const Weights& weights, const Batch& batch, int at) const {
        const Floats c0 = Isa::gather(lattice_, batch.lowest + at + k);
        const Floats c1 = Isa::gather(lattice_, batch.first + at + k);
        const Floats c2 = Isa::gather(lattice_, batch.second + at + k);
        const Floats c3 = Isa::rotateDown(Isa::gather(highest_, batch.lowest + at + k));
        Floats sum = Isa::mul(Isa::template spread<k>(weights.w1), c1);
        sum = Isa::mulAdd(Isa::template spread<k>(weights.w0), c0, sum);
        sum = Isa::mulAdd(Isa::template spread<k>(weights.w2), c2, sum);
        return Isa::mulAdd(Isa::template spread<k>(weights.w3), c3, sum);
    }

    // `in` moved towards `sampled` by the Amount. Elements may stand in any order.
    Floats blend(Floats sampled, Floats in) const {
        return Isa::mulAdd(Isa::sub(sampled, in), amount_, in);
    }

private:
    static constexpr std::int32_t kFloatBytes = sizeof(float);

    void chooseCorners(Floats r, Floats g, Floats b, Ints lowest, Batch& batch, int at) const;

    Floats amount_, points_, steps_, lastCell_;
    Floats domainMin_[3], domainRange_[3];
    Ints red_, green_, blue_, redGreen_;
    const char* lattice_;
    // For the highest corner of the cell whose lowest is at the offset, one element early and
    // rotated into place after loading: the lattice's last point has nothing behind it that may be
    // read. The other corners never are that point.
    const char* highest_;
    bool unitDomain_ = true;
};

template <InstructionSet Isa>
TwoPass<Isa>::TwoPass(const Lut3D& lut, float amount)
    : amount_(Isa::set(amount)),
      points_(Isa::set(static_cast<float>(lut.size))),
      steps_(Isa::set(static_cast<float>(lut.size - 1))),
      lastCell_(Isa::set(static_cast<float>(lut.size - 2))) {
    const auto bytes = [&lut](int r, int g, int b) {
        return static_cast<std::int32_t>(latticeIndex(lut.size, r, g, b)) * kFloatBytes;
    };
    red_ = Isa::setInts(bytes(1, 0, 0));
    green_ = Isa::setInts(bytes(0, 1, 0));
    blue_ = Isa::setInts(bytes(0, 0, 1));
    redGreen_ = Isa::setInts(bytes(1, 1, 0));
    lattice_ = reinterpret_cast<const char*>(lut.data.data());
    highest_ = lattice_ + bytes(1, 1, 1) - kFloatBytes;
    for (int k = 0; k < 3; ++k) {
        domainMin_[k] = Isa::set(lut.domainMin[k]);
        domainRange_[k] = Isa::set(lut.domainMax[k] - lut.domainMin[k]);
        if (lut.domainMin[k] != 0.0f || lut.domainMax[k] != 1.0f) unitDomain_ = false;
    }
}

template <InstructionSet Isa>
void TwoPass<Isa>::place(Floats r, Floats g, Floats b, Batch& batch, int at) const {
    // Subtracting 0 and dividing by 1 would change no bit.
    if (!unitDomain_) {
        r = Isa::div(Isa::sub(r, domainMin_[0]), domainRange_[0]);
        g = Isa::div(Isa::sub(g, domainMin_[1]), domainRange_[1]);
        b = Isa::div(Isa::sub(b, domainMin_[2]), domainRange_[2]);
    }
    r = Isa::mul(Isa::clampToUnit(r), steps_);
    g = Isa::mul(Isa::clampToUnit(g), steps_);
    b = Isa::mul(Isa::clampToUnit(b), steps_);
    const Floats cellR = Isa::minNonNegative(Isa::wholePart(r), lastCell_);
    const Floats cellG = Isa::minNonNegative(Isa::wholePart(g), lastCell_);
    const Floats cellB = Isa::minNonNegative(Isa::wholePart(b), lastCell_);
    // At most 256^3, which floats hold exactly, as they do all that leads to it.
    const Floats line = Isa::add(Isa::mul(cellB, points_), cellG);
    const Floats point = Isa::add(Isa::mul(line, points_), cellR);
    chooseCorners(Isa::sub(r, cellR), Isa::sub(g, cellG), Isa::sub(b, cellB),
                  Isa::timesTwelve(Isa::toInts(point)), batch, at);
}

// The decision tree of sampleTetra as two questions, asked once red and green are in order (hi,
// lo): is blue above both, is it below both? Which way equal fractions count depends on which of
// red and green is hi. Where red is,
//     blue is above when b >= hi, and below when b < lo; elsewhere
//     blue is above when b >  hi, and below when b <= lo.
// Moving hi and lo to the next value down turns the first line's questions into the second's. The
// fractions are 0 to 1, never -0 and never NaN, so that their bits order as integers do, with
// -1 the next down from 0; processors can compare more integers than floats a cycle. Sorted
// fractions give the tree's own weights, but for the sign of one that is zero, and a zero's sign is
// gone once the colour has been set off against the source.
template <InstructionSet Isa>
void TwoPass<Isa>::chooseCorners(Floats r, Floats g, Floats b, Ints lowest, Batch& batch,
                                 int at) const {
    const Mask redAbove = Isa::above(r, g);
    const Floats hi = Isa::maxNonNegative(r, g);
    const Floats lo = Isa::minNonNegative(r, g);
    const Mask blueAbove = Isa::above(b, Isa::nextDownWhere(redAbove, hi));
    const Mask blueNotBelow = Isa::above(b, Isa::nextDownWhere(redAbove, lo));

    const Floats most = Isa::maxNonNegative(hi, b);
    const Floats middle = Isa::maxNonNegative(lo, Isa::minNonNegative(hi, b));
    const Floats least = Isa::minNonNegative(lo, b);
    Isa::store(batch.weight[0] + at, Isa::sub(Isa::set(1.0f), most));
    Isa::store(batch.weight[1] + at, Isa::sub(most, middle));
    Isa::store(batch.weight[2] + at, Isa::sub(middle, least));
    Isa::store(batch.weight[3] + at, least);

    const Ints upper = Isa::selectInts(redAbove, red_, green_);
    const Ints first = Isa::selectInts(blueAbove, blue_, upper);
    const Ints second = Isa::selectInts(blueNotBelow, Isa::addInts(upper, blue_), redGreen_);
    Isa::storeInts(batch.lowest + at, lowest);
    Isa::storeInts(batch.first + at, Isa::addInts(lowest, first));
    Isa::storeInts(batch.second + at, Isa::addInts(lowest, second));
}

}  // namespace
}  // namespace tw
