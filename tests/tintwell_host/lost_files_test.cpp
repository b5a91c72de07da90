// Files and folders of a full disk, or of a file server that goes away.
#include <gtest/gtest.h>

#include <cerrno>
#include <functional>

#include "tests/support/random.h"
#include "tests/support/temp_folder.h"
#include "tests/tintwell_host/failing_files.h"
#include "tests/tintwell_host/packing.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/home.h"
#include "tintwell_host/jobs/sequence.h"
#include "tintwell_host/look_files/extracted_looks.h"
#include "tintwell_host/look_files/look_search.h"

namespace program_test {
namespace {

using program::Exit;

class LostFiles : public testing::Test {
protected:
    void TearDown() override {
        failEntriesAfter(0, 0);
        failReadsAfter(0, 0);
        failMaking(0);
    }

    static void expectFailure(const std::function<void()>& run, const std::string& sentence,
                              Exit exit) {
        try {
            run();
            ADD_FAILURE() << "no failure, but: " << sentence;
        } catch (const program::Failure& failure) {
            EXPECT_EQ(failure.what(), sentence);
            EXPECT_EQ(failure.exit(), exit);
        }
    }

    twtest::TempFolder folder_;
};

TEST_F(LostFiles, areNoPartOfASequence_whenTheirFolderGoesAway) {
    for (const char* name : {"s.1.png", "s.2.png", "s.3.png"})
        twtest::writeFile(folder_ / name, "");
    const std::string pattern = folder_ / "s.%d.png";
    // The first two entries can be the folder itself and the one above.
    failEntriesAfter(3, ESTALE);
    expectFailure([&] { program::existingFrames(pattern); },
                  "cannot read the folder of '" + pattern + "': Stale file handle",
                  Exit::kTryAgain);
    failEntriesAfter(0, EIO);
    expectFailure([&] { program::existingFrames(pattern); },
                  "cannot read the folder of '" + pattern + "': Input/output error",
                  Exit::kTryAgain);
}

TEST_F(LostFiles, areNoSequence_whenTheirFolderIsNotThere) {
    const std::string pattern = folder_ / "none/s.%d.png";
    expectFailure([&] { program::existingFrames(pattern); },
                  "no file matches '" + pattern + "': No such file or directory",
                  Exit::kWrongInput);
}

// And not for damaged, which the rest of an archive may be.
TEST_F(LostFiles, areWorthAnotherTry_packedOnesToo) {
    std::string noise;
    twtest::Random random(1);
    while (noise.size() < 300000)
        noise += static_cast<char>(random.next());
    for (const std::string& bytes : {noise, gzip(noise), zip({{"a", gzip(noise)}})}) {
        twtest::writeFile(folder_ / "file", bytes);
        program::LookSearch search;
        failReadsAfter(2, ESTALE);
        expectFailure([&] { program::searchLooks(folder_ / "file", search); },
                      "cannot read '" + (folder_ / "file") + "': Stale file handle",
                      Exit::kTryAgain);
        failReadsAfter(0, 0);
        EXPECT_TRUE(search.warnings.empty());
    }
}

TEST_F(LostFiles, areWorthAnotherTry_whenFoldersCannotBeMade) {
    failMaking(ENOSPC);
    expectFailure([&] { program::enterHome(folder_ / "home"); },
                  "cannot make the home '" + (folder_ / "home") + "': No space left on device",
                  Exit::kTryAgain);
    expectFailure([&] { program::ExtractedLooks looks(folder_ / "looks"); },
                  "cannot make the folder '" + (folder_ / "looks") + "': No space left on device",
                  Exit::kTryAgain);
}

}  // namespace
}  // namespace program_test
