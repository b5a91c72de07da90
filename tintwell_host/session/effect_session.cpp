#include "tintwell_host/session/effect_session.h"

#include <filesystem>

#include "host_sim/values/project.h"
#include "tintwell_host/files/cube_file.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/session/frame_copy.h"
#include "tintwell_host/session/own_module.h"

namespace program {
namespace {

std::filesystem::path moduleFile(const std::string& chosen) {
    if (!chosen.empty()) return chosen;
    return moduleBesideProgram();
}

host_sim::Personality personalityOf(const std::string& host) {
    return host == "ae" ? host_sim::afterEffects() : host_sim::premierePro();
}

host_sim::Instance& begin(host_sim::Host& host, const std::string& project) {
    host.start();
    return project.empty() ? host.apply() : host.load(project);
}

}  // namespace

EffectSession::EffectSession(const EffectOptions& options)
    : host_(moduleFile(options.module), personalityOf(options.host)),
      effect_(begin(host_, options.project)),
      amountIndex_(host_.params().indexOfType(PF_Param_FLOAT_SLIDER)),
      lutIndex_(host_.params().indexOfType(PF_Param_ARBITRARY_DATA)) {
    if (options.gpu) gpu_.emplace(host_);
}

void EffectSession::scan(const std::string& text, const std::string& origin) {
    const PF_Err error = effect_.scan(lutIndex_, text);
    if (!error) return;
    // The host is told a number only; the reason is what the text's own reader says.
    if (error == PF_Err_CANNOT_PARSE_KEYFRAME_TEXT) lutFromText(text, origin);
    throw Failure("cannot use '" + origin + "': the effect answered error " +
                  std::to_string(error));
}

void EffectSession::setAmount(double percent) {
    effect_.setSlider(amountIndex_, percent);
}

std::string EffectSession::storedText() {
    return effect_.print(lutIndex_).value;
}

double EffectSession::amount() const {
    return effect_.slider(amountIndex_);
}

void EffectSession::press(int button) {
    const host_sim::CommandResult result = effect_.press(buttonIndex(button));
    if (result.error) {
        throw Failure("the effect failed the press, with error " + std::to_string(result.error));
    }
}

std::string EffectSession::label(int button) const {
    return effect_.label(buttonIndex(button));
}

int EffectSession::buttonIndex(int button) const {
    const host_sim::DeclaredParams& params = host_.params();
    int index = params.indexOfType(PF_Param_BUTTON);
    for (; button > 0; --button) {
        do {
            ++index;
        } while (params.at(index).definition.param_type != PF_Param_BUTTON);
    }
    return index;
}

Picture EffectSession::render(Picture picture) {
    const PrPixelFormat format = host_.format(picture.depth == Depth::kFloat ? 32 : 8);
    const host_sim::Frame input = frameOf(picture, format);
    host_sim::Frame output(format, picture.width, picture.height);
    const PF_Err error = renderFrame(input, output);
    if (error) {
        throw Failure("the effect failed to render, with error " + std::to_string(error));
    }
    takePixels(picture, output);
    return picture;
}

PF_Err EffectSession::renderFrame(const host_sim::Frame& input, host_sim::Frame& output) {
    return gpu_ ? gpu_->render(effect_, input, output) : effect_.render(input, output).error;
}

void EffectSession::save(const std::string& project) {
    const auto bytes = host_sim::projectBytes(effect_.save(host_.matchName()));
    writeWhole(project, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

void EffectSession::close() {
    gpu_.reset();
    const std::vector<std::string> problems = host_.close();
    if (!problems.empty())
        throw Failure("the effect broke a rule of the host: " + problems.front());
}

Depth chosenDepth(const std::string& depth, const std::string& host) {
    if (depth != "float") return Depth::k8;
    if (host == "ae") {
        throw Failure(
            "After Effects gives this effect 8 bits a channel: "
            "use --depth 8, or --host premiere for float",
            Exit::kWrongUsage);
    }
    return Depth::kFloat;
}

}  // namespace program
