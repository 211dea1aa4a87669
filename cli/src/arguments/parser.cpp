// Parses the command line.
#include "cli/arguments/parser.h"

#include <algorithm>
#include <stdexcept>

#include "base/files.h"
#include "cli/shared/suggestions.h"

namespace cli {
namespace {

using ArgumentList = std::span<const std::string>;
constexpr const char* kNoOperand = "name a file, or - for standard input";

using Result = std::variant<Request, UsageProblem>;

class Parser {
  public:
    Parser(const Command& command, ArgumentList arguments)
        : command_(command), known_(options_of(command)), rest_(arguments) {}

    // Throws std::invalid_argument with a sentence.
    Request parse() {
        bool only_operands = false;
        while (!rest_.empty() && options_.asks == Options::Asks::nothing) {
            const std::string& argument = next();
            if (only_operands || argument == "-" || !argument.starts_with('-')) {
                options_.files.push_back(argument);
            } else if (argument == "--") {
                only_operands = true;
            } else if (argument.starts_with("--")) {
                take_long(argument);
            } else {
                take_letters(argument);
            }
        }
        if (options_.asks != Options::Asks::nothing) return information();
        refuse_exclusions();
        refuse_operands();
        if (const std::string problem = command_.problem(options_); !problem.empty()) {
            throw std::invalid_argument(problem);
        }
        return {&command_, std::move(options_)};
    }

  private:
    const std::string& next() {
        const std::string& argument = rest_.front();
        rest_ = rest_.subspan(1);
        return argument;
    }

    void take_long(const std::string& argument) {
        const std::size_t equals = argument.find('=');
        const std::string name = argument.substr(0, equals);
        const auto found =
            std::find_if(known_.begin(), known_.end(), [&](auto* option) { return option->name == name; });
        if (found == known_.end()) refuse_unknown(name);
        if (equals == std::string::npos) return take(**found);
        if ((*found)->value.empty()) throw std::invalid_argument(name + " takes no value");
        set(**found, argument.substr(equals + 1));
    }

    // "-i", "-o OUT", "-oOUT", "-ioOUT".
    void take_letters(const std::string& argument) {
        for (std::size_t i = 1; i < argument.size(); ++i) {
            const std::string name = {'-', argument[i]};
            const auto found = std::find_if(known_.begin(), known_.end(), [&](auto* option) {
                return option->letter == argument[i] || option->name == name;
            });
            if (found == known_.end()) refuse_unknown(name);
            const Option& option = **found;
            if (option.value.empty() || i + 1 == argument.size()) {
                take(option);
            } else {
                return set(option, argument.substr(i + 1));
            }
        }
    }

    // The next argument is the value, whatever it begins with.
    void take(const Option& option) {
        if (option.value.empty()) return set(option, "");
        if (rest_.empty()) throw std::invalid_argument(std::string(option.name) + " needs a value");
        set(option, next());
    }

    void set(const Option& option, const std::string& value) {
        const std::string name(option.name);
        const auto choices = words(option.choices);
        if (!choices.empty() && std::find(choices.begin(), choices.end(), value) == choices.end()) {
            std::string names;
            for (const std::string_view choice : choices) names += (names.empty() ? "" : ", ") + std::string(choice);
            throw std::invalid_argument(name + ": '" + value + "' is none of " + names);
        }
        try {
            option.set(options_, value);
        } catch (const std::invalid_argument& problem) {
            throw std::invalid_argument(name + ": " + problem.what());
        }
        given_.push_back(&option);
    }

    [[noreturn]] void refuse_unknown(const std::string& name) const {
        std::vector<std::string> names;
        for (const Option* option : known_) names.emplace_back(option->name);
        throw std::invalid_argument("there is no option " + name +
                                    (name.starts_with("--") ? did_you_mean(name, names) : ""));
    }

    void refuse_exclusions() const {
        for (const Option* one : given_) {
            for (const std::string_view name : words(one->excludes)) {
                for (const Option* other : given_) {
                    if (other->name != name) continue;
                    throw std::invalid_argument(std::string(one->name) + " cannot be used with " + std::string(name));
                }
            }
        }
    }

    void refuse_operands() const {
        const std::size_t count = options_.files.size();
        const std::string_view operands = command_.operands;
        if (count == 0 && !operands.empty() && !operands.starts_with('[')) {
            throw std::invalid_argument(kNoOperand);
        }
        const std::size_t most = operands.empty() ? 0 : 1;
        if (count <= most || operands.ends_with("...")) return;
        throw std::invalid_argument("'" + options_.files[most] + "' is one file too many");
    }

    // As an option of a command.
    Request information() const {
        Options options;
        options.asks = options_.asks;
        options.files.emplace_back(command_.name);
        return {find_command(options_.asks == Options::Asks::version ? "version" : "help"), std::move(options)};
    }

    const Command& command_;
    const std::vector<const Option*> known_;
    ArgumentList rest_;
    Options options_;
    std::vector<const Option*> given_;
};

Result read(const Command& command, ArgumentList arguments) {
    try {
        return Parser(command, arguments).parse();
    } catch (const std::invalid_argument& problem) {
        return UsageProblem{problem.what(), "exflate " + std::string(command.name) + " --help"};
    }
}

// `exflate chek`: a plain word that resembles a command and is not a file. Empty for any other text.
std::string command_suggestion(const std::string& text) {
    if (text.find_first_of("./-") != std::string::npos) return "";
    if (host::base::kind_of(text) != host::base::FileKind::none) return "";
    return did_you_mean(text, command_names());
}

}  // namespace

std::variant<Request, UsageProblem> parse_arguments(const std::vector<std::string>& arguments) {
    if (arguments.empty()) return UsageProblem{kNoOperand, "exflate --help"};
    const std::string& first = arguments.front();
    if (first == "-h" || first == "--help") return read(*find_command("help"), {});
    if (const Command* command = find_command(first)) return read(*command, ArgumentList(arguments).subspan(1));
    if (const std::string suggestion = command_suggestion(first); !suggestion.empty()) {
        return UsageProblem{"'" + first + "' is neither a command nor a file" + suggestion, "exflate --help"};
    }
    return read(*find_command(kDefaultCommand), arguments);
}

}  // namespace cli
