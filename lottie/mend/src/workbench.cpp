// The compositions of an animation, each to be worked on alone and put back.
#include "mend/workbench.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <optional>
#include <set>

#include "document/json_text.h"
#include "document/outline_reader.h"
#include "document/patch.h"
#include "document/sequence_edit.h"

namespace lottie::mend {
namespace {

using document::JsonKind;
using document::JsonToken;
using document::Outline;
using document::ScannedAsset;
using document::ScannedComp;
using document::ScannedLayer;
using document::Slice;

constexpr int kNestType = 0;

struct Composition {
    int asset = -1;
    std::optional<std::string> layers;  // the array; none as long as it is the file's
    std::vector<Workbench::Nest> nests;
    std::vector<std::string> sources;  // ids of all assets that its layers use
    bool is_3d = false;                // became so here
    bool was_seen = false;
};

}  // namespace

struct Compositions {
    explicit Compositions(std::string animation) : text(std::move(animation)), outline(document::read_outline(text)) {
        for (std::size_t i = 0; i < outline.assets.size(); ++i) asset_of.emplace(decoded(outline.assets[i].id), i);
        for (const ScannedComp& comp : outline.comps) {
            if (comp.asset >= 0) comp_of.emplace(id_of_asset(comp.asset), all.size());
            all.emplace_back().asset = comp.asset;
        }
        for (std::size_t i = 0; i < all.size(); ++i) take_layers(all[i], outline.comps[i], text);
        for (const std::size_t seen : seen_now()) all[seen].was_seen = true;
        find_calls();
    }

    // Expressions that call comp(). Text that only looks like one does no harm but to keep a nest.
    void find_calls() {
        constexpr std::string_view kCall = "comp(";
        for (std::size_t at = text.find(kCall); at != std::string::npos; at = text.find(kCall, at + 1)) {
            const auto before = static_cast<unsigned char>(at == 0 ? ' ' : text[at - 1]);
            const bool is_escape = before == 'n' && at > 1 && text[at - 2] == '\\';  // a new line, then the call
            if ((std::isalnum(before) != 0 && !is_escape) || before == '_' || before == '$') continue;
            std::size_t begin = text.find_first_not_of(' ', at + kCall.size());
            if (begin != std::string::npos && text[begin] == '\\') ++begin;
            const char quote = begin < text.size() ? text[begin] : ' ';
            const std::size_t end = quote == '\'' || quote == '"' ? text.find(quote, begin + 1) : std::string::npos;
            if (end == std::string::npos) {
                calls_any = true;
                continue;
            }
            const bool is_escaped = quote == '"' && text[end - 1] == '\\';
            const std::size_t length = end - begin - 1 - (is_escaped ? 1 : 0);
            called.insert(document::decode_string('"' + text.substr(begin + 1, length) + '"'));
        }
    }

    std::string decoded(const JsonToken& token) const {
        return token.kind == JsonKind::string ? document::decode_string(token.text.of(text)) : std::string();
    }
    std::string id_of_asset(int asset) const { return decoded(outline.assets[static_cast<std::size_t>(asset)].id); }

    void take_layers(Composition& composition, const ScannedComp& comp, const std::string& from) {
        composition.nests.clear();
        composition.sources.clear();
        for (std::size_t i = 0; i < comp.list.size(); ++i) {
            const ScannedLayer& layer = comp.list[i];
            if (layer.ref_id.empty()) continue;
            const std::string source = document::decode_string(layer.ref_id.of(from));
            composition.sources.push_back(source);
            const auto found = comp_of.find(source);
            if (layer.type != kNestType || found == comp_of.end()) continue;
            const std::string name = layer.name.empty() ? "" : document::decode_string(layer.name.of(from));
            composition.nests.push_back({i, name, found->second});
        }
    }

    // Behind all that they show.
    std::vector<std::size_t> seen_now() const {
        std::vector<std::size_t> order;
        std::set<std::size_t> met = {0};
        std::vector<std::pair<std::size_t, std::size_t>> open = {{0, 0}};  // with the next nest to look at
        while (!open.empty()) {
            auto& [composition, next] = open.back();
            if (next == all[composition].nests.size()) {
                order.push_back(composition);
                open.pop_back();
                continue;
            }
            const std::size_t source = all[composition].nests[next++].source;
            if (met.insert(source).second) open.emplace_back(source, 0);
        }
        return order;
    }

    std::string layers_of(std::size_t composition) const {
        return all[composition].layers ? *all[composition].layers
                                       : std::string(outline.comps[composition].layers.of(text));
    }

    std::string asset_text(std::size_t asset) const {
        const ScannedAsset& scanned = outline.assets[asset];
        if (scanned.comp < 0) return std::string(scanned.text.of(text));
        const Slice layers = outline.comps[static_cast<std::size_t>(scanned.comp)].layers;
        return std::string(Slice{scanned.text.begin, layers.begin}.of(text)) +
               layers_of(static_cast<std::size_t>(scanned.comp)) +
               std::string(Slice{layers.end, scanned.text.end}.of(text));
    }

    // Every asset that the composition shows, at any depth; itself too.
    std::set<std::size_t> assets_shown_by(std::size_t composition) const {
        std::set<std::size_t> assets;
        std::set<std::size_t> met = {composition};
        std::vector<std::size_t> open = {composition};
        while (!open.empty()) {
            const Composition& one = all[open.back()];
            open.pop_back();
            if (one.asset >= 0) assets.insert(static_cast<std::size_t>(one.asset));
            for (const std::string& id : one.sources) {
                const auto asset = asset_of.find(id);
                if (asset == asset_of.end()) continue;
                const auto comp = comp_of.find(id);
                if (comp == comp_of.end()) {
                    assets.insert(asset->second);
                } else if (met.insert(comp->second).second) {
                    open.push_back(comp->second);
                }
            }
        }
        return assets;
    }

    // The largest size at which any nest shows the composition, as members of a layer.
    std::string size_of(std::size_t composition) const {
        double width = 0;
        double height = 0;
        for (const ScannedComp& comp : outline.comps) {
            for (const ScannedLayer& layer : comp.list) {
                if (layer.type != kNestType || layer.ref_id.empty() ||
                    document::decode_string(layer.ref_id.of(text)) != id_of_asset(all[composition].asset)) {
                    continue;
                }
                width = std::max(width, layer.width);
                height = std::max(height, layer.height);
            }
        }
        std::string members = "\"w\":";
        document::append_number(members, width);
        members += ",\"h\":";
        document::append_number(members, height);
        return members;
    }

    std::string text;
    Outline outline;
    std::map<std::string, std::size_t, std::less<>> asset_of;  // by id
    std::map<std::string, std::size_t, std::less<>> comp_of;
    std::vector<Composition> all;
    std::set<std::string> called;  // names that expressions give to comp()
    bool calls_any = false;        // one that is worked out at run time
};

Workbench::Workbench(std::string text) : compositions_(std::make_unique<Compositions>(std::move(text))) {}
Workbench::~Workbench() = default;

std::string Workbench::id(std::size_t composition) const {
    const int asset = compositions_->all[composition].asset;
    return asset < 0 ? "" : compositions_->id_of_asset(asset);
}

std::string Workbench::name(std::size_t composition) const {
    const Compositions& c = *compositions_;
    const int asset = c.all[composition].asset;
    const JsonToken& own = asset < 0 ? c.outline.name : c.outline.assets[static_cast<std::size_t>(asset)].name;
    if (own.kind == JsonKind::string) return c.decoded(own);
    for (const Composition& other : c.all) {
        for (const Nest& nest : other.nests) {
            if (nest.source == composition) return nest.name;
        }
    }
    return asset < 0 ? "main" : id(composition);
}

std::size_t Workbench::use_count(std::size_t composition) const {
    std::size_t count = 0;
    for (const Composition& other : compositions_->all) {
        count += static_cast<std::size_t>(std::count_if(other.nests.begin(), other.nests.end(),
                                                        [&](const Nest& nest) { return nest.source == composition; }));
    }
    return count;
}

const std::vector<Workbench::Nest>& Workbench::nests(std::size_t composition) const {
    return compositions_->all[composition].nests;
}

std::string Workbench::asked_for(std::size_t composition) const {
    const Compositions& c = *compositions_;
    if (c.calls_any) return "an expression works out at run time which composition it asks for";
    const auto sentence = [](const std::string& name) {
        return "an expression asks for composition " + document::encode_string(name) + " and its layers";
    };
    if (c.called.empty()) return "";
    if (c.called.contains(name(composition))) return sentence(name(composition));
    for (const Composition& other : c.all) {
        for (const Nest& nest : other.nests) {
            if (nest.source == composition && c.called.contains(nest.name)) return sentence(nest.name);
        }
    }
    return "";
}

std::vector<std::size_t> Workbench::innermost_first() const {
    return compositions_->seen_now();
}

std::string Workbench::alone(std::size_t composition) const {
    const Compositions& c = *compositions_;
    std::string out = "{";
    const auto add = [&](std::string_view key, const JsonToken& token) {
        if (token.kind == JsonKind::none) return;
        out += "\"" + std::string(key) + "\":" + std::string(token.text.of(c.text)) + ",";
    };
    add("v", c.outline.version);
    add("fr", c.outline.frame_rate);
    add("ip", c.outline.in);
    add("op", c.outline.out);
    add("w", c.outline.width);
    add("h", c.outline.height);
    add("nm", c.outline.name);
    add("ddd", c.outline.ddd);
    add("slots", c.outline.slots);
    out += "\"assets\":[";
    for (const std::size_t asset : c.assets_shown_by(composition)) {
        if (out.back() != '[') out += ",";
        out += c.asset_text(asset);
    }
    out += "],\"layers\":";
    if (composition == 0) {
        out += c.layers_of(0);
    } else {
        out += "[{\"ddd\":0,\"ind\":1,\"ty\":0,\"nm\":" + document::encode_string(name(composition)) +
               ",\"refId\":" + document::encode_string(id(composition)) + ",\"sr\":1,\"ks\":{}," +
               c.size_of(composition) + ",\"ip\":0,\"op\":1,\"st\":0}]";
    }
    return out + "}";
}

void Workbench::put_back(std::size_t composition, const std::string& alone) {
    Compositions& c = *compositions_;
    const Outline outline = document::read_outline(alone);
    for (const ScannedComp& comp : outline.comps) {
        const std::string comp_id =
            comp.asset < 0
                ? ""
                : document::decode_string(outline.assets[static_cast<std::size_t>(comp.asset)].id.text.of(alone));
        if (comp_id != id(composition)) continue;
        Composition& one = c.all[composition];
        one.layers = std::string(comp.layers.of(alone));
        c.take_layers(one, comp, alone);
        return;
    }
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
    document::Written out;
    patch.write(c.text, {0, static_cast<std::uint32_t>(c.text.size())}, out);
    return out.text();
}

}  // namespace lottie::mend
