#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "looks/accuracy.h"
#include "looks/forms.h"
#include "looks/measure.h"
#include "tintwell_host/files/cube_file.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/frame_size.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/subcommands.h"

namespace program {
namespace {

enum class Form { kNone, kCube, kText };

Form formOf(const std::string& out) {
    if (out.empty()) return Form::kNone;
    const std::string extension = std::filesystem::path(out).extension();
    if (extension == ".cube") return Form::kCube;
    if (extension == ".twlut") return Form::kText;
    throw Failure("cannot write '" + out + "': a look is written as .cube or .twlut");
}

looks::Measurement measured(const MeasureOptions& options, const std::string& file) {
    looks::PatternFrame frame;
    frame.size = options.size;
    if (!options.frame.empty()) {
        const FrameSize size = parseFrameSize(options.frame);
        frame.width = size.width;
        frame.height = size.height;
    }
    const Picture picture = decodePicture(options.picture, file, Depth::kFloat);
    looks::Measurement measurement;
    std::string reason;
    if (!looks::measurePattern({picture.floats.data(), picture.width, picture.height}, frame,
                               measurement, reason)) {
        throw Failure("cannot measure '" + options.picture + "': " + reason);
    }
    measurement.lut.id = options.id;
    measurement.lut.name = options.name;
    return measurement;
}

std::string textOf(const tw::Lut3D& lut) {
    std::string text;
    std::string reason;
    if (!looks::writeText(lut, text, reason)) throw Failure(reason);
    return text;
}

// As "0 0.5 1".
std::string colourOf(std::size_t point, int size) {
    const auto [red, green, blue] = looks::patternColour(point, size);
    char text[64];
    std::snprintf(text, sizeof text, "%.3g %.3g %.3g", red, green, blue);
    return text;
}

void printReport(const looks::Measurement& measurement, bool isOf8Bits) {
    const looks::Accuracy accuracy = looks::accuracyOf(measurement, isOf8Bits);
    std::printf(
        "pattern     %d steps in %d x %d patches, the smallest %d x %d pixels, "
        "each read from %d of them or more\n",
        measurement.lut.size, measurement.columns, measurement.rows, measurement.patchWidth,
        measurement.patchHeight, measurement.pixelsRead);
    std::printf("noise       %.2g steps of 8 bits in the middle patch, %.2g in the noisiest (%s)\n",
                accuracy.middleNoise, accuracy.mostNoise,
                colourOf(accuracy.noisiest, measurement.lut.size).c_str());
    std::printf("exactness   points are right to about %.2g steps of 8 bits, the worst to %.2g\n",
                accuracy.middleError, accuracy.mostError);
    if (accuracy.isPoor()) {
        std::printf(
            "advice      less compression, a larger frame or fewer steps make it more exact\n");
    }
    std::printf("LUT         %s\n", describeLut(measurement.lut).c_str());
}

void printJson(const looks::Measurement& measurement) {
    const tw::Lut3D& lut = measurement.lut;
    const auto [lo, hi] = std::minmax_element(lut.data.begin(), lut.data.end());
    nlohmann::ordered_json report;
    report["size"] = lut.size;
    report["id"] = lut.id;
    report["name"] = lut.name;
    report["lowest"] = *lo;
    report["highest"] = *hi;
    report["columns"] = measurement.columns;
    report["rows"] = measurement.rows;
    report["patch_width"] = measurement.patchWidth;
    report["patch_height"] = measurement.patchHeight;
    report["pixels_read"] = measurement.pixelsRead;
    report["noise"] = measurement.noise;
    const std::string text =
        report.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    std::printf("%s\n", text.c_str());
}

void sendInto(const EffectOptions& effect, const std::string& text) {
    EffectSession session(effect);
    session.scan(text, "the measured look");
    session.save(effect.project);
    session.close();
}

}  // namespace

void runMeasure(const MeasureOptions& options) {
    const Form form = formOf(options.out);
    const std::string file = readText(options.picture);
    const looks::Measurement measurement = measured(options, file);
    const std::string text = textOf(measurement.lut);
    if (!options.effect.project.empty()) sendInto(options.effect, text);
    if (form == Form::kCube) writeWhole(options.out, looks::writeCube(measurement.lut));
    if (form == Form::kText) writeWhole(options.out, text + "\n");
    if (options.json) {
        printJson(measurement);
    } else {
        printReport(measurement, inspectPicture(options.picture, file).depth == Depth::k8);
    }
}

}  // namespace program
