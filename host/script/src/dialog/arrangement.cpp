// Orientation and alignment of elements.
#include <algorithm>

#include "dialog/dialog_classes.h"
#include "text.h"

namespace host::script {

namespace {

constexpr std::string_view kOrientations[] = {"row", "column", "stack"};
constexpr std::string_view kAligns[] = {"left", "center", "right", "fill", "top", "bottom"};

// The index of a word in a list, ignoring case.
template <std::size_t N>
std::size_t index_of_word(ScriptCall& call, const char* what, duk_idx_t i, const std::string_view (&words)[N]) {
    const std::string word = call.text(i);
    const auto is_same = [](char c, char small) {
        return (c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c) == small;
    };
    for (std::size_t n = 0; n < N; ++n) {
        if (std::equal(word.begin(), word.end(), words[n].begin(), words[n].end(), is_same)) return n;
    }
    call.fail(std::string("unknown ") + what + " \"" + word + "\"");
}

scriptui::Align align_argument(ScriptCall& call, duk_idx_t i, bool may_be_horizontal, bool may_be_vertical) {
    const auto align = static_cast<scriptui::Align>(index_of_word(call, "alignment", i, kAligns));
    const bool is_horizontal_only = align == scriptui::Align::left || align == scriptui::Align::right;
    const bool is_vertical_only = align == scriptui::Align::top || align == scriptui::Align::bottom;
    if ((is_horizontal_only && !may_be_horizontal) || (is_vertical_only && !may_be_vertical)) {
        call.fail("an alignment in two words is horizontal, then vertical");
    }
    return align;
}

scriptui::Alignment alignment_argument(ScriptCall& call) {
    if (!duk_is_array(call.ctx, 0)) return {align_argument(call, 0, true, true), {}};
    if (duk_get_length(call.ctx, 0) != 2) call.fail("an alignment is one word or an array of two");
    scriptui::Alignment alignment;
    duk_get_prop_index(call.ctx, 0, 0);
    alignment.first = align_argument(call, -1, true, false);
    duk_get_prop_index(call.ctx, 0, 1);
    alignment.second = align_argument(call, -1, false, true);
    return alignment;
}

duk_ret_t give_alignment(ScriptCall& call, const scriptui::Alignment& alignment) {
    const std::string_view first = kAligns[static_cast<std::size_t>(alignment.first)];
    if (!alignment.second) return call.give(first);
    const duk_idx_t array = duk_push_array(call.ctx);
    push_text(call.ctx, first);
    duk_put_prop_index(call.ctx, array, 0);
    push_text(call.ctx, kAligns[static_cast<std::size_t>(*alignment.second)]);
    duk_put_prop_index(call.ctx, array, 1);
    return 1;
}

}  // namespace

duk_ret_t get_alignment(ScriptCall& call) {
    const auto& alignment = call.self_element().layout().alignment;
    return alignment ? give_alignment(call, *alignment) : call.nothing();
}

duk_ret_t set_alignment(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    element.layout().alignment = alignment_argument(call);
    return call.nothing();
}

duk_ret_t get_orientation(ScriptCall& call) {
    return call.give(kOrientations[static_cast<std::size_t>(self_container(call).layout().orientation)]);
}

duk_ret_t set_orientation(ScriptCall& call) {
    scriptui::Element& container = self_container(call);
    container.layout().orientation =
        static_cast<scriptui::Orientation>(index_of_word(call, "orientation", 0, kOrientations));
    return call.nothing();
}

duk_ret_t get_align_children(ScriptCall& call) {
    return give_alignment(call, self_container(call).layout().align_children);
}

duk_ret_t set_align_children(ScriptCall& call) {
    scriptui::Element& container = self_container(call);
    container.layout().align_children = alignment_argument(call);
    return call.nothing();
}

duk_ret_t get_justify(ScriptCall& call) {
    return call.give(kAligns[static_cast<std::size_t>(call.self_element().justification())]);
}

duk_ret_t set_justify(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    const scriptui::Align align = align_argument(call, 0, true, false);
    if (align == scriptui::Align::fill) call.fail("texts cannot be justified on both sides");
    element.set_justification(align);
    return call.nothing();
}

}  // namespace host::script
