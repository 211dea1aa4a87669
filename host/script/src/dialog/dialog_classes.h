// Shared by the script classes of dialogs.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include <duktape.h>

#include "engine/bind.h"
#include "engine/environment.h"
#include "scriptui/window.h"

namespace host::script {

// The property with the handler of each event, by event number.
inline constexpr std::string_view kHandlerNames[] = {"onClick", "onChanging", "onChange", "onShow", "onClose"};

// Calls the handlers that scripts set as onClick, onChange, ... on elements.
class HandlerCaller : public scriptui::EventSink {
  public:
    explicit HandlerCaller(ScriptEnvironment& environment) : environment_(environment) {}
    // Shows an error in a handler as an alert. Throws ScriptEnded when the script's time is up.
    Answer fire(scriptui::Element& element, scriptui::Event event) override;

  private:
    ScriptEnvironment& environment_;
};

// Elements alive in one engine; they do not count towards its memory limit.
inline constexpr std::size_t kMaxElements = 20'000;
// Nesting depth of containers: layout and the like recurse.
inline constexpr int kMaxDepth = 250;
// To be called before an element is created; an error if there are too many.
void count_new_element(ScriptCall& call);

void push_element(ScriptCall& call, const scriptui::Element* element);
// The element passed as an argument; null if the argument is something else.
scriptui::Element* element_argument(ScriptCall& call, duk_idx_t i);
scriptui::Window& self_window(ScriptCall& call);
scriptui::Element& self_container(ScriptCall& call);
// Adds a new element's object to the parent's children, and to the parent under its name.
void attach_object(ScriptCall& call, scriptui::Element& element);
// What the arguments of add() and Window() say about a new element; read first, so that bad values create nothing.
struct Creation {
    std::optional<std::array<double, 4>> bounds;  // left, top, right, bottom
    std::string text;
    std::string name;
    bool is_multiline = false;
    bool is_read_only = false;

    void apply_to(scriptui::Element& element) const;
};
// From the arguments with these indices; `text` -1: there is none.
Creation read_creation(ScriptCall& call, duk_idx_t bounds, duk_idx_t text, duk_idx_t properties);
std::array<double, 4> bounds_argument(ScriptCall& call, duk_idx_t i);

void define_measures(duk_context* ctx);
void define_elements(duk_context* ctx);
void define_containers(duk_context* ctx);
void define_window(duk_context* ctx);
// To be called after all element classes are defined.
void define_missing(duk_context* ctx);
// Whether the application's elements have a member of this name that ours lack.
bool is_missing_member(std::string_view name);

// From measures.cpp: sizes and the like as script objects whose named numbers write through to the element.
enum class Measure : int { preferred_size, minimum_size, maximum_size, size, location, bounds, margins };
duk_ret_t get_measure(ScriptCall& call, Measure measure);
duk_ret_t set_measure(ScriptCall& call, Measure measure);
// Not as lambdas: Clang up to 15 gives the first ones in two files the same name, and the linker keeps one of them.
template <Measure M>
duk_ret_t get_measure(ScriptCall& call) {
    return get_measure(call, M);
}
template <Measure M>
duk_ret_t set_measure(ScriptCall& call) {
    return set_measure(call, M);
}

// From arrangement.cpp.
duk_ret_t get_alignment(ScriptCall& call);
duk_ret_t set_alignment(ScriptCall& call);
duk_ret_t get_align_children(ScriptCall& call);
duk_ret_t set_align_children(ScriptCall& call);
duk_ret_t get_orientation(ScriptCall& call);
duk_ret_t set_orientation(ScriptCall& call);
duk_ret_t get_justify(ScriptCall& call);
duk_ret_t set_justify(ScriptCall& call);

// From layout_class.cpp.
duk_ret_t get_layout(ScriptCall& call);
void define_layout(duk_context* ctx);

}  // namespace host::script
