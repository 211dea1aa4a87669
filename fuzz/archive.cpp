// Any bytes as a packed file: refused with a sentence, or animations that can be changed and packed again.
#include "packed/archive.h"

#include "harness.h"

using namespace lottie::packed;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(fuzz::text_of(data, size));
    if (!Archive::is_archive(bytes)) return 0;
    try {
        const Archive archive = Archive::read(bytes);
        std::vector<std::string> texts;
        for (const PackedAnimation& animation : archive.animations()) texts.push_back(animation.text);
        fuzz::require(!texts.empty(), "an archive has an animation");
        fuzz::require(archive.write(texts) == bytes, "unchanged animations leave the very bytes");
        for (std::string& text : texts) text += ' ';
        const Archive again = Archive::read(archive.write(texts));
        fuzz::require(again.animations().size() == texts.size(), "every animation is there again");
        for (std::size_t i = 0; i < texts.size(); ++i) {
            fuzz::require(again.animations()[i].text == texts[i], "what was written is read");
        }
    } catch (const ArchiveError& error) {
        fuzz::require(*error.what() != '\0', "a refusal says why");
    }
    return 0;
}
