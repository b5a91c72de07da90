#include "desk/engine/reports.h"

#include <algorithm>

#include "looks/accuracy.h"

namespace desk {

using emscripten::val;

namespace {

const char* wordOf(tw::LutKind kind) {
    switch (kind) {
        case tw::LutKind::kPattern:
            return "pattern";
        case tw::LutKind::kLut:
            return "lut";
        case tw::LutKind::kNone:
            break;
    }
    return "none";
}

template <class Range>
val arrayOf(const Range& range) {
    val array = val::array();
    for (const auto& each : range)
        array.call<void>("push", each);
    return array;
}

val objectOf(const looks::ChannelFacts& channel) {
    val object = val::object();
    object.set("fall", channel.fall);
    object.set("fallAt", channel.fallAt);
    object.set("flatUpTo", channel.flatUpTo);
    object.set("flatFrom", channel.flatFrom);
    return object;
}

val objectOf(const looks::Facts& facts) {
    val object = val::object();
    object.set("points", facts.points);
    object.set("notNumbers", facts.notNumbers);
    object.set("lowest", facts.lowest);
    object.set("highest", facts.highest);
    object.set("below", facts.below);
    object.set("above", facts.above);
    object.set("duplicates", facts.duplicates);
    object.set("largestChange", facts.largestChange);
    object.set("black", arrayOf(facts.black));
    object.set("white", arrayOf(facts.white));
    object.set("cast", facts.cast);
    object.set("castAt", facts.castAt);
    object.set("red", objectOf(facts.channels[0]));
    object.set("green", objectOf(facts.channels[1]));
    object.set("blue", objectOf(facts.channels[2]));
    return object;
}

val objectOf(const looks::Finding& finding) {
    val object = val::object();
    object.set("weight", std::string(looks::wordOf(finding.weight)));
    object.set("id", finding.id);
    object.set("words", finding.words);
    object.set("advice", finding.advice);
    return object;
}

val objectOf(const looks::Precision& precision) {
    val object = val::object();
    object.set("largest", precision.largest);
    object.set("mean", precision.mean);
    return object;
}

val objectOf(const looks::Occurrences& found, const LookFinder& finder) {
    val places = val::array();
    for (const std::size_t number : found.places) {
        const LookFinder::Place& place = finder.places()[number];
        val object = val::object();
        object.set("offset", static_cast<double>(place.offset));
        object.set("base64", place.base64);
        object.set("wide", place.wide);
        places.call<void>("push", object);
    }
    val object = val::object();
    object.set("count", static_cast<double>(found.count));
    object.set("places", places);
    return object;
}

}  // namespace

std::string kindOf(const Look& look) {
    return wordOf(tw::kindOf(&look.lut()));
}

std::string idOf(const Look& look) {
    return std::to_string(look.lut().id);
}

std::string nameOf(const Look& look) {
    return look.lut().name;
}

int sizeOf(const Look& look) {
    return look.lut().size;
}

int stepsOf(const Look& look) {
    return look.lut().probe;
}

val rangeOf(const Look& look) {
    if (look.lut().data.empty()) return val::null();
    const std::vector<float>& data = look.lut().data;
    const auto [lowest, highest] = std::minmax_element(data.begin(), data.end());
    val range = val::array();
    range.set(0, *lowest);
    range.set(1, *highest);
    return range;
}

val reportOf(const looks::Check& check) {
    val report = val::object();
    report.set("works", check.works);
    report.set("name", check.lut.name);
    report.set("id", std::to_string(check.lut.id));
    report.set("size", check.lut.size);
    val findings = val::array();
    for (const looks::Finding& finding : check.findings)
        findings.call<void>("push", objectOf(finding));
    report.set("findings", findings);
    report.set("facts", check.facts ? objectOf(*check.facts) : val::null());
    report.set("precision", check.precision ? objectOf(*check.precision) : val::null());
    return report;
}

val reportOf(const looks::Measurement& measurement, bool isOf8Bits) {
    const looks::Accuracy accuracy = looks::accuracyOf(measurement, isOf8Bits);
    val report = val::object();
    report.set("columns", measurement.columns);
    report.set("rows", measurement.rows);
    report.set("patchWidth", measurement.patchWidth);
    report.set("patchHeight", measurement.patchHeight);
    report.set("pixelsRead", measurement.pixelsRead);
    report.set("middleNoise", accuracy.middleNoise);
    report.set("mostNoise", accuracy.mostNoise);
    report.set("noisiest", arrayOf(looks::patternColour(accuracy.noisiest, measurement.lut.size)));
    report.set("middleError", accuracy.middleError);
    report.set("mostError", accuracy.mostError);
    report.set("poor", accuracy.isPoor());
    report.set("noise", arrayOf(measurement.noise));
    return report;
}

val reportOf(const looks::Steps& steps) {
    val report = val::object();
    report.set("largest", steps.largest);
    report.set("mean", steps.mean);
    return report;
}

val reportOf(const looks::EditRequest& request) {
    val report = val::object();
    report.set("state", std::string(looks::wordOf(request.state)));
    report.set("id", std::to_string(request.id));
    report.set("name", request.name ? val(*request.name) : val::null());
    report.set("at", request.at ? val(std::to_string(*request.at)) : val::null());
    return report;
}

val reportOf(const LookFinder& finder) {
    val looks = val::array();
    for (std::size_t i = 0; i < finder.list().looks().size(); ++i) {
        val each = objectOf(finder.list().looks()[i].found, finder);
        each.set("text", finder.texts()[i]);
        looks.call<void>("push", each);
    }
    val unreadable = val::array();
    for (const looks::UnreadableText& text : finder.list().unreadable()) {
        val each = objectOf(text.found, finder);
        each.set("reason", text.reason);
        unreadable.call<void>("push", each);
    }
    val report = val::object();
    report.set("looks", looks);
    report.set("unreadable", unreadable);
    report.set("beyond", static_cast<double>(finder.list().beyond()));
    return report;
}

}  // namespace desk
