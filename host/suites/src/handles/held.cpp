// Whether references are still valid; memory blocks.
#include "handles/held.h"

#include <algorithm>
#include <cstring>

#include "base/unicode.h"
#include "model/project.h"
#include "text.h"

namespace host::suites {

namespace {

bool is_living(const model::Layer& layer) {
    return layer.project().layer_by_id(layer.id()) == &layer;
}

}  // namespace

bool still_exists(const EffectRef& ref) {
    return is_living(*ref.layer) && ref.effect->is_applied();
}

bool still_exists(const StreamRef& ref) {
    return is_living(*ref.layer) && (!ref.effect || ref.effect->is_applied());
}

MemoryBlock::Data MemoryBlock::allocate(std::size_t size) {
    Data data(static_cast<std::byte*>(::operator new(std::max<std::size_t>(size, 1), kAlignment)));
    std::memset(data.get(), 0, size);
    return data;
}

MemoryBlock::MemoryBlock(std::string purpose, std::size_t size, Content content)
    : purpose_(std::move(purpose)), data_(allocate(size)), size_(size), content_(content) {}

MemoryBlock MemoryBlock::of_text(std::string purpose, std::string_view text) {
    MemoryBlock block(std::move(purpose), text.size() + 1, Content::text);
    std::memcpy(block.data(), text.data(), text.size());
    return block;
}

MemoryBlock MemoryBlock::of_utf16_text(std::string purpose, std::string_view utf8_text) {
    const std::u16string units = base::utf16_from_utf8(utf8_text);
    MemoryBlock block(std::move(purpose), (units.size() + 1) * sizeof(char16_t), Content::utf16_text);
    std::memcpy(block.data(), units.data(), units.size() * sizeof(char16_t));
    return block;
}

void MemoryBlock::resize(std::size_t size) {
    Data data = allocate(size);
    std::memcpy(data.get(), data_.get(), std::min(size, size_));
    data_ = std::move(data);
    size_ = size;
    content_ = Content::bytes;
}

bool MemoryBlock::unlock() {
    if (locks_ == 0) return false;
    --locks_;
    return true;
}

std::string MemoryBlock::describe() const {
    return quoted(purpose_) + ": " + content_text();
}

std::string MemoryBlock::content_text() const {
    switch (content_) {
        case Content::text:
            return quoted(std::string_view(static_cast<const char*>(data()), size_ - 1));
        case Content::utf16_text: {
            std::u16string units(size_ / sizeof(char16_t) - 1, u'\0');
            std::memcpy(units.data(), data(), units.size() * sizeof(char16_t));
            return quoted(base::utf8_from_utf16(units));
        }
        case Content::bytes:
            break;
    }
    return std::to_string(size_) + " bytes";
}

}  // namespace host::suites
