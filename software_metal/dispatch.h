// One dispatch of a kernel, recorded and later run.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <vector>

#include "software_metal/compiler.h"

namespace software_metal {

constexpr std::size_t kBindings = 31;

struct Extent {
    unsigned width = 0, height = 0, depth = 0;

    std::size_t total() const { return std::size_t{width} * height * depth; }
};

struct Dispatch {
    std::shared_ptr<const KernelModule> module;  // keeps `kernel` alive
    const Kernel* kernel = nullptr;
    std::array<void*, kBindings> slots = {};
    std::vector<std::vector<unsigned char>> inlined;  // what slots of inline bytes point into
    Extent groups;
    Extent threads;
};

// Runs all thread groups on several threads, in a scattered order so that no kernel can lean on
// the order of rows, and returns when they are done.
void run(const Dispatch& dispatch);

// The n-th of `total` groups in that order: each of 0 .. total - 1 comes once.
std::size_t scattered(std::size_t n, std::size_t total);

}  // namespace software_metal
