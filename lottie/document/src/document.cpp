// The room's front door.
#include "document/document.h"

#include "read/project_builder.h"
#include "shared/store.h"
#include "write/document_writer.h"

namespace lottie::document {

Document::Document(std::unique_ptr<Store> store) : store_(std::move(store)) {}
Document::Document(Document&&) noexcept = default;
Document& Document::operator=(Document&&) noexcept = default;
Document::~Document() = default;

Document Document::read(std::string text, const host::model::HostRules& rules) {
    return Document(build_store(std::move(text), rules));
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
    return write_document(*store_).text();
}

Written Document::write_in_pieces() const {
    return write_document(*store_);
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
