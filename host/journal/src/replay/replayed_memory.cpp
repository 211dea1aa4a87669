// Memory handles during a replay.
#include "replay/replayed_memory.h"

#include <cstring>

#include "journal/value_text.h"

namespace host::journal {
namespace {

constexpr std::size_t kMaxMemory = std::size_t{1} << 30;

}  // namespace

void ReplayedMemory::fill(std::uint64_t handle, const JournalValue& content) {
    if (content.kind != JournalValue::Kind::bytes && content.kind != JournalValue::Kind::units)
        throw BadValue("the content of memory is expected");
    Block& block = blocks_[handle];
    const std::size_t others = used_ - block.known.size();
    if (content.number > kMaxMemory || content.text.size() + content.number > kMaxMemory - others)
        throw BadValue("the plug-in was given more than a gigabyte of memory");
    const std::size_t old_size = block.known.size();
    block.known = content.text;
    block.known.append(static_cast<std::size_t>(content.number), '\0');
    if (!block.bytes || block.known.size() != old_size) block.bytes = std::make_unique<char[]>(block.known.size() + 1);
    std::memcpy(block.bytes.get(), block.known.data(), block.known.size());
    used_ = others + block.known.size();
}

void ReplayedMemory::forget(std::uint64_t handle) {
    const auto block = blocks_.find(handle);
    if (block == blocks_.end()) return;
    used_ -= block->second.known.size();
    blocks_.erase(block);
}

void* ReplayedMemory::address_of(std::uint64_t handle) const {
    const auto block = blocks_.find(handle);
    if (block == blocks_.end()) throw BadValue("memory is locked whose content was never told");
    return block->second.bytes.get();
}

bool ReplayedMemory::has_changed(std::uint64_t handle) const {
    const auto block = blocks_.find(handle);
    return block != blocks_.end() && content_of(handle) != block->second.known;
}

std::string_view ReplayedMemory::content_of(std::uint64_t handle) const {
    const auto block = blocks_.find(handle);
    if (block == blocks_.end()) return {};
    return {block->second.bytes.get(), block->second.known.size()};
}

void ReplayedMemory::accept_change(std::uint64_t handle) {
    if (const auto block = blocks_.find(handle); block != blocks_.end()) block->second.known = content_of(handle);
}

}  // namespace host::journal
