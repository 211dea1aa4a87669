// Folders among the files that a command works on.
#include "cli/shared/folders.h"

#include <algorithm>
#include <filesystem>

#include "base/files.h"
#include "cli/shared/failure.h"
#include "cli/shared/file_io.h"
#include "document/recognition.h"
#include "packed/archive.h"

namespace cli {
namespace {

namespace fs = std::filesystem;
using host::base::FileError;
using lottie::packed::Archive;

bool has_name_of_packed(const std::string& name) {
    std::string extension = fs::path(name).extension().string();
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return extension == ".lottie" || extension == ".tgs";
}

// One that cannot be read or unpacked counts by its name, so that people are told why.
bool is_animation(const fs::path& file) {
    try {
        std::string bytes = host::base::read_file(file, kMaxInputBytes);
        if (!Archive::is_archive(bytes)) return lottie::document::looks_like_animation(bytes);
        if (has_name_of_packed(file.string())) return true;
        const Archive archive = Archive::read(std::move(bytes));
        return std::any_of(archive.animations().begin(), archive.animations().end(), [](const auto& animation) {
            return lottie::document::looks_like_animation(animation.text);
        });
    } catch (const lottie::packed::ArchiveError&) {
        return false;
    } catch (const FileError&) {
        return has_name_of_packed(file.string()) || file.extension() == ".json";
    }
}

void add_folder(const std::string& folder, Options& options) {
    if (!options.output_folder.empty() && host::base::are_same_file(folder, options.output_folder)) {
        throw Failure(ExitCode::usage, "the results would replace the files in '" + folder +
                                           "': give another folder with --out-dir, or say --in-place");
    }
    std::vector<std::string> all;
    try {
        all = host::base::files_below(folder, options.output_folder);
    } catch (const FileError& error) {
        throw Failure(ExitCode::bad_input, "'" + folder + "' " + error.what());
    }
    const std::size_t before = options.files.size();
    for (const std::string& below : all) {
        const std::string file = (fs::path(folder) / below).string();
        if (!is_animation(file)) {
            ++options.other_files;
        } else {
            options.files.push_back(file);
            options.places_below[file] = below;
        }
    }
    if (options.files.size() == before)
        throw Failure(ExitCode::bad_input, "the folder '" + folder + "' holds no Lottie file");
}

}  // namespace

Options with_files_of_folders(Options options) {
    const std::vector<std::string> given = std::exchange(options.files, {});
    for (const std::string& file : given) {
        if (file != kStandardStream && host::base::kind_of(file) == host::base::FileKind::folder) {
            options.has_folders = true;
            add_folder(file, options);
        } else {
            options.files.push_back(file);
        }
    }
    return options;
}

}  // namespace cli
