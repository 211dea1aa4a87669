// The reports of `exflate check` for programs and for build servers.
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>
#include <map>

#include "animations.h"
#include "looks/finding.h"
#include "result.h"
#include "sandbox.h"

using test::exflate;
using test::Finished;
using test::Sandbox;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

// A file that keeps its look, one whose look changes, one with hostile names, and a broken one.
Finished check_all(const Sandbox& sandbox, const std::string& format, bool prove = false) {
    std::vector<std::string> arguments = {"check",
                                          "--format",
                                          format,
                                          sandbox.write("kept.json", test::one_nest()),
                                          sandbox.write("fading<&\">\x1B\xFF.json", test::fading_nest()),
                                          sandbox.write("hostile.json", test::hostile_names()),
                                          sandbox.write("broken.json", "{")};
    if (prove) arguments.emplace_back("--prove");
    return exflate(sandbox, arguments);
}

// --- JSON ---

struct Table {
    std::vector<std::string> members;
    std::vector<std::string> optional;
};

// The tables of members in the document, by the word before them.
std::map<std::string, Table> documented() {
    std::ifstream stream(CHECK_JSON_DOCUMENT);
    std::map<std::string, Table> tables;
    std::string line;
    std::string heading;
    while (std::getline(stream, line)) {
        if (line.ends_with(':')) heading = line.substr(0, line.size() - 1);
        if (line.starts_with("The pictures")) heading = "The pictures";
        if (line.starts_with("## ")) heading.clear();
        if (heading.empty() || !line.starts_with("| `")) continue;
        const std::size_t cell_end = line.find('|', 1);
        for (std::size_t at = 2; at < cell_end; at = line.find('`', line.find('`', at + 1) + 1)) {
            const std::string member = line.substr(at + 1, line.find('`', at + 1) - at - 1);
            tables[heading].members.push_back(member);
            if (line.find(", optional |") != std::string::npos) tables[heading].optional.push_back(member);
        }
    }
    return tables;
}

void expect_as_documented(const rapidjson::Value& object, const Table& table) {
    auto next = table.members.begin();
    for (const auto& entry : object.GetObject()) {
        const auto found = std::find(next, table.members.end(), entry.name.GetString());
        ASSERT_NE(found, table.members.end()) << entry.name.GetString() << " is not documented in this place";
        next = std::next(found);
    }
    for (const std::string& member : table.members) {
        const bool is_optional =
            std::find(table.optional.begin(), table.optional.end(), member) != table.optional.end();
        EXPECT_TRUE(is_optional || object.HasMember(member.c_str())) << member;
    }
}

TEST(CheckJson, is_what_the_document_says) {
    const auto tables = documented();
    ASSERT_EQ(tables.size(), 6U);
    const Sandbox sandbox;
    const rapidjson::Document report = test::parsed(check_all(sandbox, "json", true).out);
    expect_as_documented(report, tables.at("The report"));
    ASSERT_EQ(report["version"].GetInt(), 1);
    expect_as_documented(report["totals"], tables.at("The totals"));
    ASSERT_EQ(report["files"].Size(), 4U);
    std::size_t pictures = 0;
    std::size_t reasons = 0;
    for (const auto& file : report["files"].GetArray()) {
        expect_as_documented(file, tables.at("A file"));
        for (const auto& nest : file["nests"].GetArray()) {
            expect_as_documented(nest, tables.at("A nest"));
            if (nest.HasMember("pictures")) {
                ++pictures;
                expect_as_documented(nest["pictures"], tables.at("The pictures"));
            }
            for (const auto& reason : nest["reasons"].GetArray()) {
                ++reasons;
                expect_as_documented(reason, tables.at("A reason"));
            }
        }
    }
    EXPECT_GE(pictures, 3U);
    EXPECT_GE(reasons, 5U);
}

TEST(CheckJson, every_code_is_documented_for_programs_and_for_designers) {
    for (const char* file : {CHECK_JSON_DOCUMENT, WHAT_CHANGES_DOCUMENT}) {
        std::ifstream stream(file);
        const std::string document{std::istreambuf_iterator<char>(stream), {}};
        for (const auto reason : lottie::looks::all_reasons()) {
            EXPECT_THAT(document, HasSubstr("`" + std::string(code(reason)) + "`")) << file;
        }
    }
}

TEST(CheckJson, holds_verdicts_reasons_and_errors) {
    const Sandbox sandbox;
    const Finished finished = check_all(sandbox, "json");
    EXPECT_EQ(finished.exit_code, 3);
    const rapidjson::Document report = test::parsed(finished.out);
    const auto& files = report["files"];
    EXPECT_STREQ(files[0]["file"].GetString(), "kept.json");
    EXPECT_STREQ(files[0]["verdict"].GetString(), "exact");
    EXPECT_EQ(files[0]["bytes"].GetUint64(), test::one_nest().size());
    EXPECT_STREQ(files[1]["file"].GetString(), "fading<&\">\x1B\xEF\xBF\xBD.json");
    EXPECT_STREQ(files[1]["verdict"].GetString(), "changes");
    const auto& nest = files[1]["nests"][0];
    EXPECT_TRUE(nest["composition"].IsNull());
    EXPECT_EQ(nest["number"].GetInt(), 2);
    EXPECT_EQ(nest["layers"].GetInt(), 2);
    EXPECT_STREQ(nest["reasons"][0]["code"].GetString(), "opacity");
    EXPECT_STREQ(nest["reasons"][0]["weight"].GetString(), "change");
    EXPECT_STREQ(nest["reasons"][0]["property"].GetString(), "ks.o");
    EXPECT_EQ(nest["reasons"][0]["frame"].GetInt(), 0);
    EXPECT_TRUE(files[3]["verdict"].IsNull());
    EXPECT_THAT(files[3]["error"].GetString(), HasSubstr("not whole JSON"));
    EXPECT_EQ(files[3]["line"].GetInt(), 1);
    EXPECT_EQ(files[3]["column"].GetInt(), 2);
    EXPECT_EQ(files[3]["nests"].Size(), 0U);
}

TEST(CheckJson, names_come_through_as_they_are) {
    const Sandbox sandbox;
    const rapidjson::Document report = test::parsed(check_all(sandbox, "json").out);
    const std::string name = "a\"]]><&\n\x1B[31m\xC2\x9B\xEF\xBF\xBE";
    EXPECT_THAT(test::members_of(report["files"][2]["nests"], "name"), ElementsAre(name, name));
    EXPECT_EQ(report["files"][2]["nests"][1]["composition"].GetString(), name);
}

// --- JUnit ---

// What a strict XML parser makes of it: an element on each line, with its attributes and its text.
std::string read_xml(const Sandbox& sandbox, const std::string& xml) {
    const std::string program =
        "import sys, xml.etree.ElementTree as tree\n"
        "for e in tree.fromstring(sys.stdin.buffer.read()).iter():\n"
        "    print(e.tag, *(f'{k}={v!a}' for k, v in e.attrib.items()), ascii((e.text or '').strip()))\n";
    const Finished finished = sandbox.run(
        "/usr/bin/env", {.arguments = {"python3", "-c", program}, .input = xml, .environment = {}, .out_file = {}});
    EXPECT_EQ(finished.exit_code, 0) << finished.err << xml;
    return finished.out;
}

TEST(CheckJunit, is_a_suite_per_file_a_case_per_nest_and_a_failure_per_changed_look) {
    const Sandbox sandbox;
    const Finished finished = check_all(sandbox, "junit");
    EXPECT_EQ(finished.exit_code, 3);
    const std::string elements = read_xml(sandbox, finished.out);
    EXPECT_THAT(elements, testing::StartsWith("testsuites name='exflate check' tests='5' failures='"));
    EXPECT_THAT(elements, HasSubstr("testsuite name='kept.json' tests='1' failures='0' errors='0' ''\n"
                                    "testcase classname='kept.json' name='#2 Intro' ''\n"));
    EXPECT_THAT(elements,
                HasSubstr(R"(testsuite name='fading<&">\ufffd\ufffd.json' tests='1' failures='1' errors='0')"));
    EXPECT_THAT(elements, HasSubstr("failure type='look-changes' message='opacity: its opacity of 50 % is lost: the "
                                    "layers keep their own -> give the layers inside the opacity, or keep this nest'"));
    EXPECT_THAT(elements, HasSubstr("testsuite name='broken.json' tests='1' failures='0' errors='1' ''\n"
                                    "testcase classname='broken.json' name='the file' ''\n"
                                    "error message='The input is not whole JSON"));
}

TEST(CheckJunit, hostile_names_are_escaped) {
    const Sandbox sandbox;
    const std::string elements = read_xml(sandbox, check_all(sandbox, "junit").out);
    EXPECT_THAT(elements, HasSubstr(R"(name='#1 a"]]><&\n\ufffd[31m\x9b\ufffd')"));
}

TEST(CheckJunit, the_counts_of_the_suites_add_up) {
    const Sandbox sandbox;
    const std::string elements = read_xml(sandbox, check_all(sandbox, "junit").out);
    const auto count = [&elements](const std::string& start) {
        std::size_t found = 0;
        for (std::size_t at = elements.find(start); at != std::string::npos; at = elements.find(start, at + 1)) ++found;
        return found;
    };
    const std::string failures = std::to_string(count("\nfailure "));
    EXPECT_EQ(count("\ntestcase "), 5U);
    EXPECT_EQ(count("\nerror "), 1U);
    EXPECT_THAT(elements, testing::StartsWith("testsuites name='exflate check' tests='5' failures='" + failures +
                                              "' errors='1'"));
}

}  // namespace
