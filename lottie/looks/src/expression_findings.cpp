// What expressions compute and whom they name.
#include <algorithm>
#include <cmath>

#include "effects.h"
#include "expression_use.h"
#include "findings.h"
#include "model/expression_text.h"
#include "model/expression_tokens.h"
#include "words.h"

namespace lottie::looks {
namespace {

constexpr std::size_t kLongestName = 31;  // bytes; what the command gives a copy

const char* const kByHand = "correct the expression by hand afterwards, or keep this nest";

// One expression before and after, with the stack that it looks into and what became of that stack's layers.
struct Case {
    const SceneLayer& layer;
    const SceneLayer& after;
    Survey& stack;
    const Expression& before_text;
    std::string_view after_text;
    double shift;
};

// Whether a layer got a mask by the name of one that it had.
bool is_mask_hidden(const SceneLayer& layer, const SceneLayer& after) {
    const auto masks = layer.array("masksProperties");
    const auto masks_after = after.array("masksProperties");
    if (masks.Size() == masks_after.Size()) return false;
    return std::any_of(masks.begin(), masks.end(), [&](const Json& mask) {
        const auto has_its_name = [name = text_member(mask, "nm")](const Json& other) {
            return text_member(other, "nm") == name;
        };
        return std::count_if(masks.begin(), masks.end(), has_its_name) !=
               std::count_if(masks_after.begin(), masks_after.end(), has_its_name);
    });
}

// Whether a mask of the layer has another number now.
bool is_mask_counted_otherwise(const SceneLayer& layer, const SceneLayer& after) {
    const auto masks = layer.array("masksProperties");
    const auto masks_after = after.array("masksProperties");
    for (rapidjson::SizeType i = 0; i < masks.Size() && masks.Size() != masks_after.Size(); ++i) {
        if (i >= masks_after.Size() || text_member(masks[i], "nm") != text_member(masks_after[i], "nm")) return true;
    }
    return false;
}

class ExpressionFindings {
  public:
    // `nest` is null for layers that stayed in the stack.
    ExpressionFindings(Comparison& comparison, const Unnesting* nest) : c_(comparison), nest_(nest) {}

    void look_at_copies() {
        for (const Copy& copy : nest_->copies()) {
            look_at_layer(nest_->inner(copy), nest_->copied(copy), nest_->inside_survey(), copy.inner);
            look_at_name(nest_->inner(copy), nest_->copied(copy));
        }
        for (const Copy& copy : nest_->copies())
            look_at_effects(nest_->inner(copy), nest_->copied(copy), nest_->inside_survey());
    }

    void look_beside() {
        for (std::size_t place = 0; place < c_.stack().size(); ++place) {
            const auto kept = c_.kept_at(place);
            if (!kept || c_.is_unnested(place)) continue;
            look_at_layer(c_.stack().layer(place), c_.result().layer(*kept), c_.stack_survey(), place);
        }
        for (std::size_t place = 0; place < c_.stack().size(); ++place) {
            const auto kept = c_.kept_at(place);
            if (!kept || c_.is_unnested(place)) continue;
            look_at_effects(c_.stack().layer(place), c_.result().layer(*kept), c_.stack_survey());
        }
    }

    // Compositions that run while they are off tell expressions another time then when they begin or end elsewhere.
    void look_at_running() {
        const SceneLayer& nest = nest_->nest();
        const auto runs = [this](const Copy& copy) {
            return nest_->inner(copy).type == LayerType::nest && nest_->inner(copy).runs_while_off;
        };
        if (!nest.runs_while_off && std::none_of(nest_->copies().begin(), nest_->copies().end(), runs)) return;
        const bool is_always_on = std::all_of(nest_->stack_frames().begin(), nest_->stack_frames().end(),
                                              [&nest](double frame) { return nest.is_on(frame); });
        if (is_always_on && nest_->only_shifts() && nest.start == 0) return;
        const CompositionCalls& calls = c_.before().composition_calls();
        const bool is_any_asked =
            calls.is_any_computed || std::any_of(calls.layers.begin(), calls.layers.end(), [this](const auto& call) {
                return call.first != c_.before().main().name;
            });
        if (!is_any_asked) return;
        tally_.note(Reason::composition_reference,
                    {Weight::change, nest.name, "",
                     "it runs while it is off, for expressions that ask for compositions, and its layers do not",
                     "keep this nest"});
    }

    // Layers of the stack that expressions of other compositions ask for by name.
    void look_from_elsewhere() {
        for (const auto& [composition, layers] : c_.before().composition_calls().layers) {
            if (!layers || !c_.is_name_of_this_composition(composition)) continue;
            for (const std::string& name : *layers) {
                const auto meant = c_.stack_survey().layer_named(name);
                const auto found = c_.result_survey().layer_named(name);
                const auto wanted = meant ? c_.kept_at(*meant) : std::nullopt;
                if ((!meant && !found) || (wanted && found == wanted)) continue;
                tally_.note(
                    found ? Reason::name_clash : Reason::layer_reference,
                    {Weight::change, name, "",
                     "an expression asks composition " + quoted(composition) + " for it" +
                         (found ? ", and now means another layer of that name" : ", and does not find it any more"),
                     kByHand});
            }
        }
    }

    ExpressionTally& tally() { return tally_; }

  private:
    // `place` is that in its stack.
    void look_at_layer(const SceneLayer& layer, const SceneLayer& after, Survey& stack, std::size_t place) {
        for (const auto& part : layer.parts()) {
            const auto& before_texts = part->expressions();
            if (before_texts.empty()) continue;
            const LayerPart* part_after = after.part(part->key());
            for (std::size_t i = 0; i < before_texts.size(); ++i) {
                // A copy may have more of them (those of copied effects) at the end of its list, never fewer.
                const bool is_there = part_after != nullptr && i < part_after->expressions().size();
                const std::string_view text = is_there ? part_after->expressions()[i].text : std::string_view();
                c_.spend(kStepsPerCharacter * before_texts[i].text.size());
                reads_effects_ = reads_effects_ || before_texts[i].text.find("effect") != std::string_view::npos;
                const Case one{layer, after, stack, before_texts[i], text, after.start - layer.start};
                const ExpressionUse use = read_expression(before_texts[i].text);
                look_at_names(one);
                look_at_numbers(one, use);
                look_at_compositions(one, use);
                if (nest_ != nullptr) {
                    look_at_surroundings(one, use);
                } else {
                    look_at_what_stayed(one, use, place);
                }
            }
        }
    }

    void note(Reason reason, Weight weight, const Case& one, std::string what, std::string way_out = kByHand) {
        tally_.note(reason, {weight, one.layer.name, one.before_text.property, std::move(what), std::move(way_out)});
    }

    // Where a layer of the expression's stack is after the run.
    std::optional<std::size_t> successor(std::size_t place) const {
        return nest_ != nullptr ? nest_->copy_of(place) : c_.kept_at(place);
    }

    void look_at_names(const Case& one) {
        const auto before = host::model::find_layer_references(one.before_text.text);
        const auto after = host::model::find_layer_references(one.after_text);
        for (std::size_t i = 0; i < before.size(); ++i) {
            if (!before[i].comp.empty()) continue;  // another composition's layer: a matter of comp("...")
            const auto meant = one.stack.layer_named(before[i].layer);
            const std::string name_after = i < after.size() ? after[i].layer : before[i].layer;
            const auto found = c_.result_survey().layer_named(name_after);
            if (!meant && !found) continue;
            const auto wanted = meant ? successor(*meant) : std::nullopt;
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

    void look_at_numbers(const Case& one, const ExpressionUse& use) {
        for (const auto& [composition, number] : use.layer_numbers_elsewhere) {
            if (!c_.is_name_of_this_composition(composition))
                continue;  // one that stays as it is, goes, or is not there
            note(Reason::layer_reference, Weight::change, one,
                 "it asks for layer " + plain(number) + " of composition " + quoted(composition) +
                     " by number, which is worked on");
        }
        if (use.layer_numbers.empty() && !use.has_computed_layer) return;
        const std::vector<double> numbers_after = read_expression(one.after_text).layer_numbers;
        for (std::size_t i = 0; i < use.layer_numbers.size(); ++i) {
            const double number = use.layer_numbers[i];
            const auto meant = one.stack.layer_numbered(number);
            const auto found = c_.result_survey().layer_numbered(i < numbers_after.size() ? numbers_after[i] : number);
            const auto wanted = meant ? successor(*meant) : std::nullopt;
            const bool is_same = meant ? wanted && found == wanted : !found;
            note(Reason::layer_reference, is_same ? Weight::harmless : Weight::change, one,
                 "it asks for layer " + plain(number) + " by number" + (is_same ? "" : ", which is now another one"));
        }
        if (!use.has_computed_layer) return;
        if (nest_ != nullptr || use.works_out_layer) {
            note(Reason::layer_reference, Weight::change, one, "it works out at run time which layer it asks for");
        } else {
            look_at_possible_names(one);
        }
    }

    // Layers that stayed keep their names and numbers: only a string can mean a copy now, or a nest that went.
    void look_at_possible_names(const Case& one) {
        for (const auto& token : host::model::tokenize_expression(one.before_text.text)) {
            if (token.kind != host::model::ExpressionTokenKind::string) continue;
            const auto meant = one.stack.layer_named(token.text);
            const auto found = c_.result_survey().layer_named(token.text);
            const auto wanted = meant ? successor(*meant) : std::nullopt;
            if ((!meant && !found) || (wanted && found == wanted)) continue;
            note(Reason::layer_reference, Weight::change, one,
                 "it works out at run time which layer it asks for, and layer " + quoted(token.text) +
                     " is another one now, or none");
        }
    }

    void look_at_compositions(const Case& one, const ExpressionUse& use) {
        for (const std::string& name : use.compositions) {
            const bool was_known = name.empty() || c_.is_composition_known(name);
            const bool is_known = !name.empty() && c_.is_composition_known_after(name);
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
            const bool is_same = std::abs(one.shift) < 1e-6 && nest_->only_shifts();
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
        if (use.reads_other_index && any_copy(one, Whose::any, [](const SceneLayer& layer, const SceneLayer& after) {
                return layer.number != after.number;
            })) {
            note(Reason::index_in_expression, Weight::change, one,
                 "it reads the number of a layer, which may be another now");
        }
        if (use.reads_names && any_copy(one, Whose::any, [](const SceneLayer& layer, const SceneLayer& after) {
                return layer.name != after.name;
            })) {
            note(Reason::layer_reference, Weight::change, one,
                 "it reads the name of a layer, which may be another now");
        }
        if ((use.reads_masks && any_copy(one, Whose::any, is_mask_hidden)) ||
            (use.numbers_masks && any_copy(one, Whose::any, is_mask_counted_otherwise))) {
            note(Reason::layer_reference, Weight::change, one,
                 "it reads a mask of a layer, which may be another one now");
        }
        if (use.span != Whose::nobody && any_copy(one, use.span, [](const SceneLayer& layer, const SceneLayer& after) {
                return layer.in != after.in || layer.out != after.out || layer.start != after.start;
            })) {
            note(Reason::time_in_expression, Weight::change, one,
                 "it reads when a layer begins or ends, which is another time outside");
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

    // Whether something holds of the expression's own layer before and after, or of any out of the nest.
    template <class Changed>
    bool any_copy(const Case& one, Whose whose, const Changed& is_changed) const {
        if (whose == Whose::own) return is_changed(one.layer, one.after);
        c_.spend(nest_->copies().size());
        return std::any_of(nest_->copies().begin(), nest_->copies().end(),
                           [&](const Copy& copy) { return is_changed(nest_->inner(copy), nest_->copied(copy)); });
    }

    void look_at_member(const Case& one, const std::string& name) {
        const Stack& inside = nest_->inside();
        const Stack& stack = c_.stack();
        const bool is_same = (name == "width" && nest_->nest().width == stack.width) ||
                             (name == "height" && nest_->nest().height == stack.height) || name == "frameDuration" ||
                             name == "pixelAspect" || (name == "numLayers" && inside.size() == c_.result().size());
        note(Reason::composition_in_expression, is_same ? Weight::harmless : Weight::change, one,
             "it reads thisComp." + printable(name) +
                 (is_same ? ", which is the same outside" : " of another composition now"));
    }

    void look_at_effects(const SceneLayer& layer, const SceneLayer& after, Survey& stack) {
        if (layer.part("ef") != nullptr) look_at_controls({layer, stack}, layer.array("ef"), after.array("ef"), false);
    }

    struct Holder {
        const SceneLayer& layer;
        Survey& stack;
    };

    // What an expression beside a nest reads of its composition and the layers that stayed in it.
    void look_at_what_stayed(const Case& one, const ExpressionUse& use, std::size_t place) {
        if (use.counts_layers && c_.stack().size() != c_.result().size()) {
            note(Reason::composition_in_expression, Weight::change, one,
                 "it reads how many layers a composition has, which are more now, or fewer");
        }
        if (use.parent == Whose::own ? is_rehung(place) : use.parent == Whose::any && is_any_rehung()) {
            note(Reason::layer_reference, Weight::change, one,
                 "it reads the parent of a layer, which is another one now");
        }
        if ((use.reads_transforms || use.reads_opacity || use.converts_points) && is_any_placed_otherwise()) {
            note(Reason::layer_reference, Weight::change, one,
                 "it reads how layers are placed, and one that stayed is placed by other numbers now");
        }
    }

    bool is_rehung(std::size_t place) const {
        const auto parent = c_.stack().parent(place);
        const auto parent_after = c_.result().parent(*c_.kept_at(place));
        return parent ? !parent_after || c_.kept_at(*parent) != parent_after : parent_after.has_value();
    }

    template <class Question>
    bool any_that_stayed(std::optional<bool>& known, const Question& question) {
        for (std::size_t place = 0; !known && place < c_.stack().size(); ++place) {
            c_.spend(1);
            if (c_.kept_at(place) && !c_.is_unnested(place) && question(place)) known = true;
        }
        known = known.value_or(false);
        return *known;
    }
    bool is_any_rehung() {
        return any_that_stayed(rehung_, [this](std::size_t place) { return is_rehung(place); });
    }
    bool is_any_placed_otherwise() {
        return any_that_stayed(placed_otherwise_, [this](std::size_t place) {
            return is_rehung(place) ||
                   !c_.stack().layer(place).has_same_transform(c_.result().layer(*c_.kept_at(place)));
        });
    }

    // Parameters of effects that are layers, by number. Those of controls mean something to expressions alone.
    void look_at_controls(const Holder& holder, Json::ConstArray before, Json::ConstArray after, bool is_drawn) {
        for (rapidjson::SizeType i = 0; i < std::min(before.Size(), after.Size()); ++i) {
            const auto inside = array_member(before[i], "ef");
            if (!inside.Empty()) {
                const bool acts = is_drawn || reach_of(before[i]) != EffectReach::nothing;
                look_at_controls(holder, inside, array_member(after[i], "ef"), acts);
            }
            constexpr double kLayer = 10;
            if (number_member(before[i], "ty", 0) != kLayer || !(is_drawn || reads_effects_)) continue;
            const double number = layer_in(before[i]);
            const double number_after = layer_in(after[i]);
            // Some that stay as they are stand for masks.
            if (number == number_after && text_member(before[i], "mn") != "ADBE Layer Control-0001") continue;
            const auto meant = holder.stack.layer_numbered(number);
            const auto wanted = meant ? successor(*meant) : std::nullopt;
            const auto found = c_.result_survey().layer_numbered(number_after);
            if (meant ? wanted && found == wanted : !found) continue;
            tally_.note(Reason::layer_reference,
                        {Weight::change, holder.layer.name, "ef",
                         "an effect means layer " + plain(number) + " by its number, and now another or none",
                         "set the effect's layer by hand afterwards, or keep this nest"});
        }
    }
    static double layer_in(const Json& parameter) {
        const Json* value = member(parameter, "v");
        return value == nullptr ? 0 : number_member(*value, "k", 0);
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

    Comparison& c_;
    const Unnesting* nest_;
    ExpressionTally tally_;
    std::optional<bool> rehung_, placed_otherwise_;  // once worked out
    bool reads_effects_ = false;                     // any expression that was looked at
};

}  // namespace

ExpressionTally find_expression_changes_beside(Comparison& comparison) {
    ExpressionFindings findings(comparison, nullptr);
    findings.look_beside();
    findings.look_from_elsewhere();
    return std::move(findings.tally());
}

void find_expression_changes(Unnesting& u, const SharedFindings& shared) {
    ExpressionFindings findings(u.comparison(), &u);
    findings.look_at_copies();
    findings.look_at_running();
    findings.tally().append(shared.expressions);
    for (const auto& [reason, entry] : findings.tally().entries()) {
        const std::string more = entry.count > 1 ? " (and " + std::to_string(entry.count - 1) + " more)" : "";
        u.add({reason,
               entry.weight,
               "layer " + quoted(entry.layer) + (entry.property.empty() ? "" : ", " + property_name(entry.property)) +
                   ": " + entry.what + more,
               entry.weight == Weight::harmless ? "" : entry.way_out,
               entry.layer,
               entry.property,
               {}});
    }
}

}  // namespace lottie::looks
