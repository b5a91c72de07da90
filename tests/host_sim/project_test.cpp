// Project files: whole ones are read back, others give one clear sentence.
#include "host_sim/values/project.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <iterator>
#include <string>

#include "host_sim/host.h"
#include "host_sim/values/error.h"
#include "session_script.h"
#include "tests/support/temp_folder.h"

namespace {

using host_sim::Host;
using host_sim::Instance;

class Project : public testing::Test {
protected:
    void writeFile(const std::string& bytes) const { twtest::writeFile(file_, bytes); }
    std::string readFile() const { return twtest::readFile(file_); }
    void writeExample() const {
        host_sim::writeProject(file_,
                               {"TEST Rogue",
                                {{2, PF_Param_FLOAT_SLIDER, "Amount", 12.5, {}},
                                 {4, PF_Param_ARBITRARY_DATA, "Text", 0.0, {{'a', 0, 'b'}}}}});
    }
    // What reading the file says, after the file's name.
    std::string complaint() const {
        try {
            host_sim::readProject(file_);
        } catch (const host_sim::ProjectError& error) {
            const std::string start = "The project file " + file_.string() + " ";
            const std::string text = error.what();
            return text.compare(0, start.size(), start) == 0 ? text.substr(start.size()) : text;
        }
        return "";
    }

    const twtest::TempFolder folder_;
    const std::filesystem::path file_ = folder_ / "saved.project";
};

TEST_F(Project, comesBackWhole) {
    writeExample();
    const host_sim::SavedEffect effect = host_sim::readProject(file_);
    EXPECT_EQ(effect.matchName, "TEST Rogue");
    ASSERT_EQ(effect.params.size(), 2U);
    EXPECT_EQ(effect.params[0].id, 2);
    EXPECT_EQ(effect.params[0].number, 12.5);
    EXPECT_EQ(effect.params[0].flat, std::nullopt);
    EXPECT_EQ(effect.params[1].type, PF_Param_ARBITRARY_DATA);
    EXPECT_EQ(effect.params[1].name, "Text");
    EXPECT_EQ(effect.params[1].flat, std::vector<std::uint8_t>({'a', 0, 'b'}));
}

TEST_F(Project, leavesNoTemporaryFile) {
    writeExample();
    const auto files = std::filesystem::directory_iterator(folder_.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(Project, isRefused_whenMissing) {
    EXPECT_EQ(complaint(), "cannot be read.");
}

TEST_F(Project, isRefused_whenEmpty) {
    writeFile("");
    EXPECT_EQ(complaint(), "ends too early.");
}

TEST_F(Project, isRefused_whenCutOffAnywhere) {
    writeExample();
    const std::string whole = readFile();
    for (std::size_t length = 1; length < whole.size(); ++length) {
        writeFile(whole.substr(0, length));
        EXPECT_EQ(complaint(), "ends too early.") << length;
    }
}

TEST_F(Project, isRefused_whenAnyByteChanges) {
    writeExample();
    const std::string whole = readFile();
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string damaged = whole;
        damaged[i] = static_cast<char>(damaged[i] ^ 1);
        writeFile(damaged);
        EXPECT_NE(complaint(), "") << i;
    }
}

TEST_F(Project, isRefused_whenItIsSomethingElse) {
    writeFile("# a text file\n");
    EXPECT_EQ(complaint(), "is no project of this host.");
    writeFile("\xA1\x61x\x01");
    EXPECT_EQ(complaint(), "is no project of this host.");
    writeFile("\x01");
    EXPECT_EQ(complaint(), "is no project of this host.");
}

TEST_F(Project, cannotBeWritten_intoAMissingFolder) {
    EXPECT_THROW(host_sim::writeProject(folder_ / "none/file", {}), host_sim::ProjectError);
}

// The disk is full: the new file must go, and the old project must stay.
TEST_F(Project, leavesTheOldOne_whenTheDiskIsFull) {
    writeExample();
    const std::string before = readFile();
    std::filesystem::create_symlink("/dev/full", file_.string() + ".tmp");
    EXPECT_THROW(writeExample(), host_sim::ProjectError);
    EXPECT_EQ(readFile(), before);
    const auto files = std::filesystem::directory_iterator(folder_.path());
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(Project, carriesAnInstanceOver) {
    {
        Host host(TEST_MODULE, host_sim::premierePro());
        host.start();
        Instance& effect = host.apply();
        effect.setSlider(kAmount, 37.25);
        effect.scan(kText, "kept");
        host.save(effect, file_);
    }
    Host host(TEST_MODULE, host_sim::afterEffects());
    host.start();
    Instance& effect = host.load(file_);
    EXPECT_EQ(effect.slider(kAmount), 37.25);
    EXPECT_EQ(effect.print(kText).value, "kept");
    EXPECT_EQ(host.close(), std::vector<std::string>());
}

TEST_F(Project, restoresANullValue) {
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.apply();
    effect.setNull(kText);
    host.save(effect, file_);
    EXPECT_EQ(host.load(file_).arbitrary(kText), nullptr);
}

TEST_F(Project, isRefused_whenItBelongsToAnotherEffect) {
    host_sim::writeProject(file_, {"TEST Other", {}});
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    EXPECT_THROW(host.load(file_), host_sim::ProjectError);
}

TEST_F(Project, passesOverUnknownParameters) {
    host_sim::writeProject(file_, {"TEST Rogue",
                                   {{99, PF_Param_FLOAT_SLIDER, "Gone", 1.0, {}},
                                    {2, PF_Param_ARBITRARY_DATA, "Amount", 0.0, {}}}});
    Host host(TEST_MODULE, host_sim::premierePro());
    host.start();
    Instance& effect = host.load(file_);
    EXPECT_EQ(effect.slider(kAmount), 100.0);
    EXPECT_EQ(effect.print(kText).value, "none");
}

}  // namespace
