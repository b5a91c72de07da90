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

// The first twenty of the frequent calls of a process are logged. Plays make those beforehand where
// they are to be silent.
enum class Log { kWritten, kSilent };

class CallPlay : public EffectScenario {
public:
    CallPlay(const Bytes& value, Log log) : EffectScenario(value) {
        if (log == Log::kWritten) return;
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(calls().flatSize(this->value()).error, 0);
    }
};

// A call that makes a value.
class Making : public CallPlay {
public:
    using Call = std::function<Answer<PF_ArbitraryH>(const ArbitraryCalls&, PF_ArbitraryH value)>;

    Making(const Bytes& value, Call call, Log log) : CallPlay(value, log), call_(std::move(call)) {}

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

std::function<std::unique_ptr<Scenario>()> making(const Bytes& value, Making::Call call,
                                                  Log log = Log::kWritten) {
    return scenario<Making>(value, std::move(call), log);
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

// What a fresh value, be it logged or not, comes to.
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
    expectEffect(making(kLook, create(), Log::kSilent), fresh());
    expectEffect(making(kLook, create()), fresh().harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofACopy) {
    expectEffect(making(kLook, copy(), Log::kSilent), copied());
    expectEffect(making(kLook, copy()), copied().failed(kNew, {"error 512"}).harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofACopyOfForeignData) {
    // Also without the source's lock it is a fresh value.
    const Outcomes locked = {"no LUT", "unfilled"};
    expectEffect(making(kForeign, copy(), Log::kSilent), fresh().failed(kLock, locked));
    expectEffect(making(kForeign, copy()), fresh().failed(kLock, locked).harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofInterpolating) {
    expectEffect(making(kLook, interpolate(), Log::kSilent), copied());
    expectEffect(making(kLook, interpolate()),
                 copied().failed(kNew, {"error 512"}).harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofUnflattening) {
    const Expected silent =
        Expected("the LUT").failed(kHandle, {"null"}).failed(kLock, {"unfilled"});
    expectEffect(making(kForeign, unflatten(kLook), Log::kSilent), silent);
    expectEffect(making(kForeign, unflatten(kLook)),
                 Expected(silent).failed(kNew, {"error 512"}).harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofUnflatteningForeignData) {
    // It is said in a line of its own.
    expectEffect(making(kLook, unflatten(kForeign), Log::kSilent), fresh().harmless(kLogKinds));
    expectEffect(making(kLook, unflatten(kForeign)), fresh().harmless(kLogKinds));
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

// A call that tells of the value.
class Telling : public CallPlay {
public:
    using Call = std::function<std::string(const ArbitraryCalls&, PF_ArbitraryH value)>;

    Telling(const Bytes& value, Call call, Log log)
        : CallPlay(value, log), call_(std::move(call)) {}

    void run() override { told_ = call_(calls(), value()); }
    std::string outcome() override { return told_; }

private:
    Call call_;
    std::string told_;
};

std::function<std::unique_ptr<Scenario>()> telling(const Bytes& value, Telling::Call call,
                                                   Log log = Log::kWritten) {
    return scenario<Telling>(value, std::move(call), log);
}

TEST(ArbitraryFaults, ofTheFlatSize) {
    const Telling::Call size = [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        const auto told = calls.flatSize(value);
        return answered(told.error, told.value == kLook.size() ? "right" : "wrong");
    };
    expectEffect(telling(kLook, size, Log::kSilent), Expected("right"));
    expectEffect(telling(kLook, size),
                 Expected("right").failed(kNew, {"error 512"}).harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofFlattening) {
    const Telling::Call flatten = [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        const auto flat = calls.flatten(value, static_cast<A_u_long>(kLook.size()));
        const bool isUntouched = flat.value == Bytes(kLook.size(), kFreshBufferByte);
        EXPECT_TRUE(flat.error == 0 || isUntouched);
        const char* bytes = flat.value == kLook ? "the LUT" : isUntouched ? "untouched" : "wrong";
        return answered(flat.error, bytes);
    };
    const Expected silent = Expected("the LUT").failed(kLock, {"untouched"});
    expectEffect(telling(kLook, flatten, Log::kSilent), silent);
    expectEffect(telling(kLook, flatten),
                 Expected(silent).failed(kNew, {"error 512"}).harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofComparing) {
    const Telling::Call compare = [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        const auto told = calls.compare(value, value);
        return answered(told.error, told.value == PF_ArbCompare_EQUAL ? "equal" : "not equal");
    };
    const Expected silent = Expected("equal").failed(kLock, {"not equal"});
    expectEffect(telling(kLook, compare, Log::kSilent), silent);
    expectEffect(telling(kLook, compare),
                 Expected(silent).failed(kNew, {"error 512"}).harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofThePrintedSize) {
    const Telling::Call size = [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        const auto told = calls.printSize(value);
        return answered(told.error, std::to_string(told.value));
    };
    const std::string whole = std::to_string(quarterText().size() + 1);
    expectEffect(
        telling(kLook, size),
        Expected(whole).failed(kNew, {"error 512"}).failed(kLock, {"1"}).harmless(kLogKinds));
}

TEST(ArbitraryFaults, ofPrinting) {
    const Telling::Call print = [](const ArbitraryCalls& calls, PF_ArbitraryH value) {
        const auto told = calls.print(value, 1000U);
        return answered(told.error, told.value == quarterText() ? "the text" : told.value);
    };
    const Expected expected =
        Expected("the text").failed(kNew, {"error 512"}).failed(kLock, {""}).harmless(kLogKinds);
    expectEffect(telling(kLook, print), expected);
    expectEffect(telling(bytesOf(quarterText()), print), expected);
}

// A value is given back.
class Disposing : public CallPlay {
public:
    explicit Disposing(Log log) : CallPlay(kLook, log) {}

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
    expectEffect(scenario<Disposing>(Log::kSilent), Expected("no error, gone"));
    expectEffect(scenario<Disposing>(Log::kWritten),
                 Expected("no error, gone").failed(kNew, {"error 512, gone"}).harmless(kLogKinds));
}

// A scanned text takes the old value's place, which is given back then.
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
    // The new value is the effect's already when the old one's end cannot be logged.
    expectEffect(scenario<Replacing>(), Expected("no error, new")
                                            .failed(kNew, {"error 512, old", "no error, new"})
                                            .failed(kHandle, {"no error, null"})
                                            .failed(kLock, {"no error, unfilled"})
                                            .harmless(kLogKinds));
}

}  // namespace
}  // namespace faults
