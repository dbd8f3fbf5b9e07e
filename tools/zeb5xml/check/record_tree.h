#ifndef ZEB5XML_RECORD_TREE_H
#define ZEB5XML_RECORD_TREE_H

/// The records of a document as its elements describe them, beside those that a reader made of it.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "check/check_rules.h"
#include "check/outline.h"
#include "elements/element_row.h"

/// An element that fills a field of a record.
struct filled_field {
    const zeb5::element_row *row;
    std::size_t element; // its number in the outline
};

/// A record, or a group of elements that has none.
struct tree_record {
    static constexpr std::size_t none = static_cast<std::size_t>(-1);
    static constexpr int most_levels = 6;

    int level = zeb5::root_level;
    std::size_t parent = none;
    std::size_t opener = none;                    // number of the element that opened it
    const zeb5::element_row *row = nullptr;       // of that element; null for the document itself
    const void *made = nullptr;                   // what the reader made of it; null: nothing that is known
    std::string label;                            // by which messages know it: its identity
    std::string name_label;                       // or, for lack of one, its name in the acquisition
    std::vector<filled_field> fields;             // one for each field at most
    std::vector<filled_field> replaced_fields;    // those that lost theirs to a later element
    std::array<std::size_t, most_levels> taken{}; // number of the reader's parts that are known, by level
    std::uint64_t identities = 0;                 // rows of identities that have come, as bits
    std::uint64_t empty_identities = 0;           // and rows of those that came without text
    bool is_ignored = false;                      // the reader ignores the rest of it, and a finding says so
    bool is_doubtful = false;                     // elements with wrong names have changed it
};

struct record_tree {
    std::vector<tree_record> records; // each behind its parent; the first is the document
    std::vector<finding> findings;
};

/// A document, what a reader made of it, and what is known about its kind.
struct checked_document {
    const zeb5::document_elements &kind;
    const outline &content;
    const void *list; // the reader's list of records; null: not to be compared
    bool merges;      // the reader merges a record into the first one of its identity
    bool is_whole;    // the reader has read it to its end
};

/// Names a record in a message, as "channel 'A/B', bit 3: "; empty for the document itself.
std::string described(const checked_document &document, const record_tree &tree, std::size_t record);

/// The beginning of a text that fits into the row's field.
std::string_view as_kept(const zeb5::element_row &row, std::string_view text);

/// Returns the next part of this level that the reader made in the record around it, if the text and the
/// number of its element could be those of the part; null otherwise.
const void *next_part(const checked_document &document, tree_record &owner, int level,
                      const zeb5::element_row &row, std::size_t element);

/// Returns the attribute that the row takes its number from; null when it is not there.
const outline_attribute *attribute_of(const checked_document &document, const zeb5::element_row &row,
                                      std::size_t element);

/// Returns the number that the row takes from the element, as a text.
std::string number_text(const checked_document &document, const zeb5::element_row &row, std::size_t element);

#endif
