// Texts of a .lottie archive that name parts of its animations: state machines name layers, themes fill slots.
#include "companions.h"

#include <rapidjson/reader.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <functional>
#include <string_view>

namespace lottie::packed {
namespace {

constexpr std::size_t kDeepest = 200;
constexpr std::string_view kLayer = "layerName";

// Hands on what it reads, each text by way of `text`, which gets the member that it stands under.
class Passage : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Passage> {
  public:
    using Change = std::function<std::string(std::string_view member, std::string text)>;
    explicit Passage(Change change) : change_(std::move(change)) {}

    bool Null() { return writer_.Null(); }
    bool Bool(bool value) { return writer_.Bool(value); }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        return writer_.RawValue(text, length, rapidjson::kNumberType);
    }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        const std::string changed = change_(member_, std::string(text, length));
        return writer_.String(changed.data(), static_cast<rapidjson::SizeType>(changed.size()));
    }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        member_.assign(text, length);
        return writer_.Key(text, length);
    }
    bool StartObject() { return ++depth_ <= kDeepest && writer_.StartObject(); }
    bool EndObject(rapidjson::SizeType) {
        member_.clear();
        --depth_;
        return writer_.EndObject();
    }
    bool StartArray() {
        member_.clear();
        return ++depth_ <= kDeepest && writer_.StartArray();
    }
    bool EndArray(rapidjson::SizeType) {
        --depth_;
        return writer_.EndArray();
    }

    std::string written() const { return {buffer_.GetString(), buffer_.GetSize()}; }

  private:
    Change change_;
    std::string member_;
    std::size_t depth_ = 0;
    rapidjson::StringBuffer buffer_;
    rapidjson::Writer<rapidjson::StringBuffer> writer_{buffer_};
};

// The text that comes out; empty if it is no JSON.
std::string pass(const std::string& text, Passage::Change change) {
    std::string copy = text;
    rapidjson::InsituStringStream stream(copy.data());
    rapidjson::Reader reader;
    Passage passage(std::move(change));
    constexpr unsigned kFlags =
        rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseValidateEncodingFlag;
    return reader.Parse<kFlags>(stream, passage).IsError() ? std::string() : passage.written();
}

std::set<std::string> texts_under(std::string_view member, const std::string& json) {
    std::set<std::string> texts;
    const bool is_json = !pass(json, [&](std::string_view at, std::string text) {
                              if (at == member) texts.insert(text);
                              return text;
                          }).empty();
    return is_json ? texts : std::set<std::string>();
}

}  // namespace

std::set<std::string> layers_named_in(const std::string& state_machine) {
    return texts_under(kLayer, state_machine);
}

std::set<std::string> slots_filled_by(const std::string& theme) {
    return texts_under("id", theme);
}

std::string with_layers_renamed(const std::string& state_machine, const std::map<std::string, std::string>& names) {
    return pass(state_machine, [&](std::string_view at, std::string text) {
        const auto renamed = at == kLayer ? names.find(text) : names.end();
        return renamed == names.end() ? text : renamed->second;
    });
}

}  // namespace lottie::packed
