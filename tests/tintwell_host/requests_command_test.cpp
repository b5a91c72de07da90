// The command requests: what lies there, and what comes.
#include <nlohmann/json.hpp>

#include "effect/edit_request_line.h"
#include "tests/tintwell_host/program_fixture.h"

namespace program_test {
namespace {

constexpr std::int64_t kTime = 1732100000123;

class RequestsCommand : public Program {
protected:
    void SetUp() override { std::filesystem::create_directories(folder_ / kFolder); }

    void writeRequest(const std::string& contents) const {
        twtest::writeFile(file(kFile), contents);
    }
    std::string path() const { return file(kFile); }
    std::string once(const std::string& options = "") {
        return runWell(here_ + "requests --once " + options);
    }

    const std::string here_ = "--home '" + folder_.path() + "' ";
    static constexpr char kFolder[] = "Library/Application Support/Tintwell";
    static constexpr char kFile[] = "Library/Application Support/Tintwell/edit-request.json";
};

TEST_F(RequestsCommand, tellsMatchNameAndTime) {
    writeRequest(tw_effect::editRequestLine(42, "Dusk", kTime));
    EXPECT_EQ(once(), "match 42 \"Dusk\", asked for at 2024-11-20 10:53:20 UTC\n");
}

TEST_F(RequestsCommand, keepsControlCharactersFromTheTerminal) {
    writeRequest(tw_effect::editRequestLine(42, "a\nb\x1B[2J\"", kTime));
    EXPECT_EQ(once(), "match 42 \"a\\x0Ab\\x1B[2J\"\", asked for at 2024-11-20 10:53:20 UTC\n");
}

TEST_F(RequestsCommand, tellsTheIdOfACutRequest) {
    writeRequest(tw_effect::editRequestLine(42, std::string(399, '"'), kTime));
    EXPECT_EQ(once(), "match 42, the rest of the request was cut\n");
    const auto json = nlohmann::json::parse(once("--json"));
    EXPECT_EQ(json, nlohmann::json({{"id", 42}, {"name", nullptr}, {"at", nullptr}}));
}

TEST_F(RequestsCommand, speaksJson) {
    writeRequest(tw_effect::editRequestLine(42, "a\n\"b\"", kTime));
    const auto json = nlohmann::json::parse(once("--json"));
    EXPECT_EQ(json, nlohmann::json({{"id", 42}, {"name", "a\n\"b\""}, {"at", kTime}}));
}

TEST_F(RequestsCommand, speaksJsonOfNamesThatAreNotUtf8) {
    writeRequest(tw_effect::editRequestLine(42, "a\xFF", kTime));
    EXPECT_EQ(nlohmann::json::parse(once("--json"))["name"], "a\uFFFD");
}

TEST_F(RequestsCommand, saysSo_whenThereIsNone) {
    runWrong(here_ + "requests --once", "there is no edit request in '" + path() + "'");
}

TEST_F(RequestsCommand, saysSo_whenItIsNotWhole) {
    writeRequest("{\"id\":42,\"name\":\"Du");
    runWrong(here_ + "requests --once",
             "the edit request in '" + path() + "' is not written to its end");
}

TEST_F(RequestsCommand, saysSo_whenItIsSomethingElse) {
    writeRequest("hello\n");
    runWrong(here_ + "requests --once", "'" + path() + "' holds no edit request");
}

TEST_F(RequestsCommand, doesNotWaitForAPipe) {
    runWrong(here_ + "requests --once", "there is no edit request in '" + path() + "'",
             "mkfifo '" + path() + "' && ");
}

// Shell: the watching program's output comes to have so many lines, or it ends in failure.
std::string waitFor(int lines) {
    return "for i in $(seq 200); do [ $(wc -l <lines) -lt " + std::to_string(lines) +
           " ] || break; sleep 0.05; done; ";
}

TEST_F(RequestsCommand, watches_untilItIsInterrupted) {
    const auto write = [this](const std::string& name, const std::string& line) {
        twtest::writeFile(file(name), line);
        return "cp " + name + " '" + path() + "'; ";
    };
    const std::string line = tw_effect::editRequestLine(1, "one", kTime);
    const std::string script =
        write("first", line) + ": >lines; '" TINTWELL_HOST "' " + here_ +
        "requests >>lines 2>complaints & " + "watcher=$!; " + waitFor(1) + write("same", line) +
        write("part", "{\"id\":2,\"name\":\"t") + write("foreign", "x\n") +
        write("second", tw_effect::editRequestLine(2, "two", kTime)) + waitFor(2) +
        write("again", tw_effect::editRequestLine(2, "two", kTime + 1000)) + waitFor(3) +
        "kill $watcher; wait $watcher; true; ";
    ASSERT_EQ(std::system(("cd '" + folder_.path() + "' && " + script).c_str()), 0);
    EXPECT_EQ(twtest::readFile(file("lines")),
              "match 1 \"one\", asked for at 2024-11-20 10:53:20 UTC\n"
              "match 2 \"two\", asked for at 2024-11-20 10:53:20 UTC\n"
              "match 2 \"two\", asked for at 2024-11-20 10:53:21 UTC\n");
}

}  // namespace
}  // namespace program_test
