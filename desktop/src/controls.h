// The widget for each element of a dialog.
#pragma once

#include <QWidget>
#include <functional>

#include "scriptui/element.h"

namespace desktop {

// What the person did with a control.
struct ControlEvents {
    std::function<void(host::scriptui::Element&)> clicked;
    std::function<void(host::scriptui::Element&, std::string)> edited;  // the text it has now
};

// A widget of the element's kind inside another one, still without its facts. Owned by `parent`.
QWidget* make_control(host::scriptui::Element& element, QWidget& parent, const ControlEvents& events);

// Makes the widget show the element's facts and stand in its frame. What is so already is not touched, so a field keeps
// its selection and what can be undone.
void update_control(const host::scriptui::Element& element, QWidget& control);

// Whether Enter means a new line in it.
bool takes_enter(const QWidget& control);

}  // namespace desktop
