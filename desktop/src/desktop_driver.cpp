// Shows dialogs and message boxes as windows on the desktop.
#include "desktop/desktop_driver.h"

#include <vector>

#include "alert_box.h"
#include "dialog_view.h"
#include "font_measure.h"
#include "toolkit.h"

namespace desktop {

namespace {

class DesktopDriver : public host::scriptui::DialogDriver {
  public:
    void drive(host::scriptui::Window& window) override {
        DialogView view(window);
        views_.push_back(&view);
        struct Pop {
            std::vector<DialogView*>& views;
            ~Pop() { views.pop_back(); }
        } const pop{views_};
        view.run();
    }

    void show(const host::scriptui::Alert& alert) override {
        // Show what the script has changed so far behind the box.
        for (DialogView* view : views_) view->update_all();
        AlertBox(alert).exec();
    }

    const host::scriptui::TextMeasure& text_measure() const override { return measure_; }

  private:
    Toolkit toolkit_{Toolkit::Display::desktop};
    FontMeasure measure_;
    std::vector<DialogView*> views_;  // the last is the topmost
};

}  // namespace

std::unique_ptr<host::scriptui::DialogDriver> make_desktop_driver() {
    return std::make_unique<DesktopDriver>();
}

}  // namespace desktop
