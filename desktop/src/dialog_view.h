// The window of one dialog: shows its elements and passes on what the user does.
#pragma once

#include <QDialog>
#include <QEventLoop>
#include <exception>
#include <unordered_map>

#include "scriptui/window.h"

namespace desktop {

class DialogView : public QDialog {
  public:
    // The window must be open and outlive the view.
    explicit DialogView(host::scriptui::Window& window);

    // Shows the window until it is closed. Throws what a handler threw.
    void run();
    // Shows the window in the middle of the screen, or where the script put it.
    void appear();
    // Updates all elements from what scripts have changed, including new ones.
    void update_all();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

  private:
    void update_children(host::scriptui::Element& container, QWidget& parent);
    // Performs what the user did and shows the result.
    template <class Action>
    void act(const Action& action);
    bool press(const QObject& on, int key, bool is_repeated);

    host::scriptui::Window& window_;
    std::unordered_map<const host::scriptui::Element*, QWidget*> controls_;
    std::unordered_map<const QObject*, host::scriptui::Element*> elements_;
    QEventLoop loop_;
    std::exception_ptr failure_;
};

}  // namespace desktop
