// Draws controls in the application's dark look, in the sizes that the layout assumes.
#include "dark_style.h"

#include <QPainter>
#include <QPainterPath>
#include <QPlainTextEdit>
#include <QStyleOption>

#include "scriptui/control_sizes.h"
#include "theme.h"

namespace desktop {

namespace {

namespace sizes = host::scriptui::sizes;

constexpr qreal kFieldRadius = 2;
constexpr qreal kBoxRadius = 2.5;
constexpr qreal kRingWidth = 2;

bool is_enabled(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Enabled);
}

bool is_hovered(const QStyleOption& option) {
    return is_enabled(option) && option.state.testFlag(QStyle::State_MouseOver);
}

bool is_pressed(const QStyleOption& option) {
    return option.state.testFlag(QStyle::State_Sunken);
}

bool has_focus(const QStyleOption& option) {
    return is_enabled(option) && option.state.testFlag(QStyle::State_HasFocus);
}

// One-pixel lines have to run through the centres of pixels.
QRectF crisp(const QRectF& rect) {
    return rect.adjusted(0.5, 0.5, -0.5, -0.5);
}

void draw_edit_panel(const QStyleOption& option, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    QColor edge = is_hovered(option) ? theme::kStrongEdge : theme::kEdge;
    if (has_focus(option)) edge = theme::kAccent;
    painter.setPen(edge);
    painter.setBrush(is_enabled(option) ? theme::kField : theme::kWindow);
    painter.drawRoundedRect(crisp(option.rect), kFieldRadius, kFieldRadius);
    painter.restore();
}

QRectF glyph_rect(const QRect& control) {
    const qreal top = control.top() + (control.height() - sizes::kGlyph) / 2;
    return {control.left() + sizes::kFocusMargin, std::floor(top), sizes::kGlyph, sizes::kGlyph};
}

QRect label_rect(const QRect& control) {
    const int left = static_cast<int>(sizes::kFocusMargin + sizes::kGlyph + sizes::kGlyphGap);
    return control.adjusted(left, 0, 0, 0);
}

QColor glyph_fill(const QStyleOption& option) {
    if (is_pressed(option)) return theme::kAccentPressed;
    return is_hovered(option) ? theme::kAccentHover : theme::kAccent;
}

QColor glyph_edge(const QStyleOption& option) {
    if (!is_enabled(option)) return theme::kDisabledEdge;
    return is_hovered(option) ? theme::kText : theme::kStrongEdge;
}

void draw_check_box_glyph(const QStyleOption& option, const QRectF& glyph, QPainter& painter) {
    if (!option.state.testFlag(QStyle::State_On)) {
        painter.setPen(glyph_edge(option));
        painter.setBrush(is_enabled(option) ? theme::kField : theme::kWindow);
        painter.drawRoundedRect(crisp(glyph), kBoxRadius, kBoxRadius);
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(is_enabled(option) ? glyph_fill(option) : theme::kDisabledEdge);
    painter.drawRoundedRect(glyph, kBoxRadius, kBoxRadius);
    painter.setPen(
        QPen(is_enabled(option) ? theme::kOnAccent : theme::kWindow, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    QPainterPath tick(glyph.topLeft() + QPointF(3.2, 7.2));
    tick.lineTo(glyph.topLeft() + QPointF(5.9, 9.9));
    tick.lineTo(glyph.topLeft() + QPointF(10.8, 4.4));
    painter.drawPath(tick);
}

void draw_radio_button_glyph(const QStyleOption& option, const QRectF& glyph, QPainter& painter) {
    if (!option.state.testFlag(QStyle::State_On)) {
        painter.setPen(glyph_edge(option));
        painter.setBrush(is_enabled(option) ? theme::kField : theme::kWindow);
        painter.drawEllipse(crisp(glyph));
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(is_enabled(option) ? glyph_fill(option) : theme::kDisabledEdge);
    painter.drawEllipse(glyph);
    painter.setBrush(is_enabled(option) ? theme::kOnAccent : theme::kWindow);
    painter.drawEllipse(glyph.center(), 2.75, 2.75);
}

void draw_ring(const QRectF& around, qreal radius, QPainter& painter) {
    painter.setPen(QPen(theme::kAccentHover, kRingWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(around, radius, radius);
}

void draw_tick(const QStyleOptionButton& option, bool is_round, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF glyph = glyph_rect(option.rect);
    if (is_round) {
        draw_radio_button_glyph(option, glyph, painter);
    } else {
        draw_check_box_glyph(option, glyph, painter);
    }
    if (has_focus(option)) {
        const QRectF around = glyph.adjusted(-1, -1, 1, 1);
        draw_ring(around, is_round ? around.width() / 2 : kBoxRadius + 1, painter);
    }
    painter.setPen(option.palette.color(QPalette::WindowText));
    painter.drawText(label_rect(option.rect), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic, option.text);
    painter.restore();
}

void draw_push_button(const QStyleOptionButton& option, QPainter& painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const bool is_default = option.features.testFlag(QStyleOptionButton::DefaultButton);
    QColor fill = theme::kWindow;
    QColor edge = is_enabled(option) ? theme::kStrongEdge : theme::kDisabledEdge;
    QColor text = option.palette.color(QPalette::ButtonText);
    if (is_default && is_enabled(option)) {
        fill = edge = glyph_fill(option);
        text = theme::kOnAccent;
    } else if (is_pressed(option)) {
        fill = theme::kPressed;
    } else if (is_hovered(option)) {
        fill = theme::kHover;
        edge = theme::kText;
    }
    const QRectF pill = crisp(QRectF(option.rect).adjusted(2, 2, -2, -2));
    painter.setPen(edge);
    painter.setBrush(fill);
    painter.drawRoundedRect(pill, pill.height() / 2, pill.height() / 2);
    if (has_focus(option)) {
        const QRectF around = QRectF(option.rect).adjusted(1, 1, -1, -1);
        if (is_default) {  // blue on blue would be invisible
            painter.setPen(QPen(theme::kWindow, 1));
            painter.setBrush(Qt::NoBrush);
            painter.drawRoundedRect(around.adjusted(1.5, 1.5, -1.5, -1.5), around.height() / 2, around.height() / 2);
        }
        draw_ring(around, around.height() / 2, painter);
    }
    painter.setPen(text);
    painter.drawText(option.rect, Qt::AlignCenter | Qt::TextShowMnemonic, option.text);
    painter.restore();
}

}  // namespace

DarkStyle::DarkStyle() : QProxyStyle("Fusion") {}

void DarkStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    if (element == PE_PanelLineEdit) {
        draw_edit_panel(*option, *painter);
        return;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void DarkStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (button != nullptr && (element == CE_CheckBox || element == CE_RadioButton)) {
        draw_tick(*button, element == CE_RadioButton, *painter);
    } else if (button != nullptr && element == CE_PushButton) {
        draw_push_button(*button, *painter);
    } else if (element == CE_ShapedFrame && qobject_cast<const QPlainTextEdit*>(widget) != nullptr) {
        draw_edit_panel(*option, *painter);
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

QRect DarkStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    switch (element) {
        case SE_LineEditContents: {
            constexpr int kOwnMargin = 2;  // that the toolkit adds
            constexpr int kPadding = static_cast<int>(sizes::kEditPadding) - kOwnMargin;
            return option->rect.adjusted(kPadding, 1, -kPadding, -1);
        }
        case SE_CheckBoxClickRect:
        case SE_RadioButtonClickRect:
            return option->rect;
        default:
            return QProxyStyle::subElementRect(element, option, widget);
    }
}

int DarkStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_DefaultFrameWidth:
            return 3;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

}  // namespace desktop
