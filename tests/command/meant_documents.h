#ifndef MEANT_DOCUMENTS_H
#define MEANT_DOCUMENTS_H

/// Documents of every kind, each with the records that its author means: values at both ends of every range,
/// blanks around them, references, CDATA sections, comments, repeated and misspelt elements.

#include <algorithm>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "support/camera_features.h"
#include "support/channel_records.h"
#include "support/env_dictionary_records.h"
#include "support/event_list_records.h"

/// A document, and its records as a text.
struct meant_document {
    std::string text;
    std::string records;
    bool is_doubtful; // nobody can say what some part of it means
};

class meant_documents {
public:
    /// One in `oddness` things is odd; 0: none.
    meant_documents(unsigned seed, unsigned oddness) : random_(seed), oddness_(oddness) {}

    meant_document channels();
    meant_document variables();
    meant_document events();
    template <class Layout> meant_document dictionary();
    meant_document camera();

private:
    /// A value and how it is written.
    struct text_value {
        std::string meant, written;
    };
    struct number_value {
        std::int64_t meant;
        std::string written;
    };

    std::size_t below(std::size_t limit) { return random_() % limit; }
    template <class Value> Value one_of(const std::vector<Value> &list) { return list[below(list.size())]; }
    bool is_odd() { return oddness_ != 0 && below(oddness_) == 0; }
    bool is_there() { return below(2) == 0; }
    std::string doubt(std::string written) {
        is_doubtful_ = true;
        return written;
    }

    static constexpr std::int64_t int_least = std::numeric_limits<std::int32_t>::min();
    static constexpr std::int64_t int_most = std::numeric_limits<std::int32_t>::max();
    static constexpr std::int64_t mask_most = std::numeric_limits<std::uint32_t>::max();

    text_value text(std::size_t most);
    text_value odd_text(std::size_t most);
    text_value attribute_text();
    number_value number(std::int64_t least, std::int64_t most);
    number_value odd_number(std::int64_t least, std::int64_t most);
    float real(std::string &written);

    std::string element(const std::string &name, const std::string &written);
    std::string around(const std::string &name, const std::string &written,
                       const std::string &attribute = "");

    /// An element with a text of at most N - 1 bytes, for a field of N.
    template <std::size_t N> std::string text_element(const std::string &name, char (&field)[N]) {
        const text_value value = text(N - 1);
        is_doubtful_ = is_doubtful_ || value.meant.size() >= N;
        set_text(field, value.meant);
        return element(name, value.written);
    }
    template <class Field>
    std::string number_element(const std::string &name, Field &field, std::int64_t least, std::int64_t most,
                               std::int64_t added = 0) {
        const number_value value = number(least, most);
        field = static_cast<Field>(value.meant + added);
        is_doubtful_ = is_doubtful_ || value.meant < int_least ||
                       value.meant > (std::is_unsigned_v<Field> ? mask_most : int_most - added);
        return element(name, value.written);
    }
    /// A number right behind a start tag, or in an attribute.
    template <class Field>
    std::string part_number(Field &field, std::int64_t least = 0, std::int64_t most = int_most) {
        const number_value value = number(least, most);
        field = static_cast<Field>(value.meant);
        is_doubtful_ = is_doubtful_ || value.meant < int_least || value.meant > int_most;
        return value.written;
    }

    std::string channel_values(chan_descr_2010 &channel);
    std::string bit(chan_descr_2010 &channel);
    std::string dimension(chan_descr_2010 &channel);
    std::string variable_values(chan_descr_2010 &channel);
    std::string variable_parts(const std::string &kind, chan_descr_2010 &channel);
    std::string event(event_list &list);
    std::string block(zeb5_ev_entry *entry);
    std::string feature(std::string &records);
    std::string feature_text(const char *name, std::string &meant);
    std::string identity(std::string &meant);

    meant_document finish(const std::string &root, const std::string &content, std::string records) {
        return {prologue() + around(root, content) + "\n", std::move(records), is_doubtful_};
    }
    std::string prologue() {
        return one_of<std::string>({"", "<?xml version=\"1.0\"?>\n", "<!-- made by hand -->\n",
                                    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n", "\xEF\xBB\xBF"});
    }

    std::mt19937 random_;
    unsigned oddness_;
    bool is_doubtful_ = false;
};

template <class Layout> meant_document meant_documents::dictionary() {
    ::dictionary<Layout> list;
    std::string content = "\n";
    for (std::size_t count = below(4); count-- > 0;) {
        auto *entry = list.add(0, "");
        std::string property, abs, rel, values;
        values += number_element("INDEX", entry->index, 0, int_most);
        values += element("PROP", identity(property));
        set_text(entry->data.env_prop, property);
        is_doubtful_ = is_doubtful_ || property.size() >= sizeof entry->data.env_prop;
        entry->data.env_ch_abs_delta = real(abs);
        entry->data.env_ch_rel_delta = real(rel);
        values += element("DABS", abs) + element("DREL", rel);
        content += around("CHANNEL", values) + "\n";
    }
    return finish("ENVINDEXDICT", content, describe(list.entries));
}

#endif
