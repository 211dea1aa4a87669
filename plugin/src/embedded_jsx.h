// The scripts that the plug-in carries inside itself.
#pragma once

#include <cstdint>

struct EmbeddedFile {
    const char* name;
    const char* contents;  // followed by a zero byte, so it is also a zero-terminated text
    std::uint64_t size;    // bytes, without that zero
};

// Ends with a row whose name is null. Made at build from plugin/scripts.
extern const EmbeddedFile embedded_files[];

// The contents of the first row of exactly that name, and its size in *size unless size is null. Null if there is no
// such row; *size is then left alone. The text belongs to the program image.
const char* find_embedded_file(const char* name, unsigned long* size);
