// Maps a Mach-O bundle's x86-64 code into this process and makes it ready to run.
#pragma once

#include <filesystem>
#include <span>
#include <string_view>
#include <vector>

#include "macos_check/loader/bytes.h"
#include "macos_check/loader/fixups.h"
#include "macos_check/loader/unwind.h"

namespace macho {

// The mapping stays to the end of the process: what the code registered with the process may be
// called until then.
class Image {
public:
    // Maps the x86-64 slice of a universal file, binds every import through `resolve`, describes
    // its frames to `registerFrame` and runs its initialisers. Throws std::runtime_error.
    Image(const std::filesystem::path& file, const Resolve& resolve,
          const RegisterFrame& registerFrame);

    // The address of an exported symbol by its linker name ("_EffectMain"); null when it is not
    // exported.
    void* symbol(std::string_view name) const;

private:
    struct Segment {
        Address start;
        Address size;
        int protection;
    };
    struct Section {
        std::string_view name;
        Byte* start;
        Address size;
        Word type;
    };

    void reserve(const Byte* slice);
    void mapSegment(const Byte* slice, const Byte* command);
    void readCommands(const Byte* slice);
    void protect() const;
    void runInitialisers() const;
    Byte* section(std::string_view name) const;

    Byte* base_ = nullptr;
    std::vector<Segment> segments_;
    std::vector<Section> sections_;
    std::span<const Byte> rebases_;
    std::span<const Byte> binds_;
    std::span<const Byte> lazyBinds_;
    std::span<const Byte> exports_;
    std::vector<Byte> file_;
};

}  // namespace macho
