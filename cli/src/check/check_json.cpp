// The report of `exflate check` for programs.
#include "check/check_json.h"

#include "check/checked_file.h"

namespace cli {
namespace {

constexpr int kVersion = 1;

void add_finding(JsonWriter& json, const lottie::looks::Finding& finding) {
    constexpr const char* kWeights[] = {"harmless", "slight", "change"};
    json.begin_object();
    json.add("code", std::string(code(finding.reason)));
    json.add("weight", kWeights[static_cast<std::size_t>(finding.weight)]);
    json.add("sentence", finding.sentence);
    if (!finding.way_out.empty()) json.add("way_out", finding.way_out);
    if (!finding.layer.empty()) json.add("layer", finding.layer);
    if (!finding.property.empty()) json.add("property", finding.property);
    if (finding.frame) json.add("frame", *finding.frame);
    json.end_object();
}

void add_flattened(JsonWriter& json, const FlattenedAs& flattened) {
    json.add("becomes", flattened.kept_because.empty() ? "flat" : "kept");
    if (!flattened.kept_because.empty()) return json.add("kept_because", flattened.kept_because);
    json.key("mended");
    json.begin_array();
    for (const auto reason : flattened.mended) json.add_element(std::string(code(reason)));
    json.end_array();
}

}  // namespace

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
    for (const auto& finding : nest.report.findings) add_finding(json, finding);
    json.end_array();
    if (nest.proof) add_proof(json, *nest.proof);
    if (!nest.proof_problem.empty()) json.add("pictures_problem", nest.proof_problem);
}

std::string check_json(const std::vector<CheckedFile>& files) {
    JsonWriter json;
    json.begin_object();
    json.add("version", std::size_t{kVersion});
    json.key("files");
    json.begin_array();
    for (const CheckedFile& file : files) {
        json.begin_object();
        json.add("file", file.name);
        json.add("bytes", file.bytes);
        if (file.failure) {
            json.add_null("verdict");
            add_error(json, *file.failure);
        } else {
            json.add("verdict", std::string(name(file.verdict())));
        }
        if (file.proof) add_proof(json, *file.proof);
        if (!file.proof_problem.empty()) json.add("pictures_problem", file.proof_problem);
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
    json.end_array();
    json.end_object();
    return json.text();
}

}  // namespace cli
