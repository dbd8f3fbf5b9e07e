#include "check/element_text.h"
#include "check/number_faults.h"
#include "check/record_tree.h"

namespace {

using zeb5::element_row;
using zeb5::value_kind;

/// Whether the reader may have taken `kept` from the text, or from one of its pieces.
bool may_be_text(const element_row &row, std::string_view kept, const element_text &text) {
    if (kept == as_kept(row, text.whole) || text.has_entity)
        return true;
    return text.is_split() && !kept.empty() && text.whole.find(kept) != std::string::npos;
}

bool may_be_number(const element_row &row, double kept, const element_text &text) {
    if (kept == number_read(row, text.whole) || text.has_entity)
        return true;
    // A piece, or a reference with the text behind it, or all that is left
    const std::string_view whole = text.whole;
    for (std::size_t i = 0; i < text.piece_starts.size(); ++i)
        for (std::size_t end = i + 1; end <= i + 3; ++end) {
            const bool is_last = end >= text.piece_starts.size() || end == i + 3;
            const std::size_t start = text.piece_starts[i];
            const std::size_t length = is_last ? whole.npos : text.piece_starts[end] - start;
            if (kept == number_read(row, whole.substr(start, length)))
                return true;
        }
    return false;
}

/// The value of an element, of which a reader makes one part or several.
class part_value {
public:
    part_value(const checked_document &document, const element_row &row, std::size_t number) : row_(row) {
        if (row.attribute.empty())
            text_ = text_of(document.content, document.content.elements[number]);
        else
            attribute_ = number_read(row, number_text(document, row, number));
    }

    bool may_be_of(const void *part) const {
        if (!row_.attribute.empty())
            return row_.number(part) == attribute_;
        return row_.text ? may_be_text(row_, row_.text(part), text_)
                         : may_be_number(row_, row_.number(part), text_);
    }

private:
    const element_row &row_;
    double attribute_ = 0;
    element_text text_;
};

/// The steps that deliver an element, at most: its start tag, each comment behind it, and the text. An
/// element whose number is in an attribute makes one part at each of them.
std::size_t steps_of(const outline &content, std::size_t number) {
    const outline_element &element = content.elements[number];
    for (std::size_t i = 0; i < element.pieces; ++i) {
        const text_piece &piece = content.pieces[element.first_piece + i];
        if (piece.what != text_piece::ASIDE && !piece.text.empty())
            return i + (trimmed(piece.text).empty() ? 1 : 2);
    }
    return element.pieces + 1;
}

} // namespace

std::string_view as_kept(const element_row &row, std::string_view text) {
    return row.size == 0 ? text : text.substr(0, row.size - 1);
}

const void *next_part(const checked_document &document, tree_record &owner, int level, const element_row &row,
                      std::size_t element) {
    const zeb5::part_access part = document.kind.levels[static_cast<std::size_t>(level)].part;
    const void *const around = owner.row ? owner.made : document.list;
    std::size_t &taken = owner.taken[static_cast<std::size_t>(level)];
    if (!around)
        return nullptr;
    const std::size_t most = row.attribute.empty() ? 1 : steps_of(document.content, element);
    const part_value value(document, row, element);
    const void *found = nullptr;
    for (std::size_t ahead = 0; ahead < most; ++ahead) {
        const void *const next = part(around, taken);
        const bool is_renamed =
            !owner.row && next && next == part(around, taken + 1); // by a further identity
        if (!next || !(is_renamed || value.may_be_of(next)))
            break;
        found = next;
        ++taken;
        const bool has_text = row.value == value_kind::TEXT && row.text;
        if (has_text && !row.text(next).empty())
            break; // the step with the text comes last
    }
    return found;
}
