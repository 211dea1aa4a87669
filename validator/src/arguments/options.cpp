// Every option of aegp-check. A new option is a new row here, and a member that it sets.
#include "arguments/options.h"

#include <charconv>

#include "dialogs.h"

namespace validator {
namespace {

using Given = const std::string&;

std::uint64_t whole_number(std::string_view text, std::uint64_t least, std::uint64_t most) {
    std::uint64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || number < least || number > most)
        throw std::invalid_argument("'" + std::string(text) + "' is not a whole number from " + std::to_string(least) +
                                    " to " + std::to_string(most));
    return number;
}

void set_seeds(CheckOptions& options, Given value) {
    constexpr std::uint64_t kMost = 1'000'000'000;
    const std::size_t dash = value.find('-');
    options.request.first_seed = whole_number(std::string_view(value).substr(0, dash), 0, kMost);
    options.request.last_seed = dash == std::string::npos
                                    ? options.request.first_seed
                                    : whole_number(std::string_view(value).substr(dash + 1), 0, kMost);
    if (options.request.last_seed < options.request.first_seed)
        throw std::invalid_argument("the second number is smaller than the first");
}

constexpr CheckOption kOptions[] = {
    {.name = "--strictness",
     .value = "N",
     .text =
         "climb the ladder up to rung N, from 1 to 10; default: 10. Each rung includes those below: 1 loads, 2 menus "
         "and hooks, 3 nothing to work on, 4 typical projects, 5 leaks, 6 undo, 7 each call fails once, 8 calls fail "
         "from then on and suites are missing, 9 hostile names and huge projects, 10 random projects",
     .set = [](CheckOptions& o,
               Given value) { o.request.strictness = static_cast<int>(whole_number(value, 1, kMostStrict)); }},
    {.name = "--list",
     .text = "list the tests with their rungs, and try nothing",
     .set = [](CheckOptions& o, Given) { o.asks = CheckOptions::Asks::list; }},
    {.name = "--only",
     .value = "ID",
     .text = "make this test alone; may be given several times",
     .set =
         [](CheckOptions& o, Given value) {
             for (const TestFacts& test : all_tests())
                 if (test.id == value) return o.request.only.push_back(value);
             throw std::invalid_argument("there is no test '" + value + "'; --list shows them all");
         }},
    {.name = "--seed",
     .value = "N[-M]",
     .text = "make the random projects of these numbers; default: 1-25",
     .set = set_seeds},
    {.name = "--project",
     .value = "FILE",
     .text = "work on this Lottie file as well",
     .set = [](CheckOptions& o, Given value) { o.project = value; }},
    {.name = "--select",
     .value = "LAYER",
     .text = "select this layer of the main composition of FILE, by its name or as #3; may be given several times; "
             "default: all layers",
     .set = [](CheckOptions& o, Given value) { o.request.selected.push_back(value); }},
    {.name = "--command",
     .value = "NAME",
     .text = "try the command with this text in its menu only; default: every command",
     .set = [](CheckOptions& o, Given value) { o.request.command = value; }},
    {.name = "--answer",
     .value = "CONTROL=VALUE",
     .text = "put this into the control of that name or text of every dialog: a text, or on and off; may be given "
             "several times. Dialogs are then accepted",
     .set =
         [](CheckOptions& o, Given value) {
             const Answer answer = answer_from(value);
             o.request.answers.emplace_back(answer.control, answer.value);
         }},
    {.name = "--declare",
     .value = "FILE",
     .text = "read from FILE what the plug-in leaves undone on purpose",
     .set = [](CheckOptions& o, Given value) { o.declarations = value; }},
    {.name = "--jobs",
     .letter = 'j',
     .value = "N",
     .text = "run N processes at once; default: 1",
     .set = [](CheckOptions& o, Given value) { o.request.jobs = static_cast<unsigned>(whole_number(value, 1, 256)); }},
    {.name = "--format",
     .value = "FORMAT",
     .text = "report as text, json or junit; default: text",
     .choices = "text json junit",
     .set =
         [](CheckOptions& o, Given value) {
             o.format = value == "json"    ? ReportFormat::json
                        : value == "junit" ? ReportFormat::junit
                                           : ReportFormat::text;
         }},
    {.name = "--journal",
     .value = "DIR",
     .text = "write for each test that fails everything the plug-in and the host said into DIR",
     .set = [](CheckOptions& o, Given value) { o.request.journal_folder = value; }},
    {.name = "--time-limit",
     .value = "SECONDS",
     .text = "what takes longer hangs: seconds of the processor, and three times as many on the clock; default: 10",
     .set =
         [](CheckOptions& o, Given value) {
             const auto seconds = whole_number(value, 1, 86'400);
             o.request.limits.processor_time = std::chrono::seconds(seconds);
             o.request.limits.time = std::chrono::seconds(3 * seconds);
         }},
    {.name = "--memory-limit",
     .value = "MIB",
     .text = "memory that the plug-in and the host may take in one process; 0: no limit; default: 2048",
     .set =
         [](CheckOptions& o, Given value) {
             const auto mib = whole_number(value, 0, 1 << 20);
             o.request.limits.memory = mib == 0 ? std::nullopt : std::optional(std::size_t{mib} << 20);
         }},
    {.name = "--help",
     .letter = 'h',
     .text = "show this help",
     .set = [](CheckOptions& o, Given) { o.asks = CheckOptions::Asks::help; }},
    {.name = "--version",
     .text = "show the version",
     .set = [](CheckOptions& o, Given) { o.asks = CheckOptions::Asks::version; }},
};

constexpr ExplainedCode kExitCodes[] = {
    {"0", "no test failed"},
    {"1", "a test failed"},
    {"2", "wrong usage, or no such layer or command"},
    {"3", "the module cannot be loaded, or the project or the declarations cannot be read"},
    {"4", "aegp-check itself failed"},
};

constexpr ExplainedCode kExamples[] = {
    {"aegp-check MyPlugin.so", "try everything"},
    {"aegp-check --strictness 4 -j4 MyPlugin.so", "only whether it works, with four processes"},
    {"aegp-check --only once.leaks --journal journals MyPlugin.so", "one test again, with a journal of what was said"},
    {"aegp-check --format junit MyPlugin.so > check.xml", "write the results for a build server"},
};

class ArgumentReader {
  public:
    explicit ArgumentReader(std::span<const std::string> arguments) : rest_(arguments) {
        options_.arguments.assign(arguments.begin(), arguments.end());
    }

    CheckOptions parse() {
        bool only_operands = false;
        while (!rest_.empty()) {
            const std::string argument = next();
            if (only_operands || !argument.starts_with('-') || argument == "-")
                take_module(argument);
            else if (argument == "--")
                only_operands = true;
            else
                take_option(argument);
        }
        const bool needs_module = options_.asks == CheckOptions::Asks::examination;
        if (needs_module && options_.request.module.empty()) throw UsageError("name the module of a plug-in");
        if (!options_.request.selected.empty() && options_.project.empty())
            throw UsageError("--select needs --project");
        return std::move(options_);
    }

  private:
    std::string next() {
        std::string argument = rest_.front();
        rest_ = rest_.subspan(1);
        return argument;
    }

    void take_module(const std::string& argument) {
        if (!options_.request.module.empty())
            throw UsageError("'" + argument + "' is one module too many: they are tried one by one");
        options_.request.module = argument;
    }

    // "--only ID", "--only=ID", "-j 4", "-j4"
    void take_option(const std::string& argument) {
        const bool is_long = argument.starts_with("--");
        const std::size_t end = is_long ? argument.find('=') : std::min<std::size_t>(2, argument.size());
        const std::string name = argument.substr(0, end);
        for (const CheckOption& option : kOptions) {
            const bool is_meant = is_long ? option.name == name : option.letter != '\0' && option.letter == name[1];
            if (!is_meant) continue;
            const bool has_value = end != std::string::npos && end < argument.size();
            if (option.value.empty() && has_value) throw UsageError(name + " takes no value");
            if (has_value) return set(option, argument.substr(is_long ? end + 1 : end));
            if (!option.value.empty() && rest_.empty()) throw UsageError(name + " needs a value");
            return set(option, option.value.empty() ? std::string() : next());
        }
        throw UsageError("there is no option " + name);
    }

    void set(const CheckOption& option, const std::string& value) {
        const std::string choices = ' ' + std::string(option.choices) + ' ';
        if (!option.choices.empty() && choices.find(' ' + value + ' ') == std::string::npos)
            throw UsageError(std::string(option.name) + ": '" + value + "' is none of " + std::string(option.choices));
        try {
            option.set(options_, value);
        } catch (const std::invalid_argument& problem) {
            throw UsageError(std::string(option.name) + ": " + problem.what());
        }
    }

    std::span<const std::string> rest_;
    CheckOptions options_;
};

}  // namespace

std::span<const CheckOption> all_options() {
    return kOptions;
}

std::span<const ExplainedCode> exit_codes() {
    return kExitCodes;
}

std::span<const ExplainedCode> examples() {
    return kExamples;
}

CheckOptions parse_arguments(const std::vector<std::string>& arguments) {
    return ArgumentReader(arguments).parse();
}

}  // namespace validator
