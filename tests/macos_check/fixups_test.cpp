#include "macos_check/loader/fixups.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <stdexcept>
#include <string>

namespace {

using macho::Address;
using macho::Byte;
using Pointers = std::array<Address, 8>;
using Program = std::vector<Byte>;

// Eight pointers that begin as 0..7, in segment 1; segment 0 is not used.
class Fixups : public testing::Test {
protected:
    Pointers pointers = {0, 1, 2, 3, 4, 5, 6, 7};
    std::vector<Address> segments = {0, reinterpret_cast<Address>(pointers.data())};
};

class Rebase : public Fixups {
protected:
    Pointers rebased(const Program& program) {
        macho::applyRebases(program, segments, 100);
        return pointers;
    }
};

TEST_F(Rebase, addsTheSlide_toSoManyPointersInARow) {
    EXPECT_EQ(rebased({0x11, 0x21, 8, 0x52, 0}), Pointers({0, 101, 102, 3, 4, 5, 6, 7}));
}

TEST_F(Rebase, skips_betweenPointers) {
    EXPECT_EQ(rebased({0x21, 0, 0x70, 8, 0x41, 0x30, 8, 0x60, 2}),
              Pointers({100, 1, 2, 3, 104, 105, 6, 7}));
}

TEST_F(Rebase, repeatsWithAGap_andReadsLongNumbers) {
    EXPECT_EQ(rebased({0x21, 0x80, 0, 0x80, 3, 16}), Pointers({100, 1, 2, 103, 4, 5, 106, 7}));
}

TEST_F(Rebase, refuses_anUnknownInstruction) {
    EXPECT_THROW(rebased({0x90}), std::runtime_error);
}

class Bind : public Fixups {
protected:
    Pointers bound(const Program& program) {
        const std::map<std::string, Address, std::less<>> imports = {{"_a", 1000}, {"_b", 2000}};
        macho::applyBinds(program, segments, [&](std::string_view name) {
            return reinterpret_cast<void*>(imports.find(name)->second);
        });
        return pointers;
    }
};

TEST_F(Bind, storesTheAddress_ofTheNamedImport) {
    EXPECT_EQ(bound({0x11, 0x40, '_', 'a', 0, 0x51, 0x71, 16, 0x90, 0x90, 0, 0x40, '_', 'b', 0,
                     0x20, 5, 0x3F, 0x90}),
              Pointers({0, 1, 1000, 1000, 2000, 5, 6, 7}));
}

TEST_F(Bind, addsTheAddend_alsoANegativeOne) {
    EXPECT_EQ(bound({0x40, '_', 'a', 0, 0x71, 0, 0x60, 16, 0x90, 0x60, 0x78, 0x90, 0x60, 0, 0x90}),
              Pointers({1016, 992, 1000, 3, 4, 5, 6, 7}));
}

TEST_F(Bind, skips_betweenPointers) {
    EXPECT_EQ(bound({0x40, '_', 'a', 0, 0x71, 0, 0xA0, 8, 0xB1, 0x80, 8, 0x90}),
              Pointers({1000, 1, 1000, 3, 4, 1000, 6, 7}));
}

TEST_F(Bind, repeatsWithAGap) {
    EXPECT_EQ(bound({0x40, '_', 'b', 0, 0x71, 8, 0xC0, 2, 24}),
              Pointers({0, 2000, 2, 3, 4, 2000, 6, 7}));
}

TEST_F(Bind, refuses_anUnknownInstruction) {
    EXPECT_THROW(bound({0xD0}), std::runtime_error);
}

}  // namespace
