// Arguments for calls that do not care what they mean: living handles by type, and room for results.
#pragma once

#include <cstdint>
#include <type_traits>

#include "handle_types.h"
#include "world.h"

namespace host::suites {

// One living handle of each kind, made through a host's own suites.
struct HandlePool {
    explicit HandlePool(World& world);

    AEGP_ProjectH project;
    AEGP_ItemH item;
    AEGP_CompH comp;
    AEGP_LayerH layer;
    AEGP_FootageH footage = nullptr;
    AEGP_Collection2H collection = nullptr;
    AEGP_StreamRefH stream = nullptr;
    AEGP_EffectRefH effect = nullptr;
    AEGP_MemHandle memory = nullptr;
    AEGP_AddKeyframesInfoH batch = nullptr;

    std::vector<void*> all() const;
    template <class T>
    T of() const {
        if constexpr (std::is_same_v<T, AEGP_ProjectH>) return project;
        if constexpr (std::is_same_v<T, AEGP_ItemH>) return item;
        if constexpr (std::is_same_v<T, AEGP_CompH>) return comp;
        if constexpr (std::is_same_v<T, AEGP_LayerH>) return layer;
        if constexpr (std::is_same_v<T, AEGP_FootageH>) return footage;
        if constexpr (std::is_same_v<T, AEGP_Collection2H>) return collection;
        if constexpr (std::is_same_v<T, AEGP_StreamRefH>) return stream;
        if constexpr (std::is_same_v<T, AEGP_EffectRefH>) return effect;
        if constexpr (std::is_same_v<T, AEGP_MemHandle>) return memory;
        if constexpr (std::is_same_v<T, AEGP_AddKeyframesInfoH>) return batch;
    }
};

// Installs an effect with a parameter of each common type: 0 the input layer, 1 a slider, 2 a point, 3 a group, 4 a
// colour, 5 a layer. Its key.
int install_test_effect(model::Project& project);

}  // namespace host::suites
