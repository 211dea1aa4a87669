// Compositions and layers of an animation, with their links resolved as players do.
#include "scene.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <unordered_map>

namespace lottie::looks {
namespace {

LayerType type_of(const Json& layer) {
    const int number = static_cast<int>(number_member(layer, "ty", -1));
    return (number >= 0 && number <= 5) || number == 13 ? static_cast<LayerType>(number) : LayerType::other;
}

void link_parents(Stack& stack) {
    std::unordered_map<double, std::size_t> by_number;
    for (std::size_t i = 0; i < stack.layers.size(); ++i) {
        if (stack.layers[i].number) by_number.emplace(*stack.layers[i].number, i);
    }
    for (std::size_t i = 0; i < stack.layers.size(); ++i) {
        SceneLayer& layer = stack.layers[i];
        if (has_number(*layer.json, "parent")) {
            const auto found = by_number.find(number_member(*layer.json, "parent", 0));
            if (found != by_number.end() && found->second != i) layer.parent = found->second;
        }
        if (layer.matte_mode == 0) continue;
        if (has_number(*layer.json, "tp")) {
            const auto found = by_number.find(number_member(*layer.json, "tp", 0));
            if (found != by_number.end() && found->second != i) layer.matte = found->second;
        } else if (i > 0) {
            layer.matte = i - 1;
        }
    }
}

// A layer that is its own ancestor has no place; players cut such a chain somewhere.
void cut_parent_circles(Stack& stack) {
    enum class Mark : char { unseen, open, done };
    std::vector<Mark> marks(stack.layers.size(), Mark::unseen);
    for (std::size_t first = 0; first < stack.layers.size(); ++first) {
        std::vector<std::size_t> chain;
        std::optional<std::size_t> at = first;
        while (at && marks[*at] == Mark::unseen) {
            marks[*at] = Mark::open;
            chain.push_back(*at);
            at = stack.layers[*at].parent;
        }
        if (at && marks[*at] == Mark::open) stack.layers[chain.back()].parent.reset();
        for (const std::size_t i : chain) marks[i] = Mark::done;
    }
}

Stack read_stack(const Json& owner) {
    Stack stack;
    stack.name = text_member(owner, "nm");
    stack.frame_rate = number_member(owner, "fr", 0);
    stack.keeps_frame_rate = is_truthy(owner, "pfr");
    const auto layers = array_member(owner, "layers");
    stack.layers.reserve(layers.Size());
    for (const Json& layer : layers) stack.layers.emplace_back(layer);
    link_parents(stack);
    cut_parent_circles(stack);
    for (const SceneLayer& layer : stack.layers) stack.end_frame = std::max(stack.end_frame, layer.out);
    return stack;
}

}  // namespace

SceneLayer::SceneLayer(const Json& layer)
    : json(&layer),
      type(type_of(layer)),
      name(text_member(layer, "nm")),
      source(text_member(layer, "refId")),
      in(number_member(layer, "ip", 0)),
      out(number_member(layer, "op", 0)),
      start(number_member(layer, "st", 0)),
      stretch(number_member(layer, "sr", 1)),
      width(number_member(layer, type == LayerType::solid ? "sw" : "w", 0)),
      height(number_member(layer, type == LayerType::solid ? "sh" : "h", 0)),
      is_hidden(is_truthy(layer, "hd")),
      is_matte_source(is_truthy(layer, "td")),
      matte_mode(static_cast<int>(number_member(layer, "tt", 0))),
      blend_mode(static_cast<int>(number_member(layer, "bm", 0))),
      transform(layer) {
    if (has_number(layer, "ind")) number = number_member(layer, "ind", 0);
    if (stretch == 0) stretch = 1;
    if (const Json* remap = member(layer, "tm")) time_remap.emplace(remap, Values{});
}

double SceneLayer::inner_frame(double frame, double frame_rate) const {
    return time_remap ? time_remap->at(frame)[0] * frame_rate : (frame - start) / stretch;
}

Scene::Scene(std::string_view text) : byte_count(text.size()) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    document.Parse<rapidjson::kParseIterativeFlag | rapidjson::kParseFullPrecisionFlag>(text.data(), text.size());
    if (document.HasParseError() || !document.IsObject()) throw std::runtime_error("the animation cannot be read");
    frame_rate = number_member(document, "fr", 30);
    stacks.push_back(read_stack(document));
    Stack& top = stacks.front();
    top.width = number_member(document, "w", 0);
    top.height = number_member(document, "h", 0);
    top.first_frame = number_member(document, "ip", 0);
    top.end_frame = number_member(document, "op", 0);
    for (const Json& asset : array_member(document, "assets")) {
        const std::string id = text_member(asset, "id");
        asset_by_id.emplace(id, &asset);
        if (member(asset, "layers") == nullptr) continue;
        stack_by_id.emplace(id, stacks.size());
        stacks.push_back(read_stack(asset));
        stacks.back().id = id;
    }
    // Only the layers that use a composition know its size.
    for (std::size_t s = 0; s < stacks.size(); ++s) {
        for (SceneLayer& layer : stacks[s].layers) {
            if (layer.type == LayerType::image) {
                if (const Json* image = asset(layer.source)) {
                    layer.width = number_member(*image, "w", 0);
                    layer.height = number_member(*image, "h", 0);
                }
            }
            if (layer.type != LayerType::nest) continue;
            const auto found = stack_by_id.find(layer.source);
            if (found == stack_by_id.end()) continue;
            stacks[found->second].width = std::max(stacks[found->second].width, layer.width);
            stacks[found->second].height = std::max(stacks[found->second].height, layer.height);
        }
    }
}

const Stack* Scene::find(std::string_view id) const {
    if (id.empty()) return &stacks.front();
    const auto found = stack_by_id.find(id);
    return found == stack_by_id.end() ? nullptr : &stacks[found->second];
}

const Json* Scene::asset(std::string_view id) const {
    const auto found = asset_by_id.find(id);
    return found == asset_by_id.end() ? nullptr : found->second;
}

}  // namespace lottie::looks
