// Pattern, grade, measurement, look, picture: does the effect then do what the grade does? The
// pattern is drawn by the effect, graded by another program, measured, and the look applied to a
// photograph by the effect; the same program grades the photograph itself.
//
// A look of N points cannot follow a grade between them. What that costs is known without the
// effect: the grade's own values at the N^3 colours, interpolated. The way through the pattern must
// cost no more than that and the rounding of the stored text.
#include <gtest/gtest.h>

#include <cmath>
#include <nlohmann/json.hpp>

#include "looks/measure.h"
#include "native/src/lut_engine.h"
#include "native/src/lut_text.h"
#include "tests/round_trip/grades.h"
#include "tests/support/temp_folder.h"
#include "tintwell_host/home.h"
#include "tintwell_host/session/effect_session.h"

namespace round_trip {
namespace {

using program::Depth;

enum class Way { kDirect, kJpeg, kH264 };

struct Case {
    const Grade* grade;
    Depth depth;
    int size;
    Way way = Way::kDirect;

    std::string name() const {
        const char* kind = way == Way::kJpeg    ? "Jpeg"
                           : way == Way::kH264  ? "H264"
                           : depth == Depth::k8 ? "8Bits"
                                                : "Float";
        return grade->name + "_" + kind + "_" + std::to_string(size);
    }
};

void PrintTo(const Case& value, std::ostream* out) {
    *out << value.name();
}

Picture blank(int width, int height, Depth depth) {
    Picture picture;
    picture.width = width;
    picture.height = height;
    picture.depth = depth;
    const auto samples = static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4;
    picture.bytes.assign(depth == Depth::k8 ? samples : 0, 255);
    picture.floats.assign(depth == Depth::kFloat ? samples : 0, 1.0f);
    return picture;
}

// A frame in which the patches are big enough, but no bigger than that takes.
Picture frameFor(const Case& now) {
    const int height = now.size <= 17 ? 540 : now.size <= 33 ? 1080 : 2340;
    return blank(height * 16 / 9, height, now.depth);
}

// Colour samples in 0..1.
std::vector<float> valuesOf(const Picture& picture) {
    if (picture.depth == Depth::kFloat) return picture.floats;
    std::vector<float> values;
    for (const std::uint8_t byte : picture.bytes)
        values.push_back(static_cast<float>(byte) / 255.0f);
    return values;
}

struct Difference {
    double largest = 0.0;
    double mean = 0.0;
};

// In steps of 8 bits, of the colours.
Difference differenceOf(const std::vector<float>& a, const std::vector<float>& b) {
    Difference difference;
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (i % 4 == 3) continue;
        const double off = std::fabs(static_cast<double>(a[i]) - static_cast<double>(b[i])) * 255.0;
        if (!(off <= difference.largest)) difference.largest = off;
        difference.mean += off;
    }
    difference.mean /= static_cast<double>(a.size()) * 0.75;
    return difference;
}

// One pixel for each lattice point: what an ideal measurement sees.
Picture latticePicture(int size) {
    Picture picture = blank(size * size, size, Depth::kFloat);
    const float k = 1.0f / static_cast<float>(size - 1);
    std::size_t at = 0;
    for (int blue = 0; blue < size; ++blue) {
        for (int green = 0; green < size; ++green) {
            for (int red = 0; red < size; ++red, at += 4) {
                picture.floats[at] = k * static_cast<float>(red);
                picture.floats[at + 1] = k * static_cast<float>(green);
                picture.floats[at + 2] = k * static_cast<float>(blue);
            }
        }
    }
    return picture;
}

tw::Lut3D lutOfLattice(const Picture& picture, int size) {
    tw::Lut3D lut;
    lut.size = size;
    for (std::size_t at = 0; at < picture.floats.size(); at += 4)
        lut.data.insert(lut.data.end(), &picture.floats[at], &picture.floats[at] + 3);
    return lut;
}

std::vector<float> interpolated(const tw::Lut3D& lut, const Picture& picture) {
    std::vector<float> values = picture.floats;
    for (std::size_t at = 0; at < values.size(); at += 4)
        tw::sampleTetra(lut, &values[at], &values[at]);
    return values;
}

class RoundTrip : public testing::TestWithParam<Case> {
protected:
    void SetUp() override { program::enterHome(folder_.path()); }

    Picture render(const std::string& text, const Picture& picture) {
        program::EffectOptions options;
        options.module = TINTWELL_MODULE;
        program::EffectSession session(options);
        session.scan(text, text.substr(0, 20));
        Picture result = session.render(picture);
        session.close();
        return result;
    }

    Picture photograph() const {
        return program::readPicture(TINTWELL_SOURCE "/docs/pictures/before.jpg", GetParam().depth);
    }

    std::optional<Picture> grade(const Picture& picture) {
        return GetParam().grade->apply(picture, folder_.path());
    }

    // Nothing when a program is missing.
    std::optional<looks::Measurement> measured() {
        const Case& now = GetParam();
        auto picture = grade(render("TWLUTP " + std::to_string(now.size), frameFor(now)));
        if (picture && now.way == Way::kJpeg) picture = throughJpeg(*picture, folder_.path());
        if (picture && now.way == Way::kH264) picture = throughH264(*picture, folder_.path());
        if (!picture) return std::nullopt;
        const std::vector<float> values = valuesOf(*picture);
        looks::Measurement measurement;
        std::string reason;
        EXPECT_TRUE(looks::measurePattern({values.data(), picture->width, picture->height},
                                          {now.size, 0, 0}, measurement, reason))
            << reason;
        return measurement;
    }

    Difference compared(const looks::Measurement& measurement, const Picture& photo,
                        const Picture& graded) {
        const std::string text = tw::toEmbeddedText(measurement.lut, 1, "round trip");
        const Difference difference = differenceOf(valuesOf(render(text, photo)), valuesOf(graded));
        // For the table of the documentation.
        if (const char* results = std::getenv("TINTWELL_ROUND_TRIP_RESULTS")) {
            const nlohmann::json row = {{"program", GetParam().grade->program},
                                        {"does", GetParam().grade->does},
                                        {"largest", difference.largest},
                                        {"mean", difference.mean}};
            twtest::writeFile(std::string(results) + "/" + GetParam().name() + ".json",
                              row.dump() + "\n");
        }
        return difference;
    }

    twtest::TempFolder folder_;
};

using RoundTripFloat = RoundTrip;
using RoundTrip8Bits = RoundTrip;

// Half a code of the stored text, and single precision.
double storedWithin(const tw::Lut3D& lut) {
    const auto [lo, hi] = std::minmax_element(lut.data.begin(), lut.data.end());
    return (static_cast<double>(*hi) - static_cast<double>(*lo)) / 65535.0 / 2.0 * 255.0 + 1e-3;
}

TEST_P(RoundTripFloat, costsNoMoreThanInterpolation) {
    const Picture photo = photograph();
    const auto measurement = measured();
    if (!measurement) GTEST_SKIP() << GetParam().grade->program << " is not here";
    const Picture graded = *grade(photo);
    const int size = GetParam().size;
    const tw::Lut3D ideal = lutOfLattice(*grade(latticePicture(size)), size);
    for (std::size_t i = 0; i < ideal.data.size(); ++i)
        ASSERT_NEAR(measurement->lut.data[i], ideal.data[i], 1e-6f) << "value " << i;
    const Difference allowed = differenceOf(interpolated(ideal, photo), graded.floats);
    const Difference difference = compared(*measurement, photo, graded);
    EXPECT_LE(difference.largest, allowed.largest + storedWithin(ideal));
    EXPECT_LE(difference.mean, allowed.mean + storedWithin(ideal));
    EXPECT_GT(differenceOf(photo.floats, graded.floats).mean, 2.0) << "the grade changes little";
}

TEST_P(RoundTrip8Bits, looksTheSame) {
    const Picture photo = photograph();
    const auto measurement = measured();
    if (!measurement) GTEST_SKIP() << GetParam().grade->program << " is not here";
    const Picture graded = *grade(photo);
    const Difference difference = compared(*measurement, photo, graded);
    // Each step of the way rounds to 8 bits; what compression adds was found by trial.
    const Way way = GetParam().way;
    const double most = way == Way::kDirect ? 1.0 : way == Way::kJpeg ? 1.5 : 3.0;
    if (GetParam().size >= 33) {
        EXPECT_LT(difference.mean, most);
    }
    EXPECT_GT(differenceOf(valuesOf(photo), valuesOf(graded)).mean, 2.0)
        << "the grade changes little";
}

std::vector<Case> casesOf(Depth depth, const std::vector<int>& sizes, Way way = Way::kDirect) {
    std::vector<Case> cases;
    for (const Grade& grade : grades()) {
        if (depth == Depth::kFloat && !grade.floats) continue;
        for (const int size : sizes)
            cases.push_back({&grade, depth, size, way});
    }
    return cases;
}

const auto nameOf = [](const auto& value) { return value.param.name(); };

INSTANTIATE_TEST_SUITE_P(Quick, RoundTripFloat,
                         testing::ValuesIn(casesOf(Depth::kFloat, {9, 17, 33})), nameOf);
INSTANTIATE_TEST_SUITE_P(Slow, RoundTripFloat, testing::ValuesIn(casesOf(Depth::kFloat, {64})),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(Quick, RoundTrip8Bits, testing::ValuesIn(casesOf(Depth::k8, {9, 17, 33})),
                         nameOf);
INSTANTIATE_TEST_SUITE_P(QuickJpeg, RoundTrip8Bits,
                         testing::ValuesIn(casesOf(Depth::k8, {33}, Way::kJpeg)), nameOf);
INSTANTIATE_TEST_SUITE_P(SlowH264, RoundTrip8Bits,
                         testing::ValuesIn(casesOf(Depth::k8, {33}, Way::kH264)), nameOf);

}  // namespace
}  // namespace round_trip
