// What lies inside a layer: expressions, keyframes, and whether it changes over time.
#include "content.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace lottie::looks {
namespace {

// Calls visit(object, path) for every object inside, outer ones first.
template <class Visit>
void walk(const Json& value, const std::string& path, Visit& visit) {
    if (value.IsObject()) {
        visit(value, path);
        for (const auto& entry : value.GetObject()) {
            if (!entry.value.IsObject() && !entry.value.IsArray()) continue;
            const std::string key(entry.name.GetString(), entry.name.GetStringLength());
            walk(entry.value, path.empty() ? key : path + "." + key, visit);
        }
    } else if (value.IsArray()) {
        for (rapidjson::SizeType i = 0; i < value.Size(); ++i) {
            if (!value[i].IsObject() && !value[i].IsArray()) return;
            walk(value[i], path + "[" + std::to_string(i) + "]", visit);
        }
    }
}

bool has_expression_or_keys(const Json& layer) {
    return !expressions(layer).empty() || !key_times(layer).empty();
}

bool changes(const Scene& scene, const SceneLayer& layer, std::unordered_set<const Stack*>& seen) {
    if (has_expression_or_keys(*layer.json)) return true;
    if (layer.type != LayerType::nest) return false;
    const Stack* inside = scene.find(layer.source);
    if (inside == nullptr || layer.source.empty() || !seen.insert(inside).second) return false;
    for (const SceneLayer& inner : inside->layers) {
        if (!inner.draws() && !inner.is_matte_source) continue;
        const double from = (layer.in - layer.start) / layer.stretch;
        const double to = (layer.out - layer.start) / layer.stretch;
        if (inner.in > from || inner.out < to || changes(scene, inner, seen)) return true;
    }
    return false;
}

}  // namespace

std::vector<Expression> expressions(const Json& layer) {
    std::vector<Expression> found;
    auto visit = [&found](const Json& object, const std::string& path) {
        const Json* text = member(object, "x");
        if (text == nullptr || !text->IsString()) return;
        found.push_back({path, std::string_view(text->GetString(), text->GetStringLength())});
    };
    walk(layer, "", visit);
    return found;
}

std::vector<double> key_times(const Json& layer, const Json* left_out) {
    std::vector<double> times;
    const Json* const dimensions[] = {left_out, left_out == nullptr ? nullptr : member(*left_out, "x"),
                                      left_out == nullptr ? nullptr : member(*left_out, "y"),
                                      left_out == nullptr ? nullptr : member(*left_out, "z")};
    auto visit = [&](const Json& object, const std::string&) {
        if (!is_keyed(object) ||
            std::find(std::begin(dimensions), std::end(dimensions), &object) != std::end(dimensions))
            return;
        const auto keys = array_member(object, "k");
        if (keys.Size() < 2) return;  // one text document, or one key: it never changes
        for (const Json& key : keys) times.push_back(number_member(key, "t", 0));
    };
    walk(layer, "", visit);
    return times;
}

bool changes_over_time(const Scene& scene, const SceneLayer& layer) {
    std::unordered_set<const Stack*> seen;
    return changes(scene, layer, seen);
}

}  // namespace lottie::looks
