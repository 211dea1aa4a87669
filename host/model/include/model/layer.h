// A layer of a composition: identity, name, switches, parent, matte, timing, streams, effects.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
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

enum class Parenting {
    keep_local_values,
    keep_place
};  // keep_place compensates so that nothing moves at the current time

// Numbers of layer streams as the C interface has them.
enum LayerStreamNumber : int {
    kAnchorPoint = 0,  // of cameras and lights: the point of interest
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

// A layer object lives as long as its project; is_alive() tells whether it is in its composition. Every setter is
// undoable unless its name begins with load_; those are for readers that build a project.
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

    // Names: UTF-8 by intent, any bytes in fact
    const std::string& own_name() const { return state_.name; }  // empty when never given
    const std::string& source_name() const;                      // empty without a source
    const std::string& display_name() const;                     // own name, else source name
    void rename(std::string name);                               // also rewrites the expressions that name this layer

    // Switches
    std::uint32_t flags() const { return state_.flags; }
    bool has_flag(LayerFlag flag) const { return (state_.flags & flag) != 0; }
    void set_flag(LayerFlag flag, bool on);  // 3D: see set_3d; on cameras and lights that succeeds without a change
    bool is_3d() const;                      // cameras and lights always

    // Parents
    Layer* parent() const { return state_.parent; }
    const std::vector<Layer*>& children() const { return extras().children; }  // living; order unspecified
    void set_parent(Layer* parent,
                    Parenting parenting);  // throws bad_argument for itself, a descendant, another composition

    // Mattes: the layer that shapes this one, and how
    Layer* matte() const { return state_.matte; }
    MatteType matte_type() const { return state_.matte_type; }
    void set_matte(Layer* matte, MatteType type);  // throws bad_argument for itself, another composition
    const std::vector<Layer*>& matte_users() const { return extras().matte_users; }  // living; order unspecified

    // Timing. Composition time = offset + stretch x layer time.
    double stretch() const { return stretch_; }
    Time offset() const { return state_.offset; }
    Time in_point() const { return state_.in_point; }  // composition time
    Time duration() const { return state_.duration; }  // composition time
    Time to_layer_time(Time comp_time) const;
    Time to_comp_time(Time layer_time) const;
    void set_offset(Time offset);  // moves the whole layer: in- and out-point and keyframes travel with it
    void set_in_point_and_duration(Time in_point, Time duration);  // trims, composition time; clamps as HostRules say

    // Streams; loaded when first asked for.
    static bool is_stream_number(int number) { return number >= 0 && number < kLayerStreamCount; }
    bool is_stream_legal(int number) const;
    // Streams that do not apply exist hidden, with their default value. Throws bad_argument for unknown numbers.
    Stream& stream(int number);
    // What stream(number).value_at(t) would be; leaves a stream unmade that nobody has asked for.
    Value stream_value(int number, Time t);
    // Every stream of the layer that may carry an expression, effects and the file's own ones included.
    std::vector<Stream*> expression_streams();

    // Effects, 0 = top; loaded when first asked for.
    std::size_t effect_count();
    Effect& effect(std::size_t index);   // throws bad_argument
    Effect& apply_effect(int kind_key);  // appended; throws bad_argument for unknown kinds, cameras and lights

    // Whole-layer changes
    void remove();            // children and matte users let go of it first, as HostRules say
    void move_to(int index);  // the stack position it shall have; -1 = the bottom; beyond the end clamps

    // What the file keeps; shared by copies, null for layers the host made.
    const std::shared_ptr<const LayerContent>& content() const { return content_; }
    bool is_content_loaded() const { return content_loaded_; }
    // The layer this one was copied from, null if none: its place in a file's numbering of copies.
    LayerId copied_from() const { return copied_from_; }

    // For readers: values a file gives, without undo.
    void load_name(std::string name);
    void load_flags(std::uint32_t flags) { state_.flags = flags; }
    void load_timing(Time offset, Time in_point, Time duration, double stretch);  // a stretch of 0 counts as 1
    void load_parent(Layer* parent);                                              // throws as set_parent
    void load_matte(Layer* matte, MatteType type);
    void set_content(std::shared_ptr<const LayerContent> content);
    // Called by LayerContent::load, or by a reader that leaves nothing for later.
    void load_stream(int number, std::shared_ptr<const StreamData> data, bool separated = false);
    void load_effect(std::unique_ptr<Effect> effect);
    // A stream inside something the model does not take apart (shapes, masks, text): only its expression matters. The
    // tag is the file format's, to find it again.
    Stream& load_other_stream(std::string name, std::shared_ptr<const StreamData> data);
    const std::vector<std::unique_ptr<Stream>>& other_streams() const { return extras().other_streams; }
    // The stream if somebody asked for it or it has an expression; null otherwise: it is then as it was loaded, or was
    // never set. For writers.
    const Stream* existing_stream(int number) const;
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
        Layer* parent = nullptr;
        Layer* matte = nullptr;
        Time offset;
        Time in_point;
        Time duration;
    };
    // Most streams of most layers are never asked for.
    struct NumberedStream {
        int number = 0;
        bool separated = false;
        std::shared_ptr<const StreamData> loaded = nullptr;  // until the stream is made
        std::unique_ptr<Stream> stream = nullptr;

        const StreamData& data() const { return stream != nullptr ? stream->data() : *loaded; }
    };
    // What most layers have none of.
    struct Extras {
        std::vector<Layer*> children;
        std::vector<Layer*> matte_users;
        std::vector<std::unique_ptr<Effect>> effects;
        std::vector<std::unique_ptr<Stream>> other_streams;
    };
    using Place = std::uint32_t Layer::*;  // where a layer keeps its position in a list of another object

    const Extras& extras() const;
    Extras& made_extras();

    void require_alive() const;
    void require_editable() const;  // alive, and not locked where HostRules refuse that
    void ensure_loaded();
    void note_change();
    State& writable_state();  // notes the old state for undo, once per undo step
    void restore_state(const State& state);

    // Links in both directions, no undo.
    static void link(std::vector<Layer*>& list, Layer& layer, Place place);
    static void unlink(std::vector<Layer*>& list, Layer& layer, Place place);
    void change_parent(Layer* parent);
    void change_matte(Layer* matte, MatteType type);
    void link_to_source();
    void unlink_from_source();
    void require_possible_parent(const Layer& parent) const;
    void reparent(Layer* parent, Parenting parenting);

    void change_display_name(std::string own_name);
    void release_dependents();
    void leave_comp();  // removal without asking whether the layer may be edited
    void drop_third_dimension();

    void attach(Stream& stream);
    void detach(Stream& stream);
    void attach_all();
    bool awaits_loading() const { return content_ != nullptr && !content_loaded_; }
    void copy_content(const Layer& original);
    void map_layer_parameters(const std::function<LayerId(LayerId)>& map);  // no undo; for new layers
    void set_own_stream(int number, const Value& value);                    // one the host makes
    NumberedStream& numbered_stream(int number);                            // there with its default if it was not
    Stream& made(NumberedStream& numbered);

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
