// Plays the host from a journal: answers the plug-in's calls.
#include <cstdlib>
#include <new>
#include <utility>

#include "arguments.h"
#include "memory_slots.h"
#include "replay/difference.h"
#include "replay/replay_host.h"
#include "replay/tables.h"

namespace host::journal {
namespace {

constexpr std::size_t kMaxBlock = std::size_t{1} << 30;

}  // namespace

A_Err ReplayHost::answer(std::int32_t slot, void* arguments) noexcept {
    if (std::this_thread::get_id() != thread_) return A_Err_WRONG_THREAD;  // journals do not contain such calls
    try {
        if (const AEGP_MemHandle memory = handed_back_by(slot, arguments)) check_written(memory);
        check_call(slot, arguments);
        return give_answer(slot, arguments);
    } catch (const std::exception& problem) {
        stop(ReplayVerdict::Kind::damaged, is_over() ? journal_.last_line : here().line_number, problem.what());
    }
}

void ReplayHost::check_written(AEGP_MemHandle memory) {
    const std::uint64_t handle = raw(memory);
    const bool has_changed = memory_.has_changed(handle);
    const bool is_told = !is_over() && here().kind == JournalLine::Kind::wrote;
    if (!has_changed && !is_told) return;
    need_line();
    const std::string got =
        used(handle) + (has_changed ? " with " : ", unchanged, with ") + content_text(memory_.content_of(handle));
    if (!is_told) differ(expected_got(in_words(here()), got));
    if (here().values() != parse_values(used(handle) + ", " + content_text(memory_.content_of(handle))))
        differ(expected_got(in_words(here()), got));
    memory_.accept_change(handle);
    go_on();
}

void ReplayHost::check_call(std::int32_t slot, const void* arguments) {
    need_line();
    const bool is_that_function = here().kind == JournalLine::Kind::call && here().slot == slot;
    expected_ = is_that_function ? here().values() : std::vector<JournalValue>();
    const std::string text = arguments_text(*this, slot, arguments);
    if (!is_that_function) differ(expected_got(in_words(here()), "the call " + name_of_slot(slot) + '(' + text + ')'));
    if (text != here().values_text) {
        // The same values may be written in different ways.
        if (const std::vector<JournalValue> got = parse_values(text); got != expected_)
            differ(first_difference(name_of_slot(slot) + ", argument", expected_, got));
    }
    go_on();
}

A_Err ReplayHost::give_answer(std::int32_t slot, void* arguments) {
    for (;;) {
        need_line();
        if (here().kind == JournalLine::Kind::memory)
            tell_memory();
        else if (here().kind == JournalLine::Kind::enter)
            visit();
        else
            break;
    }
    const A_Err code = here().code;
    if (slot == kAcquire) {
        if (const void** suite = std::get<const void**>(*static_cast<AcquireArguments*>(arguments))) *suite = nullptr;
    }
    if (code == A_Err_NONE) {
        give_results(slot, here().values(), arguments);
        forget_memory(slot, arguments);
    }
    go_on();
    return code;
}

void ReplayHost::tell_memory() {
    const std::vector<JournalValue> told = here().values();
    if (told.size() != 2 || told[0].kind != JournalValue::Kind::name)
        throw BadValue("memory and its content are expected");
    memory_.fill(handle_of({told[0].text, told[0].number}), told[1]);
    go_on();
}

void ReplayHost::give_results(std::int32_t slot, const std::vector<JournalValue>& results, void* arguments) {
    if (slot < suites::kSlotCount) {
        Decoder decoder(*this);
        suite_codec(slot).read_results(decoder, results, arguments);
    } else if (slot == kAcquire) {
        give_suite(arguments);
    } else if (slot == kAllocate) {
        const auto& [size, block] = *static_cast<AllocateArguments*>(arguments);
        if (!block) throw BadValue("there is no place for the result");
        *block = make_block(nullptr, size, results);
    } else if (slot == kReallocate) {
        const auto& [old_block, size, block] = *static_cast<ReallocateArguments*>(arguments);
        if (!block) throw BadValue("there is no place for the result");
        *block = make_block(old_block, size, results);
    } else if (slot == kFree) {
        std::free(std::get<0>(*static_cast<FreeArguments*>(arguments)));
    }
}

void ReplayHost::give_suite(void* arguments) {
    const auto& [name, version, suite] = *static_cast<AcquireArguments*>(arguments);
    const void* table = name ? replay_table(name, version) : nullptr;
    if (!suite || !table) throw BadValue("a suite was acquired that this program does not know");
    *suite = table;
}

void* ReplayHost::make_block(void* old_block, std::size_t size, const std::vector<JournalValue>& results) {
    if (results.size() != 1 || results[0].kind != JournalValue::Kind::name)
        throw BadValue("the name of a block is expected");
    if (size > kMaxBlock) throw BadValue("the plug-in was given more than a gigabyte of memory");
    void* block = std::realloc(old_block, size > 0 ? size : 1);
    if (!block) throw std::bad_alloc();
    handles_.bind(raw(block), {results[0].text, results[0].number});
    return block;
}

void ReplayHost::forget_memory(std::int32_t slot, void* arguments) {
    if (slot == kFreeMemory || slot == kResizeMemory) memory_.forget(raw(handed_back_by(slot, arguments)));
}

std::string ReplayHost::used(std::uint64_t handle) {
    return handles_.of(handle, kUnknownWord);
}

std::string ReplayHost::given(std::uint64_t handle, std::string_view word) {
    return handles_.of(handle, word);
}

std::string ReplayHost::own(std::uint64_t address, std::string_view word) {
    return own_.of(address, word);
}

ValueMember ReplayHost::member(const void*, std::size_t argument) {
    return argument < expected_.size() ? member_of(expected_[argument]) : ValueMember::none;
}

// A number for each name, shaped like a pointer but not dereferenceable.
std::uint64_t ReplayHost::handle_of(const HandleName& name) {
    if (const auto known = handles_.raw_of(name)) return *known;
    const auto [word, is_new] = words_.emplace(name.word, words_.size() + 1);
    if (word->second > 0xFF || name.number >> 40 != 0) throw BadValue("there are too many handles");
    const std::uint64_t handle = std::uint64_t{0x6} << 60 | word->second << 44 | name.number << 4;
    handles_.bind(handle, name);
    return handle;
}

void* ReplayHost::memory_of(const HandleName& name) {
    return memory_.address_of(handle_of(name));
}

}  // namespace host::journal
