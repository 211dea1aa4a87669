// Any bytes as the text of a settings file: understood or told to be damaged; what is understood is written so that it
// reads as the same.
#include "harness.h"
#include "settings_text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace host::script;
    const std::string text(fuzz::text_of(data, size));
    const ReadSettings read = read_settings(text);
    if (read.damaged_line != 0) {
        fuzz::require(read.sections.empty(), "nothing of a damaged file is used");
        return 0;
    }
    const ReadSettings again = read_settings(write_settings(read.sections));
    fuzz::require(again.damaged_line == 0 && again.sections == read.sections, "what is written reads as the same");
    return 0;
}
