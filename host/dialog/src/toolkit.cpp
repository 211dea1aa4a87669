// The toolkit's life: started with the application's look, ended with this object.
#include "toolkit.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "dark_style.h"
#include "theme.h"

namespace host::dialog {

namespace {

char kProgram[] = "dialog";
char kPlatformFlag[] = "-platform";
char kOffscreen[] = "offscreen";

// The toolkit's remarks on its surroundings help nobody who runs the program.
void pass_on_serious_messages(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg) std::fprintf(stderr, "%s\n", qPrintable(message));
}

// In the child: a toolkit without a display says so at length and aborts.
[[noreturn]] void try_desktop() {
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
    _exit(platform == "offscreen" || platform.startsWith("minimal") || platform == "vnc" ? 1 : 0);
}

}  // namespace

Toolkit::Toolkit(Display display) {
    if (qApp == nullptr) {
        qInstallMessageHandler(pass_on_serious_messages);
        arguments_[0] = kProgram;
        if (display == Display::none) {
            arguments_[1] = kPlatformFlag;
            arguments_[2] = kOffscreen;
            argument_count_ = 3;
        }
        application_ = std::make_unique<QApplication>(argument_count_, arguments_.data());
    }
    QApplication::setStyle(new DarkStyle);
    QApplication::setPalette(theme::palette());
    QApplication::setFont(theme::font());
    // Only this program knows when it is done: a dialog may follow the last window.
    QApplication::setQuitOnLastWindowClosed(false);
}

bool Toolkit::has_desktop() {
    if (qApp != nullptr) return true;
    const pid_t child = fork();
    if (child == 0) try_desktop();
    if (child < 0) return false;
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

}  // namespace host::dialog
