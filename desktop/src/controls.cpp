// Widgets for the elements of a dialog.
#include "controls.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <algorithm>
#include <cmath>
#include <limits>

#include "scriptui/control_sizes.h"
#include "scriptui/window.h"
#include "texts.h"
#include "theme.h"

namespace desktop {

namespace {

using host::scriptui::Align;
using host::scriptui::Element;
using host::scriptui::ElementType;

// A frame with a title in its upper edge.
class PanelWidget : public QWidget {
  public:
    using QWidget::QWidget;
    void set_title(const QString& title) {
        if (title_ == title) return;
        title_ = title;
        update();
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(theme::kEdge);
        const QFontMetricsF metrics(font());
        const qreal line = title_.isEmpty() ? 0 : std::floor(metrics.height() / 2);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, line + 0.5, -0.5, -0.5), 3, 3);
        if (title_.isEmpty()) return;
        const QRectF label(host::scriptui::sizes::kPanelTitleIndent, 0, metrics.horizontalAdvance(title_) + 8,
                           std::ceil(metrics.height()));
        painter.fillRect(label, palette().color(QPalette::Window));
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(label, Qt::AlignCenter, title_);
    }

  private:
    QString title_;
};

Qt::Alignment horizontal(Align align) {
    if (align == Align::center) return Qt::AlignHCenter;
    return align == Align::right ? Qt::AlignRight : Qt::AlignLeft;
}

QWidget* make_edit_field(Element& element, QWidget& parent, const ControlEvents& events) {
    if (element.is_multiline()) {
        auto* field = new QPlainTextEdit(&parent);
        field->setTabChangesFocus(true);
        field->document()->setDocumentMargin(2);
        QObject::connect(field, &QPlainTextEdit::textChanged,
                         [&element, field, events] { events.edited(element, from_qt(field->toPlainText())); });
        return field;
    }
    auto* field = new QLineEdit(&parent);
    field->setMaxLength(std::numeric_limits<int>::max());
    QObject::connect(field, &QLineEdit::textEdited,
                     [&element, events](const QString& text) { events.edited(element, from_qt(text)); });
    return field;
}

template <class Button>
QWidget* make_button(Element& element, QWidget& parent, const ControlEvents& events) {
    auto* button = new Button(&parent);
    button->setAutoExclusive(false);  // the element handles its group
    QObject::connect(button, &QAbstractButton::clicked, [&element, events] { events.clicked(element); });
    return button;
}

// The label of an edit field is the text before it.
QString label_before(const Element& element) {
    const auto& siblings = element.parent()->children();
    const auto own = std::ranges::find(siblings, &element, &std::unique_ptr<Element>::get);
    if (own == siblings.begin() || (*std::prev(own))->type() != ElementType::static_text) return to_qt(element.name());
    return to_qt((*std::prev(own))->text());
}

template <class Field>
void update_justification(Field& field, const Element& element) {
    const Qt::Alignment wanted = horizontal(element.justification()) | Qt::AlignVCenter;
    if (field.alignment() != wanted) field.setAlignment(wanted);
}

void update_text(const Element& element, QWidget& control) {
    const QString text = to_qt(element.text());
    if (auto* line = qobject_cast<QLineEdit*>(&control)) {
        if (line->text() != text) line->setText(text);
        line->setReadOnly(element.is_read_only());
        update_justification(*line, element);
        control.setAccessibleName(label_before(element));
    } else if (auto* lines = qobject_cast<QPlainTextEdit*>(&control)) {
        if (lines->toPlainText() != text) lines->setPlainText(text);
        lines->setReadOnly(element.is_read_only());
        control.setAccessibleName(label_before(element));
    } else if (auto* label = qobject_cast<QLabel*>(&control)) {
        if (label->text() != text) label->setText(text);
        update_justification(*label, element);
    } else if (auto* button = qobject_cast<QAbstractButton*>(&control)) {
        const QString shown = to_label(element.text());
        if (button->text() != shown) button->setText(shown);
        button->setChecked(element.value());
        control.setAccessibleName(text.isEmpty() ? to_qt(element.name()) : text);
    } else if (auto* panel = dynamic_cast<PanelWidget*>(&control)) {
        panel->set_title(text);
        control.setAccessibleName(text);
    }
}

}  // namespace

QWidget* make_control(Element& element, QWidget& parent, const ControlEvents& events) {
    QWidget* control = nullptr;
    switch (element.type()) {
        case ElementType::window:
        case ElementType::group:
            control = new QWidget(&parent);
            break;
        case ElementType::panel:
            control = new PanelWidget(&parent);
            break;
        case ElementType::static_text: {
            auto* label = new QLabel(&parent);
            label->setTextFormat(Qt::PlainText);
            label->setWordWrap(element.is_multiline());
            control = label;
            break;
        }
        case ElementType::edit_text:
            control = make_edit_field(element, parent, events);
            break;
        case ElementType::button:
            control = make_button<QPushButton>(element, parent, events);
            static_cast<QPushButton*>(control)->setAutoDefault(false);
            break;
        case ElementType::checkbox:
            control = make_button<QCheckBox>(element, parent, events);
            break;
        case ElementType::radio_button:
            control = make_button<QRadioButton>(element, parent, events);
            break;
    }
    control->setObjectName(to_qt(element.name()));
    return control;
}

void update_control(const Element& element, QWidget& control) {
    const QSignalBlocker silent(control);
    if (const auto& frame = element.frame()) {
        const auto pixels = [](double length) { return static_cast<int>(std::lround(length)); };
        control.setGeometry(pixels(frame->left), pixels(frame->top), pixels(frame->width), pixels(frame->height));
    }
    update_text(element, control);
    control.setToolTip(to_qt(element.help_tip()));
    control.setEnabled(element.is_enabled());
    control.setVisible(element.is_visible() && element.frame());
    if (auto* button = qobject_cast<QPushButton*>(&control)) {
        button->setDefault(element.window().default_element() == &element);
    }
}

bool takes_enter(const QWidget& control) {
    const auto* lines = qobject_cast<const QPlainTextEdit*>(&control);
    return lines != nullptr && !lines->isReadOnly();
}

}  // namespace desktop
