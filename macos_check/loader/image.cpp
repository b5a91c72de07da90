#include "macos_check/loader/image.h"

#include <sys/mman.h>

#include <algorithm>
#include <cstddef>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>

namespace macho {
namespace {

constexpr Word kUniversal = 0xCAFEBABE;  // of the file's own, big-endian order
constexpr Word kX86 = 0x01000007;
constexpr Word kBundle = 8;

constexpr Word kSegment = 0x19;
constexpr Word kDyldInfo = 0x80000022;
constexpr Word kChainedFixups = 0x80000034;

constexpr Word kInitialisers = 9;  // section type
constexpr std::size_t kHeaderBytes = 32;
constexpr std::size_t kSegmentBytes = 72;
constexpr std::size_t kSectionBytes = 80;

Word bigWord(const Byte* at) {
    return __builtin_bswap32(load<Word>(at));
}

std::vector<Byte> readWhole(const std::filesystem::path& file) {
    std::ifstream in(file, std::ios::binary);
    if (!in) throw std::runtime_error("cannot be read");
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

const Byte* x86Slice(const std::vector<Byte>& file) {
    if (file.size() < 4096 || bigWord(file.data()) != kUniversal)
        throw std::runtime_error("is no universal file");
    const Word count = bigWord(&file[4]);
    for (Word i = 0; i < count; ++i) {
        const Byte* entry = &file[8 + 20 * i];
        if (bigWord(entry) != kX86) continue;
        const Byte* slice = &file.at(bigWord(entry + 8));
        if (load<Word>(slice + 12) == kBundle) return slice;
    }
    throw std::runtime_error("holds no bundle for x86-64");
}

template <class Use>
void eachCommand(const Byte* slice, Use use) {
    const Byte* command = slice + kHeaderBytes;
    for (Word left = load<Word>(slice + 16); left > 0; --left) {
        use(load<Word>(command), command);
        command += load<Word>(command + 4);
    }
}

// A part of the file that a command names by offset and length.
std::span<const Byte> part(const Byte* slice, const Byte* command, std::size_t field) {
    return {slice + load<Word>(command + field), load<Word>(command + field + 4)};
}

}  // namespace

Image::Image(const std::filesystem::path& file, const Resolve& resolve,
             const RegisterFrame& registerFrame)
    : file_(readWhole(file)) {
    const Byte* slice = x86Slice(file_);
    reserve(slice);
    readCommands(slice);
    std::vector<Address> starts;
    for (const Segment& segment : segments_)
        starts.push_back(segment.start);
    applyRebases(rebases_, starts, reinterpret_cast<Address>(base_));
    applyBinds(binds_, starts, resolve);
    applyBinds(lazyBinds_, starts, resolve);
    protect();
    if (const Byte* info = section("__unwind_info"))
        registerFrames(base_, info, section("__eh_frame"), registerFrame);
    runInitialisers();
}

void Image::reserve(const Byte* slice) {
    Address end = 0;
    eachCommand(slice, [&end](Word kind, const Byte* command) {
        if (kind != kSegment) return;
        end = std::max(end, load<Address>(command + 24) + load<Address>(command + 32));
    });
    void* memory = mmap(nullptr, end, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) throw std::runtime_error("finds no memory");
    base_ = static_cast<Byte*>(memory);
}

void Image::readCommands(const Byte* slice) {
    eachCommand(slice, [this, slice](Word kind, const Byte* command) {
        if (kind == kChainedFixups)
            throw std::runtime_error("has its pointers in chains, which this loader cannot follow");
        if (kind == kSegment) mapSegment(slice, command);
        if (kind != kDyldInfo) return;
        rebases_ = part(slice, command, 8);
        binds_ = part(slice, command, 16);
        lazyBinds_ = part(slice, command, 32);
        exports_ = part(slice, command, 40);
    });
}

void Image::mapSegment(const Byte* slice, const Byte* command) {
    Byte* start = base_ + load<Address>(command + 24);
    const Byte* content = slice + load<Address>(command + 40);
    std::copy_n(content, load<Address>(command + 48), start);
    // Protections have the same bits on both systems, in another order.
    const Word bits = load<Word>(command + 60);
    const int protection =
        (bits & 1 ? PROT_READ : 0) | (bits & 2 ? PROT_WRITE : 0) | (bits & 4 ? PROT_EXEC : 0);
    segments_.push_back(
        {reinterpret_cast<Address>(start), load<Address>(command + 32), protection});
    const Word count = load<Word>(command + 64);
    for (Word i = 0; i < count; ++i) {
        const Byte* entry = command + kSegmentBytes + kSectionBytes * i;
        const auto* name = reinterpret_cast<const char*>(entry);
        sections_.push_back({std::string_view(name, strnlen(name, 16)),
                             base_ + load<Address>(entry + 32), load<Address>(entry + 40),
                             load<Word>(entry + 64) & 0xFF});
    }
}

void Image::protect() const {
    for (const Segment& segment : segments_) {
        if (segment.size == 0) continue;
        if (mprotect(reinterpret_cast<void*>(segment.start), segment.size, segment.protection) != 0)
            throw std::runtime_error("cannot be protected");
    }
}

void Image::runInitialisers() const {
    for (const Section& section : sections_) {
        if (section.type != kInitialisers) continue;
        for (Address at = 0; at < section.size; at += sizeof(void (*)()))
            load<void (*)()>(section.start + at)();
    }
}

Byte* Image::section(std::string_view name) const {
    const auto found =
        std::find_if(sections_.begin(), sections_.end(),
                     [name](const Section& section) { return section.name == name; });
    return found == sections_.end() ? nullptr : found->start;
}

// The exports are a tree whose edges spell the names: each node holds its own value, if it ends a
// name, and then its edges.
void* Image::symbol(std::string_view name) const {
    const Byte* node = exports_.data();
    while (!exports_.empty()) {
        const Address valueBytes = loadUleb(node);
        if (name.empty() && valueBytes > 0) {
            loadUleb(node);  // flags: none of ours is re-exported or resolved by code
            return base_ + loadUleb(node);
        }
        node += valueBytes;
        const Byte* child = nullptr;
        for (int edges = *node++; edges > 0 && child == nullptr; --edges) {
            const std::string_view edge(reinterpret_cast<const char*>(node));
            node += edge.size() + 1;
            const Address offset = loadUleb(node);
            if (edge.empty() || !name.starts_with(edge)) continue;
            name.remove_prefix(edge.size());
            child = exports_.data() + offset;
        }
        if (child == nullptr) return nullptr;
        node = child;
    }
    return nullptr;
}

}  // namespace macho
