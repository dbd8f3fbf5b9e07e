#ifndef ZEB5_OWNED_LIST_H
#define ZEB5_OWNED_LIST_H

/// A list of records that nobody else gets.

#include <vector>

namespace zeb5 {

/// Releases its records by `clean` at its end.
template <class Record, void (*clean)(std::vector<Record *> *)> struct owned_list {
    std::vector<Record *> records;

    owned_list() = default;
    ~owned_list() { clean(&records); }
    owned_list(const owned_list &) = delete;
    owned_list &operator=(const owned_list &) = delete;
};

} // namespace zeb5

#endif
