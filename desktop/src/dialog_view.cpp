// The window of one dialog: shows its elements and passes on what the user does.
#include "dialog_view.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <cmath>
#include <utility>

#include "controls.h"
#include "texts.h"

namespace desktop {

using host::scriptui::Element;

DialogView::DialogView(host::scriptui::Window& window)
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      window_(window) {
    setModal(true);
    installEventFilter(this);
    update_all();
}

template <class Action>
void DialogView::act(const Action& action) {
    if (failure_ || !window_.is_open()) return;
    try {
        action();
    } catch (const host::scriptui::DialogError&) {
        // A handler has disabled the control in the meantime.
    } catch (...) {  // must not propagate through the toolkit
        failure_ = std::current_exception();
        loop_.quit();
        return;
    }
    if (window_.is_open()) {
        update_all();
    } else {
        hide();
        loop_.quit();
    }
}

void DialogView::run() {
    appear();
    loop_.exec();
    hide();
    if (failure_) std::rethrow_exception(std::exchange(failure_, nullptr));
}

void DialogView::appear() {
    if (const auto& location = window_.layout().location) {
        move(static_cast<int>(std::lround((*location)[0])), static_cast<int>(std::lround((*location)[1])));
    } else if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        move(screen->availableGeometry().center() - rect().center());
    }
    const auto focused = controls_.find(window_.focus());
    if (focused != controls_.end() && focused->second->focusPolicy() != Qt::NoFocus) {
        focused->second->setFocus(Qt::TabFocusReason);
    } else {
        focusNextChild();
    }
    show();
    activateWindow();
}

void DialogView::update_all() {
    setWindowTitle(to_qt(window_.text()));
    if (const auto& frame = window_.frame()) {
        setFixedSize(static_cast<int>(std::lround(frame->width)), static_cast<int>(std::lround(frame->height)));
    }
    update_children(window_, *this);
}

void DialogView::update_children(Element& container, QWidget& parent) {
    for (const auto& child : container.children()) {
        QWidget*& control = controls_[child.get()];
        if (control == nullptr) {
            control = make_control(
                *child, parent,
                {.clicked = [this](Element& element) { act([&] { window_.click(element); }); },
                 .edited = [this](Element& element,
                                  std::string text) { act([&] { window_.edit(element, std::move(text)); }); }});
            control->installEventFilter(this);
            elements_[control] = child.get();
        }
        update_control(*child, *control);
        update_children(*child, *control);
    }
}

bool DialogView::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (press(*watched, key->key(), key->isAutoRepeat())) return true;
    } else if (event->type() == QEvent::FocusIn) {
        if (const auto found = elements_.find(watched); found != elements_.end()) {
            act([&] { window_.move_focus(found->second); });
        }
    }
    return QDialog::eventFilter(watched, event);
}

// Handles keys that belong to the dialog as a whole.
bool DialogView::press(const QObject& on, int key, bool is_repeated) {
    if (key == Qt::Key_Escape) {
        if (!is_repeated) act([&] { window_.press_escape(); });
        return true;
    }
    if (key != Qt::Key_Return && key != Qt::Key_Enter) return false;
    const auto* control = qobject_cast<const QWidget*>(&on);
    if (control != nullptr && takes_enter(*control)) return false;
    if (!is_repeated) act([&] { window_.press_enter(); });
    return true;
}

void DialogView::closeEvent(QCloseEvent* event) {
    event->ignore();  // the script may refuse; run() hides the window
    reject();
}

void DialogView::reject() {
    act([&] { window_.close_box(); });
}

}  // namespace desktop
