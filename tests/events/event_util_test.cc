/// Names of event types and block types, and the structure classes of event types.

#include "event_util.h"

#include <climits>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

struct event_case {
    int number;
    const char *name;
    int structure;
};
const event_case event_cases[] = {
    {0, "HB", ZEB5_EV_STRUCT_GLOBAL},
    {1, "NORMAL", ZEB5_EV_STRUCT_GLOBAL},
    {2, "BOR", ZEB5_EV_STRUCT_GLOBAL},
    {3, "EOR", ZEB5_EV_STRUCT_GLOBAL},
    {4, "ENV", ZEB5_EV_STRUCT_GLOBAL},
    {5, "UPD", ZEB5_EV_STRUCT_GLOBAL},
    {6, "IMAGE", ZEB5_EV_STRUCT_LOCAL},
    {7, "WS", ZEB5_EV_STRUCT_LOCAL},
    {8, "MCP", ZEB5_EV_STRUCT_LOCAL},
    {9, "WSS", ZEB5_EV_STRUCT_LOCAL},
    {10, "BL1", ZEB5_EV_STRUCT_LOCAL},
    {11, "BL2", ZEB5_EV_STRUCT_LOCAL},
    {12, "BL3", ZEB5_EV_STRUCT_LOCAL},
    {13, "PG0", ZEB5_EV_STRUCT_LOCAL},
    {14, "PG1", ZEB5_EV_STRUCT_LOCAL},
    {15, "PG2", ZEB5_EV_STRUCT_LOCAL},
    {16, "GMD", ZEB5_EV_STRUCT_LOCAL},
    {17, "PHOTEN", ZEB5_EV_STRUCT_LOCAL},
    {18, "PHOTWL", ZEB5_EV_STRUCT_LOCAL},
    {19, "BEAM_ENERGY", ZEB5_EV_STRUCT_LOCAL},
    {20, "LLRF_ML", ZEB5_EV_STRUCT_ML},
    {21, "BEAM_ENERGY_BYPASS", ZEB5_EV_STRUCT_LOCAL},
    {22, "SPECTR_1", ZEB5_EV_STRUCT_LOCAL},
    {23, "SPECTR_2", ZEB5_EV_STRUCT_LOCAL},
    {24, "SPECTR_3", ZEB5_EV_STRUCT_LOCAL},
    {25, "SPECTR_4", ZEB5_EV_STRUCT_LOCAL},
    {26, "SPECTR_5", ZEB5_EV_STRUCT_LOCAL},
    {27, "TOROID_ML", ZEB5_EV_STRUCT_ML},
    {28, "28", ZEB5_EV_STRUCT_UNDEF},
    {29, "29", ZEB5_EV_STRUCT_UNDEF},
    {30, "30", ZEB5_EV_STRUCT_UNDEF},
    {31, "31", ZEB5_EV_STRUCT_UNDEF},
    {32, "EVMAX", ZEB5_EV_STRUCT_UNKNOWN},
    {33, "33", ZEB5_EV_STRUCT_UNKNOWN},
    {64, "64", ZEB5_EV_STRUCT_UNKNOWN},
    {-1, "-1", ZEB5_EV_STRUCT_UNKNOWN},
    {INT_MAX, "2147483647", ZEB5_EV_STRUCT_UNKNOWN},
    {INT_MIN, "-2147483648", ZEB5_EV_STRUCT_UNKNOWN},
};

TEST(EventUtilEventTypes, HaveTheNameOfTheirEnumeratorElseOfTheirNumber) {
    for (const auto &c : event_cases)
        EXPECT_STREQ(event_name_itoa(c.number), c.name) << c.number;
}

TEST(EventUtilEventTypes, HaveAStructureClass) {
    for (const auto &c : event_cases)
        EXPECT_EQ(get_event_struct_type(c.number), c.structure) << c.number;
}

TEST(EventUtilEventTypes, StructureClassesHaveTheNumbersThatReadersOfFrequenciesExpect) {
    EXPECT_EQ(ZEB5_EV_STRUCT_UNKNOWN, 0);
    EXPECT_EQ(ZEB5_EV_STRUCT_LOCAL, 1);
    EXPECT_EQ(ZEB5_EV_STRUCT_GLOBAL, 2);
    EXPECT_EQ(ZEB5_EV_STRUCT_ML, 3);
    EXPECT_EQ(ZEB5_EV_STRUCT_UNDEF, 4);
}

struct block_case {
    int number;
    const char *name;
};
const block_case block_cases[] = {
    {0, "0"},
    {1, "UPD_BLOCK"},
    {2, "ENV_DICT_BLOCK"},
    {3, "ENV_BLOCK"},
    {4, "BOR_BLOCK"},
    {5, "EOR_BLOCK"},
    {6, "BLOCK_BPM"},
    {7, "BLOCK_BPM_Z"},
    {8, "BLOCK_BPM_S"},
    {9, "BLOCK_SINGLE"},
    {10, "BLOCK_TOROID"},
    {11, "BLOCK_RF_250K"},
    {12, "BLOCK_ENERGY"},
    {13, "BLOCK_IMAGE"},
    {14, "BLOCK_WS_FAST"},
    {15, "BLOCK_WS_SLOW"},
    {16, "BLOCK_CPLINTL"},
    {17, "BLOCK_GUNINTL"},
    {18, "BLOCK_MCP"},
    {19, "BLOCK_PHM"},
    {20, "BLOCK_WSS_RAW"},
    {21, "BLOCK_WSS_COR"},
    {22, "BLOCK_NAME_VALUE"},
    {23, "BLOCK_EQDATA"},
    {24, "BLOCK_IMG_ROI1"},
    {25, "BLOCK_IMG_ROI2"},
    {26, "BLOCK_IMG_ROI3"},
    {27, "BLOCK_IMAGE_EXT"},
    {28, "BLOCK_GENERIC_SPECT"},
    {29, "29"},
    {30, "30"},
    {31, "UPD_BLOCK_DONT_USE_31"},
    {32, "32"},
    {33, "UPD_BLOCK_2010"},
    {34, "ENV_DICT_BLOCK_2010"},
    {35, "ENV_BLOCK_2010"},
    {36, "BOR_BLOCK_2010"},
    {37, "EOR_BLOCK_2010"},
    {38, "BLOCK_BPM_2010"},
    {39, "BLOCK_BPM_Z_2010"},
    {40, "BLOCK_BPM_S_2010"},
    {41, "BLOCK_1CHAN_2010"},
    {42, "BLOCK_TOROID_2010"},
    {43, "BLOCK_RF_250K_2010"},
    {44, "BLOCK_ENERGY_2010"},
    {45, "BLOCK_2CHAN_2010"},
    {46, "BLOCK_WS_2010"},
    {47, "BLOCK_4CHAN_2010"},
    {48, "BLOCK_CPLINTL_2010"},
    {49, "BLOCK_GUNINTL_2010"},
    {50, "BLOCK_MCP_2010"},
    {51, "BLOCK_PHM_2010"},
    {52, "BLOCK_6CHAN_2010"},
    {53, "BLOCK_8CHAN_2010"},
    {54, "54"},
    {55, "55"},
    {56, "56"},
    {57, "57"},
    {58, "58"},
    {59, "59"},
    {60, "BLOCK_3CHAN_2010"},
    {61, "BLOCK_5CHAN_2010"},
    {62, "BLOCK_7CHAN_2010"},
    {63, "BLOCK_MAX_2010"},
    {64, "64"},
    {-1, "-1"},
    {INT_MAX, "2147483647"},
    {INT_MIN, "-2147483648"},
};

TEST(EventUtilBlockTypes, HaveTheNameOfTheirEnumeratorElseOfTheirNumber) {
    for (const auto &c : block_cases)
        EXPECT_STREQ(block_name_itoa(c.number), c.name) << c.number;
}

TEST(EventUtilTypeNames, StayWhereTheyAreHoweverManyFollow) {
    const char *const event = event_name_itoa(1000);
    const char *const block = block_name_itoa(2000);
    for (int i = 1001; i < 1500; ++i) {
        event_name_itoa(i);
        block_name_itoa(i + 1000);
    }
    EXPECT_EQ(event_name_itoa(1000), event);
    EXPECT_EQ(block_name_itoa(2000), block);
    EXPECT_STREQ(event, "1000");
    EXPECT_STREQ(block, "2000");
}

TEST(EventUtilTypeNames, MayBeAskedForFromSeveralThreads) {
    constexpr int thread_count = 8, first = -500, count = 5000;
    std::vector<std::vector<const char *>> seen(thread_count);
    std::vector<std::thread> threads;
    for (auto &names : seen)
        threads.emplace_back([&names] {
            for (int i = 0; i < count; ++i)
                names.push_back(i % 2 ? event_name_itoa(first + i) : block_name_itoa(first + i));
        });
    for (auto &thread : threads)
        thread.join();
    for (const auto &names : seen) {
        ASSERT_EQ(names, seen.front()) << "one pointer per name, whichever thread asks";
        for (int i = 0; i < count; ++i)
            if (first + i < 0 || first + i > 63) {
                ASSERT_EQ(names[static_cast<size_t>(i)], std::to_string(first + i));
            }
    }
}

} // namespace
