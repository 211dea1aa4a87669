// The manifest of a .lottie archive: which animations are in it.
#include "manifest.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "packed/archive_error.h"

namespace lottie::packed {
namespace {

constexpr std::string_view kFirstFolder = "animations/";
constexpr std::string_view kSecondFolder = "a/";
constexpr std::size_t kMaxDepth = 200;

[[noreturn]] void refuse(const std::string& sentence) {
    throw ArchiveError(sentence, std::string(kManifest));
}

// Picks the version and the ids out of the whole; all else is passed over.
class Picker : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Picker> {
  public:
    bool Default() {
        refuse_as_animation();
        return true;
    }
    bool RawNumber(const char* text, rapidjson::SizeType length, bool) {
        note_version({text, length});
        return Default();
    }
    bool String(const char* text, rapidjson::SizeType length, bool) {
        note_version({text, length});
        if (is_in_animation() && key_ == "id") id_ = std::string(text, length);
        return Default();
    }
    bool Key(const char* text, rapidjson::SizeType length, bool) {
        key_.assign(text, length);
        return true;
    }
    bool StartObject() {
        if (is_in_list()) id_.reset();
        return open(false);
    }
    bool EndObject(rapidjson::SizeType) {
        close();
        if (is_in_list()) add_animation();
        return true;
    }
    bool StartArray() {
        refuse_as_animation();
        if (open_.size() == 1 && !open_.back().is_list && key_ == "animations") has_list_ = true;
        return open(true);
    }
    bool EndArray(rapidjson::SizeType) {
        close();
        return true;
    }

    bool has_list() const { return has_list_; }
    std::vector<std::string> take_ids() { return std::move(ids_); }
    bool is_second_version() const { return version_ == "2" || version_.starts_with("2."); }

  private:
    struct OpenValue {
        bool is_list;
        std::string key;  // under which it stands
    };

    bool is_in_list() const { return open_.size() == 2 && open_[1].is_list && open_[1].key == "animations"; }
    bool is_in_animation() const {
        return open_.size() == 3 && !open_[2].is_list && open_[1].is_list && open_[1].key == "animations";
    }

    bool open(bool is_list) {
        open_.push_back({is_list, key_});
        key_.clear();
        return open_.size() <= kMaxDepth;
    }
    void close() {
        key_.clear();
        open_.pop_back();
    }

    void note_version(std::string_view text) {
        if (open_.size() == 1 && key_ == "version") version_ = text;
    }
    void refuse_as_animation() const {
        if (is_in_list()) refuse("an animation in it is not an object: pack the file again");
    }
    void add_animation() {
        if (!id_ || id_->empty()) {
            refuse("an animation in it has no id: give it the name of its entry without .json");
        }
        if (std::find(ids_.begin(), ids_.end(), *id_) != ids_.end()) {
            refuse("two animations in it have one id: give each its own");
        }
        ids_.push_back(*std::move(id_));
    }

    std::vector<OpenValue> open_;
    std::string key_;
    std::string version_;
    bool has_list_ = false;
    std::optional<std::string> id_;  // of the animation that is open
    std::vector<std::string> ids_;
};

}  // namespace

Manifest read_manifest(const std::string& text) {
    // Read in place and with numbers as text: the reader then needs no stack, whose arithmetic on null pointers is not
    // sound.
    std::string copy = text;
    rapidjson::InsituStringStream stream(copy.data());
    rapidjson::Reader reader;
    Picker picker;
    constexpr unsigned kFlags =
        rapidjson::kParseInsituFlag | rapidjson::kParseNumbersAsStringsFlag | rapidjson::kParseValidateEncodingFlag;
    if (const auto result = reader.Parse<kFlags>(stream, picker); result.IsError()) {
        refuse(std::string("is not JSON: ") + rapidjson::GetParseError_En(result.Code()) + " (byte " +
               std::to_string(result.Offset() + 1) + ")");
    }
    if (!picker.has_list()) refuse("has no list named \"animations\": pack the file again");
    Manifest manifest;
    manifest.ids = picker.take_ids();
    if (manifest.ids.empty()) refuse("lists no animation: there is nothing to work on");
    manifest.folders = {kFirstFolder, kSecondFolder};
    if (picker.is_second_version()) std::swap(manifest.folders[0], manifest.folders[1]);
    return manifest;
}

}  // namespace lottie::packed
