// A limit for what is being unpacked.
#include "unpack_limit.h"

#include <utility>

#include "packed/archive.h"

namespace lottie::packed {

UnpackLimit::UnpackLimit(std::size_t packed, std::size_t most, std::string entry)
    : packed_(packed), most_(most), entry_(std::move(entry)) {}

void UnpackLimit::add(std::size_t count) {
    unpacked_ += count;
    if (unpacked_ > most_) {
        throw ArchiveError("unpacks to more than " + std::to_string(most_) +
                               " bytes: if it is to be trusted, unpack it and work on the plain file",
                           entry_);
    }
    if (unpacked_ > kFreeBytes && unpacked_ / kMaxRatio > packed_) {
        throw ArchiveError(
            "unpacks to more than " + std::to_string(kMaxRatio) +
                " times its size, as no animation does: if it is to be trusted, unpack it and work on the "
                "plain file",
            entry_);
    }
}

}  // namespace lottie::packed
