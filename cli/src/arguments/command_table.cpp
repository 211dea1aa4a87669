// Every command, the exit codes and the environment. A new command is a new row here; options name the commands that
// take them.
#include <algorithm>

#include "cli/arguments/help.h"
#include "cli/arguments/tables.h"
#include "cli/shared/file_io.h"
#include "cli/shared/suggestions.h"
#include "commands.h"

namespace cli {
namespace {

std::string output_problem(const Options& options) {
    if (options.journal == kStandardStream) return "the journal cannot go to standard output (-): name a file";
    const bool has_standard_input = std::count(options.files.begin(), options.files.end(), kStandardStream) > 0;
    const bool to_folder = !options.output_folder.empty();
    if (has_standard_input && options.in_place) return "standard input (-) cannot be replaced: leave out --in-place";
    if (has_standard_input && to_folder)
        return "standard input (-) has no name to be written under: use -o OUT instead of --out-dir";
    if (options.files.size() > 1 && !options.in_place && !to_folder && !options.dry_run) {
        return "several files need --out-dir DIR or --in-place";
    }
    return "";
}

std::string picture_problem(const Options& options) {
    return options.picture.empty() && !options.controls ? "name a file for the picture with --picture" : "";
}

std::string topic_problem(const Options& options) {
    if (options.files.empty() || find_command(options.file()) != nullptr) return "";
    return "there is no command '" + options.file() + "'" + did_you_mean(options.file(), command_names());
}

constexpr Command kCommands[] = {
    {.name = "run",
     .operands = "FILE|FOLDER...",
     .completion = Completion::animation,
     .brief = "un-nest and write the result",
     .more = "The layers of a nested composition move out into the composition that uses it. Without the name of a "
             "command, "
             "exflate runs this one. A packed file is written packed again, with everything else in it as it "
             "was; of a .lottie file with several animations each is worked on. A file with an error is not written "
             "at all.",
     .examples = {{{"animation.json -o flat.json", "un-nest every nest of the main composition"},
                   {"run --recursive -i *.json", "un-nest all levels and replace the files"},
                   {"run --only-exact --layer intro -o flat.lottie animation.lottie",
                    "un-nest the layer \"intro\" if its look stays exact"}}},
     .run = run,
     .problem = output_problem},
    {.name = "flatten",
     .operands = "FILE|FOLDER...",
     .completion = Completion::animation,
     .brief = "make files flat that look the same",
     .more = "From the innermost composition outward each nest is un-nested as by run, what that loses is mended, and "
             "the look is judged as by check. A nest stays where it is needed for the look, and the reason is given. "
             "Compositions that nothing shows any more are left out.",
     .examples = {{{"flatten animation.json -o flat.json", "make it flat and say what stays nested"},
                   {"flatten -i animations", "flatten every Lottie file in a folder in place"}}},
     .run = flatten,
     .problem = output_problem},
    {.name = "check",
     .operands = "FILE|FOLDER...",
     .completion = Completion::animation,
     .brief = "show which nests keep their look and what would change",
     .more = "Each nest is un-nested by itself, in memory. Its look stays exact, is equal to the eye, or changes, and "
             "the reasons are given. Nothing is written but the verdicts.",
     .examples = {{{"check animation.json", "judge every nest of every composition"},
                   {"check --prove --layer '#3' animation.json", "judge layer 3 and compare pictures too"},
                   {"check --format junit animations > looks.xml",
                    "judge every Lottie file in a folder, for a build server"}}},
     .run = check},
    {.name = "report",
     .operands = "FILE",
     .completion = Completion::animation,
     .brief = "make a page that shows before and after side by side",
     .more = "The page plays the animation before and after, with the verdicts of exflate check, and needs no network.",
     .examples = {{{"report animation.json -o report.html", "show the main composition"},
                   {"report --flatten animation.json -o report.html", "show what exflate flatten would do"},
                   {"report --comp intro animation.json -o report.html", "show the composition \"intro\""}}},
     .run = report},
    {.name = "list",
     .operands = "FILE|FOLDER...",
     .completion = Completion::animation,
     .brief = "show compositions, layers and nests as a tree",
     .examples = {{{"list animation.json", "show the tree"}, {"list --json animation.json", "the same for programs"}}},
     .run = list},
    {.name = "replay",
     .operands = "JOURNAL",
     .completion = Completion::file,
     .brief = "play a journal to the plug-in and report the first difference",
     .examples = {{{"run --journal run.journal animation.json -o flat.json", "write the journal of a run"},
                   {"replay run.journal", "play it"}}},
     .run = replay},
    {.name = "dialog",
     .brief = "draw the plug-in's dialog as it would open",
     .more = "Nothing that is done to the dialog is remembered.",
     .examples = {{{"dialog --picture dialog.png", "draw it with what it remembers"},
                   {"dialog --controls", "list what --click and --type can name"},
                   {"dialog --first-use --type prefixInput=fx --scale 2 --picture d.png",
                    "type a prefix first, and draw it at twice the size"}}},
     .run = draw_dialog,
     .problem = picture_problem},
    {.name = "help",
     .operands = "[COMMAND]",
     .completion = Completion::command,
     .brief = "explain a command and its options",
     .examples = {{{"help", "list the commands"}, {"help check", "explain exflate check"}}},
     .run = show_help,
     .problem = topic_problem},
    {.name = "version", .brief = "show the version", .run = show_version},
};

constexpr Explained kExitCodes[] = {
    {"0", "done; check and report: every look stays; replay: the plug-in did the same, as far as the journal goes"},
    {"1",
     "check, report, or run with --strict: a look would change; flatten, or --flatten with these: a nest stays; "
     "replay: the plug-in did something else"},
    {"2", "wrong usage, or no such composition, layer, nest or animation"},
    {"3", "bad input"},
    {"4",
     "the plug-in or the host reported an error, the dialog was cancelled or there is no desktop to show it on, or "
     "the result could not be written"},
};

constexpr Explained kEnvironment[] = {
    {"EXFLATE_PLUGIN", "the plug-in to load; default: the one built or installed with this command"},
    {"EXFLATE_PLAYER",
     "the file lottie.min.js that report puts into its page; default: the one built or installed "
     "with this command"},
    {"XDG_CONFIG_HOME",
     "the folder in which exflate/settings keeps what the dialog remembers; default: ~/.config. "
     "What is kept there never changes a result"},
    {"NO_COLOR", "no colours if this is set; without it, messages have colours on a terminal only"},
};

}  // namespace

std::span<const Command> all_commands() {
    return kCommands;
}

std::span<const Explained> exit_codes() {
    return kExitCodes;
}

std::span<const Explained> environment() {
    return kEnvironment;
}

}  // namespace cli
