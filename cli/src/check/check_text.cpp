// The report of `exflate check` for people.
#include <cmath>
#include <cstdio>

#include "check/checked_file.h"
#include "cli/shared/console.h"
#include "cli/shared/files_at_work.h"

namespace cli {
namespace {

using lottie::looks::Finding;
using lottie::looks::Weight;
using Tone = Console::Tone;

std::string growth_by(const CheckedFile& file, const CheckedNest& nest) {
    const auto before = static_cast<double>(file.bytes);
    const double percent = 100 * (static_cast<double>(nest.bytes_after) - before) / before;
    char text[32];
    std::snprintf(text, sizeof text, "%+.1f %%", percent);
    return text;
}

std::string proof_line(const Proof& proof) {
    char text[160];
    std::snprintf(
        text, sizeof text, "pictures: %s; worst at frame %g: mean %.3f of 255, %.2f %% of pixels beyond 8, SSIM %.4f",
        proof.looks_equal ? "equal" : "different", proof.frame, proof.mean, 100 * proof.share_beyond_8, proof.ssim);
    return text;
}

std::string in_brackets(Tolerated tolerated) {
    return tolerated == Tolerated::no ? "" : tolerated == Tolerated::known ? " (known)" : " (allowed)";
}

std::string flattened_line(const FlattenedAs& flattened) {
    if (!flattened.kept_because.empty()) return "stays: " + flattened.kept_because + in_brackets(flattened.staying);
    std::string line = "becomes flat";
    for (const auto reason : flattened.mended)
        line += (line.ends_with("flat") ? ", mended: " : ", ") + std::string(code(reason));
    return line;
}

// "1 nest: 1 exact, 0 equal to the eye, 0 changing".
std::string verdicts(const FileTotals& totals) {
    std::string text = counted(totals.nests, "nest") + ": " + std::to_string(totals.exact) + " exact, " +
                       std::to_string(totals.equal_to_the_eye) + " equal to the eye, " +
                       std::to_string(totals.changing) + " changing";
    const std::size_t tolerated = totals.changing - std::min(totals.failing, totals.changing);
    return tolerated == 0 ? text : text + " (" + std::to_string(tolerated) + " known or allowed)";
}

std::string flattening(const FileTotals& totals) {
    return "made flat: " + std::to_string(totals.unnested) + " un-nested, " + std::to_string(totals.kept) + " kept; " +
           std::to_string(totals.bytes_before) + " bytes become " + std::to_string(totals.bytes_after);
}

class FileText {
  public:
    FileText(const CheckedFile& file, const TextForm& form) : file_(file), form_(form) {}

    std::string write() {
        const std::string* composition = nullptr;
        for (const CheckedNest& nest : file_.nests) {
            if (form_.quiet && !nest.fails()) continue;
            if (composition == nullptr || *composition != nest.composition) {
                line("  composition " + in_quotes(nest.composition_name) +
                     (nest.composition.empty() ? "" : " (" + nest.composition + ")"));
            }
            composition = &nest.composition;
            add_nest(nest);
        }
        if (file_.failure) {
            line("  not checked to the end: " + std::string(file_.failure->what()), Tone::error);
        } else if (!form_.quiet) {
            add_totals();
        }
        return text_.empty() ? "" : printable(file_.name) + "\n" + text_;
    }

  private:
    void line(const std::string& words, Tone tone = Tone::plain) {
        text_ += (tone == Tone::plain ? printable(words) : form_.colors.paint(tone, printable(words))) + '\n';
    }

    void add_nest(const CheckedNest& nest) {
        const Tone tone = nest.fails() ? Tone::warning : Tone::good;
        text_ += printable("    #" + std::to_string(nest.number) + " " + in_quotes(nest.report.name) + ": ") +
                 form_.colors.paint(tone, name(nest.report.verdict)) + " (" + counted(nest.layers, "layer") +
                 (nest.flattened ? "" : ", " + growth_by(file_, nest)) + ")\n";
        if (nest.flattened) line("      " + flattened_line(*nest.flattened));
        for (std::size_t i = 0; i < nest.report.findings.size(); ++i)
            add_finding(nest.report.findings[i], nest.tolerance(i));
        if (nest.proof) line("      " + proof_line(*nest.proof));
        if (!nest.proof_problem.empty()) line("      no pictures: " + nest.proof_problem);
    }

    void add_finding(const Finding& finding, Tolerated tolerated) {
        if (finding.weight == Weight::harmless && !form_.verbose) return;
        const bool counts = finding.weight == Weight::change && tolerated == Tolerated::no;
        const bool is_slight = finding.weight == Weight::slight;
        std::string words = std::string(code(finding.reason)) + ": " + finding.sentence;
        if (form_.verbose && !finding.property.empty()) words += " [" + finding.property + "]";
        words += in_brackets(tolerated);
        if (!finding.way_out.empty() && tolerated == Tolerated::no) words += " -> " + finding.way_out;
        text_ += "      ";
        text_ += counts ? form_.colors.paint(Tone::warning, "!") : is_slight ? "~" : " ";
        line(" " + words);
    }

    void add_totals() {
        const FileTotals totals = file_.totals();
        line("  " + verdicts(totals));
        if (file_.nests.empty() || !file_.nests[0].flattened) return;
        line("  " + flattening(totals));
        if (file_.proof) line("  " + proof_line(*file_.proof));
        if (!file_.proof_problem.empty()) line("  no pictures: " + file_.proof_problem);
    }

    const CheckedFile& file_;
    const TextForm& form_;
    std::string text_;
};

}  // namespace

std::string check_text(const CheckedFile& file, const TextForm& form) {
    return FileText(file, form).write();
}

std::string check_text_sum(const FileTotals& totals, const Options& options) {
    std::string text = counted_files(options, totals) + "; " + verdicts(totals) + "\n";
    return options.flatten ? text + flattening(totals) + "\n" : text;
}

}  // namespace cli
