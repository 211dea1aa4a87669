// Reads a journal.
#include <charconv>
#include <optional>
#include <stdexcept>

#include "journal/journal.h"
#include "journal/value_text.h"
#include "line_words.h"

namespace host::journal {
namespace {

using Kind = JournalLine::Kind;

constexpr std::size_t kMaxBytes = std::size_t{1} << 30;
constexpr std::size_t kMaxDepth = 64;  // of nested visits and calls

class BadLine : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// Parses one line from left to right.
class LineParser {
  public:
    explicit LineParser(std::string_view text) : rest_(text) {}

    bool take(std::string_view expected) {
        if (!rest_.starts_with(expected)) return false;
        rest_.remove_prefix(expected.size());
        return true;
    }

    void need(std::string_view expected) {
        if (!take(expected)) throw BadLine("'" + std::string(expected) + "' is expected");
    }

    // Up to `end`, which is consumed.
    std::string_view until(char end, const char* what) {
        const std::size_t length = rest_.find(end);
        if (length == std::string_view::npos) throw BadLine(std::string(what) + " is missing");
        const std::string_view text = rest_.substr(0, length);
        rest_.remove_prefix(length + 1);
        return text;
    }

    template <class Number>
    Number number(const char* what) {
        Number number = 0;
        const auto [stop, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
        if (error != std::errc()) throw BadLine(std::string(what) + " is expected");
        rest_.remove_prefix(static_cast<std::size_t>(stop - rest_.data()));
        return number;
    }

    // The values before the closing bracket, which only a remark may follow.
    std::string_view values() {
        ValueParser parser(rest_);
        (void)parser.values_until(')');  // checks them; they are parsed again on demand
        const std::string_view text = rest_.substr(0, rest_.size() - parser.rest().size() - 1);
        rest_ = parser.rest();
        if (take(kRemark)) {
            ValueParser remark(rest_);
            const std::vector<JournalValue> sentence = remark.values_until('\0');
            if (sentence.size() != 1 || sentence[0].kind != JournalValue::Kind::bytes)
                throw BadLine("a remark must be one text in quotes");
            rest_ = {};
        }
        if (!rest_.empty()) throw BadLine("there is more after the closing bracket");
        return text;
    }

    std::string_view rest() const { return rest_; }

  private:
    std::string_view rest_;
};

PluginFunction plugin_function_named(std::string_view name) {
    for (std::size_t i = 0; i < suites::kPluginFunctionCount; ++i) {
        const auto function = static_cast<PluginFunction>(i);
        if (name_of(function) == name) return function;
    }
    throw BadLine("a plug-in has no function '" + std::string(name) + "'");
}

JournalLine line_from(std::string_view text) {
    LineParser parser(text);
    JournalLine line;
    if (text == kEnd) return line;
    if (parser.take(kSession)) {
        line.kind = Kind::session;
    } else if (parser.take(kMemory)) {
        line.kind = Kind::memory;
    } else if (parser.take(kWrote)) {
        line.kind = Kind::wrote;
    } else if (parser.take(kEnter)) {
        line.kind = Kind::enter;
        line.function = plugin_function_named(parser.until('(', "an opening bracket"));
    } else if (parser.take(kLeave)) {
        line.kind = Kind::leave;
        line.function = plugin_function_named(parser.until(' ', "a code"));
        parser.need("= ");
        line.code = parser.number<std::int32_t>("a code");
        line.has_thrown = parser.take(kThrown);
        parser.need(" (");
    } else if (parser.take(kCall)) {
        line.kind = Kind::call;
        line.call_number = parser.number<std::uint64_t>("the call's number");
        parser.need(" ");
        const std::string_view name = parser.until('(', "an opening bracket");
        line.slot = slot_named(name);
        if (line.slot < 0) throw BadLine("there is no function of that name and suite");
    } else if (parser.take(kDone)) {
        line.kind = Kind::done;
        line.call_number = parser.number<std::uint64_t>("the call's number");
        parser.need(" = ");
        line.code = parser.number<std::int32_t>("a code");
        line.is_injected = parser.take(kInjected);
        parser.need(" (");
    } else {
        throw BadLine("no journal line begins like this");
    }
    line.values_text = parser.values();
    return line;
}

// Checks that lines are in an order that a run can produce.
class OrderCheck {
  public:
    void check(const JournalLine& line) {
        if (has_ended_) throw BadLine("nothing can follow the end");
        switch (line.kind) {
            case Kind::session:
                if (!open_.empty()) throw BadLine("a session cannot begin inside a visit");
                has_session_ = true;
                break;
            case Kind::enter:
                if (!has_session_) throw BadLine("a session must begin first");
                if (is_in(Kind::enter)) throw BadLine("the host is in the plug-in already");
                open(line);
                break;
            case Kind::leave:
                if (!is_in(Kind::enter) || open_.back().function != line.function)
                    throw BadLine("what is left here was not entered last");
                open_.pop_back();
                break;
            case Kind::call:
                if (!is_in(Kind::enter)) throw BadLine("only a plug-in that was entered calls the host");
                open(line);
                break;
            case Kind::done:
                if (!is_in(Kind::call) || open_.back().call_number != line.call_number)
                    throw BadLine("the call that ends here is not the last one that began");
                open_.pop_back();
                break;
            case Kind::memory:
                if (!is_in(Kind::call)) throw BadLine("memory can be told inside a call only");
                break;
            case Kind::wrote:
                if (!is_in(Kind::enter)) throw BadLine("only a plug-in that was entered writes to memory");
                break;
            case Kind::end:
                if (!open_.empty()) throw BadLine("the end comes before what began is over");
                has_ended_ = true;
                break;
        }
    }

    bool has_ended() const { return has_ended_; }

  private:
    struct Opened {
        Kind kind;
        PluginFunction function;
        std::uint64_t call_number;
    };

    bool is_in(Kind kind) const { return !open_.empty() && open_.back().kind == kind; }
    void open(const JournalLine& line) {
        if (open_.size() == kMaxDepth) throw BadLine("calls stand too deep in each other");
        open_.push_back({line.kind, line.function, line.call_number});
    }

    std::vector<Opened> open_;
    bool has_session_ = false;
    bool has_ended_ = false;
};

std::string sentence_from(const char* reason) {
    return std::string("this is not a journal line: ") + reason;
}

}  // namespace

std::vector<JournalValue> JournalLine::values() const {
    return parse_values(values_text);
}

std::variant<Journal, Damage> read(std::string_view bytes) {
    if (bytes.size() > kMaxBytes) return Damage{1, "the journal is larger than a gigabyte"};
    Journal journal;
    OrderCheck order;
    std::size_t number = 0;
    while (true) {
        const std::size_t length = bytes.find('\n');
        if (length == std::string_view::npos) break;  // the rest is a line without its newline, or empty
        const std::string_view text = bytes.substr(0, length);
        bytes.remove_prefix(length + 1);
        ++number;
        if (number == 1) {
            if (text != kFirstLine)
                return Damage{1, "this is not a journal: the first line is not '" + std::string(kFirstLine) + "'"};
            continue;
        }
        try {
            JournalLine line = line_from(text);
            line.line_number = number;
            order.check(line);
            journal.lines.push_back(line);
        } catch (const BadLine& reason) {
            return Damage{number, sentence_from(reason.what())};
        } catch (const BadValue& reason) {
            return Damage{number, sentence_from(reason.what())};
        }
    }
    if (number == 0) return Damage{1, "this is not a journal: there is no whole line in it"};
    journal.is_complete = order.has_ended() && bytes.empty();
    journal.last_line = number;
    return journal;
}

}  // namespace host::journal
