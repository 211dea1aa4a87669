// Lifetimes of handles, and the record of misuse.
#include "handles/ledger.h"

#include <algorithm>

#include "refusals.h"
#include "text.h"

namespace host::suites {

namespace {

// This many dead entries are kept before the oldest is reused: until then a stale handle is recognized with its
// history, and after that by its generation, 65,535 times.
constexpr std::size_t kQuarantine = 4096;

std::string by(const Provenance& call) {
    return "by call " + std::to_string(call.call) + " (" + full_name(*call.slot) + ")";
}

struct Describe {
    std::string operator()(std::monostate) const { return "nothing"; }
    std::string operator()(const StreamRef& ref) const {
        if (!still_exists(ref)) return "of something deleted";
        return quoted(ref.stream->name()) + (ref.effect ? " of effect " + quoted(ref.effect->name()) : "") +
               " of layer " + std::to_string(ref.layer->id());
    }
    std::string operator()(const ValueRef& ref) const { return (*this)(ref.of); }
    std::string operator()(const EffectRef& ref) const {
        if (!still_exists(ref)) return "deleted";
        return quoted(ref.effect->name()) + " of layer " + std::to_string(ref.layer->id());
    }
    std::string operator()(const std::unique_ptr<Collection>& c) const {
        return std::to_string(c->items.size()) + " items";
    }
    std::string operator()(const std::unique_ptr<MemoryBlock>& block) const { return block->describe(); }
    std::string operator()(const std::unique_ptr<KeyframeBatch>& batch) const {
        return std::to_string(batch->entries.size()) + " keyframes";
    }
    std::string operator()(const std::unique_ptr<SolidFootage>& solid) const { return quoted(solid->name); }
};

}  // namespace

std::string_view name_of(HandleKind kind) {
    constexpr std::string_view kNames[] = {"project", "item",       "composition",    "layer",
                                           "footage", "collection", "stream",         "stream value",
                                           "effect",  "memory",     "keyframe batch", "block"};
    return kNames[static_cast<std::size_t>(kind) - 1];
}

void refuse_handle(RawHandle handle, HandleKind wanted) {
    const std::string name(name_of(wanted));
    if (handle == 0) refuse_argument("The " + name + " handle is null.");
    const auto parts = decode(handle);
    if (!parts) refuse_argument("The " + name + " handle is not a handle of this host.");
    if (parts->kind != wanted)
        refuse_argument("A handle of kind " + std::string(name_of(parts->kind)) + " stands where one of kind " + name +
                        " must.");
    refuse_argument("The " + name + " handle comes from another session.");
}

RawHandle HandleLedger::handle_of(std::uint32_t place) const {
    const LedgerEntry& entry = entries_[place];
    return encode({entry.kind, place, entry.generation, host_});
}

RawHandle HandleLedger::add(HandleKind kind, Held held) {
    ++handed_out_[kind];
    if (free_.size() <= kQuarantine) {
        entries_.push_back({kind, 1, false, now_, {}, std::move(held)});
        return handle_of(static_cast<std::uint32_t>(entries_.size() - 1));
    }
    const std::uint32_t place = free_.front();
    free_.pop_front();
    LedgerEntry& entry = entries_[place];
    entry = {kind, static_cast<std::uint16_t>(entry.generation + 1), false, now_, {}, std::move(held)};
    return handle_of(place);
}

std::optional<std::uint32_t> HandleLedger::place_of(RawHandle handle) const {
    const auto parts = decode(handle);
    if (!parts || parts->host != host_ || parts->index >= entries_.size()) return std::nullopt;
    const LedgerEntry& entry = entries_[parts->index];
    if (entry.kind != parts->kind || entry.generation != parts->generation) return std::nullopt;
    return parts->index;
}

std::uint32_t HandleLedger::known_place(RawHandle handle, HandleKind kind) const {
    require_handle(handle, kind, host_);
    const auto place = place_of(handle);
    if (!place)
        refuse_argument("The " + std::string(name_of(kind)) + " handle was disposed of long ago, or never given.");
    return *place;
}

Misuse HandleLedger::misuse(const LedgerEntry& entry) const {
    return {entry.kind, entry.made.call, full_name(*entry.made.slot), now_.call, full_name(*now_.slot)};
}

std::uint32_t HandleLedger::living_place(RawHandle handle, HandleKind kind) {
    const std::uint32_t place = known_place(handle, kind);
    const LedgerEntry& entry = entries_[place];
    if (!entry.is_alive()) {
        used_after_disposal_.push_back(misuse(entry));
        refuse_argument("The " + std::string(name_of(kind)) + " made " + by(entry.made) + " was disposed of " +
                        by(entry.disposed) + ".");
    }
    return place;
}

std::uint32_t HandleLedger::disposable_place(RawHandle handle, HandleKind kind) {
    const std::uint32_t place = known_place(handle, kind);
    const LedgerEntry& entry = entries_[place];
    if (!entry.is_alive()) {
        disposed_twice_.push_back(misuse(entry));
        refuse_argument("The " + std::string(name_of(kind)) + " made " + by(entry.made) + " was already disposed of " +
                        by(entry.disposed) + ".");
    }
    if (entry.adopted) refuse_state("The stream made " + by(entry.made) + " belongs to a collection.");
    return place;
}

void HandleLedger::retire(std::uint32_t place) {
    entries_[place].held = std::monostate{};
    entries_[place].disposed = now_;
    free_.push_back(place);
}

void HandleLedger::adopt_stream(RawHandle handle) {
    entries_[disposable_place(handle, HandleKind::stream)].adopted = true;
}

void HandleLedger::dispose_adopted_stream(RawHandle handle) {
    retire(living_place(handle, HandleKind::stream));
}

void HandleLedger::note_freed_while_locked(RawHandle handle) {
    freed_while_locked_.push_back(misuse(entries_[living_place(handle, HandleKind::memory)]));
}

const StreamRef* HandleLedger::stream_behind(RawHandle handle) const {
    const auto place = place_of(handle);
    if (!place) return nullptr;
    const Held& held = entries_[*place].held;
    if (const ValueRef* value = std::get_if<ValueRef>(&held)) return &value->of;
    if (const auto* batch = std::get_if<std::unique_ptr<KeyframeBatch>>(&held)) return &(*batch)->stream;
    return std::get_if<StreamRef>(&held);
}

const MemoryBlock* HandleLedger::memory_behind(RawHandle handle) const {
    const auto place = place_of(handle);
    if (!place) return nullptr;
    const auto* block = std::get_if<std::unique_ptr<MemoryBlock>>(&entries_[*place].held);
    return block ? block->get() : nullptr;
}

std::string HandleLedger::describe(RawHandle handle) const {
    if (handle == 0) return "null";
    const auto parts = decode(handle);
    if (!parts || parts->host != host_) return "foreign handle";
    const std::string name = std::string(name_of(parts->kind)) + " " + std::to_string(parts->index);
    const auto place = place_of(handle);
    if (!place || !entries_[*place].is_alive()) return "dead " + name;
    return name + " (" + std::visit(Describe{}, entries_[*place].held) + ")";
}

std::vector<void*> HandleLedger::blocks() const {
    std::vector<void*> all;
    for (const auto& [block, made] : blocks_) all.push_back(block);
    return all;
}

LedgerReport HandleLedger::report() const {
    LedgerReport report{handed_out_, {}, disposed_twice_, freed_while_locked_, used_after_disposal_};
    for (const LedgerEntry& entry : entries_)
        if (entry.is_alive() && !entry.adopted)
            report.never_disposed.push_back(
                {entry.kind, entry.made.call, full_name(*entry.made.slot), std::visit(Describe{}, entry.held)});
    for (const auto& [block, made] : blocks_)
        report.never_disposed.push_back({HandleKind::block, made.call, full_name(*made.slot), "a block"});
    std::sort(report.never_disposed.begin(), report.never_disposed.end(),
              [](const HandedOut& a, const HandedOut& b) { return a.made_by_call < b.made_by_call; });
    return report;
}

}  // namespace host::suites
