// Un-nesting by the real command in memory, judged and looked at.
#include "judged.h"

#include "cli/documents.h"
#include "cli/selection.h"
#include "cli/trial.h"
#include "render/comparison.h"

namespace test {

const host::audit::Finding* Judged::find(host::audit::Reason reason) const {
    for (const auto& finding : report.findings) {
        if (finding.reason == reason) return &finding;
    }
    return nullptr;
}

std::string Judged::text() const {
    constexpr const char* kWeights[] = {"harmless", "slight", "change"};
    std::string text(name(report.verdict));
    for (const auto& finding : report.findings) {
        text += "\n  " + std::string(code(finding.reason)) + ", " + kWeights[static_cast<int>(finding.weight)] + ": " +
                finding.sentence + " -> " + finding.way_out + " [" + finding.layer + "|" + finding.property + "|" +
                (finding.frame ? std::to_string(*finding.frame) : "") + "]";
    }
    return text;
}

bool Judged::looks_equal() const {
    constexpr int kSize = 200;  // pixels; enough for squares
    const host::render::Animation old_look(before);
    const host::render::Animation new_look(after);
    for (int frame = 0; frame < old_look.frame_count(); ++frame) {
        const auto apart = difference(old_look.frame(frame, kSize, kSize), new_look.frame(frame, kSize, kSize));
        if (!host::render::looks_equal(apart)) return false;
    }
    return true;
}

Judged judged(const std::string& animation, const cli::DialogAnswers& answers) {
    static const host::runner::PluginModule kPlugin(PLUGIN_MODULE);
    host::lottie::Document document = cli::parse_input(animation);
    host::model::Comp& comp = document.main_comp();
    const cli::Trial trial =
        cli::try_unnesting(document, kPlugin, answers, host::script::Limits(), comp, cli::find_nests(comp, {"Nest"}));
    const auto reports = judge(host::audit::Animation(animation), host::audit::Animation(trial.after), trial.change);
    return {animation, trial.after, reports.at(0)};
}

}  // namespace test
