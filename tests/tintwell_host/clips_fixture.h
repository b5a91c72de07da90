// Clips that FFmpeg's own program makes and judges.
#pragma once

#include <nlohmann/json.hpp>

#include "tests/tintwell_host/program_fixture.h"

namespace program_test {

// Bars that move, in RGB.
inline constexpr char kBars[] = "-f lavfi -i testsrc2=size=96x64:rate=25:duration=0.4 ";
inline constexpr char kTone[] = "-f lavfi -i sine=frequency=440:duration=0.4 ";
inline constexpr char kFfv1[] = "-c:v ffv1 -level 3 -slicecrc 1 -g 1 -pix_fmt bgr0 ";
inline constexpr char kTagged[] = "-colorspace bt709 -color_primaries bt709 -color_trc bt709 ";

class Clips : public Program {
protected:
    void SetUp() override { writeNegative("negative.cube"); }

    std::string shell(const std::string& command) {
        const std::string out = outputs_ / "shell";
        const std::string all = "cd '" + folder_.path() + "' && " + command + " >'" + out + "'";
        EXPECT_EQ(std::system(all.c_str()), 0) << command;
        return twtest::readFile(out);
    }
    void make(const std::string& arguments) { shell("ffmpeg -v error -y " + arguments); }

    // Time and duration of each packet of the video, and what else ffprobe says about it.
    std::string probe(const std::string& clip, const std::string& entries) {
        return shell("ffprobe -v error -select_streams v:0 -show_entries " + entries +
                     " -of csv=p=0 " + clip + " | grep -v '^$'");
    }
    std::string soundOf(const std::string& clip) {
        return shell("ffmpeg -v error -i " + clip + " -map 0:a -c copy -f md5 -");
    }
    std::string pixelsOf(const std::string& clip) {
        return shell("ffmpeg -v error -i " + clip + " -map 0:v -pix_fmt gbrp -f framemd5 - | " +
                     "grep -v '^#' | cut -d, -f6");
    }

    int partials() const {
        int count = 0;
        for (const std::string& each : files())
            count += each.starts_with(".partial-") ? 1 : 0;
        return count;
    }

    nlohmann::json report() const {
        return nlohmann::json::parse(twtest::readFile(file("job.json")));
    }

    // Renders, and sends SIGTERM when so many frames are ready.
    Outcome stopAfter(int frames, const std::string& job) {
        return run("render " + job + " --progress lines",
                   "rm -f lines; mkfifo lines; (head -n " + std::to_string(frames) +
                       " >/dev/null; kill -TERM $$; cat >/dev/null) <lines & exec >lines; exec");
    }

    // The status says whether the clip is there.
    void expectHonest(const Outcome& outcome, const std::string& clip) {
        EXPECT_EQ(outcome.exitCode, exists(clip) ? 0 : 143) << outcome.err;
        EXPECT_EQ(partials(), 0);
        std::filesystem::remove(file(clip));
    }

    // A clip of ten frames, with damage in the middle.
    void makeDamaged(const std::string& clip) {
        make(std::string(kBars) + kFfv1 + clip);
        std::string contents = twtest::readFile(file(clip));
        char& one = contents[contents.size() / 2];
        one = static_cast<char>(one ^ 0x55);
        twtest::writeFile(file(clip), contents);
    }

    // A clip that is larger than what is read when it is opened.
    void makeForServer() {
        make("-f lavfi -i testsrc2=size=640x360:rate=25:duration=2 " + std::string(kFfv1) +
             "-movflags faststart server.mov");
    }

private:
    twtest::TempFolder outputs_;
};

}  // namespace program_test
