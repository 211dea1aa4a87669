// The whole project as a document: layers of every composition, assets that come and go.
#include "write/document_writer.h"

#include <memory>

#include "document/json_text.h"
#include "document/sequence_edit.h"
#include "write/comp_writer.h"

namespace lottie::document {
namespace {

class DocumentWriter {
  public:
    explicit DocumentWriter(const Store& store) : store_(store), text_(store.text), outline_(store.outline) {}

    OutputText write() {
        if (store_.is_passed_on) {
            OutputText all;
            all.refer(text_);
            return all;
        }
        new_ids_ = ids_of_new_comps(store_);
        for (host::model::Comp* comp : store_.project->comps()) {
            if (new_ids_.contains(comp)) new_comps_.push_back(comp);
        }
        for (const auto& stored : store_.comps) edit_comp(*stored);
        edit_assets();
        const bool is_3d = outline_.ddd.kind == JsonKind::yes ||
                           (outline_.ddd.kind == JsonKind::number && read_number(outline_.ddd.text.of(text_)) != 0);
        if (became_3d_ && !is_3d) set_member(outline_.ddd, "ddd", "1");
        OutputText out;
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

    void edit_comp(const StoredComp& stored) {
        const host::model::Comp& comp = *stored.comp;
        const bool is_main = stored.asset < 0;
        if (!comp.is_alive() && !is_main) return;
        edit_name(stored);
        auto writer = std::make_shared<CompWriter>(store_, &stored, comp, new_ids_);
        if (writer->is_untouched()) return;
        became_3d_ = became_3d_ || writer->became_3d();
        patch_.replace_later(stored.array, [writer](OutputText& out) { writer->write(out); });
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
        const CompWriter writer(store_, nullptr, comp, new_ids_);
        became_3d_ = became_3d_ || writer.became_3d();
        OutputText out;
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
    const DocumentOutline& outline_;
    Patch patch_;
    bool became_3d_ = false;
    std::vector<host::model::Comp*> new_comps_;
    NewCompIds new_ids_;
};

}  // namespace

OutputText write_document(const Store& store) {
    return DocumentWriter(store).write();
}

}  // namespace lottie::document
