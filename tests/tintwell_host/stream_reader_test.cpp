#include "tintwell_host/look_files/stream_reader.h"

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"
#include "tests/tintwell_host/packing.h"

namespace program_test {
namespace {

// What was visited, as text.
struct Record : program::StreamVisitor {
    std::string told;
    std::size_t count = 0;
    void begin(const std::string& name) override {
        told += "begin " + name.substr(name.rfind('/') + 1) + "\n";
    }
    void bytes(const char*, std::size_t some) override { count += some; }
    void end() override { told += "end\n"; }
    void warn(const std::string& sentence) override {
        told += sentence.substr(sentence.rfind('/') + 1) + "\n";
    }
};

class StreamReader : public testing::Test {
protected:
    Record read(const std::string& bytes, const program::StreamLimits& limits = {}) {
        twtest::writeFile(folder_ / "file", bytes);
        Record record;
        program::readStreams(folder_ / "file", record, limits);
        return record;
    }
    twtest::TempFolder folder_;
};

TEST_F(StreamReader, givesAPlainFileAsItIs) {
    for (const std::size_t size : {0u, 1u, 3u, 4u, 70000u}) {
        const Record record = read(std::string(size, 'x'));
        EXPECT_EQ(record.told, "begin file\nend\n");
        EXPECT_EQ(record.count, size);
    }
}

TEST_F(StreamReader, givesEachMemberOfAZip) {
    const Record record = read(zip({{"a", "1234"}, {"b", std::string(100000, 'x')}}));
    EXPECT_EQ(record.told, "begin a\nend\nbegin b\nend\n");
    EXPECT_EQ(record.count, 100004u);
}

// As zip files have it, with the mark for UTF-8.
TEST_F(StreamReader, tellsNamesInEveryLetter) {
    std::string bytes = zip({{"aaaa", "1234"}});
    for (std::size_t at = bytes.find("aaaa"); at != std::string::npos; at = bytes.find("aaaa", at))
        bytes.replace(at, 4, "\xC3\xB6\xC3\xA9");
    bytes[7] = static_cast<char>(bytes[7] | 0x08);
    EXPECT_EQ(read(bytes).told.substr(0, 11), "begin \xC3\xB6\xC3\xA9\n");
}

TEST_F(StreamReader, stopsABomb_andSaysSo) {
    const std::string bomb = gzip(std::string(10 << 20, '\0'));
    const Record record = read(bomb, {.depth = 4, .bytes = 1 << 20, .ratio = 10});
    EXPECT_EQ(record.told,
              "begin file\nend\nfile' unpacks to more than a project does; the rest is not looked "
              "into\n");
    EXPECT_LE(record.count, (1u << 20) + 10 * bomb.size());
    EXPECT_GT(record.count, 1u << 19);
}

TEST_F(StreamReader, countsWhatIsPackedTwice) {
    const std::string inner = gzip(std::string(10 << 20, '\0'));
    const Record record = read(gzip(inner), {.depth = 4, .bytes = 1 << 20, .ratio = 10});
    EXPECT_NE(record.told.find("unpacks to more"), std::string::npos) << record.told;
    EXPECT_LT(record.count, 2u << 20);
}

// Two members, the first of which is damaged.
std::string damagedZip() {
    std::string bytes = zip({{"a", lookText(1, 1, "A", 9)}, {"b", "good"}});
    bytes.replace(100, 100, 100, '\xFF');
    return bytes;
}

TEST_F(StreamReader, goesOnBehindADamagedMember_whoseLengthIsKnown) {
    std::string bytes = damagedZip();
    // Check, packed length and length, from behind the member to its front, and the mark for that.
    bytes.replace(14, 12, bytes, bytes.find("PK\x07\x08") + 4, 12);
    bytes[6] = static_cast<char>(bytes[6] & ~0x08);
    const Record record = read(bytes);
    EXPECT_NE(record.told.find("a' cannot be read further: "), std::string::npos) << record.told;
    EXPECT_TRUE(record.told.ends_with("begin b\nend\n")) << record.told;
}

TEST_F(StreamReader, tellsThatItEnds_atADamagedMemberOfUnknownLength) {
    const Record record = read(damagedZip());
    EXPECT_NE(record.told.find("a' cannot be read further: "), std::string::npos) << record.told;
    EXPECT_NE(record.told.find("\nfile' cannot be read further: "), std::string::npos)
        << record.told;
}

TEST_F(StreamReader, survivesFilesThatOnlyBeginLikePackedOnes) {
    EXPECT_EQ(read("\x1F\x8B").told, "begin file\nend\n");
    EXPECT_EQ(read("\x1F\x8B\x08garbage").count, 10u);
    for (const std::string& bytes :
         {std::string("PK\x03\x04"), "PK\x03\x04" + std::string(99, '\xFF')}) {
        EXPECT_NE(read(bytes).told.find("cannot be read further"), std::string::npos)
            << read(bytes).told;
    }
}

}  // namespace
}  // namespace program_test
