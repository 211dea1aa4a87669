// A project as text.
#include "project_text.h"

#include <algorithm>
#include <unordered_map>

#include "base/number_text.h"

namespace validator {
namespace {

using host::model::Comp;
using host::model::Effect;
using host::model::Item;
using host::model::Keyframe;
using host::model::Layer;
using host::model::Stream;
using host::model::Value;

void put(std::string& out, double number) {
    out += ' ';
    out += host::base::shortest_text(number);
}

void put(std::string& out, const Value& value) {
    for (const double number : value.n) put(out, number);
}

void put(std::string& out, const Keyframe& key) {
    out += " key " + std::to_string(key.time.ticks);
    put(out, key.value);
    out += " " + std::to_string(static_cast<int>(key.in)) + std::to_string(static_cast<int>(key.out)) + " " +
           std::to_string(key.flags);
    for (const auto* eases : {&key.ease_in, &key.ease_out}) {
        for (const auto& ease : *eases) {
            put(out, ease.speed);
            put(out, ease.influence);
        }
    }
    put(out, key.tangent_in);
    put(out, key.tangent_out);
}

void put(std::string& out, const Stream& stream) {
    const auto& data = stream.data();
    out += " \"" + stream.name() + "\"";
    put(out, data.static_value);
    for (std::size_t i = 0; i < stream.keyframe_count(); ++i) put(out, stream.keyframe(i));
    if (!data.expression.empty()) out += (data.expression_enabled ? " expression " : " disabled ") + data.expression;
}

class ProjectTextWriter {
  public:
    explicit ProjectTextWriter(host::model::Project& project) {
        int number = 0;
        for (Item* item = &project.root_folder(); item != nullptr; item = project.next_item(*item))
            numbers_[item] = number++;
        for (Item* item = &project.root_folder(); item != nullptr; item = project.next_item(*item)) add(*item);
    }

    std::vector<std::string> take() { return std::move(lines_); }

  private:
    std::string item_words(const Item* item) const {
        return item == nullptr ? "none" : "item " + std::to_string(numbers_.at(item));
    }

    void add(Item& item) {
        lines_.push_back("'" + item.name() + "' in " + item_words(item.parent_folder()) + " type " +
                         std::to_string(static_cast<int>(item.type())) + " aspect " +
                         std::to_string(item.pixel_aspect().num) + "/" + std::to_string(item.pixel_aspect().den));
        Comp* comp = item.comp();
        if (comp == nullptr) return;
        const std::vector<Layer*> layers = comp->stack().to_vector();
        std::unordered_map<const Layer*, std::size_t> places;
        for (std::size_t i = 0; i < layers.size(); ++i) places[layers[i]] = i + 1;
        for (std::size_t i = 0; i < layers.size(); ++i) add(*comp, i + 1, *layers[i], places);
    }

    void add(const Comp& comp, std::size_t place, Layer& layer,
             const std::unordered_map<const Layer*, std::size_t>& places) {
        const auto number_of_layer = [&](const Layer* other) {
            return other == nullptr ? std::string("none") : std::to_string(places.at(other));
        };
        const std::size_t effects = layer.effect_count();
        std::string out = "layer " + std::to_string(place) + " of '" + comp.name() + "': '" + layer.own_name() +
                          "' kind " + std::to_string(static_cast<int>(layer.kind())) + " source " +
                          item_words(layer.source()) + " flags " + std::to_string(layer.flags()) + " parent " +
                          number_of_layer(layer.parent()) + " matte " + number_of_layer(layer.matte()) + "/" +
                          std::to_string(static_cast<int>(layer.matte_type())) + " time " +
                          std::to_string(layer.offset().ticks) + " " + std::to_string(layer.in_point().ticks) + " " +
                          std::to_string(layer.duration().ticks);
        put(out, layer.stretch());
        for (int number = 0; number < host::model::kLayerStreamCount; ++number) {
            const Stream* stream = layer.existing_stream(number);
            if (stream == nullptr || (!stream->is_changed() && !stream->has_expression())) continue;
            put(out, *stream);
        }
        for (std::size_t i = 0; i < effects; ++i) {
            const Effect& effect = layer.effect(i);
            out += " effect '" + effect.name() + "' " + std::to_string(effect.flags());
            for (std::size_t p = 0; p < effect.parameter_count(); ++p) put(out, effect.parameter(p));
        }
        for (const auto& stream : layer.other_streams()) put(out, *stream);
        lines_.push_back(std::move(out));
    }

    std::unordered_map<const Item*, int> numbers_;
    std::vector<std::string> lines_;
};

// What of the two is worth showing: from a little before the first difference on.
std::pair<std::string, std::string> cut(const std::string& was, const std::string& is) {
    constexpr std::size_t kBefore = 30;
    constexpr std::size_t kMost = 90;
    const auto [a, b] = std::mismatch(was.begin(), was.end(), is.begin(), is.end());
    const auto at = static_cast<std::size_t>(a - was.begin());
    const std::size_t from = at > kBefore ? at - kBefore : 0;
    const auto piece = [&](const std::string& text) {
        return (from > 0 ? "..." : "") + text.substr(from, kMost) + (text.size() > from + kMost ? "..." : "");
    };
    return {piece(was), piece(is)};
}

}  // namespace

std::vector<std::string> project_text(host::model::Project& project) {
    return ProjectTextWriter(project).take();
}

std::uint64_t number_of(const std::vector<std::string>& lines) {
    std::uint64_t number = 14695981039346656037U;
    for (const std::string& line : lines) {
        for (const char c : line) number = (number ^ static_cast<unsigned char>(c)) * 1099511628211U;
        number = (number ^ '\n') * 1099511628211U;
    }
    return number;
}

std::string first_difference(const std::vector<std::string>& before, const std::vector<std::string>& after) {
    for (std::size_t i = 0; i < std::max(before.size(), after.size()); ++i) {
        const std::string was = i < before.size() ? before[i] : "nothing";
        const std::string is = i < after.size() ? after[i] : "nothing";
        if (was == is) continue;
        const auto [was_shown, is_shown] = cut(was, is);
        return "was [" + was_shown + "], is [" + is_shown + "]";
    }
    return {};
}

}  // namespace validator
