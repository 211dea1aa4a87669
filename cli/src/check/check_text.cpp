// The report of `exflate check` for people.
#include <cmath>
#include <cstdio>

#include "check/checked_file.h"
#include "cli/shared/console.h"

namespace cli {
namespace {

using lottie::looks::Finding;
using lottie::looks::Weight;

std::string growth(const CheckedFile& file, const CheckedNest& nest) {
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

std::string flattened_line(const FlattenedAs& flattened) {
    if (!flattened.kept_because.empty()) return "stays: " + printable(flattened.kept_because);
    std::string line = "becomes flat";
    for (const auto reason : flattened.mended)
        line += (line.ends_with("flat") ? ", mended: " : ", ") + std::string(code(reason));
    return line;
}

void add_finding(std::string& text, const Finding& finding) {
    text += "      " + std::string(finding.weight == Weight::change   ? "! "
                                   : finding.weight == Weight::slight ? "~ "
                                                                      : "  ");
    text += std::string(code(finding.reason)) + ": " + finding.sentence;
    if (!finding.way_out.empty()) text += " -> " + finding.way_out;
    text += '\n';
}

void add_nest(std::string& text, const CheckedFile& file, const CheckedNest& nest) {
    text += "    #" + std::to_string(nest.number) + " " + in_quotes(nest.report.name) + ": " +
            std::string(name(nest.report.verdict)) + " (" + counted(nest.layers, "layer") +
            (nest.flattened ? "" : ", " + growth(file, nest)) + ")\n";
    if (nest.flattened) text += "      " + flattened_line(*nest.flattened) + "\n";
    for (const Finding& finding : nest.report.findings) {
        if (finding.reason != lottie::looks::Reason::size) add_finding(text, finding);
    }
    if (nest.proof) text += "      " + proof_line(*nest.proof) + "\n";
    if (!nest.proof_problem.empty()) text += "      no pictures: " + printable(nest.proof_problem) + "\n";
}

void add_totals(std::string& text, const CheckedFile& file) {
    std::size_t counts[3] = {};
    for (const CheckedNest& nest : file.nests) ++counts[static_cast<std::size_t>(nest.report.verdict)];
    text += "  " + counted(file.nests.size(), "nest") + ": " + std::to_string(counts[0]) + " exact, " +
            std::to_string(counts[1]) + " equal to the eye, " + std::to_string(counts[2]) + " changing\n";
    if (file.nests.empty() || !file.nests[0].flattened) return;
    std::size_t kept = 0;
    for (const CheckedNest& nest : file.nests) kept += nest.flattened->kept_because.empty() ? 0U : 1U;
    text += "  made flat: " + std::to_string(file.nests.size() - kept) + " un-nested, " + std::to_string(kept) +
            " kept; " + std::to_string(file.bytes) + " bytes become " + std::to_string(file.nests[0].bytes_after) +
            "\n";
    if (file.proof) text += "  " + proof_line(*file.proof) + "\n";
    if (!file.proof_problem.empty()) text += "  no pictures: " + printable(file.proof_problem) + "\n";
}

}  // namespace

std::string check_text(const std::vector<CheckedFile>& files) {
    std::string text;
    for (const CheckedFile& file : files) {
        text += printable(file.name) + "\n";
        const std::string* composition = nullptr;
        for (const CheckedNest& nest : file.nests) {
            if (composition == nullptr || *composition != nest.composition) {
                text += "  composition " + in_quotes(nest.composition_name) +
                        (nest.composition.empty() ? "" : " (" + printable(nest.composition) + ")") + "\n";
            }
            composition = &nest.composition;
            add_nest(text, file, nest);
        }
        if (file.failure) {
            text += "  not checked to the end: " + printable(file.failure->what()) + "\n";
        } else {
            add_totals(text, file);
        }
    }
    return printable_lines(text);
}

}  // namespace cli
