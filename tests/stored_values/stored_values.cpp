#include "tests/stored_values/stored_values.h"

#include <cstdint>
#include <limits>

#include "native/src/lut_text.h"
#include "tests/support/base64.h"
#include "tests/support/luts.h"

namespace stored_values {
namespace {

// Random samples.
std::string data(int size) {
    return twtest::encodeCodes(twtest::scatteredCodes(tw::latticeFloats(size)));
}

// A typical look: contrast, a warm tint, a little of each channel in the others. Whole
// numbers, divided once, are the same wherever this runs.
tw::Lut3D look(int size) {
    tw::Lut3D lut = twtest::identityLut(size);
    for (std::size_t i = 0; i < lut.data.size(); i += 3) {
        const float r = lut.data[i], g = lut.data[i + 1], b = lut.data[i + 2];
        lut.data[i] = r * r * (3.0f - 2.0f * r) * 0.875f + g * 0.0625f + 0.03125f;
        lut.data[i + 1] = g * 0.75f + r * g * 0.125f + b * 0.0625f;
        lut.data[i + 2] = b * b * 0.5f + b * 0.25f + r * 0.03125f;
    }
    return lut;
}

std::string wide(const std::string& text) {
    std::string bytes;
    for (const char c : text)
        bytes += std::string(1, c) + '\0';
    return bytes;
}

class Values {
public:
    void add(const std::string& name, const std::string& bytes) {
        values_.push_back({name, bytes});
    }
    // In both widths.
    void addBoth(const std::string& name, const std::string& text) {
        add(name + ".8bit", text);
        add(name + ".16bit", wide(text));
    }
    std::vector<Value> take() { return std::move(values_); }

private:
    std::vector<Value> values_;
};

void addForms(Values& values) {
    values.addBoth("form0", "TWLUT0");
    values.addBoth("form0_and_more", "TWLUT0 what follows does not count");
    for (const char* n : {"2", "17", "33", "64", "1", "65", "-8", "+9", ""})
        values.addBoth(std::string("formP_") + (*n ? n : "without_number"),
                       std::string("TWLUTP ") + n);
    values.addBoth("formP_without_blank", "TWLUTP48");
    values.addBoth("form1", "TWLUT1 3 0 1 " + data(3));
    values.addBoth("form2", "TWLUT2 4711 3 -0.25 1.5 " + data(3));
    values.addBoth("form3", "TWLUT3 4711 Dusk 3 -0.25 1.5 " + data(3));
    values.add("form4", "TWLUT4 1 Dusk 2 0 1 " + data(2));
    values.add("no_text", "a value of somebody else's");
}

void addSizes(Values& values) {
    for (const int size : {2, 3, 4, 5, 8, 9, 16, 17})
        values.addBoth("size_" + std::to_string(size),
                       tw::toEmbeddedText(look(size), size, "size " + std::to_string(size)));
    // One each, and 65 points of a smooth look, as they are large.
    values.add("size_33.8bit", tw::toEmbeddedText(look(33), 33, "size 33"));
    values.add("size_65.8bit", tw::toEmbeddedText(look(65), 65, "size 65"));
    for (const char* size : {"1", "0", "-2", "130"})
        values.add(std::string("size_") + size, "TWLUT3 1 - " + std::string(size) + " 0 1 AAAA");
}

void addNames(Values& values) {
    const tw::Lut3D two = twtest::scatteredLut(2, 7);
    const auto named = [&](const char* file, const std::string& name) {
        values.addBoth(std::string("name_") + file, tw::toEmbeddedText(two, 1, name));
    };
    named("none", "");
    named("hyphen", "-");
    named("ascii", "Golden-Hour_2.final~");
    named("blanks", "  My LUT  ");
    named("signs", "50% \"grey\" \\ / {a}");
    named("latin", "Cr\xC3\xA9puscule d\xE2\x80\x99\xC3\xA9t\xC3\xA9");
    named("japanese", "\xE5\xA4\x95\xE6\x9A\xAE\xE3\x82\x8C");
    named("emoji", "\xF0\x9F\x8E\xA8\xF0\x9F\x8C\x86");
    named("not_utf8", "\xFF\xC3 \x80");
    named("399_letters", std::string(399, 'n'));
    named("133_escapes", std::string(133, '\xE9'));
    named("400_letters", std::string(400, 'n'));
}

void addOddNames(Values& values) {
    const std::string rest = " 2 0 1 " + data(2);
    for (const auto& [file, name] : {std::pair{"lower_case", "caf%c3%a9"},
                                     {"no_digits", "a%zzb"},
                                     {"one_digit", "a%4zb"},
                                     {"at_the_end", "100%"},
                                     {"cut", "100%2"},
                                     {"of_zero", "a%00b"},
                                     {"signed", "a%+7b"}})
        values.add(std::string("escape_") + file, "TWLUT3 1 " + std::string(name) + rest);
}

void addRanges(Values& values) {
    for (const auto& [file, range] : {std::pair{"wide", "-2.5 7.75"},
                                      {"narrow", "0.5 0.500001"},
                                      {"nothing", "0.25 0.25"},
                                      {"falling", "1 0"},
                                      {"negative", "-3 -1"},
                                      {"tiny", "1e-38 2e-38"},
                                      {"below_the_normal", "-1e-41 1e-41"},
                                      {"huge", "-1e38 1e38"},
                                      {"exponents", "+1E-3 .5e1"},
                                      {"hexadecimal", "0x1p-3 0x1.8p+1"},
                                      {"digits", "0.1 0.90000000000000002220446"},
                                      {"third", "-0.333333343 0.666666687"},
                                      {"minus_zero", "-0 1"}})
        values.add(std::string("range_") + file,
                   "TWLUT3 9 range 2 " + std::string(range) + ' ' + data(2));
    for (const auto& [file, range] : {std::pair{"words", "low high"}, {"one", "0"}})
        values.add(std::string("range_of_") + file, "TWLUT3 9 range 2 " + std::string(range));
}

void addIds(Values& values) {
    const std::string rest = " - 2 0 1 " + data(2);
    for (const char* id : {"-7", "+12", "9223372036854775807", "-9223372036854775808", "x"})
        values.add(std::string("id_") + id, std::string("TWLUT3 ") + id + rest);
}

// The first 96 characters are scanned first: a hi that they cut is taken as it stands.
void addCuts(Values& values) {
    const std::string begin = "TWLUT3 5 ";
    for (const std::size_t before : {88U, 91U, 93U, 95U, 96U}) {
        const std::string range = " 2 0 ";
        const std::string name(before - begin.size() - range.size(), 'c');
        values.add("hi_begins_at_" + std::to_string(before),
                   begin + name + range + "1.5432 " + data(2));
    }
    values.add("blanks_before_1200", begin + "name" + std::string(1170, ' ') + "2 0 1 " + data(2));
    values.add("blanks_beyond_1200", begin + "name" + std::string(1200, ' ') + "2 0 1 " + data(2));
}

void addData(Values& values) {
    const std::string head = "TWLUT3 6 data 2 0 1 ";
    const std::string letters = data(2);
    values.add("data_one_letter_short", head + letters.substr(0, letters.size() - 1));
    values.add("data_none", head);
    values.add("data_surplus", head + letters + letters + "!");
    values.add("data_padding_within", head + letters.substr(0, 20) + "=" + letters.substr(20));
    values.add("data_padding_behind", head + letters + "==");
    values.add("data_strays", head + letters.substr(0, 9) + "\r\n\t *-_" + letters.substr(9));
    values.add("data_glued_to_hi", "TWLUT3 6 data 2 0 1" + letters);
    values.add("data_zero_behind", head + letters + std::string(1, '\0'));
    values.add("header_tabs_and_lines", "TWLUT3\t6\ndata\r\n2 \t0  1\n" + letters);
    values.add("header_no_blank", "TWLUT36 data 2 0 1 " + letters);
    values.add("wide_odd_byte", wide(head + letters) + "x");
    std::string high = wide(head + letters);
    high[41] = 1;
    values.add("wide_high_byte", high);
}

}  // namespace

std::vector<Value> allValues() {
    Values values;
    addForms(values);
    addSizes(values);
    addNames(values);
    addOddNames(values);
    addRanges(values);
    addIds(values);
    addCuts(values);
    addData(values);
    return values.take();
}

}  // namespace stored_values
