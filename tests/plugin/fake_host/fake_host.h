// A host made by hand for the plug-in's unit tests: canned projects, every call written down as "Suite.function(args)",
// any call made to fail, any suite refused. It keeps no rules of the real host that these tests do not need.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "AE_GeneralPlug.h"

namespace fake {

struct Comp;
struct Layer;

struct Item {
    std::string label;
    A_long id = 0;
    AEGP_ItemType type = AEGP_ItemType_FOOTAGE;
    Comp* comp = nullptr;
    Item* folder = nullptr;
    bool selected = false;
    bool deleted = false;
    A_long width = 0;
    A_long height = 0;
    A_Ratio pixel_aspect_ratio = {1, 1};
};

struct Comp {
    std::string label;
    Item* item = nullptr;
    std::vector<Layer*> layers;                         // topmost first
    std::vector<Layer*> selection;                      // in the order of selecting
    std::vector<AEGP_CollectionItemV2> other_selected;  // things that are no layers, behind them
};

// Values are told apart by one number, whatever the stream's type.
struct Keyframe {
    A_Time time = {0, 1};
    double value = 0;
    AEGP_KeyframeFlags flags = 0;
    AEGP_KeyframeInterpolationType in = AEGP_KeyInterp_LINEAR;
    AEGP_KeyframeInterpolationType out = AEGP_KeyInterp_LINEAR;
    std::vector<double> in_eases;  // speeds by dimension; the influence is a tenth of the speed
    std::vector<double> out_eases;
    double in_tangent = 0;
    double out_tangent = 0;
};

struct Stream {
    std::string label;
    AEGP_StreamType type = AEGP_StreamType_OneD;
    A_short dimensions = 1;
    bool can_vary = true;
    bool time_varying = false;
    double value = 0;
    std::vector<Keyframe> keyframes;
    bool has_expression = false;
    std::string expression;
    const void* expression_given = nullptr;  // where the text that was set last stood
    bool expression_enabled = false;
};

struct Effect {
    std::string label;
    AEGP_InstalledEffectKey key = 0;
    AEGP_EffectFlags flags = 0;
    std::vector<Stream*> parameters;
};

struct Layer {
    std::string label;
    Comp* comp = nullptr;
    Item* source = nullptr;
    Layer* parent = nullptr;
    AEGP_ObjectType object_type = AEGP_ObjectType_AV;
    bool is_3d = false;
    std::string own_name;
    std::string source_name;
    std::u16string written_name;
    A_Time in_layer = {0, 1};
    A_Time in_comp = {0, 1};
    A_Time duration_layer = {0, 1};
    A_Time duration_comp = {0, 1};
    A_Time offset = {0, 1};
    std::set<AEGP_LayerStream> legal_streams;
    std::map<AEGP_LayerStream, Stream*> streams;
    std::vector<Effect*> effects;
};

struct Collection {
    std::string label;
    std::vector<AEGP_CollectionItemV2> items;
};

struct Memory {
    std::string label;
    std::string text;
};

struct Batch {
    std::string label;
    Stream* stream = nullptr;
    std::vector<Keyframe> keyframes;
};

class Host {
  public:
    Host();
    ~Host();

    // ---- The project

    Item* root = nullptr;
    std::vector<Item*> items;  // in the order of the walk, the root folder first
    Item* active_item = nullptr;

    Item* add_item(const std::string& label, AEGP_ItemType type);
    Comp* add_comp(const std::string& label);                              // its item has the same label
    Layer* add_layer(Comp* comp, const std::string& label, Item* source);  // below the others
    Layer* add_layer_on_top(Comp* comp, const std::string& label, Item* source);
    Stream* layer_stream(Layer* layer, AEGP_LayerStream number);
    Effect* add_effect(Layer* layer, const std::string& label, AEGP_InstalledEffectKey key, int parameter_count);
    Collection* add_collection(const std::string& label, const std::vector<Layer*>& layers);
    Memory* add_memory(const std::string& text);
    Batch* add_batch(Stream* stream);

    // What a script leaves as its result. No handle is made for a null result pointer.
    std::function<std::string(const std::string&)> on_script = [](const std::string&) { return std::string(); };
    std::map<std::string, std::string> script_labels;  // whole text -> what stands for it in the calls

    // What the entry point asked for.
    AEGP_CommandHook command_hook = nullptr;
    AEGP_UpdateMenuHook update_menu_hook = nullptr;

    // ---- The record

    std::vector<std::string> calls;
    std::vector<std::string> calls_of(const std::string& part) const;  // those that contain the part
    int count_of(const std::string& part) const;
    void forget_calls();  // and what is open

    // Sees each call's line before the call takes effect.
    std::function<void(const std::string&)> on_call = [](const std::string&) {};

    // ---- The ledger of what the host handed out to be given back, in the order of handing out: "stream nest/1",
    // "value 55 of nest/1", "effect nest.blur", "memory1", "lock of memory1", "batch1", "collection1"

    std::vector<std::string> open;
    std::vector<std::string> not_open;  // given back without having been open
    void opened(const std::string& entry);
    void closed(const std::string& entry);
    const void* memory_locked_last = nullptr;  // where its text stands

    // ---- Faults

    static constexpr A_Err kInjected = 4242;
    int fail_at = 0;                         // the n-th call from now on fails, 0 for none
    std::string fail_on;                     // every call whose line contains this fails
    std::map<std::string, A_Err> fail_with;  // the same for each of these, with a code of its own
    std::set<std::string> refused;           // "AEGP Layer Suite 11"
    std::string half_read_name;              // what the reading of a layer's name writes before it fails
    bool loses_script_results = false;       // a script that succeeds gives a null handle

    // ---- Suites

    SPBasicSuite* basic() { return &basic_; }
    std::vector<std::string> acquired;  // "AEGP Layer Suite 11", in order
    int held = 0;                       // acquired and not yet released

    // Writes the call down, then runs the body unless a fault stands for it. A body without a result succeeds.
    template <class Body>
    A_Err call(const std::string& function, const std::vector<std::string>& arguments, const Body& body) {
        const A_Err err = call(function, arguments);
        if (err != A_Err_NONE) return err;
        if constexpr (std::is_void_v<decltype(body())>) {
            body();
            return A_Err_NONE;
        } else {
            return body();
        }
    }
    A_Err call(const std::string& function, const std::vector<std::string>& arguments);

  private:
    static SPErr acquire(const char* name, int32 version, const void** suite);
    static SPErr release(const char* name, int32 version);

    template <class T>
    T* keep(std::vector<std::unique_ptr<T>>& store) {
        store.push_back(std::make_unique<T>());
        return store.back().get();
    }

    SPBasicSuite basic_ = {};
    int calls_made_ = 0;
    std::vector<std::unique_ptr<Item>> item_store_;
    std::vector<std::unique_ptr<Comp>> comp_store_;
    std::vector<std::unique_ptr<Layer>> layer_store_;
    std::vector<std::unique_ptr<Stream>> stream_store_;
    std::vector<std::unique_ptr<Effect>> effect_store_;
    std::vector<std::unique_ptr<Collection>> collection_store_;
    std::vector<std::unique_ptr<Memory>> memory_store_;
    std::vector<std::unique_ptr<Batch>> batch_store_;
};

// The one that exists. Suite functions carry no context, so there can be only one at a time.
Host& host();

// Tables by names such as "AEGP Layer Suite 11"; slots that no test needs are null.
class SuiteTables {
  public:
    template <class Suite>
    Suite& add(const std::string& key) {
        const auto table = std::make_shared<Suite>();
        tables_[key] = table;
        return *table;
    }
    // Null for a suite that no table stands for.
    const void* find(const std::string& key) const {
        const auto found = tables_.find(key);
        return found == tables_.end() ? nullptr : found->second.get();
    }

  private:
    std::map<std::string, std::shared_ptr<void>> tables_;
};

void add_shell_suites(SuiteTables& tables);
void add_project_suites(SuiteTables& tables);
void add_layer_suites(SuiteTables& tables);
void add_stream_suites(SuiteTables& tables);

// ---- Handles, and arguments as text

template <class T, class H>
T* object(H handle) {
    return reinterpret_cast<T*>(handle);
}

template <class T>
std::string label_of(const T* object) {
    return object == nullptr ? "null" : object->label;
}

// The handle of each kind of object, and the object's label as the handle's text.
#define FAKE_HANDLE(Object, Handle)           \
    inline Handle handle(Object* one) {       \
        return reinterpret_cast<Handle>(one); \
    }                                         \
    inline std::string text_of(Handle one) {  \
        return label_of(object<Object>(one)); \
    }
FAKE_HANDLE(Item, AEGP_ItemH)
FAKE_HANDLE(Comp, AEGP_CompH)
FAKE_HANDLE(Layer, AEGP_LayerH)
FAKE_HANDLE(Stream, AEGP_StreamRefH)
FAKE_HANDLE(Effect, AEGP_EffectRefH)
FAKE_HANDLE(Collection, AEGP_Collection2H)
FAKE_HANDLE(Memory, AEGP_MemHandle)
FAKE_HANDLE(Batch, AEGP_AddKeyframesInfoH)
#undef FAKE_HANDLE

inline std::string text_of(const A_Time& time) {
    return std::to_string(time.value) + "/" + std::to_string(time.scale);
}
std::string text_of(const AEGP_StreamValue2& value);
inline std::string entry_of(const AEGP_StreamValue2& value) {
    return "value " + text_of(value) + " of " + text_of(value.streamH);
}
std::string number(double value);
inline std::string number(A_long value) {
    return std::to_string(value);
}
inline std::string number(A_u_long value) {
    return std::to_string(value);
}
std::string narrow(const A_UTF16Char* text);
std::string function_of(const char* suite, int version, const char* function);

// An item of a collection for the layer.
AEGP_CollectionItemV2 layer_item(Layer* layer);

}  // namespace fake
