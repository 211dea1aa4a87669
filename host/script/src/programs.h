// Texts on their way through the compiler: what comes again is not compiled again.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include <duktape.h>

namespace host::script {

struct PlainStatement;
class PlainStatements;

// Longer texts that were run lately are kept compiled. Of rows of plain statements, each shape is compiled once, as a
// function of its literals: such rows are long, and come once.
class Programs {
  public:
    // First of all: makes room for what is kept.
    void define(duk_context* ctx);

    // Runs a text of any bytes and pushes the value of its last statement. Throws as the engine does; a text that the
    // compiler refuses has not begun to run.
    void run(duk_context* ctx, std::string_view text);

  private:
    struct Kept {
        std::string text;
        void* function = nullptr;  // the engine's
    };

    void run_whole(duk_context* ctx, std::string_view text);
    void run_row(duk_context* ctx, PlainStatements& row);
    void run_declarations(duk_context* ctx, std::string_view text);
    void* keep_top(duk_context* ctx, duk_uarridx_t place);
    void remember_shape(duk_context* ctx, const std::string& shape);

    static constexpr std::size_t kTexts = 4;

    std::array<Kept, kTexts> texts_;
    std::size_t next_text_ = 0;
    std::unordered_map<std::string, void*> shapes_;
    void* keeper_ = nullptr;  // an array of the engine that keeps the functions alive
};

}  // namespace host::script
