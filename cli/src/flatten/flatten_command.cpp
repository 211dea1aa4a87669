// `exflate flatten`: nested to flat, with the look kept.
#include "commands.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "cli/flatten/flattening.h"
#include "cli/shared/animation_file.h"
#include "cli/shared/file_io.h"
#include "pictures/drawing_process.h"
#include "shared/installed_parts.h"

namespace cli {
namespace {

using lottie::looks::Finding;
using lottie::looks::Weight;
using Tone = Console::Tone;

// Of the processor's time, for the pictures of one animation.
constexpr std::chrono::seconds kMaxTime(120);

std::string reasons(const std::vector<lottie::looks::Reason>& mended) {
    std::string list;
    for (const auto reason : mended) list += (list.empty() ? "" : ", ") + std::string(code(reason));
    return list;
}

// Why a nest had to stay, by its first weighty reason.
std::string main_reason(const FlattenedNest& nest) {
    for (const Weight weight : {Weight::change, Weight::slight}) {
        for (const Finding& finding : nest.findings) {
            if (finding.weight == weight) return std::string(code(finding.reason)) + ": " + finding.sentence;
        }
    }
    return "";
}

std::string nest_line(const FlattenedNest& nest) {
    const std::string place = nest.composition.empty() ? "" : " in composition " + in_quotes(nest.composition_name);
    std::string line = "nest #" + std::to_string(nest.number) + " " + in_quotes(nest.name) + place;
    if (nest.is_kept) return line + " stays: " + main_reason(nest);
    line += " un-nested: " + std::string(name(nest.verdict));
    return nest.mended.empty() ? line : line + "; mended: " + reasons(nest.mended);
}

std::string last_line(const Flattened& flattened) {
    if (flattened.nests_left == 0) return "0 pre-comps left, look kept";
    std::string kept;
    for (const FlattenedNest& nest : flattened.nests) {
        if (nest.is_kept) kept += (kept.empty() ? ": " : ", ") + in_quotes(nest.name) + " (" + main_reason(nest) + ")";
    }
    return counted(flattened.nests_left, "pre-comp") + " left" + kept;
}

class Flatten {
  public:
    Flatten(const Options& options, const Console& console, const host::runner::PluginModule& plugin)
        : options_(options), console_(console), plugin_(plugin) {}

    ExitCode one_file(const std::string& file) {
        try {
            return flatten_and_write(file);
        } catch (const Failure& failure) {
            print_failure(console_, shown_name(file), failure);
            return failure.code();
        } catch (const std::exception& unforeseen) {  // such as running out of memory
            print_failure(console_, shown_name(file), Failure(ExitCode::failed, unforeseen.what()));
            return ExitCode::failed;
        }
    }

  private:
    ExitCode flatten_and_write(const std::string& file) {
        AnimationFile input(file, options_.animation);
        std::vector<Flattened> all;
        std::vector<lottie::document::Written> texts;
        ExitCode code = ExitCode::done;
        for (std::size_t i = 0; i < input.count(); ++i) {
            all.push_back(flatten_animation(input.text(i), plugin_, options_));
            texts.emplace_back().refer(all.back().text);
            if (all.back().nests_left > 0) code = ExitCode::look_changes;
        }
        const lottie::document::Written bytes = input.with(std::move(texts));
        write(file, bytes.pieces());
        for (std::size_t i = 0; i < input.count(); ++i) {
            tell(input.label(i), all[i]);
            if (options_.prove) console_.say(Tone::plain, input.label(i), proof(input.text(i), all[i].text));
        }
        return code;
    }

    // How far apart the pictures of the whole are.
    std::string proof(const std::string& before, const std::string& after) const {
        try {
            lottie::pictures::DrawingBudget budget{kMaxTime};
            const auto apart = lottie::pictures::compare_in_child(before, after, {}, budget);
            char text[160];
            std::snprintf(text, sizeof text,
                          "pictures %s: %d frames, worst frame %d: mean difference %.3f, %.2f %% of pixels, SSIM %.4f",
                          apart.looks_equal ? "look equal" : "differ", apart.frames, apart.worst_frame,
                          apart.worst.mean, 100 * apart.worst.share_beyond_8, apart.worst.ssim);
            return text;
        } catch (const std::runtime_error& problem) {
            return std::string("no pictures: ") + problem.what();
        }
    }

    void tell(const std::string& label, const Flattened& flattened) const {
        print_warnings(console_, label, flattened.warnings);
        for (const FlattenedNest& nest : flattened.nests) console_.say(Tone::plain, label, nest_line(nest));
        console_.say(flattened.nests_left == 0 ? Tone::good : Tone::warning, label, last_line(flattened));
    }

    void write(const std::string& file, host::base::Pieces bytes) const {
        if (options_.in_place) return write_result(file, bytes);
        if (options_.output_folder.empty())
            return write_result(options_.output.empty() ? std::string(kStandardStream) : options_.output, bytes);
        prepare_folder(options_.output_folder);
        write_result((std::filesystem::path(options_.output_folder) / std::filesystem::path(file).filename()).string(),
                     bytes);
    }

    const Options& options_;
    const Console& console_;
    const host::runner::PluginModule& plugin_;
};

}  // namespace

ExitCode flatten(const Options& options, const Console& console) {
    const host::runner::PluginModule plugin = load_plugin();
    Flatten work(options, console, plugin);
    ExitCode highest = ExitCode::done;
    for (const std::string& file : options.files) highest = std::max(highest, work.one_file(file));
    return highest;
}

}  // namespace cli
