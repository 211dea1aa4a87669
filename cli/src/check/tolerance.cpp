// Findings that do not make a check fail because they are known or allowed.
#include "check/tolerance.h"

#include <rapidjson/document.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <utility>

#include "base/files.h"
#include "base/unicode.h"
#include "cli/shared/file_io.h"

namespace cli {
namespace {

using lottie::looks::Weight;

// What stays the same if a nest moves in the stack or a sentence is reworded.
class Identity {
  public:
    Identity(const std::string& file, std::string_view composition_name, std::string_view nest) {
        add(std::filesystem::path(file).lexically_normal().string());
        add(composition_name);
        add(nest);
    }

    std::string finding(std::string_view code, std::string_view layer, std::string_view property) const {
        Identity identity = *this;
        for (const std::string_view part : {code, layer, property}) identity.add(part);
        return identity.text_;
    }
    std::string staying(std::string_view because) const {
        Identity identity = *this;
        identity.add("kept");
        identity.add(because.substr(0, because.find(':')));
        return identity.text_;
    }

  private:
    // As it comes back from JSON.
    void add(std::string_view part) { text_ += host::base::valid_utf8(part) + '\n'; }

    std::string text_;
};

Failure not_a_report(const std::string& file) {
    return {ExitCode::bad_input, "'" + file + "' is not what exflate check --format json writes"};
}

// A member of a report; another program may have changed it.
std::string text_of(const rapidjson::Value& object, const char* member) {
    const auto found = object.FindMember(member);
    if (found == object.MemberEnd() || !found->value.IsString()) return "";
    return {found->value.GetString(), found->value.GetStringLength()};
}

template <class Take>
void for_each(const rapidjson::Value& object, const char* member, Take take) {
    const auto found = object.FindMember(member);
    if (found == object.MemberEnd() || !found->value.IsArray()) return;
    for (const auto& element : found->value.GetArray()) {
        if (element.IsObject()) take(element);
    }
}

}  // namespace

Tolerance::Tolerance(const std::string& baseline, std::vector<lottie::looks::Reason> allowed)
    : allowed_(std::move(allowed)) {
    if (baseline.empty()) return;
    rapidjson::Document report;
    try {
        report.Parse<rapidjson::kParseIterativeFlag>(read_whole(baseline).c_str());
    } catch (const host::base::FileError& error) {
        throw Failure(ExitCode::bad_input, "'" + baseline + "' " + error.what());
    }
    if (report.HasParseError() || !report.IsObject() || !report.HasMember("files") || !report["files"].IsArray())
        throw not_a_report(baseline);
    for_each(report, "files", [&](const auto& file) {
        for_each(file, "nests", [&](const auto& nest) {
            const Identity identity(text_of(file, "file"), text_of(nest, "composition_name"), text_of(nest, "name"));
            if (text_of(nest, "becomes") == "kept") ++known_[identity.staying(text_of(nest, "kept_because"))];
            for_each(nest, "reasons", [&](const auto& finding) {
                if (text_of(finding, "weight") != "change") return;
                ++known_[identity.finding(text_of(finding, "code"), text_of(finding, "layer"),
                                          text_of(finding, "property"))];
            });
        });
    });
}

void Tolerance::mark(CheckedFile& file) const {
    std::map<std::string, std::size_t> met;
    const auto tolerance = [&](const std::string& identity, auto is_allowed) {
        if (std::any_of(allowed_.begin(), allowed_.end(), is_allowed)) return Tolerated::allowed;
        const auto known = known_.find(identity);
        return known != known_.end() && met[identity]++ < known->second ? Tolerated::known : Tolerated::no;
    };
    for (CheckedNest& nest : file.nests) {
        const Identity identity(file.name, nest.composition_name, nest.report.name);
        for (const auto& finding : nest.report.findings) {
            nest.tolerated.push_back(
                finding.weight != Weight::change
                    ? Tolerated::no
                    : tolerance(identity.finding(code(finding.reason), finding.layer, finding.property),
                                [&](auto reason) { return reason == finding.reason; }));
        }
        if (!nest.is_kept()) continue;
        const std::string& because = nest.flattened->kept_because;
        nest.flattened->staying = tolerance(identity.staying(because), [&](auto reason) {
            return because.starts_with(std::string(code(reason)) + ':');
        });
    }
}

}  // namespace cli
