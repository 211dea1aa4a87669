// The toolkit's life: started with the application's look, ended with this object.
#include "toolkit.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <clocale>
#include <cstdio>
#include <optional>
#include <string>

#include "dark_style.h"
#include "desktop/desktop_dialogs.h"
#include "theme.h"

namespace desktop {

namespace {

char kProgram[] = "dialog";
char kPlatformFlag[] = "-platform";
char kOffscreen[] = "offscreen";

// The toolkit's remarks on its surroundings help nobody who runs the program.
void pass_on_serious_messages(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qPrintable(message));
}

// Tries whether windows can be shown, in another process: the toolkit ends the one that asks in vain. That process
// keeps its hold on the display as long as this object lives, for some displays end with the last one who looks.
class DesktopTrial {
  public:
    DesktopTrial() {
        if (pipe(answer_) != 0 || pipe(hold_) != 0) return;
        child_ = fork();
        if (child_ == 0) try_desktop();
        close_end(answer_[1]);
        close_end(hold_[0]);
        char answer = 0;
        has_succeeded_ = child_ > 0 && read(answer_[0], &answer, 1) == 1;
    }
    ~DesktopTrial() {
        for (int* end : {&answer_[0], &answer_[1], &hold_[0], &hold_[1]}) close_end(*end);
        while (child_ > 0 && waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    DesktopTrial(const DesktopTrial&) = delete;
    DesktopTrial& operator=(const DesktopTrial&) = delete;

    bool has_succeeded() const { return has_succeeded_; }

  private:
    static void close_end(int& end) {
        if (end >= 0) close(end);
        end = -1;
    }

    // In the child: a toolkit without a display says so at length and aborts.
    [[noreturn]] void try_desktop() {
        close_end(answer_[0]);
        close_end(hold_[1]);
        const rlimit no_core_file = {0, 0};
        setrlimit(RLIMIT_CORE, &no_core_file);
        if (const int nowhere = open("/dev/null", O_RDWR); nowhere >= 0) {
            dup2(nowhere, STDOUT_FILENO);
            dup2(nowhere, STDERR_FILENO);
        }
        int count = 1;
        char* arguments[] = {kProgram, nullptr};
        const QGuiApplication application(count, arguments);
        const QString platform = QGuiApplication::platformName();
        const bool can_be_seen = platform != "offscreen" && platform != "vnc" && !platform.startsWith("minimal");
        char release = 0;
        if (can_be_seen && write(answer_[1], "y", 1) == 1) (void)!read(hold_[0], &release, 1);
        _exit(0);
    }

    int answer_[2] = {-1, -1};
    int hold_[2] = {-1, -1};
    pid_t child_ = -1;
    bool has_succeeded_ = false;
};

}  // namespace

Toolkit::Toolkit(Display display) {
    if (qApp == nullptr) start(display);
    QApplication::setStyle(new DarkStyle);
    QApplication::setPalette(theme::palette());
    QApplication::setFont(theme::font());
    // Only this program knows when it is done: a dialog may follow the last window.
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
    // The toolkit takes over the locale of the surroundings; numbers and narrow texts of this program mean its own.
    const std::string locale = std::setlocale(LC_ALL, nullptr);
    application_ = std::make_unique<QApplication>(argument_count_, arguments_.data());
    std::setlocale(LC_ALL, locale.c_str());
}

}  // namespace desktop
