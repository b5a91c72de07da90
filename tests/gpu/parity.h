// Pictures of the same input by the kernel on a device and by tw::applyF: equal bit for bit, one
// not-a-number being as good as another; in half floats the CPU's picture rounded to nearest even.
#pragma once

#include <string>
#include <vector>

#include "native/src/lut_engine.h"
#include "tests/gpu/gpu_picture.h"
#include "tests/gpu/parity_inputs.h"
#include "tests/gpu/test_device.h"

namespace twtest {

enum class Place { kOtherBuffer, kInPlace };

// The colours row by row, the last row filled up with the first colours, BGRA.
inline Picture pictureOf(const std::vector<Colour>& colours, Shape shape) {
    Picture picture(shape);
    constexpr int kChannel[4] = {2, 1, 0, 3};
    std::size_t next = 0;
    for (int y = 0; y < shape.height; ++y) {
        for (int x = 0; x < shape.width; ++x, ++next) {
            for (int c = 0; c < 4; ++c)
                picture.set(x, y, c, colours[next % colours.size()].channel[kChannel[c]]);
        }
    }
    return picture;
}

// A picture of `shape` that holds the CPU's 32-bit floats, stored as it stores.
inline Picture storedPicture(const std::vector<float>& pixels, const Shape& shape) {
    Picture picture(shape);
    for (int y = 0; y < shape.height; ++y) {
        for (int i = 0; i < shape.width * 4; ++i)
            picture.set(i / 4, y, i % 4, pixels[static_cast<std::size_t>(y * shape.width * 4 + i)]);
    }
    return picture;
}

// What the CPU makes of it.
inline Picture cpuPicture(const tw::Lut3D& lut, const Picture& source, float amount,
                          const Shape& shape) {
    std::vector<float> pixels;
    for (int y = 0; y < shape.height; ++y) {
        for (int i = 0; i < shape.width * 4; ++i)
            pixels.push_back(source.at(i / 4, y, i % 4));
    }
    const tw::ImageF view{pixels.data(), shape.width, shape.height, shape.width * 16,
                          tw::kOrderBGRA};
    tw::applyF(lut, view, view, amount);
    return storedPicture(pixels, shape);
}

inline Picture cpuPattern(int n, const Shape& shape) {
    std::vector<float> pixels(static_cast<std::size_t>(shape.width) *
                              static_cast<std::size_t>(shape.height) * 4);
    tw::fillProbeF(n, {pixels.data(), shape.width, shape.height, shape.width * 16, tw::kOrderBGRA});
    return storedPicture(pixels, shape);
}

inline twgpu::LutKernelArgs argumentsFor(const tw::Lut3D& lut, float amount, const Shape& source,
                                         const Shape& destination) {
    twgpu::LutKernelArgs args = {};
    args.srcPitch = source.pitch;
    args.dstPitch = destination.pitch;
    args.is16f = source.half ? 1 : 0;
    args.width = destination.width;
    args.height = destination.height;
    args.size = lut.size;
    for (int c = 0; c < 3; ++c) {
        args.dmin[c] = lut.domainMin[c];
        args.dmax[c] = lut.domainMax[c];
    }
    args.amount = amount;
    args.probeCols = args.probeRows = 1;
    return args;
}

// What the kernel makes of it; *err is set when it could not run.
inline Picture kernelPicture(const Device& device, const tw::Lut3D& lut, const Picture& source,
                             float amount, Place place, const Shape& shape, std::string* err) {
    const Handle samples = device.buffer(lut.data.data(), lut.data.size() * sizeof(float));
    const Handle src = upload(device, source);
    Handle other;
    if (place == Place::kOtherBuffer) other = upload(device, Picture(shape));
    const Handle& dst = place == Place::kOtherBuffer ? other : src;
    twmetal::Launch(device.queue.get(), device.pipeline.get(), src.get(), dst.get(), samples.get(),
                    argumentsFor(lut, amount, source.shape, shape), true, err, nullptr);
    return download(dst, shape);
}

inline Picture kernelPattern(const Device& device, int n, const Shape& shape, std::string* err) {
    const tw::Lut3D identity = identityLut(2);
    twgpu::LutKernelArgs args = argumentsFor(identity, 0.0f, shape, shape);
    args.probe = n;
    tw::probeGrid(n, shape.width, shape.height, &args.probeCols, &args.probeRows);
    const Handle samples = device.buffer(identity.data.data(), 96);
    const Handle picture = upload(device, Picture(shape));
    twmetal::Launch(device.queue.get(), device.pipeline.get(), picture.get(), picture.get(),
                    samples.get(), args, true, err, nullptr);
    return download(picture, shape);
}

}  // namespace twtest
