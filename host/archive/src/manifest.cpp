// The manifest of a .lottie archive: which animations are in it.
#include "manifest.h"

#include <rapidjson/document.h>
#include <rapidjson/error/en.h>

#include <algorithm>

#include "archive/archive_error.h"

namespace host::archive {
namespace {

using rapidjson::Value;

constexpr std::string_view kFirstFolder = "animations/";
constexpr std::string_view kSecondFolder = "a/";

[[noreturn]] void refuse(const std::string& sentence) {
    throw ArchiveError(sentence, std::string(kManifest));
}

// "2" or "2.1"; the first version wrote all kinds of things here.
bool is_second_version(const Value& manifest) {
    const auto version = manifest.FindMember("version");
    if (version == manifest.MemberEnd()) return false;
    if (version->value.IsNumber()) return version->value.GetDouble() >= 2 && version->value.GetDouble() < 3;
    if (!version->value.IsString()) return false;
    const std::string_view text(version->value.GetString(), version->value.GetStringLength());
    return text == "2" || text.starts_with("2.");
}

std::string id_of(const Value& animation) {
    if (!animation.IsObject()) refuse("an animation in it is no object: pack the file again");
    const auto id = animation.FindMember("id");
    if (id == animation.MemberEnd() || !id->value.IsString() || id->value.GetStringLength() == 0) {
        refuse("an animation in it has no id: give it the name of its entry without .json");
    }
    return {id->value.GetString(), id->value.GetStringLength()};
}

}  // namespace

Manifest read_manifest(const std::string& text) {
    rapidjson::Document json;
    json.Parse<rapidjson::kParseIterativeFlag>(text.data(), text.size());
    if (json.HasParseError()) {
        refuse(std::string("is no JSON: ") + rapidjson::GetParseError_En(json.GetParseError()) + " (byte " +
               std::to_string(json.GetErrorOffset() + 1) + ")");
    }
    const auto animations = json.IsObject() ? json.FindMember("animations") : Value::MemberIterator();
    if (!json.IsObject() || animations == json.MemberEnd() || !animations->value.IsArray()) {
        refuse("has no list named \"animations\": pack the file again");
    }
    Manifest manifest;
    for (const Value& animation : animations->value.GetArray()) {
        std::string id = id_of(animation);
        if (std::find(manifest.ids.begin(), manifest.ids.end(), id) != manifest.ids.end()) {
            refuse("two animations in it have one id: give each its own");
        }
        manifest.ids.push_back(std::move(id));
    }
    if (manifest.ids.empty()) refuse("lists no animation: there is nothing to work on");
    manifest.folders = {kFirstFolder, kSecondFolder};
    if (is_second_version(json)) std::swap(manifest.folders[0], manifest.folders[1]);
    return manifest;
}

}  // namespace host::archive
