// `tintwell-host render` on clips that FFmpeg's own program makes and judges.
#include "tests/tintwell_host/clips_fixture.h"

namespace program_test {
namespace {

TEST_F(Clips, gradeAsTheirFramesDo_withoutLoss) {
    make(std::string(kBars) + "-c:v ffv1 -pix_fmt bgr0 in.mkv");
    make("-i in.mkv s.%04d.png");
    runWell("render s.%04d.png graded.%04d.png --lut negative.cube");
    runWell("render in.mkv out.mkv --lut negative.cube");
    runWell("render in.mkv frame.%04d.png --lut negative.cube");
    EXPECT_EQ(pixelsOf("out.mkv"), pixelsOf("graded.%04d.png"));
    for (const char* number : {"0001", "0005", "0010"}) {
        EXPECT_EQ(bytes(std::string("frame.") + number + ".png"),
                  bytes(std::string("graded.") + number + ".png"));
    }
    runWell("render s.%04d.png back.mkv --lut negative.cube --rate 25");
    EXPECT_EQ(pixelsOf("back.mkv"), pixelsOf("out.mkv"));
}

TEST_F(Clips, gradeSixteenBits_withoutLoss) {
    make(std::string(kBars) + "-c:v ffv1 -pix_fmt gbrp16 in.mkv");
    runWell("render in.mkv out.mkv");
    const std::string hash = " -map 0:v -pix_fmt gbrp16 -f md5 -";
    EXPECT_EQ(shell("ffmpeg -v error -i in.mkv" + hash),
              shell("ffmpeg -v error -i out.mkv" + hash));
}

TEST_F(Clips, areTheSameBytes_howeverManyFramesAtOnce) {
    make(std::string(kBars) + kTone + kTagged + "-c:v libx264 -c:a aac -pix_fmt yuv420p in.mov");
    runWell("render in.mov a.mov --lut negative.cube --threads 1");
    runWell("render in.mov b.mov --lut negative.cube --threads 4", "sleep 1.1;");
    EXPECT_TRUE(twtest::readFile(file("a.mov")) == twtest::readFile(file("b.mov")));
}

TEST_F(Clips, keepSoundTimecodeTagsAspectAndRotation) {
    make(std::string(kBars) + kTone + kTagged +
         "-c:v libx264 -pix_fmt yuv420p -vf setsar=4/3 -c:a aac -metadata title=Hello "
         "-timecode 01:02:03:04 plain.mov");
    make("-i plain.mov -c copy -metadata:s:v:0 rotate=90 in.mov");
    runWell("render in.mov out.mov --lut negative.cube");
    EXPECT_EQ(soundOf("out.mov"), soundOf("in.mov"));
    const std::string entries =
        "stream=width,height,sample_aspect_ratio,color_space,color_primaries,color_transfer,"
        "color_range,avg_frame_rate,nb_frames:stream_tags=timecode:format_tags=title:"
        "side_data=rotation";
    EXPECT_EQ(probe("out.mov", entries), probe("in.mov", entries));
    EXPECT_NE(probe("out.mov", entries).find("01:02:03:04"), std::string::npos);
    EXPECT_NE(probe("out.mov", entries).find("Hello"), std::string::npos);
    EXPECT_NE(probe("out.mov", entries).find("90"), std::string::npos);
}

TEST_F(Clips, keepVariableRates) {
    make(std::string(kBars) +
         "-vf 'setpts=if(lt(N\\,4)\\,N\\,N*3)/25/TB' -vsync vfr -c:v prores_ks in.mov");
    runWell("render in.mov out.mov --lut negative.cube");
    const std::string times = probe("in.mov", "packet=pts_time,duration_time");
    EXPECT_EQ(probe("out.mov", "packet=pts_time,duration_time"), times);
    EXPECT_NE(times.find("0.360000"), std::string::npos) << times;
}

TEST_F(Clips, areReadByTheirTags) {
    const std::string red = "-f lavfi -i color=red:size=64x64:rate=5:duration=0.2 ";
    const auto expectRed = [&](const std::string& clip) {
        runWell("render " + clip + " red.%04d.png --frames 1 --depth 8");
        const std::vector<std::uint8_t> pixels = bytes("red.0001.png");
        EXPECT_GE(pixels[0], 252) << clip;
        EXPECT_LE(pixels[1], 3) << clip;
        EXPECT_LE(pixels[2], 3) << clip;
    };
    for (const std::string matrix : {"bt709", "smpte170m"}) {
        for (const std::string range : {"tv", "pc"}) {
            const std::string clip = matrix + range + ".mkv";
            make(red + "-vf scale=out_color_matrix=" + matrix + ":out_range=" + range +
                 ",format=yuv444p -colorspace " + matrix + " -color_range " + range +
                 " -c:v ffv1 " + clip);
            expectRed(clip);
        }
    }
    make(red + "-vf scale=out_color_matrix=smpte170m,format=yuv444p -c:v ffv1 small.mkv");
    expectRed("small.mkv");
    EXPECT_EQ(run("render small.mkv red.%04d.png --frames 1").err,
              "tintwell-host: 'small.mkv' does not say its colour matrix: smpte170m is taken\n");
}

TEST_F(Clips, takeAlphaToWhereThereIsRoom) {
    make("-f lavfi -i color=red@0.5:size=64x64:rate=5:duration=0.4,format=rgba -c:v png in.mov");
    runWell("render in.mov out.mov");
    EXPECT_EQ(probe("out.mov", "stream=codec_name,pix_fmt"), "prores,yuva444p12le\n");
    runWell("render out.mov a.%04d.png --depth 8 --frames 1");
    EXPECT_NEAR(bytes("a.0001.png")[3], 127, 2);
    runWrong(
        "render in.mov out.mp4",
        "the codec h264 holds no alpha, and the frames have it: use --codec prores4444 or ffv1", "",
        2);
    EXPECT_FALSE(exists("out.mp4"));
}

class ClipCodec : public Clips, public testing::WithParamInterface<std::vector<const char*>> {};

// Codec, container and what ffprobe calls it; a grey card comes back as grey.
TEST_P(ClipCodec, comesBack) {
    const std::string codec = GetParam()[0];
    const std::string clip = std::string("out.") + GetParam()[1];
    make("-f lavfi -i color=gray:size=256x128:rate=25:duration=0.2 s.%04d.png");
    runWell("render s.%04d.png " + clip + " --rate 25 --codec " + codec);
    EXPECT_EQ(probe(clip, "stream=codec_name,avg_frame_rate"),
              std::string(GetParam()[2]) + ",25/1\n");
    runWell("render " + clip + " back.%04d.png --depth 8 --frames 5");
    EXPECT_NEAR(bytes("back.0005.png")[0], bytes("s.0005.png")[0], 2);
}

INSTANTIATE_TEST_SUITE_P(All, ClipCodec,
                         testing::Values(std::vector<const char*>{"prores", "mov", "prores"},
                                         std::vector<const char*>{"prores4444", "mkv", "prores"},
                                         std::vector<const char*>{"dnxhr", "mxf", "dnxhd"},
                                         std::vector<const char*>{"dnxhr", "mov", "dnxhd"},
                                         std::vector<const char*>{"h264", "mp4", "h264"},
                                         std::vector<const char*>{"ffv1", "avi", "ffv1"}),
                         [](const auto& row) {
                             return std::string(row.param[0]) + "_" + row.param[1];
                         });

TEST_F(Clips, refuseWithTheReason) {
    make(std::string(kTone) + "-c:a aac sound.mov");
    make(std::string(kBars) + kTone + kTagged + "-vf scale=256:144 -c:v libx264 -c:a aac in.mov");
    make(std::string(kBars) + kTagged + "-c:v libx264 small.mov");
    writeInput("odd.0001.png", 7, 5);
    twtest::writeFile(file("text.mov"), "no clip");
    runWrong("render text.mov out.mov",
             "cannot read 'text.mov': Invalid data found when processing input");
    runWrong("render none.mov out.mov", "cannot read 'none.mov': No such file or directory");
    runWrong("render sound.mov out.mov", "cannot read 'sound.mov': it has no video");
    runWrong(
        "render in.mov out.mxf",
        "'out.mxf' cannot hold the sound, which is aac: use mov, mp4, mkv, avi, or --no-audio");
    runWrong("render in.mov out.avi --codec dnxhr", "'out.avi' cannot hold dnxhr: use mov, mxf", "",
             2);
    runWrong("render odd.%04d.png out.mp4",
             "cannot write 'out.mp4': h264 needs an even size, and the frames have 7 x 5");
    runWrong("render small.mov out.mxf",
             "cannot write 'out.mxf': dnxhr does not take frames of 96 x 64: Invalid argument");
    runWrong("render in.mov out.mov --skip-existing",
             "--skip-existing needs sequences, and 'in.mov' is one file", "", 2);
    runWrong("render in.mov nowhere/out.mov",
             "cannot write 'nowhere/out.mov': No such file or directory");
    for (const char* name : {"out.mov", "out.mxf", "out.avi", "out.mp4"})
        EXPECT_FALSE(exists(name)) << name;
    EXPECT_EQ(partials(), 0);
    EXPECT_EQ(run("render in.mov out.mxf --no-audio").exitCode, 0);
}

TEST_F(Clips, refuseOptionsThatWouldDoNothing) {
    make(std::string(kBars) + kFfv1 + "in.mkv");
    writeInput("s.0001.png");
    const auto refused = [this](const std::string& arguments, const std::string& sentence) {
        runWrong("render " + arguments, sentence, "", 2);
    };
    refused("in.mkv out.mkv --rate 25", "--rate is for clips that are made of a sequence");
    refused("in.mkv o.%04d.png --rate 25", "--rate is for clips that are made of a sequence");
    refused("in.mkv o.%04d.png --codec ffv1", "--codec is for clips that are written");
    refused("in.mkv o.%04d.png --no-audio", "--no-audio is for clips that are made of a clip");
    refused("s.%04d.png out.mkv --no-audio", "--no-audio is for clips that are made of a clip");
    refused("s.%04d.png out.mkv --strict", "--strict is for clips that are read");
    refused("in.mkv o.%04d.png --skip-existing",
            "--skip-existing needs sequences, and 'in.mkv' is one file");
}

TEST_F(Clips, nameDamagedFrames_andMakeThemAnErrorIfAsked) {
    makeDamaged("in.mkv");
    const Outcome outcome = run("render in.mkv out.mkv");
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_NE(outcome.err.find("1 frames of 'in.mkv' are damaged: "), std::string::npos)
        << outcome.err;
    std::filesystem::remove(file("out.mkv"));
    EXPECT_EQ(run("render in.mkv out.mkv --strict").exitCode, 1);
    EXPECT_FALSE(exists("out.mkv"));
    EXPECT_EQ(partials(), 0);
}

TEST_F(Clips, trimByFrames) {
    make(std::string(kBars) + "-c:v ffv1 -pix_fmt bgr0 in.mkv");
    runWell("render in.mkv out.mkv --frames 3-5");
    EXPECT_EQ(pixelsOf("out.mkv"),
              shell("ffmpeg -v error -i in.mkv -vf trim=start_frame=2:end_frame"
                    "=5 -pix_fmt gbrp -f framemd5 - | grep -v '^#' | cut -d, "
                    "-f6"));
}

TEST_F(Clips, mayHaveAnyName) {
    make(std::string(kBars) + kFfv1 + "in.mkv");
    std::filesystem::rename(file("in.mkv"), file("2026-01-01T10:00:00.mkv"));
    std::filesystem::create_directory(file("out:1"));
    runWell("render 2026-01-01T10:00:00.mkv out:1/2026-01-01T10:00:00.mkv");
    EXPECT_TRUE(exists("out:1/2026-01-01T10:00:00.mkv"));
}

}  // namespace
}  // namespace program_test
