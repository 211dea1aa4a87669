// Where the controls of the plug-in's options dialog are, read from the widgets themselves. Runs at more than one
// scale of the display: places are the same in all.
#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QCheckBox>
#include <QFontMetricsF>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "stage.h"

namespace dialog_test {
namespace {

using testing::ElementsAre;

// Looks at the dialog as it opens for the first time, and cancels it.
void look(const Actions& actions) {
    Stage stage;
    EXPECT_EQ(stage.run(options_dialog(), {[&](QDialog& dialog) {
                            actions(dialog);
                            press(Qt::Key_Escape);
                        }}),
              "");
}

QString text_of(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) return label->text();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) return button->text();
    return {};
}

// Every control with text on it.
std::vector<QWidget*> worded(QDialog& dialog) {
    std::vector<QWidget*> result;
    for (auto* widget : dialog.findChildren<QWidget*>()) {
        if (!text_of(*widget).isEmpty()) result.push_back(widget);
    }
    return result;
}

TEST(OptionsGeometry, the_display_has_the_scale_that_was_asked_for) {
    const QByteArray wanted = qgetenv("QT_SCALE_FACTOR");
    look([&](QDialog& dialog) { EXPECT_EQ(dialog.devicePixelRatioF(), wanted.isEmpty() ? 1.0 : wanted.toDouble()); });
}

TEST(OptionsGeometry, the_texts_read_in_their_order_from_the_top) {
    look([](QDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), "Exflate");
        std::vector<QWidget*> widgets = worded(dialog);
        std::ranges::sort(widgets, {}, [&](const QWidget* widget) {
            const QPoint centre = widget->mapTo(&dialog, widget->rect().center());
            return std::pair(centre.y(), centre.x());
        });
        std::vector<std::string> texts;
        for (const QWidget* widget : widgets) texts.push_back(text_of(*widget).toStdString());
        EXPECT_THAT(texts, ElementsAre("Exflated Layer Prefix", "Copy pre-comp attributes to layers",
                                       "Use this option if you would like to copy the effects and other",
                                       "attributes of the pre-comp to the layers being extracted",
                                       "Discard pre-comp attributes",
                                       "Use this option to extract all layers, but disregard the",
                                       "properties of the pre-comp layer", "Delete source after exflating",
                                       "Keep pre-comp in composition", "Prepend pre-comp name to extracted layers",
                                       "Attempt to correct layers with randomized expressions", "Ok", "Cancel"));
    });
}

TEST(OptionsGeometry, margins_of_16_surround_everything) {
    look([](QDialog& dialog) {
        EXPECT_EQ(place(dialog, "prefixGroup").topLeft(), QPoint(16, 16));
        const QRect options = place(dialog, "optionsGroup");
        EXPECT_EQ(options.left(), 16);
        EXPECT_EQ(options.left() + options.width(), dialog.width() - 16);
        EXPECT_EQ(options.top() + options.height(), dialog.height() - 16);
        EXPECT_EQ(place(dialog, "prefixGroup").width(), dialog.width() - 32);
        // The widest line decides.
        const QRect widest = place(dialog, "staticText2Line2");
        EXPECT_EQ(widest.left() + widest.width(), dialog.width() - 16);
    });
}

TEST(OptionsGeometry, the_prefix_is_in_one_row_with_its_title) {
    look([](QDialog& dialog) {
        const QRect title = place(dialog, "prefixTitle");
        const QRect input = place(dialog, "prefixInput");
        EXPECT_EQ(title.left(), 16);
        EXPECT_EQ(input.left(), title.left() + title.width() + 10);
        EXPECT_EQ(input.size(), QSize(250, 24));
        EXPECT_LE(std::abs(2 * title.top() + title.height() - (2 * input.top() + input.height())), 1);
    });
}

TEST(OptionsGeometry, the_options_form_a_column_10_apart_indented_by_20) {
    look([](QDialog& dialog) {
        const std::vector<QString> column = {"option1Group",     "option2Group",       "optionDeleteSource",
                                             "optionKeepInComp", "prependPrecompName", "fixRandomExpresions",
                                             "buttons"};
        int next = place(dialog, "prefixGroup").top() + place(dialog, "prefixGroup").height() + 10;
        for (const QString& name : column) {
            SCOPED_TRACE(name.toStdString());
            const QRect row = place(dialog, name);
            EXPECT_EQ(row.left(), 16 + 20);
            EXPECT_EQ(row.top(), next);
            next = row.top() + row.height() + 10;
        }
    });
}

TEST(OptionsGeometry, explanations_are_below_their_radio_buttons_indented_by_20) {
    look([](QDialog& dialog) {
        const QRect copy = place(dialog, "optionCopyAttributes");
        const QRect block = place(dialog, "staticText1");
        const QRect line1 = place(dialog, "staticText1Line1");
        const QRect line2 = place(dialog, "staticText1Line2");
        EXPECT_EQ(copy.left(), 36);
        EXPECT_EQ(block.left(), 36 + 20);
        EXPECT_EQ(block.width(), 400);
        EXPECT_EQ(block.top(), copy.top() + copy.height() + 10);
        EXPECT_EQ(line1.topLeft(), block.topLeft());
        EXPECT_EQ(line2.topLeft(), line1.topLeft() + QPoint(0, line1.height()));
        EXPECT_EQ(place(dialog, "option2Group").top(), line2.top() + line2.height() + 8 + 10);

        const QRect discard = place(dialog, "optionDiscardAttributes");
        const QRect words1 = place(dialog, "staticText2Line1");
        const QRect words2 = place(dialog, "staticText2Line2");
        EXPECT_EQ(discard.left(), 36);
        EXPECT_EQ(words1.left(), 36 + 20);
        EXPECT_EQ(words1.top(), discard.top() + discard.height() + 10);
        EXPECT_EQ(words2.topLeft(), words1.topLeft() + QPoint(words1.width() + 10, 0));
        EXPECT_EQ(place(dialog, "optionDeleteSource").top(), words1.top() + words1.height() + 12 + 10);
    });
}

TEST(OptionsGeometry, two_buttons_100_wide_are_on_the_right_20_below) {
    look([](QDialog& dialog) {
        const QRect ok = place(dialog, "buttonOK");
        const QRect cancel = place(dialog, "buttonCancel");
        const QRect above = place(dialog, "fixRandomExpresions");
        EXPECT_EQ(ok.width(), 100);
        EXPECT_EQ(cancel.width(), 100);
        EXPECT_EQ(cancel.left() + cancel.width(), dialog.width() - 16);
        EXPECT_EQ(cancel.left(), ok.left() + ok.width() + 10);
        EXPECT_EQ(ok.top(), above.top() + above.height() + 10 + 20);
        EXPECT_EQ(ok.top() + ok.height(), dialog.height() - 16);
    });
}

TEST(OptionsGeometry, every_text_fits_and_nothing_overlaps) {
    look([](QDialog& dialog) {
        const std::vector<QWidget*> widgets = worded(dialog);
        ASSERT_EQ(widgets.size(), 13U);
        for (const QWidget* widget : widgets) {
            SCOPED_TRACE(text_of(*widget).toStdString());
            double needed = QFontMetricsF(widget->font(), widget).horizontalAdvance(text_of(*widget));
            if (qobject_cast<const QCheckBox*>(widget) != nullptr ||
                qobject_cast<const QRadioButton*>(widget) != nullptr)
                needed += 2 + 14 + 8;
            EXPECT_LE(needed, widget->width());
            EXPECT_LE(QFontMetricsF(widget->font(), widget).height(), widget->height());
            const QRect own(widget->mapTo(&dialog, QPoint(0, 0)), widget->size());
            EXPECT_TRUE(dialog.rect().contains(own));
            for (const QWidget* other : widgets) {
                if (other == widget) continue;
                const QRect its(other->mapTo(&dialog, QPoint(0, 0)), other->size());
                EXPECT_FALSE(own.intersects(its)) << text_of(*other).toStdString();
            }
        }
    });
}

TEST(OptionsGeometry, the_window_is_centred_and_cannot_be_resized) {
    look([](QDialog& dialog) {
        EXPECT_EQ(dialog.minimumSize(), dialog.maximumSize());
        EXPECT_FALSE(dialog.windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
        EXPECT_FALSE(dialog.windowFlags().testFlag(Qt::WindowMinimizeButtonHint));
        EXPECT_TRUE(dialog.isModal());
    });
}

}  // namespace
}  // namespace dialog_test
