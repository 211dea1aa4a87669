// Masks that cut the layers out of a nest as the nest was cut.
#include "cut.h"

#include <algorithm>

#include "document/json_text.h"
#include "path_text.h"

namespace lottie::mend {
namespace {

using document::JsonNode;
using document::JsonTree;

constexpr int kAlpha = 1;
constexpr int kNullType = 3;
constexpr int kLastDrawnType = 5;
constexpr std::size_t kMostFrames = 3000;  // at which a path is worked out

// One of the nest's masks or its frame, and in which mode.
struct Cutter {
    const JsonNode* mask;  // null for the frame
    std::string mode;
};

std::string mode_of(const JsonTree& tree, const JsonNode* mask) {
    const JsonNode* mode = tree.member(mask, "mode");
    return mode == nullptr ? "" : document::decode_string(tree.text(*mode));
}

bool has_masks(const LayerText& layer) {
    return layer.is_set("hasMask") && layer.member("masksProperties").starts_with('[');
}

std::vector<const JsonNode*> masks_of(const LayerText& layer) {
    std::vector<const JsonNode*> masks;
    if (!has_masks(layer)) return masks;
    const JsonTree& tree = layer.tree();
    for (const JsonNode* mask : tree.children(*tree.member(&tree.root(), "masksProperties"))) {
        if (mode_of(tree, mask) != "n") masks.push_back(mask);
    }
    return masks;
}

// What is to stand behind a layer's own masks: players join added ones, and begin with nothing only where the first one
// adds. Empty if a list of masks cannot say it.
std::vector<Cutter> cutters_for(const LayerText& nest, bool has_own, bool with_frame) {
    std::vector<Cutter> cutters;
    std::size_t adds = 0;
    for (const JsonNode* mask : masks_of(nest)) {
        cutters.push_back({mask, mode_of(nest.tree(), mask)});
        const std::string& mode = cutters.back().mode;
        if (mode != "a" && mode != "s" && mode != "i") return {};
        if (mode == "a") ++adds;
    }
    const bool begins_adding = !cutters.empty() && cutters[0].mode == "a";
    if (has_own ? adds > (begins_adding ? 1U : 0U) : adds > 0 && !begins_adding) return {};
    if (begins_adding) {
        if (has_own) cutters[0].mode = "i";
        if (with_frame) cutters.push_back({nullptr, "i"});
    } else if (with_frame || (!cutters.empty() && !has_own)) {
        cutters.insert(cutters.begin(), {nullptr, has_own ? "i" : "a"});
    }
    return cutters;
}

bool is_drawn(const Copy& copy) {
    return copy.now != nullptr && !copy.facts.is_matte && !copy.facts.is_hidden && copy.facts.type >= 0 &&
           copy.facts.type <= kLastDrawnType && copy.facts.type != kNullType;
}

class Cutting {
  public:
    Cutting(Unnested& unnested, Nest& nest)
        : evaluation_(unnested.evaluation()), nest_(nest), around_(unnested.composition()), inside_(nest.source) {}

    void cut(Copy& drawn, Frame frame) {
        if (!is_drawn(drawn)) return;
        // Some players do not draw a layer with both a matte and a mask.
        const auto matte = matte_inside(nest_, drawn);
        if (matte && drawn.facts.matte_type != kAlpha) return;
        Copy& copy = matte ? nest_.copies[*matte] : drawn;
        if (copy.now == nullptr || !evaluation_.is_told_by_place(inside_, copy.inner)) return;
        const std::vector<double> frames =
            evaluation_.frames(around_, std::max(nest_.facts().in.value_or(0), copy.now->number("ip", 0)),
                               std::min(nest_.facts().out.value_or(0), copy.now->number("op", 0)));
        if (frames.empty() || frames.size() > kMostFrames) return;
        if (!copy.masks) copy.masks = std::string(copy.now->member("masksProperties"));
        const bool has_own = !masks_of(copy.before).empty();
        const bool with_frame = frame == Frame::where_needed && reaches_beyond(drawn, frames);
        const std::vector<Cutter> cutters = cutters_for(nest_.layer.before, has_own, with_frame);
        if (cutters.empty()) return;
        std::string masks = has_masks(copy.before) ? copy.masks->substr(0, copy.masks->rfind(']')) : "[";
        for (const Cutter& cutter : cutters) {
            const auto text = mask_text(cutter, copy, frames);
            if (!text) return;
            if (masks.find('{') != std::string::npos) masks += ',';
            masks += *text;
        }
        copy.now->set("hasMask", "true");
        copy.now->set("masksProperties", masks + "]");
    }

  private:
    double inner_frame(double frame) const { return evaluation_.inner_frame(around_, nest_.place, frame); }

    bool reaches_beyond(const Copy& copy, const std::vector<double>& frames) {
        return std::any_of(frames.begin(), frames.end(), [&](double frame) {
            return evaluation_.reaches_beyond(inside_, copy.inner, nest_.facts().width, nest_.facts().height,
                                              inner_frame(frame));
        });
    }

    std::string frame_path() const {
        std::string w, h;
        document::append_number(w, nest_.facts().width);
        document::append_number(h, nest_.facts().height);
        return "{\"a\":0,\"k\":{\"i\":[[0,0],[0,0],[0,0],[0,0]],\"o\":[[0,0],[0,0],[0,0],[0,0]],\"v\":[[0,0],[" + w +
               ",0],[" + w + "," + h + "],[0," + h + "]],\"c\":true}}";
    }

    std::optional<std::string> mask_text(const Cutter& cutter, const Copy& copy, const std::vector<double>& frames) {
        const JsonTree& tree = nest_.layer.before.tree();
        const auto text_of = [&](const char* key) {
            const JsonNode* value = cutter.mask == nullptr ? nullptr : tree.member(cutter.mask, key);
            return value == nullptr ? std::string() : std::string(tree.text(*value));
        };
        const auto path = path_for(cutter.mask == nullptr ? frame_path() : text_of("pt"), copy, frames);
        if (!path) return std::nullopt;
        const auto member = [](const char* key, const std::string& value) {
            return value.empty() ? "" : ",\"" + std::string(key) + "\":" + value;
        };
        const std::string still = "{\"a\":0,\"k\":";
        const std::string opacity = text_of("o");
        return "{\"inv\":false,\"mode\":\"" + cutter.mode + "\",\"pt\":" + *path +
               member("o", opacity.empty() ? still + "100}" : opacity) + ",\"x\":" + still + "0}" +
               member("f", text_of("f")) + member("cl", cutter.mask == nullptr ? "true" : text_of("cl")) +
               member("nm", cutter.mask == nullptr ? std::string(nest_.layer.before.member("nm")) : text_of("nm")) +
               "}";
    }

    // The path, in coordinates of the nest, in those of the layer.
    std::optional<std::string> path_for(const std::string& path, const Copy& copy, const std::vector<double>& frames) {
        if (!evaluation_.moves(inside_, copy.inner)) {
            const auto map = evaluation_.place(inside_, copy.inner, inner_frame(frames[0])).inverse();
            return map ? std::optional(mapped_path(path, *map)) : std::nullopt;
        }
        const looks::MovingPath moving(path);
        std::vector<PathAt> paths;
        for (const double frame : frames) {
            const auto map = evaluation_.place(inside_, copy.inner, inner_frame(frame)).inverse();
            if (!map) continue;  // nothing of the layer is to be seen
            PathAt& at = paths.emplace_back(PathAt{frame, moving.at(frame)});
            for (auto& point : at.vertices.at) point = map->map(point);
            for (auto& point : at.vertices.in) point = map->turn(point);
            for (auto& point : at.vertices.out) point = map->turn(point);
        }
        return paths.empty() ? std::nullopt : std::optional(path_through(paths));
    }

    looks::Evaluation& evaluation_;
    Nest& nest_;
    const std::string around_;
    const std::string inside_;
};

}  // namespace

void cut_layers(Unnested& unnested, Nest& nest, Frame frame) {
    Cutting cutting(unnested, nest);
    for (Copy& copy : nest.copies) cutting.cut(copy, frame);
}

}  // namespace lottie::mend
