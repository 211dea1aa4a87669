// Sweeps every scenario in full and writes the page with the figures.
#include <exception>
#include <fstream>
#include <iostream>

#include "table.h"

int main(int argc, char** argv) try {
    if (argc != 2) {
        std::cerr << "usage: fault_table PAGE\n";
        return 2;
    }
    const faults::Subject subject{PLUGIN_MODULE, faults::exflate_promise()};
    std::vector<faults::Row> rows;
    for (const faults::Scenario& scenario : faults::scenarios()) {
        const faults::SweepReport report = faults::sweep(subject, scenario);
        for (const std::string& finding : report.findings) std::cerr << scenario.name << ": " << finding << '\n';
        rows.emplace_back(scenario.name, report.figures);
        std::cout << faults::row_line(scenario.name, report.figures) << std::endl;
    }
    std::ofstream out(argv[1], std::ios::binary);
    out << faults::table_page(rows);
    if (!out.flush()) throw std::runtime_error(std::string(argv[1]) + " cannot be written");
    return 0;
} catch (const std::exception& error) {
    std::cerr << error.what() << '\n';
    return 1;
}
