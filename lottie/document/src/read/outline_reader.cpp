// Reading a text once, and saying what is wrong with it as JSON.
#include "document/outline_reader.h"

#include <rapidjson/reader.h>

#include "base/json_memory.h"
#include "document/json_text.h"
#include "read/scanner.h"
#include "shared/refuse.h"

namespace lottie::document {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// The reader's complaint in words.
std::string complaint(rapidjson::ParseErrorCode code) {
    switch (code) {
        case rapidjson::kParseErrorDocumentRootNotSingular:
            return "something stands behind the end of the document";
        case rapidjson::kParseErrorValueInvalid:
            return "a value was expected here";
        case rapidjson::kParseErrorObjectMissName:
            return "a member's name in quotes was expected here";
        case rapidjson::kParseErrorObjectMissColon:
            return "a colon was expected here";
        case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
            return "a comma or a closing brace was expected here";
        case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
            return "a comma or a closing bracket was expected here";
        case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
            return "\\u must be followed by four hexadecimal digits";
        case rapidjson::kParseErrorStringUnicodeSurrogateInvalid:
            return "half a surrogate pair stands here";
        case rapidjson::kParseErrorStringEscapeInvalid:
            return "this must not stand in text, or needs a backslash";
        case rapidjson::kParseErrorStringMissQuotationMark:
            return "text without a closing quote";
        case rapidjson::kParseErrorStringInvalidEncoding:
            return "these bytes are not UTF-8";
        case rapidjson::kParseErrorNumberTooBig:
            return "a number beyond 1e308 cannot be held";
        case rapidjson::kParseErrorNumberMissFraction:
            return "digits must follow the decimal point";
        case rapidjson::kParseErrorNumberMissExponent:
            return "digits must follow the exponent";
        default:
            return "this cannot be understood";
    }
}

[[noreturn]] void refuse_json(const std::string& text, std::size_t position, rapidjson::ParseErrorCode code) {
    if (code == rapidjson::kParseErrorDocumentEmpty && position >= text.size()) {
        refuse(text, position, "", "The input is empty; an animation is a JSON object.");
    }
    // A fault at the very end means that what comes next is missing; text cut off is told at its beginning.
    const bool is_at_end = position >= text.size() || code == rapidjson::kParseErrorStringMissQuotationMark;
    if (is_at_end && text.find('\0', 0) == std::string::npos) {
        refuse(text, text.size(), "",
               "The input is not whole JSON: it ends in the middle, so the file was probably cut off.");
    }
    refuse(text, position, "", "The input is not JSON: " + complaint(code) + ".");
}

}  // namespace

DocumentOutline read_outline(const std::string& text) {
    if (text.size() > kMaxTextSize) refuse(text, 0, "", "The input is larger than 4 GB, more than can be held.");
    const std::size_t start = text.compare(0, kByteOrderMark.size(), kByteOrderMark) == 0 ? kByteOrderMark.size() : 0;
    DocumentOutline outline;
    outline.comps.emplace_back();
    ScanStream stream(text.c_str(), text.c_str() + start);
    Scanner scanner(text, stream, outline);
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, host::base::JsonMemory> reader;
    // Recursion in the reader is bounded: the scanner throws at a depth of kMaxNesting.
    const auto result = reader.Parse<kScanFlags | rapidjson::kParseValidateEncodingFlag>(stream, scanner);
    if (result.IsError()) refuse_json(text, result.Offset(), result.Code());
    if (stream.Tell() != text.size()) refuse_json(text, stream.Tell(), rapidjson::kParseErrorDocumentRootNotSingular);
    return outline;
}

}  // namespace lottie::document
