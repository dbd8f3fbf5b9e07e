#include "document_kinds.h"

#include <vector>

#include "dictionary_records.h"
#include "failure.h"
#include "parse_chan_descr.h"
#include "parse_ev_list.h"
#include "record_types.h"
#include "standard_streams.h"
#include "started_parser.h"
#include "zeb5_gige_descr.h"

namespace {

struct channel_family {
    using record = chan_descr_2010;
    using list = std::vector<record *>;
    static constexpr const record_type &type = channel_type;
    static int read_file(char *path, list *records) {
        return zeb5_load_master_daq_channel_description_file(records, path);
    }
    static int read_text(char *text, list *records) {
        return parse_descr_list_read(text, records, false, true);
    }
    static void print(const list *records) { print_zeb5_chan_descr(records); }
    static void clean(list *records) { clean_chan_desr_list(records); }
};

struct event_family {
    using record = zeb5_ev_entry;
    using list = std::vector<record *>;
    static constexpr const record_type &type = event_entry_type;
    static int read_file(char *path, list *records) { return zeb5_parse_ev_list_readf(path, records); }
    static int read_text(char *text, list *records) { return zeb5_parse_ev_list_read(text, records); }
    static void print(const list *records) { zeb5_print_ev_list(records); }
    static void clean(list *records) {
        for (record *entry : *records)
            for (zeb5_ev_sb_list *block : *entry->sb_list)
                if (block->ch_list->empty()) { // the library does not release these
                    delete block->ch_list;
                    block->ch_list = nullptr;
                }
        zeb5_clean_ev_list(records);
    }
};

struct dictionary_family : dictionary_2010 { // the layout with room for all names of the classic one
    static void print(const list *records) {
        list copy = *records; // the writer's parameter is not const
        write(&copy, nullptr, 0, nullptr);
    }
};

struct camera_family {
    using record = ZEB5GigEFeature;
    using list = std::vector<record *>;
    static constexpr const record_type &type = feature_type;
    static int read_file(char *path, list *records) {
        return zeb5_fill_gige_descr(path, records);
    } // true: failed
    static int read_text(char *text, list *records) {
        memory_file file(text); // there is no reader of camera documents in memory
        return read_file(file.path(), records);
    }
    static void print(const list *records) { zeb5_dump_gige_descr(records); }
    static void clean(list *records) { zeb5_clean_gige_descr(records); }
};

template <class Family> class family_list : public record_list {
public:
    ~family_list() override { Family::clean(&records_); }
    int read(document &source) override {
        const int problems = source.regular_file ? Family::read_file(source.path.data(), &records_)
                                                 : Family::read_text(source.text.data(), &records_);
        kept_ = records_;
        return problems;
    }
    void print() const override { Family::print(&kept_); }
    size_t size() const override { return kept_.size(); }
    record at(size_t place) const override { return record_from(kept_[place], Family::type); }
    const record_type &type() const override { return Family::type; }
    void append(const record &fields) override {
        records_.push_back(static_cast<typename Family::record *>(struct_from(fields, Family::type)));
        kept_.push_back(records_.back());
    }
    void keep(const std::function<bool(const ::record &)> &wanted) override {
        std::erase_if(kept_, [&](const void *one) { return !wanted(record_from(one, Family::type)); });
    }

private:
    typename Family::list records_; // owned
    typename Family::list kept_;
};

template <class Family> std::unique_ptr<record_list> make() {
    return std::make_unique<family_list<Family>>();
}

const document_kind kinds[] = {
    {"CHANDESCRIPTIONS", CHANNELS, "channel descriptions", "channels", &channel_type, make<channel_family>},
    {"DAQvariables", CHANNELS, "channel descriptions", "channels", &channel_type, make<channel_family>},
    {"BMR", EVENTS, "event list", "entries", &event_entry_type, make<event_family>},
    {"ENVINDEXDICT", DICTIONARY, "env index dictionary", "entries", &dictionary_entry_type,
     make<dictionary_family>},
};
const document_kind camera_kind = {nullptr,    CAMERA,        "camera file",
                                   "features", &feature_type, make<camera_family>};

/// Returns the name of the root element; empty when there is none or the parser reports an error up to it.
std::string root_of(document &source) {
    return with_started_parser(source, [](auto &parser) {
        char *tag = nullptr;
        bool read = parser.parse(&tag, nullptr) == 0;
        return std::string(read && tag ? tag : "");
    });
}

bool holds_camera_features(document &source) {
    bool found = false;
    held_output({1, 2}, [&] { // the reader may report a document that is no camera file
        std::unique_ptr<record_list> features = camera_kind.make();
        found = features->read(source) == 0 && features->size() > 0;
    });
    return found;
}

} // namespace

const document_kind &kind_of(document &source) {
    std::string root;
    std::string reports = held_output({1, 2}, [&] { root = root_of(source); });
    for (const document_kind &kind : kinds)
        if (root == kind.root)
            return kind;
    if (!root.empty() && holds_camera_features(source))
        return camera_kind;
    write_standard_error(readable_diagnostics(reports, source.name));
    if (root.empty())
        throw failure(STATUS_DOCUMENT, source.name + ": no root element could be read");
    throw failure(STATUS_DOCUMENT, source.name + ": root element '" + root +
                                       "' is none of CHANDESCRIPTIONS, DAQvariables, BMR and ENVINDEXDICT, "
                                       "and no camera feature could be read");
}
