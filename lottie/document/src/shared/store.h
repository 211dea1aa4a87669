// What is kept of a document beside the model: the text, and where everything the model holds came from.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "document/input_error.h"
#include "document/outline.h"
#include "model/format_data.h"
#include "model/project.h"
#include "shared/frame_clock.h"
#include "shared/verbatim_times.h"

namespace lottie::document {

class JsonTree;
struct Store;
struct StoredComp;

// A layer as the file has it. The base of the layer that was read, and of every copy of it.
struct StoredLayer final : host::model::LayerContent {
    void load(host::model::Layer& layer) const override;
    bool has_expressions() const override { return contains_expressions; }
    bool has_layer_parameters() const override { return contains_layer_parameters; }

    std::string pointer() const;
    bool is_3d() const;  // in the file, whatever the model made of it

    StoredComp* comp = nullptr;
    host::model::Layer* layer = nullptr;  // the one that was read
    std::uint32_t position = 0;           // in the array
    Slice text;
    Slice name;    // a literal; empty when missing
    Slice shapes;  // empty when missing
    std::optional<std::int64_t> ind;
    std::optional<std::int64_t> parent;
    std::optional<std::int64_t> matte;
    int type = 0;
    bool is_matte = false;
    bool is_hidden = false;
    bool uses_matte = false;  // says so, whether or not there is one
    bool contains_expressions = false;
    bool contains_layer_parameters = false;

    // What the model was given.
    bool had_matte_users = false;
    std::uint32_t flags = 0;
    host::model::Time offset;
    host::model::Time in_point;
    host::model::Time duration;
    host::model::Layer* parent_layer = nullptr;
    host::model::Layer* matte_layer = nullptr;
    host::model::MatteType matte_type = host::model::MatteType::none;
};

struct StoredComp {
    // The layer that has this `ind`; null if none.
    const StoredLayer* layer_of(std::int64_t ind) const;
    // The largest number that an `ind` is or that a link to no layer names, at least 0: new layers must not be that
    // one.
    std::int64_t largest_ind() const { return std::max(largest_link, inds.empty() ? 0 : inds.back().first); }

    Store* store = nullptr;
    host::model::Comp* comp = nullptr;
    int asset = -1;  // -1 for the main one
    std::string loaded_name;
    Slice array;  // of the layers
    std::vector<StoredLayer> layers;
    std::vector<std::pair<std::int64_t, std::uint32_t>> inds;  // sorted, with places in `layers`
    std::int64_t largest_link = 0;                             // of parents that no layer is; at least 0
};

struct StoredAsset {
    Slice text;
    JsonToken id_token;
    JsonToken name;
    std::string id;
    host::model::Item* item = nullptr;
};

// An effect on a layer of the file.
struct StoredEffect final : host::model::FormatData {
    StoredEffect(const StoredLayer& of_layer, std::size_t at, std::uint32_t with_flags)
        : layer(&of_layer), index(at), flags(with_flags) {}
    const StoredLayer* layer;
    std::size_t index;    // in the layer's `ef`
    std::uint32_t flags;  // that the model was given
};

// What a fresh instance of an effect is made from.
struct StoredEffectKind final : host::model::FormatData {
    StoredEffectKind(const StoredLayer& of_layer, Slice where) : layer(&of_layer), text(where) {}
    const StoredLayer* layer;
    Slice text;
};

struct Store {
    std::string text;
    FrameClock clock;
    VerbatimTimes edges;
    DocumentOutline outline;                // without its layers
    std::shared_ptr<const JsonTree> slots;  // values that properties name by "sid"; null if the file has none
    std::vector<StoredAsset> assets;
    std::vector<std::shared_ptr<StoredComp>> comps;  // the main one first
    std::unordered_map<const host::model::Comp*, StoredComp*> comp_of;
    std::unordered_map<std::string, std::shared_ptr<const host::model::EffectKind>> effect_kinds;  // by structure
    std::vector<InputError> warnings;
    bool is_passed_on = false;                      // an animation without nests that cannot be worked with
    mutable std::optional<bool> writes_end_values;  // into keyframes, as old files do; known once something is written
    std::optional<InputError> content_fault;        // the first one met
    std::unique_ptr<host::model::Project> project;  // refers to all of the above

    const StoredComp* stored(const host::model::Comp& comp) const;
};

// The base of a layer's text; null for layers that the host made.
const StoredLayer* base_of(const host::model::Layer& layer);
// Whether the layer is the one that was read, not a copy.
bool is_from_file(const host::model::Layer& layer);

}  // namespace lottie::document
