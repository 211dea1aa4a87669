// The few declarations of Core Foundation that the plug-in uses, for machines without it.
#pragma once

#include <cstdint>

using UInt8 = std::uint8_t;
using UInt32 = std::uint32_t;
using Boolean = unsigned char;
using CFIndex = long;
using CFStringEncoding = UInt32;
using CFTypeRef = const void*;
using CFAllocatorRef = const struct CFAllocator*;
using CFStringRef = const struct CFString*;

struct CFRange {
    CFIndex location;
    CFIndex length;
};

inline constexpr CFAllocatorRef kCFAllocatorDefault = nullptr;
inline constexpr CFStringEncoding kCFStringEncodingUnicode = 0x0100;
inline constexpr CFStringEncoding kCFStringEncodingUTF32LE = 0x1C000100;

inline CFRange CFRangeMake(CFIndex location, CFIndex length) {
    return {location, length};
}

extern "C" {
CFStringRef CFStringCreateWithBytes(CFAllocatorRef allocator, const UInt8* bytes, CFIndex size,
                                    CFStringEncoding encoding, Boolean is_external);
CFIndex CFStringGetBytes(CFStringRef string, CFRange range, CFStringEncoding encoding, UInt8 loss_byte,
                         Boolean is_external, UInt8* buffer, CFIndex buffer_size, CFIndex* used);
void CFRelease(CFTypeRef object);
}
