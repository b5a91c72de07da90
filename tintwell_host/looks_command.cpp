#include <algorithm>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>

#include "looks/words.h"
#include "tintwell_host/look_commands.h"
#include "tintwell_host/look_files/each_file.h"
#include "tintwell_host/look_files/extracted_looks.h"
#include "tintwell_host/look_files/look_search.h"
#include "tintwell_host/look_files/table.h"

namespace program {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kShownPlaces = 3;

std::string nameOf(const looks::ListedLook& look) {
    if (look.kind == tw::LutKind::kNone) return "(no look)";
    if (look.kind == tw::LutKind::kPattern) return "(calibration pattern)";
    return look.name.empty() ? "(no name)" : plain(look.name);
}

std::string whereOf(const LookPlace& place) {
    std::string where = place.stream;
    if (!place.clip.empty()) where += ", clip \"" + place.clip + "\"";
    if (!place.effect.empty()) where += ", effect \"" + place.effect + "\"";
    if (place.clip.empty() && place.effect.empty()) {
        where += ", at byte " + std::to_string(place.offset);
        if (!place.path.empty()) where += " in " + place.path;
    }
    return plain(where);
}

// One row for the look, and one more for each further place.
void addRows(std::vector<Row>& rows, Row row, const looks::Occurrences& found,
             const std::vector<LookPlace>& places) {
    for (std::size_t i = 0; i < std::min(found.places.size(), kShownPlaces); ++i) {
        row.push_back(whereOf(places[found.places[i]]));
        rows.push_back(row);
        row.assign(row.size() - 1, "");
    }
    if (found.count > kShownPlaces) {
        row.push_back("and " + std::to_string(found.count - kShownPlaces) + " more");
        rows.push_back(row);
    }
}

std::vector<Row> rowsOf(const LookSearch& search) {
    std::vector<Row> rows = {{"name", "match", "points", "values", "times", "where"}};
    for (const looks::ListedLook& look : search.list.looks()) {
        const bool isLut = look.kind == tw::LutKind::kLut;
        const std::int32_t size = isLut ? look.size : look.probe;
        addRows(rows,
                {nameOf(look), look.id != 0 ? std::to_string(look.id) : "-",
                 size != 0 ? std::to_string(size) : "-",
                 isLut ? looks::spell(look.lowest) + ".." + looks::spell(look.highest) : "-",
                 std::to_string(look.found.count)},
                look.found, search.places);
    }
    return rows;
}

void printTable(const LookSearch& search) {
    std::string text = search.list.looks().empty() ? "" : tableOf(rowsOf(search));
    for (const looks::UnreadableText& unreadable : search.list.unreadable()) {
        text += "\nunreadable, " + looks::spell(unreadable.found.count, "text", "texts") + ": " +
                unreadable.reason + "\n";
        std::vector<Row> rows;
        addRows(rows, {" "}, unreadable.found, search.places);
        text += tableOf(rows);
    }
    if (search.list.beyond() > 0) {
        text += "\nand " + std::to_string(search.list.beyond()) + " texts of further looks\n";
    }
    if (text.empty()) text = "no looks\n";
    std::fwrite(text.data(), 1, text.size(), stdout);
}

Json jsonOf(const looks::Occurrences& found, const std::vector<LookPlace>& places) {
    Json list = Json::array();
    for (const std::size_t index : found.places) {
        const LookPlace& place = places[index];
        Json json = {{"file", place.stream}, {"offset", place.offset}, {"coding", place.coding}};
        if (!place.path.empty()) json["path"] = place.path;
        if (!place.clip.empty()) json["clip"] = place.clip;
        if (!place.effect.empty()) json["effect"] = place.effect;
        list.push_back(std::move(json));
    }
    return list;
}

Json jsonOf(const looks::ListedLook& look, const std::vector<LookPlace>& places) {
    Json json;
    if (look.kind == tw::LutKind::kLut) {
        json = {{"kind", "look"},
                {"name", look.name},
                {"match", look.id},
                {"points", look.size},
                {"values", {look.lowest, look.highest}}};
    } else if (look.kind == tw::LutKind::kPattern) {
        json = {{"kind", "pattern"}, {"points", look.probe}};
    } else {
        json = {{"kind", "none"}};
    }
    json["times"] = look.found.count;
    json["places"] = jsonOf(look.found, places);
    return json;
}

void printJson(const LookSearch& search) {
    Json json = {{"looks", Json::array()}, {"unreadable", Json::array()}};
    for (const looks::ListedLook& look : search.list.looks())
        json["looks"].push_back(jsonOf(look, search.places));
    for (const looks::UnreadableText& unreadable : search.list.unreadable()) {
        json["unreadable"].push_back({{"reason", unreadable.reason},
                                      {"times", unreadable.found.count},
                                      {"places", jsonOf(unreadable.found, search.places)}});
    }
    json["beyond"] = search.list.beyond();
    json["warnings"] = search.warnings;
    std::printf("%s\n", json.dump(2, ' ', false, Json::error_handler_t::replace).c_str());
}

}  // namespace

void runLooks(const LooksOptions& options) {
    std::optional<ExtractedLooks> folder;
    if (!options.extract.empty()) folder.emplace(options.extract);
    LookSearch search;
    search.list = looks::LookList([&folder](const tw::Lut3D& lut, const std::string& text) {
        if (folder && tw::kindOf(&lut) == tw::LutKind::kLut) folder->write(lut, text);
    });
    const std::optional<Failure> unread =
        readEach(options.files, [&search](const std::string& file) { searchLooks(file, search); });
    options.json ? printJson(search) : printTable(search);
    for (const std::string& warning : search.warnings)
        std::fprintf(stderr, "tintwell-host: %s\n", plain(warning).c_str());
    if (unread) throw Failure(*unread);
}

}  // namespace program
