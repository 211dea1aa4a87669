// Finding an embedded script by its file name.
#include "embedded_jsx.h"

#include <cstring>

const char* find_embedded_file(const char* name, unsigned long* size) {
    for (const EmbeddedFile* file = embedded_files; file->name != nullptr; ++file) {
        if (std::strcmp(file->name, name) == 0) {
            if (size != nullptr) *size = static_cast<unsigned long>(file->size);
            return file->contents;
        }
    }
    return nullptr;
}
