// The files that a command works on, and where their results go.
#include "cli/shared/files_at_work.h"

#include <algorithm>
#include <filesystem>
#include <map>

#include "cli/shared/animation_file.h"
#include "cli/shared/workers.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

// Throws Failure (usage).
void refuse_lost_results(const Options& options) {
    if (options.has_folders && !options.in_place && options.output_folder.empty() && !options.dry_run)
        throw Failure(ExitCode::usage, "a folder needs --out-dir DIR or --in-place");
    if (options.output_folder.empty()) return;
    std::map<std::string, std::string> taken;
    for (const std::string& file : options.files) {
        const auto [other, is_new] = taken.emplace(output_for(options, file), file);
        if (is_new) continue;
        throw Failure(ExitCode::usage, "'" + other->second + "' and '" + file + "' would both become '" + other->first +
                                           "': run them one by one");
    }
}

bool have_files_in_common(const Options& options) {
    FileUse use;
    for (std::size_t i = 0; i < options.files.size(); ++i) {
        const std::string& file = options.files[i];
        if (!use.note(i, file) || !use.note(i, output_for(options, file))) return true;
    }
    return false;
}

ExitCode work_at_once(const Options& options, const Console& console,
                      const std::function<ExitCode(const std::string& file)>& work) {
    const std::size_t count = options.files.size();
    ExitCode highest = ExitCode::done;
    std::string line;
    work_on_all(count, {.most_at_once = options.jobs,
                        .work = [&](std::size_t i) { return work(options.files[i]); },
                        .tell =
                            [&](std::size_t i, const Ended& ended) {
                                console.pass_on(ended.said);
                                if (!ended.code) {
                                    print_failure(console, shown_name(options.files[i]),
                                                  Failure(ExitCode::failed, ended.problem));
                                }
                                highest = std::max(highest, ended.code.value_or(ExitCode::failed));
                                console.show_progress(line);
                            },
                        .progress =
                            [&](std::size_t done) {
                                line = std::to_string(done) + " of " + counted(count, "file") + " done";
                                console.show_progress(line);
                            }});
    console.show_progress("");
    return highest;
}

}  // namespace

std::string output_for(const Options& options, const std::string& file) {
    if (options.in_place) return file;
    if (!options.output_folder.empty()) {
        const auto below = options.places_below.find(file);
        return (fs::path(options.output_folder) /
                (below == options.places_below.end() ? fs::path(file).filename() : fs::path(below->second)))
            .string();
    }
    return options.output.empty() ? std::string(kStandardStream) : options.output;
}

void write_output(const Options& options, const Console& console, const std::string& file, host::base::Pieces bytes) {
    const std::string output = output_for(options, file);
    if (!options.output_folder.empty()) prepare_folder(fs::path(output).parent_path().string());
    write_result(console, output, bytes, options.force);
}

ExitCode work_on_files(const Options& options, const Console& console,
                       const std::function<ExitCode(const std::string& file)>& work) {
    refuse_lost_results(options);
    if (options.jobs > 1 && options.files.size() > 1 && can_work_at_once() && !have_files_in_common(options))
        return work_at_once(options, console, work);
    ExitCode highest = ExitCode::done;
    for (const std::string& file : options.files) highest = std::max(highest, work(file));
    return highest;
}

}  // namespace cli
