// The table of the sweep's figures, as docs/faults.md has it.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "sweep.h"

namespace faults {

using Row = std::pair<std::string, Figures>;

std::string table_page(const std::vector<Row>& rows);  // the whole page, with totals
std::string row_line(const std::string& title, const Figures& figures);
std::vector<Row> read_rows(const std::string& page);  // those of scenarios; throws std::runtime_error for a bad one

}  // namespace faults
