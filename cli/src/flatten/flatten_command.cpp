// `exflate flatten`: nested to flat, with the look kept.
#include "commands.h"

#include <cstdio>
#include <optional>

#include "cli/flatten/flattening.h"
#include "cli/shared/animation_file.h"
#include "cli/shared/files_at_work.h"
#include "cli/shared/selection.h"
#include "cli/shared/trial.h"
#include "pictures/drawing_process.h"
#include "shared/installed_parts.h"

namespace cli {
namespace {

using Tone = Console::Tone;

FileTotals totals_of_all(const std::vector<Flattened>& animations, std::size_t bytes_before, std::size_t bytes_after) {
    FileTotals totals;
    for (const Flattened& flattened : animations) totals += totals_of(flattened);
    totals.files = 1;
    totals.bytes_before = bytes_before;
    totals.bytes_after = bytes_after;
    return totals;
}

std::string sum(const FileTotals& totals) {
    return std::to_string(totals.unnested) + " of " + counted(totals.nests, "nest") + " un-nested, " +
           std::to_string(totals.mended) + " of them mended, " + std::to_string(totals.kept) + " kept, " +
           counted(totals.left, "pre-comp") + " left; " + growth(totals.bytes_before, totals.bytes_after);
}

class Flatten {
  public:
    Flatten(const Options& options, const Console& console, const host::runner::PluginModule& plugin)
        : options_(options), console_(console), plugin_(plugin) {}

    FileResult one_file(const std::string& file) {
        return guarded_file(console_, file, [&] { return flatten_and_write(file); });
    }

  private:
    FileResult flatten_and_write(const std::string& file) {
        AnimationFile input(file, options_.animation);
        std::vector<Flattened> all;
        std::vector<lottie::document::OutputText> texts;
        std::optional<SelectionNotFound> missing;
        bool any_matches = false;
        for (std::size_t i = 0; i < input.count(); ++i) {
            try {
                all.push_back(flatten_animation(input.text(i), plugin_, options_, input.references()));
                any_matches = true;
            } catch (const SelectionNotFound& not_here) {
                missing = not_here;
                all.push_back({input.text(i), {}, 0, names_in(input.text(i), input.references()), {}, not_here.what()});
            }
            texts.emplace_back().refer(all.back().text);
        }
        if (!any_matches) throw SelectionNotFound(*missing);
        std::vector<CurrentNames> names = {input.names_in_others()};
        for (const Flattened& flattened : all) names.push_back(flattened.layer_names);
        const NewNames new_names = new_layer_names(names);
        for (const lottie::looks::Finding& loss : new_names.losses)
            console_.say(Tone::warning, input.label(0), loss.sentence + ": " + loss.way_out);
        const lottie::document::OutputText bytes = input.with(std::move(texts), new_names.names);
        if (!options_.dry_run) write_output(options_, console_, file, bytes.pieces());
        lottie::pictures::DrawingBudget budget{options_.picture_time};
        FileResult result{ExitCode::done, totals_of_all(all, input.byte_count(), bytes.size())};
        for (std::size_t i = 0; i < input.count(); ++i) {
            if (!all[i].skipped.empty()) {
                console_.say(Tone::plain, input.label(i), "skipped: " + all[i].skipped);
                continue;
            }
            if (!all[i].succeeded()) result.code = ExitCode::look_changes;
            if (options_.prove && !prove_whole(input.label(i), input.text(i), all[i].text, budget))
                result.code = ExitCode::look_changes;
            tell(input.label(i), all[i]);
        }
        return result;
    }

    // Reports how much the pictures of the whole differ. False if people would see it.
    bool prove_whole(const std::string& label, const std::string& before, const std::string& after,
                     lottie::pictures::DrawingBudget& budget) const {
        try {
            const auto apart = lottie::pictures::compare_in_child(before, after, {}, budget);
            char text[160];
            std::snprintf(text, sizeof text,
                          "pictures %s: %d frames, worst frame %d: mean difference %.3f, %.2f %% of pixels, SSIM %.4f",
                          apart.looks_equal ? "look equal" : "differ", apart.frames, apart.worst_frame,
                          apart.worst.mean, 100 * apart.worst.share_beyond_8, apart.worst.ssim);
            console_.say(apart.looks_equal ? Tone::plain : Tone::warning, label, text);
            return apart.looks_equal;
        } catch (const std::runtime_error& problem) {
            console_.say(Tone::plain, label, std::string("no pictures: ") + problem.what());
            return true;
        }
    }

    void tell(const std::string& label, const Flattened& flattened) const {
        print_warnings(console_, label, flattened.warnings);
        if (options_.verbose)
            for (const FlattenedNest& nest : flattened.nests) console_.say(Tone::plain, label, nest_line(nest));
        console_.say(flattened.succeeded() ? Tone::good : Tone::warning, label, last_line(flattened));
    }

    const Options& options_;
    const Console& console_;
    const host::runner::PluginModule& plugin_;
};

}  // namespace

ExitCode flatten(const Options& options, const Console& console) {
    const host::runner::PluginModule plugin = load_plugin();
    Flatten work(options, console, plugin);
    return write_all_files(
        options, console, [&](const std::string& file) { return work.one_file(file); }, sum);
}

}  // namespace cli
