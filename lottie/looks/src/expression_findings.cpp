// What expressions compute and whom they name.
#include <algorithm>
#include <cmath>
#include <map>

#include "content.h"
#include "expression_use.h"
#include "findings.h"
#include "model/expression_text.h"

namespace lottie::looks {
namespace {

constexpr std::size_t kLongestName = 31;  // bytes; what the command gives a copy

const char* const kByHand = "correct the expression by hand afterwards, or keep this nest";

// Findings of one kind are told once, with the first of the weightiest.
class Tally {
  public:
    struct Entry {
        Weight weight;
        std::string layer;
        std::string property;
        std::string what;
        std::string way_out;
        std::size_t count = 1;
    };

    void note(Reason reason, Entry entry) {
        const auto [found, is_new] = entries_.try_emplace(reason, entry);
        if (is_new) return;
        entry.count = found->second.count + 1;
        if (entry.weight > found->second.weight) {
            found->second = std::move(entry);
        } else {
            found->second.count = entry.count;
        }
    }

    void report(Unnesting& u) const {
        for (const auto& [reason, entry] : entries_) {
            const std::string more = entry.count > 1 ? " (and " + std::to_string(entry.count - 1) + " more)" : "";
            u.add({reason,
                   entry.weight,
                   "layer " + quoted(entry.layer) + (entry.property.empty() ? "" : ", " + printable(entry.property)) +
                       ": " + entry.what + more,
                   entry.weight == Weight::harmless ? "" : entry.way_out,
                   entry.layer,
                   entry.property,
                   {}});
        }
    }

  private:
    std::map<Reason, Entry> entries_;
};

std::optional<std::size_t> layer_named(const Stack& stack, const std::string& name) {
    for (std::size_t i = 0; i < stack.layers.size(); ++i) {
        if (stack.layers[i].name == name) return i;
    }
    return std::nullopt;
}

std::optional<std::size_t> layer_numbered(const Stack& stack, double number) {
    for (std::size_t i = 0; i < stack.layers.size(); ++i) {
        if (stack.layers[i].number == number) return i;
    }
    return std::nullopt;
}

// The names by which players know compositions: those of the nests that show them.
bool is_composition_known(const Scene& scene, const std::string& name) {
    if (scene.main().name == name) return true;
    for (const Stack& stack : scene.stacks) {
        for (const SceneLayer& layer : stack.layers) {
            if (layer.type == LayerType::nest && layer.name == name) return true;
        }
    }
    return false;
}

// One expression before and after, with the stack that it looks into and what became of that stack's layers.
struct Case {
    const SceneLayer& layer;
    const SceneLayer& after;
    const Stack& stack;
    const Expression& before_text;
    std::string_view after_text;
    double shift;
};

class ExpressionFindings {
  public:
    explicit ExpressionFindings(Unnesting& u) : u_(u) {}

    void look() {
        for (const Unnesting::Copy& copy : u_.copies()) {
            look_at_layer(u_.inner(copy), u_.copied(copy), u_.inside(), true);
            look_at_name(u_.inner(copy), u_.copied(copy));
        }
        for (std::size_t place = 0; place < u_.stack().layers.size(); ++place) {
            const auto kept = u_.kept_at(place);
            if (kept && !u_.is_unnested(place)) {
                look_at_layer(u_.stack().layers[place], u_.result().layers[*kept], u_.stack(), false);
            }
        }
        tally_.report(u_);
    }

  private:
    void look_at_layer(const SceneLayer& layer, const SceneLayer& after, const Stack& stack, bool is_copy) {
        const auto before_texts = expressions(*layer.json);
        if (before_texts.empty()) return;
        const auto after_texts = expressions(*after.json);
        for (std::size_t i = 0; i < before_texts.size(); ++i) {
            // A copy may have more of them (those of copied effects) at the end of its list, never fewer.
            const std::string_view text = i < after_texts.size() ? after_texts[i].text : std::string_view();
            const Case one{layer, after, stack, before_texts[i], text, after.start - layer.start};
            const ExpressionUse use = read_expression(before_texts[i].text);
            look_at_names(one, is_copy);
            look_at_numbers(one, use, is_copy);
            look_at_compositions(one, use);
            if (is_copy) look_at_surroundings(one, use);
        }
    }

    void note(Reason reason, Weight weight, const Case& one, std::string what, std::string way_out = kByHand) {
        tally_.note(reason, {weight, one.layer.name, one.before_text.property, std::move(what), std::move(way_out)});
    }

    // Where a layer of the expression's stack is after the run.
    std::optional<std::size_t> successor(std::size_t place, bool is_copy) const {
        return is_copy ? u_.copy_of(place) : u_.kept_at(place);
    }

    void look_at_names(const Case& one, bool is_copy) {
        const auto before = host::model::find_layer_references(one.before_text.text);
        const auto after = host::model::find_layer_references(one.after_text);
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (!before[i].comp.empty()) continue;  // another composition's layer: a matter of comp("...")
            const auto meant = layer_named(one.stack, before[i].layer);
            const std::string name_after = i < after.size() ? after[i].layer : before[i].layer;
            const auto found = layer_named(u_.result(), name_after);
            if (!meant && !found) continue;
            const auto wanted = meant ? successor(*meant, is_copy) : std::nullopt;
            if (wanted && found == wanted) continue;
            note(reason_for(before[i].layer, found, wanted), Weight::change, one,
                 "it names layer " + quoted(before[i].layer) +
                     (found ? ", and now means another layer of that name" : ", which it does not find any more"));
        }
    }

    Reason reason_for(const std::string& name, const std::optional<std::size_t>& found,
                      const std::optional<std::size_t>& wanted) const {
        if (found) return Reason::name_clash;
        if (!wanted) return Reason::layer_reference;
        if (name.find_first_of("\"'\\") != std::string::npos) return Reason::quoted_name;
        return name.size() > kLongestName ? Reason::long_name : Reason::layer_reference;
    }

    void look_at_numbers(const Case& one, const ExpressionUse& use, bool is_copy) {
        if (use.layer_numbers.empty() && !use.has_computed_layer) return;
        const std::vector<double> numbers_after = read_expression(one.after_text).layer_numbers;
        for (std::size_t i = 0; i < use.layer_numbers.size(); ++i) {
            const double number = use.layer_numbers[i];
            const auto meant = layer_numbered(one.stack, number);
            const auto found = layer_numbered(u_.result(), i < numbers_after.size() ? numbers_after[i] : number);
            const auto wanted = meant ? successor(*meant, is_copy) : std::nullopt;
            const bool is_same = meant ? wanted && found == wanted : !found;
            note(Reason::layer_reference, is_same ? Weight::harmless : Weight::change, one,
                 "it asks for layer " + plain(number) + " by number" + (is_same ? "" : ", which is now another one"));
        }
        if (use.has_computed_layer && is_copy) {
            note(Reason::layer_reference, Weight::change, one, "it works out at run time which layer it asks for");
        }
    }

    void look_at_compositions(const Case& one, const ExpressionUse& use) {
        for (const std::string& name : use.compositions) {
            const bool was_known = name.empty() || is_composition_known(u_.before(), name);
            const bool is_known = !name.empty() && is_composition_known(u_.after(), name);
            const bool is_same = was_known == is_known;
            note(Reason::composition_reference, is_same ? Weight::harmless : Weight::change, one,
                 (name.empty() ? std::string("it works out at run time which composition it asks for")
                               : "it asks for composition " + quoted(name) +
                                     (is_same ? was_known ? ", which is still there" : ", which no player finds anyway"
                                              : ", which is gone with its nest")));
        }
    }

    void look_at_surroundings(const Case& one, const ExpressionUse& use) {
        if (use.reads_time) {
            const bool is_same = std::abs(one.shift) < 1e-6 && u_.only_shifts();
            const Weight moved = use.is_relative_to_keys ? Weight::slight : Weight::change;
            note(Reason::time_in_expression, is_same ? Weight::harmless : moved, one,
                 is_same ? "it reads the time, which is the same outside"
                         : "it reads the time, which is " + plain(one.shift) + " frames later outside");
        }
        if (use.reads_index) {
            const bool is_same = one.layer.number == one.after.number;
            note(Reason::index_in_expression, is_same ? Weight::harmless : Weight::change, one,
                 is_same ? "it reads the layer's number, which stays"
                         : "it reads the layer's number, which is another now");
        }
        for (const std::string& name : use.composition_members) look_at_member(one, name);
        if (use.is_random) {
            const bool is_seeded = read_expression(one.after_text).is_seeded;
            note(Reason::random, Weight::change, one,
                 std::string("it draws random numbers, and the copy draws others") +
                     (is_seeded ? " (the same at every start)" : ""),
                 "bake the expression to keyframes");
        }
    }

    void look_at_member(const Case& one, const std::string& name) {
        const Stack& inside = u_.inside();
        const Stack& stack = u_.stack();
        const bool is_same = (name == "width" && u_.nest().width == stack.width) ||
                             (name == "height" && u_.nest().height == stack.height) || name == "frameDuration" ||
                             name == "pixelAspect" ||
                             (name == "numLayers" && inside.layers.size() == u_.result().layers.size());
        note(Reason::composition_in_expression, is_same ? Weight::harmless : Weight::change, one,
             "it reads thisComp." + printable(name) +
                 (is_same ? ", which is the same outside" : " of another composition now"));
    }

    void look_at_name(const SceneLayer& layer, const SceneLayer& after) {
        if (layer.name.size() > kLongestName) {
            tally_.note(Reason::long_name, {Weight::harmless, layer.name, "",
                                            layer.name == after.name ? "its name is over 31 bytes long and stays"
                                                                     : "its name is cut to " + quoted(after.name),
                                            ""});
        }
        if (layer.name.find_first_of("\"'\\") != std::string::npos) {
            tally_.note(
                Reason::quoted_name,
                {Weight::harmless, layer.name, "",
                 layer.name == after.name ? "its name holds a quote or a backslash and stays"
                                          : "its name holds a quote or a backslash and becomes " + quoted(after.name),
                 ""});
        }
    }

    Unnesting& u_;
    Tally tally_;
};

}  // namespace

void find_expression_changes(Unnesting& u) {
    ExpressionFindings(u).look();
}

}  // namespace lottie::looks
