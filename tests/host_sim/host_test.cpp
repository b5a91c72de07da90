// A well-behaved effect in both hosts: the commands it gets, and what the host keeps of its
// answers.
#include "host_sim/host.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "host_sim/values/error.h"
#include "session_script.h"

namespace {

using host_sim::CallRecord;
using host_sim::Frame;
using host_sim::Host;
using host_sim::Instance;
using Problems = std::vector<std::string>;

std::vector<PF_Cmd> commands(Host& host) {
    std::vector<PF_Cmd> sent;
    for (const CallRecord& call : host.books().calls()) {
        if (call.command != PF_Cmd_ARBITRARY_CALLBACK) sent.push_back(call.command);
    }
    return sent;
}

TEST(Session, hasNoProblems_inPremiere) {
    EXPECT_EQ(runSession(host_sim::premierePro()), Problems());
}

TEST(Session, hasNoProblems_inAfterEffects) {
    EXPECT_EQ(runSession(host_sim::afterEffects()), Problems());
}

TEST(Session, catchesArbitraryDataWithoutUiFlags_inAfterEffects) {
    EXPECT_EQ(runSession(withFault(host_sim::afterEffects(), "leaves out the UI flags")),
              Problems({"Parameter \"Text\" is arbitrary data without any of the UI flags it needs "
                        "(during PF_Cmd_PARAMS_SETUP)."}));
}

TEST(Host, recordsTheRegistration) {
    Host host(TEST_MODULE, host_sim::premierePro());
    EXPECT_EQ(host.registerEffect(), A_Err_NONE);
    ASSERT_EQ(host.registrations().size(), 1U);
    const host_sim::Registration& registration = host.registrations()[0];
    EXPECT_EQ(registration.name, "Rogue");
    EXPECT_EQ(registration.matchName, "TEST Rogue");
    EXPECT_EQ(registration.category, "Test");
    EXPECT_EQ(registration.entryPoint, "RogueMain");
    EXPECT_EQ(registration.kind, 0x65464B54);
    EXPECT_EQ(registration.apiMajor, 13);
    EXPECT_EQ(registration.apiMinor, 29);
    EXPECT_EQ(registration.reservedInfo, 8);
    EXPECT_EQ(registration.supportUrl, "https://example.org");
}

TEST(Host, sendsCommandsInOrder) {
    Host host(TEST_MODULE, host_sim::afterEffects());
    host.start();
    Instance& effect = host.apply();
    const Frame input(host.format(8), 2, 2);
    Frame output(host.format(8), 2, 2);
    effect.render(input, output);
    EXPECT_EQ(host.close(), Problems());
    EXPECT_EQ(commands(host),
              std::vector<PF_Cmd>({PF_Cmd_GLOBAL_SETUP, PF_Cmd_PARAMS_SETUP, PF_Cmd_SEQUENCE_SETUP,
                                   PF_Cmd_FRAME_SETUP, PF_Cmd_RENDER, PF_Cmd_FRAME_SETDOWN,
                                   PF_Cmd_SEQUENCE_SETDOWN, PF_Cmd_GLOBAL_SETDOWN}));
}

TEST(Host, keepsTheDeclaredParameters) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    ASSERT_EQ(host.params().count(), 4);
    EXPECT_STREQ(host.params().at(kAmount).definition.name, "Amount");
    EXPECT_EQ(host.params().indexOfId(4), kText);
    EXPECT_EQ(host.params().indexOfId(3), std::nullopt);
    EXPECT_EQ(host.params().at(kButton).label, "Press me");
    EXPECT_THROW(host.params().at(4), host_sim::SimError);
}

TEST(Host, negotiatesPixelFormats_inPremiere) {
    Host host(TEST_MODULE, host_sim::premierePro());
    EXPECT_EQ(host.format(32), PrPixelFormat_ARGB_4444_8u);
    host.start();
    EXPECT_EQ(host.format(8), PrPixelFormat_BGRA_4444_8u);
    EXPECT_EQ(host.format(32), PrPixelFormat_BGRA_4444_32f);
    EXPECT_EQ(host.pixelFormats().clearCalls(), 1);
    EXPECT_EQ(host.suites().use(kPFPixelFormatSuite, 1).released, 1);
}

TEST(Host, hasOnlyArgb_inAfterEffects) {
    Host host(TEST_MODULE, host_sim::afterEffects());
    host.start();
    EXPECT_EQ(host.format(8), PrPixelFormat_ARGB_4444_8u);
    EXPECT_EQ(host.format(32), PrPixelFormat_ARGB_4444_8u);
    EXPECT_EQ(host.suites().use(kPFPixelFormatSuite, 1).refused, 1);
}

TEST(Host, startsCommandsWithThePresetOutData) {
    Host host(TEST_MODULE, host_sim::afterEffects());
    host.outPreset().out_flags = PF_OutFlag_FORCE_RERENDER;
    host.start();
    const auto result = host.apply().press(kButton);
    EXPECT_EQ(result.out.out_flags, PF_OutFlag_FORCE_RERENDER | PF_OutFlag_REFRESH_UI);
    EXPECT_EQ(host.command(PF_Cmd_ABOUT).message(), "Rogue");
    EXPECT_EQ(host.command(PF_Cmd_DO_DIALOG).message(), "");
}

TEST(Host, tellsAWatcherOfEachCallback_onItsThread) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    std::vector<std::thread::id> calls;
    host.watchCallbacks([&] { calls.push_back(std::this_thread::get_id()); });
    std::thread other([&] { effect.updateUi(); });
    const std::thread::id id = other.get_id();
    other.join();
    // The suite is acquired, used and released.
    EXPECT_EQ(calls, std::vector<std::thread::id>(3, id));
    effect.print(kText);
    // Size, lock and unlock, for the text's length and for the text.
    EXPECT_EQ(calls.size(), 3U + 6U);
    EXPECT_EQ(host.close(), Problems());
}

TEST(Host, refusesASecondOne) {
    const Host host(TEST_MODULE, host_sim::afterEffects());
    EXPECT_THROW(Host(TEST_MODULE, host_sim::afterEffects()), host_sim::SimError);
}

TEST(Host, namesAModuleThatCannotBeLoaded) {
    try {
        Host("/nowhere/none.so", host_sim::afterEffects());
        FAIL() << "no exception";
    } catch (const host_sim::SimError& error) {
        EXPECT_EQ(std::string(error.what()).find("The module /nowhere/none.so cannot be loaded: "),
                  0U);
    }
}

TEST(Host, refusesAnEntryPointThatIsNotExported) {
    Host host(TEST_MODULE, withFault(host_sim::premierePro(), "names no entry point"));
    EXPECT_THROW(host.registerEffect(), host_sim::SimError);
}

TEST(HostDeathTest, endsTheProcess_whenNobodyAskedForItsProblems) {
    const auto forget = [] {
        Host host(TEST_MODULE, withFault(host_sim::premierePro(), "forgets a suite"));
        host.start();
    };
    EXPECT_DEATH(forget(), "version 1 was acquired 1 time.* were not read");
}

TEST(Instance, takesOverAPressedValue) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    EXPECT_EQ(effect.press(kButton).changed, std::vector<int>({kText}));
    EXPECT_EQ(effect.print(kText).value, "none+");
    EXPECT_EQ(effect.press(kAmount).changed, std::vector<int>());
    EXPECT_EQ(effect.pressWithoutRecord().changed, std::vector<int>());
    EXPECT_EQ(host.close(), Problems());
}

TEST(Instance, updatesTheUi_whenAPressAsksForARefresh) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    effect.press(kAmount);
    EXPECT_EQ(host.books().calls().back().command, PF_Cmd_USER_CHANGED_PARAM);
    effect.press(kButton);
    EXPECT_EQ(host.books().calls().back().command, PF_Cmd_UPDATE_PARAMS_UI);
    EXPECT_EQ(host.close(), Problems());
}

TEST(Instance, needsARender_untilTheLatestValuesAreSeen) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    const auto seen = [&] {
        const bool needed = effect.needsRender();
        const host_sim::Frame in(host.format(8), 2, 2);
        host_sim::Frame out(host.format(8), 2, 2);
        effect.render(in, out);
        EXPECT_FALSE(effect.needsRender());
        return needed;
    };
    EXPECT_TRUE(seen());
    effect.press(kAmount);
    EXPECT_FALSE(seen());
    effect.press(kButton);
    EXPECT_TRUE(seen());
    effect.setSlider(kAmount, 3.0);
    EXPECT_TRUE(seen());
    effect.setNull(kText);
    EXPECT_TRUE(seen());
    host.outPreset().out_flags = PF_OutFlag_FORCE_RERENDER;
    effect.press(kAmount);
    EXPECT_TRUE(seen());
    EXPECT_EQ(host.close(), Problems());
}

TEST(Instance, followsAReplacedHandle) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.refusals().replaceHandleOnResize(true);
    host.start();
    Instance& effect = host.apply();
    const PF_ArbitraryH before = effect.arbitrary(kText);
    effect.press(kButton);
    EXPECT_NE(effect.arbitrary(kText), before);
    EXPECT_EQ(effect.print(kText).value, "none+");
    EXPECT_EQ(host.close(), Problems());
}

TEST(Instance, takesANewHandle_whenItHadNone) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    effect.setNull(kText);
    EXPECT_EQ(effect.print(kText).value, "");
    effect.press(kButton);
    EXPECT_EQ(effect.print(kText).value, "+");
    EXPECT_EQ(host.close(), Problems());
}

TEST(Instance, scansAndKeepsTheOldValueWhenRefused) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    EXPECT_EQ(effect.scan(kText, "good"), PF_Err_NONE);
    EXPECT_EQ(effect.scan(kText, "bad"), PF_Err_CANNOT_PARSE_KEYFRAME_TEXT);
    EXPECT_EQ(effect.print(kText).value, "good");
    EXPECT_EQ(host.close(), Problems());
}

TEST(Instance, runsTheWholeLifeOfAValue) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    const host_sim::ArbitraryCalls calls = host.arbitraryCalls(kText);
    const PF_ArbitraryH a = calls.create().value;
    const PF_ArbitraryH b = calls.unflatten({'b'}).value;
    const PF_ArbitraryH left = calls.interpolate(a, b, 0.5).value;
    const PF_ArbitraryH copy = calls.copy(b).value;
    const PF_ArbitraryH empty = calls.unflattenNull().value;
    EXPECT_EQ(calls.compare(a, left).value, PF_ArbCompare_EQUAL);
    EXPECT_EQ(calls.compare(a, copy).value, PF_ArbCompare_NOT_EQUAL);
    EXPECT_EQ(calls.flatten(a).value, std::vector<std::uint8_t>({'n', 'o', 'n', 'e'}));
    EXPECT_EQ(calls.flatten(a, 3).value, std::vector<std::uint8_t>({0xCD, 0xCD, 0xCD}));
    EXPECT_EQ(calls.print(a, 3).value, "no");
    EXPECT_EQ(calls.printSize(empty).value, 1U);
    for (const PF_ArbitraryH handle : {a, b, left, copy, empty}) {
        EXPECT_EQ(calls.dispose(handle), PF_Err_NONE);
    }
    EXPECT_EQ(host.close(), Problems());
}

TEST(Instance, isDuplicatedWithItsValues) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    effect.setSlider(kAmount, 12.5);
    effect.setBytes(kText, {'h', 'i'});
    Instance& twin = host.duplicate(effect);
    host.remove(effect);
    EXPECT_EQ(twin.slider(kAmount), 12.5);
    EXPECT_EQ(twin.print(kText).value, "hi");
    EXPECT_EQ(twin.number(), 2);
    EXPECT_THROW(twin.slider(kText), host_sim::SimError);
    EXPECT_THROW(twin.setNull(kAmount), host_sim::SimError);
}

TEST(Instance, showsTheLabelBehindTheKeptPointer) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    EXPECT_EQ(effect.label(kButton), "Press me");
    effect.updateUi();
    EXPECT_EQ(effect.label(kButton), "first");
    ASSERT_EQ(effect.updates().size(), 1U);
    EXPECT_EQ(effect.updates()[0].index, kButton);
    EXPECT_STREQ(effect.updates()[0].definition.name, "Press");
}

TEST(Instance, rendersInPlace) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Frame frame(host.format(8), 3, 2, {.bottomUp = true, .fill = 0x0F});
    EXPECT_EQ(host.apply().render(frame, frame).error, PF_Err_NONE);
    EXPECT_EQ(frame.pixelBytes(), std::vector<std::uint8_t>(24, 0xF0));
    EXPECT_EQ(host.close(), Problems());
}

TEST(Instance, stopsAtAFailedFrameSetup) {
    Host host(TEST_MODULE, withFault(host_sim::premierePro(), "fails FRAME_SETUP"));
    host.start();
    Frame frame(host.format(8), 1, 1);
    EXPECT_EQ(host.apply().render(frame, frame).error, PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(commands(host).back(), PF_Cmd_FRAME_SETUP);
}

TEST(Instance, isRenderedByManyThreads) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& first = host.apply();
    Instance& second = host.apply();
    const Frame input(host.format(8), 16, 16, {.fill = 1});
    const auto work = [&](Instance& effect) {
        for (int i = 0; i < 50; ++i) {
            Frame output(host.format(8), 16, 16);
            effect.render(input, output);
            EXPECT_EQ(output.pixel8(15, 15)[0], 0xFE);
            effect.print(kText);
        }
    };
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work, std::ref(i % 2 == 0 ? first : second));
    for (int i = 0; i < 20; ++i) {
        first.press(kButton);
        second.setSlider(kAmount, i);
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(host.close(), Problems());
}

}  // namespace
