// Compositions: copying layers.
#include <algorithm>

#include "model/comp.h"
#include "model/error.h"
#include "model/project.h"

namespace host::model {

Layer* Comp::copy_of(const Layer& original) const {
    const auto found = newest_copy_.find(original.id());
    return found != newest_copy_.end() && found->second->is_alive() ? found->second : nullptr;
}

// The name with the next free number: "Name 2", and "Name 3" for a copy of that.
std::string Comp::numbered_name(const std::string& name) const {
    std::size_t digits = name.size();
    while (digits > 0 && name[digits - 1] >= '0' && name[digits - 1] <= '9') --digits;
    const bool has_number = digits < name.size() && digits > 0 && name[digits - 1] == ' ' && name.size() - digits < 9;
    const std::string base = has_number ? name.substr(0, digits) : name + " ";
    int& last = last_number_[base];
    last = std::max(last, has_number ? std::stoi(name.substr(digits)) : 1);
    do {
        ++last;
    } while (layer_named(base + std::to_string(last)) != nullptr);
    return base + std::to_string(last);
}

void Comp::drop_foreign_links(Layer& copy, const Layer& original) const {
    const bool keep = project().rules().copies_keep_links_to_present_partners;
    const auto partner = [&](Layer* layer) { return keep && layer != nullptr ? copy_of(*layer) : nullptr; };
    copy.state_.parent = partner(original.parent());
    copy.state_.matte = copy.takes_matte_by_position() ? nullptr : partner(original.matte());
    if (copy.state_.matte == nullptr && !copy.takes_matte_by_position()) copy.state_.matte_type = MatteType::none;

    if (copy.awaits_loading()) {
        if (!copy.content_->has_layer_parameters()) return;
        copy.ensure_loaded();
    }
    const auto partner_id = [&](LayerId id) {
        Layer* here = partner(project().layer_by_id(id));
        return here != nullptr ? here->id() : 0;
    };
    copy.map_layer_parameters(partner_id);
}

Layer& Comp::copy_layer_here(Layer& original) {
    require_alive();
    original.require_alive();
    Item* source = original.source();
    if (source != nullptr && source->comp() != nullptr && source->comp()->contains(*this)) {
        throw Error(ErrorKind::bad_argument, "A composition cannot contain itself.");
    }
    const UndoScope scope(project().undo());
    Layer& copy = make_layer(original.kind(), source);
    copy.stretch_ = original.stretch_;
    copy.copied_from_ = original.id();
    copy.state_ = original.state_;
    copy.copy_content(original);
    if (original.comp_ != this) drop_foreign_links(copy, original);
    if (project().rules().copies_get_numbered_names && !copy.own_name().empty() &&
        layer_named(copy.own_name()) != nullptr) {
        copy.state_.name = numbered_name(copy.own_name());
    }
    const Layer* topmost_selected = stack_.first_marked();
    add_undoably(copy, topmost_selected != nullptr ? topmost_selected->index() : 0);
    newest_copy_[original.id()] = &copy;
    return copy;
}

}  // namespace host::model
