// What `exflate run` says about one file, on standard error.
#include "run/summary.h"

#include <cstdio>

#include "cli/shared/animation_file.h"

namespace cli {
namespace {

using Tone = Console::Tone;

std::string sources(const UnnestRecord& record) {
    const std::string noun = "nested composition";
    if (record.sources_deleted == 0) return counted(record.sources_kept, noun) + " kept";
    if (record.sources_kept == 0) return counted(record.sources_deleted, noun) + " deleted";
    return counted(record.sources_deleted, noun) + " deleted, " + std::to_string(record.sources_kept) + " kept";
}

std::string written_to(const std::string& output) {
    return output.empty() ? "" : "; written to " + output;
}

std::string judged_nest_line(const JudgedNest& nest) {
    std::string line = place_of(nest) + " " + (nest.kept_because.empty() ? "un-nested" : "kept") + ": " +
                       std::string(name(nest.verdict)) + ", " + counted(nest.layers, "layer");
    if (nest.bytes) {
        char text[40];
        std::snprintf(text, sizeof text, ", %+lld bytes", *nest.bytes);
        line += text;
    }
    return line + (nest.kept_because.empty() ? "" : "; " + nest.kept_because);
}

}  // namespace

void print_messages(const Console& console, const std::string& file, const UnnestRecord& record) {
    for (const host::scriptui::Alert& alert : record.alerts) {
        console.say(Tone::warning, file, in_words(alert));
    }
    for (const std::string& report : record.reports) console.say(Tone::warning, file, "the plug-in says: " + report);
}

void print_success(const Console& console, const std::string& file, const std::string& composition,
                   const UnnestRecord& record, Sizes sizes, const std::string& output) {
    std::string sentence = counted(record.nests, "nest") + " of composition " + in_quotes(composition) +
                           " un-nested, " + counted(record.layers_made, "layer") + " made, " + sources(record) + ", " +
                           growth(sizes.before, sizes.after);
    console.say(record.nests > 0 ? Tone::good : Tone::warning, file, sentence + written_to(output));
}

void print_packed(const Console& console, const std::string& file, Sizes sizes, const std::string& output) {
    console.say(Tone::good, file, "packed, " + growth(sizes.before, sizes.after) + written_to(output));
}

void print_too_large(const Console& console, const std::string& file, std::size_t bytes) {
    console.say(Tone::warning, file,
                "has " + std::to_string(bytes) + " bytes now, and a sticker may have " +
                    std::to_string(kMaxStickerBytes) + " at most: un-nest less with --max-growth or --layer");
}

void print_judged_nests(const Console& console, const std::string& file, const std::vector<JudgedNest>& nests,
                        bool all) {
    for (const JudgedNest& nest : nests) {
        if (all || !nest.kept_because.empty()) console.say(Tone::plain, file, judged_nest_line(nest));
    }
}

std::string sum_of_runs(const FileTotals& totals) {
    return counted(totals.unnested, "nest") + " un-nested" +
           (totals.kept > 0 ? ", " + std::to_string(totals.kept) + " kept" : "") + ", " +
           growth(totals.bytes_before, totals.bytes_after);
}

void print_log(const Console& console, const std::string& file, const UnnestRecord& record) {
    for (const std::string& sentence : record.log) console.say(Tone::plain, file, sentence);
}

}  // namespace cli
