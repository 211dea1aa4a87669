// A dialog as a picture, drawn without a desktop.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "script/dialog_driver.h"

namespace host::dialog {

struct PictureOrder {
    std::string file;                     // a PNG file
    double scale = 1;                     // of the display: dots for each pixel of the layout
    std::vector<script::Action> actions;  // done before
};

// Does the actions, whichever dialogs they come to, then draws what stands open: a dialog, which is cancelled
// afterwards, or the message box that the last action led to. To be made and used on the main thread.
class PictureDialogs : public script::DialogDriver {
  public:
    explicit PictureDialogs(PictureOrder order);
    ~PictureDialogs() override;

    void drive(script::Window& window) override;
    void show(const script::Alert& alert) override;
    const script::TextMeasure& text_measure() const override;

    // Why there is no picture, as a sentence; empty when there is one.
    std::string problem() const;

  private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

}  // namespace host::dialog
