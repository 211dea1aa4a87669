// The listing as JSON for programs.
#include <cmath>

#include "cli/shared/selection.h"
#include "list/listing.h"
#include "shared/json_writer.h"
#include "shared/layer_facts.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;

class JsonList {
  public:
    JsonList(JsonWriter& json, const lottie::document::Document& document) : json_(json), document_(document) {}

    // `id` is that of one animation among several; empty: left out.
    void list(const std::string& file, const std::string& id) {
        json_.begin_object();
        json_.add("file", file);
        if (!id.empty()) json_.add("id", id);
        add_compositions();
        json_.end_object();
    }

  private:
    void add_compositions() {
        json_.key("compositions");
        json_.begin_array();
        for (const Comp* comp : document_.project().comps()) add_composition(*comp);
        json_.end_array();
    }

    void add_composition(const Comp& comp) {
        json_.begin_object();
        add_id("id", comp);
        json_.add("name", comp.name());
        json_.add("width", comp.width());
        json_.add("height", comp.height());
        json_.add("frame_rate", comp.frame_rate());
        json_.key("layers");
        json_.begin_array();
        int number = 0;
        for (const Layer* layer : comp.stack().to_vector()) add_layer(*layer, ++number);
        json_.end_array();
        json_.end_object();
    }

    void add_layer(const Layer& layer, int number) {
        json_.begin_object();
        json_.add("number", number);
        json_.add("type", type_of(document_, layer));
        json_.add("name", layer.display_name());
        json_.add("in", frames(layer.comp(), layer.in_point()));
        json_.add("out", frames(layer.comp(), layer.in_point() + layer.duration()));
        if (is_nest(layer)) add_id("composition", *layer.source()->comp());
        json_.end_object();
    }

    // The main composition has none.
    void add_id(const char* name, const Comp& comp) {
        const std::string id = document_.comp_id(comp);
        if (id.empty()) {
            json_.add_null(name);
        } else {
            json_.add(name, id);
        }
    }

    JsonWriter& json_;
    const lottie::document::Document& document_;
};

}  // namespace

void add_tree(JsonWriter& json, const ListedFile& file) {
    if (!file.is_collection) {
        const ListedAnimation& only = file.animations.front();
        return JsonList(json, only.document).list(only.label, "");
    }
    json.begin_object();
    json.add("file", file.name);
    json.key("animations");
    json.begin_array();
    for (const ListedAnimation& animation : file.animations)
        JsonList(json, animation.document).list(animation.label, animation.id);
    json.end_array();
    json.end_object();
}

void add_failure(JsonWriter& json, const std::string& file, const Failure& failure) {
    json.begin_object();
    json.add("file", file);
    add_error(json, failure);
    json.end_object();
}

}  // namespace cli
