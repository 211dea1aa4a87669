// Replays in a child process.
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <new>
#include <stdexcept>

#include "difference.h"
#include "journal/replay.h"
#include "replay_host.h"

namespace host::journal {
namespace {

using SharedIndex = std::atomic<std::size_t>;
static_assert(SharedIndex::is_always_lock_free, "two processes share it");

[[noreturn]] void give_up(const char* what) {
    throw std::runtime_error(std::string("the plug-in cannot be run: ") + what + ": " + std::strerror(errno));
}

// A number that parent and child both see.
class SharedIndexPage {
  public:
    SharedIndexPage()
        : page_(::mmap(nullptr, sizeof(SharedIndex), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) {
        if (page_ == MAP_FAILED) give_up("no memory to share");
        place_ = new (page_) SharedIndex(0);
    }
    ~SharedIndexPage() { ::munmap(page_, sizeof(SharedIndex)); }
    SharedIndexPage(const SharedIndexPage&) = delete;

    SharedIndex& operator*() const { return *place_; }

  private:
    void* page_;
    SharedIndex* place_;
};

void write_all(int pipe, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(pipe, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) return;
        if (count > 0) bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

std::string read_all(int pipe) {
    std::string bytes;
    char block[4096];
    for (;;) {
        const ssize_t count = ::read(pipe, block, sizeof block);
        if (count == 0 || (count < 0 && errno != EINTR)) return bytes;
        if (count > 0) bytes.append(block, static_cast<std::size_t>(count));
    }
}

// A verdict on its way: "KIND LINE SENTENCE" and a zero, so that half of one is not taken for one.
std::string packed(const ReplayVerdict& verdict) {
    return std::to_string(static_cast<int>(verdict.kind)) + ' ' + std::to_string(verdict.line) + ' ' +
           verdict.sentence + '\0';
}

bool unpack(std::string_view bytes, ReplayVerdict& verdict) {
    if (!bytes.ends_with('\0')) return false;
    int kind = 0;
    const char* end = bytes.data() + bytes.size();
    const auto after_kind = std::from_chars(bytes.data(), end, kind).ptr;
    const auto after_line = std::from_chars(after_kind + 1, end, verdict.line).ptr;
    verdict.kind = static_cast<ReplayVerdict::Kind>(kind);
    verdict.sentence.assign(after_line + 1, end - 1);
    return true;
}

[[noreturn]] void be_child(const Journal& journal, AEGP_PluginInitFunc entry_point, SharedIndex& place, int pipe) {
    ReplayHost player(journal, entry_point, place, [pipe](const ReplayVerdict& verdict) {
        write_all(pipe, packed(verdict));
        ::_exit(0);
    });
    player.play();
}

// For a child that went without a word.
ReplayVerdict verdict_on_end(const Journal& journal, std::size_t place, int status) {
    const std::string end = WIFSIGNALED(status) ? std::string("crashed (") + ::strsignal(WTERMSIG(status)) + ')'
                                                : "ended the program with code " + std::to_string(WEXITSTATUS(status));
    if (place >= journal.lines.size()) {
        return {ReplayVerdict::Kind::same_to_cut, journal.last_line,
                "the journal is cut after line " + std::to_string(journal.last_line) +
                    "; up to there the plug-in did the same, and there it " + end};
    }
    const JournalLine& line = journal.lines[place];
    return {ReplayVerdict::Kind::differs, line.line_number,
            expected_got(in_words(line), "nothing: the plug-in " + end)};
}

}  // namespace

ReplayVerdict replay(const Journal& journal, AEGP_PluginInitFunc entry_point) {
    const SharedIndexPage place;
    int ends[2];
    if (::pipe(ends) != 0) give_up("no pipe");
    const pid_t child = ::fork();
    if (child < 0) give_up("no process");
    if (child == 0) {
        ::close(ends[0]);
        be_child(journal, entry_point, *place, ends[1]);
    }
    ::close(ends[1]);
    const std::string bytes = read_all(ends[0]);
    ::close(ends[0]);
    int status = 0;
    while (::waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    ReplayVerdict verdict{ReplayVerdict::Kind::same, 0, ""};
    return unpack(bytes, verdict) ? verdict : verdict_on_end(journal, *place, status);
}

}  // namespace host::journal
