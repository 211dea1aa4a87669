// Compiled scripts, kept so that one that comes again is not compiled again.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

#include <duktape.h>

namespace host::script {

class CompiledScripts;
struct PlainRow;

// Keeps recently run longer scripts compiled. Rows of plain statements are long and come once, so each statement's
// shape is compiled once, as a function of its literals (docs/decisions/0017-plain-statements.md).
class Programs {
  public:
    // Must come first: creates the array that keeps functions alive.
    void define(duk_context* ctx, CompiledScripts& compiled);

    // Runs a script, whatever its bytes, and pushes the value of its last statement. Throws as the engine does; a
    // script that does not compile has not started to run.
    void run(duk_context* ctx, std::string_view text);

  private:
    struct Kept {
        std::string text;
        void* function = nullptr;  // the engine's
    };

    void run_whole(duk_context* ctx, std::string_view text);
    void push_kept(duk_context* ctx, std::string_view text);
    void run_row(duk_context* ctx, const PlainRow& row);
    void run_declarations(duk_context* ctx, std::string_view text);
    void* keep_top(duk_context* ctx, duk_uarridx_t place);
    void remember_shape(duk_context* ctx, const std::string& shape);

    static constexpr std::size_t kTexts = 4;

    std::array<Kept, kTexts> texts_;
    std::size_t next_text_ = 0;
    std::unordered_map<std::string, void*> shapes_;
    CompiledScripts* compiled_ = nullptr;
    void* keeper_ = nullptr;  // an engine array that keeps the functions alive
};

}  // namespace host::script
