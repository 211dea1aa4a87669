// `exflate list`: compositions, layers and nests.
#include "cli/list_command.h"

#include "cli/documents.h"
#include "cli/file_io.h"

namespace cli {

ExitCode list(const ListOptions& options, const Console& console) {
    const std::string name = shown_name(options.file);
    try {
        host::lottie::Document document = parse_input(read_input(options.file));
        write_result(std::string(kStandardStream),
                     options.json ? tree_json(name, document) : tree_text(name, document));
        return ExitCode::done;
    } catch (const Failure& failure) {
        console.say(Console::Tone::error, name + failure.place(), failure.what());
        return failure.code();
    }
}

}  // namespace cli
