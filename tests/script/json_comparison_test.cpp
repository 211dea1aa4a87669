// The dialog script's JSON beside that of Node: random values written and read back, random texts read or refused.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <iostream>
#include <iterator>
#include <memory>
#include <random>
#include <sstream>

#include "world.h"

namespace script_test {
namespace {

constexpr int kValues = 10'000;
constexpr int kTexts = 10'000;

// Both engines run this. Whatever comes out is ASCII.
constexpr const char* kTelling = R"js(
var owns = Object.prototype.hasOwnProperty; function P(value) { this.own = value; } P.prototype.inherited = 1;
function told(v) { var parts = [], k; if (v === null) return 'null'; if (typeof v === 'number') return v === 0 && 1 / v < 0 ? '-0' : String(v); if (typeof v === 'string') return '\'' + escape(v) + '\''; if (typeof v !== 'object') return String(v); if (v instanceof Array) { for (k = 0; k < v.length; k++) parts.push(told(v[k])); return '[' + parts.join() + ']'; } for (k in v) if (owns.call(v, k)) parts.push(escape(k) + ':' + told(v[k])); return '{' + parts.join() + '}'; }
function read(text) { try { return told(JSON.parse(text)); } catch (e) { return e instanceof SyntaxError ? 'refused' : 'failed: ' + e; } }
function written(value) { var text = JSON.stringify(value); return text === undefined ? 'nothing' : escape(text) + ' ' + read(text); }
)js";

class Source {
  public:
    explicit Source(unsigned seed) : random_(seed) {}

    // An expression of the old language, in ASCII.
    std::string value(int depth) {
        const int kind = below(depth > 0 ? 26 : 17);
        switch (kind) {
            case 0:
            case 1:
            case 2:
                return one_of({"null", "true", "false", "undefined", "function () {}", "-0", "NaN", "-Infinity"});
            case 3:
            case 4:
                return std::to_string(below(2'000'001) - 1'000'000);
            case 5:
            case 6:
                return number();
            case 7:
                return "new Number(" + number() + ")";
            case 8:
                return "new Boolean(" + one_of({"true", "false"}) + ")";
            case 9:
                return "new String(" + text() + ")";
            case 10:
                return "new Date(" + std::to_string(below(2'000'000'000) - 1'000'000'000) + "000)";
            case 11:
                return one_of({"/x/g", "new Error('e')", "new Date(NaN)", "new Array(3)", "Math", "[]", "{}"});
            case 17:
                return "{toJSON: function (key) { return [typeof key, key, " + value(depth - 1) + "]; }}";
            case 18:
                return "new P(" + value(depth - 1) + ")";
            case 19:
            case 20:
            case 21:
                return object(depth - 1);
            case 22:
            case 23:
            case 24:
            case 25:
                return array(depth - 1);
            default:
                return text();
        }
    }

    // JSON, or what was JSON before a few of its characters were changed.
    std::u16string json_text() {
        std::u16string out = changed(json(3));
        while (has_long_number(out)) out = changed(json(3));
        return out;
    }

    static std::string in_quotes(const std::u16string& text) {
        std::string out = "\"";
        for (const char16_t unit : text) {
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", static_cast<unsigned>(unit));
            out += escaped;
        }
        return out + '"';
    }

  private:
    int below(int end) { return std::uniform_int_distribution<int>(0, end - 1)(random_); }

    std::string one_of(std::initializer_list<const char*> choices) {
        return choices.begin()[below(static_cast<int>(choices.size()))];
    }

    std::string number() {
        // Fifteen digits before 2^50: the engines do not round the same way beyond.
        const double value = std::ldexp(std::uniform_real_distribution<double>(-1, 1)(random_), below(150) - 100);
        char text[40];
        std::snprintf(text, sizeof text, "%.15g", value);
        return text;
    }

    char16_t unit() {
        static constexpr char16_t kSpecial[] = {u'"',   u'\\',  u'/',   u'\b',  u'\n',  0,      0x1F,   0x7F,   0x9F,
                                                0xA0,   0xAD,   0x600,  0x604,  0x605,  0x70F,  0x17B4, 0x17B5, 0x200B,
                                                0x200C, 0x200F, 0x2010, 0x2027, 0x2028, 0x2029, 0x202F, 0x2060, 0x206F,
                                                0xD800, 0xDBFF, 0xDC00, 0xDFFF, 0xFEFF, 0xFFEF, 0xFFF0, 0xFFFF, 0xE9};
        const int kind = below(4);
        if (kind == 0) return kSpecial[below(static_cast<int>(std::size(kSpecial)))];
        if (kind == 1) return static_cast<char16_t>(below(0x10000));
        return static_cast<char16_t>(u'a' + below(26));
    }

    std::u16string units() {
        std::u16string out;
        for (int i = below(8); i > 0; --i) out += unit();
        return out;
    }

    std::string text() { return in_quotes(units()); }

    // Not "__proto__", which makes a prototype of the value in a newer language's programs.
    std::string key() {
        if (below(3) != 0) return text();
        return one_of({"10", "2", "'toString'", "'hasOwnProperty'", "'constructor'", "'length'", "'0'", "''"});
    }

    std::string object(int depth) {
        std::string out = "{";
        for (int i = below(5); i > 0; --i) out += key() + ": " + value(depth) + (i > 1 ? ", " : "");
        return out + "}";
    }

    std::string array(int depth) {
        std::string out = "[";
        for (int i = below(5); i > 0; --i) out += (below(6) == 0 ? "" : value(depth)) + ", ";
        return out + "]";
    }

    std::u16string wide(const std::string& ascii) { return {ascii.begin(), ascii.end()}; }

    std::u16string blanks() {
        static const std::u16string kBlanks = u" \t\r\n";
        std::u16string out;
        while (below(4) == 0) out += kBlanks[static_cast<std::size_t>(below(4))];
        return out;
    }

    std::u16string json_string() {
        std::u16string out = u"\"";
        for (const char16_t unit : units()) {
            if (below(8) == 0)
                out += wide(one_of({"\\n", "\\\"", "\\\\", "\\/", "\\u00e9", "\\uD83D", "\\u2028", "\\b"}));
            if (unit >= 0x20 && unit != u'"' && unit != u'\\') out += unit;
        }
        return out + u'"';
    }

    std::u16string changed(std::u16string out) {
        if (below(2) == 0) return out;
        for (int changes = 1 + below(3); changes > 0; --changes) {
            const auto place = static_cast<std::size_t>(below(static_cast<int>(out.size()) + 1));
            if (below(2) == 0 && place < out.size()) out.erase(place, 1);
            if (below(2) == 0) out.insert(place, 1, hostile());
        }
        return out;
    }

    // Numbers of more than 15 digits, or exponents of more than 3, are not the same numbers to both engines.
    static bool has_long_number(const std::u16string& text) {
        int digits = 0;
        int most = 15;
        for (std::size_t i = 0; i < text.size(); ++i) {
            const char16_t c = text[i];
            const bool is_digit = c >= u'0' && c <= u'9';
            if (is_digit || c == u'.') {
                if (++digits > most) return true;
            } else {
                digits = 0;
                const bool is_in_exponent = c == u'e' || c == u'E' || ((c == u'+' || c == u'-') && most == 3);
                most = is_in_exponent ? 3 : 15;
            }
        }
        return false;
    }

    std::u16string json(int depth) { return blanks() + json_value(depth) + blanks(); }

    std::u16string json_value(int depth) {
        const int kind = below(depth > 0 ? 8 : 4);
        if (kind == 0) return wide(one_of({"null", "true", "false"}));
        if (kind == 1) return wide(one_of({"0", "-0", "1E+5", "1e400", "-1.5e-3", "123456789012345", "0.1", "1e-7"}));
        if (kind < 4) return json_string();
        const bool is_array = kind < 6;
        std::u16string out = is_array ? u"[" : u"{";
        for (int i = below(4), n = i; i > 0; --i) {
            if (i < n) out += u',';
            if (!is_array) out += blanks() + (below(6) == 0 ? u"\"__proto__\"" : json_string()) + blanks() + u':';
            out += json(depth - 1);
        }
        return out + blanks() + (is_array ? u']' : u'}');
    }

    char16_t hostile() {
        static const std::u16string kHostile =
            u"[]{}:,\"'\\/*-+.eE019tfnux \t\n\v\f()=;@!sv$`&|<%\u2028\u2029\ufeff\u00a0\u00ad";
        const auto i = static_cast<std::size_t>(below(static_cast<int>(kHostile.size()) + 1));
        return i < kHostile.size() ? kHostile[i] : u'\0';
    }

    std::mt19937 random_;
};

std::vector<std::string> answers_of_node(const std::vector<std::string>& jobs) {
    const TemporaryFolder folder;
    std::string one_line(kTelling);
    for (char& c : one_line) c = c == '\n' ? ' ' : c;
    std::string text = one_line + "\n";
    for (const std::string& job : jobs) text += job + "\n";
    write_file(folder / "jobs", text);
    const std::string command =
        std::string("\"") + NODE + "\" \"" + JSON_IN_NODE + "\" \"" + (folder / "jobs").string() + "\"";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string out;
    char part[4096];
    while (const std::size_t count = std::fread(part, 1, sizeof part, pipe.get())) out.append(part, count);
    std::istringstream lines(out);
    std::vector<std::string> answers;
    for (std::string line; std::getline(lines, line);) answers.push_back(line);
    answers.erase(answers.begin(), answers.empty() ? answers.begin() : answers.begin() + 1);  // that of kTelling
    return answers;
}

void compare(const std::vector<std::string>& jobs) {
    if (std::string(NODE).empty()) GTEST_SKIP() << "there is no node on this machine";
    World world;
    world.run(read_file(OPTIONS_DIALOG_SCRIPT));
    world.run(kTelling);
    const std::vector<std::string> expected = answers_of_node(jobs);
    ASSERT_EQ(expected.size(), jobs.size());
    int differences = 0;
    for (std::size_t i = 0; i < jobs.size() && differences < 10; ++i) {
        const std::string answer = world.run(jobs[i]);
        EXPECT_EQ(answer, expected[i]) << jobs[i];
        differences += answer == expected[i] ? 0 : 1;
    }
}

unsigned new_seed() {
    const unsigned seed = std::random_device()();
    std::cout << "seed " << seed << "\n";
    return seed;
}

TEST(JsonBesideNode, values_are_written_alike_and_read_back_alike) {
    Source source(new_seed());
    std::vector<std::string> jobs;
    for (int i = 0; i < kValues; ++i) jobs.push_back("written(" + source.value(3) + ")");
    compare(jobs);
}

TEST(JsonBesideNode, texts_are_read_alike_or_refused_alike) {
    Source source(new_seed());
    std::vector<std::string> jobs;
    for (int i = 0; i < kTexts; ++i) jobs.push_back("read(" + Source::in_quotes(source.json_text()) + ")");
    compare(jobs);
}

}  // namespace
}  // namespace script_test
