// tintwell-host: runs the effect in a simulated host, from the command line.
#include <CLI/CLI.hpp>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>

#include "platform/mac/application.h"
#include "tintwell_host/files/failure.h"
#include "tintwell_host/home.h"
#include "tintwell_host/look_commands.h"
#include "tintwell_host/subcommands.h"

namespace {

using namespace program;

struct Options {
    std::string home;
    EffectOptions effect;
    RenderOptions render;
    PressOptions press;
    PatternOptions pattern;
    MeasureOptions measure;
    RequestsOptions requests;
    std::string inspectFile;
    std::string encodeCube;
    std::string decodeText;
    std::string decodeCube;
    std::string compareA;
    std::string compareB;
    double compareWithin = 0.0;
};

void addHost(CLI::App& command, Options& options) {
    command
        .add_option("--host", options.effect.host,
                    "Host to simulate: ae (After Effects) or premiere (Premiere Pro)")
        ->check(CLI::IsMember({"ae", "premiere"}))
        ->capture_default_str();
}

void addJob(CLI::App& command, RenderOptions& render) {
    command.add_option("--compression", render.compression,
                       "PNG: level 0 to 9; JPEG: quality 1 to 100; EXR and TIFF: a method");
    command.add_flag("--skip-existing", render.skipExisting,
                     "Leave files that are whole and were made from the same");
    command.add_option("--threads", render.threads, "Frames in flight; as many as processors")
        ->check(CLI::Range(1, 1024));
    command
        .add_option("--memory", render.memory,
                    "MiB for the frames in flight; a quarter of the machine's")
        ->check(CLI::Range(1, 1 << 24));
    command.add_option("--progress", render.progress, "bar, or lines: one line of JSON a frame")
        ->check(CLI::IsMember({"bar", "lines"}))
        ->capture_default_str();
    command.add_option("--report", render.report,
                       "JSON file about all frames, to write at the end");
}

void addClips(CLI::App& command, RenderOptions& render) {
    command.add_option("--codec", render.codec, "Of a clip: prores, prores4444, dnxhr, h264, ffv1")
        ->check(CLI::IsMember({"prores", "prores4444", "dnxhr", "h264", "ffv1"}));
    command.add_option("--rate", render.rate, "Frames a second of a clip made of a sequence; 24")
        ->check(CLI::Range(0.1, 1000.0));
    command.add_flag("--no-audio", render.noAudio, "Leave a clip's sound out");
    command.add_flag("--strict", render.strict, "A clip's damaged or missing frames are an error");
}

void addRender(CLI::App& app, Options& options) {
    RenderOptions& render = options.render;
    CLI::App* command =
        app.add_subcommand("render", "Grade a picture, a sequence of pictures or a clip");
    command->add_option("in", render.in, "Picture, sequence (in.%04d.exr) or clip (in.mov)")
        ->required();
    command->add_option("out", render.out, "Picture, sequence or clip to write")->required();
    CLI::Option* lut = command->add_option("--lut", render.lut, "Look: a .cube file");
    CLI::Option* text = command->add_option("--text", render.text, "Look: a file of TWLUT text");
    command->add_option("--project", options.effect.project, "Look and Amount of a saved project")
        ->excludes(lut, text);
    lut->excludes(text);
    command->add_option("--amount", render.amount, "How much of the look, 0 to 100 percent")
        ->check(CLI::Range(0.0, 100.0));
    command->add_option("--depth", render.depth, "8 or float; by default what the input file has")
        ->check(CLI::IsMember({"8", "float"}));
    command->add_flag("--gpu", options.effect.gpu, "Render through the GPU filter, in float");
    command->add_option("--save", render.save, "Project file to write afterwards");
    command->add_option("--frames", render.frames,
                        "Frames of a sequence: 1-100, 1-100x2, 1-10,20-30; all by default");
    addJob(*command, render);
    addClips(*command, render);
    addHost(*command, options);
    command->callback([&options] {
        options.render.effect = options.effect;
        enterHome(options.home);
        runRender(options.render);
    });
}

void addPress(CLI::App& app, Options& options) {
    PressOptions& press = options.press;
    CLI::App* command =
        app.add_subcommand("press", "Press a button of the effect, as a user would");
    command
        ->add_option("button", press.button,
                     "lut: choose a .cube file; edit: open the match in the panel")
        ->required()
        ->check(CLI::IsMember({"lut", "edit"}));
    command->add_option("--project", options.effect.project, "Saved project to start from");
    command->add_option("--save", press.save, "Project file to write afterwards");
    addHost(*command, options);
    command->callback([&options] {
        options.press.effect = options.effect;
        enterHome(options.home);
        if (!tw_mac::BecomeApplication()) throw Failure("there is no display to show dialogs on");
        runPress(options.press);
    });
}

void addPattern(CLI::App& app, Options& options) {
    PatternOptions& pattern = options.pattern;
    CLI::App* command = app.add_subcommand("pattern", "Draw the calibration pattern");
    command->add_option("--size", pattern.size, "Steps per channel, 2 to 64")->required();
    command->add_option("--frame", pattern.frame, "Frame size, such as 1920x1080")->required();
    command->add_option("--depth", pattern.depth, "8 or float")
        ->check(CLI::IsMember({"8", "float"}))
        ->capture_default_str();
    command->add_option("out", pattern.out, "Picture to write")->required();
    addHost(*command, options);
    command->callback([&options] {
        options.pattern.effect = options.effect;
        enterHome(options.home);
        runPattern(options.pattern);
    });
}

void addMeasure(CLI::App& app, Options& options) {
    MeasureOptions& measure = options.measure;
    CLI::App* command = app.add_subcommand("measure", "Make a look of a graded pattern");
    command->add_option("picture", measure.picture, "The calibration pattern after the grade")
        ->required();
    command->add_option("--size", measure.size, "Steps per channel of the pattern, 2 to 64")
        ->required()
        ->check(CLI::Range(2, 64));
    command->add_option("--frame", measure.frame,
                        "Frame size in which it was drawn, if it was scaled unevenly since");
    command->add_option("--id", measure.id, "Match that Edit LUT shall open; 0 for none")
        ->check(CLI::NonNegativeNumber);
    command->add_option("--name", measure.name, "Name of the look");
    command->add_option("-o,--out", measure.out, "Look to write: a .cube or a .twlut file");
    command->add_option("--project", options.effect.project,
                        "Saved project to send the look into, as a panel does");
    command->add_flag("--json", measure.json, "Report as JSON, with the noise of every patch");
    command->footer(
        "Draw the pattern, grade it with any program that changes each colour by itself, measure "
        "it:\n"
        "  tintwell-host pattern --size 33 --frame 1920x1080 pattern.png\n"
        "  ffmpeg -i pattern.png -vf curves=preset=vintage graded.png\n"
        "  tintwell-host measure graded.png --size 33 --name Vintage -o vintage.cube\n"
        "The pattern must fill the picture; the picture may be scaled and compressed.");
    addHost(*command, options);
    command->callback([&options] {
        options.measure.effect = options.effect;
        enterHome(options.home);
        runMeasure(options.measure);
    });
}

void addRequests(CLI::App& app, Options& options) {
    RequestsOptions& requests = options.requests;
    CLI::App* command =
        app.add_subcommand("requests", "Show the requests of the Edit LUT button as they come");
    command->add_flag("--once", requests.once, "Show the one that lies there, and end");
    command->add_flag("--json", requests.json, "A line of JSON for each");
    command->footer(
        "Stands in for the panel: it watches edit-request.json in the effect's data folder until "
        "it\n"
        "is interrupted. --home names the folder in which the effect was run, if it was another "
        "one.");
    command->callback([&options] {
        enterHome(options.home);
        runRequests(options.requests);
    });
}

void addInspect(CLI::App& app, Options& options) {
    CLI::App* command =
        app.add_subcommand("inspect", "Show how the effect registers and what a look holds");
    command->add_option("file", options.inspectFile, "A .cube file, a TWLUT text or a project")
        ->required();
    addHost(*command, options);
    command->callback([&options] {
        enterHome(options.home);
        runInspect(options.effect, options.inspectFile);
    });
}

void addTexts(CLI::App& app, Options& options) {
    CLI::App* encode = app.add_subcommand("encode", "Print a .cube file as TWLUT text");
    encode->add_option("cube", options.encodeCube, "A .cube file with a 0..1 domain")->required();
    encode->callback([&options] { runEncode(options.encodeCube); });

    CLI::App* decode = app.add_subcommand("decode", "Write a TWLUT text as a .cube file");
    decode->add_option("text", options.decodeText, "A file of TWLUT text; - for standard input")
        ->required();
    decode->add_option("cube", options.decodeCube, "The .cube file to write")->required();
    decode->callback([&options] { runDecode(options.decodeText, options.decodeCube); });

    CLI::App* log = app.add_subcommand("log", "Show the effect's log");
    log->callback([&options] {
        enterHome(options.home);
        runLog();
    });
}

void addCompare(CLI::App& app, Options& options) {
    CLI::App* compare = app.add_subcommand("compare", "Tell how far two pictures are apart");
    compare->add_option("a", options.compareA, "A picture")->required();
    compare->add_option("b", options.compareB, "Another of the same size")->required();
    compare
        ->add_option("--within", options.compareWithin,
                     "How far a value may be apart for success; 0 is black, 1 is white")
        ->check(CLI::NonNegativeNumber)
        ->capture_default_str();
    compare->callback(
        [&options] { runCompare(options.compareA, options.compareB, options.compareWithin); });
}

// What was printed must have arrived: a script may be keeping it.
void finishOutput() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
        throw Failure(std::string("cannot write to the standard output: ") + std::strerror(errno),
                      exitFor(errno));
    }
}

}  // namespace

int main(int argc, char** argv) {
    Options options;
    CLI::App app("Runs the Tintwell effect in a simulated After Effects or Premiere Pro");
    app.name("tintwell-host");
    app.require_subcommand(1);
    app.fallthrough();
    app.add_option("--home", options.home, "Folder that the effect takes for the user's home");
    app.add_option("--module", options.effect.module,
                   "The effect's module, if not beside this program");
    addRender(app, options);
    addPress(app, options);
    addPattern(app, options);
    addMeasure(app, options);
    addRequests(app, options);
    addInspect(app, options);
    addTexts(app, options);
    addCompare(app, options);
    addLookCommands(app);
    try {
        app.parse(argc, argv);
        finishOutput();
        return 0;
    } catch (const CLI::ParseError& wrong) {
        return app.exit(wrong) == 0 ? 0 : static_cast<int>(Exit::kWrongUsage);
    } catch (const std::bad_alloc&) {
        std::fputs("tintwell-host: there is not enough memory\n", stderr);
        return static_cast<int>(Exit::kTryAgain);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "tintwell-host: %s\n", failure.what());
        return static_cast<int>(failure.exit());
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "tintwell-host: %s\n", failure.what());
        return 1;
    }
}
