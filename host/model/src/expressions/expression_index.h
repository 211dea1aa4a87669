// Which streams name which layers in their expressions, so that a rename finds them without a walk.
#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model/expression_text.h"
#include "stream_order.h"

namespace host::model {

class Comp;
class Layer;
class Project;
class Stream;

// Whether the expression, on a stream of `layer`, names a layer that does not exist where it says, or a composition
// that has been deleted. Compositions that the project never had are no proof: files lose their names.
bool names_missing_layer(const Layer& layer, std::string_view expression);

// Filled when first asked: until then it only remembers who has to be looked at.
class ExpressionIndex {
  public:
    explicit ExpressionIndex(Project& project) : project_(project) {}
    ExpressionIndex(const ExpressionIndex&) = delete;

    void await(Layer& layer);    // a living layer whose unread content has expressions
    void touch(Stream& stream);  // an attached stream whose expression came, went or changed
    void forget(Stream& stream);
    void set_failed(Stream& stream, bool failed);  // keeps the list of those; the stream's mark is its own

    // Streams of living layers whose expressions name `name` in the composition and mean its topmost layer of that
    // name.
    std::vector<Stream*> streams_naming(const Comp& comp, const std::string& name);
    std::vector<Stream*> streams_naming_comp(const std::string& comp_name);
    // Streams of living layers with broken expressions that might work if `name` were replaced.
    std::vector<Stream*> broken_streams_naming(const std::string& name);

    // Rules under which a broken expression stays disabled: looks at what has changed since, before names change again.
    void note_failures();
    // The same, for expressions that named a layer which is there no more.
    void note_failures_after_loss(const Comp& comp, const std::string& name);
    // The same, for expressions that named a composition which is there no more.
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
    // By name of the layer, then by the composition of the expression, or by the composition it names.
    std::unordered_map<std::string, std::map<std::int32_t, Streams>> at_home_;
    std::unordered_map<std::string, std::map<std::string, Streams>> abroad_;
    std::unordered_map<std::string, Streams> by_comp_name_;
    Streams failed_;
};

}  // namespace host::model
