// Any bytes as a journal: damage with a place and a sentence, or lines whose values read or are refused.
#include "journal/journal.h"
#include "harness.h"
#include "journal/value_text.h"

namespace {

using namespace host::journal;

void look_into(const JournalLine& line) {
    try {
        (void)line.values();
    } catch (const BadValue& fault) {
        fuzz::require(*fault.what() != '\0', "a refusal says why");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(fuzz::text_of(data, size));
    const auto result = read(text);
    if (const auto* damage = std::get_if<Damage>(&result)) {
        fuzz::require(damage->line > 0 && !damage->sentence.empty(), "damage has a place and a sentence");
        return 0;
    }
    for (const JournalLine& line : std::get<Journal>(result).lines) look_into(line);
    return 0;
}
