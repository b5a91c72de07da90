// How the commands on looks are asked for.
#include <CLI/CLI.hpp>

#include <memory>

#include "tintwell_host/look_commands.h"

namespace program {
namespace {

void addLooks(CLI::App& app) {
    const auto options = std::make_shared<LooksOptions>();
    CLI::App* command =
        app.add_subcommand("looks", "List the looks in projects, presets or any other files");
    command->footer(
        "Finds every look in 8 or 16 bits, in base64, and within gzip and zip: saved projects of\n"
        "After Effects and Premiere Pro, presets, backups.\n\n"
        "  tintwell-host looks promo.prproj\n"
        "  tintwell-host looks *.aep --extract looks     # each look once, as .cube and text\n"
        "  tintwell-host show looks/Dusk.cube -o dusk.svg");
    command->add_option("files", options->files, "Files to look through; - is standard input")
        ->required();
    command->add_flag("--json", options->json, "Print JSON, with every place");
    command->add_option("--extract", options->extract,
                        "Folder to write each look into, as NAME.cube and NAME.twlut");
    command->callback([options] { runLooks(*options); });
}

void addCheck(CLI::App& app) {
    const auto options = std::make_shared<CheckOptions>();
    CLI::App* command =
        app.add_subcommand("check", "Tell whether looks will work in the effect, and what to know");
    command->footer(
        "Judges by the effect's own code. The exit status is 1 when a look would not work.\n\n"
        "  tintwell-host check look.cube\n"
        "  tintwell-host check looks/*.cube --json\n"
        "  tintwell-host check promo.prproj              # every look in it");
    command
        ->add_option("looks", options->files,
                     "A .cube file, a TWLUT text, or a file that holds looks, such as a project")
        ->required();
    command->add_flag("--json", options->json, "Print JSON, with all numbers");
    command->callback([options] { runCheck(*options); });
}

}  // namespace

void addLookCommands(CLI::App& app) {
    addLooks(app);
    addCheck(app);
}

}  // namespace program
