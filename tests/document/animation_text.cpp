// Small animations for tests, and looking at what was written.
#include "animation_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <vector>

namespace lottie::document::testing {
namespace {

std::string join(const std::vector<std::pair<std::string, std::string>>& plain, Members members) {
    std::string out = "{";
    const auto add = [&out](const std::string& key, const std::string& value) {
        if (!value.empty()) out += (out.size() == 1 ? "\"" : ",\"") + key + "\":" + value;
    };
    for (const auto& [key, value] : plain) {
        const auto other = members.find(key);
        add(key, other == members.end() ? value : other->second);
        if (other != members.end()) members.erase(other);
    }
    for (const auto& [key, value] : members) add(key, value);
    return out + "}";
}

std::vector<std::pair<std::string, std::string>> plain_layer(int ind, const std::string& name,
                                                             const std::string& type) {
    return {{"ddd", "0"},   {"ind", std::to_string(ind)},
            {"ty", type},   {"nm", "\"" + name + "\""},
            {"parent", ""}, {"tt", ""},
            {"tp", ""},     {"td", ""},
            {"hd", ""},     {"refId", ""},
            {"sr", "1"},    {"ks", transform()},
            {"ao", "0"},    {"ef", ""},
            {"w", ""},      {"h", ""},
            {"shapes", ""}, {"ip", "0"},
            {"op", "60"},   {"st", "0"},
            {"bm", "0"}};
}

// The end of the value that begins at `at`.
std::size_t end_of_value(const std::string& text, std::size_t at) {
    int depth = 0;
    bool in_string = false;
    for (; at < text.size(); ++at) {
        const char c = text[at];
        if (in_string) {
            if (c == '\\') ++at;
            if (c == '"') in_string = false;
        } else if (c == '"') {
            in_string = true;
        } else if (c == '{' || c == '[') {
            ++depth;
        } else if (c == '}' || c == ']') {
            if (--depth < 0) return at;
            if (depth == 0) return at + 1;
        } else if (c == ',' && depth == 0) {
            return at;
        }
    }
    return at;
}

class Description {
  public:
    explicit Description(host::model::Project& project) : project_(project) { out_.precision(12); }

    std::string text() {
        for (host::model::Comp* comp : project_.comps()) {
            out_ << "comp of " << comp->layer_count() << " layers, " << comp->frame_rate() << " fps\n";
            for (int i = 0; i < comp->layer_count(); ++i) describe(comp->layer_at(i));
        }
        return out_.str();
    }

  private:
    static int place(const host::model::Layer* layer) { return layer == nullptr ? -1 : layer->index(); }

    void describe(host::model::Layer& layer) {
        host::model::Item* source = layer.source();
        const std::uint32_t lost = host::model::kAudioActive | host::model::kEffectsActive;  // not in the file
        out_ << "layer " << layer.display_name() << " kind " << static_cast<int>(layer.kind()) << " flags "
             << (layer.flags() & ~lost) << " parent " << place(layer.parent()) << " matte " << place(layer.matte())
             << "/" << static_cast<int>(layer.matte_type()) << " at " << layer.offset().ticks << " from "
             << layer.in_point().ticks << " for " << layer.duration().ticks << " stretch " << layer.stretch()
             << " nest " << (source != nullptr && source->comp() != nullptr ? source->comp()->layer_count() : -1)
             << "\n";
        for (int number = 0; number < 12; ++number) {
            const bool needs_depth = number >= host::model::kRotateX && number <= host::model::kOrientation;
            if ((needs_depth && !layer.is_3d()) ||
                (number == host::model::kTimeRemapStream && !layer.has_flag(host::model::kTimeRemap)))
                continue;
            out_ << "  stream " << number << ": ";
            describe(layer.stream(number));
        }
        for (std::size_t i = 0; i < layer.effect_count(); ++i) {
            const host::model::Effect& effect = layer.effect(i);
            out_ << "  effect " << effect.name() << " " << effect.kind().match_name << " " << effect.flags() << "\n";
            for (std::size_t p = 1; p < effect.parameter_count(); ++p) {
                out_ << "    ";
                describe(effect.parameter(p));
            }
        }
        for (const auto& stream : layer.other_streams()) {
            out_ << "  " << stream->name() << " ";
            describe(*stream);
        }
    }

    void describe(const host::model::Stream& stream, const host::model::Value& value) {
        if (stream.type() == host::model::StreamType::layer_id) {
            out_ << "layer " << place(project_.layer_by_id(static_cast<host::model::LayerId>(value.n[0]))) << " ";
            return;
        }
        for (const double number : value.n) out_ << number << " ";
    }

    void describe(const host::model::Stream& stream) {
        const host::model::StreamData& data = stream.data();
        if (data.keyframes.size() < 2) {
            describe(stream, data.keyframes.empty() ? data.static_value : data.keyframes.front().value);
        } else {
            for (std::size_t i = 0; i < data.keyframes.size(); ++i) describe(stream, i);
        }
        out_ << "= " << (data.expression_enabled ? data.expression : "") << "\n";
    }

    // Eases are told by what they do: the values on the way to the next keyframe.
    void describe(const host::model::Stream& stream, std::size_t index) {
        const host::model::Keyframe& key = stream.keyframe(index);
        out_ << "@" << key.time.ticks << " ";
        describe(stream, key.value);
        // Nothing moves along the path of a hold.
        const bool has_way_in = index > 0 && stream.keyframe(index - 1).out != host::model::Interpolation::hold;
        if (has_way_in) describe(stream, key.tangent_in);
        if (key.out != host::model::Interpolation::hold) describe(stream, key.tangent_out);
        out_ << (key.out == host::model::Interpolation::hold ? "holds; " : "; ");
        if (index + 1 == stream.keyframe_count()) return;
        const std::int64_t ticks = stream.keyframe(index + 1).time.ticks - key.time.ticks;
        for (const int tenths : {1, 4, 8}) {
            out_ << "then ";
            describe(stream, stream.value_at({key.time.ticks + ticks * tenths / 10}));
        }
    }

    host::model::Project& project_;
    std::ostringstream out_;
};

}  // namespace

std::string animation(const std::string& layers, const std::string& assets, const std::string& frame_rate) {
    return "{\"v\":\"5.7.4\",\"fr\":" + frame_rate +
           ",\"ip\":0,\"op\":60,\"w\":200,\"h\":100,\"nm\":\"main\",\"ddd\":0,\"assets\":[" + assets +
           "],\"layers\":[" + layers + "],\"markers\":[]}";
}

std::string transform(const Members& properties) {
    return join({{"o", R"({"a":0,"k":100,"ix":11})"},
                 {"r", R"({"a":0,"k":0,"ix":10})"},
                 {"p", R"({"a":0,"k":[10,20,0],"ix":2})"},
                 {"a", R"({"a":0,"k":[1,2,0],"ix":1})"},
                 {"s", R"({"a":0,"k":[100,100,100],"ix":6})"}},
                properties);
}

std::string shape_layer(int ind, const std::string& name, const Members& members) {
    Members all = {{"shapes", "[]"}};
    for (const auto& [key, value] : members) all[key] = value;
    return join(plain_layer(ind, name, "4"), all);
}

std::string nest_layer(int ind, const std::string& name, const std::string& id, const Members& members) {
    Members all = {{"refId", "\"" + id + "\""}, {"w", "80"}, {"h", "40"}};
    for (const auto& [key, value] : members) all[key] = value;
    return join(plain_layer(ind, name, "0"), all);
}

std::string nest_asset(const std::string& id, const std::string& layers) {
    return "{\"id\":\"" + id + "\",\"layers\":[" + layers + "]}";
}

std::string keyed(const std::string& keyframes) {
    return "{\"a\":1,\"k\":[" + keyframes + "],\"ix\":2}";
}

host::model::Layer& layer_of(host::model::Comp& comp, const std::string& name) {
    host::model::Layer* layer = comp.layer_named(name);
    if (layer == nullptr) throw std::runtime_error("no layer " + name);
    return *layer;
}

host::model::Layer& layer_of(const Document& document, const std::string& name) {
    return layer_of(document.main_comp(), name);
}

host::model::Comp& comp_of(const Document& document, const std::string& name) {
    for (host::model::Comp* comp : document.project().comps()) {
        if (comp->name() == name) return *comp;
    }
    throw std::runtime_error("no composition " + name);
}

std::string object_named(const std::string& text, const std::string& name) {
    const std::size_t found = text.find("\"nm\":\"" + name + "\"");
    if (found == std::string::npos) {
        ADD_FAILURE() << "nothing is named " << name << " in " << text;
        return "{}";
    }
    // Objects that contain the name, innermost last.
    std::vector<std::size_t> open;
    bool in_string = false;
    for (std::size_t at = 0; at < found; ++at) {
        if (in_string) {
            if (text[at] == '\\') ++at;
            if (text[at] == '"') in_string = false;
        } else if (text[at] == '"') {
            in_string = true;
        } else if (text[at] == '{') {
            open.push_back(at);
        } else if (text[at] == '}') {
            open.pop_back();
        }
    }
    return text.substr(open.back(), end_of_value(text, open.back()) - open.back());
}

std::string member(const std::string& object, const std::string& key) {
    std::size_t at = 1;
    while (at < object.size() && object[at] == '"') {
        const std::size_t key_end = object.find('"', at + 1);
        const std::size_t value = key_end + 2;
        const std::size_t end = end_of_value(object, value);
        if (object.substr(at + 1, key_end - at - 1) == key) return object.substr(value, end - value);
        at = end + 1;
    }
    return "";
}

std::string describe(host::model::Project& project) {
    return Description(project).text();
}

void expect_same_projects(host::model::Project& a, host::model::Project& b) {
    std::istringstream first(describe(a));
    std::istringstream second(describe(b));
    std::string line;
    std::string other;
    while (std::getline(first, line) && std::getline(second, other)) {
        if (line == other) continue;
        std::istringstream words(line);
        std::istringstream other_words(other);
        std::string word;
        std::string other_word;
        while (words >> word && other_words >> other_word) {
            if (word == other_word) continue;
            char* end = nullptr;
            const double number = std::strtod(word.c_str(), &end);
            const double other_number = std::strtod(other_word.c_str(), nullptr);
            const bool is_close =
                *end == '\0' && std::abs(number - other_number) <= 1e-4 * std::max(1.0, std::abs(number));
            ASSERT_TRUE(is_close) << word << " is not " << other_word << " in\n" << line << "\n" << other;
        }
        ASSERT_FALSE(words >> word || other_words >> other_word) << line << "\n" << other;
    }
    ASSERT_FALSE(std::getline(first, line) || std::getline(second, other)) << "one description is longer";
}

}  // namespace lottie::document::testing
