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
    std::map<std::string_view, std::size_t> not_understood;
    for (const std::string& name : use.compositions) {
        ++not_understood[name];
        if (name.empty()) calls.is_any_computed = true;
        calls.layers.try_emplace(name, std::in_place);
    }
    for (const auto& [composition, layer] : use.layers_elsewhere) {
        --not_understood[composition];
        auto& layers = calls.layers[composition];
        if (layers) layers->insert(layer);
    }
    for (const auto& [name, count] : not_understood) {
        if (count > 0) calls.layers[std::string(name)].reset();
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
