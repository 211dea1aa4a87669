// Masks that cut the layers out of a nest as the nest was cut, and by those that cover them while it fades.
#include "cut.h"

#include <algorithm>
#include <utility>

#include "document/json_text.h"
#include "document/output_text.h"
#include "document/patch.h"
#include "looks/seam.h"
#include "path_text.h"

namespace lottie::mend {
namespace {

using document::JsonNode;
using document::JsonTree;

constexpr int kAlpha = 1;
constexpr std::size_t kMostFrames = 10'000;  // at which a path is worked out

// What the work costs, in steps: to evaluate a layer at a frame, and for each vertex of a path there.
constexpr std::size_t kStepsPerLook = 100;
constexpr std::size_t kStepsPerVertex = 20;

// One of the nest's masks, its matte or its frame, and in which mode.
struct Cutter {
    const JsonNode* mask;  // null for the others
    std::string mode;
    bool is_matte = false;
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

// A single mask of the layer's own can stand behind the others and cut what they leave: some players take a mask for
// the first one where those before it leave nothing.
bool has_one_mask(const LayerText& layer) {
    if (!has_masks(layer)) return false;
    const JsonTree& tree = layer.tree();
    const auto masks = tree.children(*tree.member(&tree.root(), "masksProperties"));
    return masks.size() == 1 && (mode_of(tree, masks[0]) == "a" || mode_of(tree, masks[0]) == "f");
}

// The name of a mask that stands for what has that name, as JSON: one that no expression asks for, whatever masks the
// layer has itself.
std::string name_after(std::string_view name) {
    const bool is_text = name.size() >= 2 && name.starts_with('"');
    return "\"{{" + std::string(is_text ? name.substr(1, name.size() - 2) : "") + "_exflate}}\"";
}

// The only mask of a list, in the mode that leaves what it has in common with those before it.
std::string intersecting(const std::string& masks) {
    const document::Slice all{0, static_cast<std::uint32_t>(masks.size())};
    const JsonTree tree(masks, all);
    const JsonNode* mask = tree.first(tree.root());
    document::Patch patch;
    patch.replace(tree.member(mask, "mode")->text, "\"i\"");
    document::OutputText out;
    patch.write(masks, mask->text, out);
    return out.text();
}

// What is to stand behind a layer's own masks: players join added ones, and begin with nothing only where the first one
// adds. Empty if a list of masks cannot say it.
std::vector<Cutter> cutters_for(const Nest& nest, bool has_own, bool with_frame) {
    const LayerText& layer = nest.layer.before;
    std::vector<Cutter> cutters;
    std::size_t adds = 0;
    if (nest.matte) {
        cutters.push_back({nullptr, nest.facts().matte_type == kAlpha ? "a" : "s", true});
        adds = nest.facts().matte_type == kAlpha ? 1 : 0;
    }
    for (const JsonNode* mask : masks_of(layer)) {
        cutters.push_back({mask, mode_of(layer.tree(), mask)});
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

class Cutting {
  public:
    Cutting(Unnested& unnested, Nest& nest)
        : unnested_(unnested),
          evaluation_(unnested.evaluation()),
          nest_(nest),
          around_(unnested.composition()),
          inside_(nest.source) {}

    void cut(CopiedLayer& drawn, FrameCut frame) {
        if (!is_drawn(drawn)) return;
        if (!drawn.covers.empty()) return take_away_covered(drawn);
        // Some players do not draw a layer with both a matte and a mask.
        const auto matte = matte_inside(nest_, drawn);
        if (matte && drawn.facts.matte_type != kAlpha) return;
        CopiedLayer& copy = matte ? nest_.copies[*matte] : drawn;
        if (copy.now == nullptr || !evaluation_.has_reliable_placement(inside_, copy.inner)) return;
        const std::vector<double> frames = frames_of(copy);
        if (frames.empty() || frames.size() > kMostFrames) return;
        if (!copy.masks) copy.masks = std::string(copy.now->member("masksProperties"));
        const bool has_own = !masks_of(copy.before).empty();
        if (copy.before.is_set("hasMask") && !has_own) return;  // some players hide it, others show it whole
        const bool is_own_last = has_one_mask(copy.before);
        const bool with_frame =
            frame == FrameCut::where_needed && !do_masks_end_within_frame() && reaches_beyond(drawn, frames);
        const std::vector<Cutter> cutters = cutters_for(nest_, has_own && !is_own_last, with_frame);
        if (cutters.empty()) return;
        std::string masks =
            has_masks(copy.before) && !is_own_last ? copy.masks->substr(0, copy.masks->rfind(']')) : "[";
        for (const Cutter& cutter : cutters) {
            const auto text = mask_text(cutter, copy, frames);
            if (!text) return;
            if (masks.find('{') != std::string::npos) masks += ',';
            masks += *text;
        }
        if (is_own_last) masks += ',' + intersecting(*copy.masks);
        copy.now->set("hasMask", "true");
        copy.now->set("masksProperties", masks + "]");
    }

  private:
    double inner_frame(double frame) const { return evaluation_.inner_frame(around_, nest_.place, frame); }

    std::vector<double> frames_of(const CopiedLayer& copy) const {
        return evaluation_.frames(around_, std::max(nest_.facts().in.value_or(0), copy.now->number("ip", 0)),
                                  std::min(nest_.facts().out.value_or(0), copy.now->number("op", 0)));
    }

    // Of a layer without masks of its own. The first mask must add: around everything, or the nest's frame if that cut
    // it.
    void take_away_covered(CopiedLayer& copy) {
        const std::vector<double> frames = frames_of(copy);
        if (frames.empty() || frames.size() > kMostFrames) return;
        const auto first = path_for(frame_path(reaches_beyond(copy, frames) ? 0 : 1), false, copy, frames);
        if (!first) return;
        std::string masks = "[" + plain_mask("a", *first, copy.before);
        for (const CopiedLayer::Cover& cover : copy.covers) {
            const auto path = covered_path(copy, cover, frames);
            if (!path) return;
            masks += ',' + plain_mask("s", *path, nest_.copies[cover.above].before);
        }
        copy.now->set("hasMask", "true");
        copy.now->set("masksProperties", masks + "]");
    }

    static std::string plain_mask(const std::string& mode, const std::string& path, const LayerText& named) {
        return R"({"inv":false,"mode":")" + mode + R"(","pt":)" + path +
               R"(,"o":{"a":0,"k":100},"x":{"a":0,"k":0},"nm":)" + name_after(named.member("nm")) + "}";
    }

    // What a layer above covers, in the coordinates of the layer, at the frames at which it is to be taken away;
    // nothing if there are none, it cannot be told or the layer has no area.
    std::optional<std::string> covered_path(const CopiedLayer& copy, const CopiedLayer::Cover& cover,
                                            const std::vector<double>& frames) {
        std::vector<std::vector<PathAt>> runs;
        for (const double frame : frames) {
            const double inner = inner_frame(frame);
            const double opacity = evaluation_.opacity(around_, nest_.place, frame);
            unnested_.spend(kStepsPerLook);
            if (opacity <= 0 || opacity >= 100 || !evaluation_.is_on(inside_, cover.above, inner) ||
                evaluation_.opacity(inside_, cover.above, inner) < 100) {
                continue;
            }
            const auto nest = evaluation_.place(around_, nest_.place, frame);
            const auto back = evaluation_.place(inside_, copy.inner, inner).then(nest).inverse();
            if (!back) return std::nullopt;
            const auto place = cover.area.place.then(evaluation_.place(inside_, cover.above, inner)).then(nest);
            PathAt at{frame, mapped(cover.area.path->at(inner), place)};
            unnested_.spend(kStepsPerVertex * at.vertices.at.size());
            const auto taken =
                looks::within_seam(at.vertices, opacity / 100, looks::seam_pixel(evaluation_.width(around_)));
            if (!taken) return std::nullopt;
            at.vertices = mapped(*taken, *back);
            if (runs.empty() || frame - runs.back().back().frame > 1.5) runs.emplace_back();
            runs.back().push_back(std::move(at));
        }
        return runs.empty() ? std::nullopt : std::optional(path_at_times(runs, frames[0]));
    }

    static looks::MovingPath::Vertices mapped(looks::MovingPath::Vertices path, const looks::PlaneMap& map) {
        for (auto& point : path.at) point = map.map(point);
        for (auto& point : path.in) point = map.turn(point);
        for (auto& point : path.out) point = map.turn(point);
        return path;
    }

    bool reaches_beyond(const CopiedLayer& copy, const std::vector<double>& frames) {
        std::vector<double> inner_frames;
        for (const double frame : frames) inner_frames.push_back(inner_frame(frame));
        const auto led = evaluation_.led_reach(inside_, copy.inner, inner_frames);
        if (!led || is_any_beyond(*led)) return true;
        return std::any_of(inner_frames.begin(), inner_frames.end(), [&](double frame) {
            unnested_.spend(kStepsPerLook);
            return is_any_beyond(evaluation_.reach(inside_, copy.inner, frame));
        });
    }

    bool is_any_beyond(const std::vector<looks::PlanePoint>& corners) const {
        return std::any_of(corners.begin(), corners.end(), [&](const looks::PlanePoint& corner) {
            return corner.x < 0 || corner.y < 0 || corner.x > nest_.facts().width || corner.y > nest_.facts().height;
        });
    }

    bool is_within_frame(const looks::MovingPath::Vertices& path) const {
        for (std::size_t i = 0; i < path.at.size(); ++i) {
            for (const looks::PlanePoint& handle : {looks::PlanePoint{}, path.in[i], path.out[i]}) {
                const double x = path.at[i].x + handle.x;
                const double y = path.at[i].y + handle.y;
                if (x < 0 || y < 0 || x > nest_.facts().width || y > nest_.facts().height) return false;
            }
        }
        return true;
    }

    // Whether the nest's masks leave nothing that its frame cuts off.
    bool do_masks_end_within_frame() {
        if (do_masks_end_within_frame_) return *do_masks_end_within_frame_;
        bool& answer = do_masks_end_within_frame_.emplace(false);
        const JsonTree& tree = nest_.layer.before.tree();
        const auto masks = masks_of(nest_.layer.before);
        if (masks.empty() || mode_of(tree, masks[0]) != "a") return answer;
        const auto frames = evaluation_.frames(around_, nest_.facts().in.value_or(0), nest_.facts().out.value_or(0));
        answer = std::all_of(masks.begin(), masks.end(), [&](const JsonNode* mask) {
            if (mode_of(tree, mask) != "a") return true;  // only takes away
            const JsonNode* path = tree.member(mask, "pt");
            if (path == nullptr) return false;
            const looks::MovingPath moving(tree.text(*path));
            return std::all_of(frames.begin(), frames.end(), [&](double frame) {
                const auto vertices = moving.at(frame);
                unnested_.spend(kStepsPerVertex * vertices.at.size());
                return is_within_frame(vertices);
            });
        });
        return answer;
    }

    // The nest's frame, moved outward by so many times its size.
    std::string frame_path(double by) const {
        const double w = nest_.facts().width;
        const double h = nest_.facts().height;
        std::string vertices;
        for (const auto& [x, y] : {std::pair{-by, -by}, {1 + by, -by}, {1 + by, 1 + by}, {-by, 1 + by}}) {
            vertices += vertices.empty() ? "[" : ",[";
            document::append_number(vertices, x * w);
            vertices += ',';
            document::append_number(vertices, y * h);
            vertices += ']';
        }
        return "{\"a\":0,\"k\":{\"i\":[[0,0],[0,0],[0,0],[0,0]],\"o\":[[0,0],[0,0],[0,0],[0,0]],\"v\":[" + vertices +
               "],\"c\":true}}";
    }

    std::optional<std::string> mask_text(const Cutter& cutter, const CopiedLayer& copy,
                                         const std::vector<double>& frames) {
        const JsonTree& tree = nest_.layer.before.tree();
        const auto text_of = [&](const char* key) {
            const JsonNode* value = cutter.mask == nullptr ? nullptr : tree.member(cutter.mask, key);
            return value == nullptr ? std::string() : std::string(tree.text(*value));
        };
        const auto path = path_for(cutter.is_matte          ? nest_.matte->outline.path
                                   : cutter.mask == nullptr ? frame_path(0)
                                                            : text_of("pt"),
                                   cutter.is_matte, copy, frames);
        if (!path) return std::nullopt;
        const auto member = [](const char* key, const std::string& value) {
            return value.empty() ? "" : ",\"" + std::string(key) + "\":" + value;
        };
        const std::string still = "{\"a\":0,\"k\":";
        const std::string opacity = text_of("o");
        const LayerText& named = cutter.is_matte ? nest_.matte->layer.before : nest_.layer.before;
        const std::string closed = !cutter.is_matte || nest_.matte->outline.is_closed ? "true" : "false";
        return "{\"inv\":false,\"mode\":\"" + cutter.mode + "\",\"pt\":" + *path +
               member("o", opacity.empty() ? still + "100}" : opacity) + ",\"x\":" + still + "0}" +
               member("f", text_of("f")) + member("cl", cutter.mask == nullptr ? closed : text_of("cl")) +
               member("nm", name_after(cutter.mask == nullptr ? named.member("nm") : text_of("nm"))) + "}";
    }

    // From the coordinates of the nest, or of its matte, to those of the layer; nothing where the layer has no area.
    std::optional<looks::PlaneMap> map_to(const CopiedLayer& copy, bool from_matte, double frame) {
        const auto inside = evaluation_.place(inside_, copy.inner, inner_frame(frame)).inverse();
        if (!from_matte || !inside) return inside;
        const auto nest = evaluation_.place(around_, nest_.place, frame).inverse();
        if (!nest) return std::nullopt;
        const Nest::Matte& matte = *nest_.matte;
        return matte.outline.place.then(evaluation_.place(around_, matte.place, frame)).then(*nest).then(*inside);
    }

    bool moves(const CopiedLayer& copy, bool from_matte) {
        return evaluation_.moves(inside_, copy.inner) ||
               (from_matte &&
                (evaluation_.moves(around_, nest_.place) || evaluation_.moves(around_, nest_.matte->place)));
    }

    // The path in the coordinates of the layer.
    std::optional<std::string> path_for(const std::string& path, bool is_matte, const CopiedLayer& copy,
                                        const std::vector<double>& frames) {
        if (!moves(copy, is_matte)) {
            const auto map = map_to(copy, is_matte, frames[0]);
            return map ? std::optional(mapped_path(path, *map)) : std::nullopt;
        }
        const looks::MovingPath moving(path);
        std::vector<PathAt> paths;
        for (const double frame : frames) {
            const auto map = map_to(copy, is_matte, frame);
            if (!map) continue;
            const PathAt& at = paths.emplace_back(PathAt{frame, mapped(moving.at(frame), *map)});
            unnested_.spend(kStepsPerLook + kStepsPerVertex * at.vertices.at.size());
        }
        return paths.empty() ? std::nullopt : std::optional(path_through(paths));
    }

    Unnested& unnested_;
    looks::Evaluation& evaluation_;
    Nest& nest_;
    const std::string around_;
    const std::string inside_;
    std::optional<bool> do_masks_end_within_frame_;  // worked out when somebody asks
};

}  // namespace

void cut_layers(Unnested& unnested, Nest& nest, FrameCut frame) {
    Cutting cutting(unnested, nest);
    for (CopiedLayer& copy : nest.copies) cutting.cut(copy, frame);
}

}  // namespace lottie::mend
