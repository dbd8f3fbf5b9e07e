#include "records/document_kinds.h"

#include <algorithm>

#include "files/failure.h"
#include "files/standard_streams.h"
#include "files/started_parser.h"
#include "records/form_losses.h"

namespace {

const record_kind *const record_kinds[] = {&channel_records, &event_records, &dictionary_records,
                                           &camera_records};

const std::vector<document_kind> &kinds() {
    static const std::vector<document_kind> all = {
        {channel_records, "CHANDESCRIPTIONS", "chandescriptions"},
        {channel_records, "DAQvariables", "daqvariables"},
        {event_records, "BMR", nullptr},
        {dictionary_records, "ENVINDEXDICT", "envindexdict"},
        {camera_records, nullptr, nullptr},
    };
    return all;
}

/// Returns the name of the root element; empty when there is none or the parser reports an error up to it.
std::string root_of(const document &source) {
    return with_started_parser(source, [](auto &parser) {
        char *tag = nullptr;
        bool read = parser.parse(&tag, nullptr) == 0;
        return std::string(read && tag ? tag : "");
    });
}

bool holds_records(const document &source, const record_kind &kind) {
    bool found = false;
    held_output({1, 2}, [&] { // the reader may report a document that is of another kind
        const std::unique_ptr<record_list> records = kind.make({});
        found = records->read(source) == 0 && records->size() > 0;
    });
    return found;
}

} // namespace

void refuse_blank(const document &source) {
    if (source.is_blank())
        throw failure(STATUS_DOCUMENT, source.name + ": the document is empty");
}

const document_kind &kind_of(const document &source) {
    std::string root;
    std::string reports = held_output({1, 2}, [&] { root = root_of(source); });
    for (const document_kind &kind : kinds())
        if (!root.empty() && (kind.root ? root == kind.root : holds_records(source, kind)))
            return kind;
    if (root.empty())
        refuse_blank(source);
    write_standard_error(readable_diagnostics(reports, source.name));
    if (root.empty())
        throw failure(STATUS_DOCUMENT, source.name + ": no root element could be read");
    throw failure(STATUS_DOCUMENT, source.name + ": root element '" + root +
                                       "' is none of CHANDESCRIPTIONS, DAQvariables, BMR and ENVINDEXDICT, "
                                       "and no camera feature could be read");
}

std::vector<std::string> form_names() {
    std::vector<std::string> names;
    for (const record_kind *kind : record_kinds)
        for (const form &one : kind->forms)
            if (std::find(names.begin(), names.end(), one.name) == names.end())
                names.push_back(one.name);
    return names;
}

std::vector<const record_kind *> kinds_of_form(const std::string &name) {
    std::vector<const record_kind *> found;
    for (const record_kind *kind : record_kinds)
        if (form_named(*kind, name))
            found.push_back(kind);
    return found;
}
