// Running the command to see what it would do.
#include "cli/shared/trial.h"

#include <map>
#include <unordered_map>

#include "cli/shared/animation_file.h"
#include "cli/shared/dialog_operator.h"
#include "cli/shared/failure.h"

namespace cli {
namespace {

using host::model::Comp;
using host::model::Layer;
using host::model::LayerId;
using lottie::looks::Origin;
using lottie::looks::StackChange;

// Where each layer stood before the run.
class PlacesBefore {
  public:
    PlacesBefore(const Comp& comp, const std::vector<Layer*>& nests) {
        std::size_t place = 0;
        for (const Layer* layer : comp.stack().to_vector()) kept_[layer] = place++;
        std::map<std::size_t, const Layer*> by_place;  // copies come out in the order of the stack
        for (const Layer* nest : nests) by_place[kept_.at(nest)] = nest;
        for (const auto& [nest_place, nest] : by_place) {
            nests_.push_back(nest_place);
            std::size_t inner_place = 0;
            for (const Layer* inner : nest->source()->comp()->stack().to_vector()) {
                originals_[inner->id()].push_back({Origin::Kind::copied, inner_place++, nest_place});
            }
        }
    }

    StackChange change_to(const Comp& comp, std::string id) const {
        StackChange change;
        change.composition = std::move(id);
        change.nests = nests_;
        std::unordered_map<LayerId, std::size_t> copies_met;
        for (const Layer* layer : comp.stack().to_vector()) change.after.push_back(origin_of(*layer, copies_met));
        return change;
    }

  private:
    Origin origin_of(const Layer& layer, std::unordered_map<LayerId, std::size_t>& copies_met) const {
        if (const auto kept = kept_.find(&layer); kept != kept_.end()) return {Origin::Kind::kept, kept->second, 0};
        const auto copied = originals_.find(layer.copied_from());
        if (copied == originals_.end()) return {};
        // Nests that share a composition give several copies of one layer.
        const std::size_t number = copies_met[layer.copied_from()]++;
        return number < copied->second.size() ? copied->second[number] : Origin{};
    }

    std::unordered_map<const Layer*, std::size_t> kept_;
    std::unordered_map<LayerId, std::vector<Origin>> originals_;
    std::vector<std::size_t> nests_;
};

}  // namespace

host::script::Limits script_limits(double seconds) {
    const std::chrono::milliseconds all(static_cast<std::chrono::milliseconds::rep>(seconds * 1000));
    host::script::Limits limits;
    limits.time = all / 4;
    limits.time_of_all = std::make_shared<host::script::SharedTime>(all);
    return limits;
}

Trial try_unnesting(lottie::document::Document& document, const RunContext& context, Comp& comp,
                    const std::vector<Layer*>& nests) {
    auto& undo = document.project().undo();
    const std::size_t steps_before = undo.step_names().size();
    const PlacesBefore places(comp, nests);
    const std::string id = document.comp_id(comp);
    host::runner::Session session(document.project(), context.settings, context.dialogs, context.limits);
    context.observe(session);
    Trial trial;
    try {
        unnest(session, context.plugin, comp, nests, false, trial.record);
        trial.after = write_animation(document).text();
    } catch (const Failure&) {
        while (undo.step_names().size() > steps_before) undo.undo();
        refuse_faulty_content(document);
        throw;
    }
    trial.change = places.change_to(comp, id);
    return trial;
}

Trial try_unnesting(lottie::document::Document& document, const host::runner::PluginModule& plugin,
                    const DialogAnswers& answers, const host::script::Limits& limits, Comp& comp,
                    const std::vector<Layer*>& nests) {
    auto settings = host::script::Settings::in_memory();
    DialogOperator dialogs(answers);
    return try_unnesting(document, {plugin, settings, dialogs, limits}, comp, nests);
}

void undo_trial(lottie::document::Document& document) {
    document.project().undo().undo();
}

}  // namespace cli
