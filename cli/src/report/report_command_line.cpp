// The command that repeats what a report shows.
#include <algorithm>
#include <filesystem>

#include "cli/arguments/options.h"
#include "cli/shared/file_io.h"
#include "report/report_page.h"

namespace cli {
namespace {

// One word for a shell.
std::string word(const std::string& text) {
    const auto is_plain = [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
               std::string_view("_-./,:+=@%").find(c) != std::string_view::npos;
    };
    if (!text.empty() && std::all_of(text.begin(), text.end(), is_plain)) return text;
    std::string quoted = "'";
    for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return quoted + "'";
}

std::string output_beside(const std::string& file, const std::string& extension) {
    if (file == kStandardStream) return "flat" + extension;
    return std::filesystem::path(file).stem().string() + "_flat" + extension;
}

}  // namespace

std::string command_line(const Options& options, const std::string& extension) {
    const DialogAnswers& answers = options.answers;
    // A value that begins with a dash must not be taken for an option.
    const auto option = [](const char* name, const std::string& value) { return ' ' + (name + word(value)); };
    std::string line = options.flatten ? "exflate flatten" : "exflate run";
    if (!options.animation.empty()) line += option("--animation=", options.animation);
    if (!options.composition.empty()) line += option("--comp=", options.composition);
    for (const std::string& layer : options.layers) line += option("--layer=", layer);
    if (!answers.copy_attributes) line += " --discard-attributes";
    if (answers.delete_source) line += " --delete-source";
    if (answers.keep_in_comp) line += " --keep-in-comp";
    if (!answers.prefix.empty()) line += option("--prefix=", answers.prefix);
    if (answers.prepend_name) line += " --prepend-name";
    if (answers.fix_random) line += " --fix-random";
    line += " -o " + word(output_beside(options.file(), extension));
    return line + (options.file().starts_with('-') && options.file() != kStandardStream ? " -- " : " ") +
           word(options.file());
}

}  // namespace cli
