// Where the player of the report's page lies.
#include <cstdlib>
#include <filesystem>

#include "cli/failure.h"
#include "cli/file_io.h"
#include "cli/report_page.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

// In a build tree beside the folder of the command, else where it is installed.
fs::path find_player() {
    if (const char* chosen = std::getenv("EXFLATE_PLAYER"); chosen != nullptr && *chosen != '\0') return chosen;
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path().parent_path();
    const fs::path built = folder / "player" / "lottie.min.js";
    const fs::path installed = folder / "share" / "exflate" / "player" / "lottie.min.js";
    for (const fs::path& file : {built, installed}) {
        if (fs::exists(file, error)) return file;
    }
    throw Failure(ExitCode::failed, "the page's player is neither at '" + built.string() + "' nor at '" +
                                        installed.string() +
                                        "': run tools/setup test and build again, or set EXFLATE_PLAYER to the file "
                                        "lottie.min.js of the package lottie-web, its LICENSE.md beside it");
}

std::string read_part(const fs::path& file) {
    try {
        return read_whole(file.string());
    } catch (const IoError& error) {
        throw Failure(ExitCode::failed, "the page's player: '" + file.string() + "' " + error.what());
    }
}

}  // namespace

Player load_player() {
    const fs::path program = find_player();
    return {read_part(program), read_part(program.parent_path() / "LICENSE.md")};
}

}  // namespace cli
