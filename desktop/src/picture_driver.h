// A dialog as a picture, drawn without a desktop.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "scriptui/dialog_driver.h"

namespace desktop {

struct PictureOrder {
    std::string file;                             // a PNG file
    double scale = 1;                             // of the display: dots for each pixel of the layout
    std::vector<host::scriptui::Action> actions;  // done before
};

// Does the actions, whichever dialogs they come to, then draws what stands open: a dialog, which is cancelled
// afterwards, or the message box that the last action led to. To be made and used on the main thread.
class PictureDialogs : public host::scriptui::DialogDriver {
  public:
    explicit PictureDialogs(PictureOrder order);
    ~PictureDialogs() override;

    void drive(host::scriptui::Window& window) override;
    void show(const host::scriptui::Alert& alert) override;
    const host::scriptui::TextMeasure& text_measure() const override;

    // Why there is no picture, as a sentence; empty when there is one.
    std::string problem() const;

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace desktop
