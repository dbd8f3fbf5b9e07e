#ifndef ZEB5_ENV_INDEX_DICTIONARY_LAYOUTS_H
#define ZEB5_ENV_INDEX_DICTIONARY_LAYOUTS_H

/// All that differs between the classic and the 2010 layout of env index dictionaries, for reader and writer.

#include "elements/env_index_dictionary_elements.h"
#include "parse_env_index_dictionary.h"

namespace zeb5 {

struct env_layout_classic {
    using entry = zeb5_env_index_dictionary_entry;
    static constexpr char no_memory[] = "Failed to allocate memory for zeb5_env_index_dictionary_entry\n";
    static constexpr char writer[] = "dump_env_index_dict()";
    static constexpr char write_failed[] = "dump_env_index_dict() failed to write ";
};

struct env_layout_2010 {
    using entry = zeb5_env_index_dictionary_entry_2010;
    static constexpr char no_memory[] =
        "Failed to allocate memory for zeb5_env_index_dictionary_entry_2010\n";
    static constexpr char writer[] = "dump_env_index_dict_2010()";
    // Kept: log scanners tell the two texts apart, blanks included
    static constexpr char write_failed[] = "dump_env_index_dict_2010()  failed to write";
};

} // namespace zeb5

#endif
