/// A process may bring the three event-utility functions itself: the library must use those at run time. This
/// program does, and links the shared library like any other process.

#include <deque>

#include "parse_ev_list.h"
#include "support/chan_descr_writing.h"

namespace {

/// What get_event_struct_type() answers next, and what it was asked.
std::deque<int> struct_answers;
std::vector<int> struct_questions;

} // namespace

const char *event_name_itoa(int ev_type) {
    return ev_type == 4 ? "own event four" : ev_type == 5 ? nullptr : "own event";
}

const char *block_name_itoa(int block_type) {
    return block_type == 7    ? nullptr
           : block_type == 6  ? "own six"
           : block_type == 38 ? "own thirty-eight"
                              : "own block";
}

int get_event_struct_type(int ev_type) {
    struct_questions.push_back(ev_type);
    const int answer = struct_answers.front();
    if (struct_answers.size() > 1)
        struct_answers.pop_front();
    return answer;
}

TEST(OwnEventUtil, NamesTheBlockTypesOfTheSummaryTable) {
    channel_list list;
    const std::string name(50, 'n');
    list.add(make_channel("P", name.c_str()))->dtype = 0x40;
    list.add(make_channel("Q", name.c_str()))->dtype = 0x100;
    list.add(make_channel("R", name.c_str()))->dtype = 0x80;
    const temporary_file file;
    const dump_outcome seen = dump(list, &file.path(), summary_table, chandescriptions, -1, nullptr);
    EXPECT_EQ(seen.result, 0);
    EXPECT_EQ(seen.streams.out, "\n\n\n");
    EXPECT_EQ(file.text(), name + "\t1\town six\n" + name + "\t1\town block\n" + name + "\t1\t(null)\n");
}

TEST(OwnEventUtil, NamesTheTypesOfTheListing) {
    channel_list list;
    chan_descr_2010 *channel = list.add(make_channel("P", "N"));
    channel->ev_type = 0x12;
    channel->dtype = 0x80000040;
    const std::string rest = "\tcount  :0\n\tdb_key :-1\n\tprop   :P\n\tname   :N\n\tset_pnt:no\n\tdesc   :\n"
                             "\tsb_name:\n\tsubsys :\n\tunit   :\n\tmax_sz :1\n";
    EXPECT_EQ(listing_of(list.records),
              "========================\nZEB5 XML Channel Description (XCD)\n"
              "--------------[0]-----------------\n stream   : 0 \n"
              " ev type  : 0x12 own event:own event four\n data type: 0x80000040 own thirty-eight\n" +
                  rest);
}

TEST(OwnEventUtil, MayHaveNoNameForAType) {
    channel_list list;
    chan_descr_2010 *channel = list.add(make_channel("P", "N"));
    channel->ev_type = 0x30;
    channel->dtype = 0x80;
    const std::string listing = listing_of(list.records);
    EXPECT_NE(listing.find(" ev type  : 0x30 own event four:(null)\n data type: 0x80 (null)\n"), listing.npos)
        << listing;
    zeb5_ev_entry entry{};
    entry.evtype = static_cast<ZEB5_EVTYPE>(5);
    const std::vector<zeb5_ev_entry *> entries = {&entry};
    EXPECT_EQ(capture([&] { zeb5_print_ev_list(&entries); }).out,
              "Entry[0]\nEVENT TYPE:\t(null)\nTrigger mask:\t0x0 (0)\nMin event time:\t0 sec 0 usec\n"
              "Priority:\t0x0 (0)\nNo server block list -> Full event\n");
}

namespace {

struct answer_case {
    std::deque<int> answers;
    size_t questions;
    const char *freq;
};
const answer_case answer_cases[] = {
    {{ZEB5_EV_STRUCT_LOCAL}, 1, "-1"},
    {{ZEB5_EV_STRUCT_ML}, 2, "-1"},
    {{ZEB5_EV_STRUCT_UNKNOWN}, 2, "1"},
    {{ZEB5_EV_STRUCT_GLOBAL}, 2, "1"},
    {{ZEB5_EV_STRUCT_UNDEF}, 2, "1"},
    {{5}, 2, "1"}, // values outside the enumeration
    {{-1}, 2, "1"},
    {{257}, 2, "1"},
    // A function that changes its mind: the first answer is tried for local, the second for ML.
    {{ZEB5_EV_STRUCT_GLOBAL, ZEB5_EV_STRUCT_ML}, 2, "-1"},
    {{ZEB5_EV_STRUCT_ML, ZEB5_EV_STRUCT_GLOBAL}, 2, "1"},
    {{ZEB5_EV_STRUCT_ML, ZEB5_EV_STRUCT_LOCAL}, 2, "1"},
};

} // namespace

TEST(OwnEventUtil, DecidesTheFrequency) {
    for (const answer_case &c : answer_cases) {
        channel_list list;
        list.add(make_channel("P", "N"))->ev_type = 0x80000012;
        struct_answers = c.answers;
        struct_questions.clear();
        EXPECT_EQ(
            xml_of(list, daqvariables),
            daqvariables_document("<DaqFloat>\n<evType>-2147483630</evType>\n<orvin>P</orvin>\n"
                                  "<daqName>N</daqName>\n<DBKey>-1</DBKey>\n<setPoint>0</setPoint>\n"
                                  "<sbName></sbName>\n<subSystem></subSystem>\n<description></description>\n"
                                  "<units></units>\n<freq>" +
                                  std::string(c.freq) + "</freq>\n</DaqFloat>\n"));
        EXPECT_EQ(struct_questions, std::vector<int>(c.questions, -2147483630));
    }
}

TEST(OwnEventUtil, IsNotAskedForWhatIsNotWritten) {
    channel_list list;
    list.add(make_channel("P", "N"))->ev_type = 1;
    struct_answers = {ZEB5_EV_STRUCT_LOCAL};
    struct_questions.clear();
    xml_of(list, chandescriptions);
    EXPECT_EQ(struct_questions, std::vector<int>());
    list.add(make_channel("P", "N"))->ev_type = 2; // skipped
    xml_of(list, daqvariables);
    EXPECT_EQ(struct_questions, std::vector<int>{1});
}
