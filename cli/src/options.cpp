// What the arguments of the command ask for.
#include "cli/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <sstream>

#include "cli/file_io.h"
#include "cli/near_names.h"
#include "cli/version.h"

namespace cli {
namespace {

constexpr const char* kHelp =
    R"(Un-nests the compositions of Lottie files: the layers of a nested composition move out into the composition that uses it.

  exflate [run] FILE...   un-nest and write the result
  exflate check FILE...   per nest: does the look stay exact, equal to the eye, or what changes and why; writes nothing
  exflate report FILE     make a page that plays the animation before and after side by side, with the verdicts of check
  exflate list FILE       show compositions, layers and nests as a tree; --json for other programs
  exflate replay JOURNAL  play a journal of run to the plug-in, and tell the first difference
  exflate dialog --picture PNG
                          draw the plug-in's dialog as it would open

FILE is a Lottie file, plain or packed (.lottie, .tgs), - is standard input. A packed file is written packed again, with
everything else in it as it was; of the several animations of a .lottie file each is worked on.

Output of run:
  -o, --output OUT        write here; - is standard output, the default for one FILE
  --out-dir DIR           write each file under its own name into this folder
  -i, --in-place          replace each file by its result
  -j, --jobs N            work on N files at once, each in a process of its own; what is said stays in the order of the
                          files, and a line on a terminal tells how far it is; default: 1. Not with --dialog or --journal

Selection:
  --animation ID          of a .lottie file, the animation of that id; default: every one, for report the only one; those
                          that lack what is named below are passed over, as long as one has it
  --comp NAME|ID          the composition to work in; default: the main one
  --layer NAME|#INDEX     un-nest this layer, #INDEX being its place in the stack as list shows it; may be repeated;
                          default: every nest of the composition
  --recursive             go on with the nests that come out, until none is left
  --strict                judge the looks as check does, and write nothing if one would change
  --only-exact            un-nest only the nests whose look check calls exact; with --recursive as deep as that goes
  --max-growth PERCENT    keep a nest that shares its composition with others if the file would grow by more than that
                          over the input

check takes the selection (default: every nest of every composition) and the dialog's choices too, and:
  --format FORMAT         text, json or junit
  --prove                 draw frames before and after, and say how far they differ at the worst one

report takes --animation, --comp, --layer and the dialog's choices too, and:
  -o, --output OUT        write the page here; default: standard output

The plug-in's dialog:
  --copy-attributes       carry a nest's transform, timing and effects over to its layers (default)
  --discard-attributes    leave them out
  --delete-source         delete the nested composition too, where nothing else uses it
  --keep-in-comp          keep the nest, switched off; not together with --delete-source
  --prefix TEXT           put TEXT and _ in front of each layer's name; at most 50 bytes
  --prepend-name          put the nest's name and _ in front of each layer's name
  --fix-random            give random expressions a fixed seed
  --dialog                show the dialog in a window instead, with what it remembers; alerts come in windows too

The picture of the dialog:
  --picture PNG           write it here
  --scale NUMBER          dots for each pixel, 0.5 to 8; default: 1
  --first-use             as if nothing had been remembered
  --click CONTROL         click the control of that name or text before; may be repeated
  --type CONTROL=TEXT     type the text there before, in the place of the old one; may be repeated

  --journal FILE          write all that the plug-in and the host say to each other to FILE, for replay; after a crash
                          the file tells everything up to it

  --script-time SECONDS   end run, check or report of a file when its scripts take more of the processor's time than
                          this together, or one of them a quarter of it; default: 120

  -h, --help              show this
  --version               show the version

Results go to standard output, everything else to standard error. Colours only on a terminal, never with NO_COLOR.

Exit codes:
  0  done; check and report: every look stays; replay: the plug-in did the same, as far as the journal goes
  1  check, report, or run with --strict: a look would change; replay: the plug-in did something else
  2  wrong usage, or no such composition, layer or nest
  3  bad input
  4  the plug-in or the host reported an error, the dialog was cancelled or there is no desktop to show it on,
     or the result could not be written
With several files the highest one. A file with an error is not written at all.

Environment:
  EXFLATE_PLUGIN   the plug-in to load; default: the one that was built or installed with this command
  EXFLATE_PLAYER   the file lottie.min.js that report puts into its page; default: the one built or installed with this
                   command
  XDG_CONFIG_HOME  the folder in which exflate/settings keeps what the dialog remembers; default: ~/.config.
                   What is kept there never changes a result.
)";

void declare_selection(CLI::App& app, std::string& animation, std::string& composition,
                       std::vector<std::string>& layers) {
    app.add_option("--animation", animation)->take_last()->check([](const std::string& id) {
        return id.empty() ? std::string("needs the id of an animation") : std::string();
    });
    app.add_option("--comp", composition)->take_last();
    app.add_option("--layer", layers)->allow_extra_args(false);
}

void declare_dialog(CLI::App& app, DialogAnswers& answers) {
    auto* copy = app.add_flag("--copy-attributes");
    app.add_flag_callback("--discard-attributes", [&answers] { answers.copy_attributes = false; })->excludes(copy);
    auto* keep = app.add_flag("--keep-in-comp", answers.keep_in_comp);
    app.add_flag("--delete-source", answers.delete_source)->excludes(keep);
    app.add_option("--prefix", answers.prefix)->take_last();
    app.add_flag("--prepend-name", answers.prepend_name);
    app.add_flag("--fix-random", answers.fix_random);
}

// The library's own check of a range lets "nan" pass.
auto between(double least, double most) {
    return [least, most](const std::string& text) {
        char* end = nullptr;
        const double value = std::strtod(text.c_str(), &end);
        if (*end == '\0' && value >= least && value <= most) return std::string();
        std::ostringstream problem;
        problem << "'" << text << "' is not a number from " << least << " to " << most;
        return problem.str();
    };
}

void declare_script_time(CLI::App& app, double& seconds) {
    app.add_option("--script-time", seconds)->take_last()->check(between(0.01, 1e6));
}

void declare_run(CLI::App& app, RunOptions& options) {
    app.add_option("FILE", options.files)->required();

    auto* output = app.add_option("-o,--output", options.output)->take_last();
    auto* folder = app.add_option("--out-dir", options.output_folder)->take_last();
    auto* in_place = app.add_flag("-i,--in-place", options.in_place);
    output->excludes(folder)->excludes(in_place);
    folder->excludes(in_place);

    declare_selection(app, options.animation, options.composition, options.layers);
    app.add_flag("--recursive", options.recursive);
    app.add_flag("--strict", options.strict);
    app.add_flag("--only-exact", options.only_exact);
    app.add_option("--max-growth", options.max_growth)->take_last()->check(between(0, 1e9));
    app.add_option("--journal", options.journal)->take_last()->check([](const std::string& file) {
        return file.empty() ? std::string("needs the name of a file") : std::string();
    });

    declare_script_time(app, options.script_time);
    declare_dialog(app, options.answers);
    auto* dialog = app.add_flag("--dialog", options.dialog);
    app.add_option("-j,--jobs", options.jobs)
        ->take_last()
        ->check(CLI::Range(1U, 1024U))
        ->excludes(dialog)
        ->excludes(app.get_option("--journal"));
    for (const char* answer : {"--copy-attributes", "--discard-attributes", "--delete-source", "--keep-in-comp",
                               "--prefix", "--prepend-name", "--fix-random"}) {
        dialog->excludes(app.get_option(answer));
    }
}

void declare_check(CLI::App& app, CheckOptions& options) {
    static const std::map<std::string, CheckFormat> kFormats = {
        {"text", CheckFormat::text}, {"json", CheckFormat::json}, {"junit", CheckFormat::junit}};
    app.add_option("FILE", options.files)->required();
    declare_selection(app, options.animation, options.composition, options.layers);
    app.add_option_function<std::string>(
           "--format",
           [&options](const std::string& name) {
               const auto found = kFormats.find(name);
               if (found == kFormats.end()) {
                   throw CLI::ValidationError("--format is text, json or junit, not '" + name + "'");
               }
               options.format = found->second;
           })
        ->take_last();
    app.add_flag("--prove", options.prove);
    declare_script_time(app, options.script_time);
    declare_dialog(app, options.answers);
}

void declare_report(CLI::App& app, ReportOptions& options) {
    app.add_option("FILE", options.file)->required();
    app.add_option("-o,--output", options.output)->take_last();
    declare_selection(app, options.animation, options.composition, options.layers);
    declare_script_time(app, options.script_time);
    declare_dialog(app, options.answers);
}

void declare_list(CLI::App& app, ListOptions& options) {
    app.add_option("FILE", options.file)->required();
    app.add_flag("--json", options.json);
}

void declare_picture(CLI::App& app, DialogOptions& options) {
    app.add_option("--picture", options.picture)->required()->take_last();
    app.add_option("--scale", options.scale)->take_last()->check(between(0.5, 8));
    app.add_flag("--first-use", options.first_use);
    // Called for each occurrence, in the order of the arguments.
    app.add_option_function<std::string>("--click",
                                         [&options](const std::string& control) {
                                             options.actions.push_back({host::scriptui::Action::Kind::click, control});
                                         })
        ->allow_extra_args(false)
        ->trigger_on_parse();
    app.add_option_function<std::string>(
           "--type",
           [&options](const std::string& words) {
               const std::size_t equals = words.find('=');
               if (equals == std::string::npos) throw CLI::ValidationError("--type needs CONTROL=TEXT");
               options.actions.push_back(
                   {host::scriptui::Action::Kind::type, words.substr(0, equals), words.substr(equals + 1)});
           })
        ->allow_extra_args(false)
        ->trigger_on_parse();
}

void declare_replay(CLI::App& app, ReplayOptions& options) {
    app.add_option("FILE", options.file)->required();
}

// What the parser itself cannot know about output and input together.
std::string output_problem(const RunOptions& options) {
    if (options.journal == kStandardStream) return "the journal cannot go to standard output (-): name a file";
    const bool has_standard_input = std::count(options.files.begin(), options.files.end(), kStandardStream) > 0;
    const bool to_folder = !options.output_folder.empty();
    if (has_standard_input && options.in_place) return "standard input (-) cannot be replaced: leave out --in-place";
    if (has_standard_input && to_folder)
        return "standard input (-) has no name to be written under: use -o OUT instead of --out-dir";
    if (options.files.size() > 1 && !options.in_place && !to_folder) {
        return "several files need --out-dir DIR or --in-place";
    }
    if (to_folder) {
        std::map<std::filesystem::path, std::string> taken;
        for (const std::string& file : options.files) {
            const auto [other, is_new] = taken.emplace(std::filesystem::path(file).filename(), file);
            if (!is_new) {
                return "'" + other->second + "' and '" + file + "' would both become '" +
                       (std::filesystem::path(options.output_folder) / other->first).string() +
                       "': run them one by one";
            }
        }
    }
    return "";
}

// "--prefix=" means an empty text; the parser would take the next argument instead.
std::vector<std::string> split_empty_values(const std::vector<std::string>& arguments) {
    std::vector<std::string> result;
    bool only_files = false;
    for (const std::string& argument : arguments) {
        only_files = only_files || argument == "--";
        if (!only_files && argument.starts_with("--") && argument.find('=') + 1 == argument.size()) {
            result.push_back(argument.substr(0, argument.size() - 1));
            result.emplace_back();
        } else {
            result.push_back(argument);
        }
    }
    return result;
}

// Throws CLI::ParseError.
void parse(CLI::App& app, const std::vector<std::string>& arguments) {
    std::vector<std::string> reversed = split_empty_values(arguments);
    std::reverse(reversed.begin(), reversed.end());
    app.parse(std::move(reversed));
}

// What to say about an argument that fits nowhere.
std::string unexpected(const CLI::App& app, const std::string& argument) {
    if (!argument.starts_with('-')) return "'" + argument + "' is one file too many";
    std::vector<std::string> names;
    for (const CLI::Option* option : app.get_options()) {
        for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
    const std::string typed = argument.substr(0, argument.find('='));
    return "there is no option " + typed + did_you_mean(typed, names);
}

// The options of one subcommand, or why there are none. `problem` looks at them together.
template <class Options>
Request read(const std::vector<std::string>& arguments, void (*declare)(CLI::App&, Options&),
             const char* missing = "name a file, or - for standard input",
             std::string (*problem)(const Options&) = nullptr) {
    CLI::App app;
    Options options;
    declare(app, options);
    try {
        parse(app, arguments);
    } catch (const CLI::CallForHelp&) {
        return Information{kHelp};
    } catch (const CLI::ExtrasError&) {
        return UsageProblem{unexpected(app, app.remaining().front())};
    } catch (const CLI::RequiredError&) {
        return UsageProblem{missing};
    } catch (const CLI::ArgumentMismatch& mismatch) {
        const std::string words = mismatch.what();  // begins with the option's name and a colon
        return UsageProblem{words.substr(0, words.find(':')) + " needs a value"};
    } catch (const CLI::ParseError& error) {
        return UsageProblem{error.what()};
    }
    std::string sentence = problem == nullptr ? "" : problem(options);
    if (!sentence.empty()) return UsageProblem{std::move(sentence)};
    return options;
}

}  // namespace

Request parse_arguments(const std::vector<std::string>& arguments) {
    const std::string first = arguments.empty() ? "" : arguments.front();
    const std::vector<std::string> rest(arguments.begin() + (arguments.empty() ? 0 : 1), arguments.end());
    if (first == "--version") return Information{std::string("exflate ") + kVersion + "\n"};
    if (first == "list") return read<ListOptions>(rest, declare_list);
    if (first == "report") return read<ReportOptions>(rest, declare_report);
    if (first == "check") return read<CheckOptions>(rest, declare_check);
    if (first == "dialog")
        return read<DialogOptions>(rest, declare_picture, "name a file for the picture with --picture");
    if (first == "replay") return read<ReplayOptions>(rest, declare_replay);
    return read<RunOptions>(first == "run" ? rest : arguments, declare_run, "name a file, or - for standard input",
                            output_problem);
}

}  // namespace cli
