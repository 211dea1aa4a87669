// Files put in place by a family of processes: the first one renames, so that nothing is replaced once it has ended.
#include <gmock/gmock.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "base/child_process.h"
#include "base/files.h"

namespace {

using host::base::ChildProcess;
using host::base::ProcessEnd;
using Parent = ChildProcess::Parent;
namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::UnorderedElementsAre;

void say_number(const Parent& parent) {
    parent.say(std::to_string(::getpid()) + '\n');
}

// Of a child that reports it.
pid_t number_of(ChildProcess& child) {
    while (child.said().find('\n') == std::string::npos) child.hear();
    return std::stoi(child.said());
}

class FamilyRename : public testing::Test {
  protected:
    FamilyRename() {
        std::string name = (fs::path(testing::TempDir()) / "family-rename-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
        std::ofstream(folder_ / "file") << "old";
    }
    ~FamilyRename() override { fs::remove_all(folder_); }

    void replace() const { host::base::replace_file(folder_ / "file", std::string("new"), {".part-"}); }

    std::string content() const {
        std::ifstream file(folder_ / "file");
        return {std::istreambuf_iterator<char>(file), {}};
    }

    // The beginnings of all names.
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& entry : fs::directory_iterator(folder_))
            all.push_back(entry.path().filename().string().substr(0, 5));
        return all;
    }

    // Until somebody has written the new file, and a while longer.
    void wait_for_new_file() const {
        for (int waited = 0; waited < 10'000 && content() == "old" && names().size() == 1; ++waited) ::usleep(1000);
        ::usleep(50'000);
    }

    fs::path folder_;
};

TEST_F(FamilyRename, is_done_by_the_parent_when_it_hears) {
    ChildProcess child([&](const Parent&) {
        replace();
        return 7;
    });
    wait_for_new_file();
    EXPECT_EQ(content(), "old");
    EXPECT_THAT(names(), UnorderedElementsAre("file", ".part"));
    EXPECT_EQ(child.wait().number, 7);
    EXPECT_EQ(content(), "new");
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(FamilyRename, reaches_the_head_from_a_grandchild_too) {
    ChildProcess child([&](const Parent&) {
        ChildProcess grandchild([&](const Parent&) {
            replace();
            return 8;
        });
        return grandchild.wait().number;
    });
    wait_for_new_file();
    EXPECT_EQ(content(), "old");
    EXPECT_EQ(child.wait().number, 8);
    EXPECT_EQ(content(), "new");
}

TEST_F(FamilyRename, fails_in_the_child_as_it_does_in_the_parent) {
    ChildProcess child([&](const Parent& parent) {
        try {
            replace();
        } catch (const host::base::FileError& error) {
            parent.say(error.what());
        }
        return 0;
    });
    wait_for_new_file();
    fs::remove(folder_ / "file");
    fs::create_directory(folder_ / "file");
    child.wait();
    EXPECT_EQ(child.said(), "cannot be written: Is a directory");
    EXPECT_THAT(names(), ElementsAre("file"));
}

TEST_F(FamilyRename, is_abandoned_by_a_child_that_is_asked_to_end) {
    ChildProcess child([&](const Parent& parent) {
        say_number(parent);
        replace();
        return 0;
    });
    const pid_t process = number_of(child);
    wait_for_new_file();
    ::kill(process, SIGTERM);
    for (int waited = 0; waited < 10'000 && names().size() > 1; ++waited) ::usleep(1000);
    EXPECT_THAT(names(), ElementsAre("file"));
    const ProcessEnd& end = child.wait();
    EXPECT_EQ(end.kind, ProcessEnd::Kind::crashed);
    EXPECT_EQ(end.number, SIGTERM);
    EXPECT_EQ(content(), "old");
}

TEST_F(FamilyRename, continues_after_a_signal_that_is_ignored) {
    std::signal(SIGHUP, SIG_IGN);
    ChildProcess child([&](const Parent& parent) {
        say_number(parent);
        replace();
        return 9;
    });
    const pid_t process = number_of(child);
    wait_for_new_file();
    ::kill(process, SIGHUP);
    EXPECT_EQ(child.wait().number, 9);
    EXPECT_EQ(content(), "new");
    std::signal(SIGHUP, SIG_DFL);
}

// The head of a family ends while a child has a file ready for it.
class EndedHead : public FamilyRename, public testing::WithParamInterface<int> {};

TEST_P(EndedHead, replaces_nothing_more) {
    const pid_t head = ::fork();
    if (head == 0) {
        ChildProcess child([&](const Parent&) {
            replace();
            return 0;
        });
        for (;;) ::pause();
    }
    wait_for_new_file();
    ::kill(head, GetParam());
    int status = 0;
    ASSERT_EQ(::waitpid(head, &status, 0), head);
    EXPECT_EQ(WTERMSIG(status), GetParam());
    ::usleep(50'000);
    EXPECT_EQ(content(), "old");
    // What is killed cannot clean up.
    if (GetParam() != SIGKILL) {
        EXPECT_THAT(names(), ElementsAre("file"));
    }
}

INSTANTIATE_TEST_SUITE_P(FamilyRename, EndedHead, testing::Values(SIGTERM, SIGINT, SIGHUP, SIGKILL));

}  // namespace
