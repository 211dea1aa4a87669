// Widgets for the elements of a dialog.
#pragma once

#include <QWidget>
#include <functional>

#include "scriptui/element.h"

namespace desktop {

// What the user does with a control.
struct ControlEvents {
    std::function<void(host::scriptui::Element&)> clicked;
    std::function<void(host::scriptui::Element&, std::string)> edited;  // its new text
};

// A widget of the element's type, not yet updated. Owned by `parent`.
QWidget* make_control(host::scriptui::Element& element, QWidget& parent, const ControlEvents& events);

// Makes the widget show the element. What is up to date is not touched, so that a field keeps its selection and undo
// history.
void update_control(const host::scriptui::Element& element, QWidget& control);

// Whether Enter inserts a line break in it.
bool takes_enter(const QWidget& control);

}  // namespace desktop
