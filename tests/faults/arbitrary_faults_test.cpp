// The LUT parameter's data callbacks while calls fail.
#include <gtest/gtest.h>

#include <functional>
#include <utility>

#include "tests/effect/arbitrary_fixture.h"
#include "tests/faults/effect_scenario.h"

namespace faults {
namespace {

using host_sim::Answer;
using host_sim::ArbitraryCalls;
using twtest::bytesOf;
using twtest::emptyLut;
using twtest::kFreshBufferByte;
using twtest::quarterText;
using twtest::unfilled;
using twtest::widened;

const Bytes kLook = widened(quarterText());
const Bytes kForeign = bytesOf("foreign data, and no LUT at all");

// The first twenty of the frequent calls of a process are logged. Where a call is to be silent, the
// scenario makes those beforehand.
enum class Log { kWritten, kSilent };

class CallScenario : public EffectScenario {
public:
    CallScenario(const Bytes& value, Log log) : EffectScenario(value) {
        if (log == Log::kWritten) return;
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(calls().flatSize(this->value()).error, 0);
    }
};

// The call while it is silent, as expected; and while it is logged, when that line's memory and
// file can fail as well. Without the memory the call ends with `lost`.
void expectSilentAndLogged(const std::function<Begin(Log)>& begin, const Expected& silent,
                           const std::string& lost = "error 512") {
    {
        SCOPED_TRACE("silent");
        expectEffect(begin(Log::kSilent), silent);
    }
    SCOPED_TRACE("logged");
    expectEffect(begin(Log::kWritten), Expected(silent).failed(kNew, {lost}).harmless(kLogKinds));
}

// A call that makes a value.
class Making : public CallScenario {
public:
    using Call = std::function<Answer<PF_ArbitraryH>(const ArbitraryCalls&, PF_ArbitraryH value)>;

    Making(const Bytes& value, Call call, Log log)
        : CallScenario(value, log), call_(std::move(call)) {}

    void run() override { made_ = call_(calls(), value()); }

    std::string outcome() override {
        if (made_.error != PF_Err_NONE) {
            EXPECT_EQ(made_.value, nullptr);
            return answered(made_.error, "");
        }
        if (made_.value == nullptr) return "null";
        const Bytes made = host().handles().contents(made_.value);
        EXPECT_EQ(calls().dispose(made_.value), 0);
        if (made == unfilled(made.size())) return "unfilled";
        return made == emptyLut() ? "no LUT" : made == kLook ? "the LUT" : "other bytes";
    }

private:
    Call call_;
    Answer<PF_ArbitraryH> made_;
};

Begin making(const Bytes& value, const Making::Call& call, Log log = Log::kWritten) {
    return scenario<Making>(value, call, log);
}

void expectMaking(const Bytes& value, const Making::Call& call, const Expected& silent) {
    expectSilentAndLogged([&](Log log) { return making(value, call, log); }, silent);
}

Making::Call create() {
    return [](const ArbitraryCalls& calls, PF_ArbitraryH) { return calls.create(); };
}

Making::Call copy() {
    return [](const ArbitraryCalls& calls, PF_ArbitraryH value) { return calls.copy(value); };
}

Making::Call interpolate() {
    return [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        return calls.interpolate(value, nullptr, 0.5);
    };
}

Making::Call unflatten(const Bytes& bytes) {
    return [bytes](const ArbitraryCalls& calls, PF_ArbitraryH) { return calls.unflatten(bytes); };
}

Making::Call scan(const std::string& text) {
    return [text](const ArbitraryCalls& calls, PF_ArbitraryH) { return calls.scan(text); };
}

// The outcomes of a fresh value, logged or not.
Expected fresh() {
    return Expected("no LUT")
        .failed(kNew, {"error 512"})
        .failed(kHandle, {"null"})
        .failed(kLock, {"unfilled"});
}

// A copy takes two locks: without the source's there is nothing to copy, without its own it stays
// unfilled.
Expected copied() {
    return Expected("the LUT").failed(kHandle, {"null"}).failed(kLock, {"no LUT", "unfilled"});
}

TEST(ArbitraryFaults, ofANewValue) {
    expectMaking(kLook, create(), fresh());
}

TEST(ArbitraryFaults, ofACopy) {
    expectMaking(kLook, copy(), copied());
}

TEST(ArbitraryFaults, ofACopyOfForeignData) {
    // A source that cannot be locked gives a fresh value, too.
    expectMaking(kForeign, copy(), fresh().failed(kLock, {"no LUT", "unfilled"}));
}

TEST(ArbitraryFaults, ofInterpolating) {
    expectMaking(kLook, interpolate(), copied());
}

TEST(ArbitraryFaults, ofUnflattening) {
    expectMaking(kForeign, unflatten(kLook),
                 Expected("the LUT").failed(kHandle, {"null"}).failed(kLock, {"unfilled"}));
}

TEST(ArbitraryFaults, ofUnflatteningForeignData) {
    // Foreign data is logged even when the call itself is not.
    expectMaking(kLook, unflatten(kForeign), fresh().harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofScanning) {
    expectEffect(making(kForeign, scan(quarterText())), Expected("the LUT")
                                                            .failed(kNew, {"error 512"})
                                                            .failed(kHandle, {"null"})
                                                            .failed(kLock, {"unfilled"})
                                                            .harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofScanningWhatIsNoLut) {
    expectEffect(making(kLook, scan("TWLUT3 0 - 2 0 1 AAAA")),
                 Expected("error 518").failed(kNew, {"error 512"}).harmless(kLogKinds));
}

// A call that reads the value.
class Reading : public CallScenario {
public:
    using Call = std::function<std::string(const ArbitraryCalls&, PF_ArbitraryH value)>;

    Reading(const Bytes& value, Call call, Log log)
        : CallScenario(value, log), call_(std::move(call)) {}

    void run() override { answer_ = call_(calls(), value()); }
    std::string outcome() override { return answer_; }

private:
    Call call_;
    std::string answer_;
};

Begin reading(const Bytes& value, const Reading::Call& call, Log log = Log::kWritten) {
    return scenario<Reading>(value, call, log);
}

void expectReading(const Reading::Call& call, const Expected& silent) {
    expectSilentAndLogged([&](Log log) { return reading(kLook, call, log); }, silent);
}

TEST(ArbitraryFaults, ofTheFlatSize) {
    const Reading::Call size = [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        const auto answer = calls.flatSize(value);
        return answered(answer.error, answer.value == kLook.size() ? "right" : "wrong");
    };
    expectReading(size, Expected("right"));
}

TEST(ArbitraryFaults, ofFlattening) {
    const Reading::Call flatten = [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        const auto flat = calls.flatten(value, static_cast<A_u_long>(kLook.size()));
        const bool isUntouched = flat.value == Bytes(kLook.size(), kFreshBufferByte);
        EXPECT_TRUE(flat.error == 0 || isUntouched);
        const char* bytes = flat.value == kLook ? "the LUT" : isUntouched ? "untouched" : "wrong";
        return answered(flat.error, bytes);
    };
    expectReading(flatten, Expected("the LUT").failed(kLock, {"untouched"}));
}

TEST(ArbitraryFaults, ofComparing) {
    const Reading::Call compare = [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        const auto answer = calls.compare(value, value);
        return answered(answer.error, answer.value == PF_ArbCompare_EQUAL ? "equal" : "not equal");
    };
    expectReading(compare, Expected("equal").failed(kLock, {"not equal"}));
}

TEST(ArbitraryFaults, ofThePrintedSize) {
    const Reading::Call size = [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        const auto answer = calls.printSize(value);
        return answered(answer.error, std::to_string(answer.value));
    };
    const std::string whole = std::to_string(quarterText().size() + 1);
    expectEffect(
        reading(kLook, size),
        Expected(whole).failed(kNew, {"error 512"}).failed(kLock, {"1"}).harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofPrinting) {
    const Reading::Call print = [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        const auto answer = calls.print(value, 1000U);
        return answered(answer.error, answer.value == quarterText() ? "the text" : answer.value);
    };
    const Expected expected =
        Expected("the text").failed(kNew, {"error 512"}).failed(kLock, {""}).harmless(kLogKinds);
    expectEffect(reading(kLook, print), expected);
    expectEffect(reading(bytesOf(quarterText()), print), expected);
}

// Disposes of a value.
class Disposing : public CallScenario {
public:
    explicit Disposing(Log log) : CallScenario(kLook, log) {}

    void run() override {
        const PF_ArbitraryH handle = host().handles().hostAllocate(kLook);
        const PF_Err error = calls().dispose(handle);
        const bool isGone = !host().handles().isLive(handle);
        outcome_ = answered(error, "no error") + (isGone ? ", gone" : ", still there");
    }
    std::string outcome() override { return outcome_; }

private:
    std::string outcome_;
};

TEST(ArbitraryFaults, ofDisposing) {
    expectSilentAndLogged([](Log log) { return scenario<Disposing>(log); },
                          Expected("no error, gone"), "error 512, gone");
}

// A scanned text replaces the old value, which is disposed of.
class Replacing : public EffectScenario {
public:
    Replacing() : EffectScenario(emptyLut()) {}

    void run() override { error_ = effect().scan(kLut, quarterText()); }
    std::string outcome() override {
        const Bytes now = bytes();
        const char* word = now == kLook                    ? "new"
                           : now == emptyLut()             ? "old"
                           : value() == nullptr            ? "null"
                           : now == unfilled(kLook.size()) ? "unfilled"
                                                           : "other bytes";
        return answered(error_, "no error") + ", " + word;
    }

private:
    PF_Err error_ = 0;
};

TEST(ArbitraryFaults, ofReplacingTheValue) {
    // The new value is in place already when logging the disposal of the old one fails.
    expectEffect(scenario<Replacing>(), Expected("no error, new")
                                            .failed(kNew, {"error 512, old", "no error, new"})
                                            .failed(kHandle, {"no error, null"})
                                            .failed(kLock, {"no error, unfilled"})
                                            .harmless(kLogKinds));
}

}  // namespace
}  // namespace faults
