// What the files about script classes of dialogs share.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include <duktape.h>

#include "bind.h"
#include "environment.h"
#include "scriptui/window.h"

namespace host::script {

// Calls the functions that scripts keep as onClick, onChange, ... on the elements' objects.
class HandlerCaller : public scriptui::EventSink {
  public:
    explicit HandlerCaller(ScriptEnvironment& environment) : environment_(environment) {}
    // An error in a handler is shown as an alert. Throws ScriptEnded when the script's time is up.
    Answer fire(scriptui::Element& element, scriptui::Event event) override;

  private:
    ScriptEnvironment& environment_;
};

// Elements of one engine that exist at the same time; they live outside the memory that is limited.
inline constexpr std::size_t kMostElements = 20'000;
// Containers in containers; what works on elements goes down recursively.
inline constexpr int kDeepest = 250;
// Called before an element is made; an error when there are too many.
void count_new_element(ScriptCall& call);

void push_element(ScriptCall& call, const scriptui::Element* element);
// The element an argument stands for; null when it is none.
scriptui::Element* element_argument(ScriptCall& call, duk_idx_t i);
scriptui::Window& self_window(ScriptCall& call);
scriptui::Element& self_container(ScriptCall& call);
// Puts a new element's object where scripts look for it: into the parent's children and under its name.
void attach_object(ScriptCall& call, scriptui::Element& element);
// What add() and Window() say about a new element, read before it is made: bad values make none.
struct Creation {
    std::optional<std::array<double, 4>> bounds;  // left, top, right, bottom
    std::string text;
    std::string name;
    bool is_multiline = false;
    bool is_read_only = false;

    void apply_to(scriptui::Element& element) const;
};
// From the arguments with these numbers; there is no text when that is -1.
Creation read_creation(ScriptCall& call, duk_idx_t bounds, duk_idx_t text, duk_idx_t properties);
std::array<double, 4> bounds_argument(ScriptCall& call, duk_idx_t i);

void define_measures(duk_context* ctx);
void define_elements(duk_context* ctx);
void define_containers(duk_context* ctx);
void define_window(duk_context* ctx);
// After all classes of elements.
void define_missing(duk_context* ctx);
// Whether the application's elements have a member of this name and ours do not.
bool is_missing_member(std::string_view name);

// Accessors for the element classes, from measures.cpp: objects with named numbers that write through to the element.
duk_ret_t get_preferred_size(ScriptCall& call);
duk_ret_t set_preferred_size(ScriptCall& call);
duk_ret_t get_minimum_size(ScriptCall& call);
duk_ret_t set_minimum_size(ScriptCall& call);
duk_ret_t get_maximum_size(ScriptCall& call);
duk_ret_t set_maximum_size(ScriptCall& call);
duk_ret_t get_size(ScriptCall& call);
duk_ret_t set_size(ScriptCall& call);
duk_ret_t get_location(ScriptCall& call);
duk_ret_t set_location(ScriptCall& call);
duk_ret_t get_bounds(ScriptCall& call);
duk_ret_t set_bounds(ScriptCall& call);
duk_ret_t get_margins(ScriptCall& call);
duk_ret_t set_margins(ScriptCall& call);

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
