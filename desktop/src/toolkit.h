// Starts the toolkit with the application's look, and ends it.
#pragma once

#include <QApplication>
#include <array>
#include <memory>

namespace desktop {

class Toolkit {
  public:
    enum class Display { desktop, none };  // none: windows are drawn in memory

    // Uses a toolkit that the program has already started. Throws NoDesktop.
    explicit Toolkit(Display display);

  private:
    void start(Display display);

    int argument_count_ = 1;
    std::array<char*, 4> arguments_{};
    std::unique_ptr<QApplication> application_;
};

}  // namespace desktop
