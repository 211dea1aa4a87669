// The index of names in expressions.
#include "expressions/expression_index.h"

#include <algorithm>

#include "model/comp.h"
#include "model/layer.h"
#include "model/project.h"

namespace host::model {
namespace {

template <class Streams>
void add_living(std::vector<Stream*>& to, const Streams& streams) {
    for (Stream* stream : streams) {
        if (stream->owner().is_alive()) to.push_back(stream);
    }
}

// The entry under the key, or null.
template <class Map, class Key>
const typename Map::mapped_type* entry(const Map& map, const Key& key) {
    const auto found = map.find(key);
    return found != map.end() ? &found->second : nullptr;
}

}  // namespace

bool names_missing_layer(const Layer& layer, std::string_view expression) {
    const Project& project = layer.project();
    for (const LayerReference& reference : find_layer_references(expression)) {
        const Comp* comp = reference.comp_end == 0 ? &layer.comp() : project.comp_named(reference.comp);
        if (comp == nullptr) {
            if (project.has_deleted_comp_named(reference.comp)) return true;
        } else if (comp->layer_named(reference.layer) == nullptr) {
            return true;
        }
    }
    return false;
}

void ExpressionIndex::await(Layer& layer) {
    awaited_.push_back(&layer);
}

void ExpressionIndex::touch(Stream& stream) {
    if (stream.awaits_index_) return;
    stream.awaits_index_ = true;
    touched_.insert(&stream);
}

void ExpressionIndex::forget(Stream& stream) {
    if (stream.awaits_index_) touched_.erase(&stream);
    stream.awaits_index_ = false;
    take_out(stream);
    failed_.erase(&stream);
}

void ExpressionIndex::set_failed(Stream& stream, bool failed) {
    if (failed) {
        failed_.insert(&stream);
    } else {
        failed_.erase(&stream);
    }
}

void ExpressionIndex::take_out(Stream& stream) {
    if (!stream.indexed_) return;
    stream.indexed_ = false;
    const auto known = references_.find(&stream);
    for (const LayerReference& reference : known->second) {
        if (reference.comp_end == 0) {
            local_[reference.layer][stream.owner().comp().id()].erase(&stream);
        } else {
            remote_[reference.layer][reference.comp].erase(&stream);
            by_comp_name_[reference.comp].erase(&stream);
        }
    }
    references_.erase(known);
}

void ExpressionIndex::take_in(Stream& stream) {
    take_out(stream);
    auto references = find_layer_references(stream.data().expression);
    if (references.empty()) return;
    for (const LayerReference& reference : references) {
        if (reference.comp_end == 0) {
            local_[reference.layer][stream.owner().comp().id()].insert(&stream);
        } else {
            remote_[reference.layer][reference.comp].insert(&stream);
            by_comp_name_[reference.comp].insert(&stream);
        }
    }
    references_[&stream] = std::move(references);
    stream.indexed_ = true;
}

void ExpressionIndex::settle() {
    while (!awaited_.empty()) {
        Layer& layer = *awaited_.back();
        if (layer.is_alive()) layer.ensure_loaded();  // its streams then report themselves
        awaited_.pop_back();
    }
    const bool may_fail = !project_.rules().broken_expressions_recover;
    for (Stream* stream : touched_) {
        stream->awaits_index_ = false;
        take_in(*stream);
        if (may_fail && stream->owner().is_alive() && stream->is_expression_broken()) stream->set_failed(true);
    }
    touched_.clear();
}

std::vector<Stream*> ExpressionIndex::streams_naming(const Comp& comp, const std::string& name) {
    settle();
    std::vector<Stream*> found;
    if (const auto* by_comp = entry(local_, name)) {
        if (const auto* streams = entry(*by_comp, comp.id())) add_living(found, *streams);
    }
    if (project_.comp_named(comp.name()) == &comp) {
        if (const auto* comps = entry(remote_, name)) {
            if (const auto* streams = entry(*comps, comp.name())) add_living(found, *streams);
        }
    }
    std::sort(found.begin(), found.end(), StreamOrder());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

std::vector<Stream*> ExpressionIndex::streams_naming_comp(const std::string& comp_name) {
    settle();
    std::vector<Stream*> found;
    if (const auto* streams = entry(by_comp_name_, comp_name)) add_living(found, *streams);
    return found;
}

std::vector<Stream*> ExpressionIndex::broken_streams_naming(const std::string& name) {
    settle();
    std::vector<Stream*> found;
    if (const auto* by_comp = entry(local_, name)) {
        for (const auto& [comp_id, streams] : *by_comp) {
            if (streams.empty()) continue;
            const Comp& comp = (*streams.begin())->owner().comp();
            if (comp.is_alive() && comp.layer_named(name) == nullptr) add_living(found, streams);
        }
    }
    if (const auto* comps = entry(remote_, name)) {
        for (const auto& [comp_name, streams] : *comps) {
            const Comp* comp = project_.comp_named(comp_name);
            if (comp != nullptr && comp->layer_named(name) == nullptr) add_living(found, streams);
        }
    }
    if (project_.comp_named(name) == nullptr && project_.has_deleted_comp_named(name)) {
        if (const auto* streams = entry(by_comp_name_, name)) add_living(found, *streams);
    }
    for (Stream* stream : failed_) {
        if (stream->owner().is_alive() && !find_quoted(stream->data().expression, name).empty())
            found.push_back(stream);
    }
    std::sort(found.begin(), found.end(), StreamOrder());
    found.erase(std::unique(found.begin(), found.end()), found.end());
    return found;
}

void ExpressionIndex::note_failures() {
    if (!project_.rules().broken_expressions_recover) settle();
}

void ExpressionIndex::note_failures_after_loss(const Comp& comp, const std::string& name) {
    if (project_.rules().broken_expressions_recover) return;
    for (Stream* stream : streams_naming(comp, name)) {
        if (stream->is_expression_broken()) stream->set_failed(true);
    }
}

void ExpressionIndex::note_failures_after_comp_loss(const std::string& comp_name) {
    if (project_.rules().broken_expressions_recover) return;
    for (Stream* stream : streams_naming_comp(comp_name)) {
        if (stream->is_expression_broken()) stream->set_failed(true);
    }
}

}  // namespace host::model
