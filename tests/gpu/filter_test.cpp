// The GPU filter module: its entry, the making of instances and what devices they refuse.
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>

#include "tests/gpu/filter_fixture.h"

namespace {

using namespace twtest;

class Entry : public FilterTest {
protected:
    prSuiteError call(csSDK_int32 index, prBool startUp = 1) {
        index_ = index;
        return gpu_->callEntry(index_, startUp, filter_, info_);
    }

    csSDK_int32 index_ = 0;
    PrGPUFilter filter_ = {};
    PrGPUFilterInfo info_ = {99, {{1, 2}}};
};

TEST_F(Entry, fillsBothRecords) {
    EXPECT_EQ(call(0), 0);
    EXPECT_TRUE(filter_.CreateInstance && filter_.DisposeInstance && filter_.GetFrameDependencies &&
                filter_.Precompute && filter_.Render);
    const csSDK_uint32 version = info_.outInterfaceVersion;
    const csSDK_int64 name[] = {info_.outMatchName.opaque[0], info_.outMatchName.opaque[1]};
    EXPECT_EQ(version, 2U);
    EXPECT_EQ(name[0], 0);
    EXPECT_EQ(name[1], 0);
    EXPECT_EQ(index_, 0);
}

TEST_F(Entry, offersOneFilterOnly) {
    EXPECT_EQ(call(1), suiteError_InvalidParms);
    EXPECT_TRUE(filter_.Render != nullptr);
    const csSDK_uint32 version = info_.outInterfaceVersion;
    EXPECT_EQ(version, 99U);
}

TEST_F(Entry, raisesAnIndexBelowZero) {
    EXPECT_EQ(call(-3), 0);
    EXPECT_EQ(index_, -2);
}

TEST_F(Entry, doesNothing_whenShuttingDown) {
    EXPECT_EQ(call(0, 0), 0);
    EXPECT_TRUE(filter_.CreateInstance == nullptr);
}

class MakeInstance : public FilterTest {};

TEST_F(MakeInstance, compilesOnce_andSaysReadyOnceAProcess) {
    open({{}, {}});
    for (const unsigned device : {0U, 0U, 1U})
        EXPECT_EQ(make(device).error(), 0);
    EXPECT_EQ(counts().compilations, 2);
    EXPECT_EQ(gpuLines(), kReadyLine);
}

TEST_F(MakeInstance, fails_onADeviceBelowMinimumRequirements) {
    open({{}, {.meetsRequirements = false}});
    EXPECT_EQ(make(1).error(), kFail);
    EXPECT_EQ(gpuLines(), Lines{"GPU: device 1 below minimum requirements; CPU render"});
    EXPECT_EQ(gpu_->memory().allocated(), 0);
}

TEST_F(MakeInstance, fails_whenTheHostDoesNotDescribeTheDevice) {
    open({{.hasInfo = false}});
    EXPECT_EQ(make().error(), kFail);
    EXPECT_EQ(gpuLines(), Lines{"GPU: device 0 below minimum requirements; CPU render"});
}

struct Framework {
    csSDK_uint32 code;
    const char* name;
};

class MakeInstanceOn : public FilterTest, public testing::WithParamInterface<Framework> {};

TEST_P(MakeInstanceOn, failsAndSaysSoOnceForEachDevice) {
    open({{.framework = GetParam().code}, {.framework = GetParam().code}});
    for (const unsigned device : {0U, 0U, 1U, 0U, 1U})
        EXPECT_EQ(make(device).error(), kFail);
    const std::string line =
        std::string("GPU: framework ") + GetParam().name + " not supported; CPU render";
    EXPECT_EQ(gpuLines(), Lines(2, line));
    EXPECT_EQ(counts().compilations, 0);
}

INSTANTIATE_TEST_SUITE_P(Frameworks, MakeInstanceOn,
                         testing::Values(Framework{0, "CUDA"}, Framework{1, "OpenCL"},
                                         Framework{3, "DirectX"}, Framework{4, "?"}),
                         [](const auto& row) { return "Code" + std::to_string(row.param.code); });

TEST_F(MakeInstance, failsSilentlyForGood_whenTheKernelDoesNotCompile) {
    Faults faults;
    faults.source = "kernel void TintwellLut(device float* p [[buffer(0)]]) { p[0] = oops; }\n";
    software_metal::setFaults(faults);
    EXPECT_EQ(make().error(), kFail);
    software_metal::setFaults({});
    EXPECT_EQ(make().error(), kFail);
    EXPECT_EQ(make().error(), kFail);
    EXPECT_EQ(counts().compilations, 1);
    const Lines lines = gpuLines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_TRUE(lines[0].starts_with("GPU: Metal kernel failed: compile: program_source"))
        << lines[0];
}

TEST_F(MakeInstance, givesTheDevicesWords_whenTheLibraryFails) {
    software_metal::setFaults(faultOf(&Faults::noLibrary, "no compiler"));
    EXPECT_EQ(make().error(), kFail);
    EXPECT_EQ(gpuLines(), Lines{"GPU: Metal kernel failed: compile: no compiler"});
}

TEST_F(MakeInstance, saysSo_whenTheFunctionIsAbsent) {
    software_metal::setFaults(faultOf(&Faults::noFunction));
    EXPECT_EQ(make().error(), kFail);
    EXPECT_EQ(gpuLines(), Lines{"GPU: Metal kernel failed: no TintwellLut function"});
}

TEST_F(MakeInstance, givesTheDevicesWords_whenThePipelineFails) {
    software_metal::setFaults(faultOf(&Faults::noPipeline, std::nullopt));
    EXPECT_EQ(make().error(), kFail);
    EXPECT_EQ(gpuLines(), Lines{"GPU: Metal kernel failed: pipeline: ?"});
}

TEST_F(MakeInstance, works_onAnotherDevice_whenOneHasFailed) {
    open({{}, {}});
    software_metal::setFaults(faultOf(&Faults::noLibrary));
    EXPECT_EQ(make(0).error(), kFail);
    software_metal::setFaults({});
    EXPECT_EQ(make(1).error(), 0);
    EXPECT_EQ(make(0).error(), kFail);
    EXPECT_EQ(gpuLines(), (Lines{"GPU: Metal kernel failed: compile: injected",
                                 "GPU: filter ready on device 1 (Metal)"}));
}

TEST_F(MakeInstance, acquiresTheSuites_andKeepsThem) {
    { const GpuInstance instance = make(); }
    const std::pair<const char*, int> suites[] = {
        {"MediaCore GPU Device Suite", 2},    {"MediaCore GPU Image Processing Suite", 1},
        {"Premiere Memory Manager Suite", 4}, {"Premiere PPix Suite", 1},
        {"Premiere PPix 2 Suite", 3},         {"PF Transition Suite", 2},
        {"MediaCore Video Segment Suite", 9}};
    for (const auto& [name, version] : suites) {
        EXPECT_EQ(host_.suites().use(name, version).acquired, 1) << name;
        EXPECT_EQ(host_.suites().use(name, version).released, 0) << name;
    }
}

// Missing, given as null, refused though given: `expect` is called for each.
void withoutSuite(host_sim::Refusals& refusals, const char* name,
                  const std::function<void()>& expect) {
    SCOPED_TRACE(name);
    using host_sim::SuiteAnswer;
    for (const SuiteAnswer answer :
         {SuiteAnswer::kNotFound, SuiteAnswer::kNullTable, SuiteAnswer::kErrorWithTable}) {
        refusals.answerSuite(name, answer);
        expect();
        refusals.clear();
    }
}

TEST_F(MakeInstance, fallsBackToTheCpu_withoutTheDeviceSuite) {
    Lines lines;
    withoutSuite(host_.refusals(), "MediaCore GPU Device Suite", [&] {
        EXPECT_EQ(make().error(), kFail);
        lines.push_back("GPU: device 0 below minimum requirements; CPU render");
        EXPECT_EQ(gpuLines(), lines);
    });
}

TEST_F(MakeInstance, tellsOfAWeakDeviceFirst_whateverElseIsMissing) {
    open({{.meetsRequirements = false}});
    for (const char* name :
         {"Premiere Memory Manager Suite", "Premiere PPix Suite", "MediaCore Video Segment Suite"})
        host_.refusals().answerSuite(name, host_sim::SuiteAnswer::kNotFound);
    EXPECT_EQ(make().error(), kFail);
    EXPECT_EQ(gpuLines(), Lines{"GPU: device 0 below minimum requirements; CPU render"});
}

std::string wordsOf(const testing::TestParamInfo<const char*>& suite) {
    std::string name = suite.param;
    std::erase(name, ' ');
    return name;
}

class NeededSuite : public FilterTest, public testing::WithParamInterface<const char*> {};

TEST_P(NeededSuite, failsTheInstanceWithoutALine_whenMissing) {
    withoutSuite(host_.refusals(), GetParam(), [&] { EXPECT_EQ(make().error(), kFail); });
    EXPECT_EQ(gpuLines(), Lines());
}

INSTANTIATE_TEST_SUITE_P(MakeInstance, NeededSuite,
                         testing::Values("Premiere Memory Manager Suite", "Premiere PPix Suite",
                                         "MediaCore Video Segment Suite"),
                         wordsOf);

class OtherSuite : public FilterTest, public testing::WithParamInterface<const char*> {};

TEST_P(OtherSuite, leavesTheInstanceAlone_whenMissing) {
    withoutSuite(host_.refusals(), GetParam(), [&] { EXPECT_EQ(make().error(), 0); });
}

INSTANTIATE_TEST_SUITE_P(MakeInstance, OtherSuite,
                         testing::Values("MediaCore GPU Image Processing Suite",
                                         "Premiere PPix 2 Suite", "PF Transition Suite"),
                         wordsOf);

TEST_F(MakeInstance, fails_withoutABasicSuite) {
    const GpuValues now = values();
    host_.refusals().withoutBasicSuite(true);
    EXPECT_EQ(GpuInstance(*gpu_, now).error(), kFail);
    host_.refusals().clear();
}

TEST_F(MakeInstance, fails_withoutTheHostsFunctions) {
    PrGPUFilterInstance record = {};
    EXPECT_EQ(gpu_->filter().CreateInstance(&record), kFail);
    piSuites suites = {};
    record.piSuites = &suites;
    EXPECT_EQ(gpu_->filter().CreateInstance(&record), kFail);
}

TEST_F(MakeInstance, readsTheLutOnce_atTimeZero) {
    std::vector<std::pair<csSDK_int32, PrTime>> reads;
    gpu_->setParamHook([&](csSDK_int32 index, PrTime time, PrParam*) {
        reads.emplace_back(index, time);
        return prSuiteError{0};
    });
    GpuInstance instance = make();
    GpuFrame picture = frame(noisePicture(4, 4));
    EXPECT_EQ(instance.render(picture, picture, 500), 0);
    EXPECT_EQ(reads, (std::vector<std::pair<csSDK_int32, PrTime>>{{1, 0}, {0, 500}}));
    gpu_->setParamHook({});
}

TEST_F(MakeInstance, leavesNothing_whenTheHostThrows) {
    gpu_->setParamHook(
        [](csSDK_int32, PrTime, PrParam*) -> prSuiteError { throw std::bad_alloc(); });
    EXPECT_EQ(make().error(), kFail);
    gpu_->setParamHook({});
}

class OtherCallbacks : public FilterTest {};

TEST_F(OtherCallbacks, areNotImplemented) {
    GpuInstance instance = make();
    EXPECT_EQ(instance.frameDependencies(), suiteError_NotImplemented);
    EXPECT_EQ(instance.precompute(), suiteError_NotImplemented);
}

TEST_F(OtherCallbacks, fail_forAnInstanceThatWasNotMade) {
    PrGPUFilterInstance nobody = {};
    const PrGPUFilter& filter = gpu_->filter();
    EXPECT_EQ(filter.GetFrameDependencies(&nobody, nullptr, nullptr, nullptr), kFail);
    EXPECT_EQ(filter.Precompute(&nobody, nullptr, 0, nullptr), kFail);
    EXPECT_EQ(filter.Render(&nobody, nullptr, nullptr, 0, nullptr), kFail);
    EXPECT_EQ(filter.DisposeInstance(&nobody), 0);
}

}  // namespace
