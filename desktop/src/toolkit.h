// The toolkit's life: started with the application's look, ended with this object.
#pragma once

#include <QApplication>
#include <array>
#include <memory>

namespace desktop {

class Toolkit {
  public:
    enum class Display { desktop, none };  // none: windows are drawn in memory

    // Uses the one that the program has started, if any, and gives it the look. Throws NoDesktop.
    explicit Toolkit(Display display);

  private:
    void start(Display display);

    int argument_count_ = 1;
    std::array<char*, 4> arguments_{};
    std::unique_ptr<QApplication> application_;
};

}  // namespace desktop
