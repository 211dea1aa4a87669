// The program aegp-check.
#include <chrono>
#include <cstdio>
#include <exception>
#include <stdexcept>

#include "arguments/options.h"
#include "base/files.h"
#include "base/printable.h"
#include "base/signals.h"
#include "document/input_error.h"
#include "report/report.h"
#include "runner/utf8_locale.h"

namespace {

using namespace validator;

enum CheckExit { kPass = 0, kFail = 1, kUsage = 2, kCannotRead = 3, kInternal = 4 };

constexpr std::size_t kMostBytes = std::size_t{256} << 20;  // of a file that is read

// Something that was given cannot be read.
class Unreadable : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// At once, so that nothing of it is left to be printed by a child again.
void print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

int complain(int code, const std::string& sentence) {
    std::fprintf(stderr, "aegp-check: %s\n", host::base::printable(sentence).c_str());
    return code;
}

std::string content_of(const std::string& file) {
    try {
        return host::base::read_file(file, kMostBytes);
    } catch (const host::base::FileError& problem) {
        throw Unreadable("'" + file + "' " + problem.what());
    }
}

void read_files(CheckOptions& options) {
    if (!options.project.empty()) options.request.animation = content_of(options.project);
    if (options.declarations.empty()) return;
    try {
        options.request.declared = Declared(content_of(options.declarations));
    } catch (const DeclarationError& problem) {
        throw Unreadable("'" + options.declarations + "': " + problem.what());
    }
}

int list() {
    for (const TestFacts& test : all_tests()) {
        std::string line = std::to_string(test.strictness);
        line.resize(4, ' ');
        print(line + test.id + ": " + test.sentence + '\n');
    }
    return kPass;
}

int examine_and_tell(CheckOptions& options) {
    read_files(options);
    const auto start = std::chrono::steady_clock::now();
    const Examination examination = examine(options.request, [&](const TestResult& result) {
        if (options.format == ReportFormat::text) print(text_of(result, options));
    });
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - start;
    const Totals totals{examination, took.count()};
    if (options.format == ReportFormat::json) print(json_report(totals, options));
    if (options.format == ReportFormat::junit) print(junit_report(totals, options));
    if (options.format == ReportFormat::text)
        print(text_summary(totals) + totals.last_line() + '\n');
    else
        std::fprintf(stderr, "%s\n", totals.last_line().c_str());
    if (!examination.load_problem.empty()) return complain(kCannotRead, examination.load_problem);
    return totals.bad() == 0 ? kPass : kFail;
}

int run(CheckOptions& options) {
    switch (options.asks) {
        case CheckOptions::Asks::list:
            return list();
        case CheckOptions::Asks::help:
            print(help_text());
            return kPass;
        case CheckOptions::Asks::version:
            print(version_text());
            return kPass;
        case CheckOptions::Asks::examination:
            break;
    }
    return examine_and_tell(options);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        host::base::ignore_failed_write_signals();
        host::runner::use_utf8_locale();
        CheckOptions options = parse_arguments({argv + 1, argv + argc});
        return run(options);
    } catch (const UsageError& problem) {
        return complain(kUsage, std::string(problem.what()) + " (see aegp-check --help)");
    } catch (const std::invalid_argument& problem) {
        return complain(kUsage, problem.what());
    } catch (const Unreadable& problem) {
        return complain(kCannotRead, problem.what());
    } catch (const lottie::document::InputError& problem) {
        return complain(kCannotRead, std::string("the project: ") + problem.what());
    } catch (const std::exception& problem) {
        return complain(kInternal, problem.what());
    }
}
