// The scripts inside the module are the files' bytes.
#include "embedded_jsx.h"

#include <gtest/gtest.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <string>

namespace {

std::string bytes_of(const std::string& name) {
    std::ifstream file(std::string(EXFLATE_SCRIPTS_DIR) + "/" + name, std::ios::binary);
    EXPECT_TRUE(file) << name;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

TEST(EmbeddedFiles, carry_the_bytes_of_the_scripts_followed_by_a_zero) {
    for (const char* name : {"mainPanel.jsx", "prefixTooLong.jsx"}) {
        unsigned long size = 0;
        const char* contents = find_embedded_file(name, &size);
        ASSERT_NE(contents, nullptr) << name;
        EXPECT_EQ(std::string(contents, size), bytes_of(name)) << name;
        EXPECT_EQ(contents[size], '\0') << name;
        EXPECT_EQ(std::strlen(contents), size) << name;
    }
}

TEST(EmbeddedFiles, are_found_without_asking_for_the_size) {
    EXPECT_NE(find_embedded_file("prefixTooLong.jsx", nullptr), nullptr);
}

TEST(EmbeddedFiles, are_found_by_their_exact_name_only) {
    unsigned long size = 7;
    for (const char* name : {"", "mainpanel.jsx", "mainPanel", "mainPanel.jsx ", "other.jsx"}) {
        EXPECT_EQ(find_embedded_file(name, &size), nullptr) << name;
    }
    EXPECT_EQ(size, 7u);
}

TEST(EmbeddedFiles, table_has_two_rows_and_an_end) {
    EXPECT_STREQ(embedded_files[0].name, "mainPanel.jsx");
    EXPECT_STREQ(embedded_files[1].name, "prefixTooLong.jsx");
    EXPECT_EQ(embedded_files[1].size, 100u);
    EXPECT_EQ(embedded_files[2].name, nullptr);
}

TEST(EmbeddedFiles, alert_script_is_one_call) {
    EXPECT_STREQ(find_embedded_file("prefixTooLong.jsx", nullptr),
                 "alert(\"The prefix you set it too long. Please limit prefixes to 50 characters.\", "
                 "\"Prefix Too Long\");");
}

TEST(EmbeddedFiles, dialog_script_opens_with_the_utf8_mark_and_its_comments) {
    const std::string text = find_embedded_file("mainPanel.jsx", nullptr);
    EXPECT_EQ(text.substr(0, 3), "\xef\xbb\xbf");
    EXPECT_EQ(text.substr(3, 29), "//TODO: Remember selection\n\n/");
}
