#include "records/json_objects.h"

#include <fstream>

#include <nlohmann/json.hpp> // in as few files as possible, as it takes long to compile

#include "files/failure.h"
#include "values/value_text.h"
#include "words/counted_lines.h"

namespace {

using nlohmann::json;

/// Puts an object together from what the parser finds, and hands it over at its end. Its functions have the
/// names that the parser calls.
class object_builder {
public:
    using take_object = std::function<void(const json &object, const std::string &where)>;

    object_builder(const document &source, counted_lines &lines, const take_object &take)
        : source_(source), lines_(lines), take_(take) {}

    bool null() { return put(nullptr); }
    bool boolean(bool content) { return put(content); }
    bool number_integer(json::number_integer_t content) { return put(content); }
    bool number_unsigned(json::number_unsigned_t content) { return put(content); }
    bool number_float(json::number_float_t content, const std::string &) { return put(content); }
    bool string(std::string &content) { return put(std::move(content)); }
    bool binary(json::binary_t &content) { return put(std::move(content)); }

    bool start_object(std::size_t) {
        if (open_.empty())
            begin_ = lines_.line();
        return open(json::object());
    }
    bool key(std::string &name) {
        const auto [place, is_new] = open_.back().content->emplace(name, nullptr);
        if (!is_new)
            refuse(lines_.line(), "the key " + quoted_text(name) + " stands twice in one object");
        open_.back().next = &*place;
        return true;
    }
    bool end_object() { return close(); }
    bool start_array(std::size_t) {
        if (!open_.empty())
            return open(json::array());
        if (in_array_)
            refuse_other_content();
        return in_array_ = true;
    }
    bool end_array() {
        if (!open_.empty())
            return close();
        in_array_ = false;
        return true;
    }

    /// A text that is no JSON may be long, and the reason comes first.
    static constexpr std::size_t most_bytes = 300;

    bool parse_error(std::size_t, const std::string &, const json::exception &problem) {
        if (lines_.last() == '\0')
            refuse(lines_.line(), "there is a NUL byte");
        std::string what = problem.what(); // "[its name] parse error at line 1, column 2: the reason"
        what.erase(0, what.find("] ") + 2);
        if (what.starts_with("parse error at line ")) // which it counts from the beginning of the object
            what.erase(0, what.find(": ") + 2);
        if (what.size() > most_bytes)
            what = what.substr(0, most_bytes) + "...";
        refuse(lines_.line(), plain_text(what));
    }

private:
    /// An object or array that has not ended.
    struct container {
        json *content;
        json *next = nullptr; // value of the key that came last
    };

    bool put(json content) {
        if (open_.empty())
            refuse_other_content();
        add(std::move(content));
        return true;
    }

    json &add(json content) {
        container &around = open_.back();
        if (around.content->is_array())
            return around.content->emplace_back(std::move(content));
        return *around.next = std::move(content);
    }

    bool open(json content) {
        if (open_.empty())
            open_.push_back({&(object_ = std::move(content))});
        else
            open_.push_back({&add(std::move(content))});
        return true;
    }

    bool close() {
        open_.pop_back();
        if (open_.empty()) {
            take_(object_, where(begin_));
            ++taken_;
        }
        return true;
    }

    std::string where(std::size_t line) const {
        return source_.name + ":" + std::to_string(line) + ": record " + std::to_string(taken_ + 1);
    }

    [[noreturn]] void refuse(std::size_t line, const std::string &what) const {
        throw failure(STATUS_DOCUMENT, where(line) + ": " + what);
    }
    [[noreturn]] void refuse_other_content() const { refuse(lines_.line(), "only objects may stand here"); }

    const document &source_;
    counted_lines &lines_;
    const take_object &take_;
    json object_; // that has not ended
    std::vector<container> open_;
    bool in_array_ = false;
    std::size_t begin_ = 0; // line in which the object begins
    std::size_t taken_ = 0;
};

} // namespace

void each_json_object(const document &source,
                      const std::function<void(const json &object, const std::string &where)> &take) {
    if (source.is_blank())
        throw failure(STATUS_DOCUMENT, source.name + ": the document is empty; no records at all are []");
    std::ifstream file(source.path, std::ios::binary);
    counted_lines lines(*file.rdbuf());
    std::istream stream(&lines);
    object_builder builder(source, lines, take);
    stream >> std::ws;
    while (!stream.eof()) {
        json::sax_parse(stream, &builder, json::input_format_t::json, false);
        stream >> std::ws;
    }
}
