// A whole program around the host: loads a plug-in, runs its one command on every layer of an animation, prints the
// result.
#include <fstream>
#include <iostream>
#include <iterator>

#include "document/document.h"
#include "runner/session.h"
#include "runner/utf8_locale.h"

namespace {

// Presses nothing, so every dialog of the plug-in counts as cancelled.
struct NobodyThere : host::scriptui::DialogDriver {
    void drive(host::scriptui::Window&) override {}
};

}  // namespace

int main(int argc, char** argv) try {
    if (argc != 3) throw std::runtime_error("usage: smallest_embedding PLUG-IN FILE");
    host::runner::use_utf8_locale();
    std::ifstream file(argv[2]);
    auto document = lottie::document::Document::read({std::istreambuf_iterator<char>(file), {}});
    auto settings = host::script::Settings::in_memory();
    NobodyThere nobody;

    const host::runner::PluginModule plugin(argv[1]);
    host::runner::Session session(document.project(), settings, nobody);
    if (session.start(plugin).has_failed()) throw std::runtime_error("the plug-in does not start");

    host::model::Comp& comp = document.main_comp();
    document.project().open_comp(&comp);
    comp.select(comp.stack().to_vector());
    const host::runner::VisitResult outcome = session.run_command(session.menu_items().at(0).command);
    for (const std::string& sentence : outcome.log) std::cerr << sentence << '\n';
    if (outcome.has_failed()) return 1;
    std::cout << document.write();
    return 0;
} catch (const std::exception& problem) {
    std::cerr << problem.what() << '\n';
    return 1;
}
