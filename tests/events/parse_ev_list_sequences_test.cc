/// Random sequences of elements against a plain model of the reader's flags.

#include "parse_ev_list.h"

#include <iterator>
#include <optional>
#include <random>

#include <gtest/gtest.h>

#include "support/element.h"
#include "support/event_list_records.h"
#include "xml_platform.h"

namespace {

struct random_element {
    const char *tag;
    const char *text; // null: an empty element
};

/// What leads to channels stands there twice.
const random_element alphabet[] = {
    {"TYPE", "5"},       {"SBLOCK", "A"},     {"CHLIST", nullptr},   {"CHLIST", nullptr},  {"CHAN", "c"},
    {"EVENT", nullptr},  {"EVENT", "text"},   {"TYPE", nullptr},     {"TYPE", "5"},        {"TYPE", "6"},
    {"TYPE", "32"},      {"TYPE", "33"},      {"TYPE", "-1"},        {"SBLOCK", "A"},      {"SBLOCK", "B"},
    {"SBLOCK", nullptr}, {"CHLIST", nullptr}, {"CHLIST", "text"},    {"CHAN", "c"},        {"CHAN", "d"},
    {"CHAN", nullptr},   {"TMASK", "1"},      {"MINTIMESEC", "0x2"}, {"MINTIMEUSEC", "3"}, {"PRIORITY", "4"},
    {"TMASK", nullptr},  {"OTHER", "text"},
};

/// The reader as a list of rules on the steps, with its flags kept apart.
class model {
public:
    explicit model(event_list &list) : list_(list) {}

    void step(const std::string &tag, std::optional<std::string> value) {
        if (tag == "EVENT") {
            in_event = true;
            type_seen = server_block_seen = in_channel_list = false;
        } else if (tag == "TYPE") {
            if (in_event)
                type(value);
        } else if (in_event && type_seen) {
            if (value && entry)
                store(tag, *value);
            if (server_block_seen && tag == "CHLIST")
                in_channel_list = true;
        }
    }

private:
    void type(const std::optional<std::string> &value) {
        if (!type_seen) {
            type_seen = true;
        } else if (value) {
            const int number = std::stoi(*value);
            if (number >= 0 && number <= 32)
                entry = add_entry(list_, number);
            else
                type_seen = false;
        }
    }

    void store(const std::string &tag, const std::string &value) {
        if (tag == "SBLOCK") {
            block = add_block(entry, value.c_str());
            in_channel_list = false;
            server_block_seen = true;
        } else if (tag == "CHAN" && in_channel_list && block) {
            block->ch_list->push_back(strcpy(new char[value.size() + 1], value.c_str()));
        } else if (tag == "TMASK") {
            entry->tmask = 1;
        } else if (tag == "MINTIMESEC") {
            entry->min_ev_time.timeup = 2;
        } else if (tag == "MINTIMEUSEC") {
            entry->min_ev_time.timelow = 3;
        } else if (tag == "PRIORITY") {
            entry->priority = 4;
        }
    }

    event_list &list_;
    bool in_event = false, type_seen = false, server_block_seen = false, in_channel_list = false;
    zeb5_ev_entry *entry = nullptr;
    zeb5_ev_sb_list *block = nullptr;
};

} // namespace

TEST(ParseEvListSequences, AreReadAsTheFlagsSay) {
    const xml_platform up;
    std::mt19937 random(20240514);
    std::size_t entries = 0, channels = 0;
    for (int run = 0; run < 4000; ++run) {
        event_list wanted, list;
        model rules(wanted);
        std::string document = "<BMR>";
        const auto add = [&](const random_element &e) {
            document += element(e.tag, e.text ? e.text : "");
            rules.step(e.tag, std::nullopt);
            // the end tag delivers an element without text again
            rules.step(e.tag, e.text ? std::optional<std::string>(e.text) : std::nullopt);
        };
        if (run % 2 == 0) // these get further
            for (const random_element &e : {random_element{"EVENT", nullptr}, {"TYPE", "7"}, {"SBLOCK", "A"}})
                add(e);
        for (std::size_t left = random() % 40; left > 0; --left)
            add(alphabet[random() % std::size(alphabet)]);
        document += "</BMR>";
        ASSERT_EQ(zeb5_parse_ev_list_read(document.data(), &list.entries), 0) << document;
        ASSERT_EQ(describe(list.entries), describe(wanted.entries)) << document;
        entries += list.entries.size();
        for (const zeb5_ev_entry *entry : list.entries)
            for (const zeb5_ev_sb_list *block : *entry->sb_list)
                channels += block->ch_list->size();
    }
    EXPECT_GT(entries, 1000U); // the sequences do get somewhere
    EXPECT_GT(channels, 500U);
}
