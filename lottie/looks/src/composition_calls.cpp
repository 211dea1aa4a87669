// What the expressions of an animation ask of compositions by name.
#include <string>

#include "expression_use.h"
#include "looks/expressions.h"
#include "text_reader.h"

namespace lottie::looks {
namespace {

constexpr std::string_view kCall = "comp(";

bool is_escaped(std::string_view text, std::size_t at) {
    std::size_t begin = at;
    while (begin > 0 && text[begin - 1] == '\\') --begin;
    return (at - begin) % 2 == 1;
}

std::size_t quote_before(std::string_view text, std::size_t at) {
    do at = at == 0 ? std::string_view::npos : text.rfind('"', at - 1);
    while (at != std::string_view::npos && is_escaped(text, at));
    return at;
}

std::size_t quote_after(std::string_view text, std::size_t at) {
    do at = text.find('"', at + 1);
    while (at != std::string_view::npos && is_escaped(text, at));
    return at;
}

void add_calls(CompositionCalls& calls, const ExpressionUse& use) {
    std::map<std::string, std::size_t> times;
    for (const std::string& name : use.compositions) ++times[name];
    for (const auto& [name, count] : times) {
        if (name.empty()) calls.is_any_computed = true;
        auto& layers = calls.layers.try_emplace(name, std::in_place).first->second;
        std::size_t understood = 0;
        for (const auto& [composition, layer] : use.layers_elsewhere) {
            if (composition != name) continue;
            ++understood;
            if (layers) layers->insert(layer);
        }
        if (understood < count) layers.reset();
    }
}

}  // namespace

CompositionCalls find_composition_calls(std::string_view animation) {
    CompositionCalls calls;
    for (std::size_t at = animation.find(kCall); at != std::string_view::npos; at = animation.find(kCall, at)) {
        const std::size_t begin = quote_before(animation, at);
        at = quote_after(animation, at);
        if (begin == std::string_view::npos || at == std::string_view::npos) break;
        add_calls(calls, read_expression(string_of(animation.substr(begin, at + 1 - begin))));
    }
    return calls;
}

}  // namespace lottie::looks
