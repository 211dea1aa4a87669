// The state of one engine: the project and the ports, the classes, and the objects that scripts hold.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>

#include <duktape.h>

#include "engine/heap.h"
#include "model/comp.h"
#include "model/item.h"
#include "model/layer.h"
#include "model/project.h"
#include "script/engine.h"
#include "script/settings.h"
#include "scriptui/dialog_driver.h"

namespace host::script {

// What a script object's hidden pointer points to.
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
    const char* name;  // of the global constructor; null: none
    std::optional<ClassId> base;
    duk_c_function construct;  // null: scripts cannot make instances
    std::span<const ScriptMethod> methods;
    std::span<const ScriptProperty> properties;
};

// Stops a dialog driver once the script has used up its time.
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

    // Undo groups that the running script has not closed.
    int open_undo_groups = 0;
    // Line of the last statement that threw; 0 if none was running.
    int throw_line = 0;

    void show(const scriptui::Alert& alert);

    void begin_run();
    void end_run();

    // Must come first: push_object() needs it.
    void define_object_cache(duk_context* ctx);
    void define_class(duk_context* ctx, const ScriptClass& table);

    // Pushes the script object for `target`: the same one as long as scripts hold it. Null pushes null.
    void push_object(duk_context* ctx, TargetKind kind, ClassId class_id, const void* target);
    void push_item(duk_context* ctx, const model::Item* item);
    void push_layer(duk_context* ctx, const model::Layer* layer);
    void push_prototype(duk_context* ctx, ClassId class_id);
    void forget_object(const void* target, const void* heap_object);

    scriptui::EventSink& handlers() { return *handlers_; }
    // A window lives as long as a script holds it or one of its elements.
    std::unordered_map<const void*, std::unique_ptr<scriptui::Window>> windows;  // by the address in the script object
    std::size_t dialog_elements = 0;

  private:
    void keep_recent(duk_context* ctx, duk_idx_t object);

    std::unique_ptr<scriptui::EventSink> handlers_;
    // Engine objects, kept alive by the stash.
    void* finalizer_ = nullptr;
    void* recent_ = nullptr;  // an array of the newest objects
    duk_uarridx_t next_recent_ = 0;
    std::array<void*, static_cast<std::size_t>(ClassId::count)> prototypes_{};
    std::unordered_map<const void*, void*> objects_;  // target -> the living script object for it
};

// The pointer inside the object at `index`; null if it is of another kind.
void* target_of(duk_context* ctx, duk_idx_t index, TargetKind kind);

// Throws an error object with this message.
[[noreturn]] void fail(duk_context* ctx, std::string_view sentence);

// "Unable to execute script at line N. " and the reason, for the error value on top of the stack, which is popped.
std::string describe_error(duk_context* ctx);
// The message for a script whose time other scripts have used up.
std::string all_time_used(const Limits& limits);

// Fill the global object.
void define_globals(duk_context* ctx);
void define_app(duk_context* ctx);
void define_project(duk_context* ctx);
void define_items(duk_context* ctx);
void define_comp(duk_context* ctx);
void define_layers(duk_context* ctx);
void define_settings(duk_context* ctx);
void define_dialogs(duk_context* ctx);

}  // namespace host::script
