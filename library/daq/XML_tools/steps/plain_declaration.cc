#include "steps/plain_declaration.h"

#include <algorithm>
#include <optional>
#include <string_view>

#include "steps/plain_characters.h"

namespace zeb5 {

namespace {

struct label {
    std::string_view name; // in lower case
    plain_encoding encoding;
};

/// Encodings whose first 128 characters are those of ASCII, under names that the XML library accepts without
/// a report. In those marked ASCII, only these characters are plain.
constexpr label labels[] = {
    {"utf-8", plain_encoding::UTF_8},           {"utf8", plain_encoding::UTF_8},
    {"iso-8859-1", plain_encoding::ISO_8859_1}, {"iso8859-1", plain_encoding::ISO_8859_1},
    {"latin1", plain_encoding::ISO_8859_1},     {"us-ascii", plain_encoding::ASCII},
    {"ascii", plain_encoding::ASCII},           {"iso-8859-2", plain_encoding::ASCII},
    {"iso-8859-15", plain_encoding::ASCII},     {"windows-1252", plain_encoding::ASCII},
};

std::optional<plain_encoding> encoding_named(std::string_view name) {
    const auto is_same = [](char given, char known) {
        return (given >= 'A' && given <= 'Z' ? given + ('a' - 'A') : given) == known;
    };
    for (const label &known : labels)
        if (std::equal(name.begin(), name.end(), known.name.begin(), known.name.end(), is_same))
            return known.encoding;
    return std::nullopt;
}

/// Takes the declaration apart, from left to right.
class declaration_text {
public:
    explicit declaration_text(std::string_view rest) : rest_(rest) {}

    std::string_view rest() const { return rest_; }

    bool take(std::string_view text) {
        if (!rest_.starts_with(text))
            return false;
        rest_.remove_prefix(text.size());
        return true;
    }

    bool take_space() {
        const std::size_t before = rest_.size();
        while (!rest_.empty() && is_space(rest_.front()))
            rest_.remove_prefix(1);
        return rest_.size() != before;
    }

    /// Takes an equals sign and a value in quotes; returns nullopt when they are missing.
    std::optional<std::string_view> take_value() {
        take_space();
        if (!take("="))
            return std::nullopt;
        take_space();
        if (rest_.empty() || (rest_.front() != '"' && rest_.front() != '\''))
            return std::nullopt;
        const std::size_t end = rest_.find(rest_.front(), 1);
        if (end == rest_.npos)
            return std::nullopt;
        const std::string_view value = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        return value;
    }

private:
    std::string_view rest_;
};

} // namespace

plain_prologue read_declaration(const char *begin, const char *end) {
    constexpr std::size_t most_bytes = 1024; // the XML library has a limit, too
    declaration_text text(std::string_view(begin, end).substr(0, most_bytes));
    const bool has_mark = text.take("\xEF\xBB\xBF");
    plain_prologue found{text.rest().data(), plain_encoding::UTF_8};
    if (!text.take("<?xml") || !text.take_space())
        return found; // "<?xml" without a space after it begins a processing instruction

    static constexpr plain_prologue not_plain;
    if (!text.take("version") || text.take_value() != "1.0")
        return not_plain;
    bool has_space = text.take_space();
    if (has_space && text.take("encoding")) {
        const auto name = text.take_value();
        const auto encoding = name ? encoding_named(*name) : std::nullopt;
        if (!encoding || (has_mark && *encoding != plain_encoding::UTF_8))
            return not_plain;
        found.encoding = *encoding;
        has_space = text.take_space();
    }
    if (has_space && text.take("standalone")) {
        const auto value = text.take_value();
        if (value != "yes" && value != "no")
            return not_plain;
        text.take_space();
    }
    if (!text.take("?>"))
        return not_plain;
    found.end = text.rest().data();
    return found;
}

} // namespace zeb5
