// What a frame sends to the device: the argument record, the LUT's samples and the thread groups.
#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>
#include <vector>

#include "native/src/gpu_args.h"
#include "tests/gpu/filter_fixture.h"

namespace {

using namespace twtest;
using software_metal::Encoded;
using twgpu::LutKernelArgs;

constexpr auto k32f = PrPixelFormat_GPU_BGRA_4444_32f;
constexpr auto k16f = PrPixelFormat_GPU_BGRA_4444_16f;

// Of a copy, 21 by 18 pixels and 3 or 5 more behind the rows of source and destination.
constexpr LutKernelArgs kCopy = {.srcPitch = 24,
                                 .dstPitch = 26,
                                 .is16f = 0,
                                 .width = 21,
                                 .height = 18,
                                 .size = 2,
                                 .dmin = {0.0f, 0.0f, 0.0f},
                                 .dmax = {1.0f, 1.0f, 1.0f},
                                 .amount = 0.0f,
                                 .probe = 0,
                                 .probeCols = 1,
                                 .probeRows = 1};

std::string shown(const LutKernelArgs& args) {
    const std::vector<double> fields = {
        double(args.srcPitch), double(args.dstPitch), double(args.is16f),
        double(args.width),    double(args.height),   double(args.size),
        double(args.dmin[0]),  double(args.dmin[1]),  double(args.dmin[2]),
        double(args.dmax[0]),  double(args.dmax[1]),  double(args.dmax[2]),
        double(args.amount),   double(args.probe),    double(args.probeCols),
        double(args.probeRows)};
    return testing::PrintToString(fields);
}

class Encoding : public FilterTest {
protected:
    // Renders one frame from one memory to another, and notes what goes to the device.
    void renderOne(const Frame& picture, PrPixelFormat format = k32f) {
        GpuInstance instance = make();
        GpuFrame source = frame(picture, format);
        GpuFrame destination = emptyFrame(picture, format);
        Faults watching;
        watching.atDispatch = [this](const Encoded& encoded) { encoded_.push_back(encoded); };
        watching.atBuffer = [this](const void* bytes, std::size_t length) {
            uploads_.emplace_back(length / sizeof(float));
            std::memcpy(uploads_.back().data(), bytes, length);
        };
        software_metal::setFaults(watching);
        EXPECT_EQ(instance.render(source, destination), 0);
        software_metal::setFaults({});
        gpu_->wait();
    }

    void expectRecord(const LutKernelArgs& expected) {
        ASSERT_EQ(encoded_.size(), 1U);
        ASSERT_EQ(encoded_[0].inlined.size(), sizeof expected);
        LutKernelArgs sent;
        std::memcpy(&sent, encoded_[0].inlined.data(), sizeof sent);
        EXPECT_EQ(std::memcmp(&sent, &expected, sizeof sent), 0)
            << "expected " << shown(expected) << ", sent " << shown(sent);
    }

    std::vector<Encoded> encoded_;
    std::vector<std::vector<float>> uploads_;
};

TEST_F(Encoding, isRightForAGradedFrame) {
    setLook(lutText(9, 1));
    effect_->setSlider(kAmount, 37.5);
    renderOne(noisePicture(21, 18));
    LutKernelArgs expected = kCopy;
    expected.size = 9;
    expected.amount = 0.375f;
    expectRecord(expected);
}

TEST_F(Encoding, isRightForAGradedFrameOfHalfFloats) {
    setLook(lutText(3, 1));
    renderOne(noisePicture(21, 18), k16f);
    LutKernelArgs expected = kCopy;
    expected.is16f = 1;
    expected.size = 3;
    expected.amount = 1.0f;
    expectRecord(expected);
}

// Neither the Amount nor a grid is sent where the kernel has no use for it.
TEST_F(Encoding, isRightForACopyWithoutALook) {
    renderOne(noisePicture(21, 18));
    expectRecord(kCopy);
}

TEST_F(Encoding, isRightForACopyAtAmountZero) {
    setLook(lutText(9, 1));
    effect_->setSlider(kAmount, 0.0);
    renderOne(noisePicture(21, 18));
    expectRecord(kCopy);
}

TEST_F(Encoding, isRightForThePattern_atAnyAmount) {
    setLook("TWLUTP 5");
    LutKernelArgs expected = kCopy;
    expected.probe = 5;
    tw::probeGrid(5, 21, 18, &expected.probeCols, &expected.probeRows);
    EXPECT_EQ(expected.probeCols, 13);
    EXPECT_EQ(expected.probeRows, 10);
    for (const double amount : {100.0, 37.0, 0.0}) {
        SCOPED_TRACE(amount);
        effect_->setSlider(kAmount, amount);
        encoded_.clear();
        renderOne(noisePicture(21, 18));
        expectRecord(expected);
    }
}

TEST_F(Encoding, coversTheFrameWithGroupsOf16By16) {
    struct Row {
        int width, height;
        unsigned columns, rows;
    };
    for (const Row& row : {Row{21, 18, 2, 2}, Row{16, 16, 1, 1}, Row{17, 16, 2, 1},
                           Row{32, 33, 2, 3}, Row{1, 1, 1, 1}}) {
        SCOPED_TRACE(testing::Message() << row.width << " x " << row.height);
        encoded_.clear();
        renderOne(noisePicture(row.width, row.height));
        ASSERT_EQ(encoded_.size(), 1U);
        const Encoded& sent = encoded_[0];
        EXPECT_EQ(std::vector(std::begin(sent.threads), std::end(sent.threads)),
                  (std::vector<unsigned>{16, 16, 1}));
        EXPECT_EQ(std::vector(std::begin(sent.groups), std::end(sent.groups)),
                  (std::vector<unsigned>{row.columns, row.rows, 1}));
    }
}

const std::vector<float> kIdentity = {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0,
                                      0, 0, 1, 1, 0, 1, 0, 1, 1, 1, 1, 1};

TEST_F(Encoding, sendsTheIdentityOfTwoPoints_forACopy) {
    renderOne(noisePicture(21, 18));
    EXPECT_EQ(uploads_, (std::vector<std::vector<float>>{kIdentity}));
}

TEST_F(Encoding, sendsTheIdentityOfTwoPoints_forThePattern) {
    setLook("TWLUTP 5");
    renderOne(noisePicture(21, 18));
    EXPECT_EQ(uploads_, (std::vector<std::vector<float>>{kIdentity}));
}

TEST_F(Encoding, sendsTheSamplesOfTheLook) {
    const std::string text = lutText(3, 1);
    setLook(text);
    renderOne(noisePicture(21, 18));
    tw::Lut3D lut;
    ASSERT_TRUE(tw::parseEmbeddedText(text, lut, nullptr));
    EXPECT_EQ(uploads_, (std::vector<std::vector<float>>{lut.data}));
}

}  // namespace
