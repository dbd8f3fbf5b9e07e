#include "steps/element_names.h"

#include "text/name_hash.h"

namespace zeb5 {

void element_names::set_rows(row_finder find_row) {
    find_row_ = find_row;
    for (std::size_t i = 0; i < count_; ++i)
        names_[i].row = find_row(names_[i].text());
}

element_name *element_names::find(std::string_view name) {
    if (name.size() > element_name::most_bytes)
        return nullptr;
    std::size_t place = name_hash(name, 0) % places;
    for (; numbers_[place] != 0; place = (place + 1) % places)
        if (element_name &known = names_[numbers_[place] - 1u]; known.text() == name)
            return &known;
    if (count_ == most_names)
        return nullptr;
    element_name *const added = add(name);
    numbers_[place] = static_cast<std::uint8_t>(count_);
    return added;
}

element_name *element_names::add(std::string_view name) {
    element_name &added = names_[count_++];
    std::memset(added.bytes, 0, sizeof added.bytes);
    std::memcpy(added.bytes, name.data(), name.size());
    added.length = static_cast<std::uint32_t>(name.size());
    added.first_bytes = load_block(added.bytes);
    added.quick_bits = (1U << name.size()) - 1;
    added.row = find_row_ ? find_row_(name)
                          : reader_row{.acts_alone = true}; // the root's step goes to walk_document()
    added.next = added.next_before = &names_[0];            // a guess like any other
    return &added;
}

} // namespace zeb5
