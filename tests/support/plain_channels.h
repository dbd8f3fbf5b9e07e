#ifndef PLAIN_CHANNELS_H
#define PLAIN_CHANNELS_H

/// The readers of channel descriptions written plainly, as a reference for the library's: a ladder of name
/// comparisons, strtol, and a walk through the list at every identity.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>
#include <vector>

#include "support/channel_records.h"
#include "support/plain_steps.h"

/// Owns the channel until it is listed.
class plain_channels {
public:
    plain_channels(reader_form form, char *source, std::vector<chan_descr_2010 *> &list, bool shift,
                   bool delete_duplicated)
        : from_memory_(form == READ_MEMORY), steps_(form, source), list_(list), shift_(shift),
          merge_(delete_duplicated) {}
    ~plain_channels() { drop_unlisted(); }
    plain_channels(const plain_channels &) = delete;
    plain_channels &operator=(const plain_channels &) = delete;

    /// What parse_descr_list_read() or parse_descr_list_readf() returns.
    int read() {
        int result = 1;
        if (steps_.start() == 0 && steps_.next() == 0) {
            const std::string root = steps_.tag.value_or("");
            result = 0;
            if (root == "CHANDESCRIPTIONS") {
                for_each_tag([this] { chandescriptions(); });
            } else if (root == "DAQvariables") {
                for_each_tag([this] { daq_variables(); });
                result = missing_attributes_;
            } else {
                fprintf(stderr, "WRONG root tag: '%s' must be 'CHANDESCRIPTIONS or DAQvariables'\n",
                        root.c_str());
                result = 1;
            }
        }
        return result + steps_.errors;
    }

private:
    template <class Act> void for_each_tag(Act act) {
        while (steps_.next() == 0)
            if (steps_.tag)
                act();
    }

    void drop_unlisted() {
        if (!channel_ || is_listed_)
            return;
        std::vector<chan_descr_2010 *> alone{channel_};
        clean_chan_desr_list(&alone);
    }

    void begin_channel(char kind) {
        drop_unlisted();
        channel_ = new chan_descr_2010;
        is_listed_ = false;
        bit_ = nullptr;
        dim_ = nullptr;
        stat_ = nullptr;
        kind_ = kind;
    }

    chan_descr_2010 *first_listed(const std::string &prop) const {
        for (chan_descr_2010 *entry : list_)
            if (prop == entry->prop_name)
                return entry;
        return nullptr;
    }

    void identify(const std::string &prop, bool merge) {
        chan_descr_2010 *const entry = merge ? first_listed(prop) : nullptr;
        if (!entry) {
            set_text(channel_->prop_name, prop);
            list_.push_back(channel_);
            is_listed_ = true;
            return;
        }
        const chan_descr_2010 &c = *channel_;
        if (!from_memory_) {
            entry->ev_type |= c.ev_type;
            entry->dtype |= c.dtype;
        } else {
            if (entry->ev_type == 0)
                entry->ev_type = c.ev_type;
            if (entry->dtype == 0)
                entry->dtype = c.dtype;
        }
        entry->stream |= c.stream;
        drop_unlisted();
        channel_ = nullptr;
    }

    static long number(const std::string &text) { return strtol(text.c_str(), nullptr, 10); }
    static int32_t whole(const std::string &text) { return static_cast<int32_t>(number(text)); }

    static uint32_t event_mask(const std::string &text, bool shift) {
        const auto value = static_cast<unsigned long>(number(text));
        return shift ? 1U << value % 32 : static_cast<uint32_t>(value);
    }

    static uint32_t data_mask(const std::string &text, bool shift) {
        const long value = number(text);
        if (!shift)
            return static_cast<uint32_t>(value);
        return (1U << static_cast<unsigned long>(value) % 32) + (value > 31 ? 0x80000000U : 0U);
    }

    void new_bit(int32_t number) { bit_ = add_bit(channel_, number); }

    void new_dim(int32_t number) {
        dim_ = add_dim(channel_, number);
        stat_ = nullptr;
    }

    void chandescriptions() {
        const std::string &tag = *steps_.tag;
        if (!channel_ || !steps_.value || !chandescriptions(tag, *steps_.value))
            if (tag == "CHANNEL")
                begin_channel('c');
    }

    /// Whether the element is one of a channel's.
    bool chandescriptions(const std::string &tag, const std::string &value) {
        chan_descr_2010 &c = *channel_;
        if (tag == "EVTYPE")
            c.ev_type = event_mask(value, shift_);
        else if (tag == "STREAM")
            c.stream = whole(value);
        else if (tag == "PROP")
            identify(value, from_memory_ && merge_);
        else if (tag == "NAME")
            set_text(c.daq_name, value);
        else if (tag == "DESC")
            set_text(c.prop_desc, value);
        else if (tag == "UNITS")
            set_text(c.units, value);
        else if (tag == "SIZE")
            c.max_size = whole(value);
        else if (tag == "SB_NAME")
            set_text(c.sb_name, value);
        else if (tag == "DTYPE")
            c.dtype = data_mask(value, shift_);
        else if (tag == "COUNT")
            c.count = whole(value);
        else if (tag == "SETPOINT")
            c.set_point = whole(value);
        else if (tag == "SUBSYSTEM")
            set_text(c.subsystem, value);
        else if (tag == "DB_KEY")
            c.db_key = whole(value);
        else
            return chandescriptions_part(tag, value);
        return true;
    }

    bool chandescriptions_part(const std::string &tag, const std::string &value) {
        if (tag == "BIT") {
            new_bit(whole(value));
        } else if (tag == "BIT_NAME") {
            if (bit_)
                set_text(bit_->bit_name, value);
        } else if (tag == "BIT_DESCR") {
            if (bit_)
                set_text(bit_->bit_desc, value);
        } else if (tag == "DIM") {
            new_dim(whole(value));
        } else if (tag == "DIM_NAME") {
            if (dim_)
                set_text(dim_->dim_name, value);
        } else if (tag == "DIM_DESCR") {
            if (dim_)
                set_text(dim_->dim_desc, value);
            else
                set_text(channel_->prop_desc, value);
        } else if (tag == "DIM_UNITS") {
            if (dim_)
                set_text(dim_->units, value);
        } else if (tag == "STAT") {
            if (dim_)
                stat_ = add_stat(dim_, whole(value));
        } else if (tag == "STAT_NAME") {
            if (stat_)
                set_text(stat_->stat_name, value);
        } else if (tag == "STAT_DESCR") {
            if (stat_)
                set_text(stat_->stat_desc, value);
            else
                set_text(channel_->prop_desc, value);
        } else if (tag == "STAT_UNITS") {
            if (stat_)
                set_text(stat_->units, value);
        } else {
            return false;
        }
        return true;
    }

    void daq_variables() {
        const std::string &tag = *steps_.tag;
        if (tag == "DaqFloat")
            begin_channel('f');
        else if (tag == "DaqBits")
            begin_channel('b');
        else if (tag == "DaqFloatMatrix")
            begin_channel('m');
        else if (channel_ && tag == "bitTitle" && kind_ == 'b')
            bit_title();
        else if (channel_ && tag == "dimension" && kind_ == 'm')
            dimension();
        else if (channel_ && steps_.value)
            daq_variables(tag, *steps_.value);
    }

    void daq_variables(const std::string &tag, const std::string &value) {
        chan_descr_2010 &c = *channel_;
        if (tag == "evType")
            c.ev_type = event_mask(value, from_memory_ && shift_);
        else if (tag == "orvin")
            identify(value, true);
        else if (tag == "daqName")
            set_text(c.daq_name, value);
        else if (tag == "subSystem")
            set_text(c.subsystem, value);
        else if (tag == "setPoint")
            c.set_point = whole(value);
        else if (tag == "lastIndex")
            c.max_size = static_cast<int32_t>(static_cast<unsigned long>(number(value)) + 1);
        else if (tag == "description" && dim_)
            set_text(dim_->dim_desc, value);
        else if (tag == "description")
            set_text(c.prop_desc, value);
        else if (tag == "units" && dim_)
            set_text(dim_->units, value);
        else if (tag == "units")
            set_text(c.units, value);
        else if (tag == "name" && kind_ == 'm' && dim_)
            set_text(dim_->dim_name, value);
    }

    void bit_title() {
        const std::string *const number = steps_.attribute("bit");
        if (!number)
            return complain(from_memory_ ? "No attribute" : "No attribute: ", "bit", "bitTitle");
        new_bit(whole(*number));
        if (steps_.value)
            set_text(bit_->bit_name, *steps_.value);
        else if (from_memory_)
            std::cout << "bitTitle is not defined for bit  " << bit_->bit << " prop:" << channel_->prop_name
                      << std::endl;
    }

    void dimension() {
        const std::string *const id = steps_.attribute("id");
        if (!id)
            return complain("No attribute: ", "id", "dimension");
        new_dim(whole(*id));
    }

    void complain(const char *complaint, const char *name, const char *tag) {
        ++missing_attributes_;
        std::cerr << complaint << name << " found for " << tag << " prop: " << channel_->prop_name
                  << std::endl;
    }

    bool from_memory_;
    plain_steps steps_;
    std::vector<chan_descr_2010 *> &list_;
    bool shift_;
    bool merge_;
    chan_descr_2010 *channel_ = nullptr;
    bool is_listed_ = false;
    char kind_ = ' ';
    bit_descr *bit_ = nullptr;
    dim_descr *dim_ = nullptr;
    stat_descr *stat_ = nullptr;
    int missing_attributes_ = 0;
};

#endif
