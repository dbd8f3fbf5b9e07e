#ifndef ZEB5_STEP_SCANNER_H
#define ZEB5_STEP_SCANNER_H

/// The steps of a plain document: those steps of the pull readers that deliver a tag.

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

    /// Takes the next step that delivers a tag and that means something to the reader. Returns false at the
    /// document's end, and when the document is not plain.
    bool next_step(step &taken);

    /// Steps so far that delivered a tag.
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

    // Of the pull readers' current element, which is that of the last start tag
    bool is_held_ = false;             // whether steps deliver it
    std::uint32_t element_number_ = 0; // so many steps delivered a start tag
    std::size_t other_steps_ = 0;      // those that delivered a tag otherwise
    std::size_t attribute_count_ = 0;
    std::vector<kept_attribute> attributes_; // the first attribute_count_; they outlast comments and text

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

/// Takes usual tags and texts, in a few instructions each. Returns false where something else stands.
inline bool step_scanner::take_usual_steps(step &taken) {
    const char *at = at_;
    while (at < quick_limit_) {
        if (*at == '<' && at[1] == '/') {
            const element_name *const name = *open_;
            const char *const end = at + 2 + name->length;
            if (!name->quickly_begins(at + 2) || *end != '>')
                break;
            at = end + 1;
            --open_;
            if (is_held_) {
                is_held_ = false;
                ++other_steps_;
                if (name->row.acts_alone) {
                    at_ = at;
                    fill(taken);
                    return true;
                }
            }
        } else if (*at == '<') {
            element_name *const name = last_->next;
            const char *const end = at + 1 + name->length;
            if (!name->quickly_begins(at + 1) || *end != '>' || open_ == &stack_.back())
                break;
            at = end + 1;
            *++open_ = last_ = name;
            is_held_ = true;
            ++element_number_;
            attribute_count_ = 0;
            if (name->row.acts_alone) {
                at_ = at;
                fill(taken);
                return true;
            }
        } else if (*at > ' ') {
            const char *end = skip_plain_text(at);
            while (end < limit_ && (*end == '\n' || *end == '\t'))
                end = skip_plain_text(end + 1);
            if (end >= limit_ || *end != '<')
                break;
            const char *const text = at;
            at = end;
            if (is_held_) {
                is_held_ = false;
                ++other_steps_;
                if (last_->row.number != reader_row::none) {
                    at_ = at;
                    fill(taken, {text, end});
                    return true;
                }
            }
        } else if (*at == '\n' && at[1] == '<') { // most white space
            ++at;
            is_held_ = false;
        } else {
            const char *end = at;
            while (end < limit_ && (*end == '\n' || *end == ' ' || *end == '\t'))
                ++end;
            if (end >= limit_ || *end != '<')
                break;
            at = end;
            is_held_ = false;
        }
    }
    at_ = at;
    return false;
}

} // namespace zeb5

#endif
