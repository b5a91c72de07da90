#include <cstdio>

#include "host_sim/values/error.h"
#include "tintwell_host/files/cube_file.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/files/output_file.h"
#include "tintwell_host/subcommands.h"

namespace program {
namespace {

enum class FileKind { kCube, kText, kProject };

// Texts say what they are; a project is what reads as one; the rest can only be a .cube file.
FileKind kindOf(const std::string& file) {
    if (readText(file).starts_with("TWLUT")) return FileKind::kText;
    try {
        host_sim::readProject(file);
        return FileKind::kProject;
    } catch (const host_sim::ProjectError&) {
        return FileKind::kCube;
    }
}

void printRegistration(host_sim::Host& host) {
    const host_sim::Registration& effect = host.registrations().front();
    std::printf("effect      %s (%s), in %s\n", effect.name.c_str(), effect.matchName.c_str(),
                effect.category.c_str());
    std::printf("interface   %d.%d, entry point %s\n", effect.apiMajor, effect.apiMinor,
                effect.entryPoint.c_str());
    std::printf("support     %s\n", effect.supportUrl.c_str());
}

void printFlags(host_sim::Host& host) {
    const PF_OutData& out = host.setUp();
    std::printf("version     0x%X, flags 0x%X and 0x%X\n", static_cast<unsigned>(out.my_version),
                static_cast<unsigned>(out.out_flags), static_cast<unsigned>(out.out_flags2));
}

void printParameters(const host_sim::Host& host) {
    for (int index = 1; index < host.params().count(); ++index) {
        const host_sim::DeclaredParam& param = host.params().at(index);
        std::printf("parameter %d \"%s\", type %d, id %d%s%s\n", index, param.definition.name,
                    param.definition.param_type, param.definition.uu.id,
                    param.label.empty() ? "" : ", labelled ", param.label.c_str());
    }
}

void printLut(const tw::Lut3D& lut) {
    if (lut.probe != 0) {
        std::printf("LUT         calibration pattern of size %d\n", lut.probe);
    } else if (lut.size == 0) {
        std::printf("LUT         none\n");
    } else {
        std::printf("LUT         %s\n", describeLut(lut).c_str());
    }
}

}  // namespace

void runInspect(const EffectOptions& effect, const std::string& file) {
    const FileKind kind = kindOf(file);
    EffectOptions options = effect;
    if (kind == FileKind::kProject) options.project = file;
    EffectSession session(options);
    if (kind == FileKind::kText) session.scan(readText(file), file);
    if (kind == FileKind::kCube) session.scan(textFromCube(file), file);
    printRegistration(session.host());
    printFlags(session.host());
    printParameters(session.host());
    printLut(lutFromText(session.storedText(), file));
    std::printf("Amount      %.6g percent\n", session.amount());
    session.close();
}

}  // namespace program
