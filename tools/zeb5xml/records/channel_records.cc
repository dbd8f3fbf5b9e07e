#include "files/memory_file.h"
#include "files/standard_streams.h"
#include "parse_chan_descr.h"
#include "records/family_list.h"
#include "records/record_types.h"

namespace {

enum { FULL_TABLE = 1, XML_DOCUMENT = 2, SUMMARY_TABLE = 3 }; // modes of dump_chan_desr()

/// The writer puts this in place of an empty name.
constexpr form_loss no_name = {"daq_name", true, "", "!!!UNDEFINED!!!"};
constexpr form_loss chandescriptions_losses[] = {no_name};
// A bit has one text in this form, and a reader makes two bits of each
constexpr form_loss daqvariables_losses[] = {no_name,         {"stream", true},    {"dtype", true},
                                             {"count", true}, {"db_key", true},    {"sb_name", true},
                                             {"bits", false}, {"dims.stats", true}};
// Nothing of these is in the text, which cannot be read back
constexpr form_loss table_losses[] = {
    {"dtype", true}, {"count", true}, {"db_key", true}, {"sb_name", true}, {"subsystem", true}};
constexpr form_loss summary_losses[] = {{"prop_name", true}, {"stream", true},  {"ev_type", true},
                                        {"count", true},     {"db_key", true},  {"prop_desc", true},
                                        {"units", true},     {"sb_name", true}, {"set_point", true},
                                        {"subsystem", true}, {"bits", true},    {"dims", true}};

constexpr form forms[] = {
    {"chandescriptions", true, XML_DOCUMENT, 0, chandescriptions_losses},
    {"daqvariables", true, XML_DOCUMENT, 1, daqvariables_losses},
    {"table", false, FULL_TABLE, 0, table_losses},
    {"summary", false, SUMMARY_TABLE, 0, summary_losses},
};
constexpr const char *options[] = {"--shift", "--keep-duplicates"};

struct channel_family {
    using record = chan_descr_2010;
    using list = std::vector<record *>;
    static constexpr const record_type &type = channel_type;

    static int read(char *path, list *records) {
        return zeb5_load_master_daq_channel_description_file(records, path);
    }
    static void print(const list *records) { print_zeb5_chan_descr(records); }
    static void clean(list *records) { clean_chan_desr_list(records); }

    /// Only the reader of documents in memory merges channels as it is told.
    static int read_to_convert(const document &source, list *records, const conversion &how) {
        std::string text = source.text(), path = source.path;
        int problems = 0;
        if (!has_nul(text)) {
            held_output({1}, [&] { // there it says at each start tag of a bit that the title is missing
                problems = parse_descr_list_read(text.data(), records, how.shift, !how.keep_duplicates);
            });
            return problems;
        }
        tell(source.name + ": holds NUL bytes, as UTF-16 does: read with the file reader");
        return parse_descr_list_readf(path.data(), records, how.shift, !how.keep_duplicates);
    }
    static int read_back(char *text, list *records) {
        return parse_descr_list_read(text, records, false, false);
    }
    static int write(list *records, const form &to, std::string &text) {
        if (to.mode == XML_DOCUMENT)
            return dump_chan_desr(records, nullptr, to.mode, to.dialect, -1, &text, nullptr);
        memory_file table; // tables go to files only
        const int result = dump_chan_desr(records, table.path(), to.mode, to.dialect, -1, nullptr, nullptr);
        text = table.text();
        return result;
    }
};

} // namespace

const record_kind channel_records = {"channel descriptions",
                                     "channel descriptions",
                                     "channels",
                                     &channel_type,
                                     make_list<channel_family>,
                                     forms,
                                     options,
                                     true};
