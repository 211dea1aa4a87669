// Rewrites names in expressions.
#include "expressions/expression_rewrite.h"

#include "model/expression_text.h"
#include "model/project.h"

namespace host::model {
namespace {

using Range = std::pair<std::size_t, std::size_t>;

// Replaces the literals at `ranges`, which ascend, by `name`.
std::string with_literals(std::string_view text, const std::vector<Range>& ranges, std::string_view name) {
    std::string result;
    std::size_t done = 0;
    for (const auto& [begin, end] : ranges) {
        result += text.substr(done, begin - done);
        result += quote(name, text[begin]);
        done = end;
    }
    result += text.substr(done);
    return result;
}

}  // namespace

void rewrite_layer_name(const std::vector<Stream*>& streams, const Comp& comp, const std::string& old_name,
                        const std::string& new_name) {
    for (Stream* stream : streams) {
        const std::string& text = stream->data().expression;
        std::vector<Range> ranges;
        for (const LayerReference& reference : find_layer_references(text)) {
            const Comp* meant =
                reference.comp_end == 0 ? &stream->owner().comp() : comp.project().comp_named(reference.comp);
            if (reference.layer == old_name && meant == &comp) ranges.emplace_back(reference.begin, reference.end);
        }
        if (!ranges.empty()) stream->replace_expression_text(with_literals(text, ranges, new_name));
    }
}

void rewrite_comp_name(const std::vector<Stream*>& streams, const std::string& old_name, const std::string& new_name) {
    for (Stream* stream : streams) {
        const std::string& text = stream->data().expression;
        std::vector<Range> ranges;
        for (const LayerReference& reference : find_layer_references(text)) {
            if (reference.comp_end != 0 && reference.comp == old_name) {
                ranges.emplace_back(reference.comp_begin, reference.comp_end);
            }
        }
        if (!ranges.empty()) stream->replace_expression_text(with_literals(text, ranges, new_name));
    }
}

std::string with_quoted_replaced(std::string_view expression, std::string_view old_name, std::string_view new_name) {
    return with_literals(expression, find_quoted(expression, old_name), new_name);
}

}  // namespace host::model
