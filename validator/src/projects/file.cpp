// An animation of somebody.
#include <charconv>
#include <stdexcept>

#include "base/printable.h"
#include "projects/situations.h"
#include "projects/stages.h"

namespace validator {
namespace {

using host::model::Comp;
using host::model::Layer;

std::vector<Layer*> find(const Comp& comp, const std::vector<std::string>& texts) {
    if (texts.empty()) return comp.stack().to_vector();
    std::vector<Layer*> found;
    for (const std::string& text : texts) {
        const std::size_t before = found.size();
        int number = 0;
        const char* end = text.data() + text.size();
        const bool is_number = text.size() > 1 && text[0] == '#' &&
                               std::from_chars(text.data() + 1, end, number) == std::from_chars_result{end, {}};
        for (int i = 0; i < comp.layer_count(); ++i) {
            Layer& layer = comp.layer_at(i);
            if (is_number ? i + 1 == number : layer.display_name() == text) found.push_back(&layer);
        }
        if (found.size() == before)
            throw std::invalid_argument("there is no layer " + host::base::in_quotes(text) +
                                        " in the main composition");
    }
    return found;
}

}  // namespace

Situation file_situation(const std::string& text, const std::vector<std::string>& layers, const Answers& answers) {
    const auto build = [text, layers] {
        auto stage = std::make_unique<FileStage>(text);
        Comp& comp = stage->document().main_comp();
        stage->project().set_active_panel(host::model::ActivePanel::timeline);
        stage->project().open_comp(&comp);
        comp.select(find(comp, layers));
        return stage;
    };
    build();  // what is wrong with it is told at once
    return {.name = "project", .sentence = "the project given is open", .build = build, .dialogs = [answers] {
                return accept_dialogs(answers);
            }};
}

}  // namespace validator
