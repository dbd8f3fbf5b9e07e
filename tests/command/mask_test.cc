/// `zeb5xml mask`: masks to names and back.

#include <gtest/gtest.h>

#include "support/command_runner.h"

namespace {

const std::string heading = "MASK  UNSIGNED  SIGNED  NAMES\n";
const std::string wide_heading = "MASK        UNSIGNED    SIGNED       NAMES\n";

TEST(CommandMask, TurnsNumbersIntoNamesAndBack) {
    struct mask_case {
        std::vector<std::string> arguments;
        std::string table;
    };
    const mask_case cases[] = {
        {{"event", "12"}, heading + "0xc   12        12      BOR,EOR\n"},
        {{"event", "0xC"}, heading + "0xc   12        12      BOR,EOR\n"},
        {{"event", "BOR,EOR"}, heading + "0xc   12        12      BOR,EOR\n"},
        {{"event", "eor:ZEB5_EV_BOR"}, heading + "0xc   12        12      BOR,EOR\n"},
        {{"event", "0", "HB"}, heading + "0x0   0         0       -\n0x1   1         1       HB\n"},
        {{"dtype", "0x80000200"}, wide_heading + "0x80000200  2147484160  -2147483136  BLOCK_1CHAN_2010\n"},
        {{"dtype", "BLOCK_1CHAN_2010"},
         wide_heading + "0x80000200  2147484160  -2147483136  BLOCK_1CHAN_2010\n"},
        {{"dtype", "--", "-2147483136"},
         wide_heading + "0x80000200  2147484160  -2147483136  BLOCK_1CHAN_2010\n"},
        {{"dtype", "BLOCK_BPM,BLOCK_SINGLE"}, heading + "0x240  576       576     BLOCK_BPM,BLOCK_SINGLE\n"},
    };
    const command_folder folder;
    for (const mask_case &row : cases) {
        std::vector<std::string> arguments = {"mask"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        std::string table = row.table;
        if (row.arguments[1] == "BLOCK_BPM,BLOCK_SINGLE")
            table.replace(0, heading.size(), "MASK   UNSIGNED  SIGNED  NAMES\n");
        EXPECT_EQ(folder.run(arguments), (command_result{0, table, ""}));
    }
}

TEST(CommandMask, ListsAllNames) {
    const command_folder folder;
    const command_result events = folder.run({"mask", "event"}), blocks = folder.run({"mask", "dtype"});
    EXPECT_TRUE(
        events.out.starts_with("TYPE  MASK        NAME\n0     0x1         HB\n1     0x2         NORMAL\n"))
        << events;
    EXPECT_TRUE(events.out.ends_with("31    0x80000000  31\n")) << events;
    EXPECT_TRUE(blocks.out.ends_with("62    0xc0000000  BLOCK_7CHAN_2010\n")) << blocks;
    EXPECT_NE(blocks.out.find("41    0x80000200  BLOCK_1CHAN_2010\n"), std::string::npos) << blocks;
}

TEST(CommandMask, RefusesWhatIsNoMask) {
    const command_folder folder;
    EXPECT_EQ(folder.run({"mask", "event", "BOR,NO"}),
              (command_result{2, "", "zeb5xml: no event type: NO; `zeb5xml mask event` lists all\n"}));
    for (const std::string text : {"4294967296", "0x100000000", "0x-5", "0x", "1e3"})
        EXPECT_EQ(folder.run({"mask", "event", text}),
                  (command_result{2, "",
                                  "zeb5xml: no mask: " + text +
                                      "; a mask is a whole number from -2147483648 to 4294967295, or 0x and "
                                      "up to 8 digits\n"}));
    EXPECT_EQ(folder.run({"mask", "dtype", "BLOCK_BPM,BLOCK_1CHAN_2010"}),
              (command_result{2, "",
                              "zeb5xml: one data-type word holds block types below 32, or those above: "
                              "BLOCK_BPM,BLOCK_1CHAN_2010\n"}));
}

} // namespace
