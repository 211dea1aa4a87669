// Calls the handlers that scripts set as onClick, onChange, ... on elements.
#include "dialog/dialog_classes.h"

namespace host::script {

namespace {

struct Firing {
    scriptui::Element& element;
    scriptui::Event event;
    scriptui::EventSink::Answer answer = scriptui::EventSink::Answer::no_handler;
};

duk_ret_t call_handler(duk_context* ctx, void* pointer) {
    auto& firing = *static_cast<Firing*>(pointer);
    ScriptCall call(ctx);
    push_element(call, &firing.element);
    duk_get_prop_string(ctx, -1, kHandlerNames[static_cast<std::size_t>(firing.event)].data());
    if (!duk_is_callable(ctx, -1)) return 0;
    firing.answer = scriptui::EventSink::Answer::handled;
    duk_insert(ctx, -2);
    duk_call_method(ctx, 0);
    if (duk_is_boolean(ctx, -1) && !duk_get_boolean(ctx, -1)) firing.answer = scriptui::EventSink::Answer::refused;
    return 0;
}

}  // namespace

scriptui::EventSink::Answer HandlerCaller::fire(scriptui::Element& element, scriptui::Event event) {
    duk_context* ctx = environment_.heap.context();
    Firing firing{element, event};
    const RunClock::Switched running(environment_.heap.clock(), true);
    duk_require_stack(ctx, 1);
    if (duk_safe_call(ctx, call_handler, &firing, 0, 1) == DUK_EXEC_SUCCESS) {
        duk_pop(ctx);
        return firing.answer;
    }
    const scriptui::Alert error{describe_error(ctx), "Script Error", true};
    if (environment_.heap.must_end()) throw ScriptEnded();
    const RunClock::Switched waiting(environment_.heap.clock(), false);
    environment_.show(error);
    return Answer::handled;
}

}  // namespace host::script
