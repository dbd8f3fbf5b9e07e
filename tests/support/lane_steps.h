#ifndef LANE_STEPS_H
#define LANE_STEPS_H

/// The steps that the library's readers take, as text, either way.

#include <optional>
#include <string>

#include "readers/documents.h"
#include "support/lane.h"
#include "support/reader_forms.h"

/// All of one document.
struct steps_seen {
    std::string tags;       // "A A[text] ": those that deliver a tag; "A#2": for row 2 of the reader, not 0
    std::string attributes; // number of the element, name and value of those that are asked for
    int errors = 0;
    captured streams; // with DOCUMENT for the name of the document
    std::optional<zeb5::lane_end> lane;

    /// Whatever became of the document in the lane.
    bool operator==(const steps_seen &other) const {
        return tags == other.tags && attributes == other.attributes && errors == other.errors &&
               streams.out == other.streams.out && streams.err == other.streams.err;
    }
};

inline std::ostream &operator<<(std::ostream &to, const steps_seen &seen) {
    return to << seen.tags << '\n' << seen.attributes << '\n' << seen.errors << '\n' << seen.streams.err;
}

/// The last one of a document.
inline std::optional<zeb5::lane_end> last_lane_end;

/// A reader to which all elements mean something, so that all steps are seen.
inline zeb5::reader_row every_row(std::string_view) { return {0, true}; }

template <class Document> void take_all_steps(char *source, zeb5::row_finder find_row, steps_seen &seen) {
    Document document(source);
    zeb5::document_steps steps(document);
    steps.set_rows(find_row);
    while (steps.next()) {
        const zeb5::step &taken = steps.current();
        seen.tags += steps.tag();
        if (taken.row != 0)
            seen.tags += '#' + std::to_string(taken.row);
        if (taken.value)
            seen.tags.append("[").append(taken.text()).append("]");
        seen.tags += ' ';
        for (const char *name : {"a", "b", "bit", "id", "Name"})
            if (const auto value = steps.attribute(name)) {
                seen.attributes += std::to_string(taken.element);
                seen.attributes.append(name).append("=").append(*value).append(" ");
            }
    }
    seen.errors = steps.error_count();
}

/// `name` is what reports call the document.
inline steps_seen lane_steps_of(reader_form form, reading_way way, char *source, const std::string &name,
                                zeb5::row_finder find_row = every_row) {
    const way_in_use used(way);
    steps_seen seen;
    zeb5::lane.watch = [](zeb5::lane_end end) { last_lane_end = end; };
    last_lane_end.reset();
    seen.streams = capture([&] {
        form == READ_MEMORY ? take_all_steps<zeb5::memory_document>(source, find_row, seen)
                            : take_all_steps<zeb5::file_document>(source, find_row, seen);
    });
    seen.streams.err = replace_all(seen.streams.err, name, "DOCUMENT");
    seen.lane = last_lane_end;
    return seen;
}

inline steps_seen lane_steps(reader_form form, reading_way way, const std::string &document,
                             zeb5::row_finder find_row = every_row) {
    if (form == READ_FILE) {
        const temporary_file file(document);
        std::string path = file.path();
        return lane_steps_of(form, way, path.data(), path, find_row);
    }
    // exactly as long as the text and its NUL, so that reading past them shows
    std::vector<char> text(document.c_str(), document.c_str() + document.size() + 1);
    return lane_steps_of(form, way, text.data(), "my_mem_info", find_row);
}

#endif
