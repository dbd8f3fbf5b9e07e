/// Names of types, by a site's own event-utility library that has no names for some of them.

#include <gtest/gtest.h>

#include "event_util.h"
#include "values/field_names.h"
#include "values/type_names.h"

const char *event_name_itoa(int ev_type) {
    return ev_type == 5 ? nullptr : ev_type == 28 ? "28" : "own event";
}

const char *block_name_itoa(int block_type) { return block_type == 38 ? nullptr : "own block"; }

int get_event_struct_type(int) { return ZEB5_EV_STRUCT_UNDEF; }

namespace {

TEST(OwnTypeNames, AreMissingAsInListings) {
    constexpr field_row event_type = {"evtype", EVENT_TYPE, nullptr, nullptr, 1};
    EXPECT_EQ(event_names(0x30), (texts{"own event", "(null)"}));
    EXPECT_EQ(block_names(0x800000c0), (texts{"(null)", "own block"}));
    EXPECT_EQ(names_of(event_type, value{std::int64_t{5}}), texts{"(null)"});
}

TEST(OwnTypeNames, AreToldToBeMissing) {
    EXPECT_EQ(unnamed_events(0x10000030), (texts{"5", "28"}));
    EXPECT_EQ(unnamed_blocks(0x800000c0), texts{"38"});
    EXPECT_EQ(unnamed_blocks(0xc0), texts{});
}

TEST(OwnTypeNames, NameTypes) {
    EXPECT_EQ(event_type_of("OWN EVENT"), 0);
    EXPECT_EQ(event_type_of("5"), 5);
    EXPECT_EQ(event_type_of("(null)"), -1);
    EXPECT_EQ(block_type_of("ZEB5_own block"), 0);
    EXPECT_EQ(event_type_fault("own evnt"), "no event type: own evnt; did you mean 'own event'?");
    EXPECT_EQ(block_type_fault("(null)"), "no block type: (null)");
}

} // namespace
