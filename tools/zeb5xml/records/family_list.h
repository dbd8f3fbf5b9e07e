#ifndef ZEB5XML_FAMILY_LIST_H
#define ZEB5XML_FAMILY_LIST_H

#include <vector>

#include "records/record_list.h"

/// The records of one document, as a vector of the structs of a family. A family has
///  - record, type: the struct and its description
///  - read(path, list, how), print(list), clean(list)
/// and, when its records can be converted,
///  - read_to_convert(source, list, how), read_back(text, list), write(list, form, text)
template <class Family> class family_list final : public record_list {
public:
    using list = std::vector<typename Family::record *>;

    explicit family_list(const conversion &how) : how_(how) {}
    ~family_list() override { Family::clean(&records_); }

    int read(const document &source) override {
        std::string path = source.path;
        return kept(Family::read(path.data(), &records_));
    }
    void print() const override { Family::print(&kept_); }
    size_t size() const override { return kept_.size(); }

    const record_type &type() const override { return Family::type; }
    record at(size_t place) const override { return record_from(kept_[place], Family::type); }
    value identity_at(size_t place) const override { return Family::type.identity().get(kept_[place]); }
    void append(const record &fields) override {
        records_.push_back(static_cast<typename Family::record *>(struct_from(fields, Family::type)));
        kept_.push_back(records_.back());
    }
    void keep(const std::function<bool(const record &)> &wanted) override {
        std::erase_if(kept_, [&](const void *one) { return !wanted(record_from(one, Family::type)); });
    }

    int read_to_convert(const document &source) override {
        if constexpr (requires { &Family::read_to_convert; })
            return kept(Family::read_to_convert(source, &records_, how_));
        else
            return read(source);
    }
    int read_back([[maybe_unused]] std::string text) override {
        if constexpr (requires { &Family::read_back; })
            return kept(Family::read_back(text.data(), &records_));
        else
            return 1;
    }
    int write([[maybe_unused]] const form &to, [[maybe_unused]] std::string &text) const override {
        if constexpr (requires { &Family::write; }) {
            list records = kept_; // the writer's parameter is not const
            return Family::write(&records, to, text);
        } else {
            return 1;
        }
    }

private:
    int kept(int problems) {
        kept_ = records_;
        return problems;
    }

    const conversion how_;
    list records_; // owned
    list kept_;    // those that were not left out
};

template <class Family> std::unique_ptr<record_list> make_list(const conversion &how) {
    return std::make_unique<family_list<Family>>(how);
}

#endif
