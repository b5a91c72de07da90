#include "software_metal/signature.h"

#include <regex>

namespace software_metal {
namespace {

std::string withoutComments(const std::string& text) {
    const std::regex comment(R"(//[^\n]*|/\*[^]*?\*/)");
    return std::regex_replace(text, comment, " ");
}

// The parts between the commas of a parameter list that begins at `at`, behind its parenthesis.
std::vector<std::string> splitParameters(const std::string& text, std::size_t at) {
    std::vector<std::string> parts(1);
    for (int depth = 1; at < text.size(); ++at) {
        const char c = text[at];
        if (c == '(' || c == '[') ++depth;
        if (c == ')' || c == ']') --depth;
        if (depth == 0) break;
        if (c == ',' && depth == 1) {
            parts.emplace_back();
        } else {
            parts.back() += c;
        }
    }
    return parts;
}

bool bind(const std::string& declaration, Parameter& parameter) {
    const std::regex buffer(R"(\[\[\s*buffer\s*\(\s*(\d+)\s*\)\s*\]\])");
    std::smatch match;
    if (std::regex_search(declaration, match, buffer)) {
        parameter.buffer = std::stoi(match[1]);
        return parameter.buffer < 31;
    }
    return declaration.find("[[thread_position_in_grid]]") != std::string::npos;
}

}  // namespace

bool findKernels(const std::string& program, std::vector<Signature>& kernels, std::string* error) {
    const std::string text = withoutComments(program);
    const std::regex head(R"(\bkernel\s+(\w+)\s+(\w+)\s*\()");
    for (std::sregex_iterator at(text.begin(), text.end(), head), end; at != end; ++at) {
        Signature kernel{(*at)[2], {}};
        if ((*at)[1] != "void") {
            *error = "program_source: error: kernel " + kernel.name + " must return void\n";
            return false;
        }
        const auto behind = static_cast<std::size_t>(at->position() + at->length());
        for (const std::string& declaration : splitParameters(text, behind)) {
            Parameter parameter;
            if (!bind(declaration, parameter)) {
                *error = "program_source: error: kernel " + kernel.name +
                         ": parameter without a known attribute:" + declaration + "\n";
                return false;
            }
            kernel.parameters.push_back(parameter);
        }
        kernels.push_back(std::move(kernel));
    }
    return true;
}

std::string runnerName(const Signature& kernel) {
    return "software_metal_run_" + kernel.name;
}

std::string runnerText(const Signature& kernel) {
    std::string arguments;
    for (std::size_t i = 0; i < kernel.parameters.size(); ++i) {
        if (i > 0) arguments += ", ";
        const int buffer = kernel.parameters[i].buffer;
        arguments += buffer < 0 ? "position"
                                : "metal_arguments::get<" + std::to_string(i) + ">(" + kernel.name +
                                      ", buffers[" + std::to_string(buffer) + "])";
    }
    return "METAL_RUNNER void " + runnerName(kernel) +
           "(void* const* buffers, const unsigned* group, const unsigned* threads) {\n"
           "    for (unsigned y = 0; y < threads[1]; ++y) {\n"
           "        for (unsigned x = 0; x < threads[0]; ++x) {\n"
           "            const uint2 position =\n"
           "                uint2(group[0] * threads[0] + x, group[1] * threads[1] + y);\n"
           "            (void)position;\n"
           "            " +
           kernel.name + "(" + arguments + ");\n        }\n    }\n}\n";
}

}  // namespace software_metal
