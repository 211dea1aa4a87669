// Un-nests with the real command in memory, judges the result and compares pictures.
#include "judged.h"

#include "cli/shared/animation_file.h"
#include "cli/shared/selection.h"
#include "cli/shared/trial.h"
#include "pictures/comparison.h"

namespace test {

const lottie::looks::Finding* Judged::find(lottie::looks::Reason reason) const {
    for (const auto& finding : report.findings) {
        if (finding.reason == reason) return &finding;
    }
    return nullptr;
}

std::string in_words(const lottie::looks::Finding& finding) {
    constexpr const char* kWeights[] = {"harmless", "slight", "change"};
    return std::string(code(finding.reason)) + ", " + kWeights[static_cast<int>(finding.weight)] + ": " +
           finding.sentence + " -> " + finding.way_out + " [" + finding.layer + "|" + finding.property + "|" +
           (finding.frame ? std::to_string(*finding.frame) : "") + "]";
}

std::string Judged::text() const {
    std::string text(name(report.verdict));
    for (const auto& finding : report.findings) text += "\n  " + in_words(finding);
    return text;
}

bool Judged::looks_equal() const {
    constexpr int kSize = 200;  // pixels; enough for squares
    const lottie::pictures::Animation old_look(before);
    const lottie::pictures::Animation new_look(after);
    for (int frame = 0; frame < old_look.frame_count(); ++frame) {
        const auto apart = difference(old_look.frame(frame, kSize, kSize), new_look.frame(frame, kSize, kSize));
        if (!lottie::pictures::looks_equal(apart)) return false;
    }
    return true;
}

Judged judged(const std::string& animation, const cli::DialogAnswers& answers) {
    static const host::runner::PluginModule kPlugin(PLUGIN_MODULE);
    lottie::document::Document document = cli::parse_input(animation);
    host::model::Comp& comp = document.main_comp();
    const cli::FileLimits limits;
    lottie::looks::Judge judge(document.text());
    const cli::Trial trial = cli::Trials(document, kPlugin, answers, limits).run(comp, cli::find_nests(comp, {"Nest"}));
    return {animation, document.write(), compare(judge, trial).at(0)};
}

}  // namespace test
