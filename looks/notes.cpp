#include "looks/notes.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string_view>

#include "looks/words.h"
#include "native/src/c_locale.h"

namespace looks {
namespace {

constexpr float kStep = 1.0f / 255.0f;
constexpr const char* kChannels[3] = {"red", "green", "blue"};

class Notes {
public:
    explicit Notes(const Facts& facts) : facts_(facts) {}

    std::vector<Finding> all() {
        noteNotNumbers();
        if (facts_.notNumbers == 0 && facts_.largestChange < kStep / 2) {
            note("identity", "the look changes nothing: every colour comes out as it goes in");
            return std::move(notes_);
        }
        noteOutside();
        noteFlats();
        noteFalls();
        noteCast();
        noteEnds();
        noteDuplicates();
        return std::move(notes_);
    }

private:
    void note(const char* id, std::string words, std::string advice = {}) {
        notes_.push_back({Weight::kNote, id, std::move(words), std::move(advice)});
    }
    void trap(const char* id, std::string words, std::string advice) {
        notes_.push_back({Weight::kTrap, id, std::move(words), std::move(advice)});
    }

    std::string ofPoints(std::size_t count) const {
        return std::to_string(count) + " of " + std::to_string(facts_.points) + " points";
    }

    void noteNotNumbers() {
        if (facts_.notNumbers == 0) return;
        trap("not-numbers",
             spell(facts_.notNumbers, "value is no finite number", "values are no finite numbers"),
             "The look was computed wrongly; export it again.");
    }

    void noteOutside() {
        if (facts_.below > 0) {
            note("below-black",
                 ofPoints(facts_.below) + " lie below 0, the lowest at " + spell(facts_.lowest),
                 "8-bit pictures clip there; float ones keep it for what follows.");
        }
        if (facts_.above > 0) {
            note("above-white",
                 ofPoints(facts_.above) + " lie above 1, the highest at " + spell(facts_.highest),
                 "8-bit pictures clip there; float ones keep it for what follows.");
        }
    }

    // Greys beyond one that all come out alike; only where every channel does so.
    void noteFlats() {
        float upTo = 1.0f;
        float from = 0.0f;
        for (const ChannelFacts& channel : facts_.channels) {
            upTo = std::min(upTo, channel.flatUpTo);
            from = std::max(from, channel.flatFrom);
        }
        if (upTo == 1.0f) {
            note("constant", "all greys come out as one colour");
            return;
        }
        if (upTo > kStep) {
            note("clipped-shadows", "all greys from 0 up to " + spell(upTo) + " come out alike",
                 "Detail in the shadows is lost.");
        }
        if (from < 1.0f - kStep) {
            note("clipped-highlights", "all greys from " + spell(from) + " up to 1 come out alike",
                 "Detail in the highlights is lost.");
        }
    }

    void noteFalls() {
        for (std::size_t k = 0; k < 3; ++k) {
            const ChannelFacts& channel = facts_.channels[k];
            if (channel.fall < kStep / 2) continue;
            note("not-monotonic",
                 std::string(kChannels[k]) + " falls by " + inSteps(channel.fall) +
                     " while grey rises, lowest at grey " + spell(channel.fallAt),
                 "Gradients can show bands or turn over there.");
        }
    }

    void noteCast() {
        if (facts_.cast < kStep) return;
        note("not-neutral", "greys do not stay neutral: the channels differ by up to " +
                                inSteps(facts_.cast) + ", most at grey " + spell(facts_.castAt));
    }

    void noteEnds() {
        const auto moved = [](const Colour& colour, float from) {
            return std::any_of(colour.begin(), colour.end(),
                               [from](float v) { return std::abs(v - from) >= kStep / 2; });
        };
        if (moved(facts_.black, 0.0f)) note("black-moved", "black becomes " + spell(facts_.black));
        if (moved(facts_.white, 1.0f)) note("white-moved", "white becomes " + spell(facts_.white));
    }

    void noteDuplicates() {
        if (facts_.duplicates == 0) return;
        note("duplicates", ofPoints(facts_.duplicates) + " share their colour with another one",
             "Colours that differ there cannot be told apart afterwards.");
    }

    const Facts& facts_;
    std::vector<Finding> notes_;
};

// What follows `tag` in the first line that begins with it; none without such a line.
std::optional<std::string> restOfTag(const std::string& cube, std::string_view tag) {
    std::size_t at = 0;
    while (at < cube.size()) {
        const std::size_t end = std::min(cube.find('\n', at), cube.size());
        const std::size_t start = std::min(cube.find_first_not_of(" \t\r", at), end);
        if (cube.compare(start, tag.size(), tag) == 0) {
            return cube.substr(start + tag.size(), end - start - tag.size());
        }
        at = end + 1;
    }
    return std::nullopt;
}

bool isUnitRange(const std::string& numbers) {
    const tw::CLocaleScope cNumbers;
    float low = 0.0f;
    float high = 0.0f;
    return std::sscanf(numbers.c_str(), "%f %f", &low, &high) == 2 && low == 0.0f && high == 1.0f;
}

}  // namespace

std::vector<Finding> notesOf(const Facts& facts) {
    return Notes(facts).all();
}

std::vector<Finding> notesOf(const Precision& precision) {
    if (precision.largest < 0.5f) return {};
    return {{Weight::kTrap, "precision",
             "the 16 bits of the text are spread over so wide a range that values move by up to " +
                 inSteps(precision.largest / 255.0f) + ", " + inSteps(precision.mean / 255.0f) +
                 " on average",
             "Take out values far outside 0..1 and export it again."}};
}

std::vector<Finding> notesOfTags(const std::string& cube) {
    std::vector<Finding> notes;
    const auto add = [&notes](Weight weight, const char* tag, const char* advice) {
        notes.push_back(
            {weight, "passed-over", std::string("the effect passes over ") + tag, advice});
    };
    if (const auto range = restOfTag(cube, "LUT_3D_INPUT_RANGE")) {
        if (isUnitRange(*range)) {
            add(Weight::kNote, "LUT_3D_INPUT_RANGE", "It says 0 to 1, so nothing is lost.");
        } else {
            add(Weight::kTrap, "LUT_3D_INPUT_RANGE",
                "The look was made for another input range; export it again for 0 to 1.");
        }
    }
    if (restOfTag(cube, "LUT_IN_VIDEO_RANGE")) {
        add(Weight::kTrap, "LUT_IN_VIDEO_RANGE",
            "The look was made for video levels and gets full ones; export it for full range.");
    }
    if (restOfTag(cube, "LUT_OUT_VIDEO_RANGE")) {
        add(Weight::kTrap, "LUT_OUT_VIDEO_RANGE",
            "The look gives video levels, taken for full ones; export it for full range.");
    }
    return notes;
}

}  // namespace looks
