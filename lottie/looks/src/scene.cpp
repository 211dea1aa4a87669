// Compositions of an animation, with the links between layers resolved as players do.
#include "scene.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace lottie::looks {
namespace {

// The places of layers by the number that others know them by; of several with one number the first. Most files number
// their layers from 1 on.
class PlacesByNumber {
  public:
    explicit PlacesByNumber(std::size_t layers) : low_(layers + 1, kNone) {}

    void add(double number, std::uint32_t place) {
        if (const auto at = low_place(number)) {
            if (low_[*at] == kNone) low_[*at] = place;
        } else {
            others_.emplace(number, place);
        }
    }

    std::uint32_t find(double number) const {
        if (const auto at = low_place(number)) return low_[*at];
        const auto found = others_.find(number);
        return found == others_.end() ? kNone : found->second;
    }

    static constexpr std::uint32_t kNone = UINT32_MAX;

  private:
    std::optional<std::size_t> low_place(double number) const {
        if (!(number >= 0) || number >= static_cast<double>(low_.size()) || number != std::floor(number)) return {};
        return static_cast<std::size_t>(number);
    }

    std::vector<std::uint32_t> low_;
    std::unordered_map<double, std::uint32_t> others_;
};

// The layers of an array, in a stack that is otherwise new.
void read_layers(Stack& stack, TextReader& reader, const std::shared_ptr<Arena>& arena) {
    std::vector<std::shared_ptr<const SceneLayer>> layers;
    if (reader.enter_array()) {
        while (reader.next_element())
            layers.push_back(std::make_shared<SceneLayer>(reader, SceneLayer::Counterparts{}, arena));
    }
    stack.set_layers(std::move(layers));
}

}  // namespace

Stack Stack::without_layers() const {
    Stack rest;
    rest.id = id;
    rest.name = name;
    rest.width = width;
    rest.height = height;
    rest.first_frame = first_frame;
    rest.end_frame = end_frame;
    rest.frame_rate = frame_rate;
    rest.keeps_frame_rate = keeps_frame_rate;
    return rest;
}

void Stack::set_layers(std::vector<std::shared_ptr<const SceneLayer>> layers) {
    places_.clear();
    places_.reserve(layers.size());
    for (auto& layer : layers) places_.push_back({std::move(layer), kNone, kNone});
    link();
    cut_parent_circles();
}

void Stack::link() {
    PlacesByNumber by_number(places_.size());
    for (std::uint32_t i = 0; i < places_.size(); ++i) {
        if (const auto& number = places_[i].layer->number) by_number.add(*number, i);
    }
    for (std::uint32_t i = 0; i < places_.size(); ++i) {
        const SceneLayer& layer = *places_[i].layer;
        const auto other = [&](double wanted) {
            const std::uint32_t found = by_number.find(wanted);
            return found == i ? kNone : found;
        };
        if (layer.parent) places_[i].parent = other(*layer.parent);
        if (layer.matte_mode == 0) continue;
        if (layer.matte) {
            places_[i].matte = other(*layer.matte);
        } else if (i > 0) {
            places_[i].matte = i - 1;
        }
    }
}

// A layer that is its own ancestor has no place; players cut such a chain somewhere.
void Stack::cut_parent_circles() {
    enum class Mark : char { unseen, open, done };
    std::vector<Mark> marks(places_.size(), Mark::unseen);
    std::vector<std::uint32_t> chain;
    for (std::uint32_t first = 0; first < places_.size(); ++first) {
        chain.clear();
        std::uint32_t at = first;
        while (at != kNone && marks[at] == Mark::unseen) {
            marks[at] = Mark::open;
            chain.push_back(at);
            at = places_[at].parent;
        }
        if (at != kNone && marks[at] == Mark::open) places_[chain.back()].parent = kNone;
        for (const std::uint32_t i : chain) marks[i] = Mark::done;
    }
}

Scene::Scene(std::string_view text) : byte_count(text.size()), composition_calls_(find_composition_calls(text)) {
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    TextReader reader(text);
    if (reader.peek() != '{') throw std::runtime_error("the animation cannot be read");
    reader.enter_object();
    auto top = std::make_shared<Stack>();
    std::string key;
    while (reader.next_member(key)) {
        if (key == "layers") {
            read_layers(*top, reader, arena_);
        } else if (key == "assets") {
            if (!reader.enter_array()) continue;
            while (reader.next_element()) read_asset(reader);
        } else {
            const std::string_view value = reader.skip();
            if (key == "chars") letters_ = value;
            if (key == "fonts") fonts_ = value;
            if (key == "nm") top->name = string_of(value);
            if (key == "fr") frame_rate = number_of(value, 30);
            if (key == "w") top->width = number_of(value, 0);
            if (key == "h") top->height = number_of(value, 0);
            if (key == "ip") top->first_frame = number_of(value, 0);
            if (key == "op") top->end_frame = number_of(value, 0);
        }
    }
    stacks[""] = top;
    std::unordered_map<std::string, ImageSize> sizes;  // only the layers that use a composition know its size
    for (const auto& [id, stack] : stacks) {
        count_nests(*stack, true);
        for (std::size_t i = 0; i < stack->size(); ++i) {
            const SceneLayer& layer = stack->layer(i);
            if (layer.type != LayerType::nest) continue;
            ImageSize& size = sizes[layer.source];
            size = {std::max(size.width, layer.width), std::max(size.height, layer.height)};
        }
    }
    const auto first_frames = find_first_frames();
    for (auto& [id, stack] : stacks) {
        if (id.empty()) continue;
        auto sized = std::make_shared<Stack>(*stack);
        sized->width = sizes[id].width;
        sized->height = sizes[id].height;
        const auto first = first_frames.find(id);
        if (first != first_frames.end()) sized->first_frame = first->second;
        stack = std::move(sized);
    }
}

const Glyphs& Scene::glyphs() const {
    if (!glyphs_) glyphs_.emplace(letters_, fonts_);
    return *glyphs_;
}

// Of each composition the first frame before 0 at which a layer of it begins, or can begin once its nests and theirs
// are un-nested; else 0.
std::unordered_map<std::string, double> Scene::find_earliest_layers() const {
    constexpr int kMostLevels = 16;  // compositions may show one another in a circle
    std::unordered_map<std::string, double> earliest;
    for (const auto& [id, stack] : stacks) {
        double& first = earliest[id];
        for (std::size_t i = 0; i < stack->size(); ++i) first = std::min(first, stack->layer(i).in);
    }
    bool is_changed = true;
    for (int level = 0; level < kMostLevels && is_changed; ++level) {
        is_changed = false;
        for (const auto& [id, stack] : stacks) {
            for (std::size_t i = 0; i < stack->size(); ++i) {
                const SceneLayer& nest = stack->layer(i);
                const auto inside = earliest.find(nest.source);
                if (nest.type != LayerType::nest || inside == earliest.end() || nest.source.empty()) continue;
                const double first = nest.start + nest.stretch * inside->second;
                if (first >= earliest[id]) continue;
                earliest[id] = first;
                is_changed = true;
            }
        }
    }
    return earliest;
}

// Of compositions that some nest shows before their frame 0: the first one that is shown and that has a layer.
std::unordered_map<std::string, double> Scene::find_first_frames() const {
    constexpr int kMostVisits = 8;  // compositions may show one another in a circle
    std::unordered_map<std::string, double> first_frames;
    std::unordered_map<std::string, int> visits;
    std::optional<std::unordered_map<std::string, double>> begins;  // worked out when somebody asks for them
    const auto begins_of = [&](const std::string& id) {
        if (!begins) begins = find_earliest_layers();
        return begins->at(id);
    };
    std::vector<std::string> open = {""};
    while (!open.empty()) {
        const std::string id = std::move(open.back());
        open.pop_back();
        if (++visits[id] > kMostVisits) continue;
        const Stack& stack = *stacks.at(id);
        const auto own = first_frames.find(id);
        const double first = own == first_frames.end() ? stack.first_frame : own->second;
        for (std::size_t i = 0; i < stack.size(); ++i) {
            const SceneLayer& nest = stack.layer(i);
            const auto source = stacks.find(nest.source);
            if (nest.type != LayerType::nest || source == stacks.end() || source->first.empty()) continue;
            double shown = std::min(nest.inner_frame(std::max(nest.in, first), frame_rate),
                                    nest.inner_frame(nest.out, frame_rate));
            if (nest.time_remap()) {
                for (const Values& seconds : nest.time_remap()->key_values())
                    shown = std::min(shown, seconds[0] * frame_rate);
            }
            const double from = shown < 0 ? std::floor(std::max(shown, begins_of(nest.source))) : 0;
            const auto [known, is_new] = first_frames.try_emplace(nest.source, 0);
            if ((is_new && visits[nest.source] == 0) || from < known->second) {
                known->second = std::min(from, known->second);
                open.push_back(nest.source);
            }
        }
    }
    return first_frames;
}

void Scene::read_asset(TextReader& reader) {
    if (!reader.enter_object()) return;
    auto stack = std::make_shared<Stack>();
    ImageSize size;
    bool has_layers = false;
    std::string key;
    while (reader.next_member(key)) {
        if (key == "layers") {
            has_layers = true;
            read_layers(*stack, reader, arena_);
            continue;
        }
        const std::string_view value = reader.skip();
        if (key == "id") stack->id = string_of(value);
        if (key == "nm") stack->name = string_of(value);
        if (key == "fr") stack->frame_rate = number_of(value, 0);
        if (key == "pfr") stack->keeps_frame_rate = is_truthy(value);
        if (key == "w") size.width = number_of(value, 0);
        if (key == "h") size.height = number_of(value, 0);
    }
    if (!has_layers) {
        images_.emplace(stack->id, size);
        return;
    }
    for (std::size_t i = 0; i < stack->size(); ++i) stack->end_frame = std::max(stack->end_frame, stack->layer(i).out);
    if (!stack->id.empty()) stacks.emplace(stack->id, std::move(stack));
}

const std::shared_ptr<const Stack>* Scene::find(std::string_view id) const {
    const auto found = stacks.find(id);
    return found == stacks.end() ? nullptr : &found->second;
}

ImageSize Scene::image_size(std::string_view id) const {
    const auto found = images_.find(id);
    return found == images_.end() ? ImageSize{} : found->second;
}

void Scene::replace(std::shared_ptr<const Stack> stack) {
    auto& place = stacks.at(stack->id);
    count_nests(*place, false);
    count_nests(*stack, true);
    place = std::move(stack);
}

void Scene::remove(const std::string& id) {
    const auto found = stacks.find(id);
    if (found == stacks.end()) return;
    count_nests(*found->second, false);
    stacks.erase(found);
}

void Scene::count_nests(const Stack& stack, bool are_added) {
    for (std::size_t i = 0; i < stack.size(); ++i) {
        const SceneLayer& layer = stack.layer(i);
        if (layer.type != LayerType::nest) continue;
        for (std::size_t* count : {&uses[layer.source], &nest_names[layer.name]}) are_added ? ++*count : --*count;
    }
}

}  // namespace lottie::looks
