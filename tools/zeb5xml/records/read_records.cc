#include "records/read_records.h"

#include "files/failure.h"
#include "files/standard_streams.h"

read_records::read_records(const std::string &path)
    : source(read_document(path)), kind(kind_of(source)), list(kind.make({})), problems(0) {
    run_library(source.name, [&] { problems = list->read(source); });
}

void read_records::require_all(const std::string &outcome) const {
    if (problems != 0)
        throw failure(STATUS_DOCUMENT, source.name + ": not read without errors: " + outcome);
}
