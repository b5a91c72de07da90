// Where in a Premiere Pro project something stands: the elements round it, and the names of the
// clip and the effect that it belongs to. After public descriptions of such files; none of a host's
// own was at hand.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

struct XML_ParserStruct;

namespace program {

// A project is one flat list of objects below the root element. An object has a number ("ObjectID")
// and refers to others by theirs ("ObjectRef"): a track item to its clip and to its chain of
// effects, the chain to the effects, an effect to its parameters.
class ProjectMarkup {
public:
    struct Place {
        std::string path;  // such as "/PremiereData/ArbVideoComponentParam/StartKeyframeValue"
        std::uint64_t object = 0;  // 0: in none
    };
    struct Names {
        std::string clip;  // empty where the markup does not tell
        std::string effect;
    };

    ProjectMarkup();
    ~ProjectMarkup();
    ProjectMarkup(const ProjectMarkup&) = delete;
    ProjectMarkup& operator=(const ProjectMarkup&) = delete;

    // Takes the next bytes. From what is no well-formed markup on, or a size without measure, it
    // knows of no place any more; what it knew of names stays.
    void take(const char* bytes, std::size_t count);

    // Of the byte that comes next.
    Place here() const;
    // When all bytes were taken.
    Names namesOf(std::uint64_t object) const;

private:
    struct Object {
        std::string kind;  // the element's name
        std::string name;
        std::string displayName;
        std::vector<std::uint64_t> refs;
    };
    using Objects = std::map<std::uint64_t, Object>;

    static void onStart(void* self, const char* name, const char** attributes);
    static void onEnd(void* self, const char* name);
    static void onText(void* self, const char* text, int count);

    void start(const std::string& name, const char** attributes);
    void endElement();
    void stop();
    void keep(std::size_t bytes);
    std::string clipOf(const Object& object) const;

    struct FreeParser {
        void operator()(XML_ParserStruct* parser) const;
    };
    std::unique_ptr<XML_ParserStruct, FreeParser> parser_;
    std::vector<std::string> path_;
    Objects objects_;
    std::multimap<std::uint64_t, std::uint64_t> referrers_;  // an object, and who refers to it
    std::uint64_t object_ = 0;                               // the one in hand
    std::string* text_ = nullptr;                            // where its text goes, if anywhere
    std::uint64_t taken_ = 0;
    std::size_t kept_ = 0;
};

}  // namespace program
