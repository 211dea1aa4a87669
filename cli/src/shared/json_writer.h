// Indented JSON for programs.
#pragma once

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/json_memory.h"
#include "base/unicode.h"
#include "cli/shared/failure.h"

namespace cli {

// Invalid UTF-8 would make the whole text invalid.
using host::base::valid_utf8;

class JsonWriter {
  public:
    JsonWriter() { writer_.SetIndent(' ', 2); }

    void begin_object() { writer_.StartObject(); }
    void end_object() { writer_.EndObject(); }
    void begin_array() { writer_.StartArray(); }
    void end_array() { writer_.EndArray(); }
    void key(const char* name) { writer_.Key(name); }

    void add(const char* name, std::string_view text);
    void add(const char* name, const char* text) { add(name, std::string_view(text)); }
    void add(const char* name, std::size_t number);
    void add(const char* name, int number);
    void add(const char* name, bool is_true);
    void add(const char* name, double number);  // at most three decimals, whole numbers without ".0"
    void add_exact(const char* name, double number);
    void add_null(const char* name);
    void add_element(std::string_view text);
    // Adds an array to the outermost object. `elements` are texts from other writers, one for each element.
    void add_array(const char* name, const std::vector<std::string>& elements);

    // With a newline at the end. Plain text: control characters are escaped, even in names.
    std::string text() const;

  private:
    using Memory = host::base::JsonMemory;
    using Buffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, Memory>;
    Buffer buffer_;
    rapidjson::PrettyWriter<Buffer, rapidjson::UTF8<>, rapidjson::UTF8<>, Memory> writer_{buffer_};
};

// "error", and if known "line" and "column".
void add_error(JsonWriter& json, const Failure& failure);

}  // namespace cli
