// Calls from scripts into C++: arguments, `this`, results, errors.
#pragma once

#include <exception>
#include <new>
#include <string>
#include <string_view>

#include <duktape.h>

#include "engine/environment.h"

namespace host::script {

// One call from a script. Errors leave as C++ exceptions, so destructors run.
class ScriptCall {
  public:
    explicit ScriptCall(duk_context* context) : ctx(context), environment(ScriptEnvironment::of(context)) {}

    duk_context* const ctx;
    ScriptEnvironment& environment;

    // `this`; an error if it is something else or was deleted.
    model::Item& self_item();
    model::Comp& self_comp();
    model::Layer& self_layer();
    scriptui::Element& self_element();

    // Arguments. Missing ones are undefined.
    bool given(duk_idx_t i) { return !duk_is_null_or_undefined(ctx, i); }
    bool is_text(duk_idx_t i) { return duk_is_string(ctx, i) != 0; }
    bool boolean(duk_idx_t i) { return duk_to_boolean(ctx, i) != 0; }
    double number(duk_idx_t i);             // an error if it is not a finite number
    int whole_number(duk_idx_t i);          // an error if it is not whole or does not fit
    std::string text(duk_idx_t i);          // converted to text; bytes that are not UTF-8 come back unchanged
    std::string display_text(duk_idx_t i);  // the same, as valid UTF-8
    model::Item* item(duk_idx_t i);         // null if it is not an item; an error if it was deleted
    model::Layer* layer(duk_idx_t i);
    model::Comp& comp(duk_idx_t i);  // an error if it is not a composition

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

// Adapts a function over ScriptCall for the class tables. The engine's own exceptions pass through.
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

// Properties that read and write one member of the object the function was called on, which is checked before the
// argument.
template <auto Self, auto Get>
duk_ret_t read_member(ScriptCall& call) {
    return call.give(((call.*Self)().*Get)());
}
template <auto Self, auto Set, auto Argument>
duk_ret_t write_member(ScriptCall& call) {
    auto& self = (call.*Self)();
    (self.*Set)((call.*Argument)(0));
    return call.nothing();
}

}  // namespace host::script
