// Runs a harness over the files and folders it is given, once each, without a fuzzer: for compilers that have none.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

#include "harness.h"

namespace {

namespace fs = std::filesystem;

std::vector<fs::path> files_in(const fs::path& place) {
    if (!fs::is_directory(place)) return {place};
    std::vector<fs::path> files;
    for (const auto& entry : fs::recursive_directory_iterator(place)) {
        if (entry.is_regular_file()) files.push_back(entry.path());
    }
    std::ranges::sort(files);
    return files;
}

}  // namespace

int main(int argc, char** argv) {
    std::size_t inputs = 0;
    for (int i = 1; i < argc; ++i) {
        for (const fs::path& file : files_in(argv[i])) {
            std::ifstream stream(file, std::ios::binary);
            const std::vector<char> bytes{std::istreambuf_iterator<char>(stream), {}};
            if (!stream) {
                std::cerr << file << " cannot be read\n";
                return 1;
            }
            std::cout << file.string() << std::endl;  // flushed, so that the last line names the input of a crash
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++inputs;
        }
    }
    std::cout << inputs << " inputs\n";
    return inputs > 0 ? 0 : 1;
}
