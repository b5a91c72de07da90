// The CPU render while calls fail.
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>

#include "tests/faults/effect_scenario.h"
#include "tests/support/formats.h"
#include "tests/support/frames.h"
#include "tests/support/row_name.h"

namespace faults {
namespace {

using host_sim::Frame;
using twtest::HostFormat;
using twtest::kAmount;
using twtest::kARGB8;
using twtest::kBGRA32f;
using twtest::kBGRA8;
using twtest::rotationText;
using twtest::widened;

// Enough rows for four threads.
constexpr int kWidth = 5;
constexpr int kHeight = 67;

struct Shot {
    HostFormat format;
    std::string text;
    double amount = 100.0;
    bool hasBeenRendered = false;  // once before
};

class Rendering : public EffectScenario {
public:
    explicit Rendering(const Shot& shot)
        : EffectScenario(widened(shot.text), shot.format.personality()),
          input_(twtest::scattered(shot.format.pixels, kWidth, kHeight)),
          untouched_(shot.format.pixels, kWidth, kHeight),
          output_(untouched_),
          amount_(static_cast<float>(shot.amount / 100.0)) {
        hasLut_ = tw::parseEmbeddedText(shot.text, lut_, nullptr) && lut_.size != 0;
        effect().setSlider(kAmount, shot.amount);
        if (shot.hasBeenRendered) run();
    }

    void run() override {
        output_ = untouched_;
        error_ = effect().render(input_, output_).error;
    }

    std::string outcome() override { return answered(error_, "no error") + ", " + picture(); }

private:
    std::string picture() const {
        if (output_.sameMemory(untouched_)) return "untouched";
        if (same(input_)) return "copy";
        if (hasLut_ && same(twtest::graded(lut_, input_, untouched_, amount_))) return "graded";
        const int n = lut_.probe;
        if (n != 0 && same(twtest::patterned(n, untouched_))) return "pattern";
        return "other picture";
    }

    bool same(const Frame& expected) const { return expected.pixelBytes() == output_.pixelBytes(); }

    Frame input_;
    Frame untouched_;
    Frame output_;
    float amount_;
    tw::Lut3D lut_;
    bool hasLut_ = false;
    PF_Err error_ = 0;
};

class RenderFaults : public testing::TestWithParam<HostFormat> {
protected:
    Shot shot(const std::string& text, double amount = 100.0) const {
        return {GetParam(), text, amount};
    }

    // A render with this picture. Without the LUT's value it is a copy. In Premiere Pro an
    // output of unknown format counts as 8-bit.
    Expected render(const std::string& picture) const {
        const std::string good = "no error, " + picture;
        Expected expected =
            Expected(good).failed(kNew, {"error 512, untouched"}).failed(kLock, {"no error, copy"});
        if (!GetParam().premiere) return expected;
        const bool isFloat = GetParam().pixels == PrPixelFormat_BGRA_4444_32f;
        const Outcomes asBytes = {isFloat ? "no error, other picture" : good};
        return expected.failed(kFormat, asBytes).failed(kSuite, asBytes).failed(kNoTable, asBytes);
    }

    // The same with a line in the log.
    Expected loggedRender(const std::string& picture) const {
        return render(picture).harmless(kLogKinds);
    }

    // The same on several threads. Rows without a thread are done by the caller.
    Expected threadedRender(const std::string& picture) const {
        return loggedRender(picture)
            .failed(kNew, {"error 512, untouched", "no error, " + picture})
            .harmless({kThread});
    }
};

INSTANTIATE_TEST_SUITE_P(Formats, RenderFaults, testing::Values(kARGB8, kBGRA8, kBGRA32f),
                         twtest::RowName());

TEST_P(RenderFaults, ofALut) {
    expectEffect(scenario<Rendering>(shot(rotationText())), threadedRender("graded"));
}

TEST_P(RenderFaults, ofALutThatIsKnown) {
    Shot again = shot(rotationText());
    again.hasBeenRendered = true;
    // A line is logged only when the picture has changed.
    expectEffect(scenario<Rendering>(again),
                 render("graded")
                     .failed(kNew, {"error 512, untouched", "no error, graded"})
                     .harmless({kThread})
                     .keepsOther({kLock, kFormat, kSuite, kNoTable}));
}

TEST_P(RenderFaults, ofThePattern) {
    expectEffect(scenario<Rendering>(shot("TWLUTP 3")), threadedRender("pattern"));
}

TEST_P(RenderFaults, ofNoLut) {
    expectEffect(scenario<Rendering>(shot("TWLUT0")), loggedRender("copy"));
}

TEST_P(RenderFaults, atAmountZero) {
    expectEffect(scenario<Rendering>(shot(rotationText(), 0.0)), loggedRender("copy"));
}

TEST_P(RenderFaults, ofALutThatDoesNotDecode) {
    expectEffect(scenario<Rendering>(shot("TWLUT3 0 - 2 0 1 AAAA")), loggedRender("copy"));
}

}  // namespace
}  // namespace faults
