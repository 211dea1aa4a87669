// The objects behind handles that plug-ins have to dispose of.
#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "AE_GeneralPlug.h"
#include "handles/handle.h"
#include "model/effect.h"
#include "model/layer.h"
#include "model/stream.h"

namespace host::suites {

struct StreamRef {
    static constexpr HandleKind kKind = HandleKind::stream;
    using Handle = AEGP_StreamRefH;
    model::Layer* layer;
    model::Effect* effect;  // null for a stream of the layer itself
    model::Stream* stream;
};

// The numbers are in the caller's record, whose streamH is the handle of this.
struct ValueRef {
    static constexpr HandleKind kKind = HandleKind::stream_value;
    using Handle = AEGP_StreamRefH;
    StreamRef of;
};

struct EffectRef {
    static constexpr HandleKind kKind = HandleKind::effect;
    using Handle = AEGP_EffectRefH;
    model::Layer* layer;
    model::Effect* effect;
};

// Deletion and undo can invalidate a reference; check before following one.
bool still_exists(const StreamRef& ref);
bool still_exists(const EffectRef& ref);

struct Collection {
    static constexpr HandleKind kKind = HandleKind::collection;
    using Handle = AEGP_Collection2H;
    std::vector<AEGP_CollectionItemV2> items;
    std::vector<RawHandle> adopted_streams;  // disposed of with the collection
};

struct KeyframeBatch {
    static constexpr HandleKind kKind = HandleKind::keyframe_batch;
    using Handle = AEGP_AddKeyframesInfoH;
    struct Pending {
        model::Time time;  // as in keyframes
        std::optional<model::Value> value;
    };
    StreamRef stream;
    std::vector<Pending> entries;
};

struct SolidFootage {
    static constexpr HandleKind kKind = HandleKind::footage;
    using Handle = AEGP_FootageH;
    std::string name;
    int width;
    int height;
    AEGP_ColorVal color;
};

// A block of memory, 16-byte aligned. Its address changes only when it is resized, locked or not.
class MemoryBlock {
  public:
    static constexpr HandleKind kKind = HandleKind::memory;
    using Handle = AEGP_MemHandle;
    enum class Content { bytes, text, utf16_text };

    MemoryBlock(std::string purpose, std::size_t size, Content content = Content::bytes);
    static MemoryBlock of_text(std::string purpose, std::string_view text);             // zero-terminated
    static MemoryBlock of_utf16_text(std::string purpose, std::string_view utf8_text);  // zero-terminated

    void* data() const { return data_.get(); }
    std::size_t size() const { return size_; }
    void resize(std::size_t size);  // keeps what fits and clears the rest
    void lock() { ++locks_; }
    bool unlock();  // false if it was not locked
    int locks() const { return locks_; }
    std::string describe() const;  // its purpose and content

  private:
    std::string content_text() const;
    static constexpr std::align_val_t kAlignment{16};
    struct Free {
        void operator()(std::byte* data) const { ::operator delete(data, kAlignment); }
    };
    using Data = std::unique_ptr<std::byte, Free>;
    static Data allocate(std::size_t size);

    std::string purpose_;
    Data data_;
    std::size_t size_;
    int locks_ = 0;
    Content content_;
};

}  // namespace host::suites
