// Starts the toolkit with the application's look.
#include "toolkit.h"

#include <clocale>
#include <cstdio>
#include <optional>
#include <string>

#include "base/child_process.h"
#include "dark_style.h"
#include "desktop/desktop_driver.h"
#include "theme.h"

namespace desktop {

namespace {

using host::base::ChildProcess;

char kProgram[] = "dialog";
char kPlatformFlag[] = "-platform";
char kOffscreen[] = "offscreen";

// The toolkit's remarks on its environment do not help users.
void pass_on_serious_messages(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qPrintable(message));
}

// In another process: a toolkit without a display says so at length and aborts.
int try_desktop(const ChildProcess::Parent& parent) {
    int count = 1;
    char* arguments[] = {kProgram, nullptr};
    const QGuiApplication application(count, arguments);
    const QString platform = QGuiApplication::platformName();
    const bool can_be_seen = platform != "offscreen" && platform != "vnc" && !platform.startsWith("minimal");
    if (!can_be_seen) return 0;
    parent.say("y");
    parent.wait_for_the_end();
}

// Tries whether windows can be shown. The process keeps its hold on the display as long as this object lives, for some
// displays end when their last client leaves.
class DesktopTrial {
  public:
    DesktopTrial() {
        try {
            process_.emplace(try_desktop, host::base::ProcessLimits{}, ChildProcess::Streams::nowhere);
            while (!process_->end() && process_->said().empty()) process_->hear();
        } catch (const host::base::NoProcess&) {
            // Then it has not succeeded.
        }
    }

    bool has_succeeded() const { return process_ && !process_->end(); }

  private:
    std::optional<ChildProcess> process_;
};

}  // namespace

Toolkit::Toolkit(Display display) {
    if (qApp == nullptr) start(display);
    QApplication::setStyle(new DarkStyle);
    QApplication::setPalette(theme::palette());
    QApplication::setFont(theme::font());
    // The program decides when it is done: another dialog may follow the last window.
    QApplication::setQuitOnLastWindowClosed(false);
}

void Toolkit::start(Display display) {
    std::optional<DesktopTrial> trial;
    arguments_[0] = kProgram;
    if (display == Display::none) {
        arguments_[1] = kPlatformFlag;
        arguments_[2] = kOffscreen;
        argument_count_ = 3;
    } else if (!trial.emplace().has_succeeded()) {
        throw NoDesktop("no window can be shown: there is no desktop that can be reached");
    }
    qInstallMessageHandler(pass_on_serious_messages);
    // The toolkit switches to the environment's locale; this program's numbers and narrow texts need their own.
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    application_ = std::make_unique<QApplication>(argument_count_, arguments_.data());
    std::setlocale(LC_ALL, locale.c_str());
}

}  // namespace desktop
