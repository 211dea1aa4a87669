// The report of `exflate check` for programs.
#include "check/check_json.h"

#include "check/checked_file.h"

namespace cli {
namespace {

constexpr int kVersion = 1;

void add_tolerance(JsonWriter& json, Tolerated tolerated) {
    if (tolerated != Tolerated::no) json.add("tolerated", tolerated == Tolerated::known ? "known" : "allowed");
}

void add_finding(JsonWriter& json, const lottie::looks::Finding& finding, Tolerated tolerated) {
    constexpr const char* kWeights[] = {"harmless", "slight", "change"};
    json.begin_object();
    json.add("code", std::string(code(finding.reason)));
    json.add("weight", kWeights[static_cast<std::size_t>(finding.weight)]);
    json.add("sentence", finding.sentence);
    if (!finding.way_out.empty()) json.add("way_out", finding.way_out);
    if (!finding.layer.empty()) json.add("layer", finding.layer);
    if (!finding.property.empty()) json.add("property", finding.property);
    if (finding.frame) json.add("frame", *finding.frame);
    add_tolerance(json, tolerated);
    json.end_object();
}

void add_flattened(JsonWriter& json, const FlattenedAs& flattened) {
    json.add("becomes", flattened.kept_because.empty() ? "flat" : "kept");
    if (!flattened.kept_because.empty()) {
        json.add("kept_because", flattened.kept_because);
        return add_tolerance(json, flattened.staying);
    }
    json.key("mended");
    json.begin_array();
    for (const auto reason : flattened.mended) json.add_element(std::string(code(reason)));
    json.end_array();
}

void add_proof(JsonWriter& json, const Proof& proof) {
    json.key("pictures");
    json.begin_object();
    json.add("equal", proof.looks_equal);
    json.add("worst_frame", proof.frame);
    json.add_exact("mean", proof.mean);
    json.add_exact("share_beyond_8", proof.share_beyond_8);
    json.add_exact("ssim", proof.ssim);
    json.add("frames", proof.frames);
    json.end_object();
}

}  // namespace

void add_pictures(JsonWriter& json, const std::optional<Proof>& proof, const std::string& problem) {
    if (proof) add_proof(json, *proof);
    if (!problem.empty()) json.add("pictures_problem", problem);
}

void add_nest(JsonWriter& json, const CheckedNest& nest) {
    if (nest.composition.empty()) {
        json.add_null("composition");
    } else {
        json.add("composition", nest.composition);
    }
    json.add("composition_name", nest.composition_name);
    json.add("number", nest.number);
    json.add("name", nest.report.name);
    json.add("layers", nest.layers);
    json.add("bytes_after", nest.bytes_after);
    json.add("verdict", std::string(name(nest.report.verdict)));
    if (nest.flattened) add_flattened(json, *nest.flattened);
    json.key("reasons");
    json.begin_array();
    for (std::size_t i = 0; i < nest.report.findings.size(); ++i)
        add_finding(json, nest.report.findings[i], nest.tolerance(i));
    json.end_array();
    add_pictures(json, nest.proof, nest.proof_problem);
}

namespace {

void add_file(JsonWriter& json, const CheckedFile& file) {
    json.begin_object();
    json.add("file", file.name);
    json.add("bytes", file.bytes);
    if (file.failure) {
        json.add_null("verdict");
        add_error(json, *file.failure);
    } else {
        json.add("verdict", std::string(name(file.verdict())));
    }
    add_pictures(json, file.proof, file.proof_problem);
    json.key("nests");
    json.begin_array();
    for (const CheckedNest& nest : file.nests) {
        json.begin_object();
        add_nest(json, nest);
        json.end_object();
    }
    json.end_array();
    json.end_object();
}

void add_totals(JsonWriter& json, const FileTotals& totals, const Options& options) {
    json.key("totals");
    json.begin_object();
    json.add("files", totals.files);
    json.add("other_files", options.other_files);
    json.add("failed", totals.failed);
    json.add("nests", totals.nests);
    json.add("exact", totals.exact);
    json.add("equal_to_the_eye", totals.equal_to_the_eye);
    json.add("changing", totals.changing);
    json.add("failing", totals.failing);
    json.add("bytes", totals.bytes_before);
    if (options.flatten) {
        json.add("bytes_after", totals.bytes_after);
        json.add("flat", totals.unnested);
        json.add("mended", totals.mended);
        json.add("kept", totals.kept);
        json.add("left", totals.left);
    }
    json.end_object();
}

}  // namespace

std::string check_json(const CheckedFile& file) {
    JsonWriter json;
    add_file(json, file);
    return json.text();
}

std::string check_json_report(const std::vector<std::string>& parts, const FileTotals& totals, const Options& options) {
    JsonWriter json;
    json.begin_object();
    json.add("version", std::size_t{kVersion});
    json.add_array("files", parts);
    add_totals(json, totals, options);
    json.end_object();
    return json.text();
}

}  // namespace cli
