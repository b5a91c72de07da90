#include "tintwell_host/look_files/project_markup.h"

#include <expat.h>

#include <cstdlib>
#include <cstring>
#include <set>

namespace program {
namespace {

// Deeper, longer or larger than any project is.
constexpr std::size_t kDeepest = 100;
constexpr std::size_t kLongestName = 400;
constexpr std::size_t kLongestTag = 1 << 20;
constexpr std::size_t kMostKept = 64 << 20;

std::uint64_t numberOf(const char** attributes, const char* name) {
    for (; attributes[0]; attributes += 2) {
        if (std::strcmp(attributes[0], name) == 0) return std::strtoull(attributes[1], nullptr, 10);
    }
    return 0;
}

}  // namespace

void ProjectMarkup::FreeParser::operator()(XML_ParserStruct* parser) const {
    XML_ParserFree(parser);
}

ProjectMarkup::ProjectMarkup() : parser_(XML_ParserCreate(nullptr)) {
    if (!parser_) throw std::bad_alloc();
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(parser_.get(), &onStart, &onEnd);
    XML_SetCharacterDataHandler(parser_.get(), &onText);
}

ProjectMarkup::~ProjectMarkup() = default;

void ProjectMarkup::take(const char* bytes, std::size_t count) {
    if (!parser_) return;
    taken_ += count;
    if (XML_Parse(parser_.get(), bytes, static_cast<int>(count), XML_FALSE) != XML_STATUS_OK) {
        stop();
        return;
    }
    const XML_Index at = XML_GetCurrentByteIndex(parser_.get());
    if (at >= 0 && taken_ - static_cast<std::uint64_t>(at) > kLongestTag) stop();
}

void ProjectMarkup::stop() {
    parser_.reset();
    path_.clear();
    object_ = 0;
}

// More than is kept of any project: its names are not told then.
void ProjectMarkup::keep(std::size_t bytes) {
    kept_ += bytes;
    if (kept_ > kMostKept) {
        XML_StopParser(parser_.get(), XML_FALSE);
        objects_.clear();
        referrers_.clear();
        text_ = nullptr;
    }
}

void ProjectMarkup::onStart(void* self, const char* name, const char** attributes) {
    static_cast<ProjectMarkup*>(self)->start(name, attributes);
}

void ProjectMarkup::onEnd(void* self, const char*) {
    static_cast<ProjectMarkup*>(self)->endElement();
}

void ProjectMarkup::onText(void* self, const char* text, int count) {
    ProjectMarkup& markup = *static_cast<ProjectMarkup*>(self);
    if (!markup.text_ || markup.text_->size() > kLongestName) return;
    markup.text_->append(text, static_cast<std::size_t>(count));
}

void ProjectMarkup::start(const std::string& name, const char** attributes) {
    if (path_.size() == kDeepest) {
        XML_StopParser(parser_.get(), XML_FALSE);
        return;
    }
    path_.push_back(name);
    if (path_.size() == 2) object_ = numberOf(attributes, "ObjectID");
    text_ = nullptr;
    if (object_ == 0) return;
    if (path_.size() == 2) {
        keep(200 + name.size());
        objects_[object_].kind = name;
        return;
    }
    Object& object = objects_[object_];
    if (const std::uint64_t ref = numberOf(attributes, "ObjectRef")) {
        object.refs.push_back(ref);
        referrers_.emplace(ref, object_);
        keep(100);
    } else if (name == "Name" && object.name.empty()) {
        text_ = &object.name;
        keep(kLongestName);
    } else if (name == "DisplayName" && object.displayName.empty()) {
        text_ = &object.displayName;
        keep(kLongestName);
    }
}

void ProjectMarkup::endElement() {
    text_ = nullptr;
    path_.pop_back();
    if (path_.size() == 1) object_ = 0;
}

ProjectMarkup::Place ProjectMarkup::here() const {
    Place place{{}, object_};
    for (const std::string& element : path_)
        place.path += "/" + element;
    return place;
}

// A clip in the project panel has its own name, one in a sequence that of what it shows.
std::string ProjectMarkup::clipOf(const Object& object) const {
    if (object.kind.ends_with("MasterClip")) return object.name;
    if (!object.kind.ends_with("TrackItem")) return {};
    for (const std::uint64_t ref : object.refs) {
        const auto clip = objects_.find(ref);
        if (clip != objects_.end() && clip->second.kind.ends_with("SubClip")) {
            return clip->second.name;
        }
    }
    return object.name;
}

// From the object up to those that refer to it, the nearest first.
ProjectMarkup::Names ProjectMarkup::namesOf(std::uint64_t object) const {
    constexpr int kFarthest = 8;
    Names names;
    std::set<std::uint64_t> seen = {object};
    std::set<std::uint64_t> ring = seen;
    for (int distance = 0; distance < kFarthest && !ring.empty(); ++distance) {
        std::set<std::uint64_t> next;
        for (const std::uint64_t number : ring) {
            const auto found = objects_.find(number);
            if (found == objects_.end()) continue;
            if (names.effect.empty()) names.effect = found->second.displayName;
            if (names.clip.empty()) names.clip = clipOf(found->second);
            const auto [first, last] = referrers_.equal_range(number);
            for (auto referrer = first; referrer != last; ++referrer) {
                if (seen.insert(referrer->second).second) next.insert(referrer->second);
            }
        }
        if (!names.clip.empty()) break;
        ring = std::move(next);
    }
    return names;
}

}  // namespace program
