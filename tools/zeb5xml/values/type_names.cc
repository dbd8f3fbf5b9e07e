#include "values/type_names.h"

#include <charconv>
#include <strings.h>

#include "event_util.h"
#include "words/nearest.h"

namespace {

struct type_family {
    const char *noun;
    const char *prefix;
    int last;
    bool (*has)(std::int64_t number);
    const char *numbers;
    const char *(*name)(int);
};
const type_family events = {"event type",  "ZEB5_EV_",         last_event_type,
                            is_event_type, event_type_numbers, event_name_itoa};
const type_family blocks = {"block type",       "ZEB5_",        last_block_type, is_block_type,
                            block_type_numbers, block_name_itoa};

std::string name_of(int type, const type_family &family) {
    const char *const name = family.name(type);
    return name ? name : "(null)";
}

bool has_name(int type, const type_family &family) {
    const char *const name = family.name(type);
    return name && name != std::to_string(type);
}

int type_of(const std::string &text, const type_family &family) {
    int number = -1;
    const char *end = text.data() + text.size();
    if (auto [rest, error] = std::from_chars(text.data(), end, number); error == std::errc() && rest == end)
        return family.has(number) ? number : -1;
    for (int type = 0; type <= family.last; ++type) {
        const char *const name = family.name(type);
        if (name && (strcasecmp(text.c_str(), name) == 0 ||
                     strcasecmp(text.c_str(), (std::string(family.prefix) + name).c_str()) == 0))
            return type;
    }
    return -1;
}

std::string fault_of(const std::string &text, const type_family &family) {
    if (type_of(text, family) >= 0)
        return "";
    const std::string fault = std::string("no ") + family.noun + ": " + (text.empty() ? "''" : text);
    if (!text.empty() && text.find_first_not_of("+-0123456789") == text.npos)
        return fault + "; types go " + family.numbers;
    std::vector<std::string> names;
    for (int type = 0; type <= family.last; ++type)
        if (has_name(type, family))
            names.push_back(name_of(type, family));
    return fault + did_you_mean(text, names);
}

std::vector<int> types_in(std::uint32_t mask, int first) {
    std::vector<int> types;
    for (int bit = 0; bit < 32; ++bit)
        if (mask >> bit & 1)
            types.push_back(first + bit);
    return types;
}

std::vector<int> events_in(std::uint32_t mask) { return types_in(mask, 0); }

std::vector<int> blocks_in(std::uint32_t dtype) {
    return types_in(dtype & ~blocks_2010, dtype & blocks_2010 ? 32 : 0);
}

std::vector<std::string> names_of(const std::vector<int> &types, const type_family &family) {
    std::vector<std::string> names;
    names.reserve(types.size());
    for (const int type : types)
        names.push_back(name_of(type, family));
    return names;
}

std::vector<std::string> unnamed_of(const std::vector<int> &types, const type_family &family) {
    std::vector<std::string> numbers;
    for (const int type : types)
        if (!has_name(type, family))
            numbers.push_back(std::to_string(type));
    return numbers;
}

} // namespace

bool is_event_type(std::int64_t number) { return number >= 0 && number <= last_event_type; }

bool is_block_type(std::int64_t number) { return number >= 0 && number <= last_block_type && number != 31; }

int event_type_of(const std::string &text) { return type_of(text, events); }

int block_type_of(const std::string &text) { return type_of(text, blocks); }

std::string event_type_fault(const std::string &text) { return fault_of(text, events); }

std::string block_type_fault(const std::string &text) { return fault_of(text, blocks); }

std::string event_name(int event_type) { return name_of(event_type, events); }

std::vector<std::string> event_names(std::uint32_t mask) { return names_of(events_in(mask), events); }

std::vector<std::string> block_names(std::uint32_t dtype) { return names_of(blocks_in(dtype), blocks); }

std::vector<std::string> unnamed_events(std::uint32_t mask) { return unnamed_of(events_in(mask), events); }

std::vector<std::string> unnamed_blocks(std::uint32_t dtype) { return unnamed_of(blocks_in(dtype), blocks); }

std::uint32_t word_of_block(int block_type) {
    return std::uint32_t{1} << block_type % 32 | (block_type < 32 ? 0 : blocks_2010);
}

bool has_block(std::uint32_t dtype, int block_type) {
    bool range_2010 = dtype & blocks_2010;
    return range_2010 == (block_type >= 32) && (dtype & ~blocks_2010) >> (block_type % 32) & 1;
}
