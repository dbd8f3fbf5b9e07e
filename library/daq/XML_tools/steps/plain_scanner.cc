#include "steps/plain_scanner.h"

#include <bit>

#include "steps/plain_declaration.h"

namespace zeb5 {

namespace {

const char *skip_space(const char *at, const char *limit) {
    while (at < limit && is_space(*at))
        ++at;
    return at;
}

/// Returns the place after a line end and up to 16 blanks; most texts are no more than these.
const char *skip_indentation(const char *at) {
    return *at == '\n' ? at + 1 + std::countr_one(top_bits(load_block(at + 1) == ' ')) : at;
}

/// Returns the end of the printable ASCII that an attribute's value begins with: its quote, a character that
/// means something, or a place behind the limit.
const char *skip_plain_value(const char *at, const char *limit, char quote) {
    for (; at < limit; at += block_bytes) {
        const byte_block block = load_block(at);
        const auto stops = (block == static_cast<unsigned char>(quote)) | (block == '<') | (block == '&');
        if (const unsigned bits = top_bits(stops | is_control_or_wide(block)))
            return at + std::countr_zero(bits);
    }
    return at;
}

/// Returns the end of a name in ASCII; `at` when there is none.
const char *skip_name(const char *at, const char *limit) {
    if (!is_name_start(*at))
        return at;
    while (at < limit && is_name_character(*at))
        ++at;
    return at;
}

/// Returns the end of an element name; for one that is too long, a place beyond the longest allowed.
const char *end_of_element_name(const char *at) { return skip_name(at, at + element_name::most_bytes + 1); }

bool begins(const char *at, std::string_view text) { return std::string_view(at, text.size()) == text; }

/// Looks for `end` from `at` on. Returns its place, null when a forbidden character comes first, and `limit`
/// when neither comes. Notes in `text` what stands in between.
const char *find_end(const char *at, const char *limit, std::string_view end, raw_text &text) {
    for (; at < limit && !begins(at, end); ++at) {
        if (is_forbidden(*at))
            return nullptr;
        text.has_line_ends |= *at == '\r';
        text.has_wide |= is_wide(*at);
    }
    return at;
}

} // namespace

bool plain_scanner::start() {
    if (!window_.load())
        return false;
    const plain_prologue prologue = read_declaration(window_.begin(), window_.loaded());
    if (!prologue.end)
        return false;
    encoding_ = prologue.encoding;
    window_.set_encoding(encoding_);
    at_ = limit_ = prologue.end;
    return true;
}

plain_token plain_scanner::next() {
    for (;;) {
        const plain_token token = scan();
        if (token != plain_token::MORE) {
            quick_limit_ = is_outside() || limit_ - at_ < most_quick_tag ? at_ : limit_ - most_quick_tag;
            return token;
        }
        if (!window_.extend(at_))
            return plain_token::NOT_PLAIN;
        limit_ = window_.limit();
    }
}

/// Moves on only when the token is complete. An incomplete one is scanned again when more is loaded, so the
/// scanner's results must not change before.
plain_token plain_scanner::take(plain_token token, const char *end) {
    if (end > limit_)
        return plain_token::MORE;
    at_ = end;
    return token;
}

plain_token plain_scanner::scan() {
    if (is_outside())
        return scan_outside();
    if (at_ >= limit_)
        return plain_token::MORE;
    if (*at_ != '<')
        return scan_text();
    switch (at_[1]) {
    case '/':
        return scan_end_tag();
    case '!':
        return at_[2] == '[' ? scan_cdata() : scan_comment();
    case '?':
        return scan_instruction();
    default:
        return scan_start_tag();
    }
}

plain_token plain_scanner::scan_outside() {
    at_ = skip_space(at_, limit_);
    if (at_ >= limit_)
        return last_ && window_.is_at_end() ? plain_token::FINISHED : plain_token::MORE;
    if (*at_ != '<')
        return plain_token::NOT_PLAIN;
    if (at_[1] == '!')
        return scan_comment();
    if (at_[1] == '?')
        return scan_instruction();
    return last_ ? plain_token::NOT_PLAIN : scan_start_tag(); // there is only one root
}

/// Returns the entry of the name at `at`; null when it is not plain.
element_name *plain_scanner::name_at(const char *at) {
    element_name *const guess = last_ ? last_->next_at(at) : nullptr;
    if (guess && !is_name_character(at[guess->length]))
        return guess;
    const char *const end = end_of_element_name(at);
    return end == at ? nullptr : names_.find({at, end});
}

plain_token plain_scanner::scan_start_tag() {
    element_name *const name = name_at(at_ + 1);
    if (!name || open_ == &stack_.back())
        return plain_token::NOT_PLAIN;
    const char *const end = scan_attributes(at_ + 1 + name->length);
    if (!end)
        return plain_token::NOT_PLAIN;
    const bool is_empty = *end == '/';
    if (end < limit_ && is_empty && end[1] != '>')
        return plain_token::NOT_PLAIN;
    const plain_token token = take(plain_token::START, end + 1 + is_empty);
    if (token == plain_token::START)
        begin_element(name, is_empty);
    return token;
}

void plain_scanner::begin_element(element_name *name, bool is_empty) {
    if (last_)
        last_->set_next(name);
    else
        name->make_slow(); // so that the root's end tag is not taken quickly: what follows it must be checked
    last_ = element_ = name;
    is_empty_ = is_empty;
    if (!is_empty)
        *++open_ = name;
}

/// Notes all attributes. Returns the tag's end, which is its '>' or '/', null when an attribute is not plain,
/// and the limit when the tag reaches it.
const char *plain_scanner::scan_attributes(const char *at) {
    attribute_count_ = 0;
    for (;;) {
        const char *const next = skip_space(at, limit_);
        if (next >= limit_)
            return limit_;
        if (*next == '>' || *next == '/')
            return next;
        if (next == at || attribute_count_ == most_attributes)
            return nullptr;
        at = scan_attribute(next);
        if (!at)
            return nullptr;
    }
}

/// Notes an attribute. Returns its end, null when it is not plain, and the limit or a place behind it when
/// the attribute reaches that.
const char *plain_scanner::scan_attribute(const char *at) {
    const char *const name_end = skip_name(at, limit_);
    if (name_end == at)
        return nullptr;
    const char *equals = skip_space(name_end, limit_);
    if (equals >= limit_)
        return limit_;
    if (*equals != '=')
        return nullptr;
    const char *const opening = skip_space(equals + 1, limit_);
    if (opening >= limit_)
        return limit_;
    const char quote = *opening;
    if (quote != '"' && quote != '\'')
        return nullptr;
    const std::string_view name(at, name_end);
    for (const raw_attribute &other : attributes())
        if (other.name == name)
            return nullptr;

    raw_text value{opening + 1, opening + 1, false, false, false};
    const char *&end = value.end;
    while ((end = skip_plain_value(end, limit_, quote)) < limit_ && *end != quote) {
        if (*end == '<' || is_forbidden(*end))
            return nullptr;
        if (*end == '&') {
            char32_t character;
            value.has_references = true;
            end = read_reference(end, character);
            if (!end)
                return nullptr;
        } else {
            value.has_line_ends |= is_space(*end);
            value.has_wide |= is_wide(*end);
            ++end;
        }
    }
    if (end >= limit_)
        return limit_;
    attributes_[attribute_count_++] = {name, value};
    return end + 1;
}

plain_token plain_scanner::scan_end_tag() {
    element_name *const name = *open_;
    const char *at = at_ + 2;
    if (!name->quickly_begins(at) && !name->begins(at))
        return plain_token::NOT_PLAIN;
    at += name->length;
    if (*at != '>')
        at = skip_space(at, limit_);
    if (at >= limit_)
        return plain_token::MORE;
    if (*at != '>')
        return plain_token::NOT_PLAIN;
    const plain_token token = take(plain_token::END, at + 1);
    if (token == plain_token::END) {
        element_ = name;
        --open_;
    }
    return token;
}

plain_token plain_scanner::scan_text() {
    raw_text text{at_, skip_indentation(at_), false, false, false};
    const char *&at = text.end;
    if (*at != '<')
        at = skip_plain_text(at);
    while (at < limit_ && *at != '<') {
        if (*at == '&') {
            char32_t character;
            text.has_references = true;
            at = read_reference(at, character);
            if (!at)
                return plain_token::NOT_PLAIN;
        } else {
            if (is_forbidden(*at) || (*at == ']' && begins(at, "]]>")))
                return plain_token::NOT_PLAIN;
            text.has_line_ends |= *at == '\r';
            text.has_wide |= is_wide(*at);
            do
                ++at;
            while (at < limit_ && is_wide(*at) && text.has_wide);
        }
        at = skip_plain_text(at);
    }
    if (at >= limit_)
        return plain_token::MORE;
    text_ = text;
    return take(plain_token::TEXT, at);
}

plain_token plain_scanner::scan_cdata() {
    static constexpr std::string_view opening = "<![CDATA[";
    if (!begins(at_, opening))
        return plain_token::NOT_PLAIN;
    raw_text text{at_ + opening.size(), nullptr, false, false, false};
    text.end = find_end(text.begin, limit_, "]]>", text);
    if (!text.end)
        return plain_token::NOT_PLAIN;
    text_ = text;
    return take(plain_token::CDATA, text.end + 3);
}

plain_token plain_scanner::scan_comment() {
    static constexpr std::string_view opening = "<!--";
    if (!begins(at_, opening))
        return plain_token::NOT_PLAIN;
    raw_text text{};
    const char *const end = find_end(at_ + opening.size(), limit_, "--", text);
    if (!end)
        return plain_token::NOT_PLAIN;
    if (end + 2 >= limit_)
        return plain_token::MORE;
    return end[2] == '>' ? take(plain_token::ASIDE, end + 3) : plain_token::NOT_PLAIN;
}

plain_token plain_scanner::scan_instruction() {
    const char *const target = at_ + 2;
    const char *const target_end = skip_name(target, limit_);
    const std::string_view name(target, target_end);
    if (target_end >= limit_)
        return plain_token::MORE;
    // A target that begins with "xml" may be an XML declaration, which must not stand here
    if (name.empty() || name.find(':') != name.npos || (name[0] | 0x20) == 'x')
        return plain_token::NOT_PLAIN;
    if (!is_space(*target_end) && !begins(target_end, "?>"))
        return plain_token::NOT_PLAIN;
    raw_text text{};
    const char *const end = find_end(target_end, limit_, "?>", text);
    return end ? take(plain_token::ASIDE, end + 2) : plain_token::NOT_PLAIN;
}

} // namespace zeb5
