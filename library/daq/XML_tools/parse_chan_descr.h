#ifndef ZEB5_PARSE_CHAN_DESCR_H
#define ZEB5_PARSE_CHAN_DESCR_H

/// Channel descriptions: what one recorded channel is, how lists of them are read from XML in two dialects
/// (root CHANDESCRIPTIONS and root DAQvariables), looked up, merged, printed and written.
///
/// A list is a vector of pointers. Readers append to it and never clear it; from then on the records belong
/// to the caller, who releases them with clean_chan_desr_list(). Records and sub-records are made with `new`.
///
/// Results: readers return 0 for success; anything else counts what went wrong. Writers return 0, 1 (file
/// cannot be opened) or 2 (invalid argument, failed write). Problems in a document are reported on standard
/// error; only the readers of memory tell on standard output that a bit under DAQvariables has no name. A
/// writer's problems are told on standard output, and the reason why a file cannot be opened on standard
/// error. Several lists may be read and written at the same time on different threads; one list belongs to
/// one thread at a time.

#include <cstdint>
#include <string>
#include <vector>

#include "document_header.h"
#include "event.h"
#include "event_util.h"
#include "zeb5_export.h"

/// One named bit of a bit-field channel. Here and below, text is NUL-terminated and cut to fit its field.
struct bit_descr {
    std::int32_t bit; // bit number
    char bit_name[64];
    char bit_desc[80];
};

/// One statistic of a dimension.
struct stat_descr {
    std::int32_t stat; // statistic id
    char stat_name[64];
    char stat_desc[80];
    char units[16];
};

/// One dimension of a multi-dimensional channel.
struct dim_descr {
    std::int32_t dim; // dimension id
    char dim_name[64];
    char dim_desc[80];
    char units[16];
    std::int32_t nstats;             // number of entries of `stats`
    std::vector<stat_descr *> stats; // owned, see clean_chan_desr_list()
};

/// One channel. Each count belongs to the vector beside it: the count decides whether sub-records are
/// released or merged, and loops run over the vector. The destructor does not release sub-records.
struct chan_descr_2010 {
    std::int32_t stream = 0;       // data stream number
    std::uint32_t ev_type = 0;     // mask: bit n set means recorded in events of type n (ZEB5_EVTYPE)
    std::int32_t count = 0;        // channel counter
    std::uint32_t dtype = 0;       // mask of block types; with bit 31 set, bit k means block type k + 32
    std::int32_t db_key = -1;      // database key; -1: unknown
    char prop_name[256] = {};      // property name: the channel's identity
    char daq_name[256] = {};       // name in the acquisition
    char prop_desc[256] = {};      // description
    char units[16] = {};           // units of the value
    std::int32_t max_size = 1;     // largest size of one data item
    std::int32_t nbits = 0;        // number of entries of `bits`
    std::vector<bit_descr *> bits; // owned, see clean_chan_desr_list()
    std::int32_t ndims = 0;        // number of entries of `dims`
    std::vector<dim_descr *> dims; // owned, see clean_chan_desr_list()
    char sb_name[256] = {};        // server block that delivers the channel
    std::int32_t set_point = 0;    // not 0: the channel is a set point
    char subsystem[64] = {};       // subsystem name
};

/// Axes of a spectrum or image channel, for dump_chan_desr(). The caller owns all of it.
struct dim_params {
    char *name;                     // DAQ name of the channel that has the axes; null: not used
    std::int32_t num;               // number of axes in the two arrays; 0: entry not used; negative: no axes
    zeb5_spect_header_2010 *params; // num spectrum axes, or null
    zeb5_image_ext_frame_head *iparams; // image heads, or null
};

/// What the sources of a descr_extractor are.
enum {
    EXTR_FROM_FILE = 0, // file names
    EXTR_FROM_XML = 1   // documents in memory
};

// Records

/// Returns the first record of the list whose `prop_name` is exactly `name`; null when there is none.
ZEB5_API chan_descr_2010 *find_chan_entry(const std::vector<chan_descr_2010 *> *list, const char *name);

/// Element name of the CHANDESCRIPTIONS dialect: row 0 is the root, rows 1 to 13 go from CHANNEL to DTYPE;
/// column 0 is the name at channel level, 1 inside a dimension, 2 inside a statistic. Null for an empty cell
/// and outside of rows 0 to 13 and columns 0 to 2. The string is constant.
ZEB5_API const char *get_chan_descr_root_tag(int row, int column);

/// Return a copy, which the caller owns; null for a null source. The copy of a dimension has its own copies
/// of the statistics, and its `nstats` is their number, whatever the source's `nstats` is.
ZEB5_API bit_descr *zeb5_clone_bit_descr(const bit_descr *src);
ZEB5_API stat_descr *zeb5_clone_stat_descr(const stat_descr *src);
ZEB5_API dim_descr *zeb5_clone_dim_descr(const dim_descr *src);

/// Releases every record with its sub-records and empties the list; the vector itself stays the caller's. A
/// record that stands in the list twice is released once. Sub-records beside a count of 0 are reported on
/// standard output and not released. A null list does nothing.
ZEB5_API void clean_chan_desr_list(std::vector<chan_descr_2010 *> *list);

/// Lists the records on standard output, each under its place in the list. A null list does nothing.
ZEB5_API void print_zeb5_chan_descr(std::vector<chan_descr_2010 *> *list);
ZEB5_API void print_zeb5_chan_descr(const std::vector<chan_descr_2010 *> *list);

// Readers

/// Reads a document in memory, NUL-terminated, and appends one record per channel to `list`.
/// `shift`: EVTYPE, DTYPE and evType hold type numbers, to be turned into masks. `delete_duplicated`: a
/// channel whose property is in the list already is merged into that record (CHANDESCRIPTIONS; DAQvariables
/// always merge). Records read before an error stay in the list. Text longer than its field is cut.
/// Returns 2 for a null list, else the sum of these, which is 0 when all was read:
///  - 1 for a null text, a reader that does not start or a wrong root
///  - 1 for each missing attribute (DAQvariables)
///  - 1 for each warning and each error of the parser
ZEB5_API int parse_descr_list_read(char *xml, std::vector<chan_descr_2010 *> *list, bool shift,
                                   bool delete_duplicated);

/// The same for the file at `path`; `list` must not be null. Here `delete_duplicated` has no effect, and
/// `shift` none on evType; when a property under DAQvariables is in the list already, the event types, data
/// types and stream of the new channel are ORed into that record. A file that changes while it is read is
/// reported and counts as one error more; SECURITY.md says which changes are not seen.
ZEB5_API int parse_descr_list_readf(char *path, std::vector<chan_descr_2010 *> *list, bool shift,
                                    bool delete_duplicated);

// Merging

/// Completes the record `in` from `from`, a record of the same property. Without `force`, only what is empty
/// in `in` is filled. With `force`, what is set in `from` overwrites `in`, and the bits and dimensions of
/// `from`, if any, replace those of `in`. `from` is not changed; its sub-records are copied. When both are
/// the same record, nothing is changed. Returns false when done. Returns TRUE WHEN REFUSED, for a null record
/// or different property names, and changes nothing then.
ZEB5_API bool extend_channel_description(chan_descr_2010 *in, chan_descr_2010 *from, bool force);

// Writer

/// Writes the list; of several records of one property, only the first is written.
///  - `mode`: 1 full text table, 2 XML document, 3 summary table; any other value writes no record
///  - `format`: dialect of mode 2: 0 CHANDESCRIPTIONS, 1 DAQvariables; others are invalid in every mode
///  - `file_name`: file to write, truncated first; null or empty: none
///  - `fd`: descriptor that gets the XML document in one write; -1: none
///  - `sout`: string to which the XML document is appended; null: none
///  - `dims`: axes for the DIM elements of CHANDESCRIPTIONS, or null. An entry's `params` and `iparams` must
///    have `num` elements each. For a channel without dimensions of its own, `iparams` must also have an
///    element at the channel's position in the list.
/// The document goes to all destinations that are given, in this order; the tables go to the file only.
/// Without any destination the list is printed to standard output. Returns 0, 1 when the file cannot be
/// opened, 2 for an invalid argument or a failed write to `fd` (the file is then complete but left open).
ZEB5_API int dump_chan_desr(std::vector<chan_descr_2010 *> *chdscr_list, char *file_name, int mode,
                            int format, int fd, std::string *sout, std::vector<dim_params *> *dims);

// Loading and conversion

/// Reads the XML blob of a data block into `list` and merges duplicates. Returns -1 for a null argument, -3
/// for a wrong pattern, -4 for a length of 8 or less, else the result of parse_descr_list_read(). The memory
/// at `tab` must really be `length` bytes long.
ZEB5_API int zeb5_load_chan_descr(const zeb5_xml_chan_descr_header *tab,
                                  std::vector<chan_descr_2010 *> *list);

/// Reads the master description file into `list`. Returns -1 for a null argument or an empty path, else the
/// result of parse_descr_list_readf().
ZEB5_API int zeb5_load_master_daq_channel_description_file(std::vector<chan_descr_2010 *> *list, char *file);

/// Reads a document in memory, with type numbers turned into masks and duplicates merged, and writes it as
/// dump_chan_desr() does. Returns 3 when it could not be read without errors, else the writer's result.
ZEB5_API int dump_chan_desr_from_xml(char *xml, char *file_name, int mode, int format, int fd);

#endif
