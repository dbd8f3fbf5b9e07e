#ifndef ZEB5_ZEB5XML_HPP
#define ZEB5_ZEB5XML_HPP

/// The library for new programs (C++17): lists that own their records, are ranges of them, and read them from
/// a path or a text. The functions of the other headers, which all of this calls, say more about documents.
///
/// A list is read in one of two ways. `read` and `parse` throw zeb5xml::error when the reader reports a
/// problem; the reports are on standard error, those of the camera reader on standard output. `try_read` and
/// `try_parse` return an outcome with the records that were read, the reader's result and what it printed.
/// They turn standard output and standard error of the whole process elsewhere while they read, one call
/// after the other; what other threads print meanwhile is in the outcome, too.
///
/// A text ends at its first NUL. A std::string and a C string are read where they are; a std::string_view is
/// copied first, as readers need the NUL at the end.
///
/// XML is labelled ISO-8859-1. Texts are written into it as they are: neither `&` nor `<` is escaped, and
/// bytes are not converted, so a record whose texts have these may not be read back as it was.
///
/// Lists can be moved, not copied. One list belongs to one thread at a time. When memory or descriptors run
/// out, std::bad_alloc, std::system_error or an exception of the XML library passes through.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

#include "chan_selector.h"
#include "parse_chan_descr.h"
#include "parse_env_index_dictionary.h"
#include "parse_ev_list.h"
#include "zeb5_gige_descr.h"
#include "zeb5xml_files.hpp"

namespace zeb5xml {

/// What went wrong: a document that was not read without problems, or an output that was not written.
class error : public std::runtime_error {
public:
    error(const std::string &what, int code) : std::runtime_error(what), code_(code) {}

    /// The result of the function that reported the problem, whose header says what it means; 1 where that
    /// has none.
    int code() const noexcept { return code_; }

private:
    int code_;
};

/// What a reader made of a document, problems or not.
template <class List> struct outcome {
    List list;           // what was read before a problem
    int code = 0;        // the reader's result, 0 when all was read
    std::string printed; // what it wrote to standard output and standard error

    /// Whether all was read without a problem.
    explicit operator bool() const noexcept { return code == 0; }
};

namespace detail {

/// Returns what `read` made of a document; `read` takes the list and returns the reader's result.
template <class List, class Read> outcome<List> outcome_of(Read &&read) {
    outcome<List> result;
    held_output output;
    result.code = read(result.list);
    result.printed = output.take();
    return result;
}

template <class List, class Read> List list_of(const std::string &name, Read &&read) {
    List list;
    if (const int code = read(list); code != 0)
        throw error(name + ": not read without problems, result " + std::to_string(code), code);
    return list;
}

inline void write_file(const std::filesystem::path &path, const std::string &text) {
    if (const std::error_code problem = replace_file(path.string(), text))
        throw error(path.string() + ": could not be written: " + problem.message(), 1);
}

} // namespace detail

/// A vector of records of the plain functions, as a range of the records themselves, which it owns. `List` is
/// the class that derives from this and has `release_records(std::vector<Record *> &)`.
template <class List, class Record> class owning_list {
public:
    using value_type = Record;
    using plain_list = std::vector<Record *>;

    /// Goes through the records; they stay where they are as long as the list owns them.
    template <class Value> class basic_iterator {
    public:
        using iterator_category = std::random_access_iterator_tag;
        using value_type = Record;
        using difference_type = std::ptrdiff_t;
        using pointer = Value *;
        using reference = Value &;

        basic_iterator() = default;
        explicit basic_iterator(Record *const *at) : at_(at) {}
        operator basic_iterator<const Value>() const { return basic_iterator<const Value>(at_); }

        reference operator*() const { return **at_; }
        pointer operator->() const { return *at_; }
        reference operator[](difference_type n) const { return *at_[n]; }
        basic_iterator &operator++() { return ++at_, *this; }
        basic_iterator &operator--() { return --at_, *this; }
        basic_iterator operator++(int) { return basic_iterator(at_++); }
        basic_iterator operator--(int) { return basic_iterator(at_--); }
        basic_iterator &operator+=(difference_type n) { return at_ += n, *this; }
        basic_iterator &operator-=(difference_type n) { return at_ -= n, *this; }
        friend basic_iterator operator+(basic_iterator i, difference_type n) { return i += n; }
        friend basic_iterator operator+(difference_type n, basic_iterator i) { return i += n; }
        friend basic_iterator operator-(basic_iterator i, difference_type n) { return i -= n; }
        friend difference_type operator-(basic_iterator a, basic_iterator b) { return a.at_ - b.at_; }
        friend bool operator==(basic_iterator a, basic_iterator b) { return a.at_ == b.at_; }
        friend bool operator!=(basic_iterator a, basic_iterator b) { return a.at_ != b.at_; }
        friend bool operator<(basic_iterator a, basic_iterator b) { return a.at_ < b.at_; }
        friend bool operator>(basic_iterator a, basic_iterator b) { return a.at_ > b.at_; }
        friend bool operator<=(basic_iterator a, basic_iterator b) { return a.at_ <= b.at_; }
        friend bool operator>=(basic_iterator a, basic_iterator b) { return a.at_ >= b.at_; }

    private:
        Record *const *at_ = nullptr;
    };
    using iterator = basic_iterator<Record>;
    using const_iterator = basic_iterator<const Record>;

    owning_list() = default;
    /// Takes over records that a plain function made.
    explicit owning_list(plain_list &&records) : records_(std::move(records)) {}
    owning_list(owning_list &&other) noexcept = default;
    owning_list &operator=(owning_list &&other) noexcept {
        if (this != &other) {
            clear();
            records_.swap(other.records_);
        }
        return *this;
    }
    ~owning_list() { clear(); }

    iterator begin() { return iterator(records_.data()); }
    iterator end() { return iterator(records_.data() + records_.size()); }
    const_iterator begin() const { return const_iterator(records_.data()); }
    const_iterator end() const { return const_iterator(records_.data() + records_.size()); }
    std::size_t size() const noexcept { return records_.size(); }
    bool empty() const noexcept { return records_.empty(); }
    Record &operator[](std::size_t place) { return *records_[place]; }
    const Record &operator[](std::size_t place) const { return *records_[place]; }

    /// Releases all records.
    void clear() noexcept { List::release_records(records_); }

    /// Gives the records to the caller, who releases them as the plain functions' header says.
    plain_list release() noexcept { return std::exchange(records_, plain_list()); }

    /// The list as the plain functions take it. Records that these add are this list's.
    plain_list &plain() noexcept { return records_; }
    const plain_list &plain() const noexcept { return records_; }

    // The four ways to read. `More` is what the reader takes besides: see each list.

    template <class... More> static List read(const std::filesystem::path &path, More... more) {
        return detail::list_of<List>(path.string(), [&](List &list) { return list.add(path, more...); });
    }
    template <class Text, class... More> static List parse(const Text &text, More... more) {
        return detail::list_of<List>("document in memory",
                                     [&](List &list) { return list.add_text(text, more...); });
    }
    template <class... More> static outcome<List> try_read(const std::filesystem::path &path, More... more) {
        return detail::outcome_of<List>([&](List &list) { return list.add(path, more...); });
    }
    template <class Text, class... More> static outcome<List> try_parse(const Text &text, More... more) {
        return detail::outcome_of<List>([&](List &list) { return list.add_text(text, more...); });
    }

protected:
    /// Calls `read` with the text, which ends with a NUL.
    template <class Read> static int with_text(const char *text, Read &&read) {
        return read(const_cast<char *>(text)); // readers change nothing
    }
    template <class Read> static int with_text(const std::string &text, Read &&read) {
        return with_text(text.c_str(), read);
    }
    template <class Read> static int with_text(std::string_view text, Read &&read) {
        return with_text(std::string(text), read);
    }

    /// Returns the first record that passes a test; null when there is none.
    template <class Test> const Record *first_of(Test &&passes) const {
        const auto found = std::find_if(begin(), end(), passes);
        return found == end() ? nullptr : &*found;
    }

    plain_list records_;
};

/// How channel descriptions are read.
struct channel_reading {
    bool shift = false;           // event and data types are numbers, to be turned into masks
    bool merge_duplicates = true; // a property that is in the list already completes that record
};

/// How channel descriptions are written.
enum class channel_format { chandescriptions, daqvariables, table, summary };

/// Channel descriptions; see parse_chan_descr.h.
class channel_list : public owning_list<channel_list, chan_descr_2010> {
public:
    using owning_list::owning_list;

    /// Append the channels of a document; return the reader's result, 0 when all was read. The reader of
    /// files merges duplicates of DAQvariables only.
    int add(const std::filesystem::path &path, channel_reading how = {}) {
        std::string name = path.string();
        return parse_descr_list_readf(name.data(), &records_, how.shift, how.merge_duplicates);
    }
    template <class Text> int add_text(const Text &text, channel_reading how = {}) {
        return with_text(text, [&](char *xml) {
            return parse_descr_list_read(xml, &records_, how.shift, how.merge_duplicates);
        });
    }

    /// Return the first channel of this property; null when there is none.
    const chan_descr_2010 *find(const char *property) const { return find_chan_entry(&records_, property); }
    const chan_descr_2010 *find(const std::string &property) const { return find(property.c_str()); }
    chan_descr_2010 *find(const char *property) { return find_chan_entry(&records_, property); }
    chan_descr_2010 *find(const std::string &property) { return find(property.c_str()); }

    /// Returns the list in a form; XML is without a date then. Of several channels of one property only the
    /// first is written. For a summary, standard output and standard error go elsewhere meanwhile.
    std::string text(channel_format format = channel_format::chandescriptions) const {
        if (format == channel_format::table || format == channel_format::summary)
            return file_text(format);
        std::string document;
        dump(format, nullptr, &document);
        return document;
    }

    /// Writes the list to a file, CHANDESCRIPTIONS with the date. The file is replaced in one move when all
    /// is written. Throws error.
    void write(const std::filesystem::path &path,
               channel_format format = channel_format::chandescriptions) const {
        detail::write_file(path, file_text(format));
    }

    /// Lists the channels on standard output.
    void print() const { print_zeb5_chan_descr(&records_); }

    static void release_records(plain_list &records) noexcept { clean_chan_desr_list(&records); }

private:
    std::string file_text(channel_format format) const {
        detail::memory_file file;
        std::optional<detail::held_output> output;
        if (format == channel_format::summary)
            output.emplace(); // the writer prints an empty line for each channel with a block type
        dump(format, file.path(), nullptr);
        return file.text();
    }
    void dump(channel_format format, char *path, std::string *document) const {
        const int mode = format == channel_format::table ? 1 : format == channel_format::summary ? 3 : 2;
        const int dialect = format == channel_format::daqvariables ? 1 : 0;
        auto *const records = const_cast<plain_list *>(&records_); // the writer changes nothing
        if (const int code = dump_chan_desr(records, path, mode, dialect, -1, document, nullptr); code != 0)
            throw error("channel descriptions: not written", code);
    }
};

/// Lists one channel on standard output.
inline void print(const chan_descr_2010 &channel) {
    const std::vector<chan_descr_2010 *> one{const_cast<chan_descr_2010 *>(&channel)}; // is not changed
    print_zeb5_chan_descr(&one);
}

/// Completes `record` from another one of the same property, see extend_channel_description(). Returns
/// whether that was done; records of different properties are left as they are.
inline bool complete(chan_descr_2010 &record, const chan_descr_2010 &from, bool force = false) {
    return !extend_channel_description(&record, const_cast<chan_descr_2010 *>(&from), force);
}

/// An event list; see parse_ev_list.h.
class event_list : public owning_list<event_list, zeb5_ev_entry> {
public:
    using owning_list::owning_list;

    /// Append the entries of a document; return the reader's result, 0 when all was read.
    int add(const std::filesystem::path &path) {
        std::string name = path.string();
        return zeb5_parse_ev_list_readf(name.data(), &records_);
    }
    template <class Text> int add_text(const Text &text) {
        return with_text(text, [&](char *xml) { return zeb5_parse_ev_list_read(xml, &records_); });
    }

    /// Returns the first entry of this event type; null when there is none.
    const zeb5_ev_entry *find(ZEB5_EVTYPE type) const {
        return first_of([&](const zeb5_ev_entry &entry) { return entry.evtype == type; });
    }

    /// Lists the entries on standard output.
    void print() const { zeb5_print_ev_list(&records_); }

    static void release_records(plain_list &records) noexcept {
        for (zeb5_ev_entry *entry : records)
            if (entry && entry->sb_list)
                for (zeb5_ev_sb_list *block : *entry->sb_list)
                    if (block && block->ch_list &&
                        block->ch_list->empty()) // zeb5_clean_ev_list() leaves these
                        delete std::exchange(block->ch_list, nullptr);
        zeb5_clean_ev_list(&records);
    }
};

/// How an env index dictionary is written.
enum class dictionary_format { xml, table };

/// An env index dictionary; see parse_env_index_dictionary.h. `Entry` is one of its two record layouts.
template <class Entry> class basic_env_dictionary : public owning_list<basic_env_dictionary<Entry>, Entry> {
    using base = owning_list<basic_env_dictionary<Entry>, Entry>;
    static constexpr bool is_2010 = std::is_same_v<Entry, zeb5_env_index_dictionary_entry_2010>;

public:
    using base::base;
    using typename base::plain_list;

    /// Append the entries of a document; return the reader's result, 0 when all was read.
    int add(const std::filesystem::path &path) {
        std::string name = path.string();
        if constexpr (is_2010)
            return parse_env_index_dict_readf_2010(name.data(), &this->records_);
        else
            return parse_env_index_dict_readf(name.data(), &this->records_);
    }
    template <class Text> int add_text(const Text &text) {
        return this->with_text(text, [&](char *xml) {
            if constexpr (is_2010)
                return parse_env_index_dict_list_read_2010(xml, &this->records_);
            else
                return parse_env_index_dict_list_read(xml, &this->records_);
        });
    }

    /// Returns the first entry of this index; null when there is none.
    const Entry *find(std::int32_t index) const {
        return this->first_of([&](const Entry &entry) { return entry.index == index; });
    }

    /// Returns the dictionary in a form, XML with the date. For a table, standard output and standard
    /// error go elsewhere meanwhile, as for try_read().
    std::string text(dictionary_format format = dictionary_format::xml) const {
        if (format == dictionary_format::xml) {
            std::string document;
            dump(nullptr, 3, &document);
            return document;
        }
        detail::memory_file file;
        const detail::held_output output; // the writer tells of each file that it creates
        dump(file.path(), 1, nullptr);
        return file.text();
    }

    /// Writes the dictionary to a file, which is replaced in one move when all is written. Throws error.
    void write(const std::filesystem::path &path, dictionary_format format = dictionary_format::xml) const {
        detail::write_file(path, text(format));
    }

    /// Lists the entries on standard output.
    void print() const { dump(nullptr, 0, nullptr); }

    /// A dictionary may hold an entry twice.
    static void release_records(plain_list &records) noexcept {
        std::sort(records.begin(), records.end());
        const auto end = std::unique(records.begin(), records.end());
        std::for_each(records.begin(), end, [](Entry *entry) { std::free(entry); });
        records.clear();
    }

private:
    void dump(char *path, int mode, std::string *document) const {
        auto *const entries = const_cast<plain_list *>(&this->records_); // the writer changes nothing
        int code;
        if constexpr (is_2010)
            code = dump_env_index_dict_2010(entries, path, mode, -1, document);
        else
            code = dump_env_index_dict(entries, path, mode, -1, document);
        if (code != 0)
            throw error("env index dictionary: not written", code);
    }
};

using env_dictionary = basic_env_dictionary<zeb5_env_index_dictionary_entry_2010>;
using env_dictionary_classic = basic_env_dictionary<zeb5_env_index_dictionary_entry>;

/// The features of a camera; see zeb5_gige_descr.h.
class camera_features : public owning_list<camera_features, ZEB5GigEFeature> {
public:
    using owning_list::owning_list;

    /// Append the features of a document; return 0 when all was read, else 1.
    int add(const std::filesystem::path &path) {
        std::string name = path.string();
        camera_features read; // the reader empties its list first
        if (zeb5_fill_gige_descr(name.data(), &read.records_))
            return 1;
        records_.insert(records_.end(), read.records_.begin(), read.records_.end());
        read.records_.clear();
        return 0;
    }
    template <class Text> int add_text(const Text &text) {
        return with_text(text, [&](char *xml) { return xml ? add(detail::memory_file(xml).path()) : 1; });
    }

    /// Returns the first feature of this name; null when there is none.
    const ZEB5GigEFeature *find(std::string_view name) const {
        return first_of([&](const ZEB5GigEFeature &feature) { return feature.name == name; });
    }

    /// Lists the features on standard output.
    void print() const { zeb5_dump_gige_descr(&records_); }

    static void release_records(plain_list &records) noexcept { zeb5_clean_gige_descr(&records); }
};

/// Answers questions about channels of several documents; see chan_selector.h. Only one thread may use an
/// object at a time. Channels are numbered in the order read; a number without a channel gets empty answers.
class selector {
public:
    /// `shift`: event and data types in the documents are numbers, to be turned into masks.
    explicit selector(bool shift = false) : selector_(std::make_unique<chan_selector>()) {
        selector_->set_shift(shift);
    }

    /// Add the channels of a document. Throw error when it was not read without problems; what was read
    /// stays.
    void add(const std::filesystem::path &path) { add_source(path.string(), EXTR_FROM_FILE, path.string()); }
    void add_text(std::string_view text) {
        add_source(std::string(text), EXTR_FROM_XML, "document in memory");
    }

    /// Number of channels.
    int size() { return selector_->size(); }

    /// The names of a channel, which may be changed through the result: see get_channel().
    char *name(int number) { return selector_->get_channel(number); }
    char *property(int number) { return selector_->get_prop(number); }

    /// Masks of event and block types, 0 for none.
    std::uint32_t event_types(const std::string &name) {
        return static_cast<std::uint32_t>(selector_->get_event_type(text(name)));
    }
    std::uint32_t data_type(const std::string &name) {
        return static_cast<std::uint32_t>(selector_->get_data_type(text(name)));
    }

    /// Whether some channel has the event type and some channel, maybe another one, the name; true when there
    /// are no channels.
    bool has_channel(ZEB5_EVTYPE type, const std::string &name) {
        return selector_->find_channel(type, text(name));
    }

    /// Empty for a channel without event types.
    std::optional<bool> is_slow(int number) { return answer(selector_->is_channel_slow(number)); }
    std::optional<bool> is_ml(int number) { return answer(selector_->is_channel_ml(number)); }

    int subchannels(int number) { return selector_->get_subchannels(number); }

    /// The selector of the plain interface.
    chan_selector &plain() { return *selector_; }

private:
    static char *text(const std::string &name) { return const_cast<char *>(name.c_str()); } // is not changed
    static std::optional<bool> answer(int number) {
        return number < 0 ? std::nullopt : std::optional<bool>(number != 0);
    }
    void add_source(std::string source, int mode, const std::string &name) {
        std::vector<char *> sources{source.data()};
        selector_->change_mode(mode);
        if (selector_->set_descriptions(&sources, nullptr))
            throw error(name + ": not read without problems", 1);
    }

    std::unique_ptr<chan_selector> selector_;
};

} // namespace zeb5xml

#endif
