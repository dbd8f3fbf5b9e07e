#include "parse_env_index_dictionary.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>

#include "dictionary/env_index_dictionary_layouts.h"
#include "readers/documents.h"
#include "steps/tag_table.h"
#include "text/field_text.h"
#include "text/number_text.h"

namespace {

using namespace zeb5;

struct free_release {
    void operator()(void *entry) const { std::free(entry); }
};

template <class Layout> class dictionary_reader {
public:
    using entry = typename Layout::entry;

    explicit dictionary_reader(std::vector<entry *> &list) : list_(list) {}

    void act(const step &step) {
        if (step.row == channel_row || entry_)
            elements().action(step.row)(*this, step);
    }

    static reader_row row_of(std::string_view tag) {
        const int row = elements().row_of(tag);
        return {row, row == channel_row};
    }

private:
    using self = dictionary_reader;
    using store = void (*)(self &, const step &);

    static constexpr int channel_row = 0; // the only row that needs neither an entry nor a text

    /// From here on elements belong to a new entry; an entry that never got into the list is reused.
    static void begin_channel(self &r, const step &) {
        if (!r.unlisted_)
            r.unlisted_.reset(static_cast<entry *>(std::malloc(sizeof(entry))));
        r.entry_ = r.unlisted_.get();
        r.index_seen_ = r.prop_seen_ = false;
        if (!r.entry_) {
            std::fputs(Layout::no_memory, stdout); // and the elements of this channel are ignored
            return;
        }
        *r.entry_ = {};
        r.entry_->index = -1;
    }

    /// Kept: only `arrived` is reset; the other of INDEX and PROP stays seen. So users of the list get the
    /// same entry once more for a further one of `arrived`.
    void append(bool &arrived) {
        list_.push_back(entry_);
        (void)unlisted_.release(); // the list owns it from here on
        arrived = false;
    }

    static void index(self &r, const step &s) {
        r.entry_->index = static_cast<std::int32_t>(to_number(s.text()));
        r.index_seen_ = true;
        if (r.prop_seen_)
            r.append(r.index_seen_);
    }

    static void prop(self &r, const step &s) {
        auto &field = r.entry_->data.env_prop;
        std::memset(field, 0, sizeof field); // a further PROP leaves nothing of the one before
        copy_text(field, s.text());
        r.prop_seen_ = true;
        if (r.index_seen_)
            r.append(r.prop_seen_);
    }

    template <auto Field> static void delta(self &r, const step &s) {
        read_float(s.text(), r.entry_->data.*Field);
    }

    static constexpr auto &published = env_index_dictionary_layout_elements<entry>::rows;

    /// A row whose element the published rows keep in the same field.
    template <auto... Fields> static consteval tag_row<store> row(std::string_view tag, store action) {
        return {kept_in<Fields...>(published, tag), action};
    }

    template <auto Field> static consteval tag_row<store> delta_row(std::string_view tag) {
        return row<&entry::data, Field>(tag, delta<Field>);
    }

    static const auto &elements() {
        using block = decltype(entry::data);
        static constexpr tag_row<store> rows[] = {
            {env_tags[ENV_INDX_CHAN], begin_channel}, // in channel_row
            row<&entry::index>(env_tags[ENV_INDX_INDX], index),
            row<&entry::data, &block::env_prop>(env_tags[ENV_INDX_PROP], prop),
            delta_row<&block::env_ch_abs_delta>(env_tags[ENV_INDX_DABS]),
            delta_row<&block::env_ch_rel_delta>(env_tags[ENV_INDX_DREL]),
        };
        static_assert(has_names_of(rows, published));
        static constexpr tag_table table{rows};
        return table;
    }

    std::vector<entry *> &list_;
    entry *entry_ = nullptr;                        // that elements go to; null: they are ignored
    std::unique_ptr<entry, free_release> unlisted_; // owns it until it is listed
    bool index_seen_ = false;
    bool prop_seen_ = false;
};

template <class Document, class Layout>
int read_dictionary(char *source, std::vector<typename Layout::entry *> *list) {
    if (!list)
        return 1;
    return walk_document<Document>(source, [list](document_steps &steps, std::string_view root) {
        if (root != env_tags[ENV_INDX_ROOT]) {
            std::fprintf(stderr, "WRONG root tag: '%.*s' must be '%s'\n", static_cast<int>(root.size()),
                         root.data(), env_tags[ENV_INDX_ROOT]);
            return 1;
        }
        dictionary_reader<Layout> reader(*list);
        for_each_step(steps, reader);
        return 0;
    });
}

} // namespace

int parse_env_index_dict_list_read(char *xml, std::vector<zeb5_env_index_dictionary_entry *> *list) {
    return read_dictionary<memory_document, env_layout_classic>(xml, list);
}

int parse_env_index_dict_readf(char *file, std::vector<zeb5_env_index_dictionary_entry *> *list) {
    return read_dictionary<file_document, env_layout_classic>(file, list);
}

int parse_env_index_dict_list_read_2010(char *xml,
                                        std::vector<zeb5_env_index_dictionary_entry_2010 *> *list) {
    return read_dictionary<memory_document, env_layout_2010>(xml, list);
}

int parse_env_index_dict_readf_2010(char *file, std::vector<zeb5_env_index_dictionary_entry_2010 *> *list) {
    return read_dictionary<file_document, env_layout_2010>(file, list);
}
