// Counting, watching, running and the one table of error codes.
#include "dispatch.h"

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

// Runs the body; on failure the code, and the reason in `complaint`.
A_Err run(HostState& host, const Invocation& invocation, std::string& complaint) {
    try {
        invocation.run(host, invocation.arguments);
        return A_Err_NONE;
    } catch (const model::Error& error) {
        complaint = error.what();
        return code_of(error.kind());
    } catch (const std::bad_alloc&) {
        complaint = "The host is out of memory.";
        return kOutOfMemory;
    } catch (const std::exception& error) {
        complaint = error.what();
        return kInternal;
    } catch (...) {
        complaint = "An exception of unknown kind arose in the host.";
        return kInternal;
    }
}

A_Err run_and_note(HostState& host, const Invocation& invocation, std::uint64_t number, std::string& complaint) {
    const A_Err result = run(host, invocation, complaint);
    if (result != A_Err_NONE) host.add_diagnostic(invocation.slot, number, result, complaint);
    return result;
}

A_Err refuse_thread(HostState& host, const Invocation& invocation) {
    host.add_diagnostic(invocation.slot, 0, kWrongThread, "The call came off the main thread.");
    return kWrongThread;
}

// While it lives, the call is the running one; calls nest when a script runs.
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

A_Err dispatch(const Invocation& invocation) noexcept try {
    HostState* host = HostState::active();
    if (!host) return kNotAllowed;
    if (std::this_thread::get_id() != host->main_thread) return refuse_thread(*host, invocation);

    const Running running(*host, invocation.slot);
    const std::uint64_t number = host->now.call;
    if (invocation.slot.ordinal >= 0) ++host->slot_calls[static_cast<std::size_t>(invocation.slot.ordinal)];
    if (host->observers.empty()) {
        std::string complaint;
        return run_and_note(*host, invocation, number, complaint);
    }

    Call call(*host, invocation, number);
    std::optional<A_Err> refusal;
    for (Observer* observer : host->observers)
        if (const auto code = observer->before(call); code && *code != A_Err_NONE && !refusal) refusal = code;
    call.injected_ = refusal.has_value();
    call.result_ = refusal ? *refusal : run_and_note(*host, invocation, number, call.complaint_);
    for (auto observer = host->observers.rbegin(); observer != host->observers.rend(); ++observer)
        (*observer)->after(call);
    return call.result_;
} catch (const std::bad_alloc&) {
    return kOutOfMemory;
} catch (...) {
    return kInternal;
}

Call::Call(HostState& host, const Invocation& invocation, std::uint64_t number)
    : host_(&host), invocation_(&invocation), number_(number) {}

std::string_view Call::suite() const {
    return invocation_->slot.suite;
}
std::string_view Call::accessor() const {
    return invocation_->slot.accessor;
}
std::string_view Call::function() const {
    return invocation_->slot.function;
}
std::string_view Call::requested_suite() const {
    return invocation_->requested_suite;
}
bool Call::is_basic() const {
    return invocation_->slot.ordinal < 0;
}
bool Call::is_implemented() const {
    return invocation_->is_implemented;
}
std::string Call::arguments() const {
    return invocation_->text.arguments(*host_, invocation_->arguments);
}
int Call::slot() const {
    return invocation_->slot.ordinal;
}
const void* Call::raw_arguments() const {
    return invocation_->arguments;
}

std::optional<std::span<const std::byte>> Call::memory(AEGP_MemHandle handle) const {
    const MemoryBlock* block = host_->ledger.memory_behind(raw(handle));
    if (!block) return std::nullopt;
    return std::span(static_cast<const std::byte*>(block->data()), block->size());
}

AEGP_StreamType Call::stream_type(const void* handle) const {
    const StreamRef* ref = host_->ledger.stream_behind(raw(handle));
    const bool is_known = ref && still_exists(*ref);
    return is_known ? static_cast<AEGP_StreamType>(ref->stream->type()) : AEGP_StreamType_NO_DATA;
}

std::string Call::outputs() const {
    return result_ == A_Err_NONE ? invocation_->text.outputs(*host_, invocation_->arguments) : std::string();
}

}  // namespace host::suites
