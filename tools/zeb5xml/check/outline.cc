#include "check/outline.h"

#include <algorithm>

namespace {

constexpr std::string_view blanks = " \t\r\n";

bool is_blank(std::string_view text) { return text.find_first_not_of(blanks) == text.npos; }

class outline_scanner {
public:
    explicit outline_scanner(std::string_view text) : text_(text) {}

    outline run() {
        while (at_ < text_.size()) {
            if (text_[at_] == '<')
                take_markup();
            else
                take_text();
        }
        return std::move(found_);
    }

private:
    static constexpr std::size_t none = outline_element::none;

    bool begins(std::string_view what) const { return text_.substr(at_, what.size()) == what; }

    /// Returns what stands before the next `closing` after `opening`, and goes behind both.
    std::string_view take_enclosed(std::string_view opening, std::string_view closing) {
        const std::size_t from = std::min(at_ + opening.size(), text_.size());
        const std::size_t end = text_.find(closing, from);
        at_ = end == text_.npos ? text_.size() : end + closing.size();
        return text_.substr(from, end == text_.npos ? end : end - from);
    }

    void take_markup() {
        if (begins("<!--")) {
            take_enclosed("<!--", "-->");
            add_piece(text_piece::ASIDE, {}, at_);
        } else if (begins("<?")) {
            take_enclosed("<?", "?>");
            add_piece(text_piece::ASIDE, {}, at_);
        } else if (begins("<![CDATA[")) {
            const std::size_t at = at_;
            add_text(text_piece::CDATA, take_enclosed("<![CDATA[", "]]>"), at);
        } else if (begins("<!")) {
            take_document_type();
        } else if (begins("</")) {
            take_enclosed("</", ">");
            close();
        } else {
            take_start_tag();
        }
    }

    void take_text() {
        const std::size_t at = at_;
        if (text_[at_] == '&') {
            const std::size_t end = text_.find_first_of(";<&", at_ + 1);
            const bool is_whole = end != text_.npos && text_[end] == ';';
            at_ = is_whole ? end + 1 : std::min(end, text_.size());
            return add_text(text_piece::REFERENCE, text_.substr(at, at_ - at), at);
        }
        at_ = std::min(text_.find_first_of("<&", at_), text_.size());
        add_text(text_piece::TEXT, text_.substr(at, at_ - at), at);
    }

    void add_text(text_piece::kind what, std::string_view text, std::size_t at) {
        if (open_ == none)
            return;
        if (has_child_) {
            outline_element &element = found_.elements[open_];
            if (element.later_text == none && !is_blank(text))
                element.later_text = at + std::min(text.find_first_not_of(blanks), text.size());
        } else
            add_piece(what, text, at);
    }

    void add_piece(text_piece::kind what, std::string_view text, std::size_t at) {
        if (open_ == none || has_child_)
            return;
        outline_element &element = found_.elements[open_];
        if (element.pieces++ == 0)
            element.first_piece = found_.pieces.size();
        found_.pieces.push_back({what, text, at});
    }

    void take_start_tag() {
        outline_element element{at_++, take_name(), open_};
        if (element.name.empty() && at_ == text_.size())
            return; // a `<` at which reading ends
        element.first_attribute = found_.attributes.size();
        bool is_empty = false;
        while (at_ < text_.size() && text_[at_] != '>') {
            is_empty = text_[at_] == '/';
            if (is_empty || blanks.find(text_[at_]) != blanks.npos)
                ++at_;
            else
                take_attribute();
        }
        element.attributes = found_.attributes.size() - element.first_attribute;
        const bool is_whole = at_ < text_.size();
        at_ += is_whole;
        open_ = found_.elements.size();
        has_child_ = false;
        found_.elements.push_back(element);
        if (is_empty && is_whole)
            close();
    }

    std::string_view take_name() {
        const std::size_t from = at_;
        at_ = std::min(text_.find_first_of(" \t\r\n/>=", at_), text_.size());
        return text_.substr(from, at_ - from);
    }

    void take_attribute() {
        const std::size_t at = at_;
        const std::string_view name = take_name();
        const auto skip_blanks = [this] {
            at_ = std::min(text_.find_first_not_of(blanks, at_), text_.size());
        };
        skip_blanks();
        std::string_view value;
        if (at_ < text_.size() && text_[at_] == '=') {
            ++at_;
            skip_blanks();
            if (at_ < text_.size() && (text_[at_] == '"' || text_[at_] == '\'')) {
                const std::string_view quote = text_.substr(at_, 1);
                value = take_enclosed(quote, quote);
            }
        }
        found_.attributes.push_back({name, value, at});
    }

    void close() {
        if (open_ == none)
            return;
        found_.elements[open_].is_closed = true;
        open_ = found_.elements[open_].parent;
        has_child_ = true;
    }

    /// Declarations in an internal subset end with `>`, too; only the `>` after the bracket ends the document
    /// type.
    void take_document_type() {
        if (found_.doctype == none)
            found_.doctype = at_;
        int depth = 0;
        while (at_ < text_.size()) {
            if (begins("<!--")) {
                take_enclosed("<!--", "-->");
            } else if (begins("<?")) {
                take_enclosed("<?", "?>");
            } else if (begins("\"") || begins("'")) {
                const std::string_view quote = text_.substr(at_, 1);
                take_enclosed(quote, quote);
            } else {
                found_.has_entities = found_.has_entities || begins("<!ENTITY");
                const char c = text_[at_++];
                depth += (c == '<') - (c == '>');
                if (depth == 0)
                    return;
            }
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
    outline found_;
    std::size_t open_ = none; // the innermost element that is open
    bool has_child_ = false;  // a child of it has ended
};

} // namespace

outline outline_of(std::string_view text, std::size_t length) {
    return outline_scanner(text.substr(0, length)).run();
}
