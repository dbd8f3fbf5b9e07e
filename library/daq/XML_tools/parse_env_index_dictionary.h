#ifndef ZEB5_PARSE_ENV_INDEX_DICTIONARY_H
#define ZEB5_PARSE_ENV_INDEX_DICTIONARY_H

/// Env index dictionaries (root ENVINDEXDICT): they give each index a property name and change thresholds.
/// There is a classic record layout (names of up to 79 bytes) and the 2010 layout (up to 255); everything
/// below exists once for each. Several dictionaries may be read and written at the same time on different
/// threads; one list belongs to one thread at a time.

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

/// Readers of a document in memory, NUL-terminated, and of a file. They append to `list` and never clear it.
/// An entry is appended when both its INDEX and its PROP have arrived. A further INDEX or PROP of the same
/// CHANNEL can append the same pointer again, so release each pointer once only. Return 0 when all was read,
/// else the number of warnings and errors of the parser, plus 1 for a null source or list, a reader that does
/// not start or a wrong root. Warnings and errors are reported on standard error. A file that changes while
/// it is read is reported, too, and counts as one error; SECURITY.md says which changes are not seen. Entries
/// read before an error stay in the list.
ZEB5_API int parse_env_index_dict_list_read(char *xml, std::vector<zeb5_env_index_dictionary_entry *> *list);
ZEB5_API int parse_env_index_dict_readf(char *file, std::vector<zeb5_env_index_dictionary_entry *> *list);
ZEB5_API int parse_env_index_dict_list_read_2010(char *xml,
                                                 std::vector<zeb5_env_index_dictionary_entry_2010 *> *list);
ZEB5_API int parse_env_index_dict_readf_2010(char *file,
                                             std::vector<zeb5_env_index_dictionary_entry_2010 *> *list);

/// Writers.
///  - `mode`: 1 text lines of index, property and the two deltas, separated by tabs, to the file; 2 XML to
///    the file and the descriptor; 3 XML into `*xml_str`, replacing its content; any other: no entry
///  - `file_name`: file to create; null or empty: none
///  - `fd`: descriptor to write to, which stays open; -1: none
/// Without file, descriptor and string, the entries are listed on standard output in every mode. Messages go
/// to standard output, the reason why a file cannot be opened to standard error. Return 0, 1 when the file
/// cannot be opened, and 2 for a null list, for entries in mode 1 without a file but with a descriptor or a
/// string, and for a failed write to `fd`. A failed write to the file is not noticed. The entries are not
/// changed.
ZEB5_API int dump_env_index_dict(std::vector<zeb5_env_index_dictionary_entry *> *list, char *file_name,
                                 int mode, int fd, std::string *xml_str);
ZEB5_API int dump_env_index_dict_2010(std::vector<zeb5_env_index_dictionary_entry_2010 *> *list,
                                      char *file_name, int mode, int fd, std::string *xml_str);

/// Read a document in memory and write its entries as above, without a string. Return 3 when the document
/// could not be read without errors, and nothing is written then; else the writer's result.
ZEB5_API int dump_env_index_dict(char *xml, char *file_name, int mode, int fd);
ZEB5_API int dump_env_index_dict_2010(char *xml, char *file_name, int mode, int fd);

#endif
