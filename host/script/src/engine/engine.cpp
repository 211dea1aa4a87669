// The script engine: runs scripts and reports how they ended.
#include "script/engine.h"

#include <utility>

#include <duktape.h>

#include "engine/environment.h"
#include "engine/programs.h"
#include "scriptui/window.h"
#include "text.h"

namespace host::script {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct Job {
    Programs& programs;
    std::string_view text;
    std::string result;
};

duk_ret_t run_job(duk_context* ctx, void* pointer) {
    auto& job = *static_cast<Job*>(pointer);
    job.programs.run(ctx, job.text);
    if (!duk_is_undefined(ctx, -1)) {
        duk_size_t size = 0;
        const char* data = duk_to_lstring(ctx, -1, &size);
        job.result = to_utf8({data, size});
    }
    return 0;
}

duk_ret_t set_up(duk_context* ctx, void* programs) {
    ScriptEnvironment& environment = ScriptEnvironment::of(ctx);
    environment.define_object_cache(ctx);
    static_cast<Programs*>(programs)->define(ctx, *environment.heap.limits().compiled);
    define_globals(ctx);
    define_app(ctx);
    define_items(ctx);
    define_comp(ctx);
    define_layers(ctx);
    define_dialogs(ctx);
    return 0;
}

}  // namespace

class Engine::Impl {
  public:
    Impl(model::Project& project, Settings& settings, scriptui::DialogDriver& driver,
         std::function<void(const scriptui::Alert&)> on_alert, const Limits& limits)
        : environment_(project, settings, driver, std::move(on_alert), limits) {
        if (duk_safe_call(environment_.heap.context(), set_up, &programs_, 0, 1) != DUK_EXEC_SUCCESS) {
            throw std::runtime_error("the script engine did not start: " + describe_error(environment_.heap.context()));
        }
        duk_pop(environment_.heap.context());
    }

    ScriptResult run(std::string_view text) {
        if (environment_.heap.clock().is_counting()) return {true, false, false, "", "A script is already running."};
        if (environment_.heap.is_all_time_used())
            return {true, true, false, "", all_time_used(environment_.heap.limits())};
        if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());

        duk_context* ctx = environment_.heap.context();
        environment_.begin_run();
        Job job{programs_, text, {}};
        ScriptResult outcome;
        if (duk_safe_call(ctx, run_job, &job, 0, 1) == DUK_EXEC_SUCCESS) {
            duk_pop(ctx);
            outcome.result = std::move(job.result);
        } else {
            outcome.failed = true;
            outcome.took_too_long = environment_.heap.time_is_up();
            outcome.lacked_memory = environment_.heap.is_out_of_memory() || environment_.heap.was_refused_memory();
            outcome.error = describe_error(ctx);
        }
        environment_.end_run();
        return outcome;
    }

  private:
    ScriptEnvironment environment_;
    Programs programs_;
};

Engine::Engine(model::Project& project, Settings& settings, scriptui::DialogDriver& driver,
               std::function<void(const scriptui::Alert&)> on_alert, Limits limits)
    : impl_(std::make_unique<Impl>(project, settings, driver, std::move(on_alert), limits)) {}

Engine::~Engine() = default;

ScriptResult Engine::run(std::string_view text) {
    return impl_->run(text);
}

}  // namespace host::script
