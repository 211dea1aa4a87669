// UTF-16 by Core Foundation, over a stand-in for it that holds strings as it does: in UTF-16 units.
#include <CoreFoundation/CoreFoundation.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "platform_text.h"

struct CFString {
    std::u16string units;
};

namespace {

int living_strings = 0;

}  // namespace

CFStringRef CFStringCreateWithBytes(CFAllocatorRef /*allocator*/, const UInt8* bytes, CFIndex size,
                                    CFStringEncoding encoding, Boolean is_external) {
    EXPECT_EQ(encoding, kCFStringEncodingUTF32LE);
    EXPECT_FALSE(is_external);
    EXPECT_EQ(size % 4, 0);
    std::u16string units;
    for (CFIndex i = 0; i < size; i += 4) {
        const auto character = static_cast<char32_t>(bytes[i] | (bytes[i + 1] << 8) | (bytes[i + 2] << 16)) |
                               (static_cast<char32_t>(bytes[i + 3]) << 24);
        if (character > 0x10FFFF || (character >= 0xD800 && character <= 0xDFFF)) return nullptr;
        if (character > 0xFFFF) units += static_cast<char16_t>(0xD7C0 + (character >> 10));
        units += static_cast<char16_t>(character > 0xFFFF ? 0xDC00 + (character & 0x3FF) : character);
    }
    ++living_strings;
    return new CFString{units};
}

CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding, UInt8 loss_byte,
                         Boolean is_external, UInt8* buffer, CFIndex buffer_size, CFIndex* /*used*/) {
    EXPECT_EQ(encoding, kCFStringEncodingUnicode);
    EXPECT_EQ(loss_byte, 0);
    EXPECT_FALSE(is_external);
    EXPECT_EQ(range.location, 0);
    EXPECT_LE(range.length, static_cast<CFIndex>(string->units.size())) << "a range beyond the end ends the program";
    EXPECT_GE(buffer_size, 2 * range.length);
    std::memcpy(buffer, string->units.data(), static_cast<std::size_t>(2 * range.length));
    return range.length;
}

void CFRelease(CFTypeRef object) {
    delete static_cast<CFStringRef>(object);
    --living_strings;
}

namespace {

std::u16string written(const std::wstring& text) {
    std::vector<A_UTF16Char> out(text.size() + 1, 0xBEEF);
    write_utf16(text.c_str(), text.size(), out.data());
    EXPECT_EQ(out.back(), 0xBEEF) << "the unit behind the text";
    EXPECT_EQ(living_strings, 0);
    return {out.begin(), out.end() - 1};
}

}  // namespace

TEST(CoreFoundation, writes_as_many_units_as_the_text_has_characters) {
    EXPECT_EQ(written(L""), u"");
    EXPECT_EQ(written(L"Exflate"), u"Exflate");
    EXPECT_EQ(written(L"Gr\u00f6\u00dfe \u4e2d\uffff"), u"Gr\u00f6\u00dfe \u4e2d\uffff");
    EXPECT_EQ(written(L"a\U0001F600bc"), u"a\U0001F600b");
    EXPECT_EQ(written(L"\U0001F600"), std::u16string(1, u'\xd83d'));
}

TEST(CoreFoundation, text_that_it_refuses_becomes_an_empty_one) {
    EXPECT_EQ(written(std::wstring(1, static_cast<wchar_t>(0x110000)))[0], u'\0');
    EXPECT_EQ(written(L"a" + std::wstring(1, static_cast<wchar_t>(0xD800)))[0], u'\0');
}
