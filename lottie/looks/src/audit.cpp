// Judging an un-nesting by the animation before and after it.
#include "looks/audit.h"

#include "findings.h"

namespace lottie::looks {

std::vector<NestReport> judge(const Animation& before, const Animation& after, const StackChange& change) {
    std::vector<NestReport> reports;
    for (const std::size_t nest : change.nests) {
        Unnesting unnesting(before.scene(), after.scene(), change, nest);
        find_group_changes(unnesting);
        find_clip_changes(unnesting);
        find_inside_changes(unnesting);
        find_time_changes(unnesting);
        find_place_changes(unnesting);
        find_link_changes(unnesting);
        find_expression_changes(unnesting);
        NestReport report;
        report.nest = nest;
        report.name = unnesting.nest().name;
        report.findings = unnesting.take_findings();
        report.verdict = verdict_of(report.findings);
        reports.push_back(std::move(report));
    }
    return reports;
}

}  // namespace lottie::looks
