// The fake host: its record, its faults, its suites by name.
#include "fake_host.h"

#include <algorithm>
#include <sstream>

namespace fake {

namespace {

Host* g_host = nullptr;

std::string suite_key(const char* name, int32 version) {
    return std::string(name) + " " + std::to_string(version);
}

const SuiteTables& all_suites() {
    static const SuiteTables tables = [] {
        SuiteTables all;
        for (const auto add : {add_shell_suites, add_project_suites, add_layer_suites, add_stream_suites}) add(all);
        return all;
    }();
    return tables;
}

}  // namespace

Host& host() {
    return *g_host;
}

Host::Host() {
    g_host = this;
    basic_.AcquireSuite = acquire;
    basic_.ReleaseSuite = release;
    root = add_item("root", AEGP_ItemType_FOLDER);
}

Host::~Host() {
    g_host = nullptr;
}

Item* Host::add_item(const std::string& label, AEGP_ItemType type) {
    Item* item = keep(item_store_);
    item->label = label;
    item->type = type;
    item->folder = root;
    items.push_back(item);
    item->id = static_cast<A_long>(items.size()) + 100;
    return item;
}

Comp* Host::add_comp(const std::string& label) {
    Comp* comp = keep(comp_store_);
    comp->label = label;
    comp->item = add_item(label, AEGP_ItemType_COMP);
    comp->item->comp = comp;
    return comp;
}

Layer* Host::add_layer(Comp* comp, const std::string& label, Item* source) {
    Layer* layer = keep(layer_store_);
    layer->label = label;
    layer->comp = comp;
    layer->source = source;
    layer->own_name = label;
    layer->source_name = source == nullptr ? "" : source->label;
    comp->layers.push_back(layer);
    return layer;
}

Layer* Host::add_layer_on_top(Comp* comp, const std::string& label, Item* source) {
    Layer* layer = add_layer(comp, label, source);
    std::rotate(comp->layers.begin(), comp->layers.end() - 1, comp->layers.end());
    return layer;
}

Stream* Host::layer_stream(Layer* layer, AEGP_LayerStream number) {
    Stream*& stream = layer->streams[number];
    if (stream == nullptr) {
        stream = keep(stream_store_);
        stream->label = layer->label + "/" + std::to_string(number);
    }
    return stream;
}

Effect* Host::add_effect(Layer* layer, const std::string& label, AEGP_InstalledEffectKey key, int parameter_count) {
    Effect* effect = keep(effect_store_);
    effect->label = layer->label + "." + label;
    effect->key = key;
    effect->flags = AEGP_EffectFlags_ACTIVE;
    for (int i = 0; i < parameter_count; ++i) {
        Stream* stream = keep(stream_store_);
        stream->label = effect->label + "#" + std::to_string(i);
        effect->parameters.push_back(stream);
    }
    layer->effects.push_back(effect);
    return effect;
}

Collection* Host::add_collection(const std::string& label, const std::vector<Layer*>& layers) {
    Collection* collection = keep(collection_store_);
    collection->label = label.empty() ? "collection" + std::to_string(collection_store_.size()) : label;
    for (Layer* layer : layers) collection->items.push_back(layer_item(layer));
    return collection;
}

Memory* Host::add_memory(const std::string& text) {
    Memory* memory = keep(memory_store_);
    memory->label = "memory" + std::to_string(memory_store_.size());
    memory->text = text;
    return memory;
}

Batch* Host::add_batch(Stream* stream) {
    Batch* batch = keep(batch_store_);
    batch->label = "batch" + std::to_string(batch_store_.size());
    batch->stream = stream;
    return batch;
}

std::vector<std::string> Host::calls_of(const std::string& part) const {
    std::vector<std::string> found;
    std::copy_if(calls.begin(), calls.end(), std::back_inserter(found),
                 [&](const std::string& line) { return line.find(part) != std::string::npos; });
    return found;
}

int Host::count_of(const std::string& part) const {
    return static_cast<int>(calls_of(part).size());
}

void Host::forget_calls() {
    calls.clear();
    calls_made_ = 0;
    open.clear();
}

void Host::opened(const std::string& entry) {
    open.push_back(entry);
}

void Host::closed(const std::string& entry) {
    const auto found = std::find(open.begin(), open.end(), entry);
    if (found == open.end()) {
        not_open.push_back(entry);
    } else {
        open.erase(found);
    }
}

A_Err Host::call(const std::string& function, const std::vector<std::string>& arguments) {
    std::string line = function + "(";
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (i > 0) line += ", ";
        line += arguments[i];
    }
    line += ")";
    calls.push_back(line);
    ++calls_made_;
    on_call(line);
    if (calls_made_ == fail_at) return kInjected;
    if (!fail_on.empty() && line.find(fail_on) != std::string::npos) return kInjected;
    for (const auto& [part, code] : fail_with) {
        if (line.find(part) != std::string::npos) return code;
    }
    return A_Err_NONE;
}

SPErr Host::acquire(const char* name, int32 version, const void** suite) {
    const std::string key = suite_key(name, version);
    *suite = nullptr;
    if (host().refused.contains(key)) return 1;
    *suite = all_suites().find(key);
    if (*suite == nullptr) return 1;
    host().acquired.push_back(key);
    ++host().held;
    return kSPNoError;
}

SPErr Host::release(const char* /*name*/, int32 /*version*/) {
    --host().held;
    return kSPNoError;
}

std::string number(double value) {
    std::ostringstream text;
    text << value;
    return text.str();
}

std::string text_of(const AEGP_StreamValue2& value) {
    return number(value.val.one_d);
}

// Characters beyond ASCII are written as their code in braces.
std::string narrow(const A_UTF16Char* text) {
    std::ostringstream narrow_text;
    for (; *text != 0; ++text) {
        if (*text < 0x80) {
            narrow_text << static_cast<char>(*text);
        } else {
            narrow_text << "{" << std::hex << *text << "}";
        }
    }
    return narrow_text.str();
}

std::string function_of(const char* suite, int version, const char* function) {
    return std::string(suite).append(std::to_string(version)).append(".").append(function);
}

AEGP_CollectionItemV2 layer_item(Layer* layer) {
    AEGP_CollectionItemV2 item = {};
    item.type = AEGP_CollectionItemType_LAYER;
    item.u.layer.layerH = handle(layer);
    return item;
}

}  // namespace fake
