// The listing as JSON for programs.
#include <rapidjson/memorystream.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <cmath>

#include "cli/list_command.h"
#include "cli/selection.h"
#include "layer_facts.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;

// Invalid UTF-8 would make the whole text invalid, so it becomes U+FFFD.
std::string valid_utf8(const std::string& text) {
    using Utf8 = rapidjson::UTF8<>;
    std::string result;
    std::size_t i = 0;
    while (i < text.size()) {
        rapidjson::MemoryStream stream(text.data() + i, text.size() - i);
        unsigned code = 0;
        const bool is_valid = Utf8::Decode(stream, &code);
        const std::size_t length = is_valid ? stream.Tell() : 1;
        if (is_valid && i + length <= text.size()) {
            result.append(text, i, length);
        } else {
            result += "\xEF\xBF\xBD";
        }
        i += length;
    }
    return result;
}

class JsonList {
  public:
    explicit JsonList(const host::lottie::Document& document) : document_(document) { writer_.SetIndent(' ', 2); }

    void begin(const std::string& file) {
        writer_.StartObject();
        add("file", file);
        writer_.Key("compositions");
        writer_.StartArray();
    }

    void add_composition(const Comp& comp) {
        writer_.StartObject();
        add_id("id", comp);
        add("name", comp.name());
        add("width", comp.width());
        add("height", comp.height());
        add("frame_rate", comp.frame_rate());
        writer_.Key("layers");
        writer_.StartArray();
        int number = 0;
        for (const Layer* layer : comp.stack().to_vector()) add_layer(*layer, ++number);
        writer_.EndArray();
        writer_.EndObject();
    }

    std::string end() {
        writer_.EndArray();
        writer_.EndObject();
        return std::string(buffer_.GetString(), buffer_.GetSize()) + "\n";
    }

  private:
    void add_layer(const Layer& layer, int number) {
        writer_.StartObject();
        add("number", number);
        add("type", type_of(document_, layer));
        add("name", layer.display_name());
        add("in", frames(layer.comp(), layer.in_point()));
        add("out", frames(layer.comp(), layer.in_point() + layer.duration()));
        if (is_nest(layer)) add_id("composition", *layer.source()->comp());
        writer_.EndObject();
    }

    // The main composition has none.
    void add_id(const char* key, const Comp& comp) {
        const std::string id = document_.comp_id(comp);
        if (!id.empty()) return add(key, id);
        writer_.Key(key);
        writer_.Null();
    }
    void add(const char* key, const std::string& text) {
        const std::string valid = valid_utf8(text);
        writer_.Key(key);
        writer_.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
    }
    void add(const char* key, int number) {
        writer_.Key(key);
        writer_.Int(number);
    }
    // Whole numbers without ".0".
    void add(const char* key, double number) {
        const std::string text = short_number(number);
        writer_.Key(key);
        writer_.RawValue(text.data(), text.size(), rapidjson::kNumberType);
    }

    const host::lottie::Document& document_;
    rapidjson::StringBuffer buffer_;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer_{buffer_};
};

}  // namespace

std::string tree_json(const std::string& file, const host::lottie::Document& document) {
    JsonList list(document);
    list.begin(file);
    for (const Comp* comp : document.project().comps()) list.add_composition(*comp);
    return list.end();
}

}  // namespace cli
