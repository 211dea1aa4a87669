// Judging what runs do to the look of an animation, one composition at a time.
#include "looks/judge.h"

#include <algorithm>
#include <array>
#include <functional>
#include <map>
#include <optional>

#include "findings.h"
#include "scene.h"
#include "survey.h"
#include "whole.h"

namespace lottie::looks {
namespace {

constexpr std::size_t kStepsPerReading = 300;  // of a layer, and more for long ones
constexpr std::size_t kBytesPerStep = 8;
constexpr std::size_t kStepsPerLook = 60;  // at a copy at a frame

// Whether the run touched no layer that belongs to no nest, and no nest has to do with another: then each comes to what
// it would if it were un-nested alone, as far as no expression counts or finds layers.
bool are_nests_apart(Comparison& c, const SharedFindings& shared) {
    if (!shared.without_matte.empty() || shared.order || !shared.unhitched.empty()) return false;
    return std::all_of(c.change().nests.begin(), c.change().nests.end(), [&c](std::size_t nest) {
        const auto parent = c.stack().parent(nest);
        const auto matte = c.stack().matte(nest);
        const auto& parts = c.stack().layer(nest).parts();
        return (!parent || c.lies_as_before(*parent)) && !(matte && c.is_unnested(*matte)) &&
               std::all_of(parts.begin(), parts.end(), [](const auto& part) { return part->expressions().empty(); });
    });
}

}  // namespace

SharedFindings::SharedFindings(Comparison& comparison)
    : without_matte(find_lost_mattes(comparison)),
      order(find_order_change(comparison)),
      unhitched(find_unhitched(comparison)),
      expressions(find_expression_changes_beside(comparison)) {}

struct Judge::State {
    State(std::string_view whole_text, std::shared_ptr<Work> budget)
        : shared_work(std::move(budget)), text(whole_text), scene(whole_text), surveys(scene, work), whole(scene) {}

    struct Compared {
        StackChange change;
        std::shared_ptr<const Stack> stack;
        std::vector<std::string> deleted;
        std::size_t byte_count = 0;
    };

    bool is_lasting(std::string_view piece) const {
        const std::less_equal<const char*> before;
        return before(text.data(), piece.data()) && before(piece.data() + piece.size(), text.data() + text.size());
    }

    // The layer that stayed, if it did, else the one inside of the nest that it was copied from.
    const std::shared_ptr<const SceneLayer>* original(const Stack& stack, const Origin& origin) const {
        if (origin.kind == Origin::Kind::kept) return &stack.shared_layer_at(origin.layer);
        if (origin.kind != Origin::Kind::copied || origin.nest >= stack.size()) return nullptr;
        const auto* inside = scene.find(stack.layer(origin.nest).source);
        return inside == nullptr ? nullptr : &(*inside)->shared_layer_at(origin.layer);
    }

    // A layer as it was read last, and before that. Whoever mends compares a stack again of which little has changed,
    // and whoever gives up a nest compares what comes out of the others again, before mending and after.
    struct LastRead {
        std::array<std::shared_ptr<const SceneLayer>, 2> layers;

        const std::shared_ptr<const SceneLayer>* find(std::string_view layer) const {
            const auto found = std::find_if(layers.begin(), layers.end(), [layer](const auto& one) {
                return one != nullptr && is_same(layer, one->text());
            });
            return found == layers.end() ? nullptr : &*found;
        }
        void add(std::shared_ptr<const SceneLayer> layer) {
            layers[1] = std::move(layers[0]);
            layers[0] = std::move(layer);
        }
    };
    using LastReads = std::map<std::tuple<Origin::Kind, std::size_t, std::size_t>, LastRead>;

    std::shared_ptr<const Stack> read(const Stack& before, const StackChange& change, const RewrittenStack& after) {
        if (after.layers.size() != change.after.size()) {
            throw std::invalid_argument("the composition after the run has another number of layers");
        }
        if (change.composition != last_composition) last_reads.clear();
        last_composition = change.composition;
        const auto arena = std::make_shared<Arena>();
        std::vector<std::shared_ptr<const SceneLayer>> layers;
        layers.reserve(after.layers.size());
        for (std::size_t i = 0; i < after.layers.size(); ++i) {
            std::string_view layer = after.layers[i];
            const auto* from = original(before, change.after[i]);
            if (from != nullptr && is_same(layer, (*from)->text())) {
                layers.push_back(*from);
                continue;
            }
            work.spend(kStepsPerReading + layer.size() / kBytesPerStep);
            const Origin& origin = change.after[i];
            LastRead* last =
                origin.kind == Origin::Kind::made ? nullptr : &last_reads[{origin.kind, origin.nest, origin.layer}];
            if (const auto* same = last == nullptr ? nullptr : last->find(layer)) {
                layers.push_back(*same);
                continue;
            }
            if (!is_lasting(layer)) layer = arena->texts.emplace_back(layer);
            TextReader reader(layer);
            SceneLayer::Counterparts counterparts = {from == nullptr ? nullptr : from->get()};
            if (last != nullptr)
                std::transform(last->layers.begin(), last->layers.end(), counterparts.begin() + 1,
                               [](const auto& one) { return one.get(); });
            layers.push_back(std::make_shared<SceneLayer>(reader, counterparts, arena));
            if (last != nullptr) last->add(layers.back());
        }
        auto stack = std::make_shared<Stack>(before.without_layers());
        stack->set_layers(std::move(layers));
        if (!stack->id.empty()) {
            stack->end_frame = 0;
            for (std::size_t i = 0; i < stack->size(); ++i) {
                stack->end_frame = std::max(stack->end_frame, stack->layer(i).out);
            }
        }
        return stack;
    }

    static bool is_same(std::string_view a, std::string_view b) {
        return a.size() == b.size() && (a.data() == b.data() || a == b);
    }

    std::shared_ptr<Work> shared_work;
    Work& work = *shared_work;
    std::string_view text;
    Scene scene;
    Surveys surveys;
    Whole whole;
    std::optional<Compared> newest;
    std::string last_composition;  // that was compared
    LastReads last_reads;          // of that composition, by where the layers come from
};

Judge::Judge(std::string_view text, std::shared_ptr<Work> work)
    : state_(std::make_unique<State>(text, std::move(work))) {}
Judge::~Judge() = default;
Judge::Judge(Judge&&) noexcept = default;
Judge& Judge::operator=(Judge&&) noexcept = default;

std::vector<NestReport> Judge::compare(const StackChange& change, const RewrittenStack& after) {
    State& state = *state_;
    state.newest.reset();
    const auto* before = state.scene.find(change.composition);
    if (before == nullptr) throw std::invalid_argument("the animation has no such composition");
    const std::shared_ptr<const Stack> result = state.read(**before, change, after);
    Comparison comparison(state.surveys, result, change, after, state.work);
    SharedFindings shared(comparison);
    const bool are_apart = are_nests_apart(comparison, shared);
    std::vector<NestReport> reports;
    for (const std::size_t nest : change.nests) {
        Unnesting unnesting(comparison, nest);
        state.work.spend(kStepsPerLook * unnesting.copies().size() * unnesting.stack_frames().size());
        NestReport report;
        find_group_changes(unnesting);
        find_fading_around(unnesting);
        find_inside_changes(unnesting);
        const bool changes_by_itself = verdict_of(unnesting.findings()) == Verdict::changes;
        find_clip_changes(unnesting);
        find_time_changes(unnesting);
        find_place_changes(unnesting, shared);
        find_link_changes(unnesting, shared);
        const std::size_t about_layers = unnesting.findings().size();
        find_expression_changes(unnesting, shared);
        report.stands_alone =
            are_apart && changes_by_itself &&
            std::all_of(unnesting.findings().begin() + static_cast<std::ptrdiff_t>(about_layers),
                        unnesting.findings().end(), [](const Finding& one) {
                            return one.reason == Reason::composition_reference && one.weight == Weight::harmless;
                        });
        report.nest = nest;
        report.name = unnesting.nest().name;
        report.findings = unnesting.take_findings();
        report.verdict = verdict_of(report.findings);
        report.unseen = unnesting.unseen();
        reports.push_back(std::move(report));
    }
    state.newest = State::Compared{change, result, after.deleted, after.byte_count};
    return reports;
}

std::vector<NestReport> Judge::compare(const StackChange& change, std::string_view animation_after) {
    const Scene after(animation_after);
    const auto* stack = after.find(change.composition);
    if (stack == nullptr) throw std::invalid_argument("the animation has no such composition");
    RewrittenStack rewritten;
    rewritten.byte_count = after.byte_count;
    for (std::size_t i = 0; i < (*stack)->size(); ++i) rewritten.layers.push_back((*stack)->layer(i).text());
    for (const auto& [id, one] : state_->scene.stacks) {
        if (after.find(id) == nullptr) rewritten.deleted.push_back(id);
    }
    return compare(change, rewritten);
}

void Judge::accept() {
    State& state = *state_;
    if (!state.newest) throw std::invalid_argument("there is no comparison to accept");
    State::Compared newest = std::move(*state.newest);
    state.newest.reset();
    state.last_reads.clear();
    state.whole.add(newest.change);
    state.surveys.forget(newest.stack->id);
    state.scene.replace(std::move(newest.stack));
    for (const std::string& id : newest.deleted) {
        state.surveys.forget(id);
        state.scene.remove(id);
    }
    state.scene.byte_count = newest.byte_count;
}

std::vector<Deviation> Judge::compare_whole(const std::set<NestOfFile>& slight) {
    return state_->whole.find_deviations(state_->surveys, slight, state_->work);
}

std::vector<StackChange> Judge::take_steps() {
    return state_->whole.take_steps();
}

const CompositionCalls& Judge::composition_calls() const {
    return state_->scene.composition_calls();
}

std::size_t Judge::byte_count() const {
    return state_->scene.byte_count;
}

Evaluation Judge::evaluation() {
    return {state_->scene, state_->surveys, state_->work};
}

}  // namespace lottie::looks
