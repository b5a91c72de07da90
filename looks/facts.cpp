#include "looks/facts.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace looks {
namespace {

constexpr int kGreys = 256;
// Outputs that differ by less are the same one: far below what any picture format keeps.
constexpr float kSame = 1e-6f;

Colour colourAt(const std::vector<float>& data, std::size_t point) {
    return {data[point * 3], data[point * 3 + 1], data[point * 3 + 2]};
}

void countSamples(const tw::Lut3D& lut, Facts& facts) {
    bool first = true;
    for (const float sample : lut.data) {
        if (!std::isfinite(sample)) {
            ++facts.notNumbers;
            continue;
        }
        facts.lowest = first ? sample : std::min(facts.lowest, sample);
        facts.highest = first ? sample : std::max(facts.highest, sample);
        first = false;
    }
    for (std::size_t point = 0; point < facts.points; ++point) {
        const Colour colour = colourAt(lut.data, point);
        const auto has = [&colour](auto test) {
            return std::any_of(colour.begin(), colour.end(), test);
        };
        if (has([](float sample) { return sample < 0.0f; })) ++facts.below;
        if (has([](float sample) { return sample > 1.0f; })) ++facts.above;
    }
}

// NaN is no number to be sorted by; such points count as nobody's duplicates.
std::size_t countDuplicates(const tw::Lut3D& lut, std::size_t points) {
    std::vector<Colour> colours;
    colours.reserve(points);
    for (std::size_t point = 0; point < points; ++point) {
        const Colour colour = colourAt(lut.data, point);
        if (std::none_of(colour.begin(), colour.end(), [](float v) { return std::isnan(v); })) {
            colours.push_back(colour);
        }
    }
    std::sort(colours.begin(), colours.end());
    std::size_t duplicates = 0;
    for (std::size_t at = 0; at < colours.size();) {
        std::size_t end = at + 1;
        while (end < colours.size() && colours[end] == colours[at])
            ++end;
        if (end - at > 1) duplicates += end - at;
        at = end;
    }
    return duplicates;
}

float largestChangeOf(const tw::Lut3D& lut) {
    const auto size = static_cast<std::size_t>(lut.size);
    const auto top = static_cast<float>(size - 1);
    float largest = 0.0f;
    for (std::size_t point = 0; point < lut.data.size() / 3; ++point) {
        const std::array<std::size_t, 3> steps = {point % size, point / size % size,
                                                  point / size / size};
        for (std::size_t k = 0; k < 3; ++k) {
            const float in = static_cast<float>(steps[k]) / top;
            largest = std::max(largest, std::abs(lut.data[point * 3 + k] - in));
        }
    }
    return largest;
}

float greyAt(std::size_t index) {
    return static_cast<float>(index) / (kGreys - 1);
}

ChannelFacts channelFacts(const std::vector<Colour>& greys, std::size_t k) {
    ChannelFacts facts;
    float top = greys.front()[k];
    for (std::size_t i = 0; i < greys.size(); ++i) {
        const float value = greys[i][k];
        top = std::max(top, value);
        if (top - value > facts.fall) {
            facts.fall = top - value;
            facts.fallAt = greyAt(i);
        }
    }
    const auto same = [&](std::size_t i, std::size_t end) {
        return std::abs(greys[i][k] - greys[end][k]) <= kSame;
    };
    std::size_t low = 0;
    while (low + 1 < greys.size() && same(low + 1, 0))
        ++low;
    std::size_t high = greys.size() - 1;
    while (high > 0 && same(high - 1, greys.size() - 1))
        --high;
    facts.flatUpTo = greyAt(low);
    facts.flatFrom = greyAt(high);
    return facts;
}

}  // namespace

Facts factsOf(const tw::Lut3D& lut) {
    Facts facts;
    facts.points = lut.data.size() / 3;
    countSamples(lut, facts);
    facts.duplicates = countDuplicates(lut, facts.points);
    facts.largestChange = largestChangeOf(lut);
    const std::vector<Colour> greys = neutralAxis(lut, kGreys);
    facts.black = greys.front();
    facts.white = greys.back();
    for (std::size_t i = 0; i < greys.size(); ++i) {
        const auto [low, high] = std::minmax({greys[i][0], greys[i][1], greys[i][2]});
        if (high - low > facts.cast) {
            facts.cast = high - low;
            facts.castAt = greyAt(i);
        }
    }
    for (std::size_t k = 0; k < 3; ++k)
        facts.channels[k] = channelFacts(greys, k);
    return facts;
}

Precision precisionOf(const tw::Lut3D& before, const tw::Lut3D& after) {
    Precision precision;
    double sum = 0.0;
    for (std::size_t i = 0; i < before.data.size(); ++i) {
        const float lost = std::abs(before.data[i] - after.data[i]) * 255.0f;
        if (!std::isfinite(lost)) continue;
        precision.largest = std::max(precision.largest, lost);
        sum += static_cast<double>(lost);
    }
    precision.mean = static_cast<float>(sum / static_cast<double>(before.data.size()));
    return precision;
}

}  // namespace looks
