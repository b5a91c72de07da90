// The host may call the GPU filter until its process has ended, and the device may finish its
// work as late.
#include <gtest/gtest.h>

#include <string>

#include "host_sim/gpu_instance.h"
#include "host_sim/gpu_side.h"
#include "software_metal/control.h"
#include "tests/quitting/calls.h"
#include "tests/quitting/ending.h"
#include "tests/support/frames.h"
#include "tests/support/temp_folder.h"
#include "tests/support/texts.h"

namespace quitting {
namespace {

constexpr unsigned kDevices = 3;
constexpr int kLateFrames = 40;

// Premiere Pro with devices, which is never closed.
class GpuSession {
public:
    GpuSession()
        : session_(host_sim::premierePro()),
          effect_(session_.apply()),
          gpu_(session_.host(), std::vector<host_sim::GpuDeviceSettings>(kDevices)) {
        gpu_.enter();
    }

    // Whether one frame, graded on the device by a new instance, came out as on the CPU. Looks,
    // sizes and the lengths of the setup line change with the round.
    bool isGradedRight(int round, unsigned device) {
        const std::string look = twtest::scatteredText(2, static_cast<std::uint64_t>(round % 12), 1,
                                                       std::string(40, 'n'));
        effect_.setBytes(twtest::kLut, twtest::widened(look));
        constexpr int kWidths[] = {5, 50, 500};
        const host_sim::Frame in =
            twtest::scattered(PrPixelFormat_BGRA_4444_32f, kWidths[round % 3], 7);
        host_sim::Frame onGpu(in.format(), in.width(), in.height());
        host_sim::Frame onCpu(in.format(), in.width(), in.height());
        const host_sim::GpuRender result = host_sim::renderOnGpu(gpu_, effect_, in, onGpu, device);
        require(effect_.render(in, onCpu).error == 0, "a render failed");
        return result.onGpu && result.error == 0 && onGpu.pixelBytes() == onCpu.pixelBytes();
    }

private:
    OpenSession session_;
    host_sim::Instance& effect_;
    host_sim::GpuSide gpu_;
};

class QuittingOnTheGpu : public testing::Test {
protected:
    const twtest::TempHome home_;
};

// One of the devices is prepared late, too.
TEST_F(QuittingOnTheGpu, takesFramesFromAHandlerAtExit) {
    expectGoodEnd([] {
        static GpuSession* session = nullptr;
        atTheVeryEnd([] {
            for (int round = 0; round < kLateFrames; ++round) {
                const unsigned device = static_cast<unsigned>(round) % kDevices;
                require(session->isGradedRight(round, device), "a late frame is wrong");
            }
        });
        session = new GpuSession;
        require(session->isGradedRight(0, 0) && session->isGradedRight(1, 1), "a frame is wrong");
    });
}

TEST_F(QuittingOnTheGpu, takesCompletionsThatFail_fromAHandlerAtExit) {
    expectGoodEnd([] {
        static GpuSession* session = nullptr;
        atTheVeryEnd([] {
            int reached = 0;
            software_metal::Faults faults;
            faults.failExecution = true;
            faults.atDispatch = [&reached](const software_metal::Encoded&) { ++reached; };
            software_metal::setFaults(faults);
            for (int round = 0; round < kLateFrames; ++round)
                require(!session->isGradedRight(round, 0), "a frame that failed is right");
            software_metal::waitUntilIdle();
            require(reached == kLateFrames, "a late frame did not reach the device");
        });
        session = new GpuSession;
        require(session->isGradedRight(0, 0), "a frame is wrong");
    });
}

// The device still works on the frame while everything else ends, and then fails.
TEST_F(QuittingOnTheGpu, takesACompletionThatFails_ofAFrameThatWasUnderWay) {
    expectGoodEnd([] {
        static GpuSession* session = nullptr;
        static Gate& gate = *new Gate;
        static std::thread& host = *new std::thread;
        atTheVeryEnd([] {
            gate.open();
            host.join();
            software_metal::waitUntilIdle();
        });
        session = new GpuSession;
        require(session->isGradedRight(0, 0), "a frame is wrong");
        software_metal::Faults faults;
        faults.failExecution = true;
        faults.atExecution = [] {
            gate.announce();
            gate.step();
        };
        software_metal::setFaults(faults);
        host = startThread(
            [] { require(!session->isGradedRight(1, 0), "a frame that failed is right"); });
        gate.waitFor(1);
    });
}

}  // namespace
}  // namespace quitting
