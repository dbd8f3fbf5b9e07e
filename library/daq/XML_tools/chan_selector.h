#ifndef ZEB5_CHAN_SELECTOR_H
#define ZEB5_CHAN_SELECTOR_H

#include <memory>
#include <vector>

#include "descr_extractor.h"
#include "zeb5_export.h"

namespace zeb5 {
class chan_name_index;
}

/// Keeps channel descriptions and answers questions about them. Channels are numbered from 0 in the order
/// read; a number without a channel, such as a negative one, gets the answer for "none". Look-ups by name
/// find the first channel of that name, and none for a null name. Only one thread may use an object at a
/// time.
class ZEB5_API chan_selector : public descr_extractor {
public:
    chan_selector();  // no descriptions, shift false
    ~chan_selector(); // releases the descriptions
    chan_selector(const chan_selector &) = delete;
    chan_selector &operator=(const chan_selector &) = delete;

    /// Reads the sources, as get_descriptions() does, and adds their channels. Returns TRUE WHEN IT FAILED.
    bool set_descriptions(std::vector<char *> *soure, int *total);

    /// Returns whether some channel has event type `ev_type` and some channel, maybe another one, is called
    /// `chan`. This is a DAQ name for local and ML event types, else a property name. Without any
    /// descriptions it returns true.
    bool find_channel(int ev_type, char *chan);

    /// Returns the event-type mask of the channel with this DAQ name, or with this property name if one of
    /// its event types is neither local nor ML. Returns 0, with a message on standard output, when there is
    /// none.
    int get_event_type(char *chan);

    /// Returns the data-type word of the channel with this DAQ name, or 0 when there is none. A message goes
    /// to standard output only when there are no descriptions at all.
    int get_data_type(char *chan);

    /// Return the DAQ name and the property name of a channel, or null. The result is the record's own
    /// 256-byte field. A client may write into it at any time, and all look-ups see the change. Therefore
    /// each look-up compares, one by one, the channels whose names were handed out here. That takes 0.3 us
    /// for 256 of them, 1 us for 1,000 and 11 us for 10,000: two thirds of a search through the list. While
    /// none was handed out, a look-up takes 0.03 us in a list of 1,000 channels and 0.13 us in one of
    /// 100,000, which the processor's cache does not hold.
    char *get_channel(int num);
    char *get_prop(int num);

    /// Sets the counter of a channel. Returns TRUE WHEN THERE IS NO SUCH CHANNEL.
    bool set_counter(int num, int cnt);

    /// Returns 1 when get_event_type() of the channel's DAQ name has one of the slow types BOR, EOR, ENV and
    /// UPD, else 0; -1 when there is no such channel or that mask is 0.
    int is_channel_slow(int num);

    /// Returns 1 when get_event_type() of the channel's DAQ name has a type of the ML class or the DAQ name
    /// contains ".ML", else 0; -1 as above.
    int is_channel_ml(int num);

    /// Returns 1 for a slow channel, the number of dimensions for a fast one, 0 where is_channel_slow()
    /// returns -1.
    int get_subchannels(int num);

    /// Number of descriptions.
    int size();

    /// Set `shift` of the reader and the extraction mode for sources read from now on.
    void set_shift(bool new_shift);
    void change_mode(int new_mode);

    /// Lists the descriptions on standard output.
    void dump();

private:
    int ev_types = 0; // mask: bit n set means that some description has event type n
    std::vector<chan_descr_2010 *> descr;
    bool shift = false;
    std::unique_ptr<zeb5::chan_name_index> names; // where in `descr` a name stands
};

#endif
