// The files that a command works on, and where their results go.
#include "cli/shared/files_at_work.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <map>
#include <string_view>

#include "base/terminal.h"
#include "cli/shared/animation_file.h"
#include "cli/shared/workers.h"

namespace cli {
namespace {

namespace fs = std::filesystem;

// Throws Failure (usage).
void refuse_lost_results(const Options& options) {
    if (options.has_folders && !options.in_place && options.output_folder.empty() && !options.dry_run)
        throw Failure(ExitCode::usage, "a folder needs --out-dir DIR or --in-place");
    refuse_to_fill_terminal(options);
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

// The totals, then each text after its size.
std::string in_bytes(const FileResult& result) {
    const auto bytes_of = [](const auto& value) {
        return std::string_view(reinterpret_cast<const char*>(&value), sizeof value);
    };
    std::string bytes(bytes_of(result.totals));
    for (const std::string& text : result.texts) (bytes += bytes_of(text.size())) += text;
    return bytes;
}

FileResult from_bytes(ExitCode code, std::string_view bytes) {
    FileResult result{code};
    const auto take = [&bytes](auto& value) {
        if (bytes.size() < sizeof value) return false;
        std::memcpy(&value, bytes.data(), sizeof value);
        bytes.remove_prefix(sizeof value);
        return true;
    };
    take(result.totals);
    for (std::size_t size = 0; take(size); bytes.remove_prefix(std::min(size, bytes.size())))
        result.texts.emplace_back(bytes.substr(0, size));
    return result;
}

}  // namespace

void refuse_to_fill_terminal(const Options& options) {
    const bool has_place = !options.output.empty() || !options.output_folder.empty() || options.in_place;
    if (has_place || options.dry_run || !host::base::is_terminal(host::base::OutStream::output)) return;
    throw Failure(ExitCode::usage, "the result would fill the terminal: name a file with -o, or say -o - to see it");
}

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

FileResult guarded_file(const Console& console, const std::string& file, const std::function<FileResult()>& work) {
    FileResult result;
    const ExitCode code = guarded(console, shown_name(file), [&] {
        result = work();
        return result.code;
    });
    if (code == result.code) return result;
    result = {code};
    result.totals.files = result.totals.failed = 1;
    return result;
}

FileResults work_on_files(const Options& options, const Console& console,
                          const std::function<FileResult(const std::string& file)>& work,
                          const std::function<void(std::vector<std::string> texts)>& take,
                          const std::function<std::string(const std::string& file, const Failure& failure)>& crashed) {
    FileResults all;
    const auto add = [&](FileResult result) {
        all.highest = std::max(all.highest, result.code);
        all.totals += result.totals;
        take(std::move(result.texts));
    };
    const std::size_t count = options.files.size();
    if (options.jobs == 1 || count == 1 || !can_work_at_once() || have_files_in_common(options)) {
        for (const std::string& file : options.files) add(work(file));
        return all;
    }
    std::string line;
    const auto tell = [&](std::size_t i, const Ended& ended) {
        console.pass_on(ended.said);
        if (ended.code) {
            add(from_bytes(*ended.code, ended.result));
        } else {
            const Failure failure(ExitCode::failed, ended.problem);
            print_failure(console, shown_name(options.files[i]), failure);
            FileResult result{failure.code()};
            result.totals.files = result.totals.failed = 1;
            result.texts.push_back(crashed(options.files[i], failure));
            add(std::move(result));
        }
        console.show_progress(line);
    };
    const auto progress = [&](std::size_t done) {
        line = std::to_string(done) + " of " + counted(count, "file") + " done";
        console.show_progress(line);
    };
    const auto work_on_one = [&](std::size_t i) {
        const FileResult result = work(options.files[i]);
        return Done{result.code, in_bytes(result)};
    };
    work_on_all(count, {options.jobs, work_on_one, tell, progress});
    console.show_progress("");
    return all;
}

std::string counted_files(const Options& options, const FileTotals& totals) {
    std::string text = counted(totals.files, "file");
    if (options.other_files > 0) text += ", " + counted(options.other_files, "other file") + " left out";
    if (totals.failed > 0) text += ", " + std::to_string(totals.failed) + " failed";
    return text;
}

ExitCode write_all_files(const Options& options, const Console& console,
                         const std::function<FileResult(const std::string& file)>& work,
                         const std::function<std::string(const FileTotals& totals)>& sum) {
    refuse_lost_results(options);
    const FileResults all = work_on_files(
        options, console, work, [](const auto&) {}, [](const auto&, const auto&) { return std::string(); });
    if (options.files.size() > 1 || options.has_folders) {
        const Console::Tone tone = all.highest == ExitCode::done ? Console::Tone::good : Console::Tone::plain;
        console.say(tone, "exflate", counted_files(options, all.totals) + ": " + sum(all.totals));
    }
    return all.highest;
}

}  // namespace cli
