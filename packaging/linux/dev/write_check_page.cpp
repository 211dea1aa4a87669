// write_check_page OUTPUT: writes the manual page of aegp-check from its table of options.
#include <cstdio>
#include <fstream>

#include "arguments/options.h"

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: write_check_page OUTPUT\n", stderr);
        return 2;
    }
    std::ofstream out(argv[1], std::ios::binary);
    out << validator::manual_page();
    out.close();
    return out ? 0 : 1;
}
