#include "parse_ev_list.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <string_view>

#include "elements/event_list_elements.h"
#include "readers/documents.h"
#include "steps/tag_table.h"
#include "text/field_text.h"
#include "text/number_text.h"

namespace {

using namespace zeb5;

/// Appends a new entry, zero in every field but its type.
zeb5_ev_entry *append_entry(std::vector<zeb5_ev_entry *> &list, ZEB5_EVTYPE type) {
    auto blocks = std::make_unique<std::vector<zeb5_ev_sb_list *>>();
    auto entry = std::make_unique<zeb5_ev_entry>();
    entry->evtype = type;
    entry->sb_list = blocks.get();
    list.push_back(entry.get()); // may throw: both are still ours until here
    (void)blocks.release();
    return entry.release();
}

zeb5_ev_sb_list *append_block(std::vector<zeb5_ev_sb_list *> &blocks, std::string_view name) {
    auto channels = std::make_unique<std::vector<char *>>();
    auto block = std::make_unique<zeb5_ev_sb_list>();
    copy_text(block->sb_list, name.substr(0, longest_block_name));
    block->ch_list = channels.get();
    blocks.push_back(block.get());
    (void)channels.release();
    return block.release();
}

void append_channel(std::vector<char *> &channels, std::string_view name) {
    if (channels.empty())
        channels.reserve(4); // rather than growing to it in three steps; saves 1.5 % of the instructions
    std::unique_ptr<char[]> copy(new char[name.size() + 1]);
    std::memcpy(copy.get(), name.data(), name.size());
    copy[name.size()] = '\0';
    channels.push_back(copy.get());
    (void)copy.release();
}

class event_list_reader {
public:
    explicit event_list_reader(std::vector<zeb5_ev_entry *> &list) : list_(list) {}

    void act(const step &step);
    static reader_row row_of(std::string_view tag);

private:
    using self = event_list_reader;

    /// How much of the event was read; nesting is ignored.
    enum place { OUTSIDE, IN_EVENT, TYPE_SEEN };
    enum effect { MARKS = false, FILLS_ENTRY = true }; // filling needs a text and a current entry

    struct element {
        place from; // where it counts first; before, it is ignored
        effect fills_entry;
        void (*action)(self &, const step &);
    };

    static void event(self &r, const step &) {
        r.place_ = IN_EVENT;
        r.block_seen_ = false;
        r.in_channel_list_ = false;
    }

    /// The start tag is only noted; the text that follows makes the entry. An invalid type takes the note
    /// back, so that the elements that belong to it are ignored.
    static void type(self &r, const step &s) {
        if (r.place_ != TYPE_SEEN) {
            r.place_ = TYPE_SEEN; // such a step is a start tag, which has no value yet
        } else if (s.value) {
            // Kept: where a list gives a type of more than 32 bits, consumers see it cut to 32 bits
            const auto number = static_cast<std::uint32_t>(to_number(s.text()));
            // Kept: consumers also get entries of EVMAX itself, and one for every further TYPE of an event
            if (number <= ZEB5_EV_EVMAX)
                r.entry_ = append_entry(r.list_, static_cast<ZEB5_EVTYPE>(number));
            else
                r.place_ = IN_EVENT;
        }
    }

    static void server_block(self &r, const step &s) {
        r.block_ = append_block(*r.entry_->sb_list, s.text());
        r.block_seen_ = true;
        r.in_channel_list_ = false;
    }

    static void channel_list(self &r, const step &) {
        if (r.block_seen_)
            r.in_channel_list_ = true; // Kept: lists may also give a CHAN after their CHLIST
    }

    static void channel(self &r, const step &s) {
        if (r.in_channel_list_) // only ever set after a server block
            append_channel(*r.block_->ch_list, s.text());
    }

    template <auto Field> static void number(self &r, const step &s) {
        read_unsigned(s.text(), r.entry_->*Field);
    }

    template <auto Field> static void min_time(self &r, const step &s) {
        read_unsigned(s.text(), r.entry_->min_ev_time.*Field);
    }

    /// A row whose element the published rows keep in the same field.
    template <auto... Fields>
    static consteval tag_row<element> filling_row(std::string_view tag,
                                                  void (*action)(self &, const step &)) {
        return {kept_in<Fields...>(event_list_rows, tag), {TYPE_SEEN, FILLS_ENTRY, action}};
    }

    template <auto Field> static consteval tag_row<element> number_row(std::string_view tag) {
        return filling_row<Field>(tag, number<Field>);
    }

    template <auto Field> static consteval tag_row<element> time_row(std::string_view tag) {
        return filling_row<&zeb5_ev_entry::min_ev_time, Field>(tag, min_time<Field>);
    }

    static const auto &elements() {
        static constexpr tag_row<element> rows[] = {
            {event_tags::event, {OUTSIDE, MARKS, event}},
            {kept_in<&zeb5_ev_entry::evtype>(event_list_rows, event_tags::type), {IN_EVENT, MARKS, type}},
            filling_row<&zeb5_ev_sb_list::sb_list>(event_tags::server_block, server_block),
            {event_tags::channel_list, {TYPE_SEEN, MARKS, channel_list}},
            {event_tags::channel, {TYPE_SEEN, FILLS_ENTRY, channel}},
            number_row<&zeb5_ev_entry::tmask>(event_tags::trigger_mask),
            time_row<&time_stamp::timeup>(event_tags::seconds),
            time_row<&time_stamp::timelow>(event_tags::microseconds),
            number_row<&zeb5_ev_entry::priority>(event_tags::priority),
        };
        static_assert(has_names_of(rows, event_list_rows));
        static constexpr tag_table table{rows};
        return table;
    }

    std::vector<zeb5_ev_entry *> &list_;
    place place_ = OUTSIDE;
    bool block_seen_ = false; // in this event
    bool in_channel_list_ = false;
    // Kept: both outlast their event, so consumers see what follows an empty TYPE in the entry before it
    zeb5_ev_entry *entry_ = nullptr;
    zeb5_ev_sb_list *block_ = nullptr;
};

/// After the class, where the return type of elements() is known.
inline void event_list_reader::act(const step &step) {
    const element &found = elements().action(step.row);
    if (place_ >= found.from && (!found.fills_entry || entry_))
        found.action(*this, step);
}

inline reader_row event_list_reader::row_of(std::string_view tag) {
    const int row = elements().row_of(tag);
    return {row, row != reader_row::none && !elements().action(row).fills_entry};
}

template <class Document> int read_ev_list(char *source, std::vector<zeb5_ev_entry *> *list) {
    if (!list)
        return 1;
    return walk_document<Document>(source, [list](document_steps &steps, std::string_view root) {
        if (root != event_tags::root) {
            std::fprintf(stderr, "WRONG root tag: %.*s must be '%s'\n", static_cast<int>(root.size()),
                         root.data(), event_tags::root);
            return 1;
        }
        event_list_reader reader(*list);
        for_each_step(steps, reader);
        return 0;
    });
}

void print_block(std::size_t number, const zeb5_ev_sb_list &block) {
    std::printf("Server block[%zu]: '%.*s'\n", number, static_cast<int>(sizeof block.sb_list), block.sb_list);
    if (!block.ch_list || block.ch_list->empty()) {
        std::printf("No channel list -> ALL channels\n");
        return;
    }
    std::printf("Channels: %zu\n", block.ch_list->size());
    for (std::size_t i = 0; i < block.ch_list->size(); ++i)
        std::printf("Channel[%zu]:\t'%s'\n", i, (*block.ch_list)[i]);
}

void print_entry(std::size_t number, const zeb5_ev_entry &entry) {
    std::printf("Entry[%zu]\n", number);
    std::printf("EVENT TYPE:\t%s\n", event_name_itoa(entry.evtype));
    std::printf("Trigger mask:\t0x%x (%u)\n", entry.tmask, entry.tmask);
    // Kept: listings show the time signed
    std::printf("Min event time:\t%d sec %d usec\n", static_cast<std::int32_t>(entry.min_ev_time.timeup),
                static_cast<std::int32_t>(entry.min_ev_time.timelow));
    std::printf("Priority:\t0x%x (%u)\n", entry.priority, entry.priority);
    if (!entry.sb_list) {
        std::printf("No server block list -> Full event\n");
        return;
    }
    std::printf("Server Blocks: %zu\n", entry.sb_list->size());
    for (std::size_t i = 0; i < entry.sb_list->size(); ++i)
        if (const zeb5_ev_sb_list *const block = (*entry.sb_list)[i])
            print_block(i, *block);
}

void release_block(const zeb5_ev_sb_list *block) {
    if (!block)
        return;
    // Kept: callers keep hold of an empty channel list
    if (block->ch_list && !block->ch_list->empty()) {
        for (const char *channel : *block->ch_list)
            delete[] channel;
        delete block->ch_list;
    }
    delete block;
}

} // namespace

int zeb5_parse_ev_list_read(char *xml, std::vector<zeb5_ev_entry *> *list) {
    return read_ev_list<memory_document>(xml, list);
}

int zeb5_parse_ev_list_readf(char *file, std::vector<zeb5_ev_entry *> *list) {
    return read_ev_list<file_document>(file, list);
}

void zeb5_print_ev_list(const std::vector<zeb5_ev_entry *> *list) {
    if (!list)
        return;
    for (std::size_t i = 0; i < list->size(); ++i)
        if (const zeb5_ev_entry *const entry = (*list)[i])
            print_entry(i, *entry);
}

void zeb5_clean_ev_list(std::vector<zeb5_ev_entry *> *list) {
    if (!list)
        return;
    for (const zeb5_ev_entry *entry : *list) {
        if (!entry || !entry->sb_list) // Kept: an entry without it was made by the caller, who keeps it
            continue;
        for (const zeb5_ev_sb_list *block : *entry->sb_list)
            release_block(block);
        delete entry->sb_list;
        delete entry;
    }
    list->clear();
}
