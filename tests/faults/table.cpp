// The table of the sweep's figures.
#include "table.h"

#include <sstream>
#include <stdexcept>

namespace faults {
namespace {

constexpr const char* kIntroduction = R"(# What becomes of a failing call

Every call that the plug-in makes was failed, in every scenario of `tests/faults`, each in a run of its own, and the
rest of that run was checked against the plug-in's promises: the code that is returned, the calls that may follow, the
undo group, suites, handles and memory, the command counted as handled, and a project that one undo gives back as it
was. This page is made by the sweep:

    build/release/tests/faults/fault_table docs/faults.md

| Column | What it counts |
|---|---|
| calls, suites | calls of suites, and acquisitions of suites, when nothing fails |
| once, on | runs in which the n-th call failed alone; in which it and every later one failed; for each n |
| refused, missing | runs in which the n-th acquisition alone was refused; and all later ones of that suite |
| alone | runs in which the n-th call failed and no suite was given after it |
| returned | runs that ended with the code of the failure |
| went on | runs that dropped the failure on purpose and did everything else |
| broken | runs in which a promise was broken |

)";

constexpr const char* kHead =
    "| Scenario | calls | suites | once | on | refused | missing | alone | returned | went on | broken |\n"
    "|---|---|---|---|---|---|---|---|---|---|---|\n";

}  // namespace

std::string row_line(const std::string& title, const Figures& figures) {
    std::ostringstream out;
    out << "| " << title << " | " << figures.calls << " | " << figures.acquisitions;
    for (const std::uint64_t count : figures.swept) out << " | " << count;
    out << " | " << figures.returned << " | " << figures.dropped << " | " << figures.broken << " |";
    return out.str();
}

std::string table_page(const std::vector<Row>& rows) {
    std::string page = std::string(kIntroduction) + kHead;
    Figures total;
    for (const auto& [title, figures] : rows) {
        page += row_line(title, figures) + "\n";
        total += figures;
    }
    page += row_line("**all**", total) + "\n\n" + std::to_string(total.visits()) + " runs, " +
            std::to_string(total.broken) + " broken promises.\n";
    return page;
}

std::vector<Row> read_rows(const std::string& page) {
    std::vector<Row> rows;
    const std::size_t head = page.find(kHead);
    if (head == std::string::npos) throw std::runtime_error("the page has no table of scenarios");
    std::istringstream in(page.substr(head + std::string_view(kHead).size()));
    for (std::string line; std::getline(in, line) && line.starts_with("| ") && !line.starts_with("| **");) {
        for (char& c : line)
            if (c == '|') c = ' ';
        std::istringstream cells(line);
        Row row;
        Figures& figures = row.second;
        cells >> row.first >> figures.calls >> figures.acquisitions;
        for (std::uint64_t& count : figures.swept) cells >> count;
        cells >> figures.returned >> figures.dropped >> figures.broken;
        if (!cells) throw std::runtime_error("a bad row: " + line);
        rows.push_back(std::move(row));
    }
    return rows;
}

}  // namespace faults
