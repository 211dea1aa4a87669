// The passage between a script's call and a C++ function: arguments, the object called on, the answer, errors.
#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>

#include <duktape.h>

#include "environment.h"

namespace host::script {

// One call from a script. Errors leave as C++ exceptions, so functions may keep what needs destruction.
class ScriptCall {
  public:
    explicit ScriptCall(duk_context* context) : ctx(context), environment(ScriptEnvironment::of(context)) {}

    duk_context* const ctx;
    ScriptEnvironment& environment;

    // The object the function was called on; an error when it is something else or was deleted.
    model::Item& self_item();
    model::Comp& self_comp();
    model::Layer& self_layer();
    scriptui::Element& self_element();

    // Arguments. Those that are missing are undefined.
    bool given(duk_idx_t i) { return !duk_is_null_or_undefined(ctx, i); }
    bool is_text(duk_idx_t i) { return duk_is_string(ctx, i) != 0; }
    bool is_null(duk_idx_t i) { return duk_is_null(ctx, i) != 0; }
    bool boolean(duk_idx_t i) { return duk_to_boolean(ctx, i) != 0; }
    double number(duk_idx_t i);             // an error when it is not a finite number
    int whole_number(duk_idx_t i);          // an error when it is not whole or does not fit
    std::string text(duk_idx_t i);          // whatever it is, as text; bytes that are not UTF-8 come back as they were
    std::string display_text(duk_idx_t i);  // the same as UTF-8
    model::Item* item(duk_idx_t i);         // null when it is no item; an error when it was deleted
    model::Layer* layer(duk_idx_t i);
    model::Comp& comp(duk_idx_t i);  // an error when it is no composition

    duk_ret_t nothing() { return 0; }
    duk_ret_t give(bool value) { return duk_push_boolean(ctx, value), 1; }
    duk_ret_t give(double value) { return duk_push_number(ctx, value), 1; }
    duk_ret_t give(int value) { return duk_push_int(ctx, value), 1; }
    duk_ret_t give(std::string_view value) { return push_string(value), 1; }
    duk_ret_t give(const char* value) = delete;
    duk_ret_t give(const model::Item* value) { return environment.push_item(ctx, value), 1; }
    duk_ret_t give(const model::Layer* value) { return environment.push_layer(ctx, value), 1; }

    [[noreturn]] void fail(std::string_view sentence) { host::script::fail(ctx, sentence); }

  private:
    void push_string(std::string_view value);
};

// Makes a function for tables out of one that takes a Call. The engine's own exceptions are of a type of their own and
// pass.
template <duk_ret_t (*Body)(ScriptCall&)>
duk_ret_t guarded(duk_context* ctx) {
    try {
        ScriptCall call(ctx);
        return Body(call);
    } catch (const std::bad_alloc&) {
        fail(ctx, "out of memory");
    } catch (const std::exception& e) {
        fail(ctx, e.what());
    }
}

}  // namespace host::script
