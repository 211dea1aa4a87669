// Which streams name which layers in their expressions, so that a rename finds them without a search.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/expression_text.h"
#include "streams/stream_order.h"

namespace host::model {

class Comp;
class Layer;
class Project;
class Stream;

// Whether the expression, on a stream of `layer`, names a missing layer or a deleted composition. Compositions that
// never existed do not count: files lose their names.
bool names_missing_layer(const Layer& layer, std::string_view expression);

// Filled on demand: until then it only records which layers and streams to look at.
class ExpressionIndex {
  public:
    explicit ExpressionIndex(Project& project) : project_(project) {}
    ExpressionIndex(const ExpressionIndex&) = delete;

    void await(Layer& layer);    // a live layer whose content is not loaded and has expressions
    void touch(Stream& stream);  // an attached stream whose expression was added, removed or changed
    void forget(Stream& stream);
    void set_failed(Stream& stream, bool failed);  // updates only the list here

    // Live streams whose expressions refer to the composition's topmost layer called `name`.
    std::vector<Stream*> streams_naming(const Comp& comp, const std::string& name);
    std::vector<Stream*> streams_naming_comp(const std::string& comp_name);
    // Live streams whose broken expressions might work if `name` were replaced.
    std::vector<Stream*> broken_streams_naming(const std::string& name);

    // Under rules where broken expressions stay disabled: checks what has changed, before names change again.
    void note_failures();
    // The same, for expressions that named a layer now missing.
    void note_failures_after_loss(const Comp& comp, const std::string& name);
    // The same, for expressions that named a composition now missing.
    void note_failures_after_comp_loss(const std::string& comp_name);

  private:
    using Streams = std::set<Stream*, StreamOrder>;
    void settle();
    void take_in(Stream& stream);
    void take_out(Stream& stream);

    Project& project_;
    std::vector<Layer*> awaited_;
    Streams touched_;
    std::unordered_map<const Stream*, std::vector<LayerReference>> references_;
    // By layer name, then by the expression's composition (local), or the composition it names (remote).
    std::unordered_map<std::string, std::map<std::int32_t, Streams>> local_;
    std::unordered_map<std::string, std::map<std::string, Streams>> remote_;
    std::unordered_map<std::string, Streams> by_comp_name_;
    Streams failed_;
};

}  // namespace host::model
