// Work in a process of its own, begun as a copy of this one: it is limited, ends with this one at the latest, and how
// it ended is data.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

namespace host::base {

// No limit where none is given.
struct ProcessLimits {
    std::optional<std::chrono::seconds> processor_time = {};  // at least 1
    std::optional<std::chrono::milliseconds> time = {};       // on the clock
    std::optional<std::size_t> memory = {};  // bytes, beyond what this process has when the other begins
};

struct ProcessEnd {
    enum class Kind {
        finished,               // it came to its end, with the number that its work gave
        exited,                 // it ended itself in the middle, or was ended by what ran along, with this exit code
        crashed,                // by this signal
        out_of_processor_time,  // the limits
        out_of_time,
        out_of_memory,
    };

    Kind kind = Kind::finished;
    int number = 0;
    std::chrono::milliseconds processor_time{};  // that it took
};

// "crashed (Segmentation fault)", "ended the program with code 3": what a process did that did not finish, limits
// apart.
std::string in_words(const ProcessEnd& end);

// No process can be started; what() is the reason.
class NoProcess : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

class ChildProcess {
  public:
    // The side of the process that works.
    class Parent {
      public:
        // The parent receives it. Ends the process if there is no parent any more.
        void say(std::string_view bytes) const;
        // A number that both sides see; 0 at first.
        std::atomic<std::size_t>& place() const;
        // Whether a process that it has started, or one of theirs, still runs; only for streams that are kept apart.
        // Those that have ended are forgotten.
        bool has_children() const;
        // From now on it can open no file; what is open stays open.
        void open_no_more_files() const;
        // Does nothing until the parent ends the process.
        [[noreturn]] void wait_for_the_end() const;
        // Ends the process as if the work had returned the number.
        [[noreturn]] void finish(int number) const;

      private:
        friend class ChildProcess;
        struct Ends;
        explicit Parent(const Ends& ends) : ends_(ends) {}
        const Ends& ends_;
    };

    // Where the standard streams of the process lead.
    enum class Streams {
        same,             // where those of this one do
        errors_are_said,  // standard error is what the parent receives
        nowhere,          // neither output nor errors go anywhere
        apart,            // both are kept, apart from what it says; see printed()
    };

    // Returns the number that the process finishes with. An exception that leaves it ends the process in the middle;
    // lack of memory is told apart.
    using Work = std::function<int(const Parent&)>;

    // Whether this system has processes that begin as copies.
    static bool can_start();

    // Starts the process; the thread that does so must outlive it. No other thread goes along: `work` must
    // not need any. Throws NoProcess.
    explicit ChildProcess(const Work& work, const ProcessLimits& limits = {}, Streams streams = Streams::same);
    // Ends the process if it has not ended.
    ~ChildProcess();
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    // What it has said so far; the caller may take from it.
    std::string& said();
    std::size_t place() const;
    // The beginning of what went to its standard streams, if they are kept apart. What such a process has started ends
    // with it: this one takes in its orphans, and ends every child of its own that is no ChildProcess.
    const std::string& printed() const;
    // Set once it has ended.
    const std::optional<ProcessEnd>& end() const;

    // Blocks until it says something, has a file ready for its place, or has ended.
    void hear();
    // Blocks until one of them, none of which has ended, does so. Returns sooner when a signal comes.
    static void hear_any(std::span<ChildProcess* const> children);
    // Blocks until it has ended.
    const ProcessEnd& wait();

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace host::base
