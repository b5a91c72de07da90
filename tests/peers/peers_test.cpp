// The effect's float pictures against those of independent programs, look by look.
//
// The stored text holds samples in 16 bits, so the peers get the LUT as it was stored, written out
// again with all digits: what is compared is the interpolation, not the storing.
#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "looks/forms.h"
#include "tests/peers/peer.h"
#include "tests/support/row_name.h"
#include "tests/support/temp_folder.h"
#include "tintwell_host/files/cube_file.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/home.h"
#include "tintwell_host/session/effect_session.h"

namespace {

namespace fs = std::filesystem;
using peers::Pixels;

// Two programs that round every step of single precision in their own order.
constexpr float kTolerance = 1e-6f;

struct Case {
    std::string name;
    std::string look;     // .cube file
    std::string picture;  // picture file
};

void PrintTo(const Case& value, std::ostream* out) {
    *out << value.name;
}

class Peers : public testing::TestWithParam<Case> {
protected:
    void SetUp() override {
        for (const std::string& file : {GetParam().look, GetParam().picture}) {
            if (!fs::exists(file)) GTEST_SKIP() << file << " is not here; scripts/fetch-samples";
        }
        program::enterHome(folder_.path());
        const std::string text = program::textFromCube(GetParam().look);
        cube_ = folder_ / "stored.cube";
        program::writeWhole(cube_, looks::writeCube(program::lutFromText(text, "the look")));

        const program::Picture picture =
            program::readPicture(GetParam().picture, program::Depth::kFloat);
        input_ = {picture.width, picture.height, picture.floats};
        program::EffectOptions options;
        options.module = TINTWELL_MODULE;
        program::EffectSession session(options);
        session.scan(text, "the look");
        ours_ = {picture.width, picture.height, session.render(picture).floats};
        session.close();
    }

    void expectSame(const Pixels& theirs) const {
        ASSERT_EQ(theirs.rgba.size(), ours_.rgba.size());
        float largest = 0.0f;
        for (std::size_t i = 0; i < ours_.rgba.size(); ++i) {
            const float difference = std::fabs(ours_.rgba[i] - theirs.rgba[i]);
            ASSERT_TRUE(difference <= kTolerance)
                << "pixel " << i / 4 << " channel " << i % 4 << ": ours " << ours_.rgba[i]
                << ", theirs " << theirs.rgba[i] << ", input " << input_.rgba[i];
            largest = std::max(largest, difference);
        }
        RecordProperty("largest_difference", std::to_string(largest));
        EXPECT_NE(ours_.rgba, input_.rgba) << "the look changes nothing";
    }

    twtest::TempFolder folder_;
    std::string cube_;
    Pixels input_;
    Pixels ours_;
};

TEST_P(Peers, agreeWithOpenColorIO) {
    const auto theirs = peers::applyWithOpenColorIO(cube_, input_);
    if (!theirs) GTEST_SKIP() << "built without OpenColorIO";
    expectSame(*theirs);
}

TEST_P(Peers, agreeWithFFmpeg) {
    const auto theirs = peers::applyWithFFmpeg(cube_, input_, folder_.path());
    if (!theirs) GTEST_SKIP() << "ffmpeg is not installed";
    expectSame(*theirs);
}

const std::string kSource = TINTWELL_SOURCE;
const std::string kPhoto = kSource + "/build/samples/photo.jpg";

INSTANTIATE_TEST_SUITE_P(
    Looks, Peers,
    testing::Values(Case{"GoldenHour", kSource + "/examples/golden-hour.cube", kPhoto},
                    Case{"BleachBypass", kSource + "/examples/bleach-bypass.cube", kPhoto},
                    Case{"Grayscale", kSource + "/build/samples/grayscale.cube", kPhoto}),
    twtest::RowName());

}  // namespace
