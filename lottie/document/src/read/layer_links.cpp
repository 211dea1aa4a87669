// Links between the layers of one composition: numbers, parents, mattes.
#include "read/layer_links.h"

#include <algorithm>

#include "document/json_text.h"
#include "document/json_tree.h"
#include "shared/refuse.h"

namespace lottie::document {
namespace {

class Linker {
  public:
    Linker(const ScannedComp& scanned, StoredComp& comp, const DocumentOutline& outline)
        : scanned_(scanned), comp_(comp), outline_(outline), text_(comp.store->text) {}

    void link() {
        number_layers();
        for (StoredLayer& layer : comp_.layers) find_parent(layer);
        link_parents();
        for (StoredLayer& layer : comp_.layers) link_matte(layer);
    }

  private:
    std::string who(std::size_t index) const {
        return "Layer " + std::to_string(index + 1) + " (" +
               quoted_name(decode_string(comp_.layers[index].name.of(text_))) + ")";
    }

    [[noreturn]] void refuse_layer(std::size_t index, const std::string& member, const std::string& fault) const {
        const JsonTree layer(text_, comp_.layers[index].text);
        const JsonNode* at = layer.member(&layer.root(), member);
        refuse(text_, (at == nullptr ? layer.root() : *at).text.begin,
               outline_.layer_pointer(scanned_, index) + "/" + member, who(index) + fault);
    }

    // A layer without a number is accepted: nobody can refer to it, and nobody does.
    void number_layers() {
        for (std::uint32_t i = 0; i < comp_.layers.size(); ++i) {
            if (comp_.layers[i].ind) comp_.inds.emplace_back(*comp_.layers[i].ind, i);
        }
        std::sort(comp_.inds.begin(), comp_.inds.end());
        const auto same = std::adjacent_find(comp_.inds.begin(), comp_.inds.end(),
                                             [](const auto& a, const auto& b) { return a.first == b.first; });
        if (same == comp_.inds.end()) return;
        refuse_layer((same + 1)->second, "ind",
                     " has the same \"ind\" " + std::to_string(same->first) + " as layer " +
                         std::to_string(same->second + 1) + " of its composition, so links to them are ambiguous.");
    }

    StoredLayer& linked(std::size_t index, std::int64_t ind, const std::string& member, const std::string& role) {
        const StoredLayer* found = comp_.layer_of(ind);
        if (found == nullptr) {
            const bool some_lack_numbers = comp_.inds.size() < comp_.layers.size();
            refuse_layer(index, member,
                         " names " + std::to_string(ind) + " as its " + role +
                             ", but no layer of its composition has that \"ind\"" +
                             (some_lack_numbers ? "; some layers there have none." : "."));
        }
        if (found->position == index) refuse_layer(index, member, " names itself as its " + role + ".");
        return comp_.layers[found->position];
    }

    void find_parent(StoredLayer& layer) {
        if (!layer.parent) return;
        if (comp_.layer_of(*layer.parent) == nullptr) {  // some tools delete parents and leave links, or write -1
            comp_.largest_link = std::max(comp_.largest_link, *layer.parent);
            return;
        }
        layer.parent_layer = linked(layer.position, *layer.parent, "parent", "parent").layer;
    }

    // Walks up from each layer to the first that was met before, and links that way from its top: a layer that has no
    // children yet is linked at once, however long the chain.
    void link_parents() {
        std::vector<std::uint32_t> walk_of(comp_.layers.size(), 0);  // the walk that met the layer, 0 for none
        std::vector<const StoredLayer*> path;
        for (std::uint32_t start = 0; start < comp_.layers.size(); ++start) {
            const std::uint32_t walk = start + 1;
            const StoredLayer* at = &comp_.layers[start];
            path.clear();
            while (at != nullptr && walk_of[at->position] == 0) {
                walk_of[at->position] = walk;
                path.push_back(at);
                at = at->parent_layer == nullptr ? nullptr : comp_.layer_of(*at->parent);
            }
            if (at != nullptr && walk_of[at->position] == walk) {
                refuse_layer(at->position, "parent", " is its own ancestor: following \"parent\" leads back to it.");
            }
            for (auto layer = path.rbegin(); layer != path.rend(); ++layer) {
                if ((*layer)->parent_layer != nullptr) (*layer)->layer->load_parent((*layer)->parent_layer);
            }
        }
    }

    // The matte is the layer that is named, else the one directly above; the topmost layer has none then.
    void link_matte(StoredLayer& layer) {
        const int type = scanned_.list[layer.position].matte_type;
        if (type < 1 || type > 4) return;
        StoredLayer* matte = nullptr;
        if (layer.matte) {
            matte = &linked(layer.position, *layer.matte, "tp", "matte");
        } else if (layer.position > 0) {
            matte = &comp_.layers[layer.position - 1];
        }
        if (matte == nullptr) return;
        matte->had_matte_users = true;
        layer.matte_layer = matte->layer;
        layer.matte_type = static_cast<host::model::MatteType>(type);
        layer.layer->load_matte(layer.matte_layer, layer.matte_type);
    }

    const ScannedComp& scanned_;
    StoredComp& comp_;
    const DocumentOutline& outline_;
    const std::string& text_;
};

}  // namespace

void link_layers(const ScannedComp& scanned, StoredComp& comp, const DocumentOutline& outline) {
    Linker(scanned, comp, outline).link();
}

}  // namespace lottie::document
