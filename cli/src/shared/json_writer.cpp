// Indented JSON for programs.
#include "shared/json_writer.h"

#include "base/printable.h"
#include "shared/layer_facts.h"

namespace cli {

void JsonWriter::add(const char* name, std::string_view text) {
    writer_.Key(name);
    add_element(text);
}

void JsonWriter::add_element(std::string_view text) {
    const std::string valid = valid_utf8(text);
    writer_.String(valid.data(), static_cast<rapidjson::SizeType>(valid.size()));
}

void JsonWriter::add(const char* name, std::size_t number) {
    writer_.Key(name);
    writer_.Uint64(number);
}

void JsonWriter::add(const char* name, int number) {
    writer_.Key(name);
    writer_.Int(number);
}

void JsonWriter::add(const char* name, bool is_true) {
    writer_.Key(name);
    writer_.Bool(is_true);
}

void JsonWriter::add(const char* name, double number) {
    const std::string text = rounded_text(number);
    writer_.Key(name);
    writer_.RawValue(text.data(), text.size(), rapidjson::kNumberType);
}

void JsonWriter::add_exact(const char* name, double number) {
    writer_.Key(name);
    writer_.Double(number);
}

void JsonWriter::add_null(const char* name) {
    writer_.Key(name);
    writer_.Null();
}

void JsonWriter::add_array(const char* name, const std::vector<std::string>& elements) {
    constexpr const char* kNewLine = "\n    ";
    std::string array = "[";
    for (const std::string& element : elements) {
        array += array.size() > 1 ? std::string(",") + kNewLine : kNewLine;
        for (std::size_t i = 0; i + 1 < element.size(); ++i) {  // the array adds the newline of the last line
            if (element[i] == '\n') {
                array += kNewLine;
            } else {
                array += element[i];
            }
        }
    }
    array += elements.empty() ? "]" : "\n  ]";
    writer_.Key(name);
    writer_.RawValue(array.data(), array.size(), rapidjson::kArrayType);
}

std::string JsonWriter::text() const {
    return host::base::printable_lines({buffer_.GetString(), buffer_.GetSize()}) + '\n';
}

void add_error(JsonWriter& json, const Failure& failure) {
    json.add("error", failure.what());
    if (failure.at().line == 0) return;
    json.add("line", failure.at().line);
    json.add("column", failure.at().column);
}

}  // namespace cli
