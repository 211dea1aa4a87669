// Applies to expressions that ask for a layer of their own composition by a number that is written out, and to effects
// whose parameters are layers: the number becomes the one that the same layer has now.
#include <algorithm>
#include <cctype>
#include <charconv>
#include <functional>

#include "document/json_text.h"
#include "document/object_edit.h"

#include "remedies.h"

namespace lottie::mend {
namespace {

using document::JsonKind;
using document::JsonNode;
using document::JsonTree;
using document::Slice;

constexpr std::string_view kCall = "thisComp.layer(";

// Where the number of a call begins and ends; `from` becomes the place behind it. False if there is no further one.
bool next_number(const std::string& text, std::size_t& from, std::size_t& begin, std::size_t& end) {
    for (std::size_t at = text.find(kCall, from); at != std::string::npos; at = text.find(kCall, at + 1)) {
        if (at > 0 && (std::isalnum(static_cast<unsigned char>(text[at - 1])) || text[at - 1] == '_')) continue;
        begin = text.find_first_not_of(' ', at + kCall.size());
        if (begin == std::string::npos) return false;
        end = std::min(text.find_first_not_of("0123456789", begin), text.size());
        const std::size_t bracket = text.find_first_not_of(' ', end);
        if (end == begin || bracket == std::string::npos || text[bracket] != ')') continue;
        from = end;
        return true;
    }
    return false;
}

// The numbers in parameters that are layers, each with the one that it was before. Lists go with lists, for copies have
// the effects of their layer first.
void find_layers(const JsonTree& tree, const JsonNode& list, const JsonTree& tree_before, const JsonNode& list_before,
                 std::vector<std::pair<const JsonNode*, double>>& found) {
    constexpr double kLayer = 10;
    const auto number_in = [](const JsonTree& in, const JsonNode* node) {
        return node != nullptr && node->kind == JsonKind::number ? in.number(*node) : 0;
    };
    const JsonNode* one = tree.first(list);
    const JsonNode* before = tree_before.first(list_before);
    for (; one != nullptr && before != nullptr; one = tree.next(*one), before = tree_before.next(*before)) {
        const JsonNode* inside = tree.member(one, "ef");
        const JsonNode* inside_before = tree_before.member(before, "ef");
        if (inside != nullptr && inside_before != nullptr)
            find_layers(tree, *inside, tree_before, *inside_before, found);
        if (number_in(tree, tree.member(one, "ty")) != kLayer) continue;
        const JsonNode* value = tree.member(tree.member(one, "v"), "k");
        const double number = number_in(tree_before, tree_before.member(tree_before.member(before, "v"), "k"));
        const bool is_changed = value != nullptr && value->kind == JsonKind::number && tree.number(*value) != number;
        if (is_changed) found.emplace_back(value, number);
    }
}

void mend_effects(CopiedLayer& copy, const std::function<std::optional<std::int64_t>(std::int64_t)>& number_now) {
    const std::string effects(copy.now->member("ef"));
    const std::string effects_before(copy.before.member("ef"));
    if (effects.empty() || effects_before.empty()) return;
    const Slice all{0, static_cast<std::uint32_t>(effects.size())};
    const JsonTree tree(effects, all);
    const JsonTree tree_before(effects_before, {0, static_cast<std::uint32_t>(effects_before.size())});
    std::vector<std::pair<const JsonNode*, double>> layers;
    find_layers(tree, tree.root(), tree_before, tree_before.root(), layers);
    document::Patch patch;
    for (const auto& [value, number] : layers) {
        const auto whole = document::whole_number(number);
        const auto now = whole ? number_now(*whole) : std::nullopt;
        if (now) patch.replace(value->text, std::to_string(*now));
    }
    if (patch.is_empty()) return;
    document::OutputText out;
    patch.write(effects, all, out);
    copy.now->set("ef", out.text());
}

}  // namespace

void mend_layer_reference(Unnested& unnested, Nest& nest) {
    const auto number_now = [&](std::int64_t number) -> std::optional<std::int64_t> {
        for (CopiedLayer& copy : nest.copies) {
            if (copy.facts.ind == number && copy.now != nullptr) return unnested.number_of(*copy.now);
        }
        return std::nullopt;
    };
    for (CopiedLayer& copy : nest.copies) {
        if (copy.now == nullptr) continue;
        mend_effects(copy, number_now);
        copy.now->rewrite_expressions([&](const std::string& text) -> std::optional<std::string> {
            std::string result;
            std::size_t copied = 0;
            std::size_t from = 0;
            std::size_t begin = 0;
            std::size_t end = 0;
            while (next_number(text, from, begin, end)) {
                std::int64_t number = 0;
                std::from_chars(text.data() + begin, text.data() + end, number);
                const auto now = number_now(number);
                if (!now) continue;
                result += text.substr(copied, begin - copied) + std::to_string(*now);
                copied = end;
            }
            if (copied == 0) return std::nullopt;
            return result + text.substr(copied);
        });
    }
}

}  // namespace lottie::mend
