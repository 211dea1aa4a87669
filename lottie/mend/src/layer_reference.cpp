// Applies to expressions that ask for a layer of their own composition by a number that is written out: the number
// becomes the one that the same layer has now.
#include <algorithm>
#include <cctype>
#include <charconv>

#include "remedies.h"

namespace lottie::mend {
namespace {

constexpr std::string_view kCall = "thisComp.layer(";

// Where the number of a call begins and ends; `from` becomes the place behind it. False if there is no further one.
bool next_number(const std::string& text, std::size_t& from, std::size_t& begin, std::size_t& end) {
    for (std::size_t at = text.find(kCall, from); at != std::string::npos; at = text.find(kCall, at + 1)) {
        if (at > 0 && (std::isalnum(static_cast<unsigned char>(text[at - 1])) || text[at - 1] == '_')) continue;
        begin = text.find_first_not_of(' ', at + kCall.size());
        if (begin == std::string::npos) return false;
        end = std::min(text.find_first_not_of("0123456789", begin), text.size());
        const std::size_t bracket = text.find_first_not_of(' ', end);
        if (end == begin || bracket == std::string::npos || text[bracket] != ')') continue;
        from = end;
        return true;
    }
    return false;
}

}  // namespace

void mend_layer_reference(Unnested& unnested, Nest& nest) {
    const auto number_now = [&](std::int64_t number) -> std::optional<std::int64_t> {
        for (CopiedLayer& copy : nest.copies) {
            if (copy.facts.ind == number && copy.now != nullptr) return unnested.number_of(*copy.now);
        }
        return std::nullopt;
    };
    for (CopiedLayer& copy : nest.copies) {
        if (copy.now == nullptr) continue;
        copy.now->rewrite_expressions([&](const std::string& text) -> std::optional<std::string> {
            std::string result;
            std::size_t copied = 0;
            std::size_t from = 0;
            std::size_t begin = 0;
            std::size_t end = 0;
            while (next_number(text, from, begin, end)) {
                std::int64_t number = 0;
                std::from_chars(text.data() + begin, text.data() + end, number);
                const auto now = number_now(number);
                if (!now) continue;
                result += text.substr(copied, begin - copied) + std::to_string(*now);
                copied = end;
            }
            if (copied == 0) return std::nullopt;
            return result + text.substr(copied);
        });
    }
}

}  // namespace lottie::mend
