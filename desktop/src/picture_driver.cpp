// Draws a dialog into a picture, without a desktop.
#include "picture_driver.h"

#include <QImage>
#include <QImageWriter>
#include <cmath>

#include "alert_box.h"
#include "dialog_view.h"
#include "font_measure.h"
#include "texts.h"
#include "toolkit.h"

namespace desktop {

namespace {

class PictureDriver : public host::scriptui::DialogDriver {
  public:
    explicit PictureDriver(const PictureRequest& request) : request_(request), actions_(request.actions) {
        QApplication::setCursorFlashTime(0);  // a blinking cursor would make pictures differ
    }

    void drive(host::scriptui::Window& window) override {
        actions_.drive(window);
        if (!actions_.problems().empty()) problem_ = actions_.problems().front();
        if (!window.is_open() || is_done()) return;
        DialogView view(window);
        view.appear();
        draw(view);
    }

    void show(const host::scriptui::Alert& alert) override {
        if (actions_.actions_left() > 0 || is_done()) return;
        AlertBox box(alert);
        box.show();
        draw(box);
    }

    const host::scriptui::TextMeasure& text_measure() const override { return measure_; }

    std::string problem() const {
        if (!problem_.empty() || is_drawn_) return problem_;
        return "no dialog stands open after these actions";
    }

  private:
    bool is_done() const { return is_drawn_ || !problem_.empty(); }

    void draw(QWidget& window) {
        QApplication::processEvents();
        const QSize size(static_cast<int>(std::ceil(window.width() * request_.scale)),
                         static_cast<int>(std::ceil(window.height() * request_.scale)));
        QImage image(size, QImage::Format_RGB32);
        image.setDevicePixelRatio(request_.scale);
        image.fill(window.palette().color(QPalette::Window));
        window.render(&image);
        QImageWriter writer(to_qt(request_.file), "png");
        writer.setCompression(100);
        if (writer.write(image)) {
            is_drawn_ = true;
        } else {
            problem_ = "cannot write '" + request_.file + "': " + from_qt(writer.errorString());
        }
    }

    const PictureRequest& request_;
    host::scriptui::ScriptedDriver actions_;
    const Toolkit toolkit_{Toolkit::Display::none};
    const FontMeasure measure_;
    bool is_drawn_ = false;
    std::string problem_;
};

}  // namespace

std::string draw_picture(const PictureRequest& request,
                         const std::function<void(host::scriptui::DialogDriver&)>& show_dialog) {
    PictureDriver driver(request);
    show_dialog(driver);
    return driver.problem();
}

}  // namespace desktop
