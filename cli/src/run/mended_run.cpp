// Mends what un-nesting lost, where a flat file can hold it.
#include "run/mended_run.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <vector>

#include "cli/shared/console.h"
#include "mend/mend.h"
#include "mend/workbench.h"

namespace cli {
namespace {

using lottie::looks::NestReport;
using lottie::looks::Origin;
using lottie::looks::Verdict;

std::size_t count_changing(const std::vector<NestReport>& reports) {
    return static_cast<std::size_t>(std::count_if(
        reports.begin(), reports.end(), [](const NestReport& report) { return report.verdict == Verdict::changes; }));
}

std::string with_layers(const std::string& animation, const std::string& composition,
                        const std::vector<std::string>& layers) {
    lottie::mend::Workbench bench(animation);
    lottie::looks::StackChange all_kept{composition, {}, {}};
    for (std::size_t i = 0; i < layers.size(); ++i) all_kept.after.push_back({Origin::Kind::kept, i, 0});
    bench.put_back(*bench.find(composition), all_kept, {layers.begin(), layers.end()});
    return bench.text(true);
}

std::string summary_of(const std::set<std::string>& mended, const std::vector<NestReport>& reports) {
    std::string summary;
    for (const std::string& reason : mended) summary += (summary.empty() ? "mended for " : ", ") + reason;
    if (summary.empty()) summary = "nothing to mend";
    const std::size_t changing = count_changing(reports);
    if (changing == 0) return summary + "; every look is kept";
    return summary + "; " + std::to_string(changing) + " of " + counted(reports.size(), "look") +
           (changing == 1 ? " changes" : " change");
}

}  // namespace

MendedRun mend_run(const std::string& before, const std::string& after, const lottie::looks::StackChange& change,
                   const std::shared_ptr<lottie::looks::Work>& work) {
    lottie::looks::Judge judge(before, work);
    std::vector<NestReport> reports = judge.compare(change, after);
    const lottie::mend::Workbench bench(after);
    const lottie::mend::BeforeRuns unmended(before, judge);
    lottie::mend::Mending mending(unmended, bench.file_layers(*bench.find(change.composition)), change, *work);
    std::string text = after;
    while (count_changing(reports) > 0 && mending.apply_remedies(reports)) {
        text = with_layers(after, change.composition, mending.layers());
        reports = judge.compare(mending.change(), text);
    }
    std::set<std::string> mended;
    for (const std::size_t nest : change.nests) {
        for (const auto reason : mending.mended(nest)) mended.insert(std::string(code(reason)));
    }
    return {std::move(text), summary_of(mended, reports), mending.change(), mending.layers()};
}

}  // namespace cli
