// Dialogs and message boxes as windows on the desktop.
#include "desktop/desktop_dialogs.h"

#include <vector>

#include "alert_box.h"
#include "dialog_view.h"
#include "font_measure.h"
#include "toolkit.h"

namespace desktop {

class DesktopDialogs::Impl {
  public:
    void drive(host::scriptui::Window& window) {
        DialogView view(window);
        views_.push_back(&view);
        struct Pop {
            std::vector<DialogView*>& views;
            ~Pop() { views.pop_back(); }
        } const pop{views_};
        view.run();
    }

    void show(const host::scriptui::Alert& alert) {
        // What the script has changed so far shall be seen behind the box.
        for (DialogView* view : views_) view->update_all();
        AlertBox(alert).exec();
    }

    const FontMeasure& measure() const { return measure_; }

  private:
    Toolkit toolkit_{Toolkit::Display::desktop};
    FontMeasure measure_;
    std::vector<DialogView*> views_;  // one above the other
};

DesktopDialogs::DesktopDialogs() : impl_(std::make_unique<Impl>()) {}

DesktopDialogs::~DesktopDialogs() = default;

void DesktopDialogs::drive(host::scriptui::Window& window) {
    impl_->drive(window);
}

void DesktopDialogs::show(const host::scriptui::Alert& alert) {
    impl_->show(alert);
}

const host::scriptui::TextMeasure& DesktopDialogs::text_measure() const {
    return impl_->measure();
}

}  // namespace desktop
