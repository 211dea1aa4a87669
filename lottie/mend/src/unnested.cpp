// Nests of one composition before the run, and the composition after it: what all remedies work on.
#include "unnested.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "document/json_text.h"
#include "document/outline_reader.h"
#include "retimed.h"

namespace lottie::mend {
namespace {

using document::ScannedComp;
using document::ScannedLayer;
using looks::Origin;

std::optional<std::size_t> layer_of(const ScannedComp& comp, std::optional<std::int64_t> number, std::size_t not_this) {
    if (!number) return std::nullopt;
    for (std::size_t i = 0; i < comp.list.size(); ++i) {
        if (i != not_this && comp.list[i].ind == number) return i;
    }
    return std::nullopt;
}

// The matte that a layer of a stack has: the one it names, else the one above it.
template <class FactsAt>
std::optional<std::size_t> matte_of(std::size_t place, std::size_t count, FactsAt facts_at) {
    const ScannedLayer& layer = facts_at(place);
    if (layer.matte_type == 0) return std::nullopt;
    if (layer.matte) {
        for (std::size_t i = 0; i < count; ++i) {
            if (facts_at(i).ind == layer.matte) return i;
        }
        return std::nullopt;
    }
    if (place == 0) return std::nullopt;
    return place - 1;
}

// A small file may have very many properties and a clock that turns very many corners.
constexpr double kMostCuts = 500'000;
constexpr double kBytesPerProperty = 100;

// What it costs to look for a layer, in steps for each that is passed: by number, and by name.
constexpr std::size_t kLayersPerStep = 8;
constexpr std::size_t kStepsPerName = 10;
// And to put text on another clock.
constexpr double kStepsPerByte = 0.5;
constexpr double kStepsPerCut = 40;

// How many pieces a clock cuts keyframed properties into, at most, when so much text is full of them.
double cuts(const NestClock& clock, double bytes) {
    return static_cast<double>(clock.runs().size() - 1) * bytes / kBytesPerProperty;
}

std::size_t place_in(const ScannedComp& comp, const ScannedLayer& layer) {
    return static_cast<std::size_t>(&layer - comp.list.data());
}

}  // namespace

Before::Before(std::string animation, looks::Judge& judge)
    : text(std::move(animation)), outline(document::read_known_outline(text)), evaluation(judge.evaluation()) {}
Before::Before(std::string animation, document::DocumentOutline its_outline, looks::Judge& judge)
    : text(std::move(animation)), outline(std::move(its_outline)), evaluation(judge.evaluation()) {}

const ScannedComp& Before::composition(const std::string& id) const {
    if (id.empty()) return outline.comps.front();
    for (const ScannedComp& comp : outline.comps) {
        if (comp.asset < 0) continue;
        const auto& token = outline.assets[static_cast<std::size_t>(comp.asset)].id;
        if (document::string_equals(token.text.of(text), id)) return comp;
    }
    throw std::invalid_argument("the animation has no composition of that id");
}

Unnested::Unnested(Before& before, const std::vector<std::string_view>& after, looks::StackChange change,
                   looks::Work& work)
    : before_(before), work_(work), change_(std::move(change)), comp_before_(before.composition(change_.composition)) {
    for (const ScannedLayer& layer : comp_before_.list) stack_.emplace_back(before_.text, layer);
    std::size_t size = 0;
    for (const std::string_view layer : after) size += layer.size();
    after_text_.reserve(size);
    for (const std::string_view layer : after) after_text_ += layer;
    std::uint32_t begin = 0;
    for (std::size_t i = 0; i < after.size(); ++i) {
        const auto end = static_cast<std::uint32_t>(begin + after[i].size());
        result_.push_back({std::make_unique<LayerText>(after_text_, document::Slice{begin, end}), change_.after.at(i)});
        begin = end;
        const Origin& origin = result_.back().origin;
        LayerText& layer = *result_.back().layer;
        const bool is_kept = origin.kind == Origin::Kind::kept;
        const ScannedLayer* facts = is_kept ? &comp_before_.list.at(origin.layer) : nullptr;
        if (facts != nullptr && facts->text.of(before_.text) == after[i]) {
            stack_.at(origin.layer).is_as_before = true;
            largest_number_ = std::max({largest_number_, facts->ind.value_or(0), facts->parent.value_or(0)});
        } else {
            for (const char* key : {"ind", "parent"})
                largest_number_ = std::max(largest_number_, document::whole_number(layer.number(key, 0)).value_or(0));
        }
        if (is_kept && !is_unnested(origin.layer)) stack_.at(origin.layer).now = &layer;
    }
    for (const std::size_t place : change_.nests) read_nest(place);
}

void Nest::spend_for_retiming(std::size_t bytes) const {
    const auto size = static_cast<double>(bytes);
    work.spend(static_cast<std::size_t>(kStepsPerByte * size + (clock ? kStepsPerCut * cuts(*clock, size) : 0)));
}

std::string Nest::on_outer_clock(const CopiedLayer& copy, const document::JsonNode& value) const {
    const document::JsonTree& tree = copy.before.tree();
    spend_for_retiming(tree.text(value).size());
    if (only_shifts() || !clock) return shifted(tree, value, copy.shift());
    return retimed(tree, value, *clock);
}

double Unnested::frame_rate() const {
    return document::read_number(before_.outline.frame_rate.text.of(before_.text));
}

void Unnested::read_nest(std::size_t place) {
    KeptLayer& layer = stack_.at(place);
    auto nest =
        std::make_unique<Nest>(place, layer, document::decode_string(layer.facts.ref_id.of(before_.text)), work_);
    nest->clock = NestClock::of(layer.facts, layer.before, frame_rate());
    const ScannedComp& inside = before_.composition(nest->source);
    const auto bytes = static_cast<double>(inside.layers.end - inside.layers.begin);
    if (nest->clock && cuts(*nest->clock, bytes) > kMostCuts) nest->clock.reset();
    for (std::size_t i = 0; i < inside.list.size(); ++i) nest->copies.emplace_back(before_.text, i, inside.list[i]);
    for (Entry& entry : result_) {
        if (entry.origin.kind == Origin::Kind::copied && entry.origin.nest == place)
            nest->copies.at(entry.origin.layer).now = entry.layer.get();
    }
    find_stand_in(*nest);
    nests_.push_back(std::move(nest));
}

// The layer that the run made and hung copies of this nest on.
void Unnested::find_stand_in(Nest& nest) {
    for (const CopiedLayer& copy : nest.copies) {
        if (copy.now == nullptr) continue;
        const auto parent = copy.now->number("parent");
        if (!parent) continue;
        for (Entry& entry : result_) {
            if (entry.origin.kind == Origin::Kind::made && entry.layer->number("ind") == parent) {
                nest.stand_in = entry.layer.get();
                return;
            }
        }
    }
}

Nest& Unnested::nest_at(std::size_t place) {
    for (const auto& nest : nests_) {
        if (nest->place == place) return *nest;
    }
    throw std::invalid_argument("that layer was not un-nested");
}

bool Unnested::is_unnested(std::size_t place) const {
    return std::find(change_.nests.begin(), change_.nests.end(), place) != change_.nests.end();
}

std::optional<std::size_t> Unnested::parent_in_stack(const ScannedLayer& layer) const {
    if (layer.parent) spend(stack_.size() / kLayersPerStep);
    return layer_of(comp_before_, layer.parent, place_in(comp_before_, layer));
}

std::optional<std::size_t> Unnested::parent_inside(const Nest& nest, const ScannedLayer& layer) const {
    if (!layer.parent) return std::nullopt;
    spend(nest.copies.size() / kLayersPerStep);
    for (const CopiedLayer& copy : nest.copies) {
        if (&copy.facts != &layer && copy.facts.ind == layer.parent) return copy.inner;
    }
    return std::nullopt;
}

bool is_drawn(const CopiedLayer& copy) {
    constexpr int kNullType = 3;
    constexpr int kLastDrawnType = 5;
    return copy.now != nullptr && !copy.facts.is_matte && !copy.facts.is_hidden && copy.facts.type >= 0 &&
           copy.facts.type <= kLastDrawnType && copy.facts.type != kNullType;
}

std::optional<std::size_t> matte_inside(const Nest& nest, const CopiedLayer& copy) {
    return matte_of(copy.inner, nest.copies.size(),
                    [&](std::size_t i) -> const ScannedLayer& { return nest.copies[i].facts; });
}

std::optional<std::size_t> Unnested::matte_in_stack(std::size_t place) const {
    if (stack_.at(place).facts.matte) spend(stack_.size() / kLayersPerStep);
    return matte_of(place, stack_.size(), [&](std::size_t i) -> const ScannedLayer& { return stack_[i].facts; });
}

// Below the layers out of the nest, but never between a matte and what it is for.
std::size_t Unnested::insert_place_below(const Nest& nest) const {
    std::size_t place = 0;
    for (std::size_t i = 0; i < result_.size(); ++i) {
        const Origin& origin = result_[i].origin;
        const bool is_copy = origin.kind == Origin::Kind::copied && origin.nest == nest.place;
        const bool was_above = origin.kind == Origin::Kind::kept && origin.layer < nest.place;
        if (is_copy || was_above) place = i + 1;
    }
    while (place < result_.size() && result_[place].layer->number("tt", 0) != 0) ++place;
    return place;
}

std::int64_t Unnested::stand_in(Nest& nest) {
    if (nest.stand_in == nullptr) {
        const LayerText& layer = nest.layer.before;
        std::string text = "{\"ddd\":" + std::string(layer.is_set("ddd") ? "1" : "0") +
                           ",\"ind\":" + std::to_string(++largest_number_) + ",\"ty\":3";
        const auto add = [&](std::string_view key) {
            if (const auto value = layer.member(key); !value.empty())
                text += ",\"" + std::string(key) + "\":" + std::string(value);
        };
        add("nm");
        text += ",\"sr\":1";
        for (const char* key : {"ks", "ao", "ip", "op", "st"}) add(key);
        text += ",\"bm\":0}";
        const auto place = static_cast<std::ptrdiff_t>(insert_place_below(nest));
        const auto entry = result_.insert(result_.begin() + place, {std::make_unique<LayerText>(std::move(text)), {}});
        nest.stand_in = entry->layer.get();
    }
    if (const auto parent = parent_in_stack(nest.facts())) {
        const std::int64_t number = is_unnested(*parent) ? stand_in(nest_at(*parent)) : number_of(*stack_[*parent].now);
        nest.stand_in->set("parent", std::to_string(number));
        // The run made it after the nest had lost its parent, with what that made of its transform.
        if (is_unnested(*parent)) nest.stand_in->take("ks", nest.layer.before);
    }
    return number_of(*nest.stand_in);
}

std::vector<LayerText*> Unnested::order() const {
    spend(result_.size() / kLayersPerStep);
    std::vector<LayerText*> layers;
    for (const Entry& entry : result_) layers.push_back(entry.layer.get());
    return layers;
}

std::size_t Unnested::place_of(const LayerText& layer) const {
    spend(result_.size() / kLayersPerStep);
    const auto found =
        std::find_if(result_.begin(), result_.end(), [&](const Entry& entry) { return entry.layer.get() == &layer; });
    return static_cast<std::size_t>(found - result_.begin());
}

std::int64_t Unnested::number_of(LayerText& layer) {
    if (const auto number = layer.number("ind")) return static_cast<std::int64_t>(*number);
    layer.set("ind", std::to_string(++largest_number_));
    return largest_number_;
}

std::string Unnested::name_of(const LayerText& layer) {
    const std::string_view name = layer.member("nm");
    return name.starts_with('"') ? document::decode_string(name) : "";
}

LayerText* Unnested::find(const std::string& name) const {
    spend(kStepsPerName * result_.size());
    for (const Entry& entry : result_) {
        if (name_of(*entry.layer) == name) return entry.layer.get();
    }
    return nullptr;
}

Nest* Unnested::owner_of(const LayerText& layer) const {
    const Origin& origin = result_[place_of(layer)].origin;
    if (origin.kind != Origin::Kind::copied) return nullptr;
    for (const auto& nest : nests_) {
        if (nest->place == origin.nest) return nest.get();
    }
    return nullptr;
}

void Unnested::rename(LayerText& layer) const {
    spend(2 * kStepsPerName * (result_.size() + stack_.size()));
    std::set<std::string> taken;
    for (const Entry& entry : result_) taken.insert(name_of(*entry.layer));
    for (const KeptLayer& before : stack_) taken.insert(name_of(before.before));
    const std::string name = name_of(layer);
    int number = 2;
    while (taken.contains(name + " " + std::to_string(number))) ++number;
    layer.set("nm", document::encode_string(name + " " + std::to_string(number)));
}

std::vector<std::string> Unnested::layers() const {
    std::vector<std::string> layers;
    for (const Entry& entry : result_) layers.push_back(entry.layer->text());
    return layers;
}

looks::StackChange Unnested::change() const {
    looks::StackChange change{change_.composition, change_.nests, {}};
    for (const Entry& entry : result_) change.after.push_back(entry.origin);
    return change;
}

}  // namespace lottie::mend
