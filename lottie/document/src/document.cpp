// The room's front door.
#include "document/document.h"

#include <algorithm>

#include "model/error.h"
#include "read/project_builder.h"
#include "shared/store.h"
#include "write/comp_writer.h"
#include "write/document_writer.h"
#include "write/kept_texts.h"
#include "write/written_size.h"

namespace lottie::document {
namespace {

template <class Write>
auto write_guarded(const Store& store, Write write) {
    try {
        return write();
    } catch (const host::model::Error&) {  // about the content of a layer that nobody had asked for before
        if (!store.content_fault) throw;
        throw InputError(*store.content_fault);
    }
}

}  // namespace

Document::Document(std::unique_ptr<Store> store)
    : store_(std::move(store)), kept_texts_(std::make_unique<KeptTexts>()) {}
Document::Document(Document&&) noexcept = default;
Document& Document::operator=(Document&&) noexcept = default;
Document::~Document() = default;

Document Document::read(std::string text, const host::model::HostRules& rules) {
    return Document(build_store(std::move(text), rules));
}

Document Document::read(std::string text, DocumentOutline outline) {
    return Document(build_store(std::move(text), {}, std::move(outline)));
}

const std::string& Document::text() const {
    return store_->text;
}

host::model::Project& Document::project() const {
    return *store_->project;
}

host::model::Comp& Document::main_comp() const {
    return *store_->comps.front()->comp;
}

bool Document::is_passed_on() const {
    return store_->is_passed_on;
}

const std::vector<InputError>& Document::warnings() const {
    return store_->warnings;
}

const InputError* Document::content_fault() const {
    return store_->content_fault.has_value() ? &*store_->content_fault : nullptr;
}

std::string Document::write() const {
    return write_in_pieces().text();
}

OutputText Document::write_in_pieces() const {
    return write_guarded(*store_, [this] { return write_document(*store_); });
}

WrittenLayers Document::write_layers(const host::model::Comp& comp) const {
    const auto stack = comp.stack().to_vector();
    const bool shows_new_comps = std::any_of(stack.begin(), stack.end(), [](const host::model::Layer* layer) {
        return base_of(*layer) == nullptr && layer->source() != nullptr && layer->source()->comp() != nullptr;
    });
    const NewCompIds new_ids = shows_new_comps ? ids_of_new_comps(*store_) : NewCompIds();
    return write_guarded(*store_, [&] {
        const CompWriter writer(*store_, store_->stored(comp), comp, new_ids);
        if (written_size_ != nullptr) return written_size_->write_layers(comp, writer, *kept_texts_);
        std::size_t size = 0;
        return writer.write_layers(size, *kept_texts_);
    });
}

std::size_t Document::written_size() const {
    if (written_size_ == nullptr) written_size_ = std::make_unique<WrittenSize>(*store_);
    return written_size_->now();
}

std::optional<LayerFacts> Document::facts(const host::model::Layer& layer) const {
    if (!is_from_file(layer)) return std::nullopt;
    const StoredLayer& stored = *base_of(layer);
    return LayerFacts{stored.ind, stored.type};
}

std::string Document::comp_id(const host::model::Comp& comp) const {
    const StoredComp* stored = store_->stored(comp);
    return stored == nullptr || stored->asset < 0 ? "" : store_->assets[static_cast<std::size_t>(stored->asset)].id;
}

std::optional<std::string> Document::pointer(const host::model::Comp& comp) const {
    const StoredComp* stored = store_->stored(comp);
    if (stored == nullptr) return std::nullopt;
    return stored->asset < 0 ? "" : store_->outline.asset_pointer(stored->asset);
}

std::optional<std::string> Document::pointer(const host::model::Layer& layer) const {
    return is_from_file(layer) ? std::optional(base_of(layer)->pointer()) : std::nullopt;
}

}  // namespace lottie::document
