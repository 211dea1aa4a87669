// From the outline of a document to a project: items, layers, timing, switches.
#include "read/project_builder.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "document/json_text.h"
#include "document/json_tree.h"
#include "document/outline_reader.h"
#include "read/asset_graph.h"
#include "read/flat_animation.h"
#include "read/layer_links.h"
#include "shared/fields.h"
#include "shared/layer_types.h"
#include "shared/refuse.h"

namespace lottie::document {
namespace {

using host::model::LayerKind;
using host::model::Time;

constexpr double kMaxPixels = std::numeric_limits<int>::max();
constexpr double kMaxSeconds =
    std::numeric_limits<std::int32_t>::max() / static_cast<double>(host::model::kTicksPerSecond);
// Where ends beyond all time are held.
constexpr Time kFarthest{std::numeric_limits<std::int32_t>::max() / 2};
constexpr std::string_view kEmptyAnimation = R"({"fr":1,"ip":0,"op":1,"w":1,"h":1,"layers":[]})";

class ProjectBuilder {
  public:
    ProjectBuilder(Store& store, DocumentOutline& outline) : store_(store), text_(store.text), outline_(outline) {}

    void build() {
        read_document();
        graph_ = std::make_unique<AssetGraph>(text_, outline_);
        warn_of_missing_comps();
        find_reach();
        keep_edges();
        make_items();
        for (std::size_t i = 0; i < outline_.comps.size(); ++i) make_layers(i);
        store_.project->open_comp(store_.comps.front()->comp);
    }

  private:
    std::string string_of(const JsonToken& token) const {
        return token.kind == JsonKind::string ? decode_string(token.text.of(text_)) : std::string();
    }

    double required_number(const JsonToken& token, const std::string& key, const std::string& meaning) const {
        if (token.kind == JsonKind::none || token.kind == JsonKind::null) {
            refuse(text_, outline_.root.begin, "",
                   "The text is JSON but not an animation: it lacks \"" + key + "\", " + meaning + ".");
        }
        if (token.kind != JsonKind::number) {
            refuse(text_, token.text.begin, "/" + key,
                   "The animation's \"" + key + "\", " + meaning + ", must be a number.");
        }
        return read_number(token.text.of(text_));
    }

    int required_size(const JsonToken& token, const std::string& key, const std::string& meaning) const {
        const double pixels = required_number(token, key, meaning);
        if (!(pixels > 0) || pixels > kMaxPixels) {
            refuse(text_, token.text.begin, "/" + key,
                   "The animation's \"" + key + "\", " + meaning + ", must be more than 0 and at most " +
                       std::to_string(static_cast<int>(kMaxPixels)) + " pixels.");
        }
        return std::max(1, static_cast<int>(std::lround(pixels)));
    }

    [[noreturn]] void refuse_time(std::size_t at, const std::string& pointer, const std::string& what) const {
        refuse(text_, at, pointer, what + " " + std::string(kTooFar) + ".");
    }

    Time required_time(const JsonToken& token, const std::string& key, const std::string& meaning) const {
        const std::optional<Time> time = store_.clock.time(required_number(token, key, meaning));
        if (!time) refuse_time(token.text.begin, "/" + key, "The animation's \"" + key + "\", " + meaning + ",");
        return *time;
    }

    void read_document() {
        if (outline_.layers_token.kind == JsonKind::none || outline_.layers_token.kind == JsonKind::null) {
            refuse(text_, outline_.root.begin, "", "The text is JSON but not an animation: it lacks \"layers\".");
        }
        if (outline_.layers_token.kind != JsonKind::array) {
            refuse(text_, outline_.layers_token.text.begin, "/layers", "The animation's \"layers\" must be an array.");
        }
        if (outline_.assets_token.kind != JsonKind::none && outline_.assets_token.kind != JsonKind::null &&
            outline_.assets_token.kind != JsonKind::array) {
            refuse(text_, outline_.assets_token.text.begin, "/assets", "The animation's \"assets\" must be an array.");
        }
        frame_rate_ = required_number(outline_.frame_rate, "fr", "its frame rate");
        if (!(frame_rate_ > 0) || frame_rate_ > static_cast<double>(host::model::kTicksPerSecond)) {
            refuse(text_, outline_.frame_rate.text.begin, "/fr",
                   "The animation's frame rate \"fr\" must be more than 0 and at most " +
                       std::to_string(host::model::kTicksPerSecond) + ".");
        }
        store_.clock = FrameClock(frame_rate_);
        width_ = required_size(outline_.width, "w", "its width");
        height_ = required_size(outline_.height, "h", "its height");
        required_time(outline_.in, "ip", "its first frame");
        duration_ = std::max(required_time(outline_.out, "op", "the frame after its last"), Time{});
        out_ = read_number(outline_.out.text.of(text_));
    }

    // Players draw nothing for a layer whose composition does not exist.
    void warn_of_missing_comps() const {
        std::optional<InputError> first;
        std::size_t count = 0;
        for (const ScannedComp& comp : outline_.comps) {
            for (std::size_t i = 0; i < comp.list.size(); ++i) {
                const ScannedLayer& layer = comp.list[i];
                if (layer.type != kCompType || graph_->comp_shown_by(layer) >= 0 || count++ > 0) continue;
                const std::string id = quoted_name(decode_string(layer.ref_id.of(text_)));
                first = error_at(
                    text_, layer.text.begin, outline_.layer_pointer(comp, i),
                    "Layer " + std::to_string(i + 1) + " (" + quoted_name(decode_string(layer.name.of(text_))) +
                        (layer.ref_id.empty() ? ") shows a composition, but lacks the \"refId\" that says which"
                                              : ") shows the composition " + id + ", which does not exist"));
            }
        }
        if (!first) return;
        const std::string others = count == 1   ? ""
                                   : count == 2 ? ", and there is another such layer"
                                                : ", and there are " + std::to_string(count - 1) + " more such layers";
        store_.warnings.emplace_back(first->what() + others + ": it stays as it is, and nothing is drawn for it.",
                                     first->line(), first->column(), first->pointer());
    }

    // Tools write ends far beyond all time for "always". They are held at a time that leaves room for every sum of
    // times, provided that all else in the file is much nearer.
    void find_reach() {
        const auto is_near = [this](double frames) {
            const std::optional<Time> time = store_.clock.time(frames);
            return !time || std::abs(time->ticks) <= kFarthest.ticks / 4;
        };
        holds_far_edges_ = duration_ <= Time{kFarthest.ticks / 4};
        each_edge([&](double frames) { holds_far_edges_ = holds_far_edges_ && is_near(frames); });
    }

    template <class Visit>
    void each_edge(Visit visit) const {
        for (const ScannedComp& comp : outline_.comps) {
            for (const ScannedLayer& layer : comp.list) {
                for (const double edge : {layer.in.value_or(0), layer.out.value_or(out_), layer.start}) visit(edge);
            }
        }
    }

    void keep_edges() {
        bool is_noisy = false;
        each_edge([&](double edge) { is_noisy = is_noisy || VerbatimTimes::is_noisy(store_.clock, edge); });
        if (!is_noisy) return;
        std::vector<double> edges;
        each_edge([&edges](double edge) { edges.push_back(edge); });
        store_.edges = VerbatimTimes(std::move(edges));
    }

    host::model::Comp& add_comp(std::string name, int width, int height, Time duration) {
        host::model::Comp& comp = store_.project->add_comp(std::move(name));
        comp.load_size(width, height);
        comp.load_timing(frame_rate_, duration);
        return comp;
    }

    void make_items() {
        const std::string main_name = string_of(outline_.name);
        keep_comp(add_comp(main_name.empty() ? "main" : main_name, width_, height_, duration_), 0);
        for (std::size_t i = 0; i < outline_.assets.size(); ++i) {
            ScannedAsset& asset = outline_.assets[i];
            StoredAsset& stored = store_.assets.emplace_back();
            stored.text = asset.text;
            stored.name = asset.name;
            stored.id_token = asset.id;
            stored.id = string_of(asset.id);
            if (asset.comp < 0) {
                stored.item = &store_.project->add_footage(footage_name(asset, stored.id), {}, size_of(asset.width),
                                                           size_of(asset.height));
            } else {
                stored.item = &make_nested_comp(static_cast<int>(i), asset, stored.id);
            }
        }
    }

    host::model::Comp& make_nested_comp(int index, const ScannedAsset& asset, const std::string& id) {
        const ScannedLayer* user = graph_->first_user(index);
        std::string name = string_of(asset.name);
        if (name.empty() && user != nullptr) name = decode_string(user->name.of(text_));
        if (name.empty()) name = id;
        const bool has_size = user != nullptr && user->width > 0 && user->height > 0;
        const auto comp_index = static_cast<std::size_t>(asset.comp);
        const int width = has_size ? std::max(1, size_of(user->width)) : width_;
        const int height = has_size ? std::max(1, size_of(user->height)) : height_;
        host::model::Comp& comp =
            add_comp(std::move(name), width, height, nested_duration(index, outline_.comps[comp_index]));
        keep_comp(comp, comp_index);
        return comp;
    }

    // The file does not say how long a nested composition is: as long as its layers, as the animation, and as anyone
    // who uses it wants to see, so that no layer is cut that was not cut before.
    Time nested_duration(int asset, const ScannedComp& comp) const {
        Time longest = duration_;
        for (const ScannedLayer& layer : comp.list)
            longest = std::max(longest, store_.clock.clamped_time(layer.out.value_or(0)));
        return std::max(longest, store_.clock.clamped_time(graph_->longest_use(asset)));
    }

    void keep_comp(host::model::Comp& comp, std::size_t index) {
        auto stored = std::make_shared<StoredComp>();
        stored->store = &store_;
        stored->comp = &comp;
        stored->asset = outline_.comps[index].asset;
        stored->loaded_name = comp.name();
        stored->array = outline_.comps[index].layers;
        store_.comp_of.emplace(&comp, stored.get());
        store_.comps.push_back(std::move(stored));
    }

    static int size_of(double pixels) { return static_cast<int>(std::lround(std::clamp(pixels, 0.0, kMaxPixels))); }
    int size_of(const JsonToken& token) const {
        return token.kind == JsonKind::number ? size_of(read_number(token.text.of(text_))) : 0;
    }

    std::string footage_name(const ScannedAsset& asset, const std::string& id) const {
        const std::string name = string_of(asset.name);
        const std::string path = string_of(asset.path);
        const bool is_embedded = path.compare(0, 5, "data:") == 0;
        if (!name.empty()) return name;
        return path.empty() || is_embedded ? id : path;
    }

    void make_layers(std::size_t index) {
        ScannedComp& scanned = outline_.comps[index];
        StoredComp& stored = *store_.comps[index];
        stored.layers.resize(scanned.list.size());
        for (std::size_t i = 0; i < scanned.list.size(); ++i) make_layer(scanned, i, store_.comps[index]);
        link_layers(scanned, stored, outline_);
        scanned.list = std::vector<ScannedLayer>();  // gives the memory back
    }

    void make_layer(const ScannedComp& comp, std::size_t index, const std::shared_ptr<StoredComp>& stored_comp) {
        const ScannedLayer& scanned = comp.list[index];
        StoredLayer& stored = stored_comp->layers[index];
        std::string name = decode_string(scanned.name.of(text_));
        const LayerKind kind = kind_of_type(scanned.type);
        host::model::Item* const source = kind == LayerKind::av ? source_of(scanned, name) : nullptr;
        host::model::Layer& layer = stored_comp->comp->load_layer(kind, source);

        const auto refuse_member = [&](Field field, const std::string& fault) {
            const std::string key(key_of(field));
            const JsonTree tree(text_, scanned.text);
            const JsonNode* member = tree.member(&tree.root(), key);
            refuse(text_, (member == nullptr ? tree.root() : *member).text.begin,
                   outline_.layer_pointer(comp, index) + "/" + key,
                   "The \"" + key + "\" of layer " + std::to_string(index + 1) + " " + fault + ".");
        };
        const auto time = [&](double frames, Field field) {
            const std::optional<Time> in_range = store_.clock.time(frames);
            if (in_range) return *in_range;
            if (field == Field::st || !holds_far_edges_) refuse_member(field, std::string(kTooFar));
            return frames < 0 ? Time{} - kFarthest : kFarthest;
        };
        stored.comp = stored_comp.get();
        stored.layer = &layer;
        stored.position = static_cast<std::uint32_t>(index);
        stored.text = scanned.text;
        stored.name = scanned.name;
        stored.shapes = scanned.shapes;
        stored.ind = scanned.ind;
        stored.parent = scanned.parent;
        stored.matte = scanned.matte;
        stored.type = scanned.type;
        stored.is_matte = scanned.is_matte;
        stored.is_hidden = scanned.is_hidden;
        stored.uses_matte = scanned.matte_type >= 1 && scanned.matte_type <= 4;
        stored.contains_expressions = scanned.has_expressions;
        stored.contains_layer_parameters = scanned.has_layer_parameters;
        stored.offset = time(scanned.start, Field::st);
        stored.in_point = time(scanned.in.value_or(0), Field::ip);
        stored.duration = std::max(time(scanned.out.value_or(out_), Field::op) - stored.in_point, Time{});
        stored.flags = flags_of(scanned);
        const Time longest =
            std::max({stored.duration, stored.in_point - stored.offset, stored.offset - stored.in_point});
        if (seconds(longest) / std::abs(scanned.stretch) > kMaxSeconds)
            refuse_member(Field::sr,
                          "stretches its times to more than 4 hours 58 minutes, longer than a time of 32 bits");

        layer.load_name(std::move(name));
        layer.load_flags(stored.flags);
        layer.load_timing(stored.offset, stored.in_point, stored.duration, scanned.stretch);
        layer.set_content({stored_comp, &stored});
    }

    // Solids are not among the assets, and a null's solid is not in the file at all.
    host::model::Item* source_of(const ScannedLayer& layer, const std::string& name) {
        if (layer.type == kSolidType) {
            const std::string color = decode_string(layer.color.of(text_));
            return &store_.project->add_footage(name, solid_facts(color), size_of(layer.solid_width),
                                                size_of(layer.solid_height));
        }
        if (layer.type == kNullType) {
            const int size = store_.project->rules().null_size;
            return &store_.project->add_footage(name, solid_facts("#ffffff"), size, size);
        }
        if (layer.ref_id.empty()) return nullptr;
        const std::string id = decode_string(layer.ref_id.of(text_));
        const int asset = graph_->asset_of(id);
        const bool is_comp = asset >= 0 && outline_.assets[static_cast<std::size_t>(asset)].comp >= 0;
        if (asset >= 0 && is_comp == (layer.type == kCompType))
            return store_.assets[static_cast<std::size_t>(asset)].item;
        // What is missing is an empty placeholder, as to players.
        return &store_.project->add_footage(id, {}, 0, 0);
    }

    Store& store_;
    const std::string& text_;
    DocumentOutline& outline_;
    std::unique_ptr<AssetGraph> graph_;
    double frame_rate_ = 0;
    double out_ = 0;
    int width_ = 0;
    int height_ = 0;
    bool holds_far_edges_ = false;
    Time duration_;
};

void read_project(Store& store, const host::model::HostRules& rules, std::optional<DocumentOutline> outline) {
    store.outline = outline ? std::move(*outline) : read_outline(store.text);
    if (store.outline.slots.kind == JsonKind::object)
        store.slots = std::make_shared<const JsonTree>(store.text, store.outline.slots.text);
    store.project = std::make_unique<host::model::Project>(rules);
    host::model::UndoJournal& undo = store.project->undo();
    undo.begin_group("");
    ProjectBuilder(store, store.outline).build();
    undo.end_group();
    undo.clear();  // there is no way back behind the opened file
}

}  // namespace

std::unique_ptr<Store> build_store(std::string text, const host::model::HostRules& rules,
                                   std::optional<DocumentOutline> outline) {
    auto store = std::make_unique<Store>();
    store->text = std::move(text);
    try {
        read_project(*store, rules, std::move(outline));
        return store;
    } catch (const InputError& fault) {
        if (!is_flat_animation(store->text)) throw;
        auto stand_in = build_store(std::string(kEmptyAnimation), rules);
        stand_in->text = std::move(store->text);
        stand_in->is_passed_on = true;
        stand_in->warnings.emplace_back(
            std::string(fault.what()) + " No layer shows a composition, so it stays as it is.", fault.line(),
            fault.column(), fault.pointer());
        return stand_in;
    }
}

}  // namespace lottie::document
