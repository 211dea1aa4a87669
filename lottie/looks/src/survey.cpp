// What is worked out about compositions, each thing once: where layers lie and reach, which of them change, their
// names.
#include "survey.h"

#include <algorithm>
#include <cmath>

#include "cut_work.h"
#include "expression_reach.h"
#include "path.h"
#include "text_reach.h"
#include "visibility.h"

namespace lottie::looks {
namespace {

constexpr std::size_t kMostLevels = 16;             // of nests within nests; what lies deeper counts as full
constexpr std::size_t kMostReaches = 4096;          // that are kept of one composition
constexpr std::size_t kMostKeptPoints = 2'000'000;  // of layers that move in themselves: 32 MB
constexpr std::size_t kPointsPerReach = 5;          // what it takes to keep one
constexpr std::size_t kPointsPerBox = 4;
constexpr std::size_t kPointsPerAnswer = 3;  // or whether one lies within a box

bool is_mask_animated(const SceneLayer& layer) {
    return std::any_of(layer.masks().begin(), layer.masks().end(),
                       [](const MaskContent& mask) { return mask.is_animated(); });
}

}  // namespace

std::optional<Hull> mask_reach(const SceneLayer& layer, double frame) {
    if (!layer.has_masks) return std::nullopt;
    std::optional<Hull> hull;
    for (const MaskContent& mask : layer.masks()) {
        if (mask.mode == "n" || (mask.mode == "s" && hull) || (mask.mode == "i" && hull)) continue;
        if (mask.mode != "a" || mask.is_inverted || mask.has_expression) return std::nullopt;
        hull = hull ? united(*hull, mask.hull(frame)) : mask.hull(frame);
    }
    return hull;
}

Survey::Survey(std::shared_ptr<const Stack> stack, Work& work, Surveys* all)
    : stack_(std::move(stack)), work_(work), all_(all), placement_(*stack_, work) {
    if (all != nullptr) about_.resize(stack_->size());
}

void Survey::index_layers() {
    if (is_indexed_) return;
    is_indexed_ = true;
    work_.spend(stack_->size());
    for (std::size_t i = 0; i < stack_->size(); ++i) {
        const SceneLayer& layer = stack_->layer(i);
        by_name_.emplace(layer.name, i);
        if (layer.number) by_number_.emplace(*layer.number, i);
    }
}

std::optional<std::size_t> Survey::layer_named(std::string_view name) {
    index_layers();
    const auto found = by_name_.find(name);
    return found == by_name_.end() ? std::nullopt : std::optional(found->second);
}

std::optional<std::size_t> Survey::layer_numbered(double number) {
    index_layers();
    const auto found = by_number_.find(number);
    return found == by_number_.end() ? std::nullopt : std::optional(found->second);
}

Survey* Survey::main_composition(std::string_view name) {
    const Scene& scene = all_->scene();
    const auto nests = scene.nest_names.find(std::string(name));
    const bool is_main = scene.main().name == name && (nests == scene.nest_names.end() || nests->second == 0);
    return is_main ? all_->find(scene.main().id) : nullptr;
}

Survey* Survey::inside(const SceneLayer& nest) {
    return nest.source.empty() ? nullptr : all_->find(nest.source);
}

// Reach

bool Survey::is_led(std::size_t place) {
    std::vector<std::size_t> chain;
    Answer answer = Answer::no;
    for (std::optional<std::size_t> at = place; at && answer == Answer::no; at = stack_->parent(*at)) {
        chain.push_back(*at);
        if (about_[*at].is_led != Answer::unknown) {
            answer = about_[*at].is_led;
            break;
        }
        if (is_moved_by_own_expression(stack_->layer(*at))) answer = Answer::yes;
    }
    work_.spend(chain.size());
    for (const std::size_t link : chain) about_[link].is_led = answer;
    return answer == Answer::yes;
}

bool Survey::is_drawn_otherwise(std::size_t place) {
    return is_led(place) || is_shaped_by_expression(stack_->layer(place));
}

bool Survey::is_any_drawn_otherwise() {
    if (is_any_drawn_otherwise_ != Answer::unknown) return is_any_drawn_otherwise_ == Answer::yes;
    work_.spend(stack_->size());
    bool is_any = false;
    for (std::size_t i = 0; i < stack_->size() && !is_any; ++i) {
        const SceneLayer& layer = stack_->layer(i);
        if (!layer.can_draw() || layer.is_hidden) continue;
        Survey* in = layer.type == LayerType::nest ? inside(layer) : nullptr;
        is_any = is_drawn_otherwise(i) || (in != nullptr && in->levels() < kMostLevels && in->is_any_drawn_otherwise());
    }
    is_any_drawn_otherwise_ = is_any ? Answer::yes : Answer::no;
    return is_any;
}

Hull Survey::nest_reach(const SceneLayer& nest, double frame) {
    const Hull whole = hull_of(Box{0, 0, nest.width, nest.height});
    Survey* in = inside(nest);
    if (in == nullptr || in->levels() >= kMostLevels || nest.time_remap_has_expression() ||
        in->is_any_drawn_otherwise())
        return whole;
    return cut(in->reach_of_all(nest.inner_frame(frame, all_->scene().frame_rate)), whole);
}

Hull Survey::work_out_reach(std::size_t place, double frame) {
    const SceneLayer& layer = stack_->layer(place);
    Hull hull;
    switch (layer.type) {
        case LayerType::nest:
            hull = nest_reach(layer, frame);
            break;
        case LayerType::solid:
            hull = hull_of(Box{0, 0, layer.width, layer.height});
            break;
        case LayerType::image: {
            const ImageSize size = all_->scene().image_size(layer.source);
            hull = hull_of(Box{0, 0, size.width, size.height});
            break;
        }
        case LayerType::shape:
            hull = layer.shapes().hull(frame, work_);
            break;
        case LayerType::text:
            hull = text_reach(layer, all_->scene().glyphs(), frame);
            break;
        default:
            break;
    }
    return within_masks(layer, std::move(hull), frame);
}

const Hull& Survey::reach(std::size_t place, double frame) {
    About& about = about_[place];
    if (about.own_frame && (*about.own_frame == frame || own_reach_stands_still(place))) return about.own_reach;
    if (const Hull* kept = kept_reach(place, frame)) {
        about.own_reach = *kept;
        about.own_frame = frame;
        return about.own_reach;
    }
    work_.spend(1);
    about.own_reach = work_out_reach(place, frame);
    about.own_frame = frame;
    keep_reach(place, frame);
    return about.own_reach;
}

Hull Survey::reach_with(const StrokeWidths& widths, std::size_t place, double frame) {
    const SceneLayer& layer = stack_->layer(place);
    return within_masks(layer, layer.shapes().hull_with(widths, frame, work_), frame);
}

Hull Survey::within_masks(const SceneLayer& layer, Hull hull, double frame) {
    const auto mask = mask_reach(layer, frame);
    if (!mask) return hull;
    work_.spend(steps_to_cut(hull, *mask));
    return cut(hull, *mask);
}

const Hull* Survey::kept_reach(std::size_t place, double frame) const {
    const auto found = about_[place].kept_reaches.find(frame);
    return found == about_[place].kept_reaches.end() ? nullptr : &found->second;
}

void Survey::keep_reach(std::size_t place, double frame) {
    const Hull& hull = about_[place].own_reach;
    if (own_reach_stands_still(place) || !takes_room(hull.size() + kPointsPerReach)) return;
    about_[place].kept_reaches.emplace(frame, hull);
}

// Whether as many points may be kept.
bool Survey::takes_room(std::size_t points) {
    if (all_->kept_points_ >= kMostKeptPoints) return false;
    kept_points_ += points;
    all_->kept_points_ += points;
    return true;
}

const Hull& Survey::reach_in_stack(std::size_t place, double frame) {
    static const Hull kNowhere;
    const SceneLayer& layer = stack_->layer(place);
    if (!layer.is_on(frame)) return kNowhere;
    About& about = about_[place];
    if (about.frame && (*about.frame == frame || reach_stands_still(place))) return about.reach;
    about.frame = frame;
    about.reach.clear();
    if (layer.transform().opacity.is_nothing_at(frame)) return about.reach;
    about.reach = mapped(reach(place, frame), placement_.world(place, frame));
    const auto matte = stack_->matte(place);
    if (!matte || (layer.matte_mode != 1 && layer.matte_mode != 3) || is_drawn_otherwise(*matte)) return about.reach;
    // What lies outside of the matte is hidden.
    const Hull of_matte = mapped(reach(*matte, frame), placement_.world(*matte, frame));
    work_.spend(steps_to_cut(about.reach, of_matte));
    about.reach = cut(about.reach, of_matte);
    return about.reach;
}

std::optional<Box> Survey::box_around_reach(std::size_t place, double frame) {
    const SceneLayer& layer = stack_->layer(place);
    switch (layer.type) {
        case LayerType::nest:
        case LayerType::solid:
            return Box{0, 0, layer.width, layer.height};
        case LayerType::shape:
            return layer.shapes().box_around(frame, work_);
        default:
            return std::nullopt;
    }
}

bool Survey::surely_lies_within(std::size_t place, double frame, const Box& box) {
    if (!stack_->layer(place).is_on(frame)) return true;
    About& about = about_[place];
    if (!(about.box == box)) about.lies_within.clear();
    about.box = box;
    if (const auto known = about.lies_within.find(frame); known != about.lies_within.end()) return known->second;
    const bool answer = is_told_to_lie_within(place, frame, box);
    if (takes_room(kPointsPerAnswer)) about.lies_within.emplace(frame, answer);
    return answer;
}

bool Survey::is_told_to_lie_within(std::size_t place, double frame, const Box& box) {
    const auto own = box_around_reach(place, frame);
    if (!own) return false;
    if (own->left > own->right || own->top > own->bottom) return true;
    const Box placed = mapped(*own, placement_.world(place, frame));
    return placed.left >= box.left && placed.right <= box.right && placed.top >= box.top && placed.bottom <= box.bottom;
}

bool Survey::own_reach_stands_still(std::size_t place) {
    Answer& answer = about_[place].own_stands_still;
    if (answer == Answer::unknown) {
        const SceneLayer& layer = stack_->layer(place);
        bool is_still = !is_mask_animated(layer);
        if (layer.type == LayerType::shape) is_still = is_still && !layer.shapes().is_animated();
        if (layer.type == LayerType::text) is_still = is_still && !is_text_animated(layer);
        if (layer.type == LayerType::nest) is_still = is_still && nest_stands_still(layer);
        answer = is_still ? Answer::yes : Answer::no;
    }
    return answer == Answer::yes;
}

bool Survey::nest_stands_still(const SceneLayer& nest) {
    Survey* in = inside(nest);
    if (in == nullptr || in->levels() >= kMostLevels) return true;
    if (nest.time_remap()) return false;
    const double from = nest.inner_frame(nest.in, 0);
    const double to = nest.inner_frame(nest.out, 0);
    work_.spend(in->stack().size());
    for (std::size_t i = 0; i < in->stack().size(); ++i) {
        const SceneLayer& layer = in->stack().layer(i);
        if (!layer.draws()) continue;
        if (layer.in > std::min(from, to) || layer.out < std::max(from, to) || !in->reach_stands_still(i)) return false;
    }
    return true;
}

std::optional<Box> Survey::box_around_paths(std::size_t place, double frame) {
    About& about = about_[place];
    if (!about.paths) about.paths.emplace(stack_->layer(place).array("shapes"));
    if (about.paths->is_any_expressed()) return std::nullopt;
    const double at = about.paths->is_any_animated() ? frame : 0;
    const auto known = about.boxes_around_paths.find(at);
    if (known != about.boxes_around_paths.end()) return known->second;
    const Box box = about.paths->around(at, work_);
    if (takes_room(kPointsPerBox)) about.boxes_around_paths.emplace(at, box);
    return box;
}

bool Survey::reach_stands_still(std::size_t place) {
    Answer& answer = about_[place].stands_still;
    if (answer == Answer::unknown) {
        const auto matte = stack_->matte(place);
        const bool is_still = !placement_.moves(place) && own_reach_stands_still(place) &&
                              !stack_->layer(place).transform().opacity.is_animated() &&
                              (!matte || (!placement_.moves(*matte) && own_reach_stands_still(*matte)));
        answer = is_still ? Answer::yes : Answer::no;
    }
    return answer == Answer::yes;
}

const Hull& Survey::reach_of_all(double frame) {
    if (reach_of_all_.size() >= kMostReaches) reach_of_all_.clear();
    const auto [found, is_new] = reach_of_all_.try_emplace(frame);
    if (!is_new) return found->second;
    work_.spend(stack_->size());
    std::vector<Point> points;
    for (std::size_t i = 0; i < stack_->size(); ++i) {
        if (!stack_->layer(i).draws()) continue;
        const Hull& one = reach_in_stack(i, frame);
        points.insert(points.end(), one.begin(), one.end());
    }
    return found->second = hull_of(std::move(points));
}

// Change and depth

bool Survey::changes_over_time(std::size_t place) {
    // Nests within nests may lie deep: what is open is kept here, not on the stack of calls.
    struct Open {
        Survey* survey;
        std::size_t place;
        std::size_t next_inside = 0;
    };
    std::vector<Open> open = {{this, place}};
    const auto answer = [&](bool changes) {
        open.back().survey->about_[open.back().place].changes = changes ? Answer::yes : Answer::no;
        open.pop_back();
    };
    while (!open.empty()) {
        Open& at = open.back();
        const SceneLayer& layer = at.survey->stack_->layer(at.place);
        About& about = at.survey->about_[at.place];
        if (about.changes != Answer::unknown) {
            open.pop_back();
            continue;
        }
        work_.spend(1);
        if (at.next_inside == 0 && layer.changes_by_itself()) {
            answer(true);
            continue;
        }
        Survey* in = layer.type == LayerType::nest ? at.survey->inside(layer) : nullptr;
        if (in == nullptr || at.next_inside == in->stack_->size()) {
            answer(false);
            continue;
        }
        const std::size_t i = at.next_inside;
        const SceneLayer& inner = in->stack_->layer(i);
        const double from = (layer.in - layer.start) / layer.stretch;
        const double to = (layer.out - layer.start) / layer.stretch;
        if (!inner.draws() && !inner.is_matte_source) {
            ++at.next_inside;
        } else if (inner.in > from || inner.out < to || in->about_[i].changes == Answer::yes) {
            answer(true);
        } else if (in->about_[i].changes == Answer::no) {
            ++at.next_inside;
        } else {
            open.push_back({in, i});
        }
    }
    return about_[place].changes == Answer::yes;
}

bool Survey::is_seen_in_depth(std::size_t place) {
    const SceneLayer& layer = stack_->layer(place);
    if (!layer.can_draw() || layer.is_hidden) return false;
    std::vector<std::size_t> chain;
    std::optional<std::size_t> at = place;
    Answer answer = Answer::no;
    while (at) {
        About& about = about_[*at];
        if (about.leaves_plane == Answer::unknown) {
            const SceneLayer& link = stack_->layer(*at);
            if (link.type != LayerType::camera && link.is_3d && link.transform().is_spatial()) {
                about.leaves_plane = Answer::yes;
            }
        }
        if (about.leaves_plane != Answer::unknown) {
            answer = about.leaves_plane;
            break;
        }
        chain.push_back(*at);
        at = stack_->parent(*at);
    }
    work_.spend(chain.size());
    for (const std::size_t link : chain) about_[link].leaves_plane = answer;
    return answer == Answer::yes;
}

template <class IsSo>
bool Survey::is_any_so(std::vector<Answer>& known, std::size_t place, IsSo is_so) const {
    if (known.empty()) known.resize(stack_->size(), Answer::unknown);
    std::vector<std::size_t> chain;
    Answer answer = Answer::no;
    for (std::optional<std::size_t> at = place; at && answer == Answer::no; at = stack_->parent(*at)) {
        if (known[*at] != Answer::unknown) {
            answer = known[*at];
            break;
        }
        chain.push_back(*at);
        if (is_so(stack_->layer(*at).transform())) answer = Answer::yes;
    }
    work_.spend(chain.size());
    for (const std::size_t link : chain) known[link] = answer;
    return answer == Answer::yes;
}

bool Survey::has_reliable_placement(std::size_t place) const {
    return !is_any_so(is_placed_in_many_ways_, place, [pixel = stack_->width / kPictureWidth](const Transform& own) {
        return own.has_expression() || own.is_spatial() || (own.is_auto_oriented && own.position.is_animated()) ||
               !own.anchor.moves_alike_everywhere(pixel) || !own.position.moves_alike_everywhere(pixel) ||
               !own.scale.moves_alike_everywhere(pixel);
    });
}

bool Survey::is_moved_by_expression(std::size_t place) const {
    return is_any_so(is_moved_by_expression_, place, [](const Transform& own) { return own.has_expression(); });
}

// All

const Palette& Surveys::palette() {
    constexpr std::size_t kBytesPerStep = 8;
    if (!palette_) {
        work_.spend(scene_.byte_count / kBytesPerStep);
        palette_ = Palette::of(scene_);
    }
    return *palette_;
}

Survey* Surveys::find(const std::string& id) {
    const auto found = by_id_.find(id);
    if (found != by_id_.end()) return found->second.get();
    if (scene_.find(id) == nullptr) return nullptr;
    std::vector<std::string> open = {id};
    while (!open.empty()) {
        const std::string next = open.back();
        if (by_id_.contains(next) || add(next, open)) open.pop_back();
    }
    return by_id_.at(id).get();
}

// False when compositions inside must come first; they are put on top of `open`.
bool Surveys::add(const std::string& id, std::vector<std::string>& open) {
    const std::shared_ptr<const Stack>& stack = *scene_.find(id);
    work_.spend(stack->size() + 1);
    const std::size_t open_before = open.size();
    std::size_t levels = 0;
    std::vector<std::string> shown;
    for (std::size_t i = 0; i < stack->size(); ++i) {
        const SceneLayer& layer = stack->layer(i);
        if (layer.type != LayerType::nest || layer.source.empty() || scene_.find(layer.source) == nullptr) continue;
        if (const auto known = by_id_.find(layer.source); known == by_id_.end()) {
            open.push_back(layer.source);
        } else {
            levels = std::max(levels, known->second->levels());
            shown.push_back(layer.source);
        }
    }
    if (open.size() > open_before) return false;
    auto survey = std::make_unique<Survey>(stack, work_, this);
    survey->levels_ = levels + 1;
    by_id_.emplace(id, std::move(survey));
    for (const std::string& source : shown) users_[source].push_back(id);
    return true;
}

void Surveys::forget(const std::string& id) {
    std::vector<std::string> open = {id};
    while (!open.empty()) {
        const std::string next = std::move(open.back());
        open.pop_back();
        if (const auto found = by_id_.find(next); found != by_id_.end()) {
            kept_points_ -= found->second->kept_points_;
            by_id_.erase(found);
        } else if (next != id) {
            continue;
        }
        const auto users = users_.find(next);
        if (users == users_.end()) continue;
        open.insert(open.end(), users->second.begin(), users->second.end());
        users_.erase(users);
    }
}

}  // namespace lottie::looks
