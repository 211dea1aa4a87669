// Whole files.
#include "base/files.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <thread>

#include "base/signals.h"

namespace {

using namespace host::base;
namespace fs = std::filesystem;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::StartsWith;

constexpr std::size_t kLimit = std::size_t{1} << 20;

class Files : public testing::Test {
  protected:
    Files() {
        std::string name = (fs::path(testing::TempDir()) / "files-test-XXXXXX").string();
        folder_ = ::mkdtemp(name.data());
    }
    ~Files() override { fs::remove_all(folder_); }

    fs::path path(const std::string& name) const { return folder_ / name; }
    void write(const std::string& name, const std::string& bytes) const { std::ofstream(path(name)) << bytes; }
    std::string read(const std::string& name) const {
        std::ostringstream bytes;
        bytes << std::ifstream(path(name)).rdbuf();
        return bytes.str();
    }
    std::vector<std::string> names() const {
        std::vector<std::string> all;
        for (const auto& entry : fs::directory_iterator(folder_)) all.push_back(entry.path().filename().string());
        std::sort(all.begin(), all.end());
        return all;
    }
    void replace(const std::string& name, Pieces bytes) const { replace_file(path(name), bytes, {".new-"}); }

    fs::path folder_;
};

template <class Work>
std::string error_of(Work work) {
    try {
        work();
    } catch (const FileError& error) {
        return error.what();
    }
    return "no error";
}

unsigned mode_of(const fs::path& file) {
    return static_cast<unsigned>(fs::status(file).permissions());
}

TEST_F(Files, are_read_byte_for_byte) {
    const std::string bytes = std::string("a\0b\xFF\r\n", 6) + std::string(200'000, 'x');
    write("file", bytes);
    EXPECT_EQ(read_file(path("file"), kLimit), bytes);
    EXPECT_EQ(read_own_file(path("file"), kLimit), bytes);
    EXPECT_EQ(read_own_file(path("absent"), kLimit), "");
    EXPECT_EQ(read_own_file(path("file") / "below", kLimit), "");
}

TEST_F(Files, below_a_folder_are_listed_in_order_without_hidden_ones_and_links) {
    fs::create_directories(path("b/deep/er"));
    fs::create_directories(path(".git"));
    fs::create_directories(path("out"));
    for (const char* name : {"z", "b/a", "b/deep/er/x", "b.json", ".hidden", ".git/config", "out/z"}) write(name, "");
    fs::create_directory_symlink(folder_, path("b/loop"));
    fs::create_symlink(path("z"), path("link"));
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    EXPECT_THAT(files_below(folder_), ElementsAre("b.json", "b/a", "b/deep/er/x", "out/z", "z"));
    EXPECT_THAT(files_below(folder_, path("./b/../out")), ElementsAre("b.json", "b/a", "b/deep/er/x", "z"));
    EXPECT_THAT(files_below(path("b/loop")).size(), 5U);  // a link that is named is followed
    EXPECT_EQ(error_of([&] { files_below(path("absent")); }), "cannot be listed: No such file or directory");
    EXPECT_EQ(error_of([&] { files_below(path("z")); }), "cannot be listed: Not a directory");
}

TEST_F(Files, in_a_folder_that_cannot_be_listed_are_not_passed_over) {
    const std::string name(250, 'x');
    int at = ::open(folder_.c_str(), O_RDONLY | O_DIRECTORY);
    for (int depth = 0; depth < 20; ++depth) {
        ASSERT_EQ(::mkdirat(at, name.c_str(), 0700), 0);
        const int below = ::openat(at, name.c_str(), O_RDONLY | O_DIRECTORY);
        ::close(at);
        at = below;
    }
    ::close(at);
    EXPECT_THAT(error_of([&] { files_below(folder_); }),
                AllOf(StartsWith("cannot be listed: " + name + "/" + name), EndsWith(": File name too long")));
}

TEST_F(Files, that_cannot_be_read_are_refused_in_a_sentence) {
    EXPECT_EQ(error_of([&] { read_file(path("absent"), kLimit); }), "cannot be read: No such file or directory");
    EXPECT_EQ(error_of([&] { read_file(folder_, kLimit); }), "cannot be read: it is a folder");
    EXPECT_EQ(error_of([&] { read_own_file(folder_, kLimit); }), "cannot be read: Is a directory");
}

TEST_F(Files, without_end_are_refused_before_memory_is_gone) {
    EXPECT_EQ(error_of([] { read_file("/dev/zero", kLimit); }), "cannot be read: it is a device");
    EXPECT_EQ(error_of([] { read_file("/dev/null", kLimit); }), "cannot be read: it is a device");
    EXPECT_EQ(error_of([] { read_own_file("/dev/zero", kLimit); }), "cannot be read: it is not a regular file");
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    EXPECT_EQ(error_of([&] { read_own_file(path("pipe"), kLimit); }), "cannot be read: it is not a regular file");

    write("large", "");
    fs::resize_file(path("large"), std::uintmax_t{1} << 40);  // takes no place
    for (const auto read : {read_file, read_own_file}) {
        EXPECT_EQ(error_of([&] { read(path("large"), kLimit); }),
                  "cannot be read: it is larger than 1 MB, the most that is read");
        EXPECT_EQ(error_of([&] { read(path("large"), std::size_t{3} << 30); }),
                  "cannot be read: it is larger than 3 GB, the most that is read");
    }
}

TEST_F(Files, of_unknown_size_are_read_to_their_end_or_the_limit) {
    EXPECT_NE(read_file("/proc/self/maps", kLimit), "");
    EXPECT_EQ(error_of([] { read_file("/proc/self/maps", 100); }),
              "cannot be read: it is larger than 0 MB, the most that is read");
}

TEST_F(Files, of_unknown_size_take_no_more_memory_than_the_limit) {
    constexpr std::size_t kBytes = 40 << 20;
    ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
    std::thread writer([&] { std::ofstream(path("pipe")) << std::string(kBytes, 'x'); });
    const std::string bytes = read_file(path("pipe"), kBytes);
    writer.join();
    EXPECT_EQ(bytes.size(), kBytes);
    EXPECT_LE(bytes.capacity(), kBytes + (2 << 20));
}

TEST_F(Files, new_ones_get_the_usual_mode) {
    const mode_t mask = ::umask(027);
    replace("new", "text");
    ::umask(mask);
    EXPECT_EQ(read("new"), "text");
    EXPECT_EQ(mode_of(path("new")), 0640U);
    EXPECT_THAT(names(), ElementsAre("new"));
}

TEST_F(Files, old_ones_keep_their_mode_and_are_renamed_over) {
    write("old", "before");
    ::chmod(path("old").c_str(), 0604);
    fs::create_hard_link(path("old"), path("other name"));
    EXPECT_EQ(other_hard_links(path("old")), 1U);
    replace("old", "after");
    EXPECT_EQ(read("old"), "after");
    EXPECT_EQ(mode_of(path("old")), 0604U);
    EXPECT_EQ(read("other name"), "before");
    EXPECT_EQ(other_hard_links(path("old")), 0U);
    EXPECT_EQ(other_hard_links(path("absent")), 0U);
}

TEST_F(Files, keep_extended_attributes_and_access_lists) {
    write("old", "before");
    if (::setxattr(path("old").c_str(), "user.note", "kept", 4, 0) != 0) GTEST_SKIP() << "no extended attributes here";
    // Version 2: the owner may do everything, user 12345 may read, the group and others may do nothing; the mask is
    // "read".
    const unsigned char list[] = {2, 0,  0,   0,   1,   0,   6,  0, 255, 255, 255, 255, 2,   0,  4,
                                  0, 57, 48,  0,   0,   4,   0,  0, 0,   255, 255, 255, 255, 16, 0,
                                  4, 0,  255, 255, 255, 255, 32, 0, 0,   0,   255, 255, 255, 255};
    const bool has_list = ::setxattr(path("old").c_str(), "system.posix_acl_access", list, sizeof list, 0) == 0;
    const unsigned mode = mode_of(path("old"));
    replace("old", "after");
    std::string value(100, '\0');
    value.resize(static_cast<std::size_t>(
        std::max<ssize_t>(0, ::getxattr(path("old").c_str(), "user.note", value.data(), value.size()))));
    EXPECT_EQ(value, "kept");
    EXPECT_EQ(mode_of(path("old")), mode);
    if (!has_list) GTEST_SKIP() << "no access lists here";
    unsigned char now[100];
    ASSERT_EQ(::getxattr(path("old").c_str(), "system.posix_acl_access", now, sizeof now), ssize_t{sizeof list});
    EXPECT_TRUE(std::equal(std::begin(list), std::end(list), now));
}

TEST_F(Files, read_only_ones_are_replaced_only_where_that_is_meant) {
    write("old", "before");
    ::chmod(path("old").c_str(), 0444);
    EXPECT_EQ(error_of([&] {
                  replace_file(path("old"), "after", {".new-", false});
              }),
              "cannot be written: it is read-only");
    EXPECT_EQ(read("old"), "before");
    replace("old", "after");
    EXPECT_EQ(read("old"), "after");
    EXPECT_EQ(mode_of(path("old")), 0444U);
}

TEST_F(Files, links_stay_and_their_files_are_replaced) {
    fs::create_directory(path("inner"));
    write("inner/real", "before");
    fs::create_symlink("inner/real", path("middle"));
    fs::create_symlink("middle", path("link"));
    fs::create_symlink("missing", path("dangling"));
    replace("link", "after");
    replace("dangling", "made");
    EXPECT_EQ(read("inner/real"), "after");
    EXPECT_EQ(read("missing"), "made");
    for (const char* link : {"link", "middle", "dangling"}) EXPECT_TRUE(fs::is_symlink(path(link))) << link;

    fs::create_symlink("two", path("one"));
    fs::create_symlink("one", path("two"));
    EXPECT_EQ(error_of([&] { replace("one", "text"); }), "cannot be written: Too many levels of symbolic links");
    EXPECT_TRUE(fs::is_symlink(path("one")));
}

TEST_F(Files, devices_and_pipes_are_written_into) {
    replace_file("/dev/null", "text", {".new-"});
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(error_of([] { replace_file("/dev/full", "text", {".new-"}); }),
              "cannot be written: No space left on device");
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    replace_file("/dev/fd/" + std::to_string(ends[1]), "text", {".new-"});
    char bytes[4];
    EXPECT_EQ(::read(ends[0], bytes, sizeof bytes), 4);
    EXPECT_EQ(std::string(bytes, 4), "text");
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(Files, keep_their_owner_and_group_where_that_is_allowed) {
    if (::geteuid() != 0) GTEST_SKIP() << "only root may give files away";
    write("old", "before");
    ASSERT_EQ(::chown(path("old").c_str(), 12345, 23456), 0);
    ::chmod(path("old").c_str(), 0640);
    replace("old", "after");
    struct stat facts {};
    ASSERT_EQ(::stat(path("old").c_str(), &facts), 0);
    EXPECT_EQ(facts.st_uid, 12345U);
    EXPECT_EQ(facts.st_gid, 23456U);
    EXPECT_EQ(facts.st_mode & 07777U, 0640U);
}

TEST_F(Files, may_have_names_as_long_as_names_can_be) {
    const std::string name(255, 'n');
    write(name, "before");
    replace(name, "after");
    EXPECT_EQ(read(name), "after");
    EXPECT_THAT(names(), ElementsAre(name));
}

TEST_F(Files, a_folder_and_a_missing_folder_cannot_be_replaced) {
    EXPECT_EQ(error_of([&] { replace_file(folder_, "text", {".new-"}); }), "cannot be written: it is a folder");
    EXPECT_EQ(error_of([&] { replace("absent/file", "text"); }),
              "cannot be written: no file can be made in its folder: No such file or directory");
}

TEST_F(Files, names_of_one_file_are_known_whether_it_exists_or_not) {
    write("there", "");
    fs::create_symlink("there", path("link"));
    fs::create_directory(path("inner"));
    EXPECT_TRUE(are_same_file(path("there"), path("link")));
    EXPECT_TRUE(are_same_file(path("new"), path("inner/../new")));
    EXPECT_FALSE(are_same_file(path("new"), path("newer")));
    EXPECT_EQ(identity_of(path("there")), identity_of(path("link")));
    EXPECT_EQ(identity_of(path("new")), std::nullopt);
    const fs::path before = fs::current_path();
    fs::current_path(folder_);
    EXPECT_TRUE(are_same_file("new", path("new")));
    fs::current_path(before);
}

TEST_F(Files, lines_are_the_systems_as_soon_as_they_are_written) {
    LineFile lines(path("lines"));
    lines.write("one\n");
    EXPECT_EQ(read("lines"), "one\n");
    lines.write("two\n");
    EXPECT_EQ(read("lines"), "one\ntwo\n");
    EXPECT_EQ(lines.problem(), "");
    LineFile full("/dev/full");
    full.write("one\n");
    EXPECT_EQ(full.problem(), "cannot be written: No space left on device");
    EXPECT_EQ(error_of([&] { LineFile(path("absent/lines")); }), "cannot be written: No such file or directory");
}

TEST_F(Files, a_limit_on_sizes_is_an_error_and_no_signal) {
    const auto write_beyond_it = [&] {
        ignore_failed_write_signals();
        const rlimit little{100, 100};
        ::setrlimit(RLIMIT_FSIZE, &little);
        const std::string error = error_of([&] { replace("new", std::string(1000, 'x')); });
        std::_Exit(error == "cannot be written: File too large" && names().empty() ? 0 : 1);
    };
    EXPECT_EXIT(write_beyond_it(), testing::ExitedWithCode(0), "");
}

TEST_F(Files, AreToldByTheirKind) {
    write("a", "");
    fs::create_directory_symlink(folder_, path("link"));
    EXPECT_EQ(kind_of(path("a")), FileKind::file);
    EXPECT_EQ(kind_of(path("link")), FileKind::folder);
    EXPECT_EQ(kind_of("/dev/null"), FileKind::other);
    EXPECT_EQ(kind_of(path("none")), FileKind::none);
}

TEST_F(Files, HaveOneRealPathWhateverTheyAreCalled) {
    fs::create_directory_symlink(folder_, path("link"));
    EXPECT_EQ(real_path(path("link") / "none"), real_path(path("none")));
    EXPECT_TRUE(are_same_file(path("link") / "none", path("none")));
    EXPECT_FALSE(are_same_file(path("other"), path("none")));
}

}  // namespace
