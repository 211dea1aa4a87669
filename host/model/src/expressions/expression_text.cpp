// Finds layer references by the tokens around a literal name.
#include "model/expression_text.h"

#include "model/expression_tokens.h"

namespace host::model {
namespace {

class Finder {
  public:
    explicit Finder(const std::vector<ExpressionToken>& tokens)
        : tokens_(tokens),
          layer_is_redefined_(is_redefined("layer")),
          comp_is_redefined_(is_redefined("comp")),
          own_comp_is_assigned_(is_own_comp_assigned()) {}

    std::vector<LayerReference> run() const {
        std::vector<LayerReference> found;
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (!is_word(i, "layer") || !is_call_with_literal(i)) continue;
            const ExpressionToken& name = tokens_[i + 2];
            LayerReference reference{{}, name.text, name.begin, name.end};
            if (!is_mark(i, -1, ".")) {
                if (layer_is_redefined_) continue;
            } else if (is_own_comp(i)) {
                // names a layer of the expression's own composition
            } else if (const ExpressionToken* comp = named_comp(i)) {
                reference.comp = comp->text;
                reference.comp_begin = comp->begin;
                reference.comp_end = comp->end;
            } else {
                continue;
            }
            found.push_back(std::move(reference));
        }
        return found;
    }

  private:
    bool is(std::size_t i, std::ptrdiff_t ahead, ExpressionTokenKind kind, std::string_view text) const {
        const std::ptrdiff_t at = static_cast<std::ptrdiff_t>(i) + ahead;
        if (at < 0 || at >= static_cast<std::ptrdiff_t>(tokens_.size())) return false;
        const ExpressionToken& token = tokens_[static_cast<std::size_t>(at)];
        return token.kind == kind && token.text == text;
    }
    bool is_mark(std::size_t i, std::ptrdiff_t ahead, std::string_view text) const {
        return is(i, ahead, ExpressionTokenKind::mark, text);
    }
    bool is_word(std::size_t i, std::string_view text) const { return is(i, 0, ExpressionTokenKind::word, text); }

    // word ( "literal" )
    bool is_call_with_literal(std::size_t i) const {
        return is_mark(i, 1, "(") && i + 2 < tokens_.size() && tokens_[i + 2].kind == ExpressionTokenKind::string &&
               is_mark(i, 3, ")");
    }

    // Whether the expression declares, assigns or passes on a name of its own like this built-in function's. Members
    // (after a dot) do not count.
    bool is_redefined(std::string_view name) const {
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (!is_word(i, name) || is_mark(i, -1, ".")) continue;
            if (!is_mark(i, 1, "(") || is(i, -1, ExpressionTokenKind::word, "function")) return true;
        }
        return false;
    }

    // thisComp . layer, where thisComp is not a member and never assigned to
    bool is_own_comp(std::size_t i) const {
        return is(i, -2, ExpressionTokenKind::word, "thisComp") && !is_mark(i, -3, ".") && !own_comp_is_assigned_;
    }
    bool is_own_comp_assigned() const {
        for (std::size_t i = 0; i < tokens_.size(); ++i) {
            if (is_word(i, "thisComp") && !is_mark(i, -1, ".") && is_mark(i, 1, "=")) return true;
        }
        return false;
    }

    // comp ( "literal" ) . layer
    const ExpressionToken* named_comp(std::size_t i) const {
        if (i < 5 || comp_is_redefined_) return nullptr;
        const std::size_t comp = i - 5;
        if (!is_word(comp, "comp") || is_mark(comp, -1, ".") || !is_call_with_literal(comp)) return nullptr;
        return &tokens_[comp + 2];
    }

    const std::vector<ExpressionToken>& tokens_;
    bool layer_is_redefined_;
    bool comp_is_redefined_;
    bool own_comp_is_assigned_;
};

// U+2028 and U+2029 in UTF-8, which older engines do not accept inside quotes.
constexpr std::string_view kLineSeparator = "\xe2\x80\xa8";
constexpr std::string_view kParagraphSeparator = "\xe2\x80\xa9";

}  // namespace

std::vector<LayerReference> find_layer_references(std::string_view expression) {
    if (expression.find("layer") == std::string_view::npos) return {};
    const std::vector<ExpressionToken> tokens = tokenize_expression(expression);
    return Finder(tokens).run();
}

std::vector<std::pair<std::size_t, std::size_t>> find_quoted(std::string_view expression, std::string_view name) {
    std::vector<std::pair<std::size_t, std::size_t>> found;
    for (const ExpressionToken& token : tokenize_expression(expression)) {
        if (token.kind == ExpressionTokenKind::string && token.text == name && expression[token.begin] != '`') {
            found.emplace_back(token.begin, token.end);
        }
    }
    return found;
}

std::string quote(std::string_view name, char quote_mark) {
    std::string text(1, quote_mark);
    for (std::size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        if (c == quote_mark || c == '\\') {
            text += '\\';
            text += c;
        } else if (c == '\n') {
            text += "\\n";
        } else if (c == '\r') {
            text += "\\r";
        } else if (c == '\0') {
            text += "\\x00";
        } else if (c == '$' && quote_mark == '`') {
            text += "\\$";
        } else if (name.substr(i, 3) == kLineSeparator || name.substr(i, 3) == kParagraphSeparator) {
            text += name.substr(i, 3) == kLineSeparator ? "\\u2028" : "\\u2029";
            i += 2;
        } else {
            text += c;
        }
    }
    text += quote_mark;
    return text;
}

}  // namespace host::model
