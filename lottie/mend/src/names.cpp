// Applies to expressions that ask for a layer by name and would find another one, or none: the layer that came out of
// the nest gets a name that no other has, and the expressions that mean it say so. Nobody sees a name.
#include <set>

#include "model/expression_text.h"
#include "remedies.h"

namespace lottie::mend {
namespace {

constexpr std::size_t kStepsPerLayer = 100;  // to look into its expressions
constexpr std::size_t kStepsPerName = 10;

// The names of layers of their own composition that the layer's expressions ask for.
std::set<std::string> names_in(LayerText& layer) {
    std::set<std::string> names;
    layer.rewrite_expressions([&](const std::string& text) {
        for (const auto& reference : host::model::find_layer_references(text)) {
            if (reference.comp.empty()) names.insert(reference.layer);
        }
        return std::optional<std::string>();
    });
    return names;
}

void rename_references(LayerText& layer, const std::set<std::string>& from, const std::string& to) {
    layer.rewrite_expressions([&](const std::string& text) -> std::optional<std::string> {
        std::string result = text;
        const auto references = host::model::find_layer_references(text);
        for (auto reference = references.rbegin(); reference != references.rend(); ++reference) {
            if (!reference->comp.empty() || !from.contains(reference->layer)) continue;
            result.replace(reference->begin, reference->end - reference->begin,
                           host::model::quote(to, text[reference->begin]));
        }
        return result == text ? std::nullopt : std::optional(result);
    });
}

// The layer inside that an expression there meant by the name.
CopiedLayer* meant_inside(Nest& nest, const std::string& name) {
    for (CopiedLayer& copy : nest.copies) {
        if (Unnested::name_of(copy.before) == name) return &copy;
    }
    return nullptr;
}

void rename_copy(Unnested& unnested, Nest& nest, CopiedLayer& wanted, const std::string& name_inside) {
    unnested.spend(kStepsPerLayer * nest.copies.size());
    const std::string name = Unnested::name_of(*wanted.now);
    if (unnested.find(name) != wanted.now) unnested.rename(*wanted.now);
    for (CopiedLayer& copy : nest.copies) {
        if (copy.now != nullptr) rename_references(*copy.now, {name, name_inside}, Unnested::name_of(*wanted.now));
    }
}

}  // namespace

void mend_names(Unnested& unnested, Nest& nest) {
    unnested.spend(kStepsPerLayer * unnested.stack().size());
    std::set<std::string> names;
    for (CopiedLayer& copy : nest.copies) names.merge(names_in(copy.before));
    for (const std::string& name : names) {
        unnested.spend(kStepsPerName * nest.copies.size());
        CopiedLayer* wanted = meant_inside(nest, name);
        if (wanted == nullptr || wanted->now == nullptr) continue;
        if (Unnested::name_of(*wanted->now) == name && unnested.find(name) == wanted->now) continue;
        rename_copy(unnested, nest, *wanted, name);
    }
    for (KeptLayer& layer : unnested.stack()) {
        if (layer.now == nullptr) continue;
        for (const std::string& name : names_in(layer.before)) {
            LayerText* found = unnested.find(name);
            Nest* owner = found == nullptr ? nullptr : unnested.owner_of(*found);
            if (owner != &nest) continue;  // it means a layer that stayed, or another nest's remedy sees to it
            for (CopiedLayer& copy : nest.copies) {
                if (copy.now != found) continue;
                unnested.rename(*found);
                if (names.contains(name) && meant_inside(nest, name) == &copy) {
                    for (CopiedLayer& other : nest.copies) {
                        if (other.now != nullptr) rename_references(*other.now, {name}, Unnested::name_of(*found));
                    }
                }
            }
        }
    }
}

}  // namespace lottie::mend
