// The compositions of an animation, each to be worked on alone and put back.
#include "mend/workbench.h"

#include <algorithm>
#include <map>
#include <optional>
#include <set>

#include "document/json_text.h"
#include "document/outline_reader.h"
#include "document/patch.h"
#include "document/sequence_edit.h"
#include "looks/expressions.h"

namespace lottie::mend {
namespace {

using document::DocumentOutline;
using document::JsonKind;
using document::JsonToken;
using document::ScannedAsset;
using document::ScannedComp;
using document::ScannedLayer;
using document::Slice;
using looks::Origin;

constexpr int kNestType = 0;

// Longer footage, such as a picture in the file, is there by its id and size when a composition is alone.
constexpr std::size_t kMostFootageBytes = 300;

struct Composition {
    int asset = -1;
    std::string name;
    std::optional<std::string> layers;  // the array; none as long as it is the file's
    std::size_t layer_count = 0;
    std::vector<Workbench::Nest> nests;
    std::set<std::size_t> footage;   // other assets that its layers use
    std::size_t use_count = 0;       // by nests of compositions that can be seen, once they have been found
    std::set<std::string> shown_as;  // the names that nests of it have or had
    double width = 0;                // the largest at which a nest shows it
    double height = 0;
    bool was_seen = false;
};

}  // namespace

struct Compositions {
    explicit Compositions(std::string animation)
        : text(std::move(animation)), outline(document::read_known_outline(text)) {
        for (std::size_t i = 0; i < outline.assets.size(); ++i) asset_of.emplace(decoded(outline.assets[i].id), i);
        for (const ScannedComp& comp : outline.comps) {
            if (comp.asset >= 0) comp_of.emplace(id_of_asset(comp.asset), all.size());
            all.emplace_back().asset = comp.asset;
        }
        for (std::size_t i = 0; i < all.size(); ++i) find_nests(i);
        for (std::size_t i = 0; i < all.size(); ++i) name(all[i]);
        for (const std::size_t seen : seen_now()) {
            all[seen].was_seen = true;
            for (const Workbench::Nest& nest : all[seen].nests) ++all[nest.source].use_count;
        }
        byte_count = text.size();
    }

    std::string decoded(const JsonToken& token) const {
        return token.kind == JsonKind::string ? document::decode_string(token.text.of(text)) : std::string();
    }
    std::string id_of_asset(int asset) const { return decoded(outline.assets[static_cast<std::size_t>(asset)].id); }

    // As the file has them.
    void find_nests(std::size_t composition) {
        Composition& one = all[composition];
        const std::vector<ScannedLayer>& list = outline.comps[composition].list;
        one.layer_count = list.size();
        for (std::size_t i = 0; i < list.size(); ++i) {
            const ScannedLayer& layer = list[i];
            if (layer.ref_id.empty()) continue;
            const std::string source = document::decode_string(layer.ref_id.of(text));
            const auto found = comp_of.find(source);
            if (found == comp_of.end()) {
                const auto asset = asset_of.find(source);
                if (asset != asset_of.end()) one.footage.insert(asset->second);
            } else if (layer.type == kNestType) {
                Composition& shown = all[found->second];
                one.nests.push_back({i, decoded_name(layer.name), found->second, nest_count++});
                if (shown.shown_as.empty()) shown.name = one.nests.back().name;
                shown.shown_as.insert(one.nests.back().name);
                shown.width = std::max(shown.width, layer.width);
                shown.height = std::max(shown.height, layer.height);
            }
        }
    }

    std::string decoded_name(Slice literal) const {
        return literal.empty() ? std::string() : document::decode_string(literal.of(text));
    }

    void name(Composition& one) const {
        const bool is_main = one.asset < 0;
        const JsonToken& own = is_main ? outline.name : outline.assets[static_cast<std::size_t>(one.asset)].name;
        if (own.kind == JsonKind::string) {
            one.name = decoded(own);
        } else if (is_main || one.shown_as.empty()) {
            one.name = is_main ? "main" : id_of_asset(one.asset);
        }
    }

    // Behind all that they show.
    std::vector<std::size_t> seen_now() const {
        std::vector<std::size_t> order;
        std::vector<bool> met(all.size(), false);
        std::vector<std::pair<std::size_t, std::size_t>> open = {{0, 0}};  // with the next nest to look at
        met[0] = true;
        while (!open.empty()) {
            auto& [composition, next] = open.back();
            if (next == all[composition].nests.size()) {
                order.push_back(composition);
                open.pop_back();
                continue;
            }
            const std::size_t source = all[composition].nests[next++].source;
            if (met[source]) continue;
            met[source] = true;
            open.emplace_back(source, 0);
        }
        return order;
    }

    std::string_view layers_of(std::size_t composition) const {
        const auto& own = all[composition].layers;
        return own ? std::string_view(*own) : outline.comps[composition].layers.of(text);
    }

    std::size_t asset_bytes(std::size_t composition) const {
        const ScannedAsset& asset = outline.assets[static_cast<std::size_t>(all[composition].asset)];
        return asset.text.end - asset.text.begin - outline.comps[composition].layers.of(text).size() +
               layers_of(composition).size();
    }

    void add_asset(std::string& out, std::size_t asset) const {
        const ScannedAsset& scanned = outline.assets[asset];
        if (out.back() != '[') out += ',';
        if (scanned.comp >= 0) {
            const Slice layers = outline.comps[static_cast<std::size_t>(scanned.comp)].layers;
            out += Slice{scanned.text.begin, layers.begin}.of(text);
            out += layers_of(static_cast<std::size_t>(scanned.comp));
            out += Slice{layers.end, scanned.text.end}.of(text);
        } else if (scanned.text.of(text).size() <= kMostFootageBytes) {
            out += scanned.text.of(text);
        } else {
            out += "{\"id\":" + std::string(scanned.id.text.of(text));
            add_member(out, "w", scanned.width);
            add_member(out, "h", scanned.height);
            out += ",\"p\":\"\"}";
        }
    }

    void add_member(std::string& out, std::string_view key, const JsonToken& token) const {
        if (token.kind == JsonKind::none) return;
        if (out.back() != '{') out += ',';
        out += "\"" + std::string(key) + "\":" + std::string(token.text.of(text));
    }

    // A nest of the composition less; when it was the last one, nobody sees what the composition shows any more.
    void drop_use(std::size_t composition) {
        std::vector<std::size_t> open = {composition};
        while (!open.empty()) {
            const std::size_t one = open.back();
            open.pop_back();
            if (all[one].use_count == 0 || --all[one].use_count > 0) continue;
            byte_count -= std::min(byte_count, asset_bytes(one) + 1);
            for (const Workbench::Nest& nest : all[one].nests) open.push_back(nest.source);
        }
    }

    std::string text;
    DocumentOutline outline;
    std::map<std::string, std::size_t, std::less<>> asset_of;  // by id
    std::map<std::string, std::size_t, std::less<>> comp_of;
    std::vector<Composition> all;
    std::size_t nest_count = 0;  // of the file
    std::size_t byte_count = 0;
};

Workbench::Workbench(std::string text) : compositions_(std::make_unique<Compositions>(std::move(text))) {}
Workbench::~Workbench() = default;

std::optional<std::size_t> Workbench::find(std::string_view id) const {
    if (id.empty()) return 0;
    const auto found = compositions_->comp_of.find(id);
    return found == compositions_->comp_of.end() ? std::nullopt : std::optional(found->second);
}

std::string Workbench::id(std::size_t composition) const {
    const int asset = compositions_->all[composition].asset;
    return asset < 0 ? "" : compositions_->id_of_asset(asset);
}

const std::string& Workbench::name(std::size_t composition) const {
    return compositions_->all[composition].name;
}

std::size_t Workbench::use_count(std::size_t composition) const {
    return compositions_->all[composition].use_count;
}

std::size_t Workbench::layer_count(std::size_t composition) const {
    return compositions_->all[composition].layer_count;
}

std::vector<std::string_view> Workbench::file_layers(std::size_t composition) const {
    std::vector<std::string_view> layers;
    for (const ScannedLayer& layer : compositions_->outline.comps[composition].list)
        layers.push_back(layer.text.of(compositions_->text));
    return layers;
}

std::size_t Workbench::layer_bytes(std::size_t composition) const {
    return compositions_->layers_of(composition).size();
}

const std::vector<Workbench::Nest>& Workbench::nests(std::size_t composition) const {
    return compositions_->all[composition].nests;
}

std::string Workbench::reason_to_stay(std::size_t composition, const looks::CompositionCalls& calls) const {
    if (calls.is_any_computed) return "an expression works out at run time which composition it asks for";
    if (calls.layers.empty()) return "";
    const std::vector<Composition>& all = compositions_->all;
    std::set<std::string> names = all[composition].shown_as;
    names.insert(name(composition));
    for (const std::string& name : names) {
        const auto found = calls.layers.find(name);
        if (found == calls.layers.end()) continue;
        const auto has_name = [&name](const Composition& one) {
            return one.name == name || one.shown_as.contains(name);
        };
        const bool is_main_alone = composition == 0 && std::none_of(all.begin() + 1, all.end(), has_name);
        if (is_main_alone && found->second) continue;
        return "an expression asks for composition " + document::encode_string(name) + " and its layers";
    }
    return "";
}

std::vector<std::size_t> Workbench::innermost_first() const {
    return compositions_->seen_now();
}

std::string Workbench::extract(std::size_t composition) const {
    const Compositions& c = *compositions_;
    std::set<std::size_t> whole = {composition};
    for (const Nest& nest : nests(composition)) whole.insert(nest.source);
    std::size_t layer_bytes = 0;
    for (const std::size_t one : whole) layer_bytes += c.layers_of(one).size();

    std::string out = "{";
    out.reserve(layer_bytes + layer_bytes / 8);  // and what stands around them
    c.add_member(out, "v", c.outline.version);
    c.add_member(out, "fr", c.outline.frame_rate);
    c.add_member(out, "ip", c.outline.in);
    c.add_member(out, "op", c.outline.out);
    c.add_member(out, "w", c.outline.width);
    c.add_member(out, "h", c.outline.height);
    c.add_member(out, "nm", c.outline.name);
    c.add_member(out, "ddd", c.outline.ddd);
    c.add_member(out, "slots", c.outline.slots);
    if (out.back() != '{') out += ',';
    out += "\"assets\":[";

    std::set<std::size_t> by_id;
    std::set<std::size_t> footage;
    for (const std::size_t one : whole) {
        for (const Nest& nest : nests(one)) by_id.insert(nest.source);
        footage.insert(c.all[one].footage.begin(), c.all[one].footage.end());
    }
    for (const std::size_t one : whole) {
        if (one != 0) c.add_asset(out, static_cast<std::size_t>(c.all[one].asset));
    }
    for (const std::size_t one : by_id) {
        if (whole.contains(one)) continue;
        if (out.back() != '[') out += ',';
        out += "{\"id\":" + document::encode_string(id(one)) + ",\"layers\":[]}";
    }
    for (const std::size_t asset : footage) c.add_asset(out, asset);

    out += "],\"layers\":";
    if (composition == 0) {
        out += c.layers_of(0);
    } else {
        const Composition& one = c.all[composition];
        out += "[{\"ddd\":0,\"ind\":1,\"ty\":0,\"nm\":" + document::encode_string(one.name) +
               ",\"refId\":" + document::encode_string(id(composition)) + ",\"sr\":1,\"ks\":{},\"w\":";
        document::append_number(out, one.width);
        out += ",\"h\":";
        document::append_number(out, one.height);
        out += ",\"ip\":0,\"op\":1,\"st\":0}]";
    }
    return out + "}";
}

void Workbench::put_back(std::size_t composition, const looks::StackChange& change,
                         const std::vector<std::string_view>& layers) {
    Compositions& c = *compositions_;
    Composition& one = c.all[composition];
    const ScannedComp& scanned = c.outline.comps[composition];
    std::vector<Slice> units;
    for (const ScannedLayer& layer : scanned.list) units.push_back(layer.text);
    std::string array(
        Slice{scanned.layers.begin, units.empty() ? scanned.layers.begin + 1 : units.front().begin}.of(c.text));
    const std::string separator = document::SequenceEdit(c.text, scanned.layers, units).separator();
    std::size_t size = array.size() + layers.size() * separator.size();
    for (const std::string_view layer : layers) size += layer.size();
    array.reserve(size);
    for (std::size_t i = 0; i < layers.size(); ++i) {
        if (i > 0) array += separator;
        array += layers[i];
    }
    array += Slice{units.empty() ? scanned.layers.end - 1 : units.back().end, scanned.layers.end}.of(c.text);

    std::map<std::size_t, const Nest*> nest_at;
    for (const Nest& nest : one.nests) nest_at.emplace(nest.place, &nest);
    std::vector<Nest> now;
    const auto moved = [](Nest nest, std::size_t place) {
        nest.place = place;
        return nest;
    };
    for (std::size_t place = 0; place < change.after.size(); ++place) {
        const Origin& origin = change.after[place];
        if (origin.kind == Origin::Kind::kept) {
            const auto found = nest_at.find(origin.layer);
            if (found != nest_at.end()) now.push_back(moved(*found->second, place));
        } else if (origin.kind == Origin::Kind::copied) {
            for (const Nest& nest : nests(nest_at.at(origin.nest)->source)) {
                if (nest.place == origin.layer) now.push_back(moved(nest, place));
            }
        }
    }
    for (const Nest& nest : now) ++c.all[nest.source].use_count;
    std::vector<Nest> before = std::move(one.nests);
    for (const Nest& nest : before)
        one.footage.insert(c.all[nest.source].footage.begin(), c.all[nest.source].footage.end());
    c.byte_count += array.size();
    c.byte_count -= c.layers_of(composition).size();
    one.nests = std::move(now);
    one.layers = std::move(array);
    one.layer_count = layers.size();
    for (const Nest& nest : before) c.drop_use(nest.source);
}

std::size_t Workbench::byte_count() const {
    return compositions_->byte_count;
}

std::string Workbench::text(bool keep_unused) const {
    const Compositions& c = *compositions_;
    const auto order = c.seen_now();
    const std::set<std::size_t> seen(order.begin(), order.end());
    std::vector<Slice> units;
    for (const ScannedAsset& asset : c.outline.assets) units.push_back(asset.text);
    document::Patch patch;
    document::SequenceEdit assets(c.text, c.outline.assets_token.text, units);
    for (std::size_t i = 0; i < c.all.size(); ++i) {
        const Composition& one = c.all[i];
        if (one.was_seen && !seen.contains(i) && !keep_unused) {
            assets.remove(static_cast<std::size_t>(one.asset));
        } else if (one.layers) {
            patch.replace(c.outline.comps[i].layers, *one.layers);
        }
    }
    if (!units.empty()) assets.apply(patch);
    document::OutputText out;
    patch.write(c.text, {0, static_cast<std::uint32_t>(c.text.size())}, out);
    return out.text();
}

}  // namespace lottie::mend
