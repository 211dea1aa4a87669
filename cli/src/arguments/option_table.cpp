// Every option of every command. A new option is a new row here, and a member of Options that it sets.
#include <charconv>
#include <cstdlib>
#include <sstream>
#include <stdexcept>

#include "cli/arguments/tables.h"
#include "cli/shared/suggestions.h"

namespace cli {
namespace {

constexpr std::string_view kOutput = "Output";
constexpr std::string_view kSelection = "What to un-nest";
constexpr std::string_view kDialog = "Choices of the plug-in's dialog";
constexpr std::string_view kPicture = "The picture of the dialog";
constexpr std::string_view kDiagnosis = "Limits and diagnosis";
constexpr std::string_view kInformation = "Information";

constexpr std::string_view kUnnesting = "run check report";
constexpr std::string_view kSelecting = "run flatten check report";

template <class Number>
[[noreturn]] void refuse_number(const std::string& text, Number least, Number most) {
    std::ostringstream sentence;
    sentence << "'" << text << "' is not a " << (std::is_integral_v<Number> ? "whole " : "") << "number from " << least
             << " to " << most;
    throw std::invalid_argument(sentence.str());
}

double number(const std::string& text, double least, double most) {
    char* end = nullptr;
    const double value = std::strtod(text.c_str(), &end);
    // "nan" is refused too.
    if (text.empty() || *end != '\0' || !(value >= least && value <= most)) refuse_number(text, least, most);
    return value;
}

unsigned whole_number(const std::string& text, unsigned least, unsigned most) {
    unsigned value = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || value < least || value > most) refuse_number(text, least, most);
    return value;
}

const std::string& not_empty(const std::string& text, const char* problem) {
    if (text.empty()) throw std::invalid_argument(problem);
    return text;
}

CheckFormat format(const std::string& name) {
    return name == "json" ? CheckFormat::json : name == "junit" ? CheckFormat::junit : CheckFormat::text;
}

lottie::looks::Reason reason(const std::string& name) {
    std::vector<std::string> names;
    for (const auto reason : lottie::looks::all_reasons()) {
        if (code(reason) == name) return reason;
        names.emplace_back(code(reason));
    }
    throw std::invalid_argument("there is no reason '" + name + "'" + did_you_mean(name, names));
}

host::scriptui::Action typing(const std::string& text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string::npos) throw std::invalid_argument("needs CONTROL=TEXT");
    return {host::scriptui::Action::Kind::type, text.substr(0, equals), text.substr(equals + 1)};
}

using Text = const std::string&;

constexpr Option kOptions[] = {
    {.name = "--output",
     .letter = 'o',
     .value = "OUT",
     .category = kOutput,
     .brief = "write the result to OUT",
     .more = "The default for a single FILE is standard output, also written as -, unless that is a terminal.",
     .completion = Completion::file,
     .commands = "run flatten",
     .set = [](Options& o, Text value) { o.output = value; }},
    {.name = "--output",
     .letter = 'o',
     .value = "OUT",
     .category = kOutput,
     .brief = "write the page to OUT; default: standard output",
     .more = "On a terminal it is printed only with -o -.",
     .completion = Completion::file,
     .commands = "report",
     .set = [](Options& o, Text value) { o.output = value; }},
    {.name = "--out-dir",
     .value = "DIR",
     .category = kOutput,
     .brief = "write each file under its own name into the folder DIR",
     .more = "The folder is made if it is missing. Files of a FOLDER keep their places below it.",
     .completion = Completion::folder,
     .commands = "run flatten",
     .excludes = "--output --in-place",
     .set = [](Options& o, Text value) { o.output_folder = value; }},
    {.name = "--in-place",
     .letter = 'i',
     .category = kOutput,
     .brief = "replace each file with its result",
     .more = "Each is replaced in one step: a run that is killed leaves the old file or the new one.",
     .commands = "run flatten",
     .excludes = "--output",
     .set = [](Options& o, Text) { o.in_place = true; }},
    {.name = "--force",
     .letter = 'f',
     .category = kOutput,
     .brief = "replace a file that is read-only, too",
     .commands = "run flatten report",
     .set = [](Options& o, Text) { o.force = true; }},
    {.name = "--jobs",
     .letter = 'j',
     .value = "N",
     .category = kOutput,
     .brief = "work on N files at once; default: 1",
     .more = "Each file gets a process of its own, so a plug-in that crashes takes only its own file down. Messages "
             "come in the order of the files, and on a colour terminal a line counts the files that are done. Files "
             "that share a name are done one after another.",
     .commands = "run flatten check",
     .excludes = "--dialog --journal",
     .set = [](Options& o, Text value) { o.jobs = whole_number(value, 1, 1024); }},
    {.name = "--quiet",
     .letter = 'q',
     .category = kOutput,
     .brief = "print only warnings and errors",
     .commands = "run flatten",
     .set = [](Options& o, Text) { o.quiet = true; }},
    {.name = "--quiet",
     .letter = 'q',
     .category = kOutput,
     .brief = "print only what makes the exit code other than 0",
     .more = "JSON and JUnit stay whole.",
     .commands = "check",
     .set = [](Options& o, Text) { o.quiet = true; }},
    {.name = "--verbose",
     .letter = 'v',
     .category = kOutput,
     .brief = "say what became of each nest",
     .commands = "run flatten",
     .excludes = "--quiet",
     .set = [](Options& o, Text) { o.verbose = true; }},
    {.name = "--verbose",
     .letter = 'v',
     .category = kOutput,
     .brief = "also print findings that harm no look, and the file's own names of properties",
     .commands = "check",
     .excludes = "--quiet",
     .set = [](Options& o, Text) { o.verbose = true; }},
    {.name = "--format",
     .value = "FORMAT",
     .category = kOutput,
     .brief = "print the verdicts as text, json or junit; default: text",
     .more = "json is for other programs, junit for build servers.",
     .completion = Completion::choice,
     .choices = "text json junit",
     .commands = "check",
     .set = [](Options& o, Text value) { o.format = format(value); }},
    {.name = "--baseline",
     .value = "FILE",
     .category = kOutput,
     .brief = "tolerate what an earlier check found",
     .more =
         "FILE is what exflate check --format json wrote. A finding is known again by its file, composition, nest, "
         "reason, layer and property, so only new ones make the exit code 1. Name files and folders as you did then.",
     .completion = Completion::file,
     .commands = "check",
     .set = [](Options& o, Text value) { o.baseline = not_empty(value, "needs the name of a file"); }},
    {.name = "--allow",
     .value = "REASON",
     .category = kOutput,
     .brief = "tolerate looks that change for this reason",
     .more = "REASON is a code as check prints it, such as clip.",
     .commands = "check",
     .repeats = true,
     .set = [](Options& o, Text value) { o.allowed.push_back(reason(value)); }},
    {.name = "--prove",
     .category = kOutput,
     .brief = "also draw frames before and after, and compare them",
     .more = "The verdicts then say how far apart the pictures are at the worst frame.",
     .commands = "check",
     .set = [](Options& o, Text) { o.prove = true; }},
    {.name = "--prove",
     .category = kOutput,
     .brief = "also draw frames of the file before and after, and compare them",
     .more = "Where they differ, the exit code is 1.",
     .commands = "flatten",
     .set = [](Options& o, Text) { o.prove = true; }},
    {.name = "--dry-run",
     .letter = 'n',
     .category = kOutput,
     .brief = "say what would be done, and write nothing",
     .commands = "run flatten",
     .set = [](Options& o, Text) { o.dry_run = true; }},
    {.name = "--flatten",
     .category = kOutput,
     .brief = "show what exflate flatten would do instead",
     .more = "Nests are judged in the order in which they become flat, mended where un-nesting loses something.",
     .commands = "check report",
     .excludes = "--copy-attributes --discard-attributes --delete-source --keep-in-comp --prefix --prepend-name "
                 "--fix-random",
     .set = [](Options& o, Text) { o.flatten = true; }},
    {.name = "--json",
     .category = kOutput,
     .brief = "print JSON, for other programs",
     .commands = "list",
     .set = [](Options& o, Text) { o.json = true; }},

    {.name = "--animation",
     .value = "ID",
     .category = kSelection,
     .brief = "work on this animation of a .lottie file only",
     .more = "By default run and check work on all of them, and report on the only one.",
     .commands = "run flatten check report",
     .set = [](Options& o, Text value) { o.animation = not_empty(value, "needs the id of an animation"); }},
    {.name = "--comp",
     .value = "NAME|ID",
     .category = kSelection,
     .brief = "work in this composition",
     .more = "By default run and report work in the main composition, flatten, check and report --flatten in all of "
             "them; with this or --layer, flatten un-nests the nests of one composition and leaves those inside "
             "them. Animations of a .lottie file that have no such composition are skipped, as long as one has it.",
     .commands = kSelecting,
     .set = [](Options& o, Text value) { o.composition = value; }},
    {.name = "--layer",
     .value = "NAME|#INDEX",
     .category = kSelection,
     .brief = "un-nest this layer; default: every nest",
     .more = "#INDEX is its place in the stack, as exflate list shows it.",
     .commands = kSelecting,
     .repeats = true,
     .set = [](Options& o, Text value) { o.layers.push_back(value); }},
    {.name = "--recursive",
     .category = kSelection,
     .brief = "go on with the nests that come out until none is left",
     .commands = "run",
     .set = [](Options& o, Text) { o.recursive = true; }},
    {.name = "--strict",
     .category = kSelection,
     .brief = "write nothing if the look of a nest would change",
     .more = "The looks are judged as by exflate check.",
     .commands = "run",
     .set = [](Options& o, Text) { o.strict = true; }},
    {.name = "--only-exact",
     .category = kSelection,
     .brief = "un-nest only nests whose look stays exact",
     .more = "The looks are judged as by exflate check; with --recursive, as deep as that goes.",
     .commands = "run",
     .set = [](Options& o, Text) { o.only_exact = true; }},
    {.name = "--mend",
     .category = kSelection,
     .brief = "mend what un-nesting loses, where a flat file can hold it",
     .more =
         "Every nest is un-nested nonetheless; exflate flatten goes deeper, and keeps those whose look would change.",
     .commands = "run",
     .excludes = "--recursive --strict --only-exact --keep-look --max-growth --discard-attributes --keep-in-comp",
     .set = [](Options& o, Text) { o.mend = true; }},
    {.name = "--keep-look",
     .category = kSelection,
     .brief = "un-nest only nests whose look stays exact or equal to the eye",
     .more = "Unlike exflate flatten, nothing is mended.",
     .commands = "run",
     .excludes = "--only-exact",
     .set = [](Options& o, Text) { o.keep_look = true; }},
    {.name = "--max-growth",
     .value = "PERCENT",
     .category = kSelection,
     .brief = "keep a shared nest if the file would grow by more than PERCENT",
     .more = "A nest is shared if other nests use its composition too. PERCENT is of the size of the input.",
     .commands = "run flatten",
     .set = [](Options& o, Text value) { o.max_growth = number(value, 0, 1e9); }},
    {.name = "--all",
     .category = kSelection,
     .brief = "un-nest every nest, even where the look changes",
     .more = "The last line then says where it does.",
     .commands = "flatten",
     .set = [](Options& o, Text) { o.all = true; }},
    {.name = "--exact",
     .category = kSelection,
     .brief = "un-nest only nests whose look stays exact",
     .commands = "flatten",
     .excludes = "--all",
     .set = [](Options& o, Text) { o.exact = true; }},
    {.name = "--keep-unused",
     .category = kSelection,
     .brief = "keep the compositions that nothing shows any more",
     .commands = "flatten",
     .set = [](Options& o, Text) { o.keep_unused = true; }},

    {.name = "--copy-attributes",
     .category = kDialog,
     .brief = "pass a nest's transform, timing and effects on to its layers (default)",
     .commands = kUnnesting,
     .set = [](Options& o, Text) { o.answers.copy_attributes = true; }},
    {.name = "--discard-attributes",
     .category = kDialog,
     .brief = "drop a nest's transform, timing and effects",
     .commands = kUnnesting,
     .excludes = "--copy-attributes",
     .set = [](Options& o, Text) { o.answers.copy_attributes = false; }},
    {.name = "--delete-source",
     .category = kDialog,
     .brief = "delete the nested composition too, unless something else uses it",
     .commands = kUnnesting,
     .set = [](Options& o, Text) { o.answers.delete_source = true; }},
    {.name = "--keep-in-comp",
     .category = kDialog,
     .brief = "keep the nest, switched off",
     .commands = kUnnesting,
     .excludes = "--delete-source",
     .set = [](Options& o, Text) { o.answers.keep_in_comp = true; }},
    {.name = "--prefix",
     .value = "TEXT",
     .category = kDialog,
     .brief = "put TEXT and _ in front of each layer's name; at most 50 bytes",
     .commands = kUnnesting,
     .set = [](Options& o, Text value) { o.answers.prefix = value; }},
    {.name = "--prepend-name",
     .category = kDialog,
     .brief = "put the nest's name and _ in front of each layer's name",
     .commands = kUnnesting,
     .set = [](Options& o, Text) { o.answers.prepend_name = true; }},
    {.name = "--fix-random",
     .category = kDialog,
     .brief = "give random expressions a fixed seed",
     .commands = kUnnesting,
     .set = [](Options& o, Text) { o.answers.fix_random = true; }},
    {.name = "--dialog",
     .category = kDialog,
     .brief = "ask in the plug-in's dialog, in a window",
     .more = "It opens with what it remembers, and alerts come in windows too.",
     .commands = "run",
     .excludes = "--copy-attributes --discard-attributes --delete-source --keep-in-comp --prefix --prepend-name "
                 "--fix-random",
     .set = [](Options& o, Text) { o.dialog = true; }},

    {.name = "--picture",
     .value = "PNG",
     .category = kPicture,
     .brief = "write the picture to the file PNG",
     .completion = Completion::file,
     .commands = "dialog",
     .set = [](Options& o, Text value) { o.picture = value; }},
    {.name = "--scale",
     .value = "NUMBER",
     .category = kPicture,
     .brief = "draw at this scale, 0.5 to 8; default: 1",
     .commands = "dialog",
     .set = [](Options& o, Text value) { o.scale = number(value, 0.5, 8); }},
    {.name = "--first-use",
     .category = kPicture,
     .brief = "show the dialog as if it remembered nothing",
     .commands = "dialog",
     .set = [](Options& o, Text) { o.first_use = true; }},
    {.name = "--controls",
     .category = kPicture,
     .brief = "draw nothing, and list the controls with their names for --click and --type",
     .commands = "dialog",
     .excludes = "--picture --scale --click --type",
     .set = [](Options& o, Text) { o.controls = true; }},
    {.name = "--click",
     .value = "CONTROL",
     .category = kPicture,
     .brief = "first click the control of that name or text",
     .commands = "dialog",
     .repeats = true,
     .set =
         [](Options& o, Text value) {
             o.actions.push_back({host::scriptui::Action::Kind::click, value});
         }},
    {.name = "--type",
     .value = "CONTROL=TEXT",
     .category = kPicture,
     .brief = "first type TEXT into that control, in place of what it holds",
     .more = "Clicks and texts come in the order in which they are given.",
     .commands = "dialog",
     .repeats = true,
     .set = [](Options& o, Text value) { o.actions.push_back(typing(value)); }},

    {.name = "--journal",
     .value = "FILE",
     .category = kDiagnosis,
     .brief = "record every call between plug-in and host in FILE",
     .more = "exflate replay plays it back. After a crash it holds everything up to the crash.",
     .completion = Completion::file,
     .commands = "run",
     .set = [](Options& o, Text value) { o.journal = not_empty(value, "needs the name of a file"); }},
    {.name = "--script-time",
     .value = "SECONDS",
     .category = kDiagnosis,
     .brief = "give up on a file when its scripts take longer; default: 120",
     .more = "The limit is processor time for all scripts together; a single one may take a quarter of it.",
     .commands = "run flatten check report",
     .set = [](Options& o, Text value) { o.script_time = number(value, 0.01, 1e6); }},
    {.name = "--picture-time",
     .value = "SECONDS",
     .category = kDiagnosis,
     .brief = "draw no longer than this for a file; default: 120",
     .more = "The limit is processor time for all pictures of the file together. Where none can be drawn any more, the "
             "result says so.",
     .commands = "flatten check report",
     .set =
         [](Options& o, Text value) {
             o.picture_time = std::chrono::milliseconds(static_cast<int>(number(value, 0.01, 1e6) * 1000));
         }},

    {.name = "-h",
     .category = kInformation,
     .brief = "list the options of the command",
     .commands = kEveryCommand,
     .set = [](Options& o, Text) { o.asks = Options::Asks::summary; }},
    {.name = "--help",
     .category = kInformation,
     .brief = "explain the command and all its options",
     .commands = kEveryCommand,
     .set = [](Options& o, Text) { o.asks = Options::Asks::help; }},
    {.name = "--version",
     .letter = 'V',
     .category = kInformation,
     .brief = "show the version",
     .commands = kEveryCommand,
     .set = [](Options& o, Text) { o.asks = Options::Asks::version; }},
};

}  // namespace

std::span<const Option> all_options() {
    return kOptions;
}

}  // namespace cli
