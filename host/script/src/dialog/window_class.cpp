// The script class Window.
#include "dialog/dialog_classes.h"
#include "scriptui/lay_out.h"

namespace host::script {

namespace {

// new Window(type, title, bounds, {name, ...})
duk_ret_t construct(ScriptCall& call) {
    duk_set_top(call.ctx, 4);
    if (!duk_is_constructor_call(call.ctx)) call.fail("Window must be called with new");
    const std::string type = call.text(0);
    if (type != "dialog") call.fail("windows of type \"" + type + "\" are not supported, only \"dialog\"");

    const Creation creation = read_creation(call, 2, 1, 3);
    count_new_element(call);
    auto owned = std::make_unique<scriptui::Window>(call.environment.handlers());
    scriptui::Window& window = *owned;
    creation.apply_to(window);
    call.environment.windows.emplace(static_cast<const scriptui::Element*>(&window), std::move(owned));
    // From here on the window lives as long as its object.
    push_element(call, &window);
    return 1;
}

// Closes the window if an exception leaves it open.
class CloseOnExit {
  public:
    explicit CloseOnExit(scriptui::Window& window) : window_(window) {}
    ~CloseOnExit() {
        if (window_.is_open()) window_.close_without_asking(scriptui::kDialogCancelled);
    }
    CloseOnExit(const CloseOnExit&) = delete;
    CloseOnExit& operator=(const CloseOnExit&) = delete;

  private:
    scriptui::Window& window_;
};

duk_ret_t show(ScriptCall& call) {
    scriptui::Window& window = self_window(call);
    if (window.is_open()) call.fail("the dialog is already shown");
    if (!window.frame()) scriptui::lay_out(window, call.environment.driver.text_measure());
    const CloseOnExit guard(window);
    window.open();
    if (window.is_open()) {
        const RunClock::Switched waiting(call.environment.heap.clock(), false);
        call.environment.driver.drive(window);
    }
    if (window.is_open()) window.close_box();
    if (window.is_open()) window.close_without_asking(scriptui::kDialogCancelled);
    return call.give(window.result());
}

duk_ret_t close(ScriptCall& call) {
    scriptui::Window& window = self_window(call);
    window.close(call.given(0) ? call.whole_number(0) : 0);
    return call.nothing();
}

duk_ret_t hide(ScriptCall& call) {
    self_window(call).close_without_asking(0);
    return call.nothing();
}

duk_ret_t default_element(ScriptCall& call) {
    push_element(call, self_window(call).default_element());
    return 1;
}

scriptui::Element* own_element_or_null(ScriptCall& call, const scriptui::Window& window) {
    scriptui::Element* element = element_argument(call, 0);
    if (element == nullptr && call.given(0)) call.fail("an element or null was expected");
    if (element != nullptr && &element->window() != &window) call.fail("the element is in another window");
    return element;
}

duk_ret_t set_default_element(ScriptCall& call) {
    scriptui::Window& window = self_window(call);
    window.set_default_element(own_element_or_null(call, window));
    return call.nothing();
}

duk_ret_t cancel_element(ScriptCall& call) {
    push_element(call, self_window(call).cancel_element());
    return 1;
}

duk_ret_t set_cancel_element(ScriptCall& call) {
    scriptui::Window& window = self_window(call);
    window.set_cancel_element(own_element_or_null(call, window));
    return call.nothing();
}

constexpr ScriptMethod kMethods[] = {
    {"show", 0, guarded<show>},
    {"close", 1, guarded<close>},
    {"hide", 0, guarded<hide>},
};

constexpr ScriptProperty kProperties[] = {
    {"defaultElement", guarded<default_element>, guarded<set_default_element>},
    {"cancelElement", guarded<cancel_element>, guarded<set_cancel_element>},
};

constexpr ScriptClass kWindow = {ClassId::window,    "Window", ClassId::container,
                                 guarded<construct>, kMethods, kProperties};

}  // namespace

scriptui::Window& self_window(ScriptCall& call) {
    scriptui::Element& element = call.self_element();
    if (element.type() != scriptui::ElementType::window) call.fail("called on something that is not a window");
    return element.window();
}

void define_window(duk_context* ctx) {
    ScriptEnvironment::of(ctx).define_class(ctx, kWindow);
}

void define_dialogs(duk_context* ctx) {
    define_measures(ctx);
    define_elements(ctx);
    define_containers(ctx);
    define_layout(ctx);
    define_window(ctx);
    define_missing(ctx);
}

}  // namespace host::script
