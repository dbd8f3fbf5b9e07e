#ifndef ZEB5_PARSE_ENV_INDEX_DICTIONARY_H
#define ZEB5_PARSE_ENV_INDEX_DICTIONARY_H

/// Env index dictionaries (root ENVINDEXDICT): index to property name with change thresholds, in the classic
/// record layout (names of up to 79 bytes) and in the 2010 layout (up to 255). Everything exists twice, once
/// for each. Several dictionaries may be read and written at the same time on different threads; one list
/// belongs to one thread at a time.

#include <cstdint>
#include <string>
#include <vector>

#include "event.h"
#include "zeb5_export.h"

/// One entry. Readers allocate entries with malloc(); release them one by one with free().
struct zeb5_env_index_dictionary_entry {
    std::int32_t index;
    zeb5_env_dictionary_block data;
};

struct zeb5_env_index_dictionary_entry_2010 {
    std::int32_t index;
    zeb5_env_dictionary_block_2010 data;
};

/// Elements of the document.
enum {
    ENV_INDX_ROOT = 0, // ENVINDEXDICT
    ENV_INDX_CHAN = 1, // CHANNEL
    ENV_INDX_INDX = 2, // INDEX
    ENV_INDX_PROP = 3, // PROP
    ENV_INDX_DABS = 4, // DABS
    ENV_INDX_DREL = 5  // DREL
};

/// Readers: of a document in memory, NUL-terminated, and of a file. They append to `list` and never clear it.
/// An entry is appended when the second of its INDEX and PROP arrives; a further INDEX or PROP of one CHANNEL
/// can append the same pointer again, so mind repeated pointers when releasing. Return 0, or 1 for a null
/// source or list, a reader that does not start or a wrong root, plus the number of warnings and errors of
/// the parser, all of which are reported on standard error; so is, as one error, a file that changes while it
/// is read. Entries read before an error stay in the list.
ZEB5_API int parse_env_index_dict_list_read(char *xml, std::vector<zeb5_env_index_dictionary_entry *> *list);
ZEB5_API int parse_env_index_dict_readf(char *file, std::vector<zeb5_env_index_dictionary_entry *> *list);
ZEB5_API int parse_env_index_dict_list_read_2010(char *xml,
                                                 std::vector<zeb5_env_index_dictionary_entry_2010 *> *list);
ZEB5_API int parse_env_index_dict_readf_2010(char *file,
                                             std::vector<zeb5_env_index_dictionary_entry_2010 *> *list);

/// Writers. `mode`: 1 text lines of index, property and the two deltas, separated by tabs, to the file; 2 XML
/// to the file and the descriptor; 3 XML into `*xml_str`, replacing its content; any other value writes no
/// entry. `file_name`: file to create, null or empty: none. `fd`: -1: none; it stays open. With neither file,
/// descriptor nor string the entries are listed on standard output, whatever the mode. Messages go to
/// standard output. Return 0, 1 when the file cannot be opened, 2 for a null list, for lines that have no
/// file to go to though there is a descriptor or a string, and for a failed write to `fd`. What a file does
/// not take is not noticed. The entries stay as they are.
ZEB5_API int dump_env_index_dict(std::vector<zeb5_env_index_dictionary_entry *> *list, char *file_name,
                                 int mode, int fd, std::string *xml_str);
ZEB5_API int dump_env_index_dict_2010(std::vector<zeb5_env_index_dictionary_entry_2010 *> *list,
                                      char *file_name, int mode, int fd, std::string *xml_str);

/// Conversion of a document in memory, by the writer without a string. Return 3 when the document could not
/// be read without errors, and nothing is written then; else the writer's result.
ZEB5_API int dump_env_index_dict(char *xml, char *file_name, int mode, int fd);
ZEB5_API int dump_env_index_dict_2010(char *xml, char *file_name, int mode, int fd);

#endif
