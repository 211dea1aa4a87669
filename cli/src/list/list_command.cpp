// `exflate list`: compositions, layers and nests.
#include "commands.h"
#include "list/listing.h"

#include <algorithm>

#include "cli/shared/animation_file.h"
#include "cli/shared/file_io.h"

namespace cli {
namespace {

// Throws Failure.
ListedFile read_file(const std::string& file, const Console& console) {
    const AnimationFile input(file, "");
    ListedFile listed{shown_name(file), input.is_collection(), {}};
    for (std::size_t i = 0; i < input.count(); ++i) {
        try {
            auto& animation = listed.animations.emplace_back(
                ListedAnimation{input.id(i), input.label(i), parse_input(input.text(i))});
            print_warnings(console, animation.label, animation.document.warnings());
        } catch (const Failure& failure) {
            throw failure.in(input.place(i));
        }
    }
    return listed;
}

// For programs: one object for all files.
ExitCode list_for_programs(const Options& options, const Console& console) {
    const bool has_several = options.files.size() > 1 || options.has_folders;
    JsonWriter json;
    if (has_several) {
        json.begin_object();
        json.key("files");
        json.begin_array();
    }
    ExitCode highest = ExitCode::done;
    for (const std::string& file : options.files) {
        try {
            add_tree(json, read_file(file, console));
        } catch (const Failure& failure) {
            print_failure(console, shown_name(file), failure);
            highest = std::max(highest, failure.code());
            if (has_several) add_failure(json, shown_name(file), failure);
        }
    }
    if (has_several) {
        json.end_array();
        json.end_object();
    }
    if (has_several || highest == ExitCode::done) write_result(json.text());
    return highest;
}

}  // namespace

ExitCode list(const Options& options, const Console& console) {
    if (options.json) return list_for_programs(options, console);
    ExitCode highest = ExitCode::done;
    for (const std::string& file : options.files) {
        highest = std::max(highest, guarded(console, shown_name(file), [&] {
                               write_result(tree_text(read_file(file, console)));
                               return ExitCode::done;
                           }));
    }
    return highest;
}

}  // namespace cli
