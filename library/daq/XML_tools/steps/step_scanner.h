#ifndef ZEB5_STEP_SCANNER_H
#define ZEB5_STEP_SCANNER_H

/// The steps of a plain document. They are those steps of the pull readers that deliver a tag.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "steps/plain_scanner.h"
#include "steps/plain_text.h"

namespace zeb5 {

/// What a step delivers to the library's own readers.
struct step {
    int row = reader_row::none;  // number of the reader's row for the current element
    std::uint32_t element = 0;   // number of its start tag
    const char *value = nullptr; // its text, which need not end in a NUL; null: none
    std::size_t value_length = 0;

    std::string_view text() const { return {value, value_length}; }
};

class step_scanner : public plain_scanner {
public:
    using plain_scanner::plain_scanner;

    /// Takes the next step that delivers a tag and means something to the reader. Returns false at the
    /// document's end, and when the document is not plain.
    bool next_step(step &taken);

    /// Number of steps so far that delivered a tag.
    std::size_t delivered() const { return element_number_ + other_steps_; }

    /// Whether the document was plain up to its end.
    bool has_finished() const { return has_finished_; }

    /// The name of the step's element.
    std::string_view tag() const { return last_->text(); }

    /// The value of an attribute of the step's element; nullopt for none.
    std::optional<std::string_view> attribute(std::string_view name) const;

private:
    struct kept_attribute {
        std::string name;
        std::string value;
    };

    enum class outcome { DELIVERED, SILENT, STOPPED };

    bool take_usual_steps(step &taken);
    const char *end_of_text(const char *at) const;
    const char *end_of_blanks(const char *at) const;
    const char *end_of_leaf(const char *at, const element_name &name, std::string_view &text) const;
    outcome take_rare_step(step &taken);
    outcome take_start(step &taken);
    outcome take_text(plain_token token, step &taken);
    outcome take_end(step &taken);
    bool keep_attributes();
    bool is_followed_by_nothing();

    void fill(step &taken, std::string_view value = {}) const {
        taken = {last_->row.number, element_number_, value.data(), value.size()};
    }
    outcome deliver_alone(step &taken) const;

    // About the current element of the pull readers, which is that of the last start tag
    bool is_held_ = false;             // whether steps deliver it
    std::uint32_t element_number_ = 0; // number of steps that delivered a start tag
    std::size_t other_steps_ = 0;      // number of other steps that delivered a tag
    std::size_t attribute_count_ = 0;
    std::vector<kept_attribute> attributes_; // the first attribute_count_; comments and text keep them

    bool has_finished_ = false;
    plain_text read_text_;
};

inline bool step_scanner::next_step(step &taken) {
    outcome came;
    do
        came = take_usual_steps(taken) ? outcome::DELIVERED : take_rare_step(taken);
    while (came == outcome::SILENT);
    return came == outcome::DELIVERED;
}

/// Takes usual tags and texts in a few instructions each. Returns false at anything else.
inline bool step_scanner::take_usual_steps(step &taken) {
    const char *at = at_;
    while (at < quick_limit_) {
        if (*at == '\n' && at[1] == '<') { // most white space
            ++at;
            is_held_ = false;
        }
        bool delivers;
        std::string_view text;
        if (*at != '<') {
            const char *const end = *at > ' ' ? end_of_text(at) : end_of_blanks(at);
            if (!end)
                break;
            delivers = *at > ' ' && is_held_ && last_->row.number != reader_row::none;
            other_steps_ += *at > ' ' && is_held_;
            is_held_ = false;
            text = {at, end};
            at = end;
        } else if (at[1] == '/') {
            const element_name *const name = *open_;
            const char *const end = at + 2 + name->length;
            if (!name->quickly_begins(at + 2) || *end != '>')
                break;
            --open_;
            delivers = is_held_ && name->row.acts_alone;
            other_steps_ += is_held_;
            is_held_ = false;
            at = end + 1;
        } else {
            element_name *const name = last_->next_at(at + 1);
            if (!name || at[1 + name->length] != '>' || open_ == &stack_.back())
                break;
            last_ = name;
            ++element_number_;
            attribute_count_ = 0;
            at += name->length + 2;
            if (const char *const behind = name->row.acts_alone ? nullptr : end_of_leaf(at, *name, text)) {
                delivers = name->row.number != reader_row::none;
                ++other_steps_;
                is_held_ = false;
                at = behind;
            } else {
                *++open_ = name;
                delivers = name->row.acts_alone;
                is_held_ = true;
            }
        }
        if (delivers) {
            at_ = at;
            fill(taken, text);
            return true;
        }
    }
    at_ = at;
    return false;
}

/// Returns the end of a text that needs no conversion; null for any other text.
inline const char *step_scanner::end_of_text(const char *at) const {
    const char *end = skip_plain_text(at);
    while (end < limit_ && (*end == '\n' || *end == '\t'))
        end = skip_plain_text(end + 1);
    return end < limit_ && *end == '<' ? end : nullptr;
}

/// Returns the end of white space; null when other text follows it.
inline const char *step_scanner::end_of_blanks(const char *at) const {
    while (at < limit_ && (*at == '\n' || *at == ' ' || *at == '\t'))
        ++at;
    return at < limit_ && *at == '<' ? at : nullptr;
}

/// Reads the rest of an element from `at`, after its start tag, if it holds nothing but a text. Sets `text`
/// and returns the element's end; returns null for any other element.
inline const char *step_scanner::end_of_leaf(const char *at, const element_name &name,
                                             std::string_view &text) const {
    if (*at <= ' ' || *at == '<')
        return nullptr;
    const char *const end = skip_plain_text(at);
    if (end >= quick_limit_ || end[0] != '<' || end[1] != '/')
        return nullptr;
    const char *const behind = end + 2 + name.length;
    if (!name.quickly_begins(end + 2) || *behind != '>')
        return nullptr;
    text = {at, end};
    return behind + 1;
}

} // namespace zeb5

#endif
