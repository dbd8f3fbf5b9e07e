/// The Python module: documents as lists of records with attributes, over zeb5xml.hpp.

#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include "SAX_File_Parser.h"
#include "SAX_Memory_Parser.h"
#include "columns.h"
#include "fields.h"
#include "xml_platform.h"
#include "zeb5xml.hpp"

namespace {

py::object error_type;

/// Raises Error with the reader's result, what it printed, and the records that were read before the problem.
[[noreturn]] void raise(const std::string &what, int code, const std::string &printed, py::object records) {
    py::object error = error_type(to_python(what));
    error.attr("code") = code;
    error.attr("printed") = to_python(printed);
    error.attr("records") = records;
    PyErr_SetObject(error_type.ptr(), error.ptr());
    throw py::error_already_set();
}

template <class List> py::object taken(zeb5xml::outcome<List> result, const std::string &name) {
    py::object records = py::cast(std::move(result.list));
    if (result.code != 0)
        raise(name + ": not read without problems, result " + std::to_string(result.code), result.code,
              result.printed, records);
    return records;
}

template <class List, class... More> py::object read(const std::filesystem::path &path, More... more) {
    return taken(List::try_read(path, more...), path.string());
}

template <class List, class... More> py::object parse(std::string_view text, More... more) {
    return taken(List::try_parse(std::string(text), more...), "document in memory");
}

/// Errors of zeb5xml.hpp as those of the module.
template <class Action> auto translated(Action &&action) {
    try {
        return action();
    } catch (const zeb5xml::error &problem) {
        raise(problem.what(), problem.code(), "", py::none());
    }
}

/// What a list is in Python: a sequence of its records, which live as long as it does.
template <class List> py::class_<List> sequence(py::module_ &module, const char *name, const char *what) {
    using record = typename List::value_type;
    py::class_<List> type(module, name, what);
    type.def("__len__", [](const List &list) { return list.size(); });
    type.def(
        "__getitem__",
        [](List &list, py::ssize_t place) -> record & {
            const auto size = static_cast<py::ssize_t>(list.size());
            if (place < -size || place >= size)
                throw py::index_error("there is no such record");
            return list[static_cast<std::size_t>(place < 0 ? place + size : place)];
        },
        py::return_value_policy::reference_internal);
    type.def(
        "__iter__", [](List &list) { return py::make_iterator(list.begin(), list.end()); },
        py::keep_alive<0, 1>());
    return type;
}

template <class List> py::class_<List> readable(py::module_ &module, const char *name, const char *what) {
    auto type = sequence<List>(module, name, what);
    type.def_static("read", &read<List>, py::arg("path"), "Reads a file; raises Error.");
    type.def_static(
        "parse", [](std::string_view text) { return parse<List>(text); }, py::arg("text"),
        "Reads a document in memory, as str or bytes; raises Error.");
    return type;
}

zeb5xml::channel_format channel_format_of(const std::string &name) {
    using zeb5xml::channel_format;
    for (const auto &[known, format] :
         {std::pair("chandescriptions", channel_format::chandescriptions),
          std::pair("daqvariables", channel_format::daqvariables), std::pair("table", channel_format::table),
          std::pair("summary", channel_format::summary)})
        if (name == known)
            return format;
    throw py::value_error("'" + name + "' is none of chandescriptions, daqvariables, table and summary");
}

zeb5xml::dictionary_format dictionary_format_of(const std::string &name) {
    if (name == "xml" || name == "table")
        return name == "xml" ? zeb5xml::dictionary_format::xml : zeb5xml::dictionary_format::table;
    throw py::value_error("'" + name + "' is none of xml and table");
}

/// A site's own function may have no name for a type.
const char *name_or_null(const char *name) { return name ? name : "(null)"; }

std::vector<std::string> event_names(std::uint32_t mask) {
    std::vector<std::string> names;
    for (int type = 0; type < 32; ++type)
        if (mask >> type & 1)
            names.emplace_back(name_or_null(event_name_itoa(type)));
    return names;
}

/// Bit 31 says that the others stand for the block types from 32 on.
std::vector<std::string> block_names(std::uint32_t dtype) {
    std::vector<std::string> names;
    for (int bit = 0; bit < 31; ++bit)
        if (dtype >> bit & 1)
            names.emplace_back(name_or_null(block_name_itoa(bit + (dtype >> 31 ? 32 : 0))));
    return names;
}

void add_channels(py::module_ &module) {
    py::class_<bit_descr> bit(module, "Bit", "One named bit of a channel.");
    bit.def_readwrite("bit", &bit_descr::bit, "bit number");
    text_field<&bit_descr::bit_name>(bit, "bit_name", "name");
    text_field<&bit_descr::bit_desc>(bit, "bit_desc", "description");

    py::class_<stat_descr> stat(module, "Stat", "One statistic of a dimension.");
    stat.def_readwrite("stat", &stat_descr::stat, "statistic id");
    text_field<&stat_descr::stat_name>(stat, "stat_name", "name");
    text_field<&stat_descr::stat_desc>(stat, "stat_desc", "description");
    text_field<&stat_descr::units>(stat, "units", "units of the value");

    py::class_<dim_descr> dim(module, "Dim", "One dimension of a channel.");
    dim.def_readwrite("dim", &dim_descr::dim, "dimension id");
    text_field<&dim_descr::dim_name>(dim, "dim_name", "name");
    text_field<&dim_descr::dim_desc>(dim, "dim_desc", "description");
    text_field<&dim_descr::units>(dim, "units", "units of the value");
    parts_field<&dim_descr::stats>(dim, "stats", "its statistics");

    using channel = chan_descr_2010;
    py::class_<channel> type(module, "Channel", "One recorded channel.");
    text_field<&channel::prop_name>(type, "prop_name", "property name: the channel's identity");
    text_field<&channel::daq_name>(type, "daq_name", "name in the acquisition");
    text_field<&channel::prop_desc>(type, "prop_desc", "description");
    text_field<&channel::units>(type, "units", "units of the value");
    text_field<&channel::sb_name>(type, "sb_name", "server block that delivers the channel");
    text_field<&channel::subsystem>(type, "subsystem", "subsystem name");
    type.def_readwrite("stream", &channel::stream, "data stream number");
    type.def_readwrite("ev_type", &channel::ev_type, "mask of event types, see event_names()");
    type.def_readwrite("dtype", &channel::dtype, "mask of block types, see block_names()");
    type.def_readwrite("count", &channel::count, "channel counter");
    type.def_readwrite("db_key", &channel::db_key, "database key; -1: unknown");
    type.def_readwrite("max_size", &channel::max_size, "largest size of one data item");
    type.def_readwrite("set_point", &channel::set_point, "not 0: the channel is a set point");
    type.def_property_readonly(
        "ev_type_names", [](const channel &c) { return event_names(c.ev_type); }, "names of its event types");
    type.def_property_readonly(
        "dtype_names", [](const channel &c) { return block_names(c.dtype); }, "names of its block types");
    parts_field<&channel::bits>(type, "bits", "its named bits");
    parts_field<&channel::dims>(type, "dims", "its dimensions");
    type.def("__repr__", [](const channel &c) {
        return to_python("<Channel " + std::string(text_of(c.prop_name)) + ">");
    });

    using zeb5xml::channel_list;
    auto list = sequence<channel_list>(module, "ChannelList", "Channel descriptions.");
    list.def_static(
        "read",
        [](const std::filesystem::path &path, bool shift, bool merge_duplicates) {
            return read<channel_list>(path, zeb5xml::channel_reading{shift, merge_duplicates});
        },
        py::arg("path"), py::kw_only(), py::arg("shift") = false, py::arg("merge_duplicates") = true,
        "Reads a file; raises Error. `shift`: event and data types are numbers, to be turned into masks.");
    list.def_static(
        "parse",
        [](std::string_view text, bool shift, bool merge_duplicates) {
            return parse<channel_list>(text, zeb5xml::channel_reading{shift, merge_duplicates});
        },
        py::arg("text"), py::kw_only(), py::arg("shift") = false, py::arg("merge_duplicates") = true,
        "Reads a document in memory, as str or bytes; raises Error.");
    list.def(
        "find", [](channel_list &channels, const py::str &name) { return channels.find(to_bytes(name)); },
        py::arg("property"), py::return_value_policy::reference_internal,
        "Returns the first channel of this property, or None.");
    list.def(
        "text",
        [](const channel_list &channels, const std::string &format) {
            return translated([&] { return to_python(channels.text(channel_format_of(format))); });
        },
        py::arg("format") = "chandescriptions",
        "Returns the list as chandescriptions, daqvariables, table or summary.");
    list.def(
        "write",
        [](const channel_list &channels, const std::filesystem::path &path, const std::string &format) {
            translated([&] { channels.write(path, channel_format_of(format)); });
        },
        py::arg("path"), py::arg("format") = "chandescriptions",
        "Writes the list to a file, which is replaced when all is written; raises Error.");
    list.def("_columns", &columns, py::arg("of"), py::arg("arrays"));
}

void add_events(py::module_ &module) {
    using block = zeb5_ev_sb_list;
    py::class_<block> server_block(module, "ServerBlock", "One server block of an event.");
    text_field<&block::sb_list>(server_block, "sb_list", "name of the block");
    server_block.def_property_readonly(
        "ch_list",
        [](const block &of) {
            py::list names;
            for (const char *name : *of.ch_list)
                names.append(to_python(name));
            return names;
        },
        "names of the channels that are wanted; empty: all of them");

    using entry = zeb5_ev_entry;
    py::class_<entry> event(module, "Event", "One event type that is wanted.");
    event.def_property_readonly(
        "evtype", [](const entry &e) { return int{e.evtype}; }, "event type");
    event.def_property_readonly(
        "evtype_name", [](const entry &e) { return event_name_itoa(e.evtype); }, "name of the event type");
    event.def_property_readonly(
        "timeup", [](const entry &e) { return e.min_ev_time.timeup; }, "least time of an event, seconds");
    event.def_property_readonly(
        "timelow", [](const entry &e) { return e.min_ev_time.timelow; },
        "and microseconds; both 0: not given");
    event.def_readwrite("tmask", &entry::tmask, "trigger mask");
    event.def_readwrite("priority", &entry::priority, "priority");
    event.def_property_readonly(
        "sb_list",
        [](py::object self) {
            py::list blocks;
            for (block *one : *self.cast<entry &>().sb_list)
                blocks.append(py::cast(one, py::return_value_policy::reference_internal, self));
            return blocks;
        },
        "its server blocks; empty: none named");
    readable<zeb5xml::event_list>(module, "EventList", "An event list.");
}

void add_dictionary(py::module_ &module) {
    using entry = zeb5_env_index_dictionary_entry_2010;
    py::class_<entry> type(module, "DictionaryEntry", "One entry of an env index dictionary.");
    type.def_readwrite("index", &entry::index, "index");
    type.def_property(
        "env_prop", [](const entry &e) { return to_python(text_of(e.data.env_prop)); },
        [](entry &e, const py::str &text) { set_text(e.data.env_prop, text); }, "property name");
    type.def_property(
        "env_ch_abs_delta", [](const entry &e) { return e.data.env_ch_abs_delta; },
        [](entry &e, float value) { e.data.env_ch_abs_delta = value; }, "absolute change threshold");
    type.def_property(
        "env_ch_rel_delta", [](const entry &e) { return e.data.env_ch_rel_delta; },
        [](entry &e, float value) { e.data.env_ch_rel_delta = value; }, "relative change threshold");

    using zeb5xml::env_dictionary;
    auto list = readable<env_dictionary>(module, "EnvDictionary", "An env index dictionary.");
    list.def(
        "text",
        [](const env_dictionary &entries, const std::string &format) {
            return translated([&] { return to_python(entries.text(dictionary_format_of(format))); });
        },
        py::arg("format") = "xml", "Returns the dictionary as xml or table.");
    list.def(
        "write",
        [](const env_dictionary &entries, const std::filesystem::path &path, const std::string &format) {
            translated([&] { entries.write(path, dictionary_format_of(format)); });
        },
        py::arg("path"), py::arg("format") = "xml",
        "Writes the dictionary to a file, which is replaced when all is written; raises Error.");
}

template <auto Member, class Class> void string_field(Class &type, const char *name, const char *what) {
    type.def_property_readonly(
        name, [](const ZEB5GigEFeature &feature) { return to_python(feature.*Member); }, what);
}

void add_camera(py::module_ &module) {
    py::class_<ZEB5GigEFeature> type(module, "Feature", "One feature of a camera.");
    type.def_readonly("type", &ZEB5GigEFeature::type, "kind");
    type.def_property_readonly(
        "type_name", [](const ZEB5GigEFeature &feature) { return FeatureTags[feature.type]; },
        "name of the kind, such as Integer");
    string_field<&ZEB5GigEFeature::name>(type, "name", "name");
    string_field<&ZEB5GigEFeature::extension>(type, "extension", "alternative name");
    string_field<&ZEB5GigEFeature::tooltip>(type, "tooltip", "tool tip");
    string_field<&ZEB5GigEFeature::description>(type, "description", "description");
    readable<zeb5xml::camera_features>(module, "CameraFeatures", "The features of a camera.");
}

/// Returns the name of the root element; raises Error when the document cannot be read so far.
template <class Parser, class... Path>
std::string root_of(const std::string &name, Parser &&parser, Path... path) {
    zeb5xml::detail::held_output reports;
    char *tag = nullptr;
    if (parser.start(path...) == 0 && parser.parse(&tag, nullptr) == 0 && tag)
        return tag;
    raise(name + ": not read without problems, result 1", 1, reports.take(), py::none());
}

std::string root_of_file(const std::filesystem::path &path) {
    return root_of(path.string(), SAX_File_Parser(), path.string().data());
}

std::string root_of_text(std::string_view text) {
    std::string copy(text);
    return root_of("document in memory", SAX_Memory_Parser(copy.data()));
}

} // namespace

PYBIND11_MODULE(_zeb5xml, module) {
    static const xml_platform
        platform; // documents that are not plain are read without starting Xerces each time
    error_type = py::reinterpret_steal<py::object>(PyErr_NewExceptionWithDoc(
        "zeb5xml.Error",
        "A document was not read, or an output not written, without problems. `code` is the "
        "result of the function,\n`printed` what it reported, and `records` what was read "
        "before the problem.",
        PyExc_RuntimeError, nullptr));
    module.attr("Error") = error_type;
    add_channels(module);
    add_events(module);
    add_dictionary(module);
    add_camera(module);
    module.def("_root_of_file", &root_of_file);
    module.def("_root_of_text", &root_of_text);
    module.def("event_names", &event_names, py::arg("mask"), "Names of the event types in a mask.");
    module.def("block_names", &block_names, py::arg("dtype"),
               "Names of the block types in a data type word.");
}
