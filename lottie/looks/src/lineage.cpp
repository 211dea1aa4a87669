// Where the layers of an animation come from.
#include "looks/lineage.h"

#include <map>
#include <optional>

#include "scene.h"

namespace lottie::looks {
namespace {

constexpr int kNone = -1;

// A layer, or the way through a nest to another.
struct Node {
    int outer = kNone;
    int inner = kNone;
    NestOfFile layer;  // the last of the way
};

}  // namespace

struct Lineage::State {
    explicit State(std::string_view text) : own_file(std::in_place, text), file(*own_file), work(own_work) {}
    State(const Scene& given_file, Work& given_work) : file(given_file), work(given_work) {}

    const SceneLayer& layer_at(int node) const {
        const NestOfFile& at = nodes[static_cast<std::size_t>(node)].layer;
        return (*file.find(at.composition))->layer(at.place);
    }

    int join(int outer, int inner) {
        nodes.push_back({outer, inner, nodes[static_cast<std::size_t>(inner)].layer});
        return static_cast<int>(nodes.size()) - 1;
    }

    std::vector<int>& layers_of(const std::string& composition) {
        const auto [found, is_new] = layers.try_emplace(composition);
        if (is_new) {
            const auto* stack = file.find(composition);
            for (std::size_t i = 0; stack != nullptr && i < (*stack)->size(); ++i) {
                nodes.push_back({kNone, kNone, {composition, i}});
                found->second.push_back(static_cast<int>(nodes.size()) - 1);
            }
        }
        return found->second;
    }

    std::optional<Scene> own_file;
    Work own_work;
    const Scene& file;
    Work& work;
    std::vector<Node> nodes;
    std::map<std::string, std::vector<int>> layers;  // of compositions
};

Lineage::Lineage(std::string_view text) : state_(std::make_unique<State>(text)) {}
Lineage::Lineage(const Scene& file, Work& work) : state_(std::make_unique<State>(file, work)) {}
Lineage::~Lineage() = default;

void Lineage::add(const StackChange& step) {
    State& state = *state_;
    const std::vector<int> before = state.layers_of(step.composition);
    std::vector<int> now;
    state.work.spend(step.after.size());
    for (const Origin& origin : step.after) {
        if (origin.kind == Origin::Kind::kept) {
            now.push_back(before.at(origin.layer));
        } else if (origin.kind == Origin::Kind::copied && before.at(origin.nest) != kNone) {
            const int nest = before.at(origin.nest);
            const int inner = state.layers_of(state.layer_at(nest).source).at(origin.layer);
            now.push_back(inner == kNone ? kNone : state.join(nest, inner));
        } else {
            now.push_back(kNone);
        }
    }
    state.layers[step.composition] = std::move(now);
}

Descent Lineage::path(const std::string& composition, std::size_t place, std::size_t most) {
    Descent path;
    const int node = state_->layers_of(composition).at(place);
    std::vector<int> open;
    if (node != kNone) open.push_back(node);
    while (!open.empty() && path.size() < most) {
        const Node& next = state_->nodes[static_cast<std::size_t>(open.back())];
        open.pop_back();
        state_->work.spend(1);
        if (next.outer == kNone) {
            path.push_back(next.layer);
        } else {
            open.push_back(next.inner);
            open.push_back(next.outer);
        }
    }
    return path;
}

}  // namespace lottie::looks
