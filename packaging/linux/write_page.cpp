// write_page manual|bash|fish|zsh OUTPUT [TEMPLATE]: writes one of the pages.
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>

#include "pages.h"

namespace {

std::string contents(const char* file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace

int main(int argc, char** argv) {
    const std::string kind = argc > 1 ? argv[1] : "";
    const bool is_manual = kind == "manual";
    const std::map<std::string, std::function<std::string()>> writers = {
        {"manual", [&] { return manual_page(contents(argv[3])); }},
        {"bash", bash_completions},
        {"fish", fish_completions},
        {"zsh", zsh_completions}};
    if (!writers.contains(kind) || argc != (is_manual ? 4 : 3)) {
        std::fputs("usage: write_page manual OUTPUT TEMPLATE, or write_page bash|fish|zsh OUTPUT\n", stderr);
        return 2;
    }
    std::ofstream out(argv[2], std::ios::binary);
    out << writers.at(kind)();
    out.close();
    return out ? 0 : 1;
}
