// A dialog as a picture, drawn without a desktop.
#include "desktop/picture_dialogs.h"

#include <QImage>
#include <QImageWriter>
#include <cmath>

#include "alert_box.h"
#include "dialog_view.h"
#include "font_measure.h"
#include "texts.h"
#include "toolkit.h"

namespace desktop {

class PictureDialogs::Impl {
  public:
    explicit Impl(PictureOrder order)
        : order_(std::move(order)), actions_(order_.actions), toolkit_(Toolkit::Display::none) {
        QApplication::setCursorFlashTime(0);  // a cursor that blinks would make pictures differ
    }

    void drive(host::scriptui::Window& window) {
        actions_.drive(window);
        if (!actions_.problems().empty()) problem_ = actions_.problems().front();
        if (!window.is_open() || is_done()) return;
        DialogView view(window);
        view.appear();
        draw(view);
    }

    void show(const host::scriptui::Alert& alert) {
        if (actions_.actions_left() > 0 || is_done()) return;
        AlertBox box(alert);
        box.show();
        draw(box);
    }

    std::string problem() const {
        if (!problem_.empty() || is_drawn_) return problem_;
        return "no dialog stands open after these actions";
    }

    const FontMeasure& measure() const { return measure_; }

  private:
    bool is_done() const { return is_drawn_ || !problem_.empty(); }

    void draw(QWidget& window) {
        QApplication::processEvents();
        const QSize size(static_cast<int>(std::ceil(window.width() * order_.scale)),
                         static_cast<int>(std::ceil(window.height() * order_.scale)));
        QImage image(size, QImage::Format_RGB32);
        image.setDevicePixelRatio(order_.scale);
        image.fill(window.palette().color(QPalette::Window));
        window.render(&image);
        QImageWriter writer(to_qt(order_.file), "png");
        writer.setCompression(100);
        if (writer.write(image)) {
            is_drawn_ = true;
        } else {
            problem_ = "cannot write '" + order_.file + "': " + from_qt(writer.errorString());
        }
    }

    const PictureOrder order_;
    host::scriptui::ScriptedDriver actions_;
    const Toolkit toolkit_;
    const FontMeasure measure_;
    bool is_drawn_ = false;
    std::string problem_;
};

PictureDialogs::PictureDialogs(PictureOrder order) : impl_(std::make_unique<Impl>(std::move(order))) {}

PictureDialogs::~PictureDialogs() = default;

void PictureDialogs::drive(host::scriptui::Window& window) {
    impl_->drive(window);
}

void PictureDialogs::show(const host::scriptui::Alert& alert) {
    impl_->show(alert);
}

const host::scriptui::TextMeasure& PictureDialogs::text_measure() const {
    return impl_->measure();
}

std::string PictureDialogs::problem() const {
    return impl_->problem();
}

}  // namespace desktop
