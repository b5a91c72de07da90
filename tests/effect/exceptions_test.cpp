// Exceptions inside the effect: they end as one error code, and leave nothing behind.
#include "tests/effect/effect_fixture.h"
#include "tests/effect/failing_allocations.h"
#include "tests/effect/formats.h"
#include "tests/effect/frames.h"
#include "tests/effect/texts.h"

namespace effect_test {
namespace {

using host_sim::Frame;

// What the effect allocates and the simulated host does not: the six units of a fresh value, the
// samples of the largest LUT that a text may hold, and those of one of 33 points.
constexpr std::size_t kEmptyUnits = 12;
constexpr std::size_t kSamples129 = 129UL * 129 * 129 * 3 * sizeof(float);
constexpr std::size_t kSamples33 = 33UL * 33 * 33 * 3 * sizeof(float);

class ExceptionsTest : public EffectTest {
protected:
    void SetUp() override {
        if (!FailingAllocations::isPossible()) GTEST_SKIP() << "ThreadSanitizer allocates itself";
        effect_ = &start(host_sim::premierePro());
    }

    host_sim::Instance& effect() { return *effect_; }
    host_sim::ArbitraryCalls calls() { return effect().arbitraryCalls(kLut); }
    std::size_t live() { return host->handles().counts().live; }

    // Runs a call while an allocation of the effect's fails.
    template <class Call>
    auto failing(std::size_t least, std::size_t most, Call call) {
        newLogLines();
        const FailingAllocations fail(least, most);
        auto answer = call();
        EXPECT_EQ(fail.count(), 1);
        return answer;
    }

private:
    host_sim::Instance* effect_ = nullptr;
};

TEST_F(ExceptionsTest, endAs512_whenScannedTextNeedsTooMuchMemory) {
    const auto made =
        failing(kSamples129, kSamples129, [&] { return calls().scan("TWLUT3 0 - 129 0 1 AAAA"); });
    EXPECT_EQ(made.error, 512);
    EXPECT_EQ(made.value, nullptr);
    EXPECT_EQ(newLogLines(), Lines({"Arb SCAN"}));
    EXPECT_EQ(calls().scan("TWLUT3 0 - 129 0 1 AAAA").error, 518);
}

TEST_F(ExceptionsTest, leaveTheParameterAsItWas_whenAScanFails) {
    ASSERT_EQ(effect().scan(kLut, rotationText()), 0);
    const PF_ArbitraryH before = effect().arbitrary(kLut);
    EXPECT_EQ(failing(kSamples129, kSamples129,
                      [&] { return effect().scan(kLut, "TWLUT3 0 - 129 0 1 AAAA"); }),
              512);
    EXPECT_EQ(effect().arbitrary(kLut), before);
    EXPECT_EQ(host->handles().contents(before), widened(rotationText()));
}

TEST_F(ExceptionsTest, endAs512_whenANewValueFails) {
    const std::size_t before = live();
    const auto made = failing(kEmptyUnits, kEmptyUnits, [&] { return calls().create(); });
    EXPECT_EQ(made.error, 512);
    EXPECT_EQ(live(), before);
    EXPECT_EQ(newLogLines(), Lines({"Arb NEW"}));
}

TEST_F(ExceptionsTest, leaveNoLock_whenTheCopyOfAForeignValueFails) {
    effect().setBytes(kLut, bytesOf("foreign data, not a LUT"));
    const std::size_t before = live();
    const auto made =
        failing(kEmptyUnits, kEmptyUnits, [&] { return calls().copy(effect().arbitrary(kLut)); });
    EXPECT_EQ(made.error, 512);
    EXPECT_EQ(live(), before);
    EXPECT_EQ(newLogLines(), Lines({"Arb COPY"}));
}

TEST_F(ExceptionsTest, endAs512_whenForeignDataIsLoaded) {
    const auto made = failing(kEmptyUnits, kEmptyUnits,
                              [&] { return calls().unflatten(bytesOf("foreign data, no LUT")); });
    EXPECT_EQ(made.error, 512);
    EXPECT_EQ(newLogLines(), Lines({"Arb UNFLATTEN"}));
}

TEST_F(ExceptionsTest, leaveNoLock_whenPrintingFails) {
    effect().setBytes(kLut, widened("TWLUT0" + std::string(100000, '.')));
    const PF_ArbitraryH value = effect().arbitrary(kLut);
    const auto size = failing(100000, 110000, [&] { return calls().printSize(value); });
    EXPECT_EQ(size.error, 512);
    EXPECT_EQ(newLogLines(), Lines({"Arb PRINT_SIZE"}));
    EXPECT_EQ(failing(100000, 110000, [&] { return calls().print(value, 16U); }).error, 512);
    EXPECT_EQ(newLogLines(), Lines({"Arb PRINT"}));
    EXPECT_EQ(calls().printSize(value).value, 100007U);
}

TEST_F(ExceptionsTest, endAs512WithThePictureUntouched_whenDecodingFails) {
    const std::string text = scatteredText(33, 4);
    effect().setBytes(kLut, widened(text));
    const Frame input = scattered(PrPixelFormat_BGRA_4444_32f, 6, 4);
    Frame output(PrPixelFormat_BGRA_4444_32f, 6, 4);
    const Frame before = output;
    // First the text does not fit into memory, then its samples.
    for (const std::size_t bytes : {text.size(), kSamples33}) {
        const auto result =
            failing(bytes, bytes + bytes / 16, [&] { return effect().render(input, output); });
        EXPECT_EQ(result.error, 512) << bytes;
        EXPECT_TRUE(output.sameMemory(before)) << bytes;
        EXPECT_EQ(newLogLines(), Lines()) << bytes;
    }
    const Frame expected = graded(parsed(text), input, output, 1.0f);
    EXPECT_EQ(effect().render(input, output).error, 0);
    EXPECT_TRUE(samePixels(expected, output));
}

TEST(ParamsSetupExceptionTest, endsAs512WithoutANumber_whenTheDefaultFails) {
    if (!FailingAllocations::isPossible()) GTEST_SKIP() << "ThreadSanitizer allocates itself";
    const twtest::TempHome home;
    host_sim::Host host(TINTWELL_MODULE, host_sim::afterEffects());
    host.registerEffect();
    host.globalSetup();
    host.outPreset().num_params = 77;
    {
        const FailingAllocations fail(kEmptyUnits, kEmptyUnits);
        const host_sim::CommandResult result = host.paramsSetup();
        EXPECT_EQ(result.error, 512);
        EXPECT_EQ(result.out.num_params, 77);
        EXPECT_EQ(fail.count(), 1);
    }
    EXPECT_EQ(host.params().count(), 2);  // the layer and Amount
    EXPECT_EQ(host.close(), Lines());
}

}  // namespace
}  // namespace effect_test
