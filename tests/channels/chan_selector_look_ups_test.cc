/// Look-ups by name must answer as a search from the front of the list does, also while names change.

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "support/capture.h"
#include "support/channel_records.h"
#include "support/selector_sources.h"
#include "xml_platform.h"

namespace {

bool is_local(int ev_type) {
    const int structure = get_event_struct_type(ev_type);
    return structure == ZEB5_EV_STRUCT_LOCAL || structure == ZEB5_EV_STRUCT_ML;
}

/// Whether each event type is local or ML, asked once: the search below is slow enough.
const std::vector<bool> &local_types() {
    static const std::vector<bool> types = [] {
        std::vector<bool> all;
        for (int type = 0; type < 32; ++type)
            all.push_back(is_local(type));
        return all;
    }();
    return types;
}

/// The selector's questions, searched for one by one in a list of its own that is read from the same files.
class reference_selector {
public:
    void add(const std::string &document, bool fails) {
        selector_sources sources(EXTR_FROM_FILE, {document});
        descr_extractor extractor;
        if (extractor.get_descriptions(sources, nullptr, list_, false) != fails)
            throw std::runtime_error("the reference cannot read");
        if (fails)
            return;
        for (const chan_descr_2010 *channel : list_.records)
            ev_types_ |= channel->ev_type;
    }

    size_t size() const { return list_.records.size(); }
    char *get_channel(int num) { return at(num)->daq_name; }
    char *get_prop(int num) { return at(num)->prop_name; }

    bool find_channel(int ev_type, const char *chan) const {
        if (!(ev_types_ >> (static_cast<unsigned>(ev_type) % 32) & 1))
            return false;
        const bool by_daq_name = is_local(ev_type);
        for (const chan_descr_2010 *channel : list_.records)
            if (std::strcmp(by_daq_name ? channel->daq_name : channel->prop_name, chan) == 0)
                return true;
        return false;
    }

    int get_event_type(const char *chan) const {
        for (const chan_descr_2010 *channel : list_.records)
            for (int b = 0; b < 32; ++b)
                if (channel->ev_type >> b & 1) {
                    if (!local_types()[static_cast<size_t>(b)] && std::strcmp(channel->prop_name, chan) == 0)
                        return static_cast<int>(channel->ev_type);
                    if (std::strcmp(channel->daq_name, chan) == 0)
                        return static_cast<int>(channel->ev_type);
                }
        return 0;
    }

    int get_data_type(const char *chan) const {
        for (const chan_descr_2010 *channel : list_.records)
            if (std::strcmp(channel->daq_name, chan) == 0)
                return static_cast<int>(channel->dtype);
        return 0;
    }

    int is_channel_slow(int num) const {
        const int events = get_event_type(at(num)->daq_name);
        return events == 0 ? -1 : (events & 0x3C) != 0;
    }

    int is_channel_ml(int num) const {
        const int events = get_event_type(at(num)->daq_name);
        if (events == 0)
            return -1;
        for (int b = 0; b < 32; ++b)
            if ((static_cast<unsigned>(events) >> b & 1) &&
                (get_event_struct_type(b) == ZEB5_EV_STRUCT_ML || std::strstr(at(num)->daq_name, ".ML")))
                return 1;
        return 0;
    }

    int get_subchannels(int num) const {
        const int slow = is_channel_slow(num);
        return slow == 1 ? 1 : slow == -1 ? 0 : static_cast<int>(at(num)->dims.size());
    }

private:
    chan_descr_2010 *at(int num) const { return list_.records.at(static_cast<size_t>(num)); }

    channel_list list_;
    std::uint32_t ev_types_ = 0;
};

/// Ends the test, a property or not, where the two differ.
void expect_same(int tested, int expected, const char *question, const std::string &channel) {
    if (tested != expected)
        throw std::runtime_error(std::string(question) + " of \"" + channel + "\" is " +
                                 std::to_string(tested) + ", not " + std::to_string(expected));
}

/// A selector and its reference, in step.
class pair_of_selectors {
public:
    /// `fails`: the document ends too early, behind its last channel.
    void add(const std::vector<channel_source> &channels, bool fails = false) {
        std::string document = channel_document(channels);
        if (fails)
            document.resize(document.rfind('<'));
        selector_sources sources(EXTR_FROM_FILE, {document});
        expect_same(tested_.set_descriptions(sources, nullptr), fails, "set_descriptions", "all");
        reference_.add(document, fails);
        expect_same(tested_.size(), size(), "size", "all");
    }

    int size() const { return static_cast<int>(reference_.size()); }

    /// A client writes into a name by the pointer that it has just been given.
    void rename(int num, bool prop, const std::string &text) {
        rename_by(prop ? tested_.get_prop(num) : tested_.get_channel(num), num, prop, text);
    }

    /// By a pointer that it was given before.
    void rename_by(char *pointer, int num, bool prop, const std::string &text) {
        std::strcpy(pointer, text.c_str());
        std::strcpy(prop ? reference_.get_prop(num) : reference_.get_channel(num), text.c_str());
    }

    void compare_name(const std::string &text) {
        char *const chan = name(text);
        expect_same(tested_.get_event_type(chan), reference_.get_event_type(chan), "get_event_type", text);
        expect_same(tested_.get_data_type(chan), reference_.get_data_type(chan), "get_data_type", text);
        for (int ev_type : {0, 1, 7, 20, 28, 36, -1})
            expect_same(tested_.find_channel(ev_type, chan), reference_.find_channel(ev_type, chan),
                        "find_channel", text);
    }

    void compare_number(int num) {
        const std::string text = std::to_string(num);
        expect_same(tested_.is_channel_slow(num), reference_.is_channel_slow(num), "is_channel_slow", text);
        expect_same(tested_.is_channel_ml(num), reference_.is_channel_ml(num), "is_channel_ml", text);
        expect_same(tested_.get_subchannels(num), reference_.get_subchannels(num), "get_subchannels", text);
    }

    chan_selector &tested() { return tested_; }

private:
    chan_selector tested_;
    reference_selector reference_;
};

const std::vector<std::string> few_names = {"A", "B", "C", "D.ML", "E", "AA", "ORVIN/LONG/NAME", "X.ML.Y"};
const std::vector<std::uint32_t> masks = {0,    0,          1u << 1,  1u << 4,   1u << 7,   1u << 20,
                                          0x90, 0x80000080, 1u << 28, 0x8000080, 0xFFFFFFFF};

rc::Gen<channel_source> any_channel(const rc::Gen<std::string> &any_name) {
    return rc::gen::construct<channel_source>(any_name, any_name, rc::gen::elementOf(masks),
                                              rc::gen::inRange<std::uint32_t>(0, 100),
                                              rc::gen::inRange(0, 3));
}

/// Runs a property whose questions print, and tells what it came to.
void check(const char *what, void (*property)()) {
    const xml_platform platform; // a thousand small files are read
    bool holds = false;
    const captured seen = capture([&] { holds = rc::check(what, property); });
    EXPECT_TRUE(holds) << seen.err << seen.out;
}

TEST(ChanSelectorLookUps, AnswerAsASearchWhileNamesChange) {
    check("small lists, names changed by fresh and by kept pointers", [] {
        const auto any_name = rc::gen::elementOf(few_names);
        pair_of_selectors both;
        both.add(*rc::gen::nonEmpty(rc::gen::container<std::vector<channel_source>>(any_channel(any_name))));
        std::vector<std::pair<char *, char *>> kept;
        const int steps = *rc::gen::inRange(1, 40);
        for (int step = 0; step < steps; ++step) {
            const int num = *rc::gen::inRange(0, both.size());
            const bool prop = *rc::gen::arbitrary<bool>();
            const std::string text = *rc::gen::elementOf(
                std::vector<std::string>{"A", "B", "C", "NEW", "", "D.ML", std::string(255, 'n')});
            switch (*rc::gen::inRange(0, 7)) {
            case 0:
                both.rename(num, prop, text);
                break;
            case 1:
                kept.clear();
                for (int i = 0; i < both.size(); ++i)
                    kept.emplace_back(both.tested().get_channel(i), both.tested().get_prop(i));
                break;
            case 2:
                if (static_cast<size_t>(num) < kept.size()) {
                    const auto &[daq_name, prop_name] = kept[static_cast<size_t>(num)];
                    both.rename_by(prop ? prop_name : daq_name, num, prop, text);
                }
                break;
            case 3:
                if (both.size() < 100)
                    both.add({*any_channel(any_name)});
                break;
            case 4:
                both.compare_number(num);
                break;
            default:
                both.compare_name(*rc::gen::element(text, *any_name));
            }
        }
        for (int i = 0; i < both.size(); ++i)
            both.compare_number(i);
        for (const std::string &one : few_names)
            both.compare_name(one);
    });
}

std::string numbered(const char *prefix, int number) { return prefix + std::to_string(number); }

/// Names that are mostly unique, some repeated, some of another's property.
std::vector<channel_source> many_channels(int number) {
    std::vector<channel_source> channels;
    for (int i = 0; i < number; ++i)
        channels.push_back({numbered("P", i % 7 == 0 ? i / 2 : i),
                            numbered(i % 11 == 0 ? "P" : "D", i % 5 ? i : i / 3),
                            masks[static_cast<size_t>(*rc::gen::inRange<size_t>(0, masks.size()))],
                            static_cast<std::uint32_t>(i), i % 3});
    return channels;
}

/// A pointer that a client has kept.
struct kept_pointer {
    char *pointer;
    int num;
    bool prop;
};

TEST(ChanSelectorLookUps, AnswerAsASearchInListsOfAnyLengthWithNamesChangedByAnyKeptPointer) {
    check("lists of any length", [] {
        pair_of_selectors both;
        const int most = *rc::gen::element(1, 20, 300, 2000);
        both.add(many_channels(*rc::gen::inRange(1, most + 1)));
        const auto any_name = [&] {
            return numbered(*rc::gen::element("P", "D", "N", ""), *rc::gen::inRange(0, most));
        };
        std::vector<kept_pointer> kept;
        const auto keep = [&](int num, bool prop) {
            kept.push_back({prop ? both.tested().get_prop(num) : both.tested().get_channel(num), num, prop});
        };
        for (int step = *rc::gen::inRange(1, 60); step > 0; --step)
            switch (*rc::gen::inRange(0, 8)) {
            case 0: // all from one on
                for (int i = *rc::gen::inRange(0, both.size()); i < both.size(); ++i)
                    keep(i, *rc::gen::arbitrary<bool>());
                break;
            case 1:
                keep(*rc::gen::inRange(0, both.size()), *rc::gen::arbitrary<bool>());
                break;
            case 2:
                if (*rc::gen::inRange(0, 5) == 0)
                    both.add(many_channels(*rc::gen::inRange(1, 50)), *rc::gen::arbitrary<bool>());
                break;
            case 3:
                both.compare_number(*rc::gen::inRange(0, both.size()));
                break;
            case 4:
                both.compare_name(any_name());
                break;
            default:
                if (!kept.empty()) {
                    const kept_pointer chosen = *rc::gen::elementOf(kept);
                    const std::string text = any_name();
                    both.rename_by(chosen.pointer, chosen.num, chosen.prop, text);
                    if (*rc::gen::arbitrary<bool>())
                        both.compare_name(text);
                }
            }
        for (int i = 0; i < both.size(); i += 1 + both.size() / 50) {
            both.compare_number(i);
            both.compare_name(numbered("D", i));
            both.compare_name(numbered("P", i));
        }
    });
}

/// Six hundred channels, all of them handed out; `first` is the DAQ name of channel 0.
struct long_list : pair_of_selectors {
    long_list() {
        std::vector<channel_source> channels;
        for (int i = 0; i < 600; ++i)
            channels.push_back(
                {numbered("P", i), numbered("D", i), 1u << (i % 28), static_cast<std::uint32_t>(i), 1});
        add(channels);
        compare_name("D599");
        first = tested().get_channel(0);
        for (int i = 1; i < 600; ++i)
            tested().get_channel(i);
    }
    char *first = nullptr;
};

void question_all(long_list &list) {
    for (int i = 0; i < 600; ++i) {
        list.compare_name(numbered("D", i));
        list.compare_name(numbered("P", i));
        list.compare_number(i);
    }
    list.compare_name("NEW");
}

TEST(ChanSelectorLookUps, FindANewNameWrittenByAnOldPointer) {
    capture([] {
        long_list list;
        list.compare_name("NOBODY");
        list.rename_by(list.first, 0, false, "NEW");
        list.compare_name("NEW");
        list.rename_by(list.first, 0, false, "D150"); // earlier than the one that has this name
        list.compare_name("D150");
        list.compare_name("D0"); // no longer there
        question_all(list);
    });
}

TEST(ChanSelectorLookUps, FollowNamesThatAreCutShortThroughKeptPointers) {
    std::vector<channel_source> channels;
    for (std::uint32_t i = 0; i < 600; ++i)
        channels.push_back({numbered("P", static_cast<int>(i)),
                            numbered("D", static_cast<int>(i / 2)) + (i % 2 ? "" : ".RAW"), 2, i, 0});
    chan_selector selector;
    ASSERT_FALSE(add_channels(selector, channels));
    std::vector<char *> pointers;
    for (int i = 0; i < 600; ++i)
        pointers.push_back(selector.get_channel(i));
    for (int i = 0; i < 600; i += 2)
        *std::strstr(pointers[static_cast<std::size_t>(i)], ".RAW") = '\0';
    for (int i = 0; i < 600; ++i)
        EXPECT_EQ(selector.get_data_type(pointers[static_cast<std::size_t>(i)]), i / 2 * 2) << i;
}

TEST(ChanSelectorLookUps, FindAnotherRecordsPropertyWrittenAsADaqNameByAnOldPointer) {
    capture([] {
        long_list list;
        char *pointer = list.tested().get_channel(7);
        for (int i = 200; i < 500; ++i)
            list.tested().get_channel(i);
        list.rename_by(pointer, 7, false, "P300");
        expect_same(list.tested().get_data_type(name("P300")), 7, "get_data_type", "P300");
        question_all(list);
    });
}

TEST(ChanSelectorLookUps, FindAnotherRecordsDaqNameWrittenAsAPropertyByAnOldPointer) {
    capture([] {
        long_list list;
        char *pointer = list.tested().get_prop(7);
        for (int i = 200; i < 500; ++i)
            list.tested().get_channel(i);
        list.rename_by(pointer, 7, true, "D300");
        expect_same(list.tested().find_channel(1, name("D300")), true, "find_channel", "D300");
        question_all(list);
    });
}

TEST(ChanSelectorLookUps, FollowAChannelOfTwoIdentitiesFromEitherNumber) {
    const std::string document =
        "<CHANDESCRIPTIONS><CHANNEL><EVTYPE>2</EVTYPE><PROP>A</PROP><PROP>B</PROP><NAME>D</NAME></CHANNEL>"
        "<CHANNEL><EVTYPE>4</EVTYPE><PROP>C</PROP><NAME>E</NAME></CHANNEL></CHANDESCRIPTIONS>";
    for (int num : {0, 1}) {
        chan_selector selector;
        selector_sources sources(EXTR_FROM_FILE, {document});
        ASSERT_FALSE(selector.set_descriptions(sources, nullptr));
        EXPECT_EQ(selector.get_event_type(name("E")), 4);
        std::strcpy(selector.get_channel(num), "E");
        EXPECT_EQ(selector.get_event_type(name("E")), 2);
        EXPECT_EQ(selector.get_event_type(name("C")), 4);
    }
}

// A client may overwrite a whole field, its end included; nothing beyond the field is then taken for a name.
TEST(ChanSelectorLookUps, SurviveANameWithoutItsEnd) {
    chan_selector selector;
    add_channels(selector, {{"P", "D", 2, 7, 0}, {"Q", "E", 4, 8, 0}});
    std::memset(selector.get_channel(0), 'x', 256);
    const captured seen = capture([&] {
        EXPECT_EQ(selector.get_event_type(name(std::string(256, 'x'))), 0);
        EXPECT_EQ(selector.is_channel_slow(0), -1);
        EXPECT_EQ(selector.get_event_type(name("E")), 4);
        EXPECT_EQ(selector.get_event_type(name("P")), 2);
        EXPECT_EQ(selector.get_data_type(name("D")), 0);
    });
    const std::string line = "CHANNEL " + std::string(256, 'x') + " NOT FOUND\n";
    EXPECT_EQ(seen.out, line + line);
}

} // namespace
