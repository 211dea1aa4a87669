// A baseline: reads a file into a document tree of RapidJSON and writes it again.
//   dom_parse_and_write FILE OUT
#include <rapidjson/document.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <fstream>
#include <iostream>
#include <sstream>

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: dom_parse_and_write FILE OUT\n";
        return 2;
    }
    std::ifstream in(argv[1], std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    const std::string text = std::move(bytes).str();

    rapidjson::Document document;
    document.Parse(text.data(), text.size());
    if (!in || document.HasParseError()) {
        std::cerr << argv[1] << ": cannot be parsed\n";
        return 1;
    }
    rapidjson::StringBuffer written;
    rapidjson::Writer<rapidjson::StringBuffer> writer(written);
    document.Accept(writer);
    std::ofstream out(argv[2], std::ios::binary);
    out.write(written.GetString(), static_cast<std::streamsize>(written.GetSize()));
    return out.flush() ? 0 : 1;
}
