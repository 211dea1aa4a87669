// Values that themes fill in through named slots, and which of them a run removes.
#include "shared/filled_slots.h"

#include <algorithm>
#include <iterator>

#include "cli/shared/animation_file.h"
#include "cli/shared/console.h"
#include "document/json_text.h"

namespace cli {

using lottie::looks::Origin;

std::vector<std::string_view> literals_under(std::string_view key, std::string_view json) {
    constexpr std::string_view kBetween = " \t\r\n:";
    std::vector<std::string_view> literals;
    for (std::size_t at = json.find(key); at != std::string_view::npos; at = json.find(key, at)) {
        at = json.find_first_not_of(kBetween, at + key.size());
        if (at == std::string_view::npos) break;
        if (json[at] != '"') continue;
        std::size_t end = at + 1;
        while (end < json.size() && json[end] != '"') end += json[end] == '\\' ? 2U : 1U;
        literals.push_back(json.substr(at, end + 1 - at));
        at = end;
    }
    return literals;
}

Slots slots_in(std::string_view layer, const Slots& filled) {
    Slots found;
    if (filled.empty()) return found;
    for (const std::string_view literal : literals_under("\"sid\"", layer)) {
        std::string slot = lottie::document::decode_string(literal);
        if (filled.contains(slot)) found.insert(std::move(slot));
    }
    return found;
}

lottie::looks::Finding loses_value(const std::string& slot) {
    return {.reason = lottie::looks::Reason::interaction,
            .weight = lottie::looks::Weight::change,
            .sentence = "a theme fills slot " + in_quotes(slot) +
                        ", and the value that it fills is another one or none afterwards",
            .way_out = "take the value out of the theme, or keep the nest",
            .layer = "",
            .property = "",
            .frame = {}};
}

FilledSlots::FilledSlots(const lottie::document::Document& document, const host::model::Comp& comp,
                         const std::vector<host::model::Layer*>& nests, const Slots& filled)
    : filled_(filled) {
    if (filled.empty()) return;
    stack_ = slots_of(write_layers(document, comp));
    for (const host::model::Layer* nest : nests) {
        inside_[static_cast<std::size_t>(nest->index())] = slots_of(write_layers(document, *nest->source()->comp()));
    }
}

std::vector<lottie::looks::Finding> FilledSlots::losses(const lottie::looks::StackChange& change,
                                                        const lottie::document::WrittenLayers& after) const {
    if (filled_.empty()) return {};
    Slots lost;
    for (const std::size_t nest : change.nests) lost.insert(stack_.at(nest).begin(), stack_.at(nest).end());
    const std::vector<Slots> now = slots_of(after);
    for (std::size_t place = 0; place < now.size(); ++place) {
        const Origin& origin = change.after.at(place);
        if (origin.kind == Origin::Kind::made) continue;
        const Slots& before =
            origin.kind == Origin::Kind::kept ? stack_.at(origin.layer) : inside_.at(origin.nest).at(origin.layer);
        std::set_difference(before.begin(), before.end(), now[place].begin(), now[place].end(),
                            std::inserter(lost, lost.end()));
    }
    std::vector<lottie::looks::Finding> findings;
    for (const std::string& slot : lost) findings.push_back(loses_value(slot));
    return findings;
}

std::vector<Slots> FilledSlots::slots_of(const lottie::document::WrittenLayers& layers) const {
    std::vector<Slots> slots;
    for (const std::string_view layer : layers.layers) slots.push_back(slots_in(layer, filled_));
    return slots;
}

}  // namespace cli
