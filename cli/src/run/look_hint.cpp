// One sentence on what a run without judging does to looks.
#include "run/look_hint.h"

#include <algorithm>
#include <exception>
#include <memory>

#include "cli/shared/console.h"
#include "looks/judge.h"
#include "looks/work.h"

namespace cli {
namespace {

constexpr std::size_t kJudgedFreely = 16 << 10;  // bytes; judging an animation of this size takes no noticeable time
constexpr std::size_t kMostWork = 100'000;

}  // namespace

LookHint::LookHint(const lottie::document::Document& document, const host::model::Comp& comp,
                   const std::vector<host::model::Layer*>& nests, bool recursive)
    : document_(document), comp_(comp) {
    if (!recursive && document.text().size() <= kJudgedFreely) origins_.emplace(comp, nests);
}

std::string LookHint::after(const UnnestRecord& record, const lottie::document::OutputText& written) {
    if (record.places_lost > 0) {
        return counted(record.places_lost, "nest") + " inside of others lost the layer that " +
               (record.places_lost == 1 ? "it" : "they") +
               " hung on, so places may be lost; exflate flatten keeps them";
    }
    if (origins_) {
        try {
            const auto reports =
                lottie::looks::Judge(document_.text(), std::make_shared<lottie::looks::Work>(kMostWork))
                    .compare(origins_->change_to(comp_, document_.comp_id(comp_)), written.text());
            const auto changing = std::count_if(reports.begin(), reports.end(), [](const auto& report) {
                return report.verdict == lottie::looks::Verdict::changes;
            });
            if (changing == 0) return "";
            return std::to_string(changing) + " of " + counted(reports.size(), "look") +
                   (changing == 1 ? " changes" : " change") + "; exflate flatten keeps " +
                   (changing == 1 ? "it" : "them");
        } catch (const std::exception&) {  // a hint is not worth a failure
        }
    }
    return "looks were not judged: exflate check shows which change, exflate flatten keeps them";
}

}  // namespace cli
