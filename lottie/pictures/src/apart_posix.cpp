// Work in a process of its own, by fork.
#include "pictures/apart.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <cstring>
#include <stdexcept>
#include <type_traits>

namespace lottie::pictures {
namespace {

constexpr int kDone = 0;
constexpr int kThrew = 1;

void write_all(int end, const std::string& text) {
    for (std::size_t written = 0; written < text.size();) {
        const ssize_t count = ::write(end, text.data() + written, text.size() - written);
        if (count < 0 && errno != EINTR) ::_exit(kThrew);  // nobody listens any more
        if (count > 0) written += static_cast<std::size_t>(count);
    }
}

[[noreturn]] void work_in_child(const std::function<std::string()>& work, int seconds, int says) {
    const auto time = static_cast<rlim_t>(seconds);
    const rlimit most_time{time, time + 1};
    const rlimit no_core{0, 0};
    ::setrlimit(RLIMIT_CPU, &most_time);
    ::setrlimit(RLIMIT_CORE, &no_core);
    std::signal(SIGXCPU, SIG_DFL);
    std::signal(SIGALRM, SIG_DFL);
    ::alarm(10 * static_cast<unsigned>(seconds));
    try {
        write_all(says, work());
        ::_exit(kDone);
    } catch (const std::exception& error) {
        write_all(says, error.what());
    } catch (...) {
        write_all(says, "the renderer failed");
    }
    ::_exit(kThrew);
}

std::string read_all(int end) {
    std::string text;
    std::array<char, 1 << 16> block;
    for (;;) {
        const ssize_t count = ::read(end, block.data(), block.size());
        if (count == 0 || (count < 0 && errno != EINTR)) return text;
        if (count > 0) text.append(block.data(), static_cast<std::size_t>(count));
    }
}

// The bytes of plain things, one behind the other.
template <class T>
void put(std::string& bytes, const T& thing) {
    static_assert(std::is_trivially_copyable_v<T>);
    bytes.append(reinterpret_cast<const char*>(&thing), sizeof thing);
}

void put(std::string& bytes, const Picture& picture) {
    put(bytes, picture.width);
    put(bytes, picture.height);
    bytes.append(reinterpret_cast<const char*>(picture.pixels.data()), picture.pixels.size() * sizeof(std::uint32_t));
}

class Taker {
  public:
    explicit Taker(const std::string& bytes) : bytes_(bytes) {}

    template <class T>
    T take() {
        static_assert(std::is_trivially_copyable_v<T>);
        T thing;
        take_bytes(&thing, sizeof thing);
        return thing;
    }

    Picture take_picture() {
        const int width = take<int>();
        const int height = take<int>();
        Picture picture(width, height);
        take_bytes(picture.pixels.data(), picture.pixels.size() * sizeof(std::uint32_t));
        return picture;
    }

  private:
    void take_bytes(void* to, std::size_t count) {
        if (count > bytes_.size() - at_) throw std::runtime_error("the renderer's pictures were cut short");
        std::memcpy(to, bytes_.data() + at_, count);
        at_ += count;
    }

    const std::string& bytes_;
    std::size_t at_ = 0;
};

std::string packed(const Comparison& comparison) {
    std::string bytes;
    put(bytes, comparison.frames);
    put(bytes, comparison.worst_frame);
    put(bytes, comparison.worst);
    put(bytes, comparison.looks_equal);
    put(bytes, comparison.worst_before);
    put(bytes, comparison.worst_after);
    return bytes;
}

Comparison unpacked(const std::string& bytes) {
    Taker taker(bytes);
    Comparison comparison;
    comparison.frames = taker.take<int>();
    comparison.worst_frame = taker.take<int>();
    comparison.worst = taker.take<Difference>();
    comparison.looks_equal = taker.take<bool>();
    comparison.worst_before = taker.take_picture();
    comparison.worst_after = taker.take_picture();
    return comparison;
}

}  // namespace

std::string run_apart(const std::function<std::string()>& work, int seconds) {
    std::array<int, 2> ends{};
    const auto refuse_start = [] {
        throw std::runtime_error(std::string("no process for the renderer can be started: ") + std::strerror(errno));
    };
    if (::pipe(ends.data()) != 0) refuse_start();
    const pid_t process = ::fork();
    if (process == 0) {
        ::close(ends[0]);
        work_in_child(work, seconds, ends[1]);
    }
    if (process < 0) {
        const int reason = errno;
        ::close(ends[0]);
        ::close(ends[1]);
        errno = reason;
        refuse_start();
    }
    ::close(ends[1]);
    std::string text = read_all(ends[0]);
    ::close(ends[0]);
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFSIGNALED(status)) {
        const int signal = WTERMSIG(status);
        if (signal == SIGXCPU || signal == SIGKILL)
            throw std::runtime_error("the renderer did not come to an end within " + std::to_string(seconds) +
                                     " s of the processor's time");
        if (signal == SIGALRM) throw std::runtime_error("the renderer stood still");
        throw std::runtime_error(std::string("the renderer crashed: ") + ::strsignal(signal));
    }
    if (WEXITSTATUS(status) != kDone) throw std::runtime_error(text.empty() ? "the renderer failed" : text);
    return text;
}

Comparison compare_apart(const std::string& before, const std::string& after, const std::vector<int>& look_at,
                         int seconds) {
    return unpacked(run_apart([&] { return packed(compare(Animation(before), Animation(after), look_at)); }, seconds));
}

}  // namespace lottie::pictures
