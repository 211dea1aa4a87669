// What a run costs at least: a process that reads an animation, and as asked writes it unchanged or loads the plug-in.
//   read_animation FILE                     reads it
//   read_animation FILE --write OUT         and writes it
//   read_animation FILE --plugin MODULE     loads the module, then reads it
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string_view>

#include "document/document.h"
#include "runner/plugin_module.h"

int main(int argc, char** argv) {
    const std::string_view option = argc == 4 ? argv[2] : "";
    if (argc != 2 && option != "--write" && option != "--plugin") {
        std::cerr << "usage: read_animation FILE [--write OUT | --plugin MODULE]\n";
        return 2;
    }
    try {
        std::optional<host::runner::PluginModule> plugin;
        if (option == "--plugin") plugin.emplace(argv[3]);
        std::ifstream in(argv[1], std::ios::binary);
        std::ostringstream bytes;
        bytes << in.rdbuf();
        const lottie::document::Document document = lottie::document::Document::read(std::move(bytes).str());
        if (option == "--write") {
            std::ofstream out(argv[3], std::ios::binary);
            out << document.write();
            if (!out.flush()) return 1;
        }
        return 0;
    } catch (const std::exception& problem) {
        std::cerr << argv[1] << ": " << problem.what() << '\n';
        return 1;
    }
}
