// Creates, looks up and disposes of handles to what plug-ins own.
#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "handles/handle.h"
#include "handles/held.h"
#include "suites/ledger_report.h"
#include "suites/slot_facts.h"

namespace host::suites {

// A call: the running one, or the one that created or disposed of something.
struct Provenance {
    const SlotFacts* slot = nullptr;
    std::uint64_t call = 0;
};

class HandleLedger {
  public:
    // `host` becomes part of the handles.
    HandleLedger(std::uint8_t host, const Provenance& now) : host_(host), now_(now) {}

    template <class T>
    typename T::Handle record(T thing) {
        return as_pointer<typename T::Handle>(add(T::kKind, Held(wrap(std::move(thing)))));
    }

    // The object behind a handle; does not move until disposed of. Throws model::Error bad_argument for a handle that
    // is null, foreign, of another kind or dead.
    template <class T>
    T& find(RawHandle handle) {
        return unwrap<T>(entries_[living_place(handle, T::kKind)].held);
    }

    // Like find(), but a dead handle counts as disposed of twice.
    template <class T>
    T& find_to_dispose(RawHandle handle) {
        return unwrap<T>(entries_[disposable_place(handle, T::kKind)].held);
    }

    // Moves the object out and ends the handle's life. Throws like find_to_dispose().
    template <class T>
    T dispose(RawHandle handle) {
        const std::uint32_t place = disposable_place(handle, T::kKind);
        T thing = std::move(unwrap<T>(entries_[place].held));
        retire(place);
        return thing;
    }

    // From now on the stream is disposed of with its collection. Throws like find_to_dispose(), or not_allowed if it is
    // already adopted.
    void adopt_stream(RawHandle handle);
    void dispose_adopted_stream(RawHandle handle);

    void note_freed_while_locked(RawHandle handle);

    // The stream of a stream, value or batch handle, which may have been deleted; null for other and for dead handles.
    const StreamRef* stream_behind(RawHandle handle) const;
    // Live memory; null for any other handle.
    const MemoryBlock* memory_behind(RawHandle handle) const;

    // For messages and traces; never throws for a bad handle.
    std::string describe(RawHandle handle) const;

    // Blocks of the basic suite.
    void add_block(void* block) { blocks_.emplace(block, now_); }
    bool has_block(void* block) const { return blocks_.contains(block); }
    bool remove_block(void* block) { return blocks_.erase(block) != 0; }
    std::vector<void*> blocks() const;

    LedgerReport report() const;

  private:
    using Held =
        std::variant<std::monostate, StreamRef, ValueRef, EffectRef, std::unique_ptr<Collection>,
                     std::unique_ptr<MemoryBlock>, std::unique_ptr<KeyframeBatch>, std::unique_ptr<SolidFootage>>;

    struct LedgerEntry {
        HandleKind kind;
        std::uint16_t generation;
        bool adopted;
        Provenance made;
        Provenance disposed;  // empty while alive
        Held held;            // empty once disposed of

        bool is_alive() const { return held.index() != 0; }
    };

    // Small things live in the record, others behind a pointer so that they stay where they are.
    template <class T>
    static constexpr bool kIsSmall =
        T::kKind == HandleKind::stream || T::kKind == HandleKind::stream_value || T::kKind == HandleKind::effect;
    template <class T>
    static auto wrap(T&& thing) {
        if constexpr (kIsSmall<T>)
            return std::move(thing);
        else
            return std::make_unique<T>(std::move(thing));
    }
    template <class T>
    static T& unwrap(Held& held) {
        if constexpr (kIsSmall<T>)
            return std::get<T>(held);
        else
            return *std::get<std::unique_ptr<T>>(held);
    }

    RawHandle add(HandleKind kind, Held held);
    RawHandle handle_of(std::uint32_t place) const;
    // The index of the handle's entry, alive or not; nullopt if it has been reused.
    std::optional<std::uint32_t> place_of(RawHandle handle) const;
    std::uint32_t known_place(RawHandle handle, HandleKind kind) const;
    std::uint32_t living_place(RawHandle handle, HandleKind kind);
    std::uint32_t disposable_place(RawHandle handle, HandleKind kind);
    void retire(std::uint32_t place);
    Misuse misuse(const LedgerEntry& entry) const;

    std::uint8_t host_;
    const Provenance& now_;
    std::deque<LedgerEntry> entries_;
    std::deque<std::uint32_t> free_;  // indices of dead entries, oldest first
    std::unordered_map<void*, Provenance> blocks_;
    std::map<HandleKind, std::uint64_t> handed_out_;
    std::vector<Misuse> disposed_twice_;
    std::vector<Misuse> freed_while_locked_;
    std::vector<Misuse> used_after_disposal_;
};

// Throws model::Error bad_argument for a handle that is null, foreign, of another kind or host.
[[noreturn]] void refuse_handle(RawHandle handle, HandleKind wanted);
inline void require_handle(RawHandle handle, HandleKind wanted, std::uint8_t host) {
    if (!is_of(handle, wanted, host)) refuse_handle(handle, wanted);
}

}  // namespace host::suites
