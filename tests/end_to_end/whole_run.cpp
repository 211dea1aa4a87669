// One run of the real plug-in over an animation, in the process of the test.
#include "whole_run.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

#include "runner/utf8_locale.h"

namespace end_to_end {

WholeRun::WholeRun(std::string animation, host::model::HostRules rules)
    : document_(lottie::document::Document::read(std::move(animation), rules)),
      module_(PLUGIN_MODULE),
      session_(document_.project(), settings_, driver_) {
    host::runner::use_utf8_locale();
    session_.suites().add_observer(tracer_);
    if (session_.start(module_).has_failed()) throw std::runtime_error("the plug-in does not start");
}

host::runner::VisitResult WholeRun::run(host::model::Comp& comp, const std::vector<int>& selected,
                                        const std::vector<host::scriptui::Action>& actions) {
    std::vector<host::model::Layer*> layers;
    for (const int index : selected) layers.push_back(&comp.layer_at(index));
    document_.project().open_comp(&comp);
    comp.select(layers);
    for (const host::scriptui::Action& action : actions) driver_.add(action);
    return session_.run_command(session_.menu_items().at(0).command);
}

host::scriptui::Action click(std::string control) {
    return {host::scriptui::Action::Kind::click, std::move(control), {}};
}

host::scriptui::Action type(std::string control, std::string text) {
    return {host::scriptui::Action::Kind::type, std::move(control), std::move(text)};
}

std::string read_file(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error(path + " cannot be read");
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace end_to_end
