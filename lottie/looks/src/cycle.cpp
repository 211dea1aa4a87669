// Nests whose time remapping is played again and again.
#include "cycle.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "looks/expressions.h"

namespace lottie::looks {

bool is_cycle(std::string_view expression) {
    constexpr std::string_view kDeclaration = "var$bm_rt;";
    constexpr std::string_view kAssignment = "$bm_rt=";
    std::string text;
    for (const char c : expression) {
        if (c != ' ' && c != '\t' && c != '\r' && c != '\n') text += c == '"' ? '\'' : c;
    }
    if (text.starts_with(kDeclaration)) text.erase(0, kDeclaration.size());
    if (text.starts_with(kAssignment)) text.erase(0, kAssignment.size());
    if (text.ends_with(';')) text.pop_back();
    return text == "loopOut()" || text == "loopOut('cycle')" || text == "loopOut('cycle',0)";
}

// Asks for times and not for keyframes: those of the properties inside begin and end elsewhere, and players know no
// loopOut() for paths. One player looks for a path's keyframe from where it stands now, unless it was asked for a later
// time just before. The hair keeps the rounding of a time from showing the last frame in the place of the first.
std::string cycle_between(double from, double to) {
    std::string first, last, length;
    host::base::append_shortest_plain(first, from);
    host::base::append_shortest_plain(last, to);
    host::base::append_shortest_plain(length, to - from);
    return "var $bm_rt;\nvalueAtTime(" + last + ");\n$bm_rt = time > " + last + " ? valueAtTime((time - " + first +
           " + 0.000001) % " + length + " + " + first + ") : value;";
}

namespace {

const Json* expression_of(const Json& property) {
    const Json* text = member(property, "x");
    return text != nullptr && text->IsString() ? text : nullptr;
}

const Json* remap_expression(const SceneLayer& nest) {
    const Json* remap = nest.json("tm");
    return remap == nullptr ? nullptr : expression_of(*remap);
}

std::size_t key_count(const Json& property) {
    return is_keyed(property) ? member(property, "k")->Size() : 0;
}

bool is_text(const Json& property) {
    const Json& first = (*member(property, "k"))[0];
    const Json* start = member(first, "s");
    return start != nullptr && start->IsObject();
}

class Check {
  public:
    explicit Check(const std::string& cycle) : cycle_(cycle) {}

    bool holds(const Json& before, const Json* after) const {
        if (before.IsArray()) {
            const auto others = elements(after);
            if (others.Size() != before.Size()) return false;
            for (rapidjson::SizeType i = 0; i < before.Size(); ++i) {
                if (!holds(before[i], &others[i])) return false;
            }
            return true;
        }
        if (!before.IsObject()) return true;
        if (after == nullptr || !after->IsObject()) return false;
        const std::size_t keys = key_count(before);
        const std::size_t keys_after = key_count(*after);
        if (keys > 1 || keys_after > 1) {
            const Json* text = expression_of(*after);
            return keys > 1 && !is_text(before) && expression_of(before) == nullptr && text != nullptr &&
                   text->GetString() == cycle_;
        }
        for (const auto& one : before.GetObject()) {
            if (!holds(one.value, member(*after, one.name.GetString()))) return false;
        }
        return true;
    }

  private:
    const std::string& cycle_;
};

}  // namespace

std::optional<std::string> cycle_of(const Unnesting& u) {
    const Json* text = remap_expression(u.nest());
    if (text == nullptr || !is_cycle({text->GetString(), text->GetStringLength()})) return std::nullopt;
    const auto& times = u.nest().time_remap()->key_times();
    const double frame_rate = u.comparison().before().frame_rate;
    if (times.size() < 2 || !(times.back() > times.front())) return std::nullopt;
    return cycle_between(times.front() / frame_rate, times.back() / frame_rate);
}

bool is_clock_unknown(const Unnesting& u) {
    return remap_expression(u.nest()) != nullptr && !cycle_of(u);
}

bool is_on_throughout_cycle(const Unnesting& u, const SceneLayer& inner) {
    const auto seconds = u.nest().time_remap()->key_values();
    const double frame_rate = u.comparison().before().frame_rate;
    return std::all_of(seconds.begin(), seconds.end(),
                       [&](const Values& one) { return inner.is_on(one[0] * frame_rate); });
}

bool is_cycled(const Unnesting& u, const Copy& copy, const std::string& cycle) {
    const SceneLayer& inner = u.inner(copy);
    const SceneLayer& copied = u.copied(copy);
    const Check check(cycle);
    for (const auto& part : inner.parts()) {
        if (!check.holds(part->json(), copied.json(part->key()))) return false;
    }
    if (inner.type == LayerType::nest && !inner.time_remap()) {
        const Json* text = remap_expression(copied);
        return text != nullptr && text->GetString() == cycle;
    }
    return true;
}

}  // namespace lottie::looks
