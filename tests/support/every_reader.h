#ifndef EVERY_READER_H
#define EVERY_READER_H

/// All readers of the library behind one interface, each with a good and a bad document of its kind. It is
/// for tests that must hold for every reader.

#include <cstring>
#include <memory>
#include <new>
#include <string>
#include <vector>

#include <xercesc/dom/DOMException.hpp>
#include <xercesc/sax/SAXException.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XMLException.hpp>

#include "support/camera_features.h"
#include "support/channel_records.h"
#include "support/env_dictionary_records.h"
#include "support/event_list_records.h"
#include "support/sax_sources.h"
#include "support/selector_sources.h"

/// What a test does before and after each call of the library; null: nothing.
inline void (*before_library_call)() = nullptr;
inline void (*after_library_call)() = nullptr;

/// The outcome of one reading: the reader's result, or the exception that it threw, and all records.
struct reading {
    int result = 0;
    const char *thrown = ""; // "": nothing
    std::string records;

    bool operator==(const reading &other) const {
        return result == other.result && std::strcmp(thrown, other.thrown) == 0 && records == other.records;
    }
};

inline std::ostream &operator<<(std::ostream &to, const reading &seen) {
    return to << seen.result << ' ' << seen.thrown << '\n' << seen.records;
}

/// Makes a call of the library, with what the test does before and after it.
template <class Call> void call_library(reading &seen, Call call) {
    struct around {
        around() {
            if (before_library_call)
                before_library_call();
        }
        ~around() {
            if (after_library_call)
                after_library_call();
        }
    };
    try {
        const around all;
        seen.result = call();
    } catch (const std::bad_alloc &) {
        seen.thrown = "std::bad_alloc";
    } catch (const xercesc::OutOfMemoryException &) {
        seen.thrown = "OutOfMemoryException";
    } catch (const xercesc::XMLException &) {
        seen.thrown = "XMLException";
    } catch (const xercesc::SAXException &) {
        seen.thrown = "SAXException";
    } catch (const xercesc::DOMException &) {
        seen.thrown = "DOMException";
    }
}

template <auto Read, bool... Options> reading read_channels(char *source) {
    reading seen;
    channel_list list;
    call_library(seen, [&] { return Read(source, &list.records, Options...); });
    seen.records = describe(list.records);
    return seen;
}

inline reading read_channel_block(char *text) {
    const std::size_t length = std::strlen(text);
    std::vector<std::uint32_t> block((sizeof(zeb5_xml_chan_descr_header) + length) / 4 + 1);
    const std::uint32_t head[] = {0xCDECDEF2,
                                  static_cast<std::uint32_t>(sizeof(zeb5_xml_chan_descr_header) + length)};
    std::memcpy(block.data(), head, sizeof head);
    std::memcpy(block.data() + 2, text, length);
    reading seen;
    channel_list list;
    call_library(seen, [&] {
        return zeb5_load_chan_descr(reinterpret_cast<const zeb5_xml_chan_descr_header *>(block.data()),
                                    &list.records);
    });
    seen.records = describe(list.records);
    return seen;
}

inline reading load_master_file(char *path) {
    reading seen;
    channel_list list;
    call_library(seen, [&] { return zeb5_load_master_daq_channel_description_file(&list.records, path); });
    seen.records = describe(list.records);
    return seen;
}

template <auto Read> reading read_events(char *source) {
    reading seen;
    event_list list;
    call_library(seen, [&] { return Read(source, &list.entries); });
    seen.records = describe(list.entries);
    return seen;
}

template <class Layout, auto Read> reading read_entries(char *source) {
    reading seen;
    dictionary<Layout> list;
    call_library(seen, [&] { return Read(source, &list.entries); });
    seen.records = describe(list.entries);
    return seen;
}

inline reading read_camera(char *path) {
    reading seen;
    feature_list list;
    call_library(seen, [&] { return static_cast<int>(zeb5_fill_gige_descr(path, &list)); });
    seen.records = all_features(list);
    return seen;
}

/// Asks for an attribute at every step, too.
template <class Parser> int take_steps(Parser &parser, std::string &steps_seen) {
    char *tag, *value, *attribute, name[] = "n";
    int result;
    while ((result = parser.parse(&tag, &value)) == 0) {
        steps_seen += tag ? tag : "~";
        if (value)
            steps_seen += std::string("[") + value + ']';
        if (parser.get_attr(name, &attribute) == 0)
            steps_seen += std::string("@") + attribute;
    }
    return result;
}

inline reading pull_from_memory(char *text) {
    reading seen;
    call_library(seen, [&] {
        SAX_Memory_Parser parser(text);
        return parser.start() != 0 ? 1000 : take_steps(parser, seen.records);
    });
    return seen;
}

inline reading pull_from_file(char *path) {
    reading seen;
    call_library(seen, [&] {
        SAX_File_Parser parser;
        return parser.start(path) != 0 ? 1000 : take_steps(parser, seen.records);
    });
    return seen;
}

/// The selector on one source given twice, and the answers to its questions.
template <int Mode> reading ask_selector(char *source) {
    reading seen;
    std::vector<char *> sources{source, source};
    std::unique_ptr<chan_selector> selector;
    call_library(seen, [&] {
        selector = std::make_unique<chan_selector>();
        selector->change_mode(Mode);
        return static_cast<int>(selector->set_descriptions(&sources, nullptr));
    });
    for (int i = 0; selector && i < selector->size(); ++i)
        call_library(seen, [&] {
            char *const daq = selector->get_channel(i);
            const int answers[] = {selector->get_event_type(daq), selector->get_data_type(daq),
                                   selector->is_channel_slow(i), selector->is_channel_ml(i),
                                   selector->get_subchannels(i)};
            for (const int answer : answers)
                seen.records += std::to_string(answer) + ' ';
            return seen.result;
        });
    return seen;
}

enum document_kind { CHANNELS, DAQ_VARIABLES, EVENTS, DICTIONARY, CAMERA };

struct reader_row {
    const char *name;
    document_kind kind;
    bool from_file;
    reading (*read)(char *source); // a text or a path
};

inline const reader_row every_reader[] = {
    {"channels in memory", CHANNELS, false, read_channels<parse_descr_list_read, true, true>},
    {"channels in a file", CHANNELS, true, read_channels<parse_descr_list_readf, true, true>},
    {"channels in a data block", CHANNELS, false, read_channel_block},
    {"channels in the master file", CHANNELS, true, load_master_file},
    {"DAQ variables in memory", DAQ_VARIABLES, false, read_channels<parse_descr_list_read, false, true>},
    {"DAQ variables in a file", DAQ_VARIABLES, true, read_channels<parse_descr_list_readf, false, false>},
    {"events in memory", EVENTS, false, read_events<zeb5_parse_ev_list_read>},
    {"events in a file", EVENTS, true, read_events<zeb5_parse_ev_list_readf>},
    {"classic dictionary in memory", DICTIONARY, false,
     read_entries<classic_layout, parse_env_index_dict_list_read>},
    {"classic dictionary in a file", DICTIONARY, true,
     read_entries<classic_layout, parse_env_index_dict_readf>},
    {"2010 dictionary in memory", DICTIONARY, false,
     read_entries<layout_2010, parse_env_index_dict_list_read_2010>},
    {"2010 dictionary in a file", DICTIONARY, true,
     read_entries<layout_2010, parse_env_index_dict_readf_2010>},
    {"camera file", CAMERA, true, read_camera},
    {"memory pull reader", DAQ_VARIABLES, false, pull_from_memory},
    {"file pull reader", DAQ_VARIABLES, true, pull_from_file},
    {"selector of files", CHANNELS, true, ask_selector<EXTR_FROM_FILE>},
    {"selector of texts", CHANNELS, false, ask_selector<EXTR_FROM_XML>},
};

/// A small document of each kind with everything that may stand in it, text beyond ASCII, an entity and a
/// name that stands twice included.
inline const std::string good_documents[] = {
    "<?xml version=\"1.0\"?><!DOCTYPE CHANDESCRIPTIONS [<!ELEMENT CHANDESCRIPTIONS ANY>"
    "<!ELEMENT CHANNEL ANY><!ELEMENT PROP ANY><!ELEMENT NAME ANY><!ELEMENT EVTYPE ANY><!ELEMENT DTYPE ANY>"
    "<!ELEMENT BIT ANY><!ELEMENT BIT_NAME ANY><!ELEMENT DIM ANY><!ELEMENT DIM_NAME ANY><!ELEMENT STAT ANY>"
    "<!ELEMENT STAT_NAME ANY><!ELEMENT UNITS ANY><!ENTITY e \"q\">]>"
    "<CHANDESCRIPTIONS><CHANNEL><EVTYPE>4</EVTYPE><DTYPE>9</DTYPE><PROP>A/B</PROP><NAME>N.1</NAME>"
    "<UNITS>\xc2\xb5m</UNITS><BIT>1<BIT_NAME>on</BIT_NAME></BIT><BIT>2<BIT_NAME>off</BIT_NAME></BIT></"
    "CHANNEL>"
    "<CHANNEL><EVTYPE>29</EVTYPE><PROP>A/C</PROP><NAME>N.2&e;</NAME><DIM>0<DIM_NAME>x</DIM_NAME>"
    "<STAT>1<STAT_NAME>mean</STAT_NAME></STAT></DIM><DIM>1</DIM></CHANNEL>"
    "<CHANNEL><PROP>A/B</PROP><BIT>7</BIT></CHANNEL><CHANNEL><UNITS>V</UNITS></CHANNEL></CHANDESCRIPTIONS>",

    "<DAQvariables><DaqBits n=\"1\"><evType>4</evType><orvin>A/B</orvin><daqName>N.1</daqName>"
    "<bitTitle bit=\"3\">three \xc3\xa4</bitTitle></DaqBits><DaqFloat><orvin>A/C</orvin><units>V</units>"
    "</DaqFloat><DaqFloat n=\"&lt;\"><orvin>A/B</orvin><evType>1</evType></DaqFloat></DAQvariables>",

    "<BMR><EVENT><TYPE>5</TYPE><SBLOCK>one</SBLOCK><CHLIST><CHAN>a</CHAN><CHAN>b \xc3\xb6</CHAN></CHLIST>"
    "<SBLOCK>two</SBLOCK><TMASK>0x1F</TMASK></EVENT><EVENT><TYPE>6</TYPE><PRIORITY>7</PRIORITY></EVENT></"
    "BMR>",

    "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>A/B</PROP><DABS>0.5</DABS></CHANNEL><CHANNEL><PROP>A/C "
    "\xc3\xbc</PROP><INDEX>2</INDEX><INDEX>3</INDEX></CHANNEL><CHANNEL><INDEX>4</INDEX></CHANNEL>"
    "</ENVINDEXDICT>",

    "<Camera><Integer Name=\"Gain\"><ToolTip>how much \xe2\x82\xac</ToolTip><Description>of it</Description>"
    "</Integer><PvRename Name=\"G\"/><Float Name=\"a name longer than any short string\"><ToolTip/></Float>"
    "<Enumeration Name=\"Mode\"><EnumEntry "
    "Name=\"On\"><ToolTip>now</ToolTip></EnumEntry></Enumeration></Camera>",
};

/// The same documents, cut off near the end. Readers keep what they read before that.
inline std::string bad_document(document_kind kind) {
    const std::string &good = good_documents[kind];
    return good.substr(0, good.size() - 20);
}

/// A document in memory or in a file, whichever its reader takes.
class reader_source {
public:
    reader_source(const reader_row &reader, const std::string &document) : text_(document) {
        if (reader.from_file)
            file_ = std::make_unique<temporary_file>(document);
    }
    char *get() { return file_ ? file_->c_path() : text_.data(); }

private:
    std::string text_;
    std::unique_ptr<temporary_file> file_;
};

/// A reading that a test repeats, and its expected outcome.
struct repeated_reading {
    repeated_reading(const reader_row &what, const std::string &document)
        : row(&what), source(what, document) {}

    reading read() { return row->read(source.get()); }

    const reader_row *row;
    reader_source source;
    reading expected;
};

#endif
