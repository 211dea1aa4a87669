// Effects.
#include "model/effect.h"

#include "expressions/expression_index.h"
#include "layers/layer_parameter_index.h"
#include "model/error.h"
#include "model/layer.h"
#include "model/project.h"

namespace host::model {

Effect::Effect(Layer& owner, std::shared_ptr<const EffectKind> kind, std::string name)
    : owner_(&owner), kind_(std::move(kind)), name_(std::move(name)) {
    parameters_.reserve(kind_->parameters.size());
    for (const EffectParameter& parameter : kind_->parameters) {
        auto data = owner.project().still_data(parameter.default_value);
        auto stream = std::make_unique<Stream>(owner, parameter.type, parameter.name, std::move(data));
        stream->set_can_vary(parameter.can_vary && parameter.type != StreamType::no_data);
        parameters_.push_back(std::move(stream));
    }
}

Effect::Effect(Layer& new_owner, const Effect& original)
    : owner_(&new_owner),
      kind_(original.kind_),
      name_(original.name_),
      flags_(original.flags_),
      format_data_(original.format_data_) {
    parameters_.reserve(original.parameters_.size());
    for (const auto& stream : original.parameters_) parameters_.push_back(std::make_unique<Stream>(new_owner, *stream));
}

void Effect::set_flags(std::uint32_t mask, std::uint32_t flags) {
    owner_->require_editable();
    const std::uint32_t next = (flags_ & ~mask) | (flags & mask);
    if (next == flags_) return;
    const auto set = [this](std::uint32_t value) {
        owner_->note_change();
        flags_ = value;
    };
    owner_->project().undo().note([set, old = flags_] { set(old); });
    set(next);
}

Stream& Effect::parameter(std::size_t index) const {
    if (index >= parameters_.size()) {
        throw Error(ErrorKind::bad_argument, "The effect \"" + name_ + "\" has no parameter of that index.");
    }
    return *parameters_[index];
}

void Effect::load_parameter(std::size_t index, std::unique_ptr<Stream> stream) {
    Stream& old = parameter(index);
    if (attached_) owner_->detach(old);
    stream->mark_loaded();
    parameters_[index] = std::move(stream);
    if (attached_) owner_->attach(*parameters_[index]);
}

}  // namespace host::model
