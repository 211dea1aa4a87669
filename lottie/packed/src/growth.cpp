// A limit for what is being unpacked.
#include "growth.h"

#include <utility>

#include "packed/archive.h"

namespace lottie::packed {

Growth::Growth(std::size_t packed, std::size_t most, std::string entry)
    : packed_(packed), most_(most), entry_(std::move(entry)) {}

void Growth::add(std::size_t count) {
    unpacked_ += count;
    if (unpacked_ > most_) {
        throw ArchiveError("unpacks to more than " + std::to_string(most_) +
                               " bytes: if it is to be trusted, unpack it and work on the plain file",
                           entry_);
    }
    if (unpacked_ > kAnyGrowth && unpacked_ / kMostGrowth > packed_) {
        throw ArchiveError(
            "unpacks to more than " + std::to_string(kMostGrowth) +
                " times its size, as no animation does: if it is to be trusted, unpack it and work on the "
                "plain file",
            entry_);
    }
}

}  // namespace lottie::packed
