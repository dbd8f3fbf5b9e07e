#include "steps/step_scanner.h"

#include <algorithm>

#include "steps/plain_characters.h"

namespace zeb5 {

namespace {

/// Returns where the last piece of a text begins, which is at its last reference; null when any piece is
/// white space. Each reference begins a piece.
const char *last_piece(const raw_text &text) {
    const char *piece = text.begin;
    for (;;) {
        const char *rest = piece;
        char32_t first = ' ';
        if (*piece == '&')
            rest = read_reference(piece, first);
        const char *const end = std::find(rest, text.end, '&');
        const bool is_blank = first == ' ' || first == '\n' || first == '\t'; // "\r" by reference is not
        if (is_blank && is_white({rest, end}))
            return nullptr;
        if (end == text.end)
            return piece;
        piece = end;
    }
}

} // namespace

/// Takes a step at anything that may stand in a plain document.
step_scanner::outcome step_scanner::take_rare_step(step &taken) {
    switch (const plain_token token = next()) {
    case plain_token::START:
        return take_start(taken);
    case plain_token::END:
        return is_outside() && !is_followed_by_nothing() ? outcome::STOPPED : take_end(taken);
    case plain_token::TEXT:
    case plain_token::CDATA:
        return is_held_ ? take_text(token, taken) : outcome::SILENT;
    case plain_token::ASIDE:
        other_steps_ += is_held_;
        return is_held_ ? deliver_alone(taken) : outcome::SILENT;
    case plain_token::FINISHED:
        has_finished_ = true;
        return outcome::STOPPED;
    default:
        return outcome::STOPPED;
    }
}

step_scanner::outcome step_scanner::take_start(step &taken) {
    if (!keep_attributes() || (is_outside() && !is_followed_by_nothing()))
        return outcome::STOPPED;
    ++element_number_;
    is_held_ = !is_empty();
    return deliver_alone(taken);
}

/// An end tag delivers the element once more if nothing came between its tags.
step_scanner::outcome step_scanner::take_end(step &taken) {
    if (!is_held_)
        return outcome::SILENT;
    is_held_ = false;
    ++other_steps_;
    return deliver_alone(taken);
}

step_scanner::outcome step_scanner::take_text(plain_token token, step &taken) {
    is_held_ = false;
    raw_text last = text();
    if (last.has_references)
        last.begin = last_piece(last);
    else if (is_white(last.bytes()))
        last.begin = nullptr;
    if (!last.begin)
        return outcome::SILENT;
    // Read even if no reader wants it: a text that the local code cannot represent is a step of another kind
    const auto value = token == plain_token::TEXT ? read_text_.content(last, encoding())
                                                  : read_text_.cdata(last, encoding());
    if (!value)
        return outcome::STOPPED;
    ++other_steps_;
    if (last_->row.number == reader_row::none)
        return outcome::SILENT;
    fill(taken, *value);
    return outcome::DELIVERED;
}

step_scanner::outcome step_scanner::deliver_alone(step &taken) const {
    if (!last_->row.acts_alone)
        return outcome::SILENT;
    fill(taken);
    return outcome::DELIVERED;
}

/// Copies the attributes; returns false if one of them cannot be converted.
bool step_scanner::keep_attributes() {
    attribute_count_ = 0;
    for (const raw_attribute &raw : plain_scanner::attributes()) {
        const auto value = read_text_.attribute(raw.value, encoding());
        if (!value)
            return false;
        if (attribute_count_ == attributes_.size())
            attributes_.emplace_back();
        attributes_[attribute_count_].name = raw.name;
        attributes_[attribute_count_++].value = *value;
    }
    return true;
}

/// Called after the root's end. When something is wrong there, the XML library reports it in the step of that
/// end tag, and does not deliver this step.
bool step_scanner::is_followed_by_nothing() {
    plain_token token;
    do
        token = next();
    while (token == plain_token::ASIDE);
    return token == plain_token::FINISHED;
}

std::optional<std::string_view> step_scanner::attribute(std::string_view name) const {
    for (std::size_t i = 0; i < attribute_count_; ++i)
        if (attributes_[i].name == name)
            return attributes_[i].value;
    return std::nullopt;
}

} // namespace zeb5
