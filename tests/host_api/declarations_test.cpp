// The layout tables name everything that host_api declares.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

// "record.nested.field" as the list of declarations spells it: "record.field".
std::string shortName(const std::string& record, const std::string& field) {
    const std::size_t lastDot = field.rfind('.');
    return record + "." + (lastDot == std::string::npos ? field : field.substr(lastDot + 1));
}

std::vector<std::string> tabled() {
    return {
#define RECORD(type, size, alignment) #type,
#define FIELD(type, field, offset, size) shortName(#type, #field),
#define CONSTANT(name, value) #name,
#include "constants_table.inc"
#include "layout_table.inc"
#undef RECORD
#undef FIELD
#undef CONSTANT
    };
}

std::vector<std::string> declared() {
    return {
#define DECLARED(name) name,
#include "declared.inc"
#undef DECLARED
    };
}

// `names` less one equal name for each of `others`: nested records share field names, so
// occurrences count.
std::vector<std::string> without(std::vector<std::string> names,
                                 const std::vector<std::string>& others) {
    for (const std::string& other : others) {
        const auto found = std::find(names.begin(), names.end(), other);
        if (found != names.end()) names.erase(found);
    }
    return names;
}

TEST(Declarations, areAllInTheTables) {
    if (declared().empty()) GTEST_SKIP() << "this compiler does not list declarations";
    EXPECT_EQ(without(declared(), tabled()), std::vector<std::string>());
}

TEST(Tables, nameOnlyWhatIsDeclared) {
    if (declared().empty()) GTEST_SKIP() << "this compiler does not list declarations";
    EXPECT_EQ(without(tabled(), declared()), std::vector<std::string>());
}

}  // namespace
