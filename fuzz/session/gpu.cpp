#include <cmath>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "fuzz/session/pictures.h"
#include "fuzz/session/random_texts.h"
#include "fuzz/session/steps.h"
#include "fuzz/session/violation.h"
#include "host_sim/gpu_instance.h"
#include "host_sim/gpu_side.h"
#include "software_metal/control.h"
#include "tests/software_metal/settled.h"
#include "tests/support/texts.h"

namespace session_fuzz {
namespace {

using host_sim::Frame;
using host_sim::GpuFrame;
using host_sim::GpuInstance;
using host_sim::GpuSide;
using host_sim::GpuValue;
using host_sim::GpuValues;

constexpr prSuiteError kFail = -2147483647 - 1;
constexpr int kMostCommands = 2;

// In every session of the process the first device works and the third is below the requirements;
// the second stays as an earlier session left it, as the effect keeps its devices to the end.
constexpr unsigned kSound = 0;
constexpr unsigned kWeak = 2;

std::vector<host_sim::GpuDeviceSettings> makeDevices(Record& record) {
    host_sim::GpuDeviceSettings odd;
    odd.framework = static_cast<csSDK_uint32>(record.below(5));
    host_sim::GpuDeviceSettings weak;
    (record.flag() ? weak.hasInfo : weak.meetsRequirements) = false;
    return {{}, odd, weak};
}

GpuSide& sideOf(SessionState& session, Record& record) {
    if (!session.gpu) {
        auto side = std::make_shared<GpuSide>(session.host, makeDevices(record));
        side->enter();
        session.gpu = std::move(side);
    }
    return *static_cast<GpuSide*>(session.gpu.get());
}

// A number, nothing, or an unknown type. No host gives a memory block here.
GpuValue oddAmount(Record& record) {
    constexpr csSDK_uint32 kTypes[] = {0, kPrParamType_Int32, kPrParamType_Float32,
                                       kPrParamType_Float64, 99};
    return {kTypes[record.below(5)], record.byte() - 20.0, {}, false};
}

GpuValue oddLut(Record& record) {
    constexpr csSDK_uint32 kTypes[] = {0, kPrParamType_Float64, 99};
    const int which = record.below(6);
    if (which < 3) return {kTypes[which], 1.0, {}, false};
    GpuValue block{kPrParamType_PrMemoryPtr, 0.0, {}, which == 3};
    block.bytes = makeBytes(record);
    return block;
}

GpuValue lutValue(const Value& held) {
    if (!held) return {};
    return {kPrParamType_PrMemoryPtr, 0.0, *held, false};
}

// The instance's own values, or others in their places.
GpuValues makeValues(const Applied& one, Record& record) {
    const int odd = record.below(4);
    GpuValues values;
    values.push_back((odd & 1) != 0 ? oddAmount(record)
                                    : GpuValue{kPrParamType_Float64, one.amount, {}, false});
    values.push_back((odd & 2) != 0 ? oddLut(record) : lutValue(one.lut));
    values.resize(4);
    return values;
}

float amountOf(const GpuValue& value) {
    switch (value.type) {
        case kPrParamType_Int32:
        case kPrParamType_Float32:
        case kPrParamType_Float64:
            return static_cast<float>(value.number) / 100.0f;
        default:
            return 0.0f;
    }
}

std::optional<tw::Lut3D> lutOf(const GpuValue& value) {
    const bool isBlock = value.type == kPrParamType_PrMemoryPtr && !value.nullBlock;
    return isBlock ? decoded(value.bytes) : std::nullopt;
}

// Faults in the middle of a frame; the kernel is compiled as ever.
software_metal::Faults makeFaults(int which) {
    software_metal::Faults faults;
    faults.noBuffer = which == 1;
    faults.noCommandBuffer = which == 2;
    faults.noEncoder = which == 3;
    faults.failExecution = which == 4;
    return faults;
}

bool isFaulty(int which) {
    return which >= 1 && which <= 4;
}

bool isDocumented(prSuiteError error) {
    return error == suiteError_NoError || error == kFail;
}

Frame makePicture(Record& record) {
    const int width = 1 + record.below(9);
    const int height = 1 + record.below(9);
    Frame picture(PrPixelFormat_BGRA_4444_32f, width, height);
    fillWithNoise(picture, record.byte(), false);
    return picture;
}

// Zeros of either sign are equal, and so are any two NaN.
void requireSame(const Frame& expected, const Frame& picture) {
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            for (std::size_t c = 0; c < 4; ++c) {
                const float wanted = expected.pixelF(x, y)[c];
                const float got = picture.pixelF(x, y)[c];
                require(wanted == got || (std::isnan(wanted) && std::isnan(got)),
                        "a GPU picture is not the engine's");
            }
        }
    }
}

void renderFrame(GpuSide& side, GpuInstance& filter, const GpuValues& values, Record& record) {
    const bool is32f = !record.flag();
    const PrPixelFormat format =
        is32f ? PrPixelFormat_GPU_BGRA_4444_32f : PrPixelFormat_GPU_BGRA_4444_16f;
    const Frame picture = makePicture(record);
    GpuFrame source(side.device(0), format, picture, {.padding = record.below(5)});
    GpuFrame destination(side.device(0), format, picture.width(), picture.height(),
                         {.padding = record.below(5)});
    const bool inPlace = record.flag();
    // A frame of unknown format counts as one of halves: then floats would not fit together.
    side.refuseFormats(!is32f && record.flag());
    const int fault = record.below(12);
    software_metal::setFaults(makeFaults(fault));
    const prSuiteError error = filter.render(source, inPlace ? source : destination);
    software_metal::setFaults({});
    side.refuseFormats(false);
    side.wait();
    require(isDocumented(error), "a GPU render's error is none of the documented ones");
    require(error == suiteError_NoError || isFaulty(fault), "a sound device did not render");
    for (const GpuFrame* frame : {&source, &destination}) {
        if (const auto place = frame->damage())
            violation("a byte outside a GPU frame was written, at " + *place);
    }
    if (!is32f || isFaulty(fault) || error != suiteError_NoError) return;
    Frame expected = picture;
    paint({true, tw::kOrderBGRA}, lutOf(values[1]), amountOf(values[0]), picture, expected);
    requireSame(expected, (inPlace ? source : destination).download());
}

void renderNothing(GpuInstance& filter) {
    require(filter.render(nullptr, 0, nullptr) == kFail, "no frame was rendered without an error");
    require(filter.frameDependencies() == suiteError_NotImplemented, "dependencies were given");
    require(filter.precompute() == suiteError_NotImplemented, "something was precomputed");
}

// One instance's life on one of the devices.
struct GpuRenderer {
    SessionState& session;
    GpuSide& side;
    unsigned device;

    void renderOne(const GpuValues& values, Record record) const {
        GpuInstance filter(side, values, device);
        require(isDocumented(filter.error()), "an instance's error is none of the documented ones");
        const bool isMade = filter.error() == suiteError_NoError;
        const bool mustBeMade = device == kSound && !session.reference.noBasicSuite;
        require(isMade || !mustBeMade, "no instance was made on a sound device");
        require(!isMade || device != kWeak, "an instance was made on a weak device");
        if (!isMade) return;
        renderFrame(side, filter, values, record);
        renderNothing(filter);
    }

    // The frame, and the same one with a look of another effect between it and the next one.
    void renderBoth(const GpuValues& values, Record record) const {
        static const Bytes otherLook = twtest::widened("TWLUT3 1 - 2 0 1 " + std::string(64, 'Q'));
        const GpuValue amount{kPrParamType_Int32, 70.0, {}, false};
        const GpuValues others = {amount, lutValue(otherLook), {}, {}};
        renderOne(values, record);
        renderOne(others, record);
    }
};

}  // namespace

void renderOnGpu(SessionState& session, Record& record) {
    const Applied* const one = session.chooseInstance(record);
    if (one == nullptr || !session.isPremiere() || session.gpuCommands == kMostCommands) return;
    ++session.gpuCommands;
    GpuSide& side = sideOf(session, record);
    const unsigned device = static_cast<unsigned>(record.below(8) < 6 ? 0 : 1 + record.below(2));
    const GpuValues values = makeValues(*one, record);
    const GpuRenderer renderer{session, side, device};
    renderer.renderBoth(values, record);
    // By now everything that the process keeps of a device is there.
    const long live = twtest::settledLiveObjects();
    session.keepDescriptors();
    renderer.renderBoth(values, record);
    require(twtest::settledLiveObjects() == live, "objects of the device were kept");
    require(side.memory().allocated() == side.memory().disposed(), "a memory block was kept");
    const std::string misuse = software_metal::takeMisuse();
    if (!misuse.empty()) violation("the device was misused: " + misuse);
}

}  // namespace session_fuzz
