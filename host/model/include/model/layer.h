// A layer of a composition: identity, name, switches, parent, matte, timing, streams, effects.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "model/effect.h"
#include "model/format_data.h"
#include "model/layer_stack.h"
#include "model/stream.h"
#include "model/time.h"

namespace host::model {

class Comp;
class Item;
class Project;

using LayerId = std::int32_t;  // unique in the project, never reused

enum class LayerKind { av = 0, light = 1, camera = 2, text = 3, vector = 4 };

// Bits as the C interface numbers them.
enum LayerFlag : std::uint32_t {
    kVideoActive = 0x1,
    kAudioActive = 0x2,
    kEffectsActive = 0x4,
    kMotionBlur = 0x8,
    kFrameBlending = 0x10,
    kLocked = 0x20,
    kShy = 0x40,
    kCollapse = 0x80,
    kAutoOrient = 0x100,
    kAdjustment = 0x200,
    kTimeRemap = 0x400,
    kIs3D = 0x800,
    kLookAtCamera = 0x1000,
    kLookAtPoi = 0x2000,
    kSolo = 0x4000,
    kMarkersLocked = 0x8000,
    kIsNull = 0x10000,
};

enum class MatteType { none = 0, alpha = 1, alpha_inverted = 2, luma = 3, luma_inverted = 4 };

// keep_place compensates, so that nothing moves at the current time.
enum class Parenting { keep_local_values, keep_place };

// Numbers of layer streams as the C interface has them.
enum LayerStreamNumber : int {
    kAnchorPoint = 0,  // cameras and lights: the point of interest
    kPosition = 1,
    kScale = 2,
    kRotation = 3,
    kOpacity = 4,
    kAudioLevels = 5,
    kMarker = 6,
    kTimeRemapStream = 7,
    kRotateX = 8,
    kRotateY = 9,
    kOrientation = 10,
    kZoom = 11,  // cameras: up to 15, and 32 to 39; lights: 16 to 21, and 40 to 42
    kCastsShadows = 28,
    kSourceText = 31,
};
inline constexpr int kLayerStreamCount = 56;  // numbers from here on are not legal for any layer

// Lives as long as its project; is_alive() tells whether it is in its composition. Every setter is undoable unless its
// name begins with load_; those are for readers that build a project.
class Layer {
  public:
    Layer(Comp& comp, LayerId id, LayerKind kind, Item* source);
    ~Layer();
    Layer(const Layer&) = delete;
    Layer& operator=(const Layer&) = delete;

    // Identity
    LayerId id() const { return id_; }
    LayerKind kind() const { return kind_; }
    Comp& comp() const { return *comp_; }
    Project& project() const;
    bool is_alive() const { return alive_; }
    int index() const;  // 0 = top of the stack; logarithmic; throws bad_argument when dead
    Item* source() const { return source_; }

    // Names are meant to be UTF-8 but may be any bytes
    const std::string& own_name() const { return state_.name; }  // empty if never set
    const std::string& source_name() const;                      // empty without a source
    const std::string& display_name() const;                     // own name, else source name
    void rename(std::string name);                               // also rewrites the expressions that name this layer

    // Switches
    std::uint32_t flags() const { return state_.flags; }
    bool has_flag(LayerFlag flag) const { return (state_.flags & flag) != 0; }
    void set_flag(LayerFlag flag, bool on);  // kIs3D has no effect on cameras and lights
    bool is_3d() const;                      // cameras and lights always

    // Parents
    Layer* parent() const { return state_.parent; }
    const std::vector<Layer*>& children() const { return extras().children; }  // living; order unspecified
    void set_parent(Layer* parent,
                    Parenting parenting);  // throws bad_argument for itself, a descendant, another composition

    // Track matte. If HostRules say that mattes go by position, a layer loaded with its matte directly above takes
    // whichever layer ends up there, and so do its copies.
    Layer* matte() const { return state_.matte; }
    MatteType matte_type() const { return state_.matte_type; }
    const std::vector<Layer*>& matte_users() const { return extras().matte_users; }  // living; order unspecified

    // Timing. Composition time = offset + stretch x layer time.
    double stretch() const { return stretch_; }
    Time offset() const { return state_.offset; }
    Time in_point() const { return state_.in_point; }  // composition time
    Time duration() const { return state_.duration; }  // composition time
    Time to_layer_time(Time comp_time) const;
    Time to_comp_time(Time layer_time) const;
    void set_offset(Time offset);  // moves the whole layer, with in- and out-point and keyframes
    void set_in_point_and_duration(Time in_point, Time duration);  // trims, composition time; clamps as HostRules say

    // Streams, loaded on demand
    static bool is_stream_number(int number) { return number >= 0 && number < kLayerStreamCount; }
    bool is_stream_legal(int number) const;
    // Streams that do not apply are hidden, with their default value. Throws bad_argument for unknown numbers.
    Stream& stream(int number);
    // The same as stream(number).value_at(t), without creating the stream.
    Value stream_value(int number, Time t);
    // All streams that can have an expression, including those of effects and the file's own.
    std::vector<Stream*> expression_streams();

    // Effects, 0 = top, loaded on demand
    std::size_t effect_count();
    Effect& effect(std::size_t index);   // throws bad_argument
    Effect& apply_effect(int kind_key);  // appended; throws bad_argument for unknown kinds, cameras and lights

    // Whole-layer changes
    void remove();            // first detaches children and matte users, as HostRules say
    void move_to(int index);  // to this index; -1 = the bottom; clamped to the end

    // What the file stores; shared by copies, null for layers that the host created.
    const std::shared_ptr<const LayerContent>& content() const { return content_; }
    bool is_content_loaded() const { return content_loaded_; }
    // The layer that this one was copied from; 0 if none. Decides its number in the file.
    LayerId copied_from() const { return copied_from_; }

    // For readers: values from a file, without undo.
    void load_name(std::string name);
    void load_flags(std::uint32_t flags) { state_.flags = flags; }
    void load_timing(Time offset, Time in_point, Time duration, double stretch);  // a stretch of 0 counts as 1
    void load_parent(Layer* parent);                                              // throws like set_parent
    void load_matte(Layer* matte, MatteType type);
    void set_content(std::shared_ptr<const LayerContent> content);
    // For LayerContent::load, or a reader that loads everything at once.
    void load_stream(int number, std::shared_ptr<const StreamData> data, bool separated = false);
    void load_effect(std::unique_ptr<Effect> effect);
    // A stream inside something that the model does not represent (shapes, masks, text); only its expression matters.
    // The file format finds it again by its name.
    Stream& load_other_stream(std::string name, std::shared_ptr<const StreamData> data);
    const std::vector<std::unique_ptr<Stream>>& other_streams() const { return extras().other_streams; }
    // For writers: the stream if it was requested or has an expression; else null, and it is as loaded or was never
    // set.
    const Stream* existing_stream(int number) const;
    // Whether its name, switches, parent and timing may be others than those loaded. For writers.
    bool is_state_touched() const { return touched_in_step_ != 0; }
    // Grows with every change of what is its own, also with one that is undone. For writers.
    std::uint64_t change_count() const { return change_count_; }
    // Whether any of those is not as it was loaded. For writers.
    bool has_changed_streams() const;
    const std::vector<std::unique_ptr<Effect>>& loaded_effects() const { return extras().effects; }

  private:
    friend class Comp;
    friend class Effect;
    friend class ExpressionIndex;
    friend class Item;
    friend class Project;
    friend class Stream;

    struct State {
        std::string name;
        std::uint32_t flags = kVideoActive | kAudioActive | kEffectsActive;
        MatteType matte_type = MatteType::none;
        bool is_matte_above = false;  // see HostRules::mattes_by_position
        Layer* parent = nullptr;
        Layer* matte = nullptr;
        Time offset;
        Time in_point;
        Time duration;
    };
    // Most streams of most layers are never requested.
    struct NumberedStream {
        int number = 0;
        bool separated = false;
        std::shared_ptr<const StreamData> loaded = nullptr;  // until the stream is created
        std::unique_ptr<Stream> stream = nullptr;

        const StreamData& data() const { return stream != nullptr ? stream->data() : *loaded; }
    };
    // Finds the smallest free number without walking past all that are taken.
    struct EffectNames {
        std::size_t count = 0;  // of effects that `taken` knows
        std::unordered_set<std::string> taken;
        std::unordered_map<std::string, int> next_number;
    };
    // What most layers lack.
    struct Extras {
        std::vector<Layer*> children;
        std::vector<Layer*> matte_users;
        std::vector<std::unique_ptr<Effect>> effects;
        EffectNames effect_names;
        std::vector<std::unique_ptr<Stream>> other_streams;
    };
    using ListPosition = std::uint32_t Layer::*;  // the layer's position in a list of another object

    const Extras& extras() const;
    Extras& mutable_extras();

    std::string new_effect_name(const std::string& wanted);

    void require_alive() const;
    void require_editable() const;  // alive, and not locked if HostRules refuse that
    void ensure_loaded();
    void note_change();
    State& writable_state();  // records the old state for undo, once per undo step
    void restore_state(const State& state);

    // Both directions, without undo
    static void link(std::vector<Layer*>& list, Layer& layer, ListPosition position);
    static void unlink(std::vector<Layer*>& list, Layer& layer, ListPosition position);
    void change_parent(Layer* parent);
    void change_matte(Layer* matte, MatteType type);
    bool takes_matte_by_position() const;
    void link_to_source();
    void unlink_from_source();
    void require_possible_parent(const Layer& parent) const;
    void reparent(Layer* parent, Parenting parenting);

    void change_display_name(std::string own_name);
    void release_dependents();
    void leave_comp();  // removes it even if it is not editable
    void drop_third_dimension();

    void attach(Stream& stream);
    void attach(Effect& effect);
    void detach(Stream& stream);
    void attach_all();
    bool awaits_loading() const { return content_ != nullptr && !content_loaded_; }
    void copy_content(const Layer& original);
    void map_layer_parameters(const std::function<LayerId(LayerId)>& map);  // without undo; for new layers
    void set_own_stream(int number, const Value& value);                    // for layers that the host creates
    NumberedStream& numbered_stream(int number);                            // created with its default if missing
    Stream& created(NumberedStream& numbered);

    Comp* comp_;
    LayerId id_;
    LayerId copied_from_ = 0;
    LayerKind kind_;
    bool alive_ = false;
    bool content_loaded_ = false;
    bool loading_ = false;
    Item* source_;
    double stretch_ = 1;
    State state_;
    std::uint64_t touched_in_step_ = 0;
    std::uint64_t change_count_ = 0;
    std::uint64_t selection_rank_ = 0;  // 0 = not selected
    LayerStack::Node* stack_node_ = nullptr;
    std::uint32_t place_in_children_ = 0;
    std::uint32_t place_in_matte_users_ = 0;
    std::uint32_t place_in_source_users_ = 0;
    std::shared_ptr<const LayerContent> content_;
    std::vector<NumberedStream> streams_;
    std::unique_ptr<Extras> extras_;  // null for none
};

}  // namespace host::model
