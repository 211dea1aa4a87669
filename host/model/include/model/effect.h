// Effects on layers, and the kinds of effects installed.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "model/format_data.h"
#include "model/stream.h"

namespace host::model {

struct EffectParameter {
    std::string name;
    StreamType type = StreamType::no_data;
    bool can_vary = true;
    Value default_value;
};

// An installed effect: what a fresh instance looks like. Parameter 0 is the effect's input layer.
struct EffectKind {
    int key = 0;  // positive; the same for all instances
    std::string match_name;
    std::string display_name;
    std::vector<EffectParameter> parameters;
    std::shared_ptr<const FormatData> format_data;  // how a file stores an instance; may be null
};

enum EffectFlag : std::uint32_t {
    kEffectActive = 0x1,
    kEffectAudioOnly = 0x2,
    kEffectAudioToo = 0x4,
    kEffectMissing = 0x8
};

class Effect {
  public:
    Effect(Layer& owner, std::shared_ptr<const EffectKind> kind, std::string name);
    Effect(Layer& new_owner, const Effect& original);  // shares stream data and format data
    Effect(const Effect&) = delete;
    Effect& operator=(const Effect&) = delete;

    Layer& owner() const { return *owner_; }
    bool is_applied() const { return attached_; }  // false after its application was undone
    const EffectKind& kind() const { return *kind_; }
    const std::string& name() const { return name_; }
    std::uint32_t flags() const { return flags_; }
    void set_flags(std::uint32_t mask, std::uint32_t flags);  // only masked bits change; undoable
    void load_flags(std::uint32_t flags) { flags_ = flags; }

    std::size_t parameter_count() const { return parameters_.size(); }
    Stream& parameter(std::size_t index) const;  // throws bad_argument
    void load_parameter(std::size_t index, std::unique_ptr<Stream> stream);

    // What the file stores for this instance; null for one that the host applied.
    const std::shared_ptr<const FormatData>& format_data() const { return format_data_; }
    void set_format_data(std::shared_ptr<const FormatData> data) { format_data_ = std::move(data); }

  private:
    friend class Layer;

    Layer* owner_;
    bool attached_ = false;  // in its layer's list
    std::shared_ptr<const EffectKind> kind_;
    std::string name_;
    std::uint32_t flags_ = kEffectActive;
    std::vector<std::unique_ptr<Stream>> parameters_;
    std::shared_ptr<const FormatData> format_data_;
};

}  // namespace host::model
