// The whole project as a document: layers of every composition, assets that come and go.
#include "write/document_writer.h"

#include <algorithm>
#include <charconv>
#include <unordered_set>

#include "document/json_text.h"
#include "document/sequence_edit.h"
#include "model/error.h"
#include "write/layer_writer.h"

namespace lottie::document {
namespace {

using host::model::Layer;

constexpr int kFirstVersionWithoutEnds = 5;

// An array of layers in the order of the stack. Layers that stand next to one another as in the file keep what is
// between them.
class CompWriter {
  public:
    CompWriter(const Store& store, const StoredComp* stored, const host::model::Comp& comp,
               const std::unordered_map<const host::model::Item*, std::string>& new_ids, bool writes_end_values)
        : store_(store),
          stored_(stored),
          stack_(comp.is_alive() ? comp.stack().to_vector() : std::vector<Layer*>()),
          numbers_(stored, stack_),
          context_{store, numbers_, new_ids, writes_end_values} {}

    bool is_untouched() const {
        if (stored_ == nullptr || stack_.size() != stored_->layers.size()) return false;
        for (std::size_t i = 0; i < stack_.size(); ++i) {
            if (stack_[i] != stored_->layers[i].layer ||
                !lottie::document::is_untouched(numbers_, *stack_[i], above(i)))
                return false;
        }
        return true;
    }

    bool became_3d() const {
        return std::any_of(stack_.begin(), stack_.end(), [](const Layer* layer) {
            const StoredLayer* base = base_of(*layer);
            return layer->is_3d() && (base == nullptr || !base->is_3d());
        });
    }

    void write(Written& out) const {
        const std::string_view text = store_.text;
        const bool had_layers = stored_ != nullptr && !stored_->layers.empty();
        const StoredLayer* first = had_layers ? &stored_->layers.front() : nullptr;
        const StoredLayer* last = had_layers ? &stored_->layers.back() : nullptr;
        const std::string between = separator();
        const StoredLayer* before = nullptr;  // the one written before, if it is the file's
        out.append("[");
        if (!stack_.empty() && had_layers) out.refer(Slice{stored_->array.begin + 1, first->text.begin}.of(text));
        for (std::size_t i = 0; i < stack_.size(); ++i) {
            Layer& layer = *stack_[i];
            const StoredLayer* own = is_from_file(layer) ? base_of(layer) : nullptr;
            const bool follows = before != nullptr && own != nullptr && own->position == before->position + 1;
            if (follows) {
                out.refer(Slice{before->text.end, own->text.begin}.of(text));
            } else if (i > 0) {
                out.append(between);
            }
            write_layer(out, context_, layer, above(i));
            before = own;
        }
        if (!stack_.empty() && had_layers) out.refer(Slice{last->text.end, stored_->array.end - 1}.of(text));
        out.append("]");
    }

  private:
    const Layer* above(std::size_t i) const { return i == 0 ? nullptr : stack_[i - 1]; }

    std::string separator() const {
        if (stored_ == nullptr) return ",";
        std::vector<Slice> units;
        for (std::size_t i = 0; i < std::min<std::size_t>(stored_->layers.size(), 2); ++i)
            units.push_back(stored_->layers[i].text);
        return SequenceEdit(store_.text, stored_->array, std::move(units)).separator();
    }

    const Store& store_;
    const StoredComp* stored_;
    std::vector<Layer*> stack_;
    Numbering numbers_;
    WriteContext context_;
};

class DocumentWriter {
  public:
    explicit DocumentWriter(const Store& store) : store_(store), text_(store.text), outline_(store.outline) {}

    Written write() {
        if (store_.is_passed_on) {
            Written all;
            all.refer(text_);
            return all;
        }
        find_new_comps();
        for (const auto& stored : store_.comps) edit_comp(*stored);
        edit_assets();
        const bool is_3d = outline_.ddd.kind == JsonKind::yes ||
                           (outline_.ddd.kind == JsonKind::number && read_number(outline_.ddd.text.of(text_)) != 0);
        if (became_3d_ && !is_3d) set_member(outline_.ddd, "ddd", "1");
        Written out;
        patch_.write(text_, {0, static_cast<std::uint32_t>(text_.size())}, out);
        return out;
    }

  private:
    bool is_present(const JsonToken& token) const { return token.kind != JsonKind::none; }

    // Behind those members that exporters write before it; width and height are in every document.
    void insert_member(const std::string& member) {
        const JsonToken& anchor = is_present(outline_.name) && outline_.name.text.begin > outline_.height.text.begin
                                      ? outline_.name
                                      : outline_.height;
        patch_.insert(anchor.text.end, "," + member);
    }

    void set_member(const JsonToken& token, const std::string& key, std::string value) {
        if (is_present(token)) {
            patch_.replace(token.text, std::move(value));
        } else {
            insert_member("\"" + key + "\":" + value);
        }
    }

    bool writes_end_values() {
        if (!end_values_) end_values_ = is_old() && has_end_values();
        return *end_values_;
    }

    bool is_old() const {
        if (outline_.version.kind != JsonKind::string) return false;
        const std::string version = decode_string(outline_.version.text.of(text_));
        int major = kFirstVersionWithoutEnds;
        std::from_chars(version.data(), version.data() + version.size(), major);
        return major < kFirstVersionWithoutEnds;
    }

    // Only keyframes have a member "e" that is an array.
    bool has_end_values() const {
        constexpr std::string_view kKey = "\"e\"";
        for (std::size_t at = text_.find(kKey); at != std::string::npos; at = text_.find(kKey, at + 1)) {
            std::size_t next = text_.find_first_not_of(" \n\r\t", at + kKey.size());
            if (next == std::string::npos || text_[next] != ':') continue;
            next = text_.find_first_not_of(" \n\r\t", next + 1);
            if (next != std::string::npos && text_[next] == '[') return true;
        }
        return false;
    }

    // Compositions of the host's making need an id that no asset has.
    void find_new_comps() {
        std::unordered_set<std::string> taken;
        for (const StoredAsset& asset : store_.assets) taken.insert(asset.id);
        int number = 0;
        for (host::model::Comp* comp : store_.project->comps()) {
            if (store_.stored(*comp) != nullptr) continue;
            std::string id;
            do {
                id = "comp_" + std::to_string(number++);
            } while (!taken.insert(id).second);
            new_ids_.emplace(comp, id);
            new_comps_.push_back(comp);
        }
    }

    void edit_comp(const StoredComp& stored) {
        const host::model::Comp& comp = *stored.comp;
        const bool is_main = stored.asset < 0;
        if (!comp.is_alive() && !is_main) return;
        edit_name(stored);
        auto writer = std::make_shared<CompWriter>(store_, &stored, comp, new_ids_, writes_end_values());
        if (writer->is_untouched()) return;
        became_3d_ = became_3d_ || writer->became_3d();
        patch_.replace_later(stored.array, [writer](Written& out) { writer->write(out); });
    }

    // What an unnamed composition is called here says nothing about the file.
    void edit_name(const StoredComp& stored) {
        if (stored.comp->name() == stored.loaded_name) return;
        const std::string name = encode_string(stored.comp->name());
        if (stored.asset < 0) {
            set_member(outline_.name, "nm", name);
            return;
        }
        const StoredAsset& asset = store_.assets[static_cast<std::size_t>(stored.asset)];
        if (is_present(asset.name)) {
            patch_.replace(asset.name.text, name);
        } else if (is_present(asset.id_token)) {
            patch_.insert(asset.id_token.text.end, ",\"nm\":" + name);
        } else {
            patch_.insert(asset.text.begin + 1, "\"nm\":" + name + ",");
        }
    }

    std::string new_asset_text(const host::model::Comp& comp) {
        const CompWriter writer(store_, nullptr, comp, new_ids_, writes_end_values());
        became_3d_ = became_3d_ || writer.became_3d();
        Written out;
        out.append("{\"id\":" + encode_string(new_ids_.at(&comp)) + ",\"nm\":" + encode_string(comp.name()) +
                   ",\"layers\":");
        writer.write(out);
        out.append("}");
        return out.text();
    }

    void edit_assets() {
        if (outline_.assets_token.kind != JsonKind::array) {
            std::string all;
            for (const host::model::Comp* comp : new_comps_) all += (all.empty() ? "" : ",") + new_asset_text(*comp);
            if (!all.empty()) set_member(outline_.assets_token, "assets", "[" + all + "]");
            return;
        }
        std::vector<Slice> units;
        for (const StoredAsset& asset : store_.assets) units.push_back(asset.text);
        SequenceEdit sequence(text_, outline_.assets_token.text, std::move(units));
        for (std::size_t i = 0; i < store_.assets.size(); ++i) {
            if (!store_.assets[i].item->is_alive()) sequence.remove(i);
        }
        for (const host::model::Comp* comp : new_comps_) sequence.append(new_asset_text(*comp));
        sequence.apply(patch_);
    }

    const Store& store_;
    const std::string& text_;
    const Outline& outline_;
    Patch patch_;
    bool became_3d_ = false;
    std::optional<bool> end_values_;
    std::vector<host::model::Comp*> new_comps_;
    std::unordered_map<const host::model::Item*, std::string> new_ids_;
};

}  // namespace

Written write_document(const Store& store) {
    try {
        return DocumentWriter(store).write();
    } catch (const host::model::Error&) {  // about the content of a layer that nobody had asked for before
        if (!store.content_fault) throw;
        throw InputError(*store.content_fault);
    }
}

}  // namespace lottie::document
