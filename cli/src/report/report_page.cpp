// Puts the report's page together from its files, the data, the animations and the player.
#include "report/report_page.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <stdexcept>

#include "report/report_files.h"
#include "shared/json_writer.h"

namespace cli {
namespace {

std::string file_named(std::string_view name) {
    for (const ReportFile* file = report_files; file->name != nullptr; ++file) {
        if (file->name == name) return {file->contents, file->size};
    }
    throw std::logic_error("the page has no file " + std::string(name));
}

std::string replaced(std::string text, std::string_view what, std::string_view by) {
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size())) {
        text.replace(at, what.size(), by);
    }
    return text;
}

// JSON that ends no script element and opens no comment: there, "<" stands in strings only.
std::string as_data(std::string_view json) {
    return replaced(valid_utf8(json), "<", "\\u003c");
}

// The same for a program, where these two stand in strings and regular expressions only.
std::string as_program(const std::string& program) {
    return replaced(replaced(program, "</script", "<\\/script"), "<!--", "<\\!--");
}

// Differs from page to page, but not from run to run. It need not be secret: only the page's own programs carry it,
// whatever comes from the animation is data, and the frame that runs expressions drops it first.
std::string nonce_for(std::string_view data) {
    std::uint64_t hash = 0xcbf29ce484222325;
    for (const char byte : data) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
    std::string text;
    for (int i = 0; i < 16; ++i, hash >>= 4) text += "0123456789abcdef"[hash & 15];
    return text;
}

// The template with each {{name}} replaced by the part of that name; names inside parts are not replaced.
std::string filled(std::string_view page, const std::map<std::string, std::string, std::less<>>& parts) {
    std::string result;
    for (;;) {
        const std::size_t open = page.find("{{");
        const std::size_t close = page.find("}}", open);
        if (open == std::string_view::npos || close == std::string_view::npos) break;
        result += page.substr(0, open);
        result += parts.at(std::string(page.substr(open + 2, close - open - 2)));
        page.remove_prefix(close + 2);
    }
    result += page;
    return result;
}

}  // namespace

lottie::looks::Verdict Report::verdict() const {
    auto worst_verdict = lottie::looks::Verdict::exact;
    for (const ReportedNest& nest : nests) {
        if (!nest.checked.is_kept()) worst_verdict = std::max(worst_verdict, nest.checked.report.verdict);
    }
    return worst_verdict;
}

bool Report::succeeded() const {
    return flat ? flat->succeeded : verdict() != lottie::looks::Verdict::changes;
}

std::string report_page(const Report& report, const AnimationPlayer& player) {
    const std::string data = as_data(report_data(report, player));
    return filled(file_named("page.html"), {{"nonce", nonce_for(data)},
                                            {"head.html", file_named("head.html")},
                                            {"page.css", file_named("page.css")},
                                            {"page.js", as_program(file_named("page.js"))},
                                            {"drawing.js", as_program(file_named("drawing.js"))},
                                            {"parts.js", as_program(file_named("parts.js"))},
                                            {"player.js", as_program(file_named("player.js"))},
                                            {"player.html", file_named("player.html")},
                                            {"stage.css", file_named("stage.css")},
                                            {"guard.js", as_program(file_named("guard.js"))},
                                            {"stage.js", as_program(file_named("stage.js"))},
                                            {"player", as_program(player.program)},
                                            {"data", data},
                                            {"before", as_data(report.before)},
                                            {"after", as_data(report.after)}});
}

}  // namespace cli
