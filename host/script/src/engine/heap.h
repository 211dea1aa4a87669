// Limits on memory and time: counting allocation functions, and the check that stops endless loops.
#pragma once

#include <cstddef>

#include <duktape.h>

#include "clock.h"
#include "script/engine.h"
#include "script/shared_time.h"

namespace host::script {

class ScriptEnvironment;

// Owns the Duktape heap. Its address is the heap's user data, so it must not move.
class Heap {
  public:
    // Throws std::runtime_error if there is no memory for an empty environment.
    Heap(const Limits& limits, ScriptEnvironment& environment);
    ~Heap();
    Heap(const Heap&) = delete;
    Heap& operator=(const Heap&) = delete;

    static Heap& of(duk_context* ctx);
    duk_context* context() const { return ctx_; }
    ScriptEnvironment& environment() const { return environment_; }
    RunClock& clock() { return clock_; }
    bool time_is_up() const { return clock_.time_is_up(); }

    const Limits& limits() const { return limits_; }
    bool is_all_time_used() const { return limits_.time_of_all->left() == SharedTime::Duration::zero(); }
    // Whether the run has to stop. Once true, it stays true until the run ends.
    bool must_end();
    // The same for very frequent callers: each step is a few nanoseconds of work.
    bool must_end_after(std::size_t steps);
    bool is_stack_short() const;
    bool is_out_of_memory() const { return out_of_memory_; }
    // By the program itself, in this run. The script may still succeed.
    void note_refused_memory() { was_refused_memory_ = true; }
    bool was_refused_memory() const { return was_refused_memory_; }
    void begin_run();
    void end_run();

    // Destroys the heap; the context is invalid afterwards.
    void close();

  private:
    static void* allocate(void* self, duk_size_t size);
    static void* reallocate(void* self, void* block, duk_size_t size);
    void* refused();
    static void release(void* self, void* block);
    bool may_grow_by(std::size_t bytes);

    ScriptEnvironment& environment_;
    RunClock clock_;
    const Limits limits_;
    std::size_t allowed_;  // in this run
    std::size_t used_ = 0;
    bool out_of_memory_ = false;
    bool was_refused_memory_ = false;
    std::size_t steps_ = 0;                 // since the last check
    const char* stack_at_start_ = nullptr;  // of the run; null between runs
    duk_context* ctx_ = nullptr;
};

}  // namespace host::script
