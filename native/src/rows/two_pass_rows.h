// Rows of floats and of bytes through the two passes. Included in the same way as two_pass.h.
#pragma once

#include <cstring>

#include "native/src/engine/pixel.h"
#include "native/src/rows/row_kernel.h"
#include "native/src/rows/two_pass.h"

namespace tw {
namespace {

constexpr int kChannels = 4;

// Asks for the `bytes` source bytes that follow some batches behind `src`. The processor's own
// prefetcher loses the row among the fetches from the lattice: without this a large frame
// takes twice as long. Past the end of a row this prefetches the next one, or an address
// that is not there, which is harmless.
template <std::size_t bytes>
void prefetch(const void* src) {
    constexpr std::size_t ahead = 2048;
    constexpr std::size_t line = 64;
    const std::uintptr_t start = reinterpret_cast<std::uintptr_t>(src) + ahead;
    for (std::size_t at = 0; at < bytes; at += line)
        __builtin_prefetch(reinterpret_cast<const void*>(start + at));
}

template <InstructionSet Isa>
class FloatRow {
public:
    using Passes = TwoPass<Isa>;
    using Batch = typename Passes::Batch;
    using Weights = typename Passes::Weights;
    using Floats = typename Isa::Floats;

    FloatRow(const Lut3D& lut, const ChannelMap& from, const ChannelMap& to, float amount)
        : passes_(lut, amount), redAt_(from.r), reordered_(from.r != to.r) {
        std::int32_t read[kChannels];
        std::int32_t sampled[kChannels];
        const int reads[] = {from.r, from.g, from.b, from.a};
        const int writes[] = {to.r, to.g, to.b, to.a};
        for (int channel = 0; channel < kChannels; ++channel) {
            read[writes[channel]] = reads[channel];
            sampled[writes[channel]] = channel;
        }
        read_ = Isa::floatOrder(read);
        sampled_ = Isa::floatOrder(sampled);
        alpha_ = Isa::elementMask(to.a);
    }

    void grade(const float* src, float* dst, int width) { gradeRow<false>(src, dst, width); }

    // Writes around the caches, which a large picture would only flush. The stores need alignment
    // of whole vectors; rows whose pixels never meet it are written as usual.
    void stream(const float* src, float* dst, int width)
        requires StreamingInstructionSet<Isa>
    {
        constexpr std::uintptr_t pixelBytes = sizeof(float) * kChannels;
        const auto address = reinterpret_cast<std::uintptr_t>(dst);
        if (address % pixelBytes != 0 || width <= 0) return grade(src, dst, width);
        const auto behind = static_cast<int>(address / pixelBytes % Isa::kBlocks);
        const int toAligned = behind == 0 ? 0 : Isa::kBlocks - behind;
        const int head = toAligned < width ? toAligned : width;
        gradePart(src, dst, head);
        gradeRow<true>(src + kChannels * head, dst + kChannels * head, width - head);
        Isa::finishStreams();
    }

private:
    static constexpr int kGroup = Passes::kGroup;

    template <bool kStream>
    void gradeRow(const float* src, float* dst, int width) {
        while (width >= kGroup) {
            const int groups = width < Passes::kBatch ? width / kGroup : Passes::kBatch / kGroup;
            const int count = groups * kGroup;
            gradeBatch<kStream>(src, dst, count);
            src += kChannels * count;
            dst += kChannels * count;
            width -= count;
        }
        gradePart(src, dst, width);
    }

    // Fewer pixels than a group.
    void gradePart(const float* src, float* dst, int count) {
        if (count <= 0) return;
        const std::size_t bytes = sizeof(float) * kChannels * static_cast<std::size_t>(count);
        float pixels[kChannels * kGroup] = {};
        std::memcpy(pixels, src, bytes);
        gradeBatch<false>(pixels, pixels, kGroup);
        std::memcpy(dst, pixels, bytes);
    }

    template <bool kStream>
    void gradeBatch(const float* src, float* dst, int count) const {
        // A copy, so that the compiler sees that stores to dst do not change it.
        const FloatRow row = *this;
        Batch batch;
        for (int at = 0; at < count; at += kGroup) {
            prefetch<sizeof(float) * kChannels * kGroup>(src + kChannels * at);
            row.place(src + kChannels * at, batch, at);
        }
        for (int at = 0; at < count; at += kGroup) {
            const Weights weights = Passes::weights(batch, at);
            row.template finish<0, kStream>(weights, batch, src, dst, at);
            row.template finish<1, kStream>(weights, batch, src, dst, at);
            row.template finish<2, kStream>(weights, batch, src, dst, at);
            row.template finish<3, kStream>(weights, batch, src, dst, at);
        }
    }

    // Chooses by branches, as indexed vectors would have to go through memory.
    void place(const float* src, Batch& batch, int at) const {
        Floats plane[kChannels];
        Isa::loadPlanes(src, plane);
        Floats r = plane[2];
        Floats g = plane[1];
        Floats b = plane[0];
        if (redAt_ == 1) {
            r = plane[1];
            g = plane[2];
            b = plane[3];
        } else if (redAt_ == 0) {
            r = plane[0];
            b = plane[2];
        }
        passes_.place(r, g, b, batch, at);
    }

    template <int k, bool kStream>
    void finish(const Weights& weights, const Batch& batch, const float* src, float* dst,
                int at) const {
        const int first = kChannels * (at + k * Isa::kBlocks);
        Floats in = Isa::load(src + first);
        if (reordered_) in = Isa::reorder(in, read_);
        const Floats sampled = passes_.template sample<k>(weights, batch, at);
        const Floats graded = passes_.blend(Isa::reorder(sampled, sampled_), in);
        const Floats out = Isa::selectBits(alpha_, in, graded);
        if constexpr (kStream) {
            Isa::stream(dst + first, out);
        } else {
            Isa::store(dst + first, out);
        }
    }

    Passes passes_;
    int redAt_;
    // Colours are blended as they stand in dst. The two orders bring there what was read, where
    // that differs, and what was sampled.
    bool reordered_;
    typename Isa::FloatOrder read_, sampled_;
    typename Isa::Ints alpha_;
};

template <InstructionSet Isa>
class ByteRow {
public:
    using Passes = TwoPass<Isa>;
    using Batch = typename Passes::Batch;
    using Weights = typename Passes::Weights;
    using Floats = typename Isa::Floats;
    using Ints = typename Isa::Ints;

    ByteRow(const Lut3D& lut, const ChannelMap& from, const ChannelMap& to, float amount)
        : passes_(lut, amount) {
        for (int pixel = 0; pixel < 4; ++pixel) {
            const int at = kChannels * pixel;
            red_.pick(4 * pixel, at + from.r);
            green_.pick(4 * pixel, at + from.g);
            blue_.pick(4 * pixel, at + from.b);
            working_[pixel].pick(0, at + from.r);
            working_[pixel].pick(4, at + from.g);
            working_[pixel].pick(8, at + from.b);
            toDst_.pick(at + to.r, at + 0);
            toDst_.pick(at + to.g, at + 1);
            toDst_.pick(at + to.b, at + 2);
            alpha_.pick(at + to.a, at + from.a);
        }
    }

    void grade(const std::uint8_t* src, std::uint8_t* dst, int width) {
        while (width >= kGroup) {
            const int groups = width < Passes::kBatch ? width / kGroup : Passes::kBatch / kGroup;
            const int count = groups * kGroup;
            gradeBatch(src, dst, count);
            src += kChannels * count;
            dst += kChannels * count;
            width -= count;
        }
        if (width <= 0) return;
        const auto rest = static_cast<std::size_t>(kChannels * width);
        std::uint8_t pixels[kChannels * kGroup] = {};
        std::memcpy(pixels, src, rest);
        gradeBatch(pixels, pixels, kGroup);
        std::memcpy(dst, pixels, rest);
    }

private:
    static constexpr int kGroup = Passes::kGroup;

    // A choice of bytes within each block: byte i of the result is byte from[i], or 0.
    struct Bytes {
        alignas(16) std::uint8_t from[16];
        Bytes() { std::memset(from, Isa::kNoByte, sizeof from); }
        void pick(int to, int at) { from[to] = static_cast<std::uint8_t>(at); }
        Ints of(Ints pixels) const { return Isa::shuffleBytes(pixels, Isa::repeat(from)); }
    };

    static Floats unit(Ints bytes) {
        return Isa::mul(Isa::toFloats(bytes), Isa::set(kByteToFloat));
    }

    void gradeBatch(const std::uint8_t* src, std::uint8_t* dst, int count) const {
        const ByteRow row = *this;  // as in FloatRow
        Batch batch;
        for (int at = 0; at < count; at += kGroup) {
            prefetch<kChannels * kGroup>(src + kChannels * at);
            const Ints pixels = Isa::loadBytes(src + kChannels * at);
            row.passes_.place(unit(row.red_.of(pixels)), unit(row.green_.of(pixels)),
                              unit(row.blue_.of(pixels)), batch, at);
        }
        for (int at = 0; at < count; at += kGroup) {
            const Ints pixels = Isa::loadBytes(src + kChannels * at);
            const Weights weights = Passes::weights(batch, at);
            const Ints graded = Isa::packBytes(row.template finish<0>(weights, batch, pixels, at),
                                               row.template finish<1>(weights, batch, pixels, at),
                                               row.template finish<2>(weights, batch, pixels, at),
                                               row.template finish<3>(weights, batch, pixels, at));
            Isa::storeBytes(dst + kChannels * at,
                            Isa::orBits(row.toDst_.of(graded), row.alpha_.of(pixels)));
        }
    }

    // quantise8, but for what the packing does: negative values become 0 there.
    template <int k>
    Ints finish(const Weights& weights, const Batch& batch, Ints pixels, int at) const {
        const Floats in = unit(working_[k].of(pixels));
        const Floats out = passes_.blend(passes_.template sample<k>(weights, batch, at), in);
        const Floats q = Isa::mulAdd(out, Isa::set(255.0f), Isa::set(0.5f));
        return Isa::toInts(Isa::minOrNaN(Isa::set(255.0f), q));
    }

    Passes passes_;
    Bytes red_, green_, blue_, working_[4], toDst_, alpha_;
};

template <InstructionSet Isa>
void gradeRow8(const Lut3D& lut, const std::uint8_t* src, const ChannelMap& from, std::uint8_t* dst,
               const ChannelMap& to, int width, float amount) {
    ByteRow<Isa>(lut, from, to, amount).grade(src, dst, width);
}

template <InstructionSet Isa>
void gradeRowF(const Lut3D& lut, const float* src, const ChannelMap& from, float* dst,
               const ChannelMap& to, int width, float amount) {
    FloatRow<Isa>(lut, from, to, amount).grade(src, dst, width);
}

template <StreamingInstructionSet Isa>
void streamRowF(const Lut3D& lut, const float* src, const ChannelMap& from, float* dst,
                const ChannelMap& to, int width, float amount) {
    FloatRow<Isa>(lut, from, to, amount).stream(src, dst, width);
}

template <InstructionSet Isa>
constexpr RowKernels rowKernelsOf(const char* name) {
    if constexpr (StreamingInstructionSet<Isa>) {
        return {name, gradeRow8<Isa>, gradeRowF<Isa>, streamRowF<Isa>};
    } else {
        return {name, gradeRow8<Isa>, gradeRowF<Isa>, gradeRowF<Isa>};
    }
}

}  // namespace
}  // namespace tw
