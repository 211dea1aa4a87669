// Work in a process of its own.
#include "base/child_process.h"

#include <gmock/gmock.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace {

using namespace std::chrono_literals;
using host::base::ChildProcess;
using host::base::ProcessEnd;
using host::base::ProcessLimits;
using Kind = ProcessEnd::Kind;
using Parent = ChildProcess::Parent;

[[noreturn]] int compute_for_ever(const Parent&) {
    for (volatile bool goes_on = true; goes_on;) {
    }
    std::abort();
}

ProcessEnd end_of(const ChildProcess::Work& work, const ProcessLimits& limits = {}) {
    ChildProcess child(work, limits);
    return child.wait();
}

TEST(ChildProcess, gives_its_message_and_its_exit_code) {
    const std::string text(1 << 20, 'x');
    ChildProcess child([&](const Parent& parent) {
        parent.say(text);
        parent.place() = 7;
        return 300;
    });
    const ProcessEnd& end = child.wait();
    EXPECT_EQ(end.kind, Kind::finished);
    EXPECT_EQ(end.number, 300);
    EXPECT_EQ(child.said(), text);
    EXPECT_EQ(child.place(), 7U);
}

TEST(ChildProcess, may_finish_in_the_midst_of_its_work) {
    const ProcessEnd end = end_of([](const Parent& parent) -> int { parent.finish(5); });
    EXPECT_EQ(end.kind, Kind::finished);
    EXPECT_EQ(end.number, 5);
}

TEST(ChildProcess, an_early_exit_is_told_from_its_end) {
    const ProcessEnd end = end_of([](const Parent&) -> int { ::_exit(0); });
    EXPECT_EQ(end.kind, Kind::exited);
    EXPECT_EQ(end.number, 0);
    EXPECT_EQ(in_words(end), "ended the program with code 0");
    EXPECT_EQ(end_of([](const Parent&) -> int { throw 1; }).kind, Kind::exited);
}

TEST(ChildProcess, a_crash_is_reported_with_its_signal) {
    const ProcessEnd end = end_of([](const Parent&) {
        std::signal(SIGSEGV, SIG_DFL);  // sanitizers would take it for their own
        std::raise(SIGSEGV);
        return 0;
    });
    EXPECT_EQ(end.kind, Kind::crashed);
    EXPECT_EQ(end.number, SIGSEGV);
    EXPECT_EQ(in_words(end), "crashed (Segmentation fault)");
}

TEST(ChildProcess, is_limited_in_the_processors_time) {
    const ProcessEnd end = end_of(compute_for_ever, {.processor_time = 1s});
    EXPECT_EQ(end.kind, Kind::out_of_processor_time);
    EXPECT_GE(end.processor_time, 500ms);  // the system counts in ticks
    const auto deaf = [](const Parent& parent) {
        std::signal(SIGXCPU, SIG_IGN);
        return compute_for_ever(parent);
    };
    EXPECT_EQ(end_of(deaf, {.processor_time = 1s}).kind, Kind::out_of_processor_time);
}

TEST(ChildProcess, is_limited_on_the_clock) {
    const auto sleep = [](const Parent&) -> int {
        for (;;) ::pause();
    };
    EXPECT_EQ(end_of(sleep, {.time = 50ms}).kind, Kind::out_of_time);
    const auto sleep_without_a_word = [&](const Parent& parent) {
        for (int fd = 3; fd < 100; ++fd) ::close(fd);  // the parent believes that it ends
        return sleep(parent);
    };
    EXPECT_EQ(end_of(sleep_without_a_word, {.time = 50ms}).kind, Kind::out_of_time);
}

TEST(ChildProcess, is_limited_in_memory_and_a_crash_for_lack_of_it_is_reported_as_such) {
    const auto grow = [](const Parent&) -> int {
        std::vector<std::string> all;
        for (;;) all.emplace_back(1 << 20, 'x');
    };
    EXPECT_EQ(end_of(grow, {.memory = std::size_t{64} << 20}).kind, Kind::out_of_memory);
    const auto grow_and_crash = [](const Parent&) -> int {
        std::signal(SIGABRT, SIG_DFL);
        for (;;) {
            void* block = std::malloc(1 << 20);
            if (block == nullptr) std::abort();
            std::memset(block, 1, 1 << 20);
        }
    };
    EXPECT_EQ(end_of(grow_and_crash, {.memory = std::size_t{64} << 20}).kind, Kind::out_of_memory);
    const auto abort = [](const Parent&) -> int { std::abort(); };
    EXPECT_EQ(end_of(abort, {.memory = std::size_t{64} << 20}).kind, Kind::crashed);
}

TEST(ChildProcess, several_are_heard_as_they_speak) {
    std::vector<std::unique_ptr<ChildProcess>> children;
    for (int i = 0; i < 3; ++i) {
        children.push_back(std::make_unique<ChildProcess>(
            [i](const Parent&) {
                std::fputs("said as an error", stderr);
                return i;
            },
            ProcessLimits{}, ChildProcess::Streams::errors_are_said));
    }
    int numbers = 0;
    while (!children.empty()) {
        std::vector<ChildProcess*> heard;
        for (const auto& child : children) heard.push_back(child.get());
        ChildProcess::hear_any(heard);
        for (auto& child : children) {
            if (!child->end()) continue;
            EXPECT_EQ(child->said(), "said as an error");
            numbers += child->end()->number;
        }
        std::erase_if(children, [](const auto& child) { return child->end().has_value(); });
    }
    EXPECT_EQ(numbers, 0 + 1 + 2);
}

TEST(ChildProcess, may_print_besides_its_message) {
    ChildProcess child(
        [](const ChildProcess::Parent& parent) {
            std::printf("out\n");
            std::fflush(stdout);
            std::fprintf(stderr, "err\n");
            parent.say("said");
            return 3;
        },
        {}, ChildProcess::Streams::apart);
    EXPECT_EQ(child.wait().number, 3);
    EXPECT_EQ(child.said(), "said");
    EXPECT_EQ(child.printed(), "out\nerr\n");
}

TEST(ChildProcess, may_print_without_end_and_only_the_beginning_is_kept) {
    ChildProcess child(
        [](const ChildProcess::Parent&) {
            for (int i = 0; i < 1'000'000; ++i) std::printf("number %d\n", i);
            return 0;
        },
        {.time = std::chrono::seconds(60)}, ChildProcess::Streams::apart);
    EXPECT_EQ(child.wait().kind, ProcessEnd::Kind::finished);
    EXPECT_TRUE(child.printed().starts_with("number 0\nnumber 1\n"));
    EXPECT_EQ(child.printed().size(), 64U << 10);
}

TEST(ChildProcess, that_copies_itself_is_heard_once) {
    ChildProcess child(
        [](const Parent& parent) {
            (void)!::fork();
            parent.say("once");
            return 4;
        },
        {}, ChildProcess::Streams::apart);
    EXPECT_EQ(child.wait().number, 4);
    EXPECT_EQ(child.said(), "once");
}

// Whether that process runs on, started by `start` in a ChildProcess that says its number.
bool does_outlive(pid_t (*start)()) {
    const auto begin = std::chrono::steady_clock::now();
    ChildProcess child(
        [start](const Parent& parent) {
            parent.say(std::to_string(start()));
            return parent.has_children() ? 1 : 0;
        },
        {}, ChildProcess::Streams::apart);
    EXPECT_EQ(child.wait().kind, ProcessEnd::Kind::finished);
    EXPECT_EQ(child.end()->number, 1);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
    const pid_t started = std::stoi(child.said());
    return ::kill(started, 0) == 0;
}

pid_t start_sleeper() {
    const pid_t process = ::fork();
    if (process == 0) {
        ::sleep(60);
        ::_exit(0);
    }
    return process;
}

// In a session of its own, and nobody's child.
pid_t start_daemon() {
    int ends[2];
    if (::pipe(ends) != 0) std::abort();
    if (::fork() == 0) {
        ::setsid();
        const pid_t sleeper = start_sleeper();
        ::_exit(::write(ends[1], &sleeper, sizeof sleeper) == sizeof sleeper ? 0 : 1);
    }
    pid_t sleeper = 0;
    if (::read(ends[0], &sleeper, sizeof sleeper) != sizeof sleeper) std::abort();
    return sleeper;
}

TEST(ChildProcess, kept_apart_takes_its_own_children_with_it) {
    EXPECT_FALSE(does_outlive(start_sleeper));
    EXPECT_FALSE(does_outlive(start_daemon));
}

TEST(ChildProcess, knows_that_it_has_no_children_left) {
    ChildProcess child(
        [](const Parent& parent) {
            if (::fork() == 0) ::_exit(0);
            while (parent.has_children()) ::usleep(1000);
            return 5;
        },
        {}, ChildProcess::Streams::apart);
    EXPECT_EQ(child.wait().number, 5);
}

TEST(ChildProcess, is_ended_with_its_object) {
    pid_t process = 0;
    {
        ChildProcess child([](const Parent& parent) -> int {
            const pid_t self = ::getpid();
            parent.say({reinterpret_cast<const char*>(&self), sizeof self});
            parent.wait_for_the_end();
        });
        while (child.said().size() < sizeof process) child.hear();
        std::memcpy(&process, child.said().data(), sizeof process);
        EXPECT_EQ(::kill(process, 0), 0);
    }
    EXPECT_EQ(::kill(process, 0), -1);
}

// A process whose child has a child; the middle one gets `signal` when all are up. Returns how long the innermost one
// lives on after the middle one has ended.
class Orphans : public testing::TestWithParam<int> {};

TEST_P(Orphans, end_with_the_process_that_is_ended) {
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);  // orphans become ours, and can be waited for
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t middle = ::fork();
    if (middle == 0) {
        ChildProcess child([&](const Parent& parent) -> int {
            ChildProcess grandchild([&](const Parent& of_grandchild) {
                const pid_t self = ::getpid();
                (void)!::write(ends[1], &self, sizeof self);
                return compute_for_ever(of_grandchild);
            });
            grandchild.wait();
            parent.finish(0);
        });
        child.wait();
        ::_exit(0);
    }
    pid_t innermost = 0;
    ASSERT_EQ(::read(ends[0], &innermost, sizeof innermost), ssize_t{sizeof innermost});
    ::kill(middle, GetParam());
    int status = 0;
    ASSERT_EQ(::waitpid(middle, &status, 0), middle);
    EXPECT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), GetParam());
    bool has_ended = false;
    for (int waited = 0; waited < 100 && !has_ended; ++waited) {
        while (::waitpid(-1, nullptr, WNOHANG) > 0) {
        }
        has_ended = ::kill(innermost, 0) != 0;
        if (!has_ended) ::usleep(1000);
    }
    EXPECT_TRUE(has_ended);
    ::close(ends[0]);
    ::close(ends[1]);
}

INSTANTIATE_TEST_SUITE_P(ChildProcess, Orphans, testing::Values(SIGTERM, SIGINT, SIGHUP, SIGKILL, SIGQUIT));

TEST(ChildProcess, a_signal_that_is_ignored_stays_ignored) {
    std::signal(SIGHUP, SIG_IGN);
    end_of([](const Parent&) { return 0; });
    EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
    end_of([](const Parent&) { return 0; });
    EXPECT_EQ(std::signal(SIGTERM, SIG_DFL), SIG_DFL);
}

}  // namespace
