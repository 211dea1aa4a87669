// An animation packed with gzip.
#include "gzip_file.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>
#include <stdexcept>
#include <utility>

#include "unpack_limit.h"

namespace lottie::packed {
namespace {

constexpr int kGzipWindow = 15 + 16;  // the largest window, gzip's header and trailer
constexpr int kMemoryLevel = 9;       // of zlib, for the smallest result

constexpr const char* kWayOut = ": pack the animation again with gzip";

// zlib reads through pointers that are not const, but does not write.
Bytef* as_input(const std::string& bytes) {
    return reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
}

uInt length_of(const std::string& bytes) {
    if (bytes.size() > std::numeric_limits<uInt>::max())
        throw ArchiveError("has more than 4 GB, which no gzip file of an animation has");
    return static_cast<uInt>(bytes.size());
}

// What the header says of the file.
class Header {
  public:
    // Names and comments beyond `longest` are cut off; no extra field is longer than what it has room for here.
    explicit Header(std::size_t longest) : extra_(1 << 16), name_(longest + 1), comment_(longest + 1) {
        const auto most = static_cast<uInt>(longest);  // so that a zero is left behind each text
        fields_.extra = extra_.data();
        fields_.extra_max = static_cast<uInt>(extra_.size());
        fields_.name = name_.data();
        fields_.name_max = most;
        fields_.comment = comment_.data();
        fields_.comm_max = most;
    }
    Header(const Header&) = delete;

    gz_header* to_fill() { return &fields_; }
    gz_header fields() const { return fields_; }  // which point into this

  private:
    std::vector<Bytef> extra_, name_, comment_;
    gz_header fields_{};
};

class GzipFile : public PackedFile {
  public:
    explicit GzipFile(std::string all) : header_(std::min<std::size_t>(all.size(), kFreeBytes)) {
        bytes = std::move(all);
        animations.push_back({"", "", unpacked()});
    }

    Form form() const override { return Form::tgs; }

    std::string write(const std::vector<std::string>& texts,
                      const std::map<std::string, std::string>& /*no state machines*/) const override {
        const std::string& text = texts.front();
        z_stream stream{};
        if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kGzipWindow, kMemoryLevel, Z_DEFAULT_STRATEGY) !=
            Z_OK) {
            throw std::bad_alloc();
        }
        gz_header header = header_.fields();
        deflateSetHeader(&stream, &header);
        std::string packed(deflateBound(&stream, static_cast<uLong>(text.size())), '\0');
        stream.next_in = as_input(text);
        stream.avail_in = length_of(text);
        stream.next_out = reinterpret_cast<Bytef*>(packed.data());
        stream.avail_out = length_of(packed);
        const int result = deflate(&stream, Z_FINISH);
        packed.resize(stream.total_out);
        deflateEnd(&stream);
        if (result != Z_STREAM_END) throw std::logic_error("zlib's bound was too low");
        return packed;
    }

  private:
    std::string unpacked() {
        z_stream stream{};
        if (inflateInit2(&stream, kGzipWindow) != Z_OK) throw std::bad_alloc();
        const std::unique_ptr<z_stream, int (*)(z_stream*)> end(&stream, inflateEnd);
        inflateGetHeader(&stream, header_.to_fill());
        stream.next_in = as_input(bytes);
        stream.avail_in = length_of(bytes);
        UnpackLimit limit(bytes.size(), kMaxBytes, "");
        std::array<char, 1 << 16> block;
        std::string text;
        for (int result = Z_OK; result != Z_STREAM_END;) {
            stream.next_out = reinterpret_cast<Bytef*>(block.data());
            stream.avail_out = static_cast<uInt>(block.size());
            result = inflate(&stream, Z_NO_FLUSH);
            if (result != Z_OK && result != Z_STREAM_END) refuse(result, stream.msg);
            const std::size_t count = block.size() - stream.avail_out;
            limit.add(count);
            text.append(block.data(), count);
        }
        if (stream.avail_in > 0) refuse_rest(bytes.substr(bytes.size() - stream.avail_in, 2), stream.avail_in);
        return text;
    }

    [[noreturn]] static void refuse(int result, const char* message) {
        if (result == Z_BUF_ERROR) throw ArchiveError(std::string("is cut off inside its gzip data") + kWayOut);
        if (result == Z_MEM_ERROR) throw std::bad_alloc();
        throw ArchiveError(std::string("holds damaged gzip data") +
                           (message != nullptr ? std::string(" (") + message + ")" : "") + kWayOut);
    }

    // Players read one member only, and what they would do with the rest nobody knows.
    [[noreturn]] static void refuse_rest(const std::string& beginning, std::size_t count) {
        if (beginning == "\x1F\x8B") {
            throw ArchiveError(std::string("holds several gzip files one after the other") + kWayOut);
        }
        throw ArchiveError("goes on for " + std::to_string(count) + " bytes after its gzip data" + kWayOut);
    }

    Header header_;
};

}  // namespace

std::unique_ptr<PackedFile> read_gzip(std::string bytes) {
    return std::make_unique<GzipFile>(std::move(bytes));
}

}  // namespace lottie::packed
