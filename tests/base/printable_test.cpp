// Text that is safe to show.
#include "base/printable.h"

#include <gmock/gmock.h>

namespace {

using host::base::in_quotes;
using host::base::printable;
using host::base::printable_lines;
using host::base::xml_text;

TEST(Printable, keeps_characters_that_control_nothing) {
    for (const char* text :
         {"", "plain", "Größe 1", "名前 \U0001F600", "a\u00A0b", "family \U0001F468\u200D\U0001F469", "back\\slash"})
        EXPECT_EQ(printable(text), text);
}

TEST(Printable, escapes_control_characters_and_ends_of_lines) {
    EXPECT_EQ(printable(std::string_view("a\0b\x1B[31m\r\n\t\x7F", 12)),
              R"(a\u0000b\u001B[31m\u000D\u000A\u0009\u007F)");
    EXPECT_EQ(printable("\u0080\u009B\u009F\u2028\u2029"), R"(\u0080\u009B\u009F\u2028\u2029)");
}

TEST(Printable, escapes_every_mark_that_turns_the_direction) {
    EXPECT_EQ(printable("\u061C\u200E\u200F"), R"(\u061C\u200E\u200F)");
    EXPECT_EQ(printable("\u202A\u202B\u202C\u202D\u202E"), R"(\u202A\u202B\u202C\u202D\u202E)");
    EXPECT_EQ(printable("\u2066\u2067\u2068\u2069"), R"(\u2066\u2067\u2068\u2069)");
    EXPECT_EQ(printable("\u05D0\u0628"), "\u05D0\u0628");  // letters that are read from the right are no marks
}

TEST(Printable, escapes_bytes_that_are_no_characters) {
    EXPECT_EQ(printable("\x9B"
                        "31m\xC2"),
              R"(\x9B31m\xC2)");
}

TEST(Printable, what_is_printable_stays_as_it_is) {
    const std::string once = printable("\x1B\u202E\xFF\"\\");
    EXPECT_EQ(printable(once), once);
}

TEST(PrintableLines, keeps_the_ends_of_lines_and_nothing_else) {
    EXPECT_EQ(printable_lines("a\n\x1B[2J\r\n\u202E\u2028"), "a\n\\u001B[2J\\u000D\n\\u202E\\u2028");
}

TEST(InQuotes, escapes_quotes_and_backslashes_too) {
    EXPECT_EQ(in_quotes("a\"b\\c\n"), R"("a\"b\\c\u000A")");
    EXPECT_EQ(in_quotes(""), R"("")");
}

TEST(XmlText, can_stand_in_an_element_or_an_attribute) {
    EXPECT_EQ(xml_text("Gr\u00F6\u00DFe 'a' \U0001F600"), "Gr\u00F6\u00DFe 'a' \U0001F600");
    EXPECT_EQ(xml_text("<a b=\"c\">&\t\n\r"), "&#60;a b=&#34;c&#34;&#62;&#38;&#9;&#10;&#13;");
    EXPECT_EQ(xml_text("\x7F\u202E"), "&#127;&#8238;");
}

TEST(XmlText, replaces_what_xml_cannot_hold) {
    EXPECT_EQ(xml_text(std::string_view("a\0b\x1B", 4)), "a\uFFFDb\uFFFD");
    EXPECT_EQ(xml_text("\uFFFF\xC3"), "\uFFFD\uFFFD");
}

}  // namespace
