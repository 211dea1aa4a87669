// Repairing expressions after a layer was renamed.
#include <stdexcept>

#include "operation_test.h"

class ExpressionRepair : public OperationTest {
  protected:
    A_Err repair(const wchar_t* old_name, const wchar_t* new_name) {
        return fix_all_expressions(&info, old_name, new_name);
    }

    std::string script_for(const wchar_t* old_name, const wchar_t* new_name) {
        std::string script;
        host.on_script = [&](const std::string& text) {
            script = text;
            return "";
        };
        EXPECT_EQ(repair(old_name, new_name), A_Err_NONE);
        return script;
    }
};

TEST_F(ExpressionRepair, is_one_script_call) {
    EXPECT_EQ(repair(L"old", L"new"), A_Err_NONE);
    EXPECT_THAT(host.calls,
                ElementsAre("Utility6.ExecuteScript(7, app.project.autoFixExpressions(\"old\",\"new\");, false, null, "
                            "null)"));
    EXPECT_THAT(host.open, IsEmpty());
}

TEST_F(ExpressionRepair, has_no_blank_and_no_line_end_of_its_own) {
    EXPECT_EQ(script_for(L"old", L"new"), "app.project.autoFixExpressions(\"old\",\"new\");");
}

TEST_F(ExpressionRepair, runs_for_equal_names) {
    EXPECT_EQ(script_for(L"x", L"x"), "app.project.autoFixExpressions(\"x\",\"x\");");
}

TEST_F(ExpressionRepair, runs_for_empty_names) {
    EXPECT_EQ(script_for(L"", L""), "app.project.autoFixExpressions(\"\",\"\");");
    EXPECT_EQ(script_for(L"", L"new"), "app.project.autoFixExpressions(\"\",\"new\");");
    EXPECT_EQ(script_for(L"old", L""), "app.project.autoFixExpressions(\"old\",\"\");");
}

TEST_F(ExpressionRepair, writes_both_names_as_utf8) {
    EXPECT_EQ(script_for(L"caf\u00e9", L"\u4e2d \U0001F600"),
              "app.project.autoFixExpressions(\"caf\xc3\xa9\",\"\xe4\xb8\xad \xf0\x9f\x98\x80\");");
}

TEST_F(ExpressionRepair, writes_as_many_bytes_as_a_character_needs) {
    EXPECT_EQ(script_for(L"\x7f", L"\x80"), "app.project.autoFixExpressions(\"\x7f\",\"\xc2\x80\");");
    EXPECT_EQ(script_for(L"\x7ff", L"\x800"), "app.project.autoFixExpressions(\"\xdf\xbf\",\"\xe0\xa0\x80\");");
    EXPECT_EQ(script_for(L"\uffff", L"\U00010000"),
              "app.project.autoFixExpressions(\"\xef\xbf\xbf\",\"\xf0\x90\x80\x80\");");
}

TEST_F(ExpressionRepair, takes_the_largest_code_point_and_raises_for_one_above_it) {
    const wchar_t largest[] = {0x10FFFF, 0};
    EXPECT_EQ(script_for(largest, largest),
              "app.project.autoFixExpressions(\"\xf4\x8f\xbf\xbf\",\"\xf4\x8f\xbf\xbf\");");
    host.forget_calls();
    const wchar_t bad[] = {0x110000, 0};
    EXPECT_THROW((void)repair(bad, L"x"), std::range_error);
    EXPECT_THROW((void)repair(L"x", bad), std::range_error);
    EXPECT_THAT(host.calls, IsEmpty());
}

TEST_F(ExpressionRepair, neither_writes_nor_drops_a_byte_order_mark) {
    EXPECT_EQ(script_for(L"\ufeffx", L"y"), "app.project.autoFixExpressions(\"\xef\xbb\xbfx\",\"y\");");
}

TEST_F(ExpressionRepair, escapes_nothing) {
    EXPECT_EQ(script_for(L"a\"b", L"c\\"), "app.project.autoFixExpressions(\"a\"b\",\"c\\\");");
    EXPECT_EQ(script_for(L"a'b", L"c\nd\te"), "app.project.autoFixExpressions(\"a'b\",\"c\nd\te\");");
}

TEST_F(ExpressionRepair, returns_the_hosts_code) {
    expect_faults_end_it([&] { return repair(L"old", L"new"); });
}

TEST_F(ExpressionRepair, uses_one_suite_the_plug_ins_id_and_no_options) {
    info = {host.basic(), 31, nullptr};
    EXPECT_THAT(suites_of([&] { return repair(L"old", L"new"); }), ElementsAre("AEGP Utility Suite 13"));
    EXPECT_EQ(host.count_of("ExecuteScript(31, "), 1);
}
