#include <map>
#include <memory>
#include <string>
#include <vector>

#include "files/failure.h"
#include "files/standard_streams.h"
#include "losses/lost_fields.h"
#include "losses/reading_losses.h"
#include "losses/unread_elements.h"
#include "losses/write_records.h"
#include "parse_chan_descr.h"
#include "records/form_losses.h"
#include "records/read_records.h"
#include "records/record_types.h"
#include "subcommands.h"
#include "values/value_text.h"

namespace {

struct merge_options {
    std::vector<std::string> files;
    std::string output = "-";
    bool force = false;
};

/// One record for each property, completed from all records of this property.
class merged_channels {
public:
    explicit merged_channels(bool force) : force_(force) {}
    ~merged_channels() {
        for (auto &[property, channel] : by_property_)
            alone_.push_back(channel);
        clean_chan_desr_list(&alone_);
    }
    merged_channels(const merged_channels &) = delete;
    merged_channels &operator=(const merged_channels &) = delete;

    void add(const record &fields, const std::string &source) {
        alone_ = {static_cast<chan_descr_2010 *>(struct_from(fields, channel_type))};
        const auto [found, is_new] = by_property_.emplace(alone_.front()->prop_name, alone_.front());
        if (is_new) {
            in_order_.push_back(alone_.front());
            alone_.clear();
            return;
        }
        const bool has_parts = !alone_.front()->bits.empty() || !alone_.front()->dims.empty();
        const record before = fields_of(*found->second, has_parts);
        extend_channel_description(found->second, alone_.front(), force_);
        clean_chan_desr_list(&alone_);
        tell_disagreements(before, fields, {fields_of(*found->second, has_parts), channel_type}, source);
    }

    std::unique_ptr<record_list> list() const {
        std::unique_ptr<record_list> all = channel_records.make({});
        for (const chan_descr_2010 *channel : in_order_)
            all->append(record_from(channel, channel_type));
        return all;
    }

private:
    /// The fields of a channel. Its parts may be thousands, and stay as they are when none are added.
    static record fields_of(const chan_descr_2010 &channel, bool with_parts) {
        record fields;
        for (const field_row &row : channel_type.rows)
            fields.fields.push_back(row.kind == PARTS && !with_parts ? value{std::vector<record>{}}
                                                                     : row.get(&channel));
        return fields;
    }

    /// Of each field in which both have something else, one side lost.
    static void tell_disagreements(const record &before, const record &added, const merged_record &merged,
                                   const std::string &source) {
        const std::string name = identity_text(added.fields.front(), channel_type.identity()) + ": ";
        for (const difference &one : merged.lost_fields(before))
            tell(name + difference_text(one, "gives way to") + " of " + source);
        for (const difference &one : merged.lost_fields(added))
            tell(name + difference_text(one, "of " + source + " gives way to"));
    }

    const bool force_;
    std::map<std::string, chan_descr_2010 *> by_property_; // owned
    std::vector<chan_descr_2010 *> in_order_;
    std::vector<chan_descr_2010 *> alone_; // owned; a record that is being added
};

int merge(const merge_options &options) {
    const form &to = *form_named(channel_records, "chandescriptions");
    merged_channels merged(options.force);
    std::string lost;
    for (const std::string &path : options.files) {
        const read_records records(path);
        if (records.kind.type != &channel_type)
            throw failure(STATUS_DOCUMENT, records.source.name + ": is " + records.kind.with_article +
                                               ": only channel descriptions can be merged");
        records.require_all("nothing written");
        for (const std::string &line : unread_elements(records.source))
            tell(line);
        lost += lost_in_reading(records.source, channel_type, to);
        for (size_t i = 0; i < records.list->size(); ++i)
            merged.add(records.list->at(i), records.source.name);
    }
    const std::unique_ptr<record_list> list = merged.list();
    write_records({"merged channels", channel_records, *list, {}, to, lost}, options.output, false,
                  lost.empty() ? ""
                               : "; `zeb5xml convert --force` writes a document without what is dropped");
    return STATUS_DONE;
}

const char details[] =
    R"(The first document is completed: its channels get from the others what they do not have, and
channels of a property that it has not are added. The result is a CHANDESCRIPTIONS document without
an isodate line. Each field on which documents disagree is told on standard error, with the value
that counts.
Nothing is written when a document cannot be read without errors or a value would be lost, as with
`zeb5xml convert`.
)";

} // namespace

subcommand merge_subcommand() {
    auto options = std::make_shared<merge_options>();
    return {"merge",
            "Complete channel descriptions from further documents",
            details,
            {{"FILE", &options->files, "Channel descriptions; - is standard input", argument::REQUIRED},
             {"-o,--output",
              &options->output,
              "File to write, replaced only when all is done (default: -)",
              argument::OPTIONAL,
              {},
              {},
              "FILE"},
             {"--force", &options->force,
              "What is set in a later document counts, and its bits and dimensions replace those before"}},
            [options] { return merge(*options); },
            {{"Complete a master file from two others",
              "zeb5xml merge master.xml magnets.xml rf.xml -o all.xml"}},
            {lost_value_status}};
}
