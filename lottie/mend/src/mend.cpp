// Which remedy answers which reason.
#include "mend/mend.h"

#include <algorithm>
#include <map>
#include <set>

#include "remedies.h"

namespace lottie::mend {
namespace {

using looks::Reason;

// What a remedy costs that walks past all layers out of its nest, and all beside it.
constexpr std::size_t kStepsPerCopy = 100;
constexpr std::size_t kStepsPerLayer = 4;

struct Remedy {
    Reason reason;
    void (*apply)(Unnested&, Nest&);
};

// In the order in which they are tried; of several for one reason the next one only when the first was not enough.
constexpr Remedy kRemedies[] = {
    {Reason::time_remap, mend_time_remap},
    {Reason::stretch, mend_time_remap},
    {Reason::matte_split, mend_matte_split},
    {Reason::trim, mend_trim},
    {Reason::parent, mend_parent},
    {Reason::parent, mend_place},
    {Reason::place, mend_place},
    {Reason::shear, mend_place},
    {Reason::auto_orient, mend_place},
    {Reason::children, mend_children},
    {Reason::lost_link, mend_lost_link},
    {Reason::matte_used, mend_matte_used},
    {Reason::mask, mend_mask},
    {Reason::clip, mend_clip},
    {Reason::opacity, mend_opacity},
    {Reason::opacity, mend_overlap},
    {Reason::blend_mode, mend_blend_mode},
    {Reason::name_clash, mend_names},
    {Reason::long_name, mend_names},
    {Reason::quoted_name, mend_names},
    {Reason::layer_reference, mend_layer_reference},
};

}  // namespace

struct Progress {
    Progress(Before& before, const std::vector<std::string_view>& after, looks::StackChange change, looks::Work& work)
        : unnested(before, after, std::move(change), work) {}

    Unnested unnested;
    std::map<std::size_t, std::set<const Remedy*>> applied;  // by nest
};

BeforeRuns::BeforeRuns(std::string text, looks::Judge& judge)
    : before_(std::make_unique<Before>(std::move(text), judge)) {}
BeforeRuns::BeforeRuns(std::string text, document::DocumentOutline outline, looks::Judge& judge)
    : before_(std::make_unique<Before>(std::move(text), std::move(outline), judge)) {}
BeforeRuns::~BeforeRuns() = default;

Mending::Mending(const BeforeRuns& before, const std::vector<std::string_view>& after, looks::StackChange change,
                 looks::Work& work)
    : progress_(std::make_unique<Progress>(*before.before_, after, std::move(change), work)) {}
Mending::~Mending() = default;

bool Mending::apply_remedies(const std::vector<looks::NestReport>& reports, Scope scope) {
    bool is_any = false;
    for (const looks::NestReport& report : reports) {
        std::set<Reason> open;
        for (const looks::Finding& finding : report.findings) {
            const bool is_cut = finding.reason == Reason::clip && scope == Scope::changes_and_clips;
            const bool adds_up = finding.weight == looks::Weight::slight && (is_cut || scope == Scope::all);
            if (finding.weight == looks::Weight::change || adds_up) open.insert(finding.reason);
        }
        for (const Remedy& remedy : kRemedies) {
            if (!open.contains(remedy.reason) || !progress_->applied[report.nest].insert(&remedy).second) continue;
            Unnested& unnested = progress_->unnested;
            Nest& nest = unnested.nest_at(report.nest);
            unnested.spend(kStepsPerCopy * nest.copies.size() + kStepsPerLayer * unnested.stack().size());
            remedy.apply(unnested, nest);
            open.erase(remedy.reason);
            is_any = true;
        }
    }
    return is_any;
}

std::vector<std::string> Mending::layers() const {
    return progress_->unnested.layers();
}

looks::StackChange Mending::change() const {
    return progress_->unnested.change();
}

std::vector<Reason> Mending::mended(std::size_t nest) const {
    std::set<Reason> reasons;
    if (const auto found = progress_->applied.find(nest); found != progress_->applied.end()) {
        for (const Remedy* remedy : found->second) reasons.insert(remedy->reason);
    }
    return {reasons.begin(), reasons.end()};
}

}  // namespace lottie::mend
