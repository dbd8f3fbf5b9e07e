#ifndef SELECTOR_SOURCES_H
#define SELECTOR_SOURCES_H

/// Documents for the description extractor and the channel selector.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "chan_selector.h"
#include "support/element.h"
#include "support/test_files.h"

/// One channel of a document.
struct channel_source {
    std::string prop;
    std::string daq;
    std::uint32_t ev_type = 0;
    std::uint32_t dtype = 0;
    int dims = 0;
};

inline std::string channel_document(const std::vector<channel_source> &channels) {
    std::string text;
    for (const channel_source &c : channels) {
        std::string one = element_line("EVTYPE", std::to_string(c.ev_type)) + element_line("PROP", c.prop) +
                          element_line("NAME", c.daq) + element_line("DTYPE", std::to_string(c.dtype));
        for (int i = 0; i < c.dims; ++i)
            one += element_line("DIM", std::to_string(i));
        text += element_line("CHANNEL", one);
    }
    return element_line("CHANDESCRIPTIONS", text);
}

inline const std::string ill_formed_document =
    "<CHANDESCRIPTIONS><CHANNEL><PROP>BROKEN</PROP></CHANDESCRIPTIONS>";

/// Sources of one call, kept while this lives: texts in memory, or files that hold them.
class selector_sources {
public:
    selector_sources(int mode, std::vector<std::string> documents) : texts_(std::move(documents)) {
        for (std::string &text : texts_)
            if (mode == EXTR_FROM_FILE) {
                files_.push_back(std::make_unique<temporary_file>(text));
                pointers_.push_back(files_.back()->c_path());
            } else
                pointers_.push_back(text.data());
    }

    operator std::vector<char *> *() { return &pointers_; }

private:
    std::vector<std::string> texts_;
    std::vector<std::unique_ptr<temporary_file>> files_;
    std::vector<char *> pointers_;
};

/// The selector's functions take a name as `char *`, but only read it.
inline char *name(const char *text) { return const_cast<char *>(text); }
inline char *name(const std::string &text) { return const_cast<char *>(text.c_str()); }

/// Adds the channels of one file; of repeated properties, all.
inline bool add_channels(chan_selector &selector, const std::vector<channel_source> &channels) {
    selector_sources sources(EXTR_FROM_FILE, {channel_document(channels)});
    selector.change_mode(EXTR_FROM_FILE);
    return selector.set_descriptions(sources, nullptr);
}

#endif
