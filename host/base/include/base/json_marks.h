// The quotes and brackets of a JSON text, found sixteen characters at a time where the processor can.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace host::base {

// Most of a text is what stands between them: whoever only wants to know where something ends need not look at that.
class JsonMarks {
  public:
    // From `at` on. No character at `end` or behind it is read.
    JsonMarks(const char* at, const char* end) : at_(at), end_(end) {}

    const char* end() const { return end_; }

    // The next one, of those in strings too; end() when there is none.
    const char* next() {
#ifdef __SSE2__
        while (found_ == 0) {
            if (at_ == end_) return end_;
            read_block();
        }
        const char* mark = block_ + std::countr_zero(found_);
        found_ &= found_ - 1;
        return mark;
#else
        while (at_ != end_ && !is_mark(*at_)) ++at_;
        return at_ == end_ ? end_ : at_++;
#endif
    }

    // The quote that ends the string whose opening quote was the mark before; end() when none does.
    const char* closing_quote(const char* opening) {
        while (true) {
            const char* mark = next();
            if (mark == end_) return end_;
            if (*mark != '"') continue;
            const char* before = mark;
            while (before - 1 != opening && before[-1] == '\\') --before;
            if ((mark - before) % 2 == 0) return mark;
        }
    }

  private:
#ifdef __SSE2__
    static constexpr std::ptrdiff_t kBlock = 16;

    void read_block() {
        block_ = at_;
        __m128i text;
        if (end_ - at_ >= kBlock) {
            text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at_));
            at_ += kBlock;
        } else {
            std::array<char, kBlock> rest{};
            std::memcpy(rest.data(), at_, static_cast<std::size_t>(end_ - at_));
            text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rest.data()));
            at_ = end_;
        }
        const __m128i quotes = _mm_cmpeq_epi8(text, _mm_set1_epi8('"'));
        // Square brackets and braces are one bit apart.
        const __m128i folded = _mm_or_si128(text, _mm_set1_epi8('{' ^ '['));
        const __m128i brackets =
            _mm_or_si128(_mm_cmpeq_epi8(folded, _mm_set1_epi8('{')), _mm_cmpeq_epi8(folded, _mm_set1_epi8('}')));
        found_ = static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(quotes, brackets)));
    }

    const char* block_ = nullptr;
    unsigned found_ = 0;  // in the block; a bit for each character
#else
    static constexpr auto kIsMark = [] {
        std::array<bool, 256> is{};
        for (const char c : {'"', '{', '}', '[', ']'}) is[static_cast<unsigned char>(c)] = true;
        return is;
    }();

    static bool is_mark(char c) { return kIsMark[static_cast<unsigned char>(c)]; }
#endif

    const char* at_;
    const char* end_;
};

#ifdef __SSE2__
// Where marks stand among 64 characters, a bit for each.
struct JsonBlock {
    static constexpr int kSize = 64;

    JsonBlock(const char* at, std::string_view wanted) {
        for (int part = 0; part < 4; ++part) {
            const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at) + part);
            const __m128i folded = _mm_or_si128(text, _mm_set1_epi8('{' ^ '['));
            const auto add = [part](std::uint64_t& bits, __m128i characters, char c) {
                const int found = _mm_movemask_epi8(_mm_cmpeq_epi8(characters, _mm_set1_epi8(c)));
                bits |= static_cast<std::uint64_t>(found) << 16 * part;
            };
            add(quotes, text, '"');
            add(escapes, text, '\\');
            add(opening, folded, '{');
            add(closing, folded, '}');
            for (const char letter : wanted) add(letters, text, letter);
        }
        // From each opening quote to the character before its closing one.
        strings = quotes;
        for (const int distance : {1, 2, 4, 8, 16, 32}) strings ^= strings << distance;
    }

    std::uint64_t quotes = 0;
    std::uint64_t escapes = 0;
    std::uint64_t opening = 0;
    std::uint64_t closing = 0;
    std::uint64_t letters = 0;
    std::uint64_t strings = 0;
};
#endif

// Behind the object or array that begins at `begin`; null when the text ends before it does. Calls on_string(inside)
// for each string and key in it that begins with one of `letters` or has escapes, and for some of the others.
template <class OnString>
const char* behind_json_container(const char* begin, const char* end, [[maybe_unused]] std::string_view letters,
                                  OnString on_string) {
    const char* at = begin;
    std::size_t depth = 0;
#ifdef __SSE2__
    // Up to an escape or a long string; most containers have none.
    while (end - at >= JsonBlock::kSize) {
        const JsonBlock block(at, letters);
        const bool is_string_cut = block.strings >> (JsonBlock::kSize - 1) != 0;  // then the next block begins with it
        const int size = is_string_cut ? JsonBlock::kSize - 1 - std::countl_zero(block.quotes) : JsonBlock::kSize;
        if (block.escapes != 0 || size == 0) break;
        std::uint64_t told = block.quotes & block.strings & block.letters >> 1;
        if (is_string_cut) told &= ~(std::uint64_t{1} << size);
        const std::uint64_t opening = block.opening & ~block.strings;
        const std::uint64_t closing = block.closing & ~block.strings;
        const char* behind = nullptr;
        if (const auto closed = static_cast<std::size_t>(std::popcount(closing)); closed < depth) {
            depth = depth - closed + static_cast<std::size_t>(std::popcount(opening));
        } else {
            for (std::uint64_t left = opening | closing; left != 0 && behind == nullptr; left &= left - 1) {
                const std::uint64_t bracket = left & -left;
                if ((opening & bracket) != 0) {
                    ++depth;
                } else if (--depth == 0) {
                    behind = at + std::countr_zero(bracket) + 1;
                    told &= bracket - 1;
                }
            }
        }
        for (; told != 0; told &= told - 1) {
            const int inside = std::countr_zero(told) + 1;
            const int length = std::countr_zero(block.quotes >> inside);
            on_string(std::string_view(at + inside, static_cast<std::size_t>(length)));
        }
        if (behind != nullptr) return behind;
        at += size;
    }
#endif
    JsonMarks marks(at, end);
    while (true) {
        const char* mark = marks.next();
        if (mark == end) return nullptr;
        if (*mark == '"') {
            const char* closing = marks.closing_quote(mark);
            if (closing == end) return nullptr;
            on_string(std::string_view(mark + 1, static_cast<std::size_t>(closing - mark - 1)));
        } else if (*mark == '{' || *mark == '[') {
            ++depth;
        } else if (--depth == 0) {
            return mark + 1;
        }
    }
}

// Behind the array that begins at `begin`, if it holds nothing but numbers and such arrays; else null.
inline const char* behind_number_array(const char* begin, const char* end) {
    std::size_t depth = 0;
    const char* at = begin;
#ifdef __SSE2__
    constexpr std::ptrdiff_t kBlock = 16;
    for (; end - at >= kBlock; at += kBlock) {
        const __m128i text = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
        const auto is = [&text](char c) { return _mm_cmpeq_epi8(text, _mm_set1_epi8(c)); };
        const __m128i numbers =
            _mm_and_si128(_mm_cmpgt_epi8(text, _mm_set1_epi8('+' - 1)), _mm_cmplt_epi8(text, _mm_set1_epi8('9' + 1)));
        const __m128i exponents = _mm_or_si128(is('e'), is('E'));
        const __m128i blanks = _mm_cmplt_epi8(text, _mm_set1_epi8(' ' + 1));
        const __m128i brackets = _mm_or_si128(is('['), is(']'));
        const __m128i plain = _mm_or_si128(_mm_or_si128(numbers, exponents), blanks);
        auto open = static_cast<unsigned>(_mm_movemask_epi8(brackets));
        const unsigned others = ~static_cast<unsigned>(_mm_movemask_epi8(plain)) & 0xFFFFU & ~open;
        if (others != 0) open &= (others & -others) - 1;  // those before the first of the others
        for (; open != 0; open &= open - 1) {
            const char* bracket = at + std::countr_zero(open);
            if (*bracket == '[') {
                ++depth;
            } else if (--depth == 0) {
                return bracket + 1;
            }
        }
        if (others != 0) return nullptr;
    }
#endif
    for (; at != end; ++at) {
        if (*at == '[') {
            ++depth;
        } else if (*at == ']') {
            if (--depth == 0) return at + 1;
        } else if (!(*at >= '+' && *at <= '9') && *at != 'e' && *at != 'E' && static_cast<signed char>(*at) > ' ') {
            return nullptr;
        }
    }
    return nullptr;
}

}  // namespace host::base
