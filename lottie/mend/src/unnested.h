// Nests of one composition before the run, and the composition after it: what all remedies work on.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "document/outline.h"
#include "layer_text.h"
#include "looks/evaluation.h"
#include "looks/judge.h"
#include "looks/work.h"
#include "nest_clock.h"

namespace lottie::mend {

// A layer of the composition as it was, and as it is now; of an un-nested nest without the latter.
struct KeptLayer {
    KeptLayer(const std::string& text, const document::ScannedLayer& layer) : facts(layer), before(text, layer.text) {}

    const document::ScannedLayer& facts;  // before
    LayerText before;
    LayerText* now = nullptr;
    bool is_as_before = false;  // the run left its text as it was

    bool is_touched() const { return !is_as_before || now->is_changed(); }
};

// A layer out of a nest.
struct CopiedLayer {
    CopiedLayer(const std::string& text, std::size_t place, const document::ScannedLayer& layer)
        : inner(place), facts(layer), before(text, layer.text) {}

    std::size_t inner;                    // place in the nest's composition
    const document::ScannedLayer& facts;  // of the layer inside, before
    LayerText before;
    LayerText* now = nullptr;          // null if it was not copied
    std::optional<std::string> masks;  // its own as they are now, once it got more
    // Areas of layers inside above it that cover a part of it while the nest fades; masks take that away.
    struct Cover {
        std::size_t above;
        looks::Evaluation::Area area;
    };
    std::vector<Cover> covers;

    // How far the run moved it in time, in frames.
    double shift() const { return now->number("st", 0) - facts.start; }
};

struct Nest {
    Nest(std::size_t at, KeptLayer& kept, std::string id, looks::Work& its_work)
        : place(at), layer(kept), source(std::move(id)), work(its_work) {}

    std::size_t place;  // in the stack before
    KeptLayer& layer;
    std::string source;              // id of its composition
    std::deque<CopiedLayer> copies;  // one for each layer of its composition, in the order of that
    // A matte that became masks of the copies, which are never seen without it.
    struct Matte {
        const KeptLayer& layer;
        std::size_t place;  // in the stack before
        looks::Evaluation::Outline outline;
    };
    std::optional<Matte> matte;
    LayerText* stand_in = nullptr;   // a null with its transform; null if the run left none
    std::optional<NestClock> clock;  // nothing if it cannot be told
    looks::Work& work;

    const document::ScannedLayer& facts() const { return layer.facts; }
    // As long as there is no time remapping.
    double outer_frame(double inner) const { return facts().start + facts().stretch * inner; }
    bool only_shifts() const { return !facts().remaps_time && facts().stretch == 1; }
    // Counts the work of putting so much text on its clock.
    void spend_for_retiming(std::size_t bytes) const;
    // The text of a value of the layer inside, with keyframes at the frames at which the nest showed them.
    std::string on_outer_clock(const CopiedLayer& copy, const document::JsonNode& value) const;
};

// Whether it may have a picture that is drawn as it is, not as a matte.
bool is_drawn(const CopiedLayer& copy);
// The matte that a layer inside has, by its place there.
std::optional<std::size_t> matte_inside(const Nest& nest, const CopiedLayer& copy);

// The animation before runs.
struct Before {
    Before(std::string animation, looks::Judge& judge);
    Before(std::string animation, document::DocumentOutline its_outline, looks::Judge& judge);

    const document::ScannedComp& composition(const std::string& id) const;

    std::string text;
    document::DocumentOutline outline;
    looks::Evaluation evaluation;
};

class Unnested {
  public:
    Unnested(Before& before, const std::vector<std::string_view>& after, looks::StackChange change, looks::Work& work);
    Unnested(const Unnested&) = delete;

    void spend(std::size_t steps) const { work_.spend(steps); }
    const std::string& composition() const { return change_.composition; }  // its id
    std::deque<KeptLayer>& stack() { return stack_; }                       // before
    looks::Evaluation& evaluation() { return before_.evaluation; }          // of the animation before
    double frame_rate() const;
    Nest& nest_at(std::size_t place);
    bool is_unnested(std::size_t place) const;
    // The layer of the stack before, or of a nest's composition, that its `parent` names; null if there is none.
    std::optional<std::size_t> parent_in_stack(const document::ScannedLayer& layer) const;
    std::optional<std::size_t> parent_inside(const Nest& nest, const document::ScannedLayer& layer) const;
    // The matte that the layer at that place of the stack before has.
    std::optional<std::size_t> matte_in_stack(std::size_t place) const;

    // The number by which layers of the result can hang on what the nest was. Makes a null with its transform and its
    // parent where the run left none.
    std::int64_t stand_in(Nest& nest);

    // The layers of the result, top to bottom.
    std::vector<LayerText*> order() const;
    std::size_t place_of(const LayerText& layer) const;  // in the result
    // The number that `layer` has in the result; gives it one if it has none.
    std::int64_t number_of(LayerText& layer);

    // The name of a layer as it is now.
    static std::string name_of(const LayerText& layer);
    // The layer of the result that an expression finds by that name; null for none.
    LayerText* find(const std::string& name) const;
    // The nest whose layers the layer of the result is one of; null for none.
    Nest* owner_of(const LayerText& layer) const;
    // Gives a layer of the result a name that no other has.
    void rename(LayerText& layer) const;

    std::vector<std::string> layers() const;  // of the result, top to bottom
    looks::StackChange change() const;

  private:
    struct Entry {
        std::unique_ptr<LayerText> layer;
        looks::Origin origin;
    };

    void read_nest(std::size_t place);
    void find_stand_in(Nest& nest);
    std::size_t insert_place_below(const Nest& nest) const;

    Before& before_;
    looks::Work& work_;
    looks::StackChange change_;
    const document::ScannedComp& comp_before_;
    std::string after_text_;  // the layers one behind the other
    std::deque<KeptLayer> stack_;
    std::vector<std::unique_ptr<Nest>> nests_;
    std::vector<Entry> result_;
    std::int64_t largest_number_ = 0;
};

}  // namespace lottie::mend
