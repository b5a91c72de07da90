#include "tintwell_host/look_files/look_search.h"

#include <optional>
#include <string_view>

#include "looks/text_finder.h"
#include "tintwell_host/look_files/project_markup.h"

namespace program {
namespace {

class Searcher : public StreamVisitor {
public:
    explicit Searcher(LookSearch& search) : search_(search) {}

    void begin(const std::string& name) override {
        stream_ = name;
        begun_ = false;
        firstPlace_ = search_.places.size();
        finder_.emplace([this](looks::FoundText&& text) { note(text); });
    }

    void bytes(const char* bytes, std::size_t count) override {
        const std::string_view start(bytes, count);
        if (!begun_ && (start.starts_with("<") || start.starts_with("\xEF\xBB\xBF<")))
            markup_.emplace();
        begun_ = true;
        if (!markup_) {
            finder_->take(bytes, count);
            return;
        }
        // Tag by tag, so that a text that ends is still where the markup has come to.
        for (std::string_view left(bytes, count); !left.empty();) {
            const std::size_t length = std::min(left.find('>'), left.size() - 1) + 1;
            finder_->take(left.data(), length);
            markup_->take(left.data(), length);
            left.remove_prefix(length);
        }
    }

    void end() override {
        finder_->end();
        finder_.reset();
        nameEffects();
        markup_.reset();
    }

    void warn(const std::string& sentence) override { search_.warnings.push_back(sentence); }

private:
    void note(const looks::FoundText& text) {
        if (!search_.list.add(text, search_.places.size())) return;
        LookPlace place;
        place.stream = stream_;
        place.offset = text.offset;
        place.coding =
            std::string(text.wide ? "16-bit" : "8-bit") + (text.base64 ? ", base64" : "");
        ProjectMarkup::Place where;
        if (markup_) where = markup_->here();
        place.path = where.path;
        search_.places.push_back(place);
        objects_.push_back(where.object);
    }

    // The names stand anywhere in the stream.
    void nameEffects() {
        for (std::size_t i = 0; markup_ && i < objects_.size(); ++i) {
            if (objects_[i] == 0) continue;
            const ProjectMarkup::Names names = markup_->namesOf(objects_[i]);
            search_.places[firstPlace_ + i].clip = names.clip;
            search_.places[firstPlace_ + i].effect = names.effect;
        }
        objects_.clear();
    }

    LookSearch& search_;
    std::string stream_;
    bool begun_ = false;
    std::optional<looks::TextFinder> finder_;
    std::optional<ProjectMarkup> markup_;
    // Of this stream's places, the objects that they stand in.
    std::size_t firstPlace_ = 0;
    std::vector<std::uint64_t> objects_;
};

}  // namespace

void searchLooks(const std::string& file, LookSearch& search) {
    Searcher searcher(search);
    readStreams(file, searcher);
}

}  // namespace program
