// The kernels of a program text and how their arguments are bound.
#pragma once

#include <string>
#include <vector>

namespace software_metal {

struct Parameter {
    int buffer = -1;  // binding index; -1: the thread's position in the grid
};

struct Signature {
    std::string name;
    std::vector<Parameter> parameters;
};

// Every "kernel void NAME(...)" of the text. A parameter needs [[buffer(N)]] or
// [[thread_position_in_grid]]: false otherwise, with *error set to a sentence.
bool findKernels(const std::string& text, std::vector<Signature>& kernels, std::string* error);

// Name of the generated C function that runs one thread group of a kernel.
std::string runnerName(const Signature& kernel);

// C++ text of that function; goes behind the program's own text and language/arguments.h.
std::string runnerText(const Signature& kernel);

}  // namespace software_metal
