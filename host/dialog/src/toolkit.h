// The toolkit's life: started with the application's look, ended with this object.
#pragma once

#include <QApplication>
#include <array>
#include <memory>

namespace host::dialog {

class Toolkit {
  public:
    enum class Display { desktop, none };  // none: windows are drawn in memory

    // Uses the one that the program has started, if any, and gives it the look. Ends the process if there is no
    // desktop: ask has_desktop() before.
    explicit Toolkit(Display display);

    // Whether windows can be shown. Asks another process, which the toolkit may end.
    static bool has_desktop();

  private:
    int argument_count_ = 1;
    std::array<char*, 4> arguments_{};
    std::unique_ptr<QApplication> application_;
};

}  // namespace host::dialog
