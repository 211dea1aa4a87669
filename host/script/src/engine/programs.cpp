// Runs scripts: compiled ones again, and rows of plain statements.
#include "engine/programs.h"

#include <cstring>

#include "engine/plain_statements.h"
#include "script/compiled_scripts.h"
#include "text.h"

namespace host::script {

namespace {

// Size of scripts kept compiled. Shorter ones compile quickly; much longer ones rarely come twice.
constexpr std::size_t kMinSize = 1024;
constexpr std::size_t kMaxSize = std::size_t{256} << 10;

// When there are more, all are dropped.
constexpr std::size_t kMaxShapes = 256;

void compile(duk_context* ctx, std::string_view text) {
    if (is_engine_text(text)) {
        duk_compile_lstring(ctx, DUK_COMPILE_EVAL, text.data(), text.size());
    } else {
        const std::string converted = to_engine(text);
        duk_compile_lstring(ctx, DUK_COMPILE_EVAL, converted.data(), converted.size());
    }
}

struct PushLiteral {
    duk_context* ctx;
    void operator()(std::nullptr_t) const { duk_push_null(ctx); }
    void operator()(int number) const { duk_push_int(ctx, number); }
    void operator()(std::string_view text) const { push_text(ctx, text); }
};

std::string function_of(const PlainStatement& statement) {
    std::string text = "(function(";
    for (std::size_t i = 1; i <= statement.literals.size(); ++i) text += (i > 1 ? ",$" : "$") + std::to_string(i);
    return text + "){return " + statement.shape + "})";
}

}  // namespace

void Programs::define(duk_context* ctx, CompiledScripts& compiled) {
    compiled_ = &compiled;
    duk_push_global_stash(ctx);
    duk_push_array(ctx);
    keeper_ = duk_get_heapptr(ctx, -1);
    duk_put_prop_literal(ctx, -2, "programs");
    duk_pop(ctx);
}

void Programs::run(duk_context* ctx, std::string_view text) {
    for (const Kept& kept : texts_) {
        if (kept.function != nullptr && kept.text == text) {
            duk_push_heapptr(ctx, kept.function);
            duk_call(ctx, 0);
            return;
        }
    }
    if (const auto row = plain_row(text)) {
        run_row(ctx, *row);
    } else {
        run_whole(ctx, text);
    }
}

// Keeps the function on top of the stack alive, and leaves it there.
void* Programs::keep_top(duk_context* ctx, duk_uarridx_t place) {
    void* function = duk_get_heapptr(ctx, -1);
    duk_push_heapptr(ctx, keeper_);
    duk_dup(ctx, -2);
    duk_put_prop_index(ctx, -2, place);
    duk_pop(ctx);
    return function;
}

void Programs::run_whole(duk_context* ctx, std::string_view text) {
    if (text.size() >= kMinSize && text.size() <= kMaxSize) {
        push_kept(ctx, text);
    } else {
        compile(ctx, text);
    }
    duk_call(ctx, 0);
}

void Programs::push_kept(duk_context* ctx, std::string_view text) {
    if (const std::string* bytecode = compiled_->find(text)) {
        std::memcpy(duk_push_fixed_buffer(ctx, bytecode->size()), bytecode->data(), bytecode->size());
        duk_load_function(ctx);
    } else {
        compile(ctx, text);
        duk_dup_top(ctx);
        duk_dump_function(ctx);
        duk_size_t size = 0;
        const auto* made = static_cast<const char*>(duk_get_buffer(ctx, -1, &size));
        compiled_->add(text, {made, size});
        duk_pop(ctx);
    }
    const std::size_t place = next_text_++ % kTexts;
    texts_[place] = {};
    void* function = keep_top(ctx, static_cast<duk_uarridx_t>(place));
    texts_[place] = {std::string(text), function};
}

// Pops the function.
void Programs::remember_shape(duk_context* ctx, const std::string& shape) {
    if (shapes_.size() == kMaxShapes) shapes_.clear();
    void* function = keep_top(ctx, static_cast<duk_uarridx_t>(kTexts + shapes_.size()));
    shapes_.emplace(shape, function);
    duk_pop(ctx);
}

void Programs::run_declarations(duk_context* ctx, std::string_view text) {
    const std::string shape(text);
    auto known = shapes_.find(shape);
    if (known == shapes_.end()) {
        compile(ctx, text);
        remember_shape(ctx, shape);
        known = shapes_.find(shape);
    }
    duk_push_heapptr(ctx, known->second);
    duk_call(ctx, 0);
    duk_pop(ctx);
}

void Programs::run_row(duk_context* ctx, const PlainRow& row) {
    if (!row.declarations.empty()) run_declarations(ctx, row.declarations);
    duk_push_undefined(ctx);
    for (const PlainStatement& statement : row.statements) {
        duk_pop(ctx);
        auto known = shapes_.find(statement.shape);
        if (known == shapes_.end()) {
            compile(ctx, function_of(statement));
            duk_call(ctx, 0);
            remember_shape(ctx, statement.shape);
            known = shapes_.find(statement.shape);
        }
        duk_push_heapptr(ctx, known->second);
        for (const Literal& literal : statement.literals) std::visit(PushLiteral{ctx}, literal);
        duk_call(ctx, static_cast<duk_idx_t>(statement.literals.size()));
    }
}

}  // namespace host::script
