// `exflate dialog`: the plug-in's options dialog as a picture, and the names of its controls.
#include "commands.h"

#include "cli/shared/animation_file.h"
#include "runner/session.h"
#include "shared/dialog_window.h"
#include "shared/installed_parts.h"
#include "shared/settings_file.h"

namespace cli {
namespace {

using host::model::Comp;

// A composition with one nest in it, selected: the command needs it to show its dialog.
void fill(host::model::Project& project) {
    const host::model::Time duration = host::model::from_seconds(1);
    Comp& inner = project.add_comp("nested");
    Comp& outer = project.add_comp("main");
    for (Comp* comp : {&inner, &outer}) {
        comp->load_size(100, 100);
        comp->load_timing(25, duration);
    }
    outer.load_layer(host::model::LayerKind::av, &inner).load_timing({}, {}, duration, 1);
    project.set_active_panel(host::model::ActivePanel::timeline);
    project.open_comp(&outer);
    outer.select(outer.stack().to_vector());
}

// What --click and --type call the controls, top to bottom.
class ControlsLister : public host::scriptui::DialogDriver {
  public:
    void drive(host::scriptui::Window& window) override {
        window.for_each([this](const host::scriptui::Element& element) { add(element); });
    }

    const std::string& text() const { return text_; }

  private:
    void add(const host::scriptui::Element& element) {
        using host::scriptui::ElementType;
        if (element.is_container() || element.type() == ElementType::static_text) return;
        const bool takes_text = element.type() == ElementType::edit_text;
        text_ += std::string(takes_text ? "--type " : "--click ") + std::string(type_name(element.type())) + ' ' +
                 in_quotes(takes_text || element.text().empty() ? element.name() : element.text());
        if (takes_text) text_ += ", holds " + in_quotes(element.text());
        if (element.has_value()) text_ += element.value() ? ", on" : ", off";
        text_ += element.takes_input() ? "\n" : ", greyed\n";
    }

    std::string text_;
};

void run_command(host::script::Settings& settings, host::scriptui::DialogDriver& dialogs) {
    const host::runner::PluginModule plugin = load_plugin();
    host::model::Project project;
    fill(project);
    host::runner::Session session(project, settings, dialogs);
    if (session.start(plugin).has_failed() || session.menu_items().empty()) {
        throw Failure(ExitCode::failed, "the plug-in does not start");
    }
    session.run_command(session.menu_items().front().command);
}

}  // namespace

ExitCode draw_dialog(const Options& options, const Console& console) {
    host::script::Settings settings =
        options.first_use ? host::script::Settings::in_memory() : open_settings(console).in_memory_copy();
    if (options.controls) {
        ControlsLister lister;
        run_command(settings, lister);
        write_result(lister.text());
        return ExitCode::done;
    }
    draw_dialog_picture({options.picture, options.scale, options.actions},
                        [&](host::scriptui::DialogDriver& dialogs) { run_command(settings, dialogs); });
    return ExitCode::done;
}

}  // namespace cli
