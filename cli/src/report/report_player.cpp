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

constexpr const char* kAdvice =
    "run tools/setup report and build again, or set EXFLATE_PLAYER to the file lottie.min.js of the package "
    "lottie-web, its LICENSE.md beside it";

std::string read_part(const fs::path& file, const std::string& what) {
    try {
        return read_whole(file.string());
    } catch (const host::base::FileError& error) {
        throw Failure(ExitCode::failed, what + " " + error.what() + "; " + kAdvice).of(file.string());
    }
}

}  // namespace

AnimationPlayer load_player() {
    const fs::path program = find_part("EXFLATE_PLAYER", "player/lottie.min.js", "share/exflate/player/lottie.min.js",
                                       "the page's player", kAdvice);
    return {read_part(program, "the page's player"),
            read_part(program.parent_path() / "LICENSE.md", "the licence of the page's player")};
}

}  // namespace cli
