#include <charconv>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "files/failure.h"
#include "files/output.h"
#include "subcommands.h"
#include "values/record.h"
#include "values/text_table.h"
#include "values/type_names.h"
#include "words/words.h"

namespace {

/// A kind of mask.
struct mask_kind {
    const char *name;
    int (*type_of)(const std::string &text);
    std::string (*fault_of)(const std::string &text);
    std::uint32_t (*bit_of)(int type); // the mask of this type alone
    texts (*names)(std::uint32_t mask);
    int last; // type
};
const mask_kind kinds[] = {
    {"event", event_type_of, event_type_fault, [](int type) { return std::uint32_t{1} << type; }, event_names,
     last_event_type},
    {"dtype", block_type_of, block_type_fault, word_of_block, block_names, last_block_type},
};

const mask_kind &kind_named(const std::string &name) {
    const mask_kind *kind = kinds;
    while (name != kind->name)
        ++kind;
    return *kind;
}

std::string hexadecimal(std::uint32_t mask) {
    char text[16];
    snprintf(text, sizeof text, "0x%x", mask);
    return text;
}

texts row_of(const mask_kind &kind, std::uint32_t mask) {
    return {hexadecimal(mask), std::to_string(mask), std::to_string(static_cast<std::int32_t>(mask)),
            joined(kind.names(mask), ",")};
}

/// Returns the number that a text is as a whole.
template <class Number> std::optional<Number> whole_number(std::string_view text, int base) {
    Number number = 0;
    const char *const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, base);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

/// Reads a mask: 32 bits, hexadecimal with 0x and without sign, or decimal with or without sign.
std::optional<std::uint32_t> mask_from(const std::string &text) {
    const std::string_view prefix = std::string_view(text).substr(0, 2);
    if (prefix == "0x" || prefix == "0X")
        return whole_number<std::uint32_t>(std::string_view(text).substr(2), 16);
    const auto number = whole_number<std::int64_t>(text, 10);
    if (!number || *number < INT32_MIN || *number > UINT32_MAX)
        return std::nullopt;
    return static_cast<std::uint32_t>(*number);
}

bool looks_like_number(const std::string &text) {
    const size_t begin = text.find_first_not_of("+-");
    return begin != text.npos && text[begin] >= '0' && text[begin] <= '9' &&
           text.find_first_of(",:") == text.npos;
}

/// Reads names, separated by commas or colons.
std::uint32_t mask_from_names(const mask_kind &kind, const std::string &text) {
    std::optional<std::uint32_t> all;
    for (size_t at = 0; at <= text.size();) {
        const size_t end = std::min(text.find_first_of(",:", at), text.size());
        const std::string name = text.substr(at, end - at);
        if (const std::string fault = kind.fault_of(name); !fault.empty())
            throw failure(STATUS_USAGE, fault + (fault.back() == '?' ? " " : "; ") + "`zeb5xml mask " +
                                            kind.name + "` lists all");
        const std::uint32_t bit = kind.bit_of(kind.type_of(name));
        if (kind.names == block_names && all && (*all & blocks_2010) != (bit & blocks_2010))
            throw failure(STATUS_USAGE,
                          "one data-type word holds block types below 32, or those above: " + text);
        all = all.value_or(0) | bit;
        at = end + 1;
    }
    return *all;
}

std::string list_of_all(const mask_kind &kind) {
    text_table table = {{"TYPE", "MASK", "NAME"}};
    for (int type = 0; type <= kind.last; ++type)
        if (const texts names = kind.names(kind.bit_of(type)); !names.empty())
            table.push_back({std::to_string(type), hexadecimal(kind.bit_of(type)), names.front()});
    return aligned(table);
}

int tell_mask(const std::string &kind_name, const std::vector<std::string> &masks) {
    const mask_kind &kind = kind_named(kind_name);
    if (masks.empty()) {
        write_standard_output(list_of_all(kind));
        return STATUS_DONE;
    }
    text_table table = {{"MASK", "UNSIGNED", "SIGNED", "NAMES"}};
    for (const std::string &text : masks) {
        const std::optional<std::uint32_t> mask = mask_from(text);
        if (!mask && looks_like_number(text))
            throw failure(
                STATUS_USAGE,
                "no mask: " + text +
                    "; a mask is a whole number from -2147483648 to 4294967295, or 0x and up to 8 digits");
        table.push_back(row_of(kind, mask ? *mask : mask_from_names(kind, text)));
    }
    write_standard_output(aligned(table));
    return STATUS_DONE;
}

} // namespace

subcommand mask_subcommand() {
    auto kind = std::make_shared<std::string>();
    auto masks = std::make_shared<std::vector<std::string>>();
    return {"mask",
            "Turn masks of event types and data types into names, and names into masks",
            R"(A number is a mask as it stands in EVTYPE or DTYPE, decimal or hexadecimal; after --, it may be
negative, as documents write DTYPE. Names are separated by commas. Without MASK, all types are
listed.
)",
            {{"KIND", kind.get(), "event (EVTYPE) or dtype (DTYPE)", argument::REQUIRED, {"event", "dtype"}},
             {"MASK", masks.get(), "Masks, or names of types", argument::OPTIONAL, {}, {}, "TEXT"}},
            [kind, masks] { return tell_mask(*kind, *masks); },
            {{"Names of the block types in a DTYPE", "zeb5xml mask dtype 0x80000200"},
             {"The number for EVTYPE", "zeb5xml mask event BOR,EOR"}},
            status_texts{}};
}
