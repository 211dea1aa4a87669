// Lives of handles, and the account of them.
#include "ledger.h"

#include <algorithm>

#include "refusals.h"
#include "text.h"

namespace host::suites {

namespace {

// So many dead records lie idle before the first is used again: a stale handle is recognised for that long with all its
// history, and by its generation for 65,535 lives more.
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
    switch (kind) {
        case HandleKind::project:
            return "project";
        case HandleKind::item:
            return "item";
        case HandleKind::comp:
            return "composition";
        case HandleKind::layer:
            return "layer";
        case HandleKind::footage:
            return "footage";
        case HandleKind::collection:
            return "collection";
        case HandleKind::stream:
            return "stream";
        case HandleKind::stream_value:
            return "stream value";
        case HandleKind::effect:
            return "effect";
        case HandleKind::memory:
            return "memory";
        case HandleKind::keyframe_batch:
            return "keyframe batch";
        case HandleKind::block:
            return "block";
    }
    return "unknown";
}

void refuse_handle(RawHandle handle, HandleKind wanted) {
    const std::string name(name_of(wanted));
    if (handle == 0) refuse_argument("The " + name + " handle is null.");
    const auto parts = decode(handle);
    if (!parts) refuse_argument("The " + name + " handle is no handle of this host.");
    if (parts->kind != wanted)
        refuse_argument("A handle of kind " + std::string(name_of(parts->kind)) + " stands where one of kind " + name +
                        " must.");
    refuse_argument("The " + name + " handle comes from another session.");
}

RawHandle Ledger::handle_of(std::uint32_t place) const {
    const Record& record = records_[place];
    return encode({record.kind, place, record.generation, host_});
}

RawHandle Ledger::add(HandleKind kind, Held held) {
    ++handed_out_[kind];
    if (free_.size() <= kQuarantine) {
        records_.push_back({kind, 1, false, now_, {}, std::move(held)});
        return handle_of(static_cast<std::uint32_t>(records_.size() - 1));
    }
    const std::uint32_t place = free_.front();
    free_.pop_front();
    Record& record = records_[place];
    record = {kind, static_cast<std::uint16_t>(record.generation + 1), false, now_, {}, std::move(held)};
    return handle_of(place);
}

std::optional<std::uint32_t> Ledger::place_of(RawHandle handle) const {
    const auto parts = decode(handle);
    if (!parts || parts->host != host_ || parts->index >= records_.size()) return std::nullopt;
    const Record& record = records_[parts->index];
    if (record.kind != parts->kind || record.generation != parts->generation) return std::nullopt;
    return parts->index;
}

std::uint32_t Ledger::known_place(RawHandle handle, HandleKind kind) const {
    require_handle(handle, kind, host_);
    const auto place = place_of(handle);
    if (!place)
        refuse_argument("The " + std::string(name_of(kind)) + " handle was disposed of long ago, or never given.");
    return *place;
}

Misuse Ledger::misuse(const Record& record) const {
    return {record.kind, record.made.call, full_name(*record.made.slot), now_.call, full_name(*now_.slot)};
}

std::uint32_t Ledger::living_place(RawHandle handle, HandleKind kind) {
    const std::uint32_t place = known_place(handle, kind);
    const Record& record = records_[place];
    if (!record.is_alive()) {
        used_after_disposal_.push_back(misuse(record));
        refuse_argument("The " + std::string(name_of(kind)) + " made " + by(record.made) + " was disposed of " +
                        by(record.disposed) + ".");
    }
    return place;
}

std::uint32_t Ledger::disposable_place(RawHandle handle, HandleKind kind) {
    const std::uint32_t place = known_place(handle, kind);
    const Record& record = records_[place];
    if (!record.is_alive()) {
        disposed_twice_.push_back(misuse(record));
        refuse_argument("The " + std::string(name_of(kind)) + " made " + by(record.made) + " was already disposed of " +
                        by(record.disposed) + ".");
    }
    if (record.adopted) refuse_state("The stream made " + by(record.made) + " belongs to a collection.");
    return place;
}

void Ledger::retire(std::uint32_t place) {
    records_[place].held = std::monostate{};
    records_[place].disposed = now_;
    free_.push_back(place);
}

void Ledger::adopt_stream(RawHandle handle) {
    records_[disposable_place(handle, HandleKind::stream)].adopted = true;
}

void Ledger::dispose_adopted_stream(RawHandle handle) {
    retire(living_place(handle, HandleKind::stream));
}

void Ledger::note_freed_while_locked(RawHandle handle) {
    freed_while_locked_.push_back(misuse(records_[living_place(handle, HandleKind::memory)]));
}

const StreamRef* Ledger::stream_behind(RawHandle handle) const {
    const auto place = place_of(handle);
    if (!place) return nullptr;
    const Held& held = records_[*place].held;
    if (const ValueRef* value = std::get_if<ValueRef>(&held)) return &value->of;
    if (const auto* batch = std::get_if<std::unique_ptr<KeyframeBatch>>(&held)) return &(*batch)->stream;
    return std::get_if<StreamRef>(&held);
}

const MemoryBlock* Ledger::memory_behind(RawHandle handle) const {
    const auto place = place_of(handle);
    if (!place) return nullptr;
    const auto* block = std::get_if<std::unique_ptr<MemoryBlock>>(&records_[*place].held);
    return block ? block->get() : nullptr;
}

std::string Ledger::describe(RawHandle handle) const {
    if (handle == 0) return "null";
    const auto parts = decode(handle);
    if (!parts || parts->host != host_) return "foreign handle";
    const std::string name = std::string(name_of(parts->kind)) + " " + std::to_string(parts->index);
    const auto place = place_of(handle);
    if (!place || !records_[*place].is_alive()) return "dead " + name;
    return name + " (" + std::visit(Describe{}, records_[*place].held) + ")";
}

std::vector<void*> Ledger::blocks() const {
    std::vector<void*> all;
    for (const auto& [block, made] : blocks_) all.push_back(block);
    return all;
}

LedgerReport Ledger::report() const {
    LedgerReport report{handed_out_, {}, disposed_twice_, freed_while_locked_, used_after_disposal_};
    for (const Record& record : records_)
        if (record.is_alive() && !record.adopted)
            report.never_disposed.push_back(
                {record.kind, record.made.call, full_name(*record.made.slot), std::visit(Describe{}, record.held)});
    for (const auto& [block, made] : blocks_)
        report.never_disposed.push_back({HandleKind::block, made.call, full_name(*made.slot), "a block"});
    std::sort(report.never_disposed.begin(), report.never_disposed.end(),
              [](const HandedOut& a, const HandedOut& b) { return a.made_by_call < b.made_by_call; });
    return report;
}

}  // namespace host::suites
