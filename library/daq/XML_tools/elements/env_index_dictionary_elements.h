#ifndef ZEB5_ENV_INDEX_DICTIONARY_ELEMENTS_H
#define ZEB5_ENV_INDEX_DICTIONARY_ELEMENTS_H

/// The elements of env index dictionaries.

#include "elements/chan_descr_tags.h"
#include "elements/element_row.h"
#include "parse_env_index_dictionary.h"

namespace zeb5 {

/// Element names, by their ENV_INDX_* number.
inline constexpr const char *env_tags[] = {"ENVINDEXDICT", "CHANNEL", "INDEX", "PROP", "DABS", "DREL"};
static_assert(sizeof env_tags / sizeof env_tags[0] == ENV_INDX_DREL + 1, "one name for each");

enum dictionary_level { DICTIONARY_ENTRY_LEVEL = 1 };

/// The rows of one layout.
template <class Entry> struct env_index_dictionary_layout_elements {
    using block = decltype(Entry::data);

    static constexpr level_row levels[] = {
        {"document", no_level, nullptr},
        {"entry", root_level, listed<Entry>},
    };

    static constexpr element_row rows[] = {
        unread_row(date_tag, root_level),
        opening(DICTIONARY_ENTRY_LEVEL, {.name = env_tags[ENV_INDX_CHAN]}),
        missing("the entry is not read", identity(not_negative(number_row<&Entry::index>(
                                             env_tags[ENV_INDX_INDX], DICTIONARY_ENTRY_LEVEL)))),
        missing("the entry is not read", identity(text_row<&Entry::data, &block::env_prop>(
                                             env_tags[ENV_INDX_PROP], DICTIONARY_ENTRY_LEVEL))),
        missing("the change threshold is 0",
                number_row<&Entry::data, &block::env_ch_abs_delta>(env_tags[ENV_INDX_DABS],
                                                                   DICTIONARY_ENTRY_LEVEL, value_kind::REAL)),
        missing("the change threshold is 0",
                number_row<&Entry::data, &block::env_ch_rel_delta>(env_tags[ENV_INDX_DREL],
                                                                   DICTIONARY_ENTRY_LEVEL, value_kind::REAL)),
    };
};

template <class Entry>
inline constexpr document_elements env_index_dictionary_elements = {
    env_tags[ENV_INDX_ROOT], env_index_dictionary_layout_elements<Entry>::rows,
    env_index_dictionary_layout_elements<Entry>::levels};

} // namespace zeb5

#endif
