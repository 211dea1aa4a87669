// A message box.
#include "alert_box.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "scriptui/control_sizes.h"
#include "texts.h"
#include "theme.h"

namespace desktop {

namespace {

constexpr int kMargin = 16;
constexpr int kSpacing = 12;
constexpr int kNarrowest = 180;
constexpr int kWidest = 380;  // of the text
constexpr int kSign = 32;

// A triangle, or a disc for errors, with an exclamation mark.
class Sign : public QWidget {
  public:
    Sign(bool is_error, QWidget* parent) : QWidget(parent), is_error_(is_error) { setFixedSize(kSign, kSign); }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QColor color = is_error_ ? theme::kError : theme::kWarning;
        painter.setPen(QPen(color, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(color);
        if (is_error_) {
            painter.drawEllipse(QRectF(3, 3, 26, 26));
        } else {
            painter.drawPolygon(QPolygonF({{16, 4}, {29, 27}, {3, 27}}));
        }
        const qreal top = is_error_ ? 9.5 : 12;
        painter.setPen(QPen(theme::kWindow, 3, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(16, top), QPointF(16, top + 6.5));
        painter.setPen(Qt::NoPen);
        painter.setBrush(theme::kWindow);
        painter.drawEllipse(QPointF(16, top + 11.5), 1.8, 1.8);
    }

  private:
    const bool is_error_;
};

}  // namespace

AlertBox::AlertBox(const host::scriptui::Alert& alert)
    : QDialog(nullptr, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint) {
    setModal(true);
    setWindowTitle(to_qt(alert.title));

    auto* message = new QLabel(to_qt(alert.message), this);
    message->setObjectName("message");
    message->setTextFormat(Qt::PlainText);
    message->setWordWrap(true);
    const QFontMetrics metrics(theme::font());
    int widest = 0;
    for (const QString& line : message->text().split('\n')) widest = std::max(widest, metrics.horizontalAdvance(line));
    message->setFixedWidth(std::clamp(widest + 2, kNarrowest, kWidest));

    auto* button = new QPushButton("OK", this);
    button->setFixedSize(100, static_cast<int>(host::scriptui::sizes::kButtonHeight));
    button->setDefault(true);
    connect(button, &QPushButton::clicked, this, &QDialog::accept);

    auto* words = new QHBoxLayout;
    words->setSpacing(kSpacing);
    words->addWidget(new Sign(alert.is_error, this), 0, Qt::AlignTop);
    words->addWidget(message, 1, Qt::AlignVCenter);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    all->setSpacing(kMargin);
    all->addLayout(words);
    all->addWidget(button, 0, Qt::AlignRight);
    all->setSizeConstraint(QLayout::SetFixedSize);

    setAccessibleName(windowTitle());
    setAccessibleDescription(message->text());
    button->setFocus();
}

}  // namespace desktop
