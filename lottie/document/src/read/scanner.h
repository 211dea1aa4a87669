// Receives the JSON reader's events and makes the outline.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "document/outline.h"
#include "read/scan_stream.h"
#include "shared/fields.h"

namespace lottie::document {

// Deepest nesting of values that is accepted.
inline constexpr int kMaxNesting = 1000;

class Scanner {
  public:
    Scanner(const std::string& text, const ScanStream& stream, DocumentOutline& outline)
        : text_(text), stream_(stream), outline_(outline) {}

    // The reader's events. A fault in what is said, as opposed to how, is thrown as InputError at once.
    bool Null() { return plain(JsonKind::null); }
    bool Bool(bool value) { return plain(value ? JsonKind::yes : JsonKind::no); }
    bool Int(int) { return plain(JsonKind::number); }
    bool Uint(unsigned) { return plain(JsonKind::number); }
    bool Int64(std::int64_t) { return plain(JsonKind::number); }
    bool Uint64(std::uint64_t) { return plain(JsonKind::number); }
    bool Double(double) { return plain(JsonKind::number); }
    bool RawNumber(const char*, unsigned, bool) { return plain(JsonKind::number); }
    bool String(const char* inside, unsigned length, bool);
    bool Key(const char* key, unsigned length, bool);
    bool StartObject() { return open(JsonKind::object); }
    bool StartArray() { return open(JsonKind::array); }
    bool EndObject(unsigned) { return close(); }
    bool EndArray(unsigned) { return close(); }

    // Whether the object or array that was opened last is only noted. Who knows the text need not tell what is inside,
    // but whether it may hold expressions and layers as parameters of effects.
    bool is_noting() const { return deep_ > 0; }
    void note_inside(bool has_expressions, bool has_layer_parameters);

  private:
    enum class Where : std::uint8_t { outside, document, assets, asset, layers, layer };
    // What a key inside a layer's content announces.
    enum class Announced : std::uint8_t { other, expression, type, property_value, transform_member };

    std::uint32_t here() const { return static_cast<std::uint32_t>(stream_.Tell()); }
    bool plain(JsonKind kind);
    bool open(JsonKind kind);
    bool close();
    void deep_key(std::string_view key);
    // Whether the next value inside a member is looked at; most are not.
    bool is_awaited() const { return announced_ != Announced::other || (field_ == Field::ef && deep_ == 1); }
    void deep_value(JsonKind kind, Slice text);
    void member(JsonKind kind, Slice text);
    void document_member(const JsonToken& token);
    void asset_member(const JsonToken& token);
    void begin_layers(std::uint32_t at);
    void finish_layers();
    void finish_layer();
    void check_type(Field field) const;

    ScannedComp& comp() { return outline_.comps[comp_]; }
    std::string layer_pointer() const;
    [[noreturn]] void refuse_layer(Slice at, const std::string& pointer_tail, const std::string& fault) const;

    const std::string& text_;
    const ScanStream& stream_;
    DocumentOutline& outline_;
    Where where_ = Where::outside;
    int depth_ = 0;
    int deep_ = 0;  // levels inside a member that is only noted
    std::uint32_t deep_begin_ = 0;
    JsonKind deep_kind_ = JsonKind::none;
    std::string key_;          // of the document's or the asset's member
    std::string decoded_key_;  // of a key with escapes
    Field field_ = Field::count;
    Announced announced_ = Announced::other;
    std::string_view transform_member_;
    std::size_t comp_ = 0;
    ScannedLayer layer_;
    std::array<JsonToken, kFieldCount> tokens_{};
};

}  // namespace lottie::document
