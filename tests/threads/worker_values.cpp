// The data callbacks of a worker.
#include <gtest/gtest.h>

#include "tests/support/texts.h"
#include "tests/threads/stress_worker.h"

namespace stress {

using twtest::Bytes;
using twtest::emptyLut;
using twtest::kLut;
using twtest::widened;

// Every callback but the refusing ones, on handles of its own.
void Worker::useOneValue() {
    const host_sim::ArbitraryCalls calls = own_.instance->arbitraryCalls(kLut);
    // One that has a handle: all but the last.
    const auto& looks = inputs().looks();
    const Look& look =
        looks[static_cast<std::size_t>(random_.below(static_cast<int>(looks.size()) - 1))];
    const std::string& text = look.text;
    const PF_ArbitraryH fresh = calls.create().value;
    EXPECT_EQ(calls.flatten(fresh).value, emptyLut());
    const PF_ArbitraryH made =
        look.failure.empty() ? calls.scan(text).value : calls.unflatten(widened(text)).value;
    EXPECT_EQ(calls.print(made).value, text);
    const PF_ArbitraryH copied = calls.copy(made).value;
    EXPECT_EQ(calls.compare(made, copied).value, PF_ArbCompare_EQUAL);
    const bool none = text == "TWLUT0";
    EXPECT_EQ(calls.compare(made, fresh).value,
              none ? PF_ArbCompare_EQUAL : PF_ArbCompare_NOT_EQUAL);
    const PF_ArbitraryH loaded = calls.unflatten(calls.flatten(copied).value).value;
    EXPECT_EQ(calls.flatten(loaded).value, widened(text));
    const PF_ArbitraryH between = calls.interpolate(made, fresh, 0.5).value;
    EXPECT_EQ(calls.compare(between, loaded).value, PF_ArbCompare_EQUAL);
    for (const PF_ArbitraryH handle : {fresh, made, copied, loaded, between})
        EXPECT_EQ(calls.dispose(handle), 0);
    tally_.did("values from NEW to DISPOSE");
}

void Worker::useSharedValue() {
    const Effect& effect = any(shared_.effects());
    EXPECT_EQ(effect.instance->flatten(kLut).value, effect.look->bytes);
    EXPECT_EQ(effect.instance->print(kLut).value, effect.look->text);
    const host_sim::ArbitraryCalls calls = effect.instance->arbitraryCalls(kLut);
    const PF_ArbitraryH value = effect.instance->arbitrary(kLut);
    const PF_ArbitraryH copied = calls.copy(value).value;
    const bool isThere = !effect.look->bytes.empty();
    EXPECT_EQ(calls.flatten(copied).value, isThere ? effect.look->bytes : emptyLut());
    EXPECT_EQ(calls.compare(copied, value).value,
              isThere ? PF_ArbCompare_EQUAL : PF_ArbCompare_NOT_EQUAL);
    EXPECT_EQ(calls.dispose(copied), 0);
    tally_.did("values read by several");
}

void Worker::refuseValues() {
    constexpr char kTorn[] = "TWLUT3 0 - 2 0 1 AAAA";
    EXPECT_EQ(own_.instance->scan(kLut, kTorn), PF_Err_CANNOT_PARSE_KEYFRAME_TEXT);
    tally_.logs("  scan 21 bytes failed: LUT data is truncated");
    EXPECT_EQ(own_.instance->flatten(kLut).value, own_.look->bytes);

    const host_sim::ArbitraryCalls calls = own_.instance->arbitraryCalls(kLut);
    const PF_ArbitraryH none = calls.unflatten(Bytes(33, 0x54)).value;
    tally_.logs("Arb UNFLATTEN: 33 bytes are not TWLUT text, using none");
    EXPECT_EQ(calls.flatten(none).value, emptyLut());
    EXPECT_EQ(calls.dispose(none), 0);
    tally_.did("values refused", 2);
}

}  // namespace stress
