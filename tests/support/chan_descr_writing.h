#ifndef CHAN_DESCR_WRITING_H
#define CHAN_DESCR_WRITING_H

/// Calls of dump_chan_desr() for tests, and the parts that all its documents have in common.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "parse_chan_descr.h"
#include "support/capture.h"
#include "support/channel_records.h"
#include "support/dated_documents.h"
#include "support/test_files.h"

inline constexpr int full_table = 1, xml_document = 2, summary_table = 3; // values of `mode`
inline constexpr int chandescriptions = 0, daqvariables = 1;              // values of `format`

/// The whole document of a CHANDESCRIPTIONS list whose channels are `body`; no date line.
inline std::string chandescriptions_document(const std::string &body) {
    return xml_declaration + "<CHANDESCRIPTIONS>\n" + body + "</CHANDESCRIPTIONS>\n\n";
}

inline std::string daqvariables_document(const std::string &body) {
    return xml_declaration + "<DAQvariables>\n" + body + "</DAQvariables>\n\n";
}

/// What one call did: its result and what it wrote to the standard streams.
struct dump_outcome {
    int result;
    captured streams;
};

/// One call of the writer with its standard streams caught.
inline dump_outcome dump(std::vector<chan_descr_2010 *> *list, const std::string *file, int mode, int format,
                         int fd, std::string *sout, std::vector<dim_params *> *dims = nullptr) {
    std::string path = file ? *file : "";
    dump_outcome outcome{-1000, {}};
    outcome.streams = capture([&] {
        outcome.result = dump_chan_desr(list, file ? path.data() : nullptr, mode, format, fd, sout, dims);
    });
    return outcome;
}

/// The same for the conversion of a document.
inline dump_outcome convert(const char *xml, const std::string *file, int mode, int format, int fd) {
    std::string text = xml ? xml : "", path = file ? *file : "";
    dump_outcome outcome{-1000, {}};
    outcome.streams = capture([&] {
        outcome.result = dump_chan_desr_from_xml(xml ? text.data() : nullptr, file ? path.data() : nullptr,
                                                 mode, format, fd);
    });
    return outcome;
}

/// The document that is written to a string. No other destination may get anything.
inline std::string xml_of(std::vector<chan_descr_2010 *> *list, int format,
                          std::vector<dim_params *> *dims = nullptr) {
    std::string text;
    const dump_outcome seen = dump(list, nullptr, xml_document, format, -1, &text, dims);
    EXPECT_EQ(seen.result, 0);
    EXPECT_EQ(seen.streams.out, "");
    EXPECT_EQ(seen.streams.err, "");
    return text;
}

/// A channel in which every field has a value of its own.
inline chan_descr_2010 *full_channel() {
    chan_descr_2010 *channel = make_channel("ORVIN.DIAG/BPM/12/CH00.TD", "BPM12");
    channel->stream = 7;
    channel->ev_type = 0x12;
    channel->count = 21;
    channel->dtype = 0x240;
    channel->db_key = 4711;
    set_text(channel->prop_desc, "position of the beam");
    set_text(channel->units, "mm");
    channel->max_size = 4;
    set_text(channel->sb_name, "BPM_SB");
    channel->set_point = 1;
    set_text(channel->subsystem, "DIAGNOSTICS");
    add_bit(channel, 3, "READY", "ready to measure");
    add_bit(channel, -1, "FAULT", "hardware fault");
    dim_descr *time_axis = add_dim(channel, 0, "time", "time in the pulse", "us");
    add_stat(time_axis, 5, "mean", "mean of the pulse", "mm");
    add_stat(time_axis, 6, "rms", "spread in the pulse", "um");
    add_dim(channel, 1, "bunch", "bunch number", "1");
    return channel;
}

/// The listing that stands in for a destination.
inline std::string listing_of(const std::vector<chan_descr_2010 *> &list) {
    return capture([&] { print_zeb5_chan_descr(&list); }).out;
}

#endif
