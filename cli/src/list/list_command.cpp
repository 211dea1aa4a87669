// `exflate list`: compositions, layers and nests.
#include "commands.h"
#include "list/listing.h"

#include "cli/shared/animation_file.h"
#include "cli/shared/file_io.h"

namespace cli {
namespace {

// Throws Failure.
std::string listing(const Options& options, const Console& console) {
    const AnimationFile input(options.file(), "");
    std::vector<ListedAnimation> animations;
    for (std::size_t i = 0; i < input.count(); ++i) {
        try {
            animations.push_back({input.id(i), input.label(i), parse_input(input.text(i))});
            print_warnings(console, animations.back().label, animations.back().document.warnings());
        } catch (const Failure& failure) {
            throw Failure(failure.code(), failure.what(), input.place(i) + failure.place());
        }
    }
    const ListedAnimation& first = animations.front();
    if (options.json) {
        return input.is_collection() ? trees_json(shown_name(options.file()), animations)
                                     : tree_json(first.label, first.document);
    }
    std::string text;
    for (const ListedAnimation& animation : animations) text += tree_text(animation.label, animation.document);
    return text;
}

}  // namespace

ExitCode list(const Options& options, const Console& console) {
    return guarded(console, shown_name(options.file()), [&] {
        write_result(listing(options, console));
        return ExitCode::done;
    });
}

}  // namespace cli
