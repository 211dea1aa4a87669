// A display of its own for a test, with a real mouse and keyboard, and programs that run on it.
#include "x_display.h"

#include <X11/Xlib.h>
#include <X11/keysym.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace dialog_test {

namespace {

using namespace std::chrono_literals;

// Closed in programs that other threads start meanwhile: one of them holding the writing end would keep the reader
// waiting for as long as it runs.
struct Pipe {
    Pipe() {
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    }
    ~Pipe() {
        close(ends[0]);
        if (ends[1] >= 0) close(ends[1]);
    }
    std::string read_all_until(char last) {
        std::string text;
        for (char c = 0; read(ends[0], &c, 1) == 1 && c != last;) text += c;
        return text;
    }
    void close_writing_end() {
        close(ends[1]);
        ends[1] = -1;
    }
    int ends[2] = {-1, -1};
};

pid_t start(std::vector<std::string> arguments, int out, const std::string& display) {
    std::vector<char*> pointers;
    for (std::string& argument : arguments) pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child != 0) return child;
    if (!display.empty()) setenv("DISPLAY", display.c_str(), 1);
    setenv("LC_ALL", "C.UTF-8", 1);  // what is typed is UTF-8
    dup2(out, STDOUT_FILENO);
    const int nowhere = open("/dev/null", O_RDWR);
    dup2(nowhere, STDIN_FILENO);
    dup2(nowhere, STDERR_FILENO);
    execvp(pointers.front(), pointers.data());
    _exit(98);
}

}  // namespace

XDisplay::XDisplay() {
    Pipe pipe;
    server_ = start({X_SERVER, "-displayfd", "1", "-screen", "0", "1280x800x24", "-nolisten", "tcp"}, pipe.ends[1], "");
    pipe.close_writing_end();
    const std::string number = pipe.read_all_until('\n');
    if (number.empty()) throw std::runtime_error("the X server does not start");
    name_ = ":" + number;
    connection_ = XOpenDisplay(name_.c_str());
    if (connection_ == nullptr) throw std::runtime_error("the X server takes no connection");
    set_keyboard_up();
}

// A busy machine must not change what is typed: keys do not repeat, and letters that the keyboard lacks have keys of
// their own, for which xdotool would otherwise rename keys while it types.
void XDisplay::set_keyboard_up() {
    XAutoRepeatOff(connection_);
    std::vector<KeySym> lacking = {XK_eacute, XK_EuroSign};
    int first = 0;
    int last = 0;
    XDisplayKeycodes(connection_, &first, &last);
    for (int code = last; code >= first && !lacking.empty(); --code) {
        int count = 0;
        KeySym* symbols = XGetKeyboardMapping(connection_, static_cast<KeyCode>(code), 1, &count);
        const bool is_free = std::all_of(symbols, symbols + count, [](KeySym symbol) { return symbol == NoSymbol; });
        XFree(symbols);
        if (!is_free) continue;
        XChangeKeyboardMapping(connection_, code, 1, &lacking.back(), 1);
        lacking.pop_back();
    }
    XSync(connection_, False);
}

XDisplay::~XDisplay() {
    take_away();
}

void XDisplay::take_away() {
    if (connection_ == nullptr) return;
    XCloseDisplay(connection_);
    connection_ = nullptr;
    kill(server_, SIGTERM);
    waitpid(server_, nullptr, 0);
}

std::string XDisplay::xdotool(const std::vector<std::string>& arguments) const {
    std::vector<std::string> words = {XDOTOOL};
    words.insert(words.end(), arguments.begin(), arguments.end());
    Pipe pipe;
    const pid_t child = start(words, pipe.ends[1], name_);
    pipe.close_writing_end();
    std::string line = pipe.read_all_until('\n');
    while (!pipe.read_all_until('\n').empty()) {
    }
    waitpid(child, nullptr, 0);
    return line;
}

bool XDisplay::has_window(const std::string& title) const {
    return !xdotool({"search", "--onlyvisible", "--name", "^" + title + "$"}).empty();
}

std::string XDisplay::wait_for_window(const std::string& title, const std::string& other_than) const {
    for (int i = 0; i < 200; ++i) {
        const std::string window = xdotool({"search", "--onlyvisible", "--name", "^" + title + "$"});
        if (!window.empty() && window != other_than && xdotool({"getwindowfocus"}) == window) return window;
        std::this_thread::sleep_for(50ms);
    }
    return "";
}

void XDisplay::press(const std::string& key) const {
    xdotool({"key", key});
}

void XDisplay::type(const std::string& text) const {
    xdotool({"type", "--delay", "20", text});
}

void XDisplay::click(const std::string& window, int x, int y) const {
    xdotool({"mousemove", "--window", window, std::to_string(x), std::to_string(y), "click", "1"});
}

void XDisplay::ask_to_close(const std::string& window) const {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = std::stoul(window);
    event.xclient.message_type = XInternAtom(connection_, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = static_cast<long>(XInternAtom(connection_, "WM_DELETE_WINDOW", False));
    event.xclient.data.l[1] = CurrentTime;
    XSendEvent(connection_, event.xclient.window, False, NoEventMask, &event);
    XSync(connection_, False);
}

}  // namespace dialog_test
