// Telling animations from other files, before anything is made of them.
#include "document/recognition.h"

#include <rapidjson/reader.h>

#include <algorithm>
#include <array>
#include <string_view>

#include "base/json_memory.h"
#include "read/scan_stream.h"
#include "read/scanner.h"

namespace lottie::document {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr std::array<std::string_view, 5> kNumbers = {"fr", "ip", "op", "w", "h"};

// Ends the reading when it has seen enough.
class Recognizer : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Recognizer> {
  public:
    bool is_animation() const { return has_content_ && numbers_ >= 2; }

    bool Key(const char* key, rapidjson::SizeType length, bool) {
        if (depth_ == 1) key_ = {key, length};
        return true;
    }
    bool StartObject() { return ++depth_ <= kMaxNesting; }
    bool EndObject(rapidjson::SizeType) { return --depth_ > 0; }
    bool StartArray() {
        has_content_ = has_content_ || (depth_ == 1 && (key_ == "layers" || key_ == "assets"));
        return depth_ > 0 && ++depth_ <= kMaxNesting && !is_animation();
    }
    bool EndArray(rapidjson::SizeType) { return --depth_ > 0; }
    bool Int(int) { return number(); }
    bool Uint(unsigned) { return number(); }
    bool Int64(std::int64_t) { return number(); }
    bool Uint64(std::uint64_t) { return number(); }
    bool Double(double) { return number(); }

  private:
    bool number() {
        if (depth_ == 1 && std::find(kNumbers.begin(), kNumbers.end(), key_) != kNumbers.end()) ++numbers_;
        return !is_animation();
    }

    int depth_ = 0;
    std::string_view key_;  // of the outermost object
    bool has_content_ = false;
    int numbers_ = 0;
};

}  // namespace

bool looks_like_animation(const std::string& text) {
    const std::size_t start = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    ScanStream stream(text.c_str(), text.c_str() + start);
    Recognizer recognizer;
    rapidjson::GenericReader<rapidjson::UTF8<>, rapidjson::UTF8<>, host::base::JsonMemory>().Parse<kScanFlags>(
        stream, recognizer);
    return recognizer.is_animation();
}

}  // namespace lottie::document
