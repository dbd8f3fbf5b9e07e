/// The numbers of the layouts of an index, which stand in event.h.

#include "event.h"

#include <gtest/gtest.h>

namespace {

// They stand in files that outlive this library; nothing in it uses them.
TEST(Event, NumbersTheLayoutsOfAnIndex) {
    EXPECT_EQ(ZEB5_DAQ_INDEX_FORMAT, 0);
    EXPECT_EQ(ZEB5_DAQ_INDEX_EVENT_FORMAT, 1);
    EXPECT_EQ(ZEB5_DAQ_INDEX_BOTH_FORMAT, 2);
    EXPECT_EQ(ZEB5_DAQ_INDEX_FORMAT_MAX, 3);
}

} // namespace
