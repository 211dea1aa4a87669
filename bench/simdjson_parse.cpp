// A baseline: parses a file with simdjson.
//   simdjson_parse FILE
#include <simdjson.h>

#include <iostream>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: simdjson_parse FILE\n";
        return 2;
    }
    simdjson::dom::parser parser;
    simdjson::dom::element document;
    if (const auto error = parser.load(argv[1]).get(document)) {
        std::cerr << argv[1] << ": " << error << '\n';
        return 1;
    }
    return 0;
}
