// Plays the host to one plug-in from a journal.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <thread>
#include <vector>

#include "codec.h"
#include "journal/journal.h"
#include "journal/replay.h"
#include "replay/known_names.h"
#include "replay/replayed_memory.h"

namespace host::journal {

class ReplayHost : private HandleNamer, private HandleResolver {
  public:
    // Receives the verdict. Must not return: a plug-in cannot be stopped in the middle of a call, only its process can.
    using Stop = std::function<void(const ReplayVerdict& verdict)>;

    // `place` follows the replay: the index of the next line. Only one ReplayHost may exist at a time.
    ReplayHost(const Journal& journal, AEGP_PluginInitFunc entry_point, std::atomic<std::size_t>& place, Stop stop);
    ~ReplayHost() override;
    ReplayHost(const ReplayHost&) = delete;

    static ReplayHost* active();

    [[noreturn]] void play();

    // Answers a call of the plug-in; `arguments` is a tuple of the C function's parameter types.
    A_Err answer(std::int32_t slot, void* arguments) noexcept;

  private:
    // The journal
    bool is_over() const { return place_ == journal_.lines.size(); }
    const JournalLine& here() const { return journal_.lines[place_]; }
    void go_on() { ++place_; }
    [[noreturn]] void stop(ReplayVerdict::Kind kind, std::size_t line, std::string sentence);
    [[noreturn]] void stop_at_cut();
    [[noreturn]] void differ(const std::string& sentence);
    // Stops if the journal has no more lines.
    void need_line() {
        if (is_over()) stop_at_cut();
    }

    // Visits
    void visit();
    // What a visit leaves behind beside its code.
    struct Results {
        AEGP_GlobalRefcon refcon = nullptr;
        A_Boolean handled = 0;
        A_long max_sleep = 0;
    };
    A_Err enter(PluginFunction function, const std::vector<JournalValue>& arguments, Results& results);
    void check_return(PluginFunction function, A_Err error, bool has_thrown, const Results& results);
    template <class Pointer>
    Pointer own_pointer(const JournalValue& value) const;

    // Calls
    void check_written(AEGP_MemHandle memory);
    void check_call(std::int32_t slot, const void* arguments);
    A_Err give_answer(std::int32_t slot, void* arguments);
    void give_results(std::int32_t slot, const std::vector<JournalValue>& results, void* arguments);
    void give_suite(void* arguments);
    void* make_block(void* old_block, std::size_t size, const std::vector<JournalValue>& results);
    void forget_memory(std::int32_t slot, void* arguments);
    void tell_memory();

    std::string used(std::uint64_t handle) override;
    std::string given(std::uint64_t handle, std::string_view word) override;
    std::string own(std::uint64_t address, std::string_view word) override;
    ValueMember member(const void* handle, std::size_t argument) override;
    std::uint64_t handle_of(const HandleName& name) override;
    void* memory_of(const HandleName& name) override;

    const Journal& journal_;
    AEGP_PluginInitFunc entry_point_;
    std::atomic<std::size_t>& place_;
    Stop stop_;
    const std::thread::id thread_ = std::this_thread::get_id();

    KnownNames handles_;
    KnownNames own_;
    ReplayedMemory memory_;
    std::map<std::string, std::uint64_t> words_;  // a number per kind of handle
    std::string plugin_name_;                     // of the journal's only plug-in
    std::vector<JournalValue> expected_;          // arguments of the call being compared
};

}  // namespace host::journal
