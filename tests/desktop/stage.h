// Scripts with windows on a display in memory, operated by functions that stand in for people.
#pragma once

#include <QDialog>
#include <QObject>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/desktop_driver.h"
#include "model/project.h"
#include "script/engine.h"
#include "script/settings.h"

namespace dialog_test {

// What a person does with one window. The window may be gone afterwards.
using Actions = std::function<void(QDialog&)>;

class Stage {
  public:
    // Runs the text, expects success and returns the result. Each window that comes up is given to the next person;
    // one that is left open is a failure and is closed.
    std::string run(std::string_view text, std::vector<Actions> people = {});

    host::script::Settings settings = host::script::Settings::in_memory();
    std::vector<host::scriptui::Alert> alerts;

  private:
    void look_for_windows();

    host::model::Project project_;
    std::unique_ptr<host::scriptui::DialogDriver> dialogs_ = desktop::make_desktop_driver();
    host::script::Engine engine_{project_, settings, *dialogs_,
                                 [this](const host::scriptui::Alert& alert) { alerts.push_back(alert); }};
    std::deque<Actions> people_;
    const QWidget* served_ = nullptr;
    bool is_running_ = false;
    int idle_looks_ = 0;
    QObject here_;  // timers that have not fired end with it
};

// The plug-in's options dialog.
std::string options_dialog();

// The control with that object name, or else with that text; throws if there is none.
QWidget& control(QDialog& dialog, const QString& name_or_text);
// Its place in the dialog.
QRect place(QDialog& dialog, const QString& name_or_text);

void click(QDialog& dialog, const QString& name_or_text);
// Goes to the control that has the focus.
void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
void type(const QString& text);
QString focused();  // the object name

}  // namespace dialog_test
