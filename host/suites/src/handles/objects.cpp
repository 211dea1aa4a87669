// Looks up handles.
#include "handles/objects.h"

#include "refusals.h"
#include "text.h"

namespace host::suites {

namespace {

// The id in the handle of one of the host's own objects.
std::int32_t id_in(const HostState& host, RawHandle handle, HandleKind kind) {
    require_handle(handle, kind, host.number);
    return static_cast<std::int32_t>(index_in(handle));
}

std::string numbered(HandleKind kind, std::int32_t id) {
    return std::string(name_of(kind)) + " " + std::to_string(id);
}

[[noreturn]] void refuse_dead(HandleKind kind, std::int32_t id) {
    refuse_argument("There is no " + numbered(kind, id) + " any more.");
}

model::Item& item_with(HostState& host, RawHandle handle, HandleKind kind) {
    const std::int32_t id = id_in(host, handle, kind);
    model::Item* item = host.project.item_by_id(id);
    if (!item) refuse_dead(kind, id);
    return *item;
}

}  // namespace

model::Project& living_project(HostState& host, AEGP_ProjectH handle) {
    id_in(host, raw(handle), HandleKind::project);
    return host.project;
}

model::Item& living_item(HostState& host, AEGP_ItemH handle) {
    return item_with(host, raw(handle), HandleKind::item);
}

model::Comp& living_comp(HostState& host, AEGP_CompH handle) {
    model::Comp* comp = item_with(host, raw(handle), HandleKind::comp).comp();
    if (!comp) refuse_argument("The composition handle was never given.");
    return *comp;
}

model::Layer& living_layer(HostState& host, AEGP_LayerH handle) {
    const std::int32_t id = id_in(host, raw(handle), HandleKind::layer);
    model::Layer* layer = host.project.layer_by_id(id);
    if (!layer) refuse_dead(HandleKind::layer, id);
    return *layer;
}

StreamRef living_stream(HostState& host, AEGP_StreamRefH handle) {
    // A value's streamH also stands for the stream it came from.
    const auto parts = decode(raw(handle));
    const bool in_value = parts && parts->kind == HandleKind::stream_value;
    const StreamRef ref =
        in_value ? host.ledger.find<ValueRef>(raw(handle)).of : host.ledger.find<StreamRef>(raw(handle));
    if (!still_exists(ref)) refuse_argument("What the stream belongs to was deleted.");
    return ref;
}

EffectRef living_effect(HostState& host, AEGP_EffectRefH handle) {
    const EffectRef ref = host.ledger.find<EffectRef>(raw(handle));
    if (!still_exists(ref)) refuse_argument("The effect or its layer was deleted.");
    return ref;
}

std::string describe(const HostState& host, RawHandle handle) {
    const auto parts = decode(handle);
    if (!parts || parts->host != host.number) return host.ledger.describe(handle);
    const auto id = static_cast<std::int32_t>(parts->index);
    const auto named = [&](const std::string* name) {
        return name ? numbered(parts->kind, id) + " " + quoted(*name) : "dead " + numbered(parts->kind, id);
    };
    switch (parts->kind) {
        case HandleKind::project:
            return "project";
        case HandleKind::item:
        case HandleKind::comp: {
            const model::Item* item = host.project.item_by_id(id);
            return named(item ? &item->name() : nullptr);
        }
        case HandleKind::layer: {
            const model::Layer* layer = host.project.layer_by_id(id);
            return named(layer ? &layer->display_name() : nullptr);
        }
        default:
            return host.ledger.describe(handle);
    }
}

}  // namespace host::suites
