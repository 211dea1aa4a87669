// Effect suite 3.
#include "calls/slot.h"
#include "model/effect.h"
#include "refusals.h"
#include "tables/trapped_suite.h"

namespace host::suites {

namespace {

using model::Layer;

int effect_count(Layer& layer) {
    return static_cast<int>(layer.effect_count());
}

EffectRef effect_at(Caller, Layer& layer, AEGP_EffectIndex index) {
    if (index < 0) refuse_argument("There is no effect " + std::to_string(index) + ".");
    return {&layer, &layer.effect(static_cast<std::size_t>(index))};
}

int key_of(EffectRef ref) {
    return ref.effect->kind().key;
}
int flags_of(EffectRef ref) {
    return static_cast<int>(ref.effect->flags());
}

void set_flags(EffectRef ref, AEGP_EffectFlags mask, AEGP_EffectFlags flags) {
    ref.effect->set_flags(static_cast<std::uint32_t>(mask), static_cast<std::uint32_t>(flags));
}

void dispose(HostState& host, HandleOf<EffectRef> handle) {
    host.ledger.dispose<EffectRef>(handle.handle);
}

EffectRef apply(Caller, Layer& layer, AEGP_InstalledEffectKey key) {
    return {&layer, &layer.apply_effect(key)};
}

}  // namespace

template <>
AEGP_EffectSuite3 make_suite() {
    using Suite = AEGP_EffectSuite3;
    Suite s = trapped_suite<Suite>();
    s.AEGP_GetLayerNumEffects = slot<&Suite::AEGP_GetLayerNumEffects, effect_count>;
    s.AEGP_GetLayerEffectByIndex = slot<&Suite::AEGP_GetLayerEffectByIndex, effect_at>;
    s.AEGP_GetInstalledKeyFromLayerEffect = slot<&Suite::AEGP_GetInstalledKeyFromLayerEffect, key_of>;
    s.AEGP_GetEffectFlags = slot<&Suite::AEGP_GetEffectFlags, flags_of>;
    s.AEGP_SetEffectFlags = slot<&Suite::AEGP_SetEffectFlags, set_flags>;
    s.AEGP_DisposeEffect = slot<&Suite::AEGP_DisposeEffect, dispose>;
    s.AEGP_ApplyEffect = slot<&Suite::AEGP_ApplyEffect, apply>;
    return s;
}

}  // namespace host::suites
