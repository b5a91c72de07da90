// What JavaScript sees of the engine; tintwell.mjs puts a kinder face on it. An error is thrown as
// an Error whose message is one sentence for the user.
#include <emscripten/bind.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <utility>

#include "desk/engine/bytes.h"
#include "desk/engine/look.h"
#include "desk/engine/look_finder.h"
#include "desk/engine/pictures.h"
#include "desk/engine/reports.h"
#include "looks/comparison.h"
#include "looks/neutral_axis.h"
#include "native/src/lut_text.h"
#include "native/src/paths.h"

namespace desk {
namespace {

using emscripten::val;

// No C++ exception leaves the module: JavaScript could not tell what it is.
template <class Call>
auto guarded(Call call) -> decltype(call()) {
    std::string sentence;
    try {
        return call();
    } catch (const Refusal& refusal) {
        sentence = refusal.what();
    } catch (const std::exception&) {
        sentence = "there is not enough memory for it";
    }
    val::global("Error").new_(sentence).throw_();
    std::abort();
}

template <class Class, class... Arguments>
std::unique_ptr<Class> make(Arguments&&... arguments) {
    return guarded([&] { return std::make_unique<Class>(std::forward<Arguments>(arguments)...); });
}

std::unique_ptr<Bytes> makeBytes(double count) {
    return make<Bytes>(count);
}

std::unique_ptr<Floats> makeFloats(double count) {
    return make<Floats>(count);
}

std::unique_ptr<LookFinder> makeFinder() {
    return make<LookFinder>();
}

std::unique_ptr<Look> readCube(const Bytes& contents, const std::string& name) {
    return guarded([&] { return std::make_unique<Look>(Look::fromCube(contents, name)); });
}

std::unique_ptr<Look> readText(const Bytes& contents) {
    return guarded([&] { return std::make_unique<Look>(Look::fromText(contents)); });
}

// Ids are decimal numbers in strings: JavaScript's numbers do not hold all of them.
std::unique_ptr<Look> named(const Look& look, const std::string& id, const std::string& name) {
    return guarded([&] {
        return std::make_unique<Look>(look.named(std::strtoll(id.c_str(), nullptr, 10), name));
    });
}

std::unique_ptr<Bytes> textOf(const Look& look) {
    return guarded([&] { return std::make_unique<Bytes>(std::string(look.text())); });
}

std::unique_ptr<Bytes> cubeOf(const Look& look) {
    return guarded([&] { return std::make_unique<Bytes>(look.cube()); });
}

std::unique_ptr<Floats> samplesOf(const Look& look) {
    return guarded([&] { return std::make_unique<Floats>(std::vector<float>(look.lut().data)); });
}

std::unique_ptr<Floats> neutralAxisOf(const Look& look, int count) {
    return guarded([&] {
        if (tw::kindOf(&look.lut()) != tw::LutKind::kLut) throw Refusal("it holds no LUT");
        if (count < 2 || count > 65536) throw Refusal("greys are 2 to 65536");
        std::vector<float> values;
        for (const looks::Colour& colour : looks::neutralAxis(look.lut(), count))
            values.insert(values.end(), colour.begin(), colour.end());
        return std::make_unique<Floats>(std::move(values));
    });
}

val compare(const Look& one, const Look& other) {
    return guarded([&] {
        if (tw::kindOf(&one.lut()) != tw::LutKind::kLut ||
            tw::kindOf(&other.lut()) != tw::LutKind::kLut)
            throw Refusal("only looks with a LUT can be compared");
        return reportOf(looks::stepsBetween(looks::comparedColours(one.lut()),
                                            looks::comparedColours(other.lut())));
    });
}

void grade8(Bytes& pixels, int width, int height, const Look& look, double amount) {
    guarded([&] { render8(pixels, width, height, look, amount); });
}

void gradeF(Floats& pixels, int width, int height, const Look& look, double amount) {
    guarded([&] { renderF(pixels, width, height, look, amount); });
}

std::unique_ptr<Bytes> drawPattern(int steps, int width, int height) {
    return guarded([&] { return pattern(steps, width, height); });
}

std::unique_ptr<Bytes> drawScene(int width, int height) {
    return guarded([&] { return scene(width, height); });
}

// `report` is an object that is given the members.
std::unique_ptr<Look> measureLook(const Floats& pixels, int width, int height,
                                  const looks::PatternFrame& frame, bool isOf8Bits,
                                  const std::string& id, const std::string& name, val report) {
    return guarded([&] {
        looks::Measurement measurement = measure(pixels, width, height, frame);
        val::global("Object").call<void>("assign", report, reportOf(measurement, isOf8Bits));
        measurement.lut.id = std::strtoll(id.c_str(), nullptr, 10);
        measurement.lut.name = name;
        return std::make_unique<Look>(Look::fromMeasured(std::move(measurement.lut)));
    });
}

val checkCube(const Bytes& contents, const std::string& name) {
    return guarded([&] { return reportOf(looks::checkCube(contents.bytes, tw::fromUtf8(name))); });
}

val checkText(const Bytes& contents) {
    return guarded([&] {
        return reportOf(
            looks::checkText(tw::embeddedText(contents.bytes.data(), contents.bytes.size())));
    });
}

bool isText(const Bytes& contents) {
    return guarded(
        [&] { return !tw::embeddedText(contents.bytes.data(), contents.bytes.size()).empty(); });
}

val readEditRequest(const Bytes& contents) {
    return guarded([&] { return reportOf(looks::readEditRequest(contents.bytes)); });
}

void take(LookFinder& finder, const Bytes& bytes, double count) {
    guarded([&] { finder.take(bytes.bytes.substr(0, static_cast<std::size_t>(count))); });
}

val findings(LookFinder& finder) {
    return guarded([&] {
        finder.end();
        return reportOf(finder);
    });
}

}  // namespace

EMSCRIPTEN_BINDINGS(tintwell) {
    using namespace emscripten;
    value_object<looks::PatternFrame>("PatternFrame")
        .field("size", &looks::PatternFrame::size)
        .field("width", &looks::PatternFrame::width)
        .field("height", &looks::PatternFrame::height);
    class_<Bytes>("Bytes").constructor(&makeBytes).function("view", &Bytes::view);
    class_<Floats>("Floats").constructor(&makeFloats).function("view", &Floats::view);
    class_<Look>("Look")
        .property("kind", &kindOf)
        .property("id", &idOf)
        .property("name", &nameOf)
        .property("size", &sizeOf)
        .property("steps", &stepsOf)
        .property("range", &rangeOf);
    class_<LookFinder>("LookFinder")
        .constructor(&makeFinder)
        .function("take", &take)
        .function("findings", &findings);
    function("readCube", &readCube);
    function("readText", &readText);
    function("named", &named);
    function("textOf", &textOf);
    function("cubeOf", &cubeOf);
    function("samplesOf", &samplesOf);
    function("neutralAxisOf", &neutralAxisOf);
    function("compare", &compare);
    function("grade8", &grade8);
    function("gradeF", &gradeF);
    function("drawPattern", &drawPattern);
    function("drawScene", &drawScene);
    function("measure", &measureLook);
    function("checkCube", &checkCube);
    function("checkText", &checkText);
    function("isText", &isText);
    function("readEditRequest", &readEditRequest);
}

}  // namespace desk
