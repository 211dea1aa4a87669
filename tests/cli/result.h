// What a test asks about a written animation.
#pragma once

#include <rapidjson/document.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace test {

inline rapidjson::Document parsed(const std::string& text) {
    rapidjson::Document document;
    if (document.Parse(text.data(), text.size()).HasParseError())
        throw std::runtime_error("no JSON: " + text.substr(0, 200));
    return document;
}

// A text member of each object.
inline std::vector<std::string> members_of(const rapidjson::Value& objects, const char* member) {
    std::vector<std::string> texts;
    for (const auto& object : objects.GetArray()) texts.emplace_back(object[member].GetString());
    return texts;
}

inline std::vector<std::string> names_of(const rapidjson::Value& layers) {
    return members_of(layers, "nm");
}

// Names of the main composition's layers, top to bottom.
inline std::vector<std::string> layer_names(const std::string& text) {
    return names_of(parsed(text)["layers"]);
}

// Ids of the assets.
inline std::vector<std::string> asset_ids(const std::string& text) {
    const rapidjson::Document document = parsed(text);
    std::vector<std::string> ids;
    for (const auto& asset : document["assets"].GetArray()) ids.emplace_back(asset["id"].GetString());
    return ids;
}

// Names of the layers of one asset.
inline std::vector<std::string> layer_names_in(const std::string& text, const std::string& id) {
    const rapidjson::Document document = parsed(text);
    for (const auto& asset : document["assets"].GetArray()) {
        if (asset["id"].GetString() == id) return names_of(asset["layers"]);
    }
    throw std::runtime_error("no asset " + id);
}

}  // namespace test
