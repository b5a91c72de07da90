// The log lines of the data callbacks: their names, and none of the frequent ones after twenty.
#include <thread>

#include "tests/effect/arbitrary_fixture.h"

namespace twtest {
namespace {

class ArbitraryLog : public ArbitraryTest {
protected:
    // An unknown selector. All its fields are null pointers.
    PF_Err unknown(PF_FunctionSelector selector) {
        PF_ArbParamsExtra extra = {};
        extra.which_function = selector;
        return calls().raw(extra);
    }
};

TEST_F(ArbitraryLog, namesEachSelector) {
    const PF_ArbitraryH value = holding("TWLUT0");
    calls().dispose(calls().create().value);
    contents(calls().copy(value));
    calls().flatten(value);
    contents(calls().unflatten(emptyLut()));
    contents(calls().interpolate(value, value, 0.5));
    calls().compare(value, value);
    calls().print(value);
    contents(calls().scan("TWLUT0"));
    EXPECT_EQ(newLogLines(), Lines({"Arb NEW", "Arb DISPOSE", "Arb COPY", "Arb FLAT_SIZE",
                                    "Arb FLATTEN", "Arb UNFLATTEN", "Arb INTERP", "Arb COMPARE",
                                    "Arb PRINT_SIZE", "Arb PRINT", "Arb SCAN"}));
}

TEST_F(ArbitraryLog, callsUnknownSelectorsByAQuestionMark) {
    for (const PF_FunctionSelector selector : {11, 12, 1000, -1, -100}) {
        EXPECT_EQ(unknown(selector), 0) << selector;
        EXPECT_EQ(newLogLines(), Lines({"Arb ?"})) << selector;
    }
}

TEST_F(ArbitraryLog, isSilentAboutFrequentCalls_afterTwenty) {
    const PF_ArbitraryH value = holding("TWLUT0");
    for (int i = 0; i < 19; ++i)
        calls().flatSize(value);
    EXPECT_EQ(newLogLines(), Lines(19, "Arb FLAT_SIZE"));
    calls().compare(value, value);
    EXPECT_EQ(newLogLines(), Lines({"Arb COMPARE"}));
    for (int i = 0; i < 30; ++i)
        contents(calls().copy(value));
    EXPECT_EQ(newLogLines(), Lines());
}

TEST_F(ArbitraryLog, countsNegativeSelectorsAsFrequent) {
    for (int i = 0; i < 25; ++i)
        unknown(-1);
    EXPECT_EQ(newLogLines(), Lines(20, "Arb ?"));
    calls().flatSize(nullptr);
    EXPECT_EQ(newLogLines(), Lines());
}

TEST_F(ArbitraryLog, isNeverSilentAboutTextAndUnknownSelectors) {
    for (int i = 0; i < 25; ++i)
        calls().flatSize(nullptr);
    newLogLines();
    for (int i = 0; i < 25; ++i)
        calls().print(nullptr);
    EXPECT_EQ(newLogLines().size(), 50U);
    calls().scan("TWLUTP 1");
    unknown(11);
    EXPECT_EQ(newLogLines(),
              Lines({"Arb SCAN", "  scan 8 bytes failed: bad calibration pattern size", "Arb ?"}));
}

TEST_F(ArbitraryLog, doesNotCountTextTowardsTheTwenty) {
    for (int i = 0; i < 15; ++i)
        calls().print(nullptr);
    newLogLines();
    for (int i = 0; i < 25; ++i)
        calls().flatSize(nullptr);
    EXPECT_EQ(newLogLines(), Lines(20, "Arb FLAT_SIZE"));
}

TEST_F(ArbitraryLog, stillSaysWhatItRefused_whenItIsSilent) {
    for (int i = 0; i < 20; ++i)
        calls().flatSize(nullptr);
    newLogLines();
    contents(calls().unflatten(bytesOf("foreign")));
    EXPECT_EQ(newLogLines(), Lines({"Arb UNFLATTEN: 7 bytes are not TWLUT text, using none"}));
}

TEST_F(ArbitraryLog, countsForTheProcess_notForTheHost) {
    for (int i = 0; i < 20; ++i)
        calls().flatSize(nullptr);
    newLogLines();
    closeHost();
    openHost(host_sim::premierePro()).start();
    calls().flatSize(nullptr);
    EXPECT_EQ(newLogLines(), Lines({"GlobalSetup build 11 host=PrMr api=13.4"}));
}

TEST_F(ArbitraryLog, logsJustTwenty_whenThreadsShareThem) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 8; ++t) {
        threads.emplace_back([this] {
            for (int i = 0; i < 10; ++i)
                calls().flatSize(nullptr);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(newLogLines(), Lines(20, "Arb FLAT_SIZE"));
}

}  // namespace
}  // namespace twtest
