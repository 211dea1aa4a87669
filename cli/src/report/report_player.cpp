// Where the player for the report's page is.
#include <filesystem>

#include "base/files.h"
#include "cli/shared/failure.h"
#include "cli/shared/file_io.h"
#include "report/report_page.h"
#include "shared/installed_parts.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

std::string read_part(const fs::path& file) {
    try {
        return read_whole(file.string());
    } catch (const host::base::FileError& error) {
        throw Failure(ExitCode::failed, "the page's player: '" + file.string() + "' " + error.what());
    }
}

}  // namespace

AnimationPlayer load_player() {
    const fs::path program = find_part(
        "EXFLATE_PLAYER", "player/lottie.min.js", "share/exflate/player/lottie.min.js", "the page's player",
        "run tools/setup report and build again, or set EXFLATE_PLAYER to the file lottie.min.js of the package "
        "lottie-web, its LICENSE.md beside it");
    return {read_part(program), read_part(program.parent_path() / "LICENSE.md")};
}

}  // namespace cli
