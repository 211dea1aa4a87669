// What people are told about one file, on standard error.
#include "shared/summary.h"

#include <cstdio>

#include "cli/shared/animation_file.h"

namespace cli {
namespace {

using Tone = Console::Tone;

std::string sources(const Record& record) {
    const std::string noun = "nested composition";
    if (record.sources_deleted == 0) return counted(record.sources_kept, noun) + " kept";
    if (record.sources_kept == 0) return counted(record.sources_deleted, noun) + " deleted";
    return counted(record.sources_deleted, noun) + " deleted, " + std::to_string(record.sources_kept) + " kept";
}

std::string growth(Sizes sizes) {
    const auto before = static_cast<double>(sizes.before);
    const double percent = before > 0 ? 100 * (static_cast<double>(sizes.after) - before) / before : 0;
    char text[96];
    std::snprintf(text, sizeof text, "%zu bytes became %zu (%+.1f %%)", sizes.before, sizes.after, percent);
    return text;
}

std::string written_to(const std::string& output) {
    return output.empty() ? "" : "; written to " + output;
}

std::string ledger_line(const LedgerEntry& entry) {
    std::string line = "nest #" + std::to_string(entry.number) + " " + in_quotes(entry.name) + " " +
                       (entry.kept_because.empty() ? "un-nested" : "kept") + ": " + std::string(name(entry.verdict)) +
                       ", " + counted(entry.layers, "layer");
    if (entry.bytes) {
        char text[40];
        std::snprintf(text, sizeof text, ", %+lld bytes", *entry.bytes);
        line += text;
    }
    return line + (entry.kept_because.empty() ? "" : "; " + entry.kept_because);
}

}  // namespace

void tell_messages(const Console& console, const std::string& file, const Record& record) {
    for (const host::scriptui::Alert& alert : record.alerts) {
        console.say(Tone::warning, file, (alert.title.empty() ? "" : alert.title + ": ") + alert.message);
    }
    for (const std::string& report : record.reports) console.say(Tone::warning, file, "the plug-in says: " + report);
}

void tell_success(const Console& console, const std::string& file, const std::string& composition, const Record& record,
                  Sizes sizes, const std::string& output) {
    std::string sentence = counted(record.nests, "nest") + " of composition " + in_quotes(composition) +
                           " un-nested, " + counted(record.layers_made, "layer") + " made, " + sources(record) + ", " +
                           growth(sizes);
    console.say(Tone::good, file, sentence + written_to(output));
}

void tell_packed(const Console& console, const std::string& file, Sizes sizes, const std::string& output) {
    console.say(Tone::good, file, "packed, " + growth(sizes) + written_to(output));
}

void tell_too_large(const Console& console, const std::string& file, std::size_t bytes) {
    console.say(Tone::warning, file,
                "has " + std::to_string(bytes) + " bytes now, and a sticker is taken with " +
                    std::to_string(kMostStickerBytes) + " at the most: --max-growth or --layer un-nest less");
}

void tell_ledger(const Console& console, const std::string& file, const Ledger& ledger) {
    for (const LedgerEntry& entry : ledger.entries) console.say(Tone::plain, file, ledger_line(entry));
}

void tell_log(const Console& console, const std::string& file, const Record& record) {
    for (const std::string& sentence : record.log) console.say(Tone::plain, file, sentence);
}

void tell_failure(const Console& console, const std::string& file, const Failure& failure) {
    console.say(Tone::error, file + failure.place(), failure.what());
}

}  // namespace cli
