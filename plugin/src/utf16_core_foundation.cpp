// UTF-16 by Core Foundation.
#include <CoreFoundation/CoreFoundation.h>

#include "platform_text.h"

static_assert(sizeof(wchar_t) == 4);

void write_utf16(const wchar_t* text, std::size_t characters, A_UTF16Char* out) {
    const CFIndex count = static_cast<CFIndex>(characters);
    CFStringRef string =
        CFStringCreateWithBytes(kCFAllocatorDefault, reinterpret_cast<const UInt8*>(text),
                                count * static_cast<CFIndex>(sizeof(wchar_t)), kCFStringEncodingUTF32LE, false);
    if (string == nullptr) {  // not valid UTF-32: an empty text
        if (characters > 0) out[0] = 0;
        return;
    }
    (void)CFStringGetBytes(string, CFRangeMake(0, count), kCFStringEncodingUnicode, 0, false,
                           reinterpret_cast<UInt8*>(out), count * static_cast<CFIndex>(sizeof(A_UTF16Char)), nullptr);
    CFRelease(string);
}
