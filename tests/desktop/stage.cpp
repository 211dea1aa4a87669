// Scripts with windows on a display in memory, operated by functions that stand in for people.
#include "stage.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

namespace dialog_test {

namespace {

// One for the whole program: before the first test and until after the last.
class ToolkitInMemory : public testing::Environment {
  public:
    void SetUp() override {
        static int count = 3;
        static char program[] = "dialog_test";
        static char flag[] = "-platform";
        static char platform[] = "offscreen";
        static char* arguments[] = {program, flag, platform, nullptr};
        application_ = std::make_unique<QApplication>(count, arguments);
    }
    void TearDown() override { application_.reset(); }

  private:
    std::unique_ptr<QApplication> application_;
};

[[maybe_unused]] testing::Environment* const toolkit = testing::AddGlobalTestEnvironment(new ToolkitInMemory);

constexpr int kMilliseconds = 5;
constexpr int kMaxIdleLooks = 400;  // at a window that nobody operates

}  // namespace

std::string Stage::run(std::string_view text, std::vector<Actions> people) {
    people_.assign(std::make_move_iterator(people.begin()), std::make_move_iterator(people.end()));
    served_ = nullptr;
    is_running_ = true;
    idle_looks_ = 0;
    QTimer::singleShot(0, &here_, [this] { look_for_windows(); });
    const host::script::ScriptResult outcome = engine_.run(text);
    is_running_ = false;
    QApplication::processEvents();
    EXPECT_FALSE(outcome.failed) << outcome.error;
    EXPECT_TRUE(people_.empty()) << people_.size() << " windows did not come up";
    return outcome.result;
}

void Stage::look_for_windows() {
    if (!is_running_) return;
    // Before anything else: what follows may open a window and wait for it.
    QTimer::singleShot(kMilliseconds, &here_, [this] { look_for_windows(); });
    auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr || !dialog->isActiveWindow()) return;
    if (dialog == served_ || people_.empty()) {
        if (++idle_looks_ < kMaxIdleLooks) return;
        ADD_FAILURE() << "the window \"" << dialog->windowTitle().toStdString() << "\" was left open";
        idle_looks_ = 0;
        dialog->close();
        return;
    }
    idle_looks_ = 0;
    served_ = dialog;
    const Actions actions = std::move(people_.front());
    people_.pop_front();
    actions(*dialog);
    // The next window may have the same address.
    if (QApplication::activeModalWidget() != dialog) served_ = nullptr;
}

std::string options_dialog() {
    std::ifstream file(OPTIONS_DIALOG_SCRIPT, std::ios::binary);
    if (!file) throw std::runtime_error("no script at " OPTIONS_DIALOG_SCRIPT);
    return {std::istreambuf_iterator<char>(file), {}};
}

QWidget& control(QDialog& dialog, const QString& name_or_text) {
    if (auto* named = dialog.findChild<QWidget*>(name_or_text)) return *named;
    for (auto* button : dialog.findChildren<QAbstractButton*>()) {
        if (button->text() == name_or_text) return *button;
    }
    for (auto* label : dialog.findChildren<QLabel*>()) {
        if (label->text() == name_or_text) return *label;
    }
    throw std::runtime_error("no control " + name_or_text.toStdString());
}

QRect place(QDialog& dialog, const QString& name_or_text) {
    QWidget& widget = control(dialog, name_or_text);
    return {widget.mapTo(&dialog, QPoint(0, 0)), widget.size()};
}

void click(QDialog& dialog, const QString& name_or_text) {
    QWidget& widget = control(dialog, name_or_text);
    QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, {10, widget.height() / 2});
}

void press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget* widget = QApplication::focusWidget();
    QTest::keyClick(widget != nullptr ? widget : QApplication::activeModalWidget(), key, modifiers);
}

void type(const QString& text) {
    for (const char32_t character : text.toUcs4()) {
        QKeyEvent down(QEvent::KeyPress, 0, Qt::NoModifier, QString::fromUcs4(&character, 1));
        QApplication::sendEvent(QApplication::focusWidget(), &down);
    }
}

QString focused() {
    const QWidget* widget = QApplication::focusWidget();
    return widget != nullptr ? widget->objectName() : QString();
}

}  // namespace dialog_test
