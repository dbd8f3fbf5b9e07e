#include "limits/entity_budget.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using zeb5::entity_budget;

struct declaration {
    const char16_t *name;
    bool is_parameter;
    std::u16string text;
};

constexpr bool general = false;
constexpr bool parameter = true;

std::u16string repeated(const std::u16string &text, std::size_t times) {
    std::u16string all;
    for (std::size_t i = 0; i < times; ++i)
        all += text;
    return all;
}

/// Number of declarations taken before one is refused.
std::size_t taken(const std::vector<declaration> &declarations) {
    entity_budget budget;
    std::size_t count = 0;
    for (const declaration &entity : declarations) {
        if (!budget.declare(entity.name, entity.is_parameter, entity.text))
            break;
        ++count;
    }
    return count;
}

struct budget_case {
    const char *what;
    std::vector<declaration> declarations;
    std::size_t taken;
};

const budget_case budget_cases[] = {
    {"nothing refers to anything", {{u"a", general, u"x"}, {u"b", parameter, u"y"}}, 2},
    {"16 references", {{u"a", general, u"x"}, {u"b", general, repeated(u"&a;", 16)}}, 2},
    {"17 references", {{u"a", general, u"x"}, {u"b", general, repeated(u"&a;", 17)}}, 1},
    {"16 references over two levels",
     {{u"a", general, u"x"}, {u"b", general, u"&a;"}, {u"c", general, repeated(u"&b;", 8)}},
     3},
    {"18 references over two levels",
     {{u"a", general, u"x"}, {u"b", general, u"&a;"}, {u"c", general, repeated(u"&b;", 9)}},
     2},
    {"users declared before what they use",
     {{u"c", general, repeated(u"&b;", 8)}, {u"b", general, u"&a;"}, {u"a", general, u"&d;"}},
     2},
    {"16 references, a user declared before what it uses",
     {{u"a", general, u"x"}, {u"c", general, repeated(u"&b;", 8)}, {u"b", general, u"&a;"}},
     3},
    {"4,096 characters", {{u"a", general, std::u16string(4096, u'x')}}, 1},
    {"4,097 characters", {{u"a", general, std::u16string(4097, u'x')}}, 0},
    {"4,096 characters reached",
     {{u"a", general, std::u16string(1024, u'x')}, {u"b", general, u"&a;&a;&a;&a;"}},
     2},
    {"4,098 characters reached",
     {{u"a", general, std::u16string(2049, u'x')}, {u"b", general, u"&a;&a;"}},
     1},
    {"113 tags", {{u"a", general, repeated(u"<a/>", 113)}}, 1},
    {"114 tags", {{u"a", general, repeated(u"<a/>", 114)}}, 0},
    {"106 attributes", {{u"a", general, u"<a" + repeated(u" a='x'", 106) + u"/>"}}, 1},
    {"107 attributes", {{u"a", general, u"<a" + repeated(u" a='x'", 107) + u"/>"}}, 0},
    {"the two kinds of one name",
     {{u"a", general, std::u16string(3000, u'x')}, {u"b", parameter, u"%a;%a;"}},
     2},
    {"parameter entities", {{u"a", parameter, u" "}, {u"b", parameter, repeated(u"%a;", 17)}}, 1},
    {"an entity within itself", {{u"a", general, u"&a;"}}, 0},
    {"two within each other", {{u"a", general, u"&b;"}, {u"b", general, u"&a;"}}, 1},
    {"a second declaration does not count",
     {{u"a", general, u"x"}, {u"a", general, repeated(u"&b;", 4000)}, {u"b", general, u"y"}},
     3},
    {"16 references to what is declared later, or never", {{u"a", general, repeated(u"&b;%c;", 8)}}, 1},
    {"17 references to what is not declared", {{u"a", general, repeated(u"&b;", 17)}}, 0},
    {"references that an entity declared later turns out to have",
     {{u"a", general, u"&b;"}, {u"b", general, repeated(u"&c;", 15)}, {u"d", general, u"&a;"}},
     2},
    {"what is not declared has no characters",
     {{u"a", general, std::u16string(4096, u'x')}, {u"b", general, u"&a;&c;"}},
     2},
    {"characters by their names are no references",
     {{u"a", general, repeated(u"&lt;&gt;&amp;&apos;&quot;", 100)},
      {u"lt", general, std::u16string(4000, u'x')},
      {u"b", general, repeated(u"&lt;", 17)}},
     3},
    {"parameter entities may be called as characters are",
     {{u"lt", parameter, u"x"}, {u"a", general, repeated(u"%lt;", 17)}},
     1},
    {"characters are no references", {{u"a", general, repeated(u"&#65;", 800)}, {u"#65", general, u"x"}}, 2},
    {"marks without an end are no references", {{u"a", general, u"& 100 % &"}, {u"b", general, u"%&a;"}}, 2},
    {"references behind a character",
     {{u"a", general, u"x"}, {u"b", general, u"&#65;" + repeated(u"&a;", 17)}},
     1},
    {"references behind a mark", {{u"a", general, u"x"}, {u"b", general, u"&" + repeated(u"&a;", 17)}}, 1},
};

TEST(EntityBudget, AddsUpWhatEachEntityReaches) {
    for (const budget_case &c : budget_cases)
        EXPECT_EQ(taken(c.declarations), c.taken) << c.what;
}

// Each mark was once taken for the begin of a name that reached to the only semicolon: half a million
// characters for a thousand marks.
TEST(EntityBudget, TakesNoNameOutOfARowOfMarks) {
    entity_budget budget;
    EXPECT_TRUE(budget.declare(u"a", general, std::u16string(4000, u'&') + u"b;"));
    EXPECT_TRUE(budget.declare(u"b", general, u"x"));
}

} // namespace
