// The life of the object behind an instance, with a filter that counts itself.
#include "gpu/filter_module.h"

#include <gtest/gtest.h>

#include <new>

namespace {

struct Filter {
    static inline int alive = 0;
    static inline prSuiteError answer = suiteError_NoError;
    static inline bool throws = false;

    Filter() { ++alive; }
    ~Filter() { --alive; }

    prSuiteError Initialize(PrGPUFilterInstance*) {
        if (throws) throw std::bad_alloc();
        return answer;
    }
};

using Module = PrGPUFilterModule<Filter>;

// The record is packed: its pointer may not be referred to where it lies.
void* keptBy(const PrGPUFilterInstance& instance) {
    return instance.ioPrivatePluginData;
}

class FilterModule : public testing::Test {
protected:
    ~FilterModule() override {
        Filter::answer = suiteError_NoError;
        Filter::throws = false;
    }
};

TEST_F(FilterModule, keepsTheFilter_untilTheInstanceIsDisposedOf) {
    PrGPUFilterInstance instance = {};
    EXPECT_EQ(Module::CreateInstance(&instance), 0);
    EXPECT_EQ(Filter::alive, 1);
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(Module::DisposeInstance(&instance), 0);
        EXPECT_EQ(keptBy(instance), nullptr);
        EXPECT_EQ(Filter::alive, 0);
    }
}

// The host's codes of failures are negative; others tell of a success, 0 being only one of them.
TEST_F(FilterModule, keepsTheFilter_whenInitialisingAnswersAPositiveNumber) {
    PrGPUFilterInstance instance = {};
    Filter::answer = 1;
    EXPECT_EQ(Module::CreateInstance(&instance), 1);
    EXPECT_NE(keptBy(instance), nullptr);
    EXPECT_EQ(Filter::alive, 1);
    EXPECT_EQ(Module::DisposeInstance(&instance), 0);
    EXPECT_EQ(Filter::alive, 0);
}

TEST_F(FilterModule, keepsNoFilter_thatCouldNotBeInitialised) {
    PrGPUFilterInstance instance = {};
    Filter::answer = suiteError_NotImplemented;
    EXPECT_EQ(Module::CreateInstance(&instance), suiteError_NotImplemented);
    EXPECT_EQ(keptBy(instance), nullptr);
    EXPECT_EQ(Filter::alive, 0);
}

TEST_F(FilterModule, keepsNoFilter_thatThrew) {
    PrGPUFilterInstance instance = {};
    Filter::throws = true;
    EXPECT_EQ(Module::CreateInstance(&instance), suiteError_Fail);
    EXPECT_EQ(keptBy(instance), nullptr);
    EXPECT_EQ(Filter::alive, 0);
}

}  // namespace
