/// The tables of names that follow the parser's hash tables: they have the same lists at any time.

#include "limits/hashed_names.h"

#include <memory>

#include <gtest/gtest.h>
#include <xercesc/util/Hash2KeysSetOf.hpp>
#include <xercesc/util/RefHashTableOf.hpp>
#include <xercesc/util/XMLString.hpp>

#include "xml_platform.h"

namespace {

using namespace zeb5;

std::u16string name_of(std::size_t number) {
    const std::string name =
        "i" + std::to_string(number) + "_x"; // many of them meet in tables of 14,079 lists
    return {name.begin(), name.end()};
}

/// The price of a look-up when the names up to this one are in so many lists.
price look_up_in(std::size_t names, std::size_t lists) {
    std::vector<std::size_t> lengths(lists);
    for (std::size_t i = 0; i < names; ++i)
        ++lengths[xercesc::XMLString::hash(name_of(i).c_str(), lists)];
    return price_of_comparing(*std::max_element(lengths.begin(), lengths.end()), name_of(names - 1).size());
}

/// Puts names into a table of the parser and into ours; `put` returns the number of lists of the parser's.
template <class Put> void expect_same_lists(hashed_names followed, std::size_t names, Put put) {
    for (std::size_t i = 0, lists = 0; i < names; ++i) {
        const std::size_t before = lists;
        followed.add(name_of(i).c_str());
        lists = put(i);
        if (lists != before || i % 500 == 0) {
            EXPECT_EQ(followed.look_up(), look_up_in(i + 1, lists)) << i << " names, " << lists << " lists";
        }
    }
}

TEST(HashedNames, GrowAsTheTablesOfTheParser) {
    const xml_platform platform;
    std::vector<std::u16string> names;
    for (std::size_t i = 0; i < 20'000; ++i)
        names.push_back(name_of(i));
    for (const table_growth &growth : {usual_growth, growth_of_small_tables}) {
        xercesc::RefHashTableOf<int> table(growth.first_lists, false);
        int value = 0;
        expect_same_lists(hashed_names(growth), names.size(), [&](std::size_t i) {
            table.put(names[i].data(), &value);
            return table.getHashModulus();
        });
    }
    xercesc::Hash2KeysSetOf<xercesc::StringHasher> set(growth_of_sets.first_lists);
    expect_same_lists(hashed_names(growth_of_sets), names.size(), [&](std::size_t i) {
        set.putIfNotPresent(names[i].data(), 0);
        return set.getHashModulus();
    });
}

TEST(HashedNames, CountRepeatedNamesOnce) {
    hashed_repeated_names names;
    EXPECT_EQ(names.look_up(), 0u);
    for (const char16_t *name : {u"a", u"a", u"bc", u"a"})
        names.add(name);
    EXPECT_EQ(names.add(u"bc"), 2u);
    EXPECT_EQ(names.look_up(), price_of_comparing(1, 2));
}

TEST(HashedNames, CostMoreInListsThatTheCacheDoesNotHold) {
    EXPECT_EQ(price_of_comparing(0, 10), 0u);
    EXPECT_EQ(price_of_comparing(39, 10), 39 * 30u);
    EXPECT_EQ(price_of_comparing(4000, 10), 4000 * 130u);
    EXPECT_EQ(price_of_comparing(100'000, 10), 100'000 * 210u);
}

TEST(HashedNames, OfEntitiesAreComparedWithThoseThatAreOpen) {
    document_names names;
    names.entities.add(u"deg");
    names.parameter_entities.add(u"p");
    EXPECT_EQ(names.reference(0), price_of_comparing(1, 3));
    EXPECT_EQ(names.reference(5), price_of_comparing(1, 3) + price_of_comparing(5, 3));
}

} // namespace
