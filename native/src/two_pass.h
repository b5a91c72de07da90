// The vector forms' common arithmetic, bit for bit that of sampleTetra. Included by each of them
// inside its target region, after everything else, and by no other file.
//
// A batch of pixels is graded in two passes. The first finds for each pixel its cell, and the
// weights and corners of its tetrahedron, and leaves them in small arrays in the first-level cache;
// the second fetches the corners and blends. Both loops have short chains of dependent steps and
// run near the processor's throughput; one fused loop waits for its own loads.
#pragma once

#include <cstddef>
#include <cstdint>

#include "native/src/lut_engine.h"

namespace tw {
namespace {

// Isa is one instruction set: a vector of kBlocks blocks of 4 floats and the steps on it. Colours
// come in two layouts: planes (one vector a channel, one element a pixel) and pixels (one block a
// pixel: red, green, blue, and a fourth element that means nothing). kGroup pixels make a plane.
// Step k of a group works on element k of every block of its planes, so that spreading a weight
// over its pixel's block stays within the block.
template <typename Isa>
class TwoPass {
public:
    using Floats = typename Isa::Floats;
    using Ints = typename Isa::Ints;
    using Mask = typename Isa::Mask;

    static constexpr int kGroup = Isa::kBlocks * 4;
    static constexpr int kBatch = 64;

    TwoPass(const Lut3D& lut, float amount);

    // First pass, for the group of a batch that starts with pixel `at`.
    void place(Floats r, Floats g, Floats b, int at);

    // The weights of a placed group, as planes.
    struct Weights {
        Floats w0, w1, w2, w3;
    };
    Weights weights(int at) const {
        return {Isa::load(weight_[0] + at), Isa::load(weight_[1] + at), Isa::load(weight_[2] + at),
                Isa::load(weight_[3] + at)};
    }

    // Second pass, step k of a placed group: grades the colours `in`, in pixel layout.
    template <int k>
    Floats grade(const Weights& weights, int at, Floats in) const {
        return Isa::mulAdd(Isa::sub(sample<k>(weights, at), in), amount_, in);
    }

private:
    static constexpr std::int32_t kFloatBytes = sizeof(float);

    void chooseCorners(Floats r, Floats g, Floats b, Ints lowest, int at);

    template <int k>
    Floats sample(const Weights& weights, int at) const {
        const Floats c0 = Isa::gather(lattice_, lowest_ + at + k);
        const Floats c1 = Isa::gather(lattice_, first_ + at + k);
        const Floats c2 = Isa::gather(lattice_, second_ + at + k);
        const Floats c3 = Isa::rotateDown(Isa::gather(highest_, lowest_ + at + k));
        Floats sum = Isa::mul(Isa::template spread<k>(weights.w1), c1);
        sum = Isa::mulAdd(Isa::template spread<k>(weights.w0), c0, sum);
        sum = Isa::mulAdd(Isa::template spread<k>(weights.w2), c2, sum);
        return Isa::mulAdd(Isa::template spread<k>(weights.w3), c3, sum);
    }

    alignas(64) float weight_[4][kBatch];
    // Offsets of the corners in bytes.
    alignas(64) std::int32_t lowest_[kBatch];
    alignas(64) std::int32_t first_[kBatch];
    alignas(64) std::int32_t second_[kBatch];

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

template <typename Isa>
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

template <typename Isa>
void TwoPass<Isa>::place(Floats r, Floats g, Floats b, int at) {
    // Subtracting 0 and dividing by 1 would change no bit.
    if (!unitDomain_) {
        r = Isa::div(Isa::sub(r, domainMin_[0]), domainRange_[0]);
        g = Isa::div(Isa::sub(g, domainMin_[1]), domainRange_[1]);
        b = Isa::div(Isa::sub(b, domainMin_[2]), domainRange_[2]);
    }
    r = Isa::mul(Isa::clampToUnit(r), steps_);
    g = Isa::mul(Isa::clampToUnit(g), steps_);
    b = Isa::mul(Isa::clampToUnit(b), steps_);
    const Floats cellR = Isa::lesserOf(Isa::wholePart(r), lastCell_);
    const Floats cellG = Isa::lesserOf(Isa::wholePart(g), lastCell_);
    const Floats cellB = Isa::lesserOf(Isa::wholePart(b), lastCell_);
    // At most 256^3, which floats hold exactly, as they do all that leads to it.
    const Floats line = Isa::add(Isa::mul(cellB, points_), cellG);
    const Floats point = Isa::add(Isa::mul(line, points_), cellR);
    chooseCorners(Isa::sub(r, cellR), Isa::sub(g, cellG), Isa::sub(b, cellB),
                  Isa::timesTwelve(Isa::toInts(point)), at);
}

// The decision tree of sampleTetra as two questions, asked once red and green are in order (hi,
// lo): is blue above both, is it below both? Which way equal fractions count depends on which of
// red and green is hi. Where red is,
//     blue is above when b >= hi, and below when b < lo; elsewhere
//     blue is above when b >  hi, and below when b <= lo.
// Moving hi and lo to the next float down turns the first line's questions into the second's. (The
// next one down from a zero is not a number; "not at most" then says that blue is not below, and it
// is not.) Sorted fractions give the tree's own weights, but for the sign of one that is zero, and
// a zero's sign is gone once the colour has been set off against the source.
template <typename Isa>
void TwoPass<Isa>::chooseCorners(Floats r, Floats g, Floats b, Ints lowest, int at) {
    const Mask redAbove = Isa::greater(r, g);
    const Floats hi = Isa::greaterOf(r, g);
    const Floats lo = Isa::lesserOf(r, g);
    const Mask blueAbove = Isa::greater(b, Isa::nextDownWhere(redAbove, hi));
    const Mask blueNotBelow = Isa::notAtMost(b, Isa::nextDownWhere(redAbove, lo));

    const Floats most = Isa::greaterOf(hi, b);
    const Floats middle = Isa::greaterOf(lo, Isa::lesserOf(hi, b));
    const Floats least = Isa::lesserOf(lo, b);
    Isa::store(weight_[0] + at, Isa::sub(Isa::set(1.0f), most));
    Isa::store(weight_[1] + at, Isa::sub(most, middle));
    Isa::store(weight_[2] + at, Isa::sub(middle, least));
    Isa::store(weight_[3] + at, least);

    const Ints upper = Isa::selectInts(redAbove, red_, green_);
    const Ints first = Isa::selectInts(blueAbove, blue_, upper);
    const Ints second = Isa::selectInts(blueNotBelow, Isa::addInts(upper, blue_), redGreen_);
    Isa::storeInts(lowest_ + at, lowest);
    Isa::storeInts(first_ + at, Isa::addInts(lowest, first));
    Isa::storeInts(second_ + at, Isa::addInts(lowest, second));
}

}  // namespace
}  // namespace tw
