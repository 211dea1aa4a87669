// Looks things up in the tables of commands and options.
#include "cli/arguments/tables.h"

#include <algorithm>

namespace cli {
namespace {

bool has_word(std::string_view text, std::string_view word) {
    const auto all = words(text);
    return std::find(all.begin(), all.end(), word) != all.end();
}

}  // namespace

const Command* find_command(std::string_view name) {
    for (const Command& command : all_commands()) {
        if (command.name == name) return &command;
    }
    return nullptr;
}

std::vector<std::string> command_names() {
    std::vector<std::string> names;
    for (const Command& command : all_commands()) names.emplace_back(command.name);
    return names;
}

std::vector<const Option*> options_of(const Command& command) {
    std::vector<const Option*> options;
    for (const Option& option : all_options()) {
        if (option.commands == kEveryCommand || has_word(option.commands, command.name)) options.push_back(&option);
    }
    return options;
}

bool takes_folders(const Command& command) {
    return command.operands.find("FOLDER") != std::string_view::npos;
}

std::vector<const Option*> excluded_by(const Option& option, const Command& command) {
    std::vector<const Option*> excluded = options_of(command);
    std::erase_if(excluded, [&](const Option* other) {
        return !has_word(option.excludes, other->name) && !has_word(other->excludes, option.name);
    });
    return excluded;
}

std::vector<std::string_view> words(std::string_view text) {
    std::vector<std::string_view> result;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(' '), text.size());
        if (end > 0) result.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result;
}

}  // namespace cli
