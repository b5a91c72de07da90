#include "looks/edit_request_reader.h"

#include <charconv>

namespace looks {
namespace {

// What is left to read of a request.
class Rest {
public:
    explicit Rest(std::string_view text) : text_(text) {}

    bool empty() const { return text_.empty(); }

    // Steps over `word`. False when it does not stand here; what does may be its beginning, cut.
    bool take(std::string_view word) {
        if (!text_.starts_with(word)) {
            cut_ = word.starts_with(text_);
            return false;
        }
        text_.remove_prefix(word.size());
        return true;
    }

    // A whole number with what must follow it, so that a cut number is not taken for another one.
    std::optional<std::int64_t> takeNumber(std::string_view follower) {
        std::int64_t value = 0;
        const char* end = text_.data() + text_.size();
        const auto [stop, error] = std::from_chars(text_.data(), end, value);
        if (error != std::errc()) {
            cut_ = text_.empty() || text_ == "-";
            return std::nullopt;
        }
        text_.remove_prefix(static_cast<std::size_t>(stop - text_.data()));
        if (!take(follower)) return std::nullopt;
        return value;
    }

    // A name to its closing quote.
    std::optional<std::string> takeName() {
        std::string name;
        for (std::size_t at = 0; at < text_.size(); ++at) {
            if (text_[at] == '"') {
                text_.remove_prefix(at + 1);
                return name;
            }
            const bool isEscaped = text_[at] == '\\' && at + 1 < text_.size();
            name += text_[isEscaped ? ++at : at];
        }
        cut_ = true;
        return std::nullopt;
    }

    // Whether the last failure was that the text ended too early.
    bool wasCut() const { return cut_; }

private:
    std::string_view text_;
    bool cut_ = false;
};

// Fills what can be read. True when the request is whole.
bool readMembers(Rest& rest, EditRequest& request) {
    if (!rest.take("{\"id\":")) return false;
    const auto id = rest.takeNumber(",\"name\":\"");
    if (!id || *id < 1) return false;
    request.id = *id;
    request.name = rest.takeName();
    if (!request.name || !rest.take(",\"at\":")) return false;
    request.at = rest.takeNumber("}");
    return request.at && rest.take("\n") && rest.empty();
}

}  // namespace

const char* wordOf(RequestState state) {
    switch (state) {
        case RequestState::kWhole:
            return "whole";
        case RequestState::kCut:
            return "cut";
        case RequestState::kUnfinished:
            return "unfinished";
        case RequestState::kForeign:
            break;
    }
    return "foreign";
}

EditRequest readEditRequest(std::string_view contents) {
    EditRequest request;
    Rest rest(contents);
    if (readMembers(rest, request)) {
        request.state = RequestState::kWhole;
    } else if (rest.wasCut() && contents.size() < kLongestRequest) {
        request = {RequestState::kUnfinished, 0, std::nullopt, std::nullopt};
    } else if (rest.wasCut() && contents.size() == kLongestRequest) {
        request.state = RequestState::kCut;
    } else {
        request = {};
    }
    return request;
}

}  // namespace looks
