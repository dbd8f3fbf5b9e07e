/// Each rule of `check`, with documents that break it and documents that nearly do.

#include <set>

#include <gtest/gtest.h>

#include "command/check_cases.h"
#include "support/told_findings.h"
#include "xml_platform.h"

namespace {

TEST(CheckDocument, FindsWhatBreaksARuleAndNothingElse) {
    xml_platform platform; // saves the start for each document
    for (const auto &cases : {structure_cases(), value_cases()})
        for (const checked_case &one : cases)
            EXPECT_EQ(told(one.document), one.findings) << one.document;
}

TEST(CheckDocument, HasACaseOfEachRuleAndOneThatIsNearly) {
    std::set<rule> broken, nearly;
    for (const auto &cases : {structure_cases(), value_cases()})
        for (const checked_case &one : cases)
            (one.findings.empty() ? nearly : broken).insert(one.id);
    for (int i = 0; i < static_cast<int>(rule::COUNT); ++i) {
        const auto id = static_cast<rule>(i);
        if (id == rule::UNREADABLE) // is about no document
            continue;
        EXPECT_TRUE(broken.count(id)) << row_of(id).name;
        EXPECT_TRUE(nearly.count(id)) << row_of(id).name;
    }
}

} // namespace
