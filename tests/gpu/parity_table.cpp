#include "tests/gpu/parity_table.h"

#include <cstdio>
#include <limits>
#include <utility>

namespace twtest {
namespace {

std::vector<Colour> together(std::vector<Colour> colours, const std::vector<Colour>& more) {
    colours.insert(colours.end(), more.begin(), more.end());
    return colours;
}

tw::Lut3D lutOfAnotherDomain(int size) {
    tw::Lut3D lut = scatteredLut(size, 6);
    setDomain(lut, 0, -0.1f, 1.2f);
    setDomain(lut, 1, 0.0f, 2.0f);
    setDomain(lut, 2, 0.25f, 0.75f);
    return lut;
}

void addRowsOfSize(std::vector<ParityRow>& rows, int size) {
    const std::string suffix = "_" + std::to_string(size);
    const auto scattered = [size](int seed) {
        return [size, seed] { return scatteredLut(size, static_cast<std::uint64_t>(seed)); };
    };
    rows.push_back({"tetrahedra_and_ties" + suffix, size, scattered(3),
                    [](const tw::Lut3D& lut) { return framesOf(tetrahedra(lut)); }});
    rows.push_back({"lattice_points" + suffix, size, scattered(4),
                    [](const tw::Lut3D& lut) { return framesOf(latticePoints(lut)); }});
    rows.push_back({"noise_in_and_beyond_the_domain" + suffix, size, scattered(5),
                    [](const tw::Lut3D& lut) { return framesOf(noise(lut, 3000)); }});
    rows.push_back({"another_domain" + suffix, size, [size] { return lutOfAnotherDomain(size); },
                    [](const tw::Lut3D& lut) {
                        return framesOf(together(tetrahedra(lut), noise(lut, 1000)));
                    }});
}

tw::Lut3D lutNotFinite() {
    tw::Lut3D lut = scatteredLut(3, 9);
    lut.data[0] = std::numeric_limits<float>::quiet_NaN();
    lut.data[4] = std::numeric_limits<float>::infinity();
    lut.data[44] = -std::numeric_limits<float>::infinity();
    lut.data[50] = 1e-40f;
    return lut;
}

tw::Lut3D lutWithInfiniteCorner(std::size_t corner) {
    tw::Lut3D lut = scatteredLut(2, 15);
    for (std::size_t channel = 0; channel < 3; ++channel)
        lut.data[corner * 3 + channel] = std::numeric_limits<float>::infinity();
    return lut;
}

void addRowsOfSpecials(std::vector<ParityRow>& rows) {
    rows.push_back({"not_a_number_infinities_subnormals_and_values_far_outside", 17,
                    [] { return scatteredLut(17, 8); },
                    [](const tw::Lut3D&) { return framesOf(specials()); }});
    // Where nothing larger hides them.
    rows.push_back({"subnormals_through_the_identity", 17, [] { return identityLut(17); },
                    [](const tw::Lut3D&) { return framesOf(specials()); }});
    rows.push_back({"samples_that_are_not_finite", 3, lutNotFinite,
                    [](const tw::Lut3D& lut) { return framesOf(tetrahedra(lut)); }});
    // A corner without weight shows then: which one it is decides about a result that is no number.
    for (std::size_t corner = 0; corner < 8; ++corner)
        rows.push_back({"ties_beside_an_infinite_corner_" + std::to_string(corner), 2,
                        [corner] { return lutWithInfiniteCorner(corner); },
                        [](const tw::Lut3D& lut) { return framesOf(tetrahedra(lut)); }});
}

std::vector<ParityFrame> framesOfOddShapes(const tw::Lut3D& lut) {
    const std::vector<Colour> colours = noise(lut, 500);
    std::vector<ParityFrame> frames;
    for (const bool half : {false, true}) {
        for (const auto& [width, height] :
             {std::pair(1, 1), {15, 17}, {16, 16}, {17, 31}, {129, 3}}) {
            const Picture source = pictureOf(colours, {width, height, width + 5, half});
            frames.push_back({source, 1.0f, Place::kInPlace, source.shape});
            frames.push_back({source, 1.0f, Place::kOtherBuffer, {width, height, width, half}});
        }
    }
    return frames;
}

std::vector<ParityFrame> framesOfEveryPercent(const tw::Lut3D& lut) {
    const Picture source = pictureOf(noise(lut, 400), {20, 20, 20, false});
    std::vector<ParityFrame> frames;
    for (int percent = 1; percent <= 100; ++percent)
        frames.push_back(
            {source, static_cast<float>(percent) / 100.0f, Place::kInPlace, source.shape});
    return frames;
}

}  // namespace

std::vector<ParityFrame> framesOf(const std::vector<Colour>& colours) {
    const int width = 37;
    const int height = (static_cast<int>(colours.size()) + width - 1) / width;
    std::vector<ParityFrame> frames;
    for (const bool half : {false, true}) {
        const Picture source = pictureOf(colours, {width, height, width + 3, half});
        for (const float amount : {0.5f, 1.0f, 1.7f}) {
            frames.push_back({source, amount, Place::kInPlace, source.shape});
            frames.push_back(
                {source, amount, Place::kOtherBuffer, {width, height, width + 8, half}});
        }
    }
    return frames;
}

std::vector<ParityRow> parityTable() {
    std::vector<ParityRow> rows;
    for (const int size : {2, 3, 17, 33, 65, 129})
        addRowsOfSize(rows, size);
    addRowsOfSpecials(rows);
    rows.push_back(
        {"odd_sizes_and_pitches", 17, [] { return scatteredLut(17, 10); }, framesOfOddShapes});
    rows.push_back(
        {"every_percent", 17, [] { return scatteredLut(17, 13); }, framesOfEveryPercent});
    return rows;
}

std::string describe(const ParityFrame& frame) {
    char text[120];
    std::snprintf(text, sizeof text, "%d x %d, %s, %s, amount %.2f", frame.shape.width,
                  frame.shape.height, frame.shape.half ? "16f" : "32f",
                  frame.place == Place::kInPlace ? "in place" : "to another buffer",
                  static_cast<double>(frame.amount));
    return text;
}

std::vector<int> patternSizes() {
    return {2, 3, 4, 5, 8, 16, 17, 31, 33, 63, 64};
}

std::vector<Shape> patternShapes() {
    std::vector<Shape> shapes;
    for (const bool half : {false, true}) {
        shapes.push_back({320, 180, 323, half});
        shapes.push_back({101, 97, 101, half});
        shapes.push_back({1, 40, 3, half});
    }
    // The widest frame: places times columns pass 32 bits.
    shapes.push_back({32767, 1, 32767, false});
    return shapes;
}

}  // namespace twtest
