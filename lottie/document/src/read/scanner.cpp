// Receives the JSON reader's events and makes the outline.
#include "read/scanner.h"

#include <algorithm>

#include "document/json_text.h"
#include "shared/refuse.h"

namespace lottie::document {
namespace {

constexpr std::array<std::string_view, 9> kTransformMembers = {"a", "p", "s", "r", "o", "rx", "ry", "rz", "or"};

}  // namespace

bool Scanner::plain(JsonKind kind) {
    if (deep_ > 0) {
        if (is_awaited()) deep_value(kind, plain_scalar_before(text_, here()));
    } else {
        member(kind, plain_scalar_before(text_, here()));
    }
    return true;
}

bool Scanner::String(const char* inside, unsigned, bool) {
    const Slice literal{static_cast<std::uint32_t>(inside - text_.data()) - 1, here()};
    if (deep_ > 0) {
        if (is_awaited()) deep_value(JsonKind::string, literal);
    } else {
        member(JsonKind::string, literal);
    }
    return true;
}

bool Scanner::Key(const char* key, unsigned length, bool) {
    std::string_view name(key, length);
    if (name.find('\\') != std::string_view::npos) {
        decoded_key_ = decode_string({key - 1, length + 2});
        name = decoded_key_;
    }
    if (deep_ > 0) {
        if (where_ == Where::layer) deep_key(name);
    } else if (where_ == Where::layer) {
        field_ = field_of(name);
    } else {
        key_ = name;
    }
    return true;
}

bool Scanner::open(JsonKind kind) {
    const std::uint32_t begin = here() - 1;
    if (++depth_ > kMaxNesting) {
        refuse(text_, begin, "",
               "The text nests objects and arrays more than " + std::to_string(kMaxNesting) +
                   " deep; an animation needs a fraction of that.");
    }
    if (deep_ > 0) {
        if (is_awaited()) deep_value(kind, {begin, begin + 1});
        ++deep_;
        return true;
    }
    const bool is_object = kind == JsonKind::object;
    switch (where_) {
        case Where::outside:
            if (!is_object)
                refuse(text_, begin, "",
                       "The text is JSON but not an animation: it must be an object with \"layers\".");
            where_ = Where::document;
            outline_.root.begin = begin;
            return true;
        case Where::document:
            if (!is_object && key_ == "layers") {
                comp_ = 0;
                begin_layers(begin);
                return true;
            }
            if (!is_object && key_ == "assets") {
                where_ = Where::assets;
                outline_.assets_token = {JsonKind::array, {begin, begin}};
                outline_.assets.clear();
                outline_.comps.resize(1);
                return true;
            }
            break;
        case Where::assets:
            if (!is_object) member(kind, {begin, begin});
            where_ = Where::asset;
            outline_.assets.emplace_back().text.begin = begin;
            return true;
        case Where::asset:
            if (!is_object && key_ == "layers") {
                ScannedAsset& asset = outline_.assets.back();
                if (asset.comp < 0) {
                    asset.comp = static_cast<int>(outline_.comps.size());
                    outline_.comps.emplace_back().asset = static_cast<int>(outline_.assets.size()) - 1;
                }
                comp_ = static_cast<std::size_t>(asset.comp);
                begin_layers(begin);
                return true;
            }
            break;
        case Where::layers:
            if (!is_object) member(kind, {begin, begin});
            where_ = Where::layer;
            layer_ = {};
            layer_.text.begin = begin;
            tokens_.fill({});
            return true;
        case Where::layer:
            break;
    }
    deep_ = 1;
    deep_kind_ = kind;
    deep_begin_ = begin;
    announced_ = Announced::other;
    return true;
}

bool Scanner::close() {
    const std::uint32_t end = here();
    --depth_;
    if (deep_ > 0) {
        if (--deep_ == 0) member(deep_kind_, {deep_begin_, end});
        return true;
    }
    switch (where_) {
        case Where::document:
            outline_.root.end = end;
            where_ = Where::outside;
            break;
        case Where::assets:
            outline_.assets_token.text.end = end;
            where_ = Where::document;
            break;
        case Where::asset:
            outline_.assets.back().text.end = end;
            where_ = Where::assets;
            break;
        case Where::layers:
            comp().layers.end = end;
            finish_layers();
            break;
        case Where::layer:
            layer_.text.end = end;
            finish_layer();
            field_ = Field::count;
            where_ = Where::layers;
            break;
        case Where::outside:
            break;
    }
    return true;
}

// The content of layers is read when somebody asks; here it is only found out what it holds. The shape of a transform's
// properties is looked at on the way, since nearly every run reads them.
void Scanner::deep_key(std::string_view key) {
    announced_ = Announced::other;
    if (field_ == Field::ks && deep_ == 1) {
        const auto known = std::find(kTransformMembers.begin(), kTransformMembers.end(), key);
        transform_member_ = known == kTransformMembers.end() ? std::string_view() : *known;
        if (!transform_member_.empty()) announced_ = Announced::transform_member;
    } else if (key == "x") {
        announced_ = Announced::expression;
    } else if (key == "ty") {
        announced_ = Announced::type;
    } else if (key == "k" && field_ == Field::ks && deep_ == 2 && !transform_member_.empty()) {
        announced_ = Announced::property_value;
    }
}

void Scanner::deep_value(JsonKind kind, Slice text) {
    const Announced announced = announced_;
    announced_ = Announced::other;
    switch (announced) {
        case Announced::expression:
            if (kind == JsonKind::string) layer_.has_expressions = true;
            break;
        case Announced::type:
            if (kind == JsonKind::number && field_ == Field::ef && text.of(text_) == "10")
                layer_.has_layer_parameters = true;
            break;
        case Announced::transform_member:
            if (kind != JsonKind::object && kind != JsonKind::null) {
                refuse_layer(text, "/ks" + pointer_step(transform_member_),
                             "a property of its transform is not an object");
            }
            break;
        case Announced::property_value:
            if (kind == JsonKind::string || kind == JsonKind::yes || kind == JsonKind::no || kind == JsonKind::object) {
                refuse_layer(text, "/ks" + pointer_step(transform_member_) + "/k",
                             "the value of a property must be a number or an array");
            }
            break;
        case Announced::other:
            if (kind != JsonKind::object) refuse_layer(text, "/ef", "an effect is not an object");
            break;
    }
}

void Scanner::note_inside(bool has_expressions, bool has_layer_parameters) {
    if (where_ != Where::layer) return;
    layer_.has_expressions = layer_.has_expressions || has_expressions;
    layer_.has_layer_parameters = layer_.has_layer_parameters || (has_layer_parameters && field_ == Field::ef);
}

void Scanner::member(JsonKind kind, Slice text) {
    switch (where_) {
        case Where::outside:
            refuse(text_, text.begin, "",
                   "The text is JSON but not an animation: it must be an object with \"layers\".");
        case Where::assets:
            refuse(text_, text.begin, "/assets" + pointer_step(std::to_string(outline_.assets.size())),
                   "An element of \"assets\" is not an object.");
        case Where::layers:
            refuse(text_, text.begin, layer_pointer(), "An element of \"layers\" is not an object.");
        case Where::document:
            return document_member({kind, text});
        case Where::asset:
            return asset_member({kind, text});
        case Where::layer:
            if (field_ != Field::count) tokens_[index_of(field_)] = {kind, text};
            return;
    }
}

void Scanner::document_member(const JsonToken& token) {
    struct Member {
        std::string_view key;
        JsonToken DocumentOutline::*place;
    };
    static constexpr std::array<Member, 11> kMembers{{{"v", &DocumentOutline::version},
                                                      {"fr", &DocumentOutline::frame_rate},
                                                      {"ip", &DocumentOutline::in},
                                                      {"op", &DocumentOutline::out},
                                                      {"w", &DocumentOutline::width},
                                                      {"h", &DocumentOutline::height},
                                                      {"nm", &DocumentOutline::name},
                                                      {"ddd", &DocumentOutline::ddd},
                                                      {"assets", &DocumentOutline::assets_token},
                                                      {"layers", &DocumentOutline::layers_token},
                                                      {"slots", &DocumentOutline::slots}}};
    for (const Member& known : kMembers) {
        if (known.key == key_) outline_.*known.place = token;
    }
}

void Scanner::asset_member(const JsonToken& token) {
    ScannedAsset& asset = outline_.assets.back();
    if (key_ == "id") asset.id = token;
    if (key_ == "nm") asset.name = token;
    if (key_ == "p") asset.path = token;
    if (key_ == "w") asset.width = token;
    if (key_ == "h") asset.height = token;
    if (key_ == "layers" && token.kind != JsonKind::null) {
        refuse(text_, token.text.begin,
               outline_.asset_pointer(static_cast<int>(outline_.assets.size()) - 1) + "/layers",
               "The \"layers\" of an asset must be an array.");
    }
}

void Scanner::begin_layers(std::uint32_t at) {
    comp().list.clear();
    comp().layers.begin = at;
    where_ = Where::layers;
}

void Scanner::finish_layers() {
    comp().list.shrink_to_fit();
    where_ = comp_ == 0 ? Where::document : Where::asset;
    if (comp_ == 0) outline_.layers_token = {JsonKind::array, comp().layers};
}

std::string Scanner::layer_pointer() const {
    const ScannedComp& comp = outline_.comps[comp_];
    return outline_.layer_pointer(comp, comp.list.size());
}

void Scanner::refuse_layer(Slice at, const std::string& pointer_tail, const std::string& fault) const {
    const JsonToken& name = tokens_[index_of(Field::nm)];
    const std::string number = std::to_string(outline_.comps[comp_].list.size() + 1);
    const std::string called =
        name.kind == JsonKind::string ? " (" + quoted_name(decode_string(name.text.of(text_))) + ")" : "";
    refuse(text_, at.begin, layer_pointer() + pointer_tail,
           "Layer " + number + called + " cannot be read: " + fault + ".");
}

void Scanner::check_type(Field field) const {
    const JsonToken& token = tokens_[index_of(field)];
    if (token.kind == JsonKind::none || token.kind == JsonKind::null) return;
    const Expect expect = kFieldRules[index_of(field)].expect;
    const bool is_number = token.kind == JsonKind::number;
    bool fits = true;
    switch (expect) {
        case Expect::anything:
            break;
        case Expect::number:
            fits = is_number;
            break;
        case Expect::integer:
            fits = is_number && whole_number(read_number(token.text.of(text_)));
            break;
        case Expect::flag:
            fits = is_number || token.kind == JsonKind::yes || token.kind == JsonKind::no;
            break;
        case Expect::string:
            fits = token.kind == JsonKind::string;
            break;
        case Expect::object:
            fits = token.kind == JsonKind::object;
            break;
        case Expect::array:
            fits = token.kind == JsonKind::array;
            break;
    }
    if (fits) return;
    const std::string key(key_of(field));
    refuse_layer(token.text, pointer_step(key), "its \"" + key + "\" must be " + std::string(phrase(expect)));
}

void Scanner::finish_layer() {
    for (std::size_t i = 0; i < kFieldCount; ++i) check_type(static_cast<Field>(i));
    const auto token = [this](Field field) -> const JsonToken& { return tokens_[index_of(field)]; };
    const auto has = [&token](Field field) {
        return token(field).kind != JsonKind::none && token(field).kind != JsonKind::null;
    };
    const auto number = [this, &token, &has](Field field, double missing) {
        return has(field) ? read_number(token(field).text.of(text_)) : missing;
    };
    const auto optional_number = [&number, &has](Field field) {
        return has(field) ? std::optional<double>(number(field, 0)) : std::nullopt;
    };
    const auto integer = [&number, &has](Field field) {
        return has(field) ? whole_number(number(field, 0)) : std::nullopt;
    };
    const auto flag = [&number, &token, &has](Field field) {
        return has(field) && token(field).kind != JsonKind::no &&
               (token(field).kind == JsonKind::yes || number(field, 0) != 0);
    };
    const auto literal = [&token, &has](Field field) { return has(field) ? token(field).text : Slice{}; };

    if (!has(Field::ty)) refuse_layer(layer_.text, "", "it has no \"ty\", which says what kind of layer it is");
    const std::int64_t type = *integer(Field::ty);
    if (type < 0 || type > 1000) refuse_layer(token(Field::ty).text, "/ty", "its \"ty\" is not a known kind of layer");
    layer_.type = static_cast<int>(type);
    layer_.matte_type = static_cast<int>(std::clamp<std::int64_t>(integer(Field::tt).value_or(0), 0, 100));
    layer_.name = literal(Field::nm);
    layer_.ref_id = literal(Field::ref_id);
    layer_.color = literal(Field::sc);
    layer_.shapes = literal(Field::shapes);
    layer_.ind = integer(Field::ind);
    layer_.parent = integer(Field::parent);
    layer_.matte = integer(Field::tp);
    layer_.in = optional_number(Field::ip);
    layer_.out = optional_number(Field::op);
    layer_.start = number(Field::st, 0);
    layer_.stretch = number(Field::sr, 1);
    layer_.width = number(Field::w, 0);
    layer_.height = number(Field::h, 0);
    layer_.solid_width = number(Field::sw, 0);
    layer_.solid_height = number(Field::sh, 0);
    layer_.is_3d = flag(Field::ddd);
    layer_.is_matte = flag(Field::td);
    layer_.is_hidden = flag(Field::hd);
    layer_.auto_orients = flag(Field::ao);
    layer_.collapses = has(Field::ct) ? flag(Field::ct) : flag(Field::cp);
    layer_.blurs_motion = flag(Field::mb);
    layer_.remaps_time = has(Field::tm);
    if (layer_.stretch == 0) refuse_layer(token(Field::sr).text, "/sr", "its time stretch \"sr\" must not be 0");
    comp().list.push_back(layer_);
}

}  // namespace lottie::document
