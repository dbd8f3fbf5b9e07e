#include "check/number_faults.h"

#include <cctype>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "check/element_text.h"

namespace {

using zeb5::value_kind;

constexpr std::string_view digits = "0123456789";

bool is_digit(std::string_view text, std::size_t at) {
    return at < text.size() && digits.find(text[at]) != digits.npos;
}

std::size_t behind_digits(std::string_view text, std::size_t at) {
    while (is_digit(text, at))
        ++at;
    return at;
}

std::size_t behind_sign(std::string_view text) { return text.find_first_of("+-") == 0 ? 1 : 0; }

/// Returns the end of the number that a text begins with; 0 for none.
std::size_t end_of_integer(std::string_view text) {
    const std::size_t from = behind_sign(text), end = behind_digits(text, from);
    return end > from ? end : 0;
}

std::size_t end_of_real(std::string_view text) {
    const std::string copy(text);
    char *end = nullptr;
    (void)std::strtof(copy.c_str(), &end);
    return static_cast<std::size_t>(end - copy.c_str());
}

/// Whether the text has a comma where a decimal point could stand.
bool has_decimal_comma(std::string_view text, std::size_t end) {
    return text.substr(end, 1) == "," && is_digit(text, end + 1) &&
           behind_digits(text, end + 1) == text.size();
}

bool is_hexadecimal(std::string_view text) {
    const std::size_t from = behind_sign(text);
    return (text.substr(from, 2) == "0x" || text.substr(from, 2) == "0X") && text.size() > from + 2 &&
           text.find_first_not_of("0123456789abcdefABCDEF", from + 2) == text.npos;
}

std::string in_words(std::int64_t least, std::int64_t most) {
    const bool has_end = most < std::numeric_limits<std::int32_t>::max() - 1;
    return has_end ? "it should be from " + std::to_string(least) + " to " + std::to_string(most)
                   : "it should be at least " + std::to_string(least);
}

std::optional<number_fault> outside(const zeb5::element_row &row, double number, std::string_view text) {
    const bool is_unsigned = row.value == value_kind::MASK || row.value == value_kind::UNSIGNED;
    const double most = is_unsigned ? std::numeric_limits<std::uint32_t>::max()
                                    : std::numeric_limits<std::int32_t>::max() - row.added;
    const double least = row.value == value_kind::UNSIGNED ? -most : std::numeric_limits<std::int32_t>::min();
    if (row.value != value_kind::REAL && (number < least || number > most))
        return number_fault{rule::NUMBER_RANGE, in_quotes(text) + " does not fit into 32 bits"};
    if (number < static_cast<double>(row.least) ||
        (row.value != value_kind::REAL && number > static_cast<double>(row.most)))
        return number_fault{rule::VALUE_RANGE,
                            in_quotes(text) + " makes no sense: " + in_words(row.least, row.most)};
    return std::nullopt;
}

std::optional<number_fault> fault_of_real(const zeb5::element_row &row, std::string_view text,
                                          std::size_t end) {
    const double number = std::strtod(std::string(text).c_str(), nullptr);
    const bool is_word = std::isalpha(static_cast<unsigned char>(text[behind_sign(text)])) != 0;
    if (is_word) // begins with nan or inf
        return number_fault{rule::NOT_A_NUMBER, in_quotes(text) + " is no number"};
    if (end == text.size() && !std::isfinite(number_read(row, text)))
        return number_fault{rule::NUMBER_RANGE, in_quotes(text) + " does not fit into a float"};
    if (end == text.size())
        return outside(row, number, text);
    return number_fault{rule::NUMBER_TAIL, in_quotes(text.substr(end)) + " after the number is ignored"};
}

} // namespace

std::optional<number_fault> fault_of_number(const zeb5::element_row &row, std::string_view written) {
    const std::string_view text = trimmed(written);
    const bool takes_hex = row.value == value_kind::UNSIGNED;
    const bool is_real = row.value == value_kind::REAL;
    if (text.empty())
        return number_fault{rule::NOT_A_NUMBER, "there is no number"};
    if (!is_real && is_hexadecimal(text)) {
        if (!takes_hex || text.substr(0, 2) != "0x")
            return number_fault{rule::HEX_NUMBER,
                                in_quotes(text) + (takes_hex ? " is no number: base 16 needs a small x"
                                                             : " is in base 16, but base 10 is read")};
        return outside(row, std::strtod(std::string(text).c_str(), nullptr), text);
    }
    const std::size_t end = is_real ? end_of_real(text) : end_of_integer(text);
    if (end == 0 || (takes_hex && text.find('x') != text.npos))
        return number_fault{rule::NOT_A_NUMBER, in_quotes(text) + " is no number"};
    if (has_decimal_comma(text, end))
        return number_fault{rule::DECIMAL_COMMA,
                            in_quotes(text) + " has a decimal comma, at which reading ends"};
    if (is_real)
        return fault_of_real(row, text, end);
    if (end != text.size())
        return number_fault{rule::NUMBER_TAIL, in_quotes(text.substr(end)) + " after the number is ignored"};
    return outside(row, std::strtod(std::string(text).c_str(), nullptr), text);
}

double number_read(const zeb5::element_row &row, std::string_view written) {
    const std::string text(written);
    std::uint32_t field = 0;
    switch (row.value) {
    case value_kind::REAL: {
        float real = 0;
        std::sscanf(text.c_str(), "%f", &real);
        return static_cast<double>(real);
    }
    case value_kind::UNSIGNED:
        std::sscanf(text.c_str(), text.find('x') != text.npos ? " 0x%X " : "%u", &field);
        return field;
    case value_kind::MASK:
        return static_cast<std::uint32_t>(std::strtol(text.c_str(), nullptr, 10));
    default:
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(std::strtol(text.c_str(), nullptr, 10)) +
                                         static_cast<std::uint32_t>(row.added));
    }
}
