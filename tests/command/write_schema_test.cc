/// The schemas: examples are valid, and how much of what `check` finds they find alone.

#include <array>
#include <cstdio>
#include <map>
#include <set>

#include <gtest/gtest.h>

#include "command/check_cases.h"
#include "support/test_files.h"

namespace {

bool has_xmllint() { return std::system("xmllint --version >/dev/null 2>&1") == 0; }

/// The schema that an author of the document would use: by its root, or what is meant by it.
std::string schema_of(const std::string &document) {
    const std::array<std::pair<const char *, const char *>, 4> roots = {{{"<CHANDESC", "CHANDESCRIPTIONS"},
                                                                         {"<DAQ", "DAQvariables"},
                                                                         {"<BMR", "BMR"},
                                                                         {"<ENVINDEX", "ENVINDEXDICT"}}};
    for (const auto &[begin, schema] : roots)
        if (document.find(begin) != std::string::npos)
            return std::string(SCHEMAS_DIR) + "/" + schema + ".xsd";
    return "";
}

/// Returns what xmllint says of files: "FILE validates", "FILE fails to validate", or the parser's errors.
std::string said_of(const std::string &schema, const std::string &files) {
    const std::string command = "xmllint --noout --schema '" + schema + "' " + files + " 2>&1";
    std::string text;
    FILE *const output = popen(command.c_str(), "r");
    for (int c; output && (c = std::getc(output)) != EOF;)
        text += static_cast<char>(c);
    if (output)
        pclose(output);
    return text;
}

class WriteSchema : public testing::Test {
protected:
    void SetUp() override {
        if (!has_xmllint())
            GTEST_SKIP() << "xmllint is not installed";
        for (const auto &cases : {structure_cases(), value_cases()})
            for (const checked_case &one : cases)
                if (!schema_of(one.document).empty())
                    cases_.push_back(one);
        std::map<std::string, std::string> files; // by schema
        for (std::size_t i = 0; i < cases_.size(); ++i) {
            std::ofstream(path(i), std::ios::binary) << cases_[i].document;
            files[schema_of(cases_[i].document)] += " " + path(i);
        }
        for (const auto &[schema, names] : files)
            said_ += said_of(schema, names);
    }

    std::string path(std::size_t number) const { return folder_ / (std::to_string(number) + ".xml"); }
    bool is_valid(std::size_t number) const {
        return said_.find(path(number) + " validates\n") != std::string::npos;
    }

    temporary_folder folder_;
    std::vector<checked_case> cases_;
    std::string said_;
};

TEST_F(WriteSchema, TakesTheExamples) {
    for (const char *const name :
         {"channels.xml", "channels_daqvariables.xml", "events.xml", "envindexdict.xml"}) {
        const std::string file = std::string(EXAMPLES_DIR) + "/" + name;
        EXPECT_EQ(said_of(schema_of(file_text(file)), file), file + " validates\n");
    }
}

TEST_F(WriteSchema, FindsMostFaultsAlone) {
    std::set<std::string> rules, other_rules;
    int found = 0, all = 0;
    for (std::size_t i = 0; i < cases_.size(); ++i)
        if (!cases_[i].findings.empty()) {
            ++all;
            found += !is_valid(i);
            (is_valid(i) ? other_rules : rules).insert(row_of(cases_[i].id).name);
        }
    EXPECT_GE(found, 75) << "of " << all << " faults";
    EXPECT_GE(rules.size(), 20U);
    for (const std::string &rule : rules)
        other_rules.erase(rule);
    // What no schema can say
    EXPECT_EQ(other_rules,
              (std::set<std::string>{"doctype", "encoding-mismatch", "missing-name", "unnamed-type"}));
}

TEST_F(WriteSchema, RefusesLittleThatIsRight) {
    std::set<std::string> refused;
    for (std::size_t i = 0; i < cases_.size(); ++i)
        if (cases_[i].findings.empty() && !is_valid(i))
            refused.insert(cases_[i].document);
    const std::set<std::string> expected = {
        // Readers take these forms, but neither examples nor writers have them
        event("<SBLOCK>S<CHLIST><CHAN>C</CHAN></CHLIST></SBLOCK><SBLOCK>T</SBLOCK><CHLIST><CHAN>C</CHAN></"
              "CHLIST>"),
        channel("<DIM>0</DIM><DIM_UNITS>mm</DIM_UNITS>"),
        // A schema sees no comments
        channel("<DESC>text<!-- last -->\n</DESC>"),
        bits_channel("<bitTitle bit=\"0\">\n<!-- c --></bitTitle>"),
    };
    EXPECT_EQ(refused, expected);
}

} // namespace
