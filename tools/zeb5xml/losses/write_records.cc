#include "losses/write_records.h"

#include "files/failure.h"
#include "files/output.h"
#include "files/standard_streams.h"
#include "losses/round_trip.h"
#include "values/text_encoding.h"

namespace {

/// Returns whether anything is lost that nobody expects to be.
bool tell_losses(const records_to_write &what, const std::string &text) {
    write_standard_error(what.lost_before);
    const round_trip_losses losses = find_losses(what.list, what.kind, what.how, what.to, text);
    for (const texts *lines : {&losses.accepted, &losses.refused})
        for (const std::string &line : *lines)
            tell(what.name + ": " + line);
    return !(what.lost_before.empty() && losses.refused.empty());
}

} // namespace

void write_records(const records_to_write &what, const std::string &output, bool force,
                   const std::string &way_out) {
    std::string text;
    int result = 0;
    run_library(what.name, [&] { result = what.list.write(what.to, text); });
    if (result != 0)
        throw failure(STATUS_OUTPUT, what.name + ": could not be put into that form, result " +
                                         std::to_string(result) + " of the writer");
    if (what.to.is_document) // which declares ISO-8859-1, while the library writes the bytes of the records
        text = latin_1_where_possible(text);
    if (tell_losses(what, text) && !force)
        throw failure(STATUS_DOCUMENT, what.name + ": nothing written, as values would be lost" + way_out);
    write_output(output, text);
}
