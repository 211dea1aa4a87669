// Counts, observes and runs calls, and turns exceptions into codes.
#include "calls/dispatch.h"

#include <exception>
#include <new>
#include <optional>
#include <thread>

#include "model/error.h"
#include "suites/error_codes.h"

namespace host::suites {

namespace {

A_Err code_of(model::ErrorKind kind) {
    switch (kind) {
        case model::ErrorKind::bad_argument:
            return kBadArgument;
        case model::ErrorKind::not_allowed:
            return kNotAllowed;
        case model::ErrorKind::unsupported:
            return kNotImplemented;
    }
    return kInternal;
}

struct Complaint {
    A_Err code;
    std::string sentence;
};

// For the exception being handled.
Complaint complaint_of_exception() {
    try {
        throw;
    } catch (const model::Error& error) {
        return {code_of(error.kind()), error.what()};
    } catch (const std::bad_alloc&) {
        return {kOutOfMemory, "The host is out of memory."};
    } catch (const std::exception& error) {
        return {kInternal, error.what()};
    } catch (...) {
        return {kInternal, "An exception of unknown kind arose in the host."};
    }
}

// Runs the call. An exception becomes a code and a diagnostic, and its text goes to `sentence` unless that is null.
A_Err run(HostState& host, const Invocation& invocation, std::uint64_t number, std::string* sentence = nullptr) {
    try {
        invocation.entry.run(host, invocation.arguments);
        return A_Err_NONE;
    } catch (...) {
        const Complaint complaint = complaint_of_exception();
        host.add_diagnostic(invocation.entry.slot, number, complaint.code, complaint.sentence);
        if (sentence != nullptr) *sentence = complaint.sentence;
        return complaint.code;
    }
}

A_Err refuse_thread(HostState& host, const Invocation& invocation) {
    host.add_diagnostic(invocation.entry.slot, 0, kWrongThread, "The call came off the main thread.");
    return kWrongThread;
}

// Makes a call the current one while it exists; calls nest when a script runs.
class Running {
  public:
    Running(HostState& host, const SlotFacts& slot) : host_(host), before_(host.now) {
        host.now = {&slot, ++host.calls};
    }
    ~Running() { host_.now = before_; }
    Running(const Running&) = delete;

  private:
    HostState& host_;
    Provenance before_;
};

}  // namespace

A_Err run_watched(HostState& host, const Invocation& invocation, std::uint64_t number) {
    SuiteCall call(host, invocation, number);
    std::optional<A_Err> refusal;
    for (Observer* observer : host.observers)
        if (const auto code = observer->before(call); code && *code != A_Err_NONE && !refusal) refusal = code;
    call.injected_ = refusal.has_value();
    call.result_ = refusal ? *refusal : run(host, invocation, number, &call.complaint_);
    for (auto observer = host.observers.rbegin(); observer != host.observers.rend(); ++observer)
        (*observer)->after(call);
    return call.result_;
}

A_Err dispatch(const Invocation& invocation) noexcept try {
    HostState* host = HostState::active();
    if (!host) return kNotAllowed;
    if (std::this_thread::get_id() != host->main_thread) return refuse_thread(*host, invocation);

    const Running running(*host, invocation.entry.slot);
    const std::uint64_t number = host->now.call;
    if (invocation.entry.slot.ordinal >= 0) ++host->slot_calls[static_cast<std::size_t>(invocation.entry.slot.ordinal)];
    return host->observers.empty() ? run(*host, invocation, number) : run_watched(*host, invocation, number);
} catch (const std::bad_alloc&) {
    return kOutOfMemory;
} catch (...) {
    return kInternal;
}

SuiteCall::SuiteCall(HostState& host, const Invocation& invocation, std::uint64_t number)
    : host_(&host), invocation_(&invocation), number_(number) {}

std::string_view SuiteCall::suite() const {
    return invocation_->entry.slot.suite;
}
std::string_view SuiteCall::accessor() const {
    return invocation_->entry.slot.accessor;
}
std::string_view SuiteCall::function() const {
    return invocation_->entry.slot.function;
}
std::string_view SuiteCall::requested_suite() const {
    return invocation_->requested_suite;
}
bool SuiteCall::is_basic() const {
    return invocation_->entry.slot.ordinal < 0;
}
bool SuiteCall::is_implemented() const {
    return invocation_->entry.is_implemented;
}
std::string SuiteCall::arguments() const {
    return invocation_->entry.text.arguments(*host_, invocation_->arguments);
}
int SuiteCall::slot() const {
    return invocation_->entry.slot.ordinal;
}
const void* SuiteCall::raw_arguments() const {
    return invocation_->arguments;
}

std::optional<std::span<const std::byte>> SuiteCall::memory(AEGP_MemHandle handle) const {
    const MemoryBlock* block = host_->ledger.memory_behind(raw(handle));
    if (!block) return std::nullopt;
    return std::span(static_cast<const std::byte*>(block->data()), block->size());
}

AEGP_StreamType SuiteCall::stream_type(const void* handle) const {
    const StreamRef* ref = host_->ledger.stream_behind(raw(handle));
    const bool is_known = ref && still_exists(*ref);
    return is_known ? static_cast<AEGP_StreamType>(ref->stream->type()) : AEGP_StreamType_NO_DATA;
}

std::string SuiteCall::outputs() const {
    return result_ == A_Err_NONE ? invocation_->entry.text.outputs(*host_, invocation_->arguments) : std::string();
}

}  // namespace host::suites
