// The effect entered by several threads at once, as its flags allow.
#include <barrier>
#include <functional>
#include <thread>

#include "tests/support/effect_fixture.h"
#include "tests/support/formats.h"
#include "tests/support/frames.h"
#include "tests/support/texts.h"

namespace twtest {
namespace {

using host_sim::Frame;

constexpr int kThreads = 8;

// Runs `work` with 0, 1, ... on a thread each, all started at the same moment.
void atOnce(const std::function<void(int)>& work) {
    std::barrier ready(kThreads);
    std::vector<std::thread> threads;
    for (int number = 0; number < kThreads; ++number) {
        threads.emplace_back([&, number] {
            ready.arrive_and_wait();
            work(number);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

int countOf(const Lines& lines, const std::string& wanted) {
    return static_cast<int>(std::count(lines.begin(), lines.end(), wanted));
}

using Threads = EffectTest;

TEST_F(Threads, giveOnePicture_whenAllMeetANewLutAtOnce) {
    host_sim::Instance& effect = start(host_sim::premierePro());
    const std::string text = scatteredText(17, 5, 3);
    effect.setBytes(kLut, widened(text));
    const Frame input = scattered(PrPixelFormat_BGRA_4444_32f, 24, 70);
    const Frame expected = graded(parsed(text), input, input, 1.0f);
    newLogLines();
    atOnce([&](int) {
        for (int i = 0; i < 5; ++i) {
            Frame output(PrPixelFormat_BGRA_4444_32f, 24, 70);
            EXPECT_EQ(effect.render(input, output).error, 0);
            EXPECT_TRUE(samePixels(expected, output));
        }
    });
    EXPECT_EQ(newLogLines(),
              Lines({"Render fmt=BGRA32f 24x70 rowbytes=416 id=3 amount=1.000 lut=embedded 17"}));
}

TEST_F(Threads, renderTheirOwnInstances_withMoreLutsThanAreKept) {
    start();
    std::vector<host_sim::Instance*> effects;
    std::vector<tw::Lut3D> luts;
    // Ten contents in turn are more than the decoded ones that are kept.
    for (int i = 0; i < 10; ++i) {
        const std::string text = scatteredText(3 + i % 3, static_cast<std::uint64_t>(i), i);
        effects.push_back(&host->apply());
        effects.back()->setBytes(kLut, widened(text));
        luts.push_back(parsed(text));
    }
    const Frame input = scattered(PrPixelFormat_ARGB_4444_8u, 15, 35);
    atOnce([&](int number) {
        for (int i = 0; i < 20; ++i) {
            const auto which = static_cast<std::size_t>(number + i) % effects.size();
            Frame output = input;
            EXPECT_EQ(effects[which]->render(input, output).error, 0);
            EXPECT_TRUE(samePixels(graded(luts[which], input, input, 1.0f), output)) << which;
        }
    });
}

TEST_F(Threads, copyAndRenderOneValueAtOnce) {
    host_sim::Instance& effect = start();
    effect.setBytes(kLut, widened(rotationText()));
    const PF_ArbitraryH value = effect.arbitrary(kLut);
    const Frame input = scattered(PrPixelFormat_ARGB_4444_8u, 9, 33);
    const Frame expected = graded(parsed(rotationText()), input, input, 1.0f);
    atOnce([&](int number) {
        const host_sim::ArbitraryCalls calls = effect.arbitraryCalls(kLut);
        for (int i = 0; i < 10; ++i) {
            if (number % 2 == 0) {
                Frame output = input;
                EXPECT_EQ(effect.render(input, output).error, 0);
                EXPECT_TRUE(samePixels(expected, output));
                continue;
            }
            const PF_ArbitraryH copy = calls.copy(value).value;
            EXPECT_EQ(calls.compare(value, copy).value, PF_ArbCompare_EQUAL);
            EXPECT_EQ(calls.flatten(copy).value, widened(rotationText()));
            EXPECT_EQ(calls.print(copy).value, rotationText());
            EXPECT_EQ(calls.dispose(copy), 0);
        }
    });
}

TEST_F(Threads, saveAndLoadValuesAtOnce) {
    start();
    atOnce([&](int number) {
        const host_sim::ArbitraryCalls calls = host->arbitraryCalls(kLut);
        const std::string text = scatteredText(2, static_cast<std::uint64_t>(number), number);
        for (int i = 0; i < 20; ++i) {
            const PF_ArbitraryH scanned = calls.scan(text).value;
            const PF_ArbitraryH loaded = calls.unflatten(calls.flatten(scanned).value).value;
            EXPECT_EQ(calls.print(loaded).value, text);
            EXPECT_EQ(calls.dispose(scanned), 0);
            EXPECT_EQ(calls.dispose(loaded), 0);
        }
    });
}

TEST_F(Threads, logWholeRenderLines_whenEachSeesAnotherAmount) {
    start();
    std::vector<host_sim::Instance*> effects;
    for (int i = 0; i < kThreads; ++i) {
        effects.push_back(&host->apply());
        effects.back()->setSlider(kAmount, i);
    }
    const Frame input(PrPixelFormat_ARGB_4444_8u, 2, 2);
    newLogLines();
    atOnce([&](int number) {
        Frame output = input;
        effects[static_cast<std::size_t>(number)]->render(input, output);
    });
    const Lines logged = newLogLines();
    EXPECT_EQ(logged.size(), static_cast<std::size_t>(kThreads));
    for (int i = 0; i < kThreads; ++i) {
        EXPECT_EQ(countOf(logged, "Render fmt=ARGB8 2x2 rowbytes=40 id=0 amount=0.0" +
                                      std::to_string(i) + "0 lut=none 0"),
                  1);
    }
}

TEST_F(Threads, sayWhatIsWrongAtMostOnceEach_whenTheLutCannotBeRead) {
    host_sim::Instance& effect = start();
    effect.setBytes(kLut, widened("TWLUT3 0 - 2 0 1 AAAA"));
    const Frame input = scattered(PrPixelFormat_ARGB_4444_8u, 5, 5);
    newLogLines();
    atOnce([&](int) {
        for (int i = 0; i < 5; ++i) {
            Frame output(PrPixelFormat_ARGB_4444_8u, 5, 5);
            EXPECT_EQ(effect.render(input, output).error, 0);
            EXPECT_TRUE(samePixels(input, output));
        }
    });
    // Threads that look up new bytes at once may each decode them.
    const int said = countOf(newLogLines(), "Embedded LUT: LUT data is truncated");
    EXPECT_GE(said, 1);
    EXPECT_LE(said, kThreads);
}

TEST_F(Threads, renderWhileTheMainThreadDoesOtherThings) {
    host_sim::Instance& effect = start(host_sim::premierePro());
    ASSERT_EQ(effect.scan(kLut, rotationText()), 0);
    const Frame input = scattered(PrPixelFormat_BGRA_4444_8u, 9, 33);
    const Frame expected = graded(parsed(rotationText()), input, input, 1.0f);
    std::thread main([&] {
        for (int i = 0; i < 20; ++i) {
            EXPECT_EQ(effect.updateUi().error, 0);
            EXPECT_EQ(effect.pressWithoutRecord().error, 0);
            EXPECT_EQ(host->command(PF_Cmd_ABOUT).error, 0);
        }
    });
    atOnce([&](int) {
        for (int i = 0; i < 10; ++i) {
            Frame output = input;
            EXPECT_EQ(effect.render(input, output).error, 0);
            EXPECT_TRUE(samePixels(expected, output));
        }
    });
    main.join();
}

}  // namespace
}  // namespace twtest
