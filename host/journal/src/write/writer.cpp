// Writes a journal while a plug-in runs.
#include "journal/writer.h"

#include <unordered_map>

#include "arguments.h"
#include "journal/journal.h"
#include "journal/value_text.h"
#include "line_words.h"
#include "memory_slots.h"
#include "names.h"
#include "write/visits.h"

namespace host::journal {

class JournalWriter::Scribe : public HandleNamer {
  public:
    explicit Scribe(Sink sink) : sink_(std::move(sink)) { line(std::string(kFirstLine)); }

    void line(std::string text) {
        text += '\n';
        sink_(text);
    }

    void begin_session(std::string_view name) { line(std::string(kSession) + quoted_bytes(name) + ')'); }

    void entering(const suites::PluginCall& call) {
        line(std::string(kEnter) + std::string(name_of(call.function)) + '(' + arguments_text(*this, call) + ')');
    }

    void left(const suites::PluginCall& call, A_Err result, bool has_thrown) {
        line(std::string(kLeave) + std::string(name_of(call.function)) + " = " + std::to_string(result) +
             std::string(has_thrown ? kThrown : "") + " (" + results_text(*this, call) + ')');
    }

    void before(const suites::SuiteCall& call) {
        call_ = &call;
        const std::int32_t slot = slot_of(call);
        if (const AEGP_MemHandle memory = handed_back_by(slot, call.raw_arguments())) write_changes(memory);
        line(std::string(kCall) + std::to_string(call.number()) + ' ' + name_of_slot(slot) + '(' +
             arguments_text(*this, slot, call.raw_arguments()) + ')');
    }

    void after(const suites::SuiteCall& call) {
        call_ = &call;
        const std::int32_t slot = slot_of(call);
        const bool has_succeeded = call.result() == A_Err_NONE;
        if (has_succeeded) follow_memory(slot, call.raw_arguments());
        line(std::string(kDone) + std::to_string(call.number()) + " = " + std::to_string(call.result()) +
             std::string(call.is_injected() ? kInjected : "") + " (" +
             (has_succeeded ? results_text(*this, slot, call.raw_arguments()) : "") + ')' +
             (call.complaint().empty() ? "" : std::string(kRemark) + quoted_bytes(call.complaint())));
    }

    std::string used(std::uint64_t handle) override { return handles_.of(handle, kUnknownWord).text(); }
    std::string given(std::uint64_t handle, std::string_view word) override {
        // The basic suite's blocks are addresses, which are reused.
        return word == kBlockWord ? handles_.renew(handle, word).text() : handles_.of(handle, word).text();
    }
    std::string own(std::uint64_t address, std::string_view word) override { return own_.of(address, word).text(); }
    ValueMember member(const void* handle, std::size_t) override {
        return suites::value_member(call_->stream_type(handle));
    }

  private:
    static std::int32_t slot_of(const suites::SuiteCall& call) {
        return call.slot() >= 0 ? call.slot() : basic_slot(call.function());
    }

    std::optional<std::string_view> content_of(AEGP_MemHandle memory) const {
        const auto bytes = call_->memory(memory);
        if (!bytes) return std::nullopt;
        return std::string_view(reinterpret_cast<const char*>(bytes->data()), bytes->size());
    }

    // Writes what the plug-in has changed since the journal last had the content.
    void write_changes(AEGP_MemHandle memory) {
        const auto told = written_.find(raw(memory));
        const auto content = content_of(memory);
        if (told == written_.end() || !content || told->second == *content) return;
        tell(kWrote, memory, *content);
    }

    void follow_memory(std::int32_t slot, const void* arguments) {
        if (slot == kLockMemory) {
            const AEGP_MemHandle memory = locked_by(arguments);
            const auto content = content_of(memory);
            const auto told = written_.find(raw(memory));
            if (content && (told == written_.end() || told->second != *content)) tell(kMemory, memory, *content);
        } else if (slot == kFreeMemory || slot == kResizeMemory) {
            written_.erase(raw(handed_back_by(slot, arguments)));
        }
    }

    void tell(std::string_view word, AEGP_MemHandle memory, std::string_view content) {
        line(std::string(word) + used(raw(memory)) + ", " + content_text(content) + ')');
        written_.insert_or_assign(raw(memory), std::string(content));
    }

    Sink sink_;
    HandleNames handles_;
    HandleNames own_;
    std::unordered_map<std::uint64_t, std::string> written_;  // contents by memory handle
    const suites::SuiteCall* call_ = nullptr;                 // being written
};

JournalWriter::JournalWriter(Sink sink) : scribe_(std::make_unique<Scribe>(std::move(sink))) {}
JournalWriter::~JournalWriter() = default;

void JournalWriter::begin_session(std::string_view name) {
    scribe_->begin_session(name);
}
void JournalWriter::finish() {
    scribe_->line(std::string(kEnd));
}
void JournalWriter::entering(const suites::PluginCall& call) {
    scribe_->entering(call);
}
void JournalWriter::left(const suites::PluginCall& call, A_Err result, bool has_thrown) {
    scribe_->left(call, result, has_thrown);
}
std::optional<A_Err> JournalWriter::before(const suites::SuiteCall& call) {
    scribe_->before(call);
    return std::nullopt;
}
void JournalWriter::after(const suites::SuiteCall& call) {
    scribe_->after(call);
}

}  // namespace host::journal
