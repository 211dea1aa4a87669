// What the functions of one engine reach: the project and the ports, the classes, and the objects scripts hold.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>

#include <duktape.h>

#include "heap.h"
#include "model/comp.h"
#include "model/item.h"
#include "model/layer.h"
#include "model/project.h"
#include "script/engine.h"
#include "script/settings.h"
#include "scriptui/dialog_driver.h"

namespace host::script {

// What a script object stands for; tells apart what its hidden pointer points to.
enum class TargetKind : int { none, app, project, settings, item, layer, element };

enum class ClassId : int {
    app,
    project,
    settings,
    item,
    picture_item,
    folder_item,
    comp_item,
    footage_item,
    layer,
    av_layer,
    text_layer,
    shape_layer,
    camera_layer,
    light_layer,
    element,
    container,
    window,
    group,
    panel,
    static_text,
    edit_text,
    button,
    checkbox,
    radio_button,
    dimension,
    point,
    edges,
    layout_manager,
    count
};

struct ScriptMethod {
    const char* name;
    duk_idx_t arity;
    duk_c_function function;
};

struct ScriptProperty {
    const char* name;
    duk_c_function get;
    duk_c_function set;  // null: assigning is an error
};

struct ScriptClass {
    ClassId id;
    const char* name;  // of the global constructor; null for none
    std::optional<ClassId> base;
    duk_c_function construct;  // null: scripts cannot make instances
    std::span<const ScriptMethod> methods;
    std::span<const ScriptProperty> properties;
};

// Ends a driver's work after the script has used up its time.
class ScriptEnded : public std::runtime_error {
  public:
    ScriptEnded() : std::runtime_error("the script has used up its time") {}
};

class ScriptEnvironment {
  public:
    ScriptEnvironment(model::Project& the_project, Settings& the_settings, scriptui::DialogDriver& the_driver,
                      std::function<void(const scriptui::Alert&)> the_on_alert, const Limits& limits);
    ~ScriptEnvironment();
    static ScriptEnvironment& of(duk_context* ctx) { return Heap::of(ctx).environment(); }

    model::Project& project;
    Settings& settings;
    scriptui::DialogDriver& driver;
    const std::function<void(const scriptui::Alert&)> on_alert;
    Heap heap;

    // Undo groups the running script has opened and not closed.
    int open_undo_groups = 0;
    // Line of the statement that threw last; 0 if no statement was running.
    int throw_line = 0;

    void show(const scriptui::Alert& alert);

    void begin_run();
    void end_run();

    // First of all definitions: what push_object() needs.
    void define_keeping(duk_context* ctx);
    void define_class(duk_context* ctx, const ScriptClass& table);

    // Pushes the object that stands for `target`: always the same one as long as scripts hold it. Null pushes null.
    void push_object(duk_context* ctx, TargetKind kind, ClassId class_id, const void* target);
    void push_item(duk_context* ctx, const model::Item* item);
    void push_layer(duk_context* ctx, const model::Layer* layer);
    void push_prototype(duk_context* ctx, ClassId class_id);
    void forget_object(const void* target, const void* heap_object);

    scriptui::EventSink& handlers() { return *handlers_; }
    // Windows live as long as a script holds them or one of their elements.
    std::unordered_map<const void*, std::unique_ptr<scriptui::Window>> windows;  // by the address that objects hold
    std::size_t dialog_elements = 0;

  private:
    void keep_for_a_while(duk_context* ctx, duk_idx_t object);

    std::unique_ptr<scriptui::EventSink> handlers_;
    // Engine objects that the stash keeps alive.
    void* finalizer_ = nullptr;
    void* recent_ = nullptr;  // an array with the objects made last
    duk_uarridx_t next_recent_ = 0;
    std::array<void*, static_cast<std::size_t>(ClassId::count)> prototypes_{};
    std::unordered_map<const void*, void*> objects_;  // target -> the living script object for it
};

// The pointer inside the object at `index`, if it is of that kind; else null.
void* target_of(duk_context* ctx, duk_idx_t index, TargetKind kind);

// Makes an error object of the sentence and throws it.
[[noreturn]] void fail(duk_context* ctx, std::string_view sentence);

// "Unable to execute script at line N. " and the reason, for the error value on top of the stack, which is popped.
std::string describe_error(duk_context* ctx);
// The sentence for a script that has no time left, because others took it.
std::string all_time_used(const Limits& limits);

// Filling the global object, class by class.
void define_globals(duk_context* ctx);
void define_app(duk_context* ctx);
void define_project(duk_context* ctx);
void define_items(duk_context* ctx);
void define_comp(duk_context* ctx);
void define_layers(duk_context* ctx);
void define_settings(duk_context* ctx);
void define_dialogs(duk_context* ctx);

}  // namespace host::script
