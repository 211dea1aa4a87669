// The display names of one composition's layers.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <unordered_map>

#include "model/layer.h"

namespace host::model {

// Contains every layer of the stack. Remove a layer before its name or position changes, and add it again afterwards.
class LayerNames {
  public:
    explicit LayerNames(const LayerStack& stack) {
        for (Layer* layer : stack.to_vector()) add(*layer);
    }
    LayerNames(const LayerNames&) = delete;

    void add(Layer& layer) { layers_[layer.display_name()].insert(&layer); }
    void remove(Layer& layer) {
        const auto found = layers_.find(layer.display_name());
        found->second.erase(&layer);
        if (found->second.empty()) layers_.erase(found);
    }
    Layer* topmost(std::string_view name) const {
        const auto found = layers_.find(name);
        return found != layers_.end() ? *found->second.begin() : nullptr;
    }

  private:
    struct HigherInStack {
        bool operator()(const Layer* a, const Layer* b) const { return a != b && a->index() < b->index(); }
    };
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view name) const { return std::hash<std::string_view>()(name); }
    };
    std::unordered_map<std::string, std::set<Layer*, HigherInStack>, Hash, std::equal_to<>> layers_;
};

}  // namespace host::model
