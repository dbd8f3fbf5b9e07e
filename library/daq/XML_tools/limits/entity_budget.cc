#include "limits/entity_budget.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace zeb5 {

namespace {

/// Whether a reference, from its mark up to the semicolon, stands for one character: whatever a document
/// declares, these do.
bool is_character(std::u16string_view reference) {
    static constexpr std::u16string_view names[] = {u"&lt", u"&gt", u"&amp", u"&apos", u"&quot"};
    return reference.starts_with(u"&#") ||
           std::find(std::begin(names), std::end(names), reference) != std::end(names);
}

} // namespace

bool entity_budget::declare(std::u16string_view name, bool is_parameter, std::u16string_view text) {
    const std::size_t number = number_of((is_parameter ? u'%' : u'&') + std::u16string(name));
    if (entities_[number].declared)
        return true; // the first declaration of a name counts
    const auto marks = static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char16_t c) { return c == u'<' || c == u'='; }));
    entities_[number].length = text.size() + marks * characters_of_markup;
    if (entities_[number].length > most_characters)
        return false;
    for (std::size_t begin = 0; (begin = text.find_first_of(u"&%", begin)) != text.npos; ++begin) {
        const std::size_t end = text.find_first_of(u"&%;", begin + 1);
        if (end == text.npos)
            break;
        const std::u16string_view reference = text.substr(begin, end - begin);
        if (text[end] != u';' || is_character(reference))
            continue; // no reference to an entity of the document
        const std::size_t used = number_of(std::u16string(reference));
        entities_[used].users.push_back(number);
        const entity &known = entities_[used]; // of nothing yet, if it is not declared
        if (!add(number, {known.nested.expansions + 1, known.nested.characters + known.length}))
            return false;
    }
    // Only now, as its users take it whole, but for the references counted already: those declared before,
    // and itself if it is one of them
    entities_[number].declared = true;
    const weight whole{entities_[number].nested.expansions,
                       entities_[number].nested.characters + entities_[number].length};
    const std::vector<std::size_t> users = entities_[number].users;
    for (const std::size_t user : users)
        if (!add(user, whole))
            return false;
    return true;
}

/// An entity's number; a name not seen before gets the next one.
std::size_t entity_budget::number_of(std::u16string name) {
    const auto [place, is_new] = numbers_.try_emplace(std::move(name), entities_.size());
    if (is_new)
        entities_.emplace_back();
    return place->second;
}

/// Adds to an entity and to all that reach it. Ends on circular references too, as their sums pass the limit.
bool entity_budget::add(std::size_t user, weight more) {
    std::vector<std::size_t> pending{user};
    while (!pending.empty()) {
        entity &grown = entities_[pending.back()];
        pending.pop_back();
        grown.nested.expansions += more.expansions;
        grown.nested.characters += more.characters;
        if (grown.nested.expansions > most_nested || grown.nested.characters > most_characters)
            return false;
        if (grown.declared)
            pending.insert(pending.end(), grown.users.begin(), grown.users.end());
    }
    return true;
}

} // namespace zeb5
