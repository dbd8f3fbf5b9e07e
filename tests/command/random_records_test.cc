/// Random records of every kind, as plain values, as structs, as JSON, and in both dialects.

#include <fstream>
#include <set>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "files/failure.h"
#include "records/differences.h"
#include "records/form_losses.h"
#include "records/json_records.h"
#include "records/record_list.h"
#include "records/record_order.h"
#include "records/record_types.h"
#include "support/test_files.h"
#include "values/json_text.h"

namespace {

/// Any bytes but NUL, as a field of this capacity holds them.
std::string any_text(size_t capacity) {
    std::string text = *rc::gen::container<std::string>(rc::gen::nonZero<char>());
    if (capacity != 0 && text.size() > capacity)
        text.resize(capacity);
    return text;
}

record any_record(const record_type &type);

value any_value(const field_row &row) {
    switch (row.kind) {
    case REAL:
        return {real{*rc::gen::arbitrary<float>()}};
    case TEXT:
        return {any_text(row.capacity)};
    case TEXTS: {
        texts all(*rc::gen::inRange<size_t>(0, 3));
        for (std::string &one : all)
            one = any_text(0);
        return {all};
    }
    case PARTS: {
        std::vector<record> parts(*rc::gen::inRange<size_t>(0, 3));
        for (record &one : parts)
            one = any_record(*row.part);
        return {parts};
    }
    default:
        return {*rc::gen::oneOf(rc::gen::inRange<std::int64_t>(row.lowest, row.highest + 1),
                                rc::gen::element(row.lowest, row.highest))};
    }
}

record any_record(const record_type &type) {
    record fields;
    for (const field_row &row : type.rows)
        fields.fields.push_back(any_value(row));
    return fields;
}

std::vector<record> any_records(const record_type &type) {
    std::vector<record> all(*rc::gen::inRange<size_t>(1, 4));
    for (record &one : all)
        one = any_record(type);
    return all;
}

std::unique_ptr<record_list> list_of(const record_kind &kind, const conversion &how,
                                     const std::vector<record> &all) {
    std::unique_ptr<record_list> list = kind.make(how);
    for (const record &one : all)
        list->append(one);
    return list;
}

std::vector<record> records_of(const record_list &list) {
    std::vector<record> all;
    for (size_t i = 0; i < list.size(); ++i)
        all.push_back(list.at(i));
    return all;
}

/// Each kind of record, in each layout.
struct layout {
    const record_kind &kind;
    conversion how;
};
const layout layouts[] = {{channel_records, {}},
                          {event_records, {}},
                          {dictionary_records, {}},
                          {dictionary_records, {false, false, true}},
                          {camera_records, {}}};

TEST(RandomRecords, SurviveTheStructs) {
    for (const layout &one : layouts)
        EXPECT_TRUE(rc::check([&] {
            const std::vector<record> all = any_records(one.kind.make(one.how)->type());
            RC_ASSERT(records_of(*list_of(one.kind, one.how, all)) == all);
        }));
}

TEST(RandomRecords, SurviveJson) {
    for (const layout &one : layouts)
        for (const char *between : {"\n", ",\n"})
            EXPECT_TRUE(rc::check([&] {
                const record_type &type = one.kind.make(one.how)->type();
                const std::vector<record> all = any_records(type);
                std::string lines;
                for (const record &fields : all)
                    lines += (lines.empty() ? "" : between) + json_text(fields, type, "source");
                const temporary_file file(between[0] == ',' ? "[" + lines + "]\n" : lines);
                const json_records back = read_json_records({file.path(), "in"}, {&one.kind}, one.how);
                RC_ASSERT(back.kind == &one.kind);
                RC_ASSERT(records_of(*back.list) == all);
            }));
}

/// Letters alone, so that every form holds them.
std::string letters(size_t most) {
    std::string text = *rc::gen::container<std::string>(rc::gen::inRange('a', 'z'));
    if (text.size() > most)
        text.resize(most);
    return text;
}

/// A record whose values the XML of its own kind holds.
record writable_record(const record_type &type, size_t number) {
    record fields = any_record(type);
    const auto make_writable = [](record &one, const record_type &of, const auto &again) -> void {
        for (size_t i = 0; i < of.rows.size(); ++i) {
            const field_row &row = of.rows[i];
            if (row.kind == TEXT)
                one.fields[i] = {"N" + letters(14)}; // without a name, the writer makes one up
            if (row.kind == REAL)
                one.fields[i] = {real{static_cast<float>(*rc::gen::inRange(-1000, 1000)) / 8}};
            if (row.kind == PARTS)
                for (record &part : std::get<std::vector<record>>(one.fields[i].content))
                    again(part, *row.part, again);
        }
    };
    make_writable(fields, type, make_writable);
    if (type.identity().kind == TEXT)
        fields.fields[0] = {letters(200) + std::to_string(number)}; // each property once
    return fields;
}

TEST(RandomRecords, ComeBackThroughJsonAndXml) {
    const std::pair<layout, const char *> documents[] = {
        {layouts[0], "chandescriptions"}, {layouts[2], "envindexdict"}, {layouts[3], "envindexdict"}};
    for (const auto &document : documents)
        EXPECT_TRUE(rc::check([&] {
            const layout &one = document.first;
            const record_type &type = one.kind.make(one.how)->type();
            std::vector<record> all;
            std::string json;
            for (size_t number = *rc::gen::inRange<size_t>(1, 5); number > 0; --number) {
                all.push_back(writable_record(type, number));
                json += json_text(all.back(), type);
            }
            const temporary_file file(json);
            const json_records read = read_json_records({file.path(), "in"}, {&one.kind}, one.how);
            std::string xml;
            RC_ASSERT(read.list->write(*form_named(one.kind, document.second), xml) == 0);
            const std::unique_ptr<record_list> back = one.kind.make(one.how);
            RC_ASSERT(back->read_back(xml) == 0);
            RC_ASSERT(records_of(*back) == all);
        }));
}

/// A channel that both dialects hold whole.
record shared_channel() {
    record fields = channel_type.fresh(channel_type);
    const auto field = [&](const char *name) -> value & {
        return fields.fields[channel_type.place_of(name)];
    };
    for (const char *name : {"prop_name", "daq_name", "prop_desc", "units", "subsystem"})
        field(name) = {letters(15)};
    field("daq_name") = {"N" + letters(15)};
    field("ev_type") = any_value(channel_type.rows[channel_type.place_of("ev_type")]);
    field("set_point") = any_value(channel_type.rows[channel_type.place_of("set_point")]);
    if (*rc::gen::arbitrary<bool>()) { // only a matrix has dimensions
        const record_type &dim = *channel_type.rows[channel_type.place_of("dims")].part;
        std::vector<record> dims(*rc::gen::inRange<size_t>(0, 4), dim.fresh(dim));
        for (record &one : dims) {
            one.fields[0] = {std::int64_t{*rc::gen::arbitrary<std::int32_t>()}};
            for (size_t text = 1; text <= 3; ++text)
                one.fields[text] = {letters(15)};
        }
        field("dims") = {dims};
        field("max_size") = {std::int64_t{*rc::gen::inRange(2, 1'000'000)}};
    }
    return fields;
}

/// The lines of `canonical`.
std::string canonical_lines(const record_list &list) {
    std::string lines;
    for (const keyed_place &one : sorted_places(list))
        lines += content_of(list.at(one.place), list.type()) + "\n";
    return lines;
}

TEST(RandomRecords, HaveOneCanonicalFormInBothDialects) {
    EXPECT_TRUE(rc::check([] {
        std::vector<record> all;
        for (size_t number = *rc::gen::inRange<size_t>(1, 5); number > 0; --number) {
            all.push_back(shared_channel());
            all.back().fields[0] = {letters(200) + std::to_string(number)}; // each property once
        }
        const std::unique_ptr<record_list> list = list_of(channel_records, {}, all);
        for (const char *name : {"chandescriptions", "daqvariables"}) {
            std::string text;
            RC_ASSERT(list->write(*form_named(channel_records, name), text) == 0);
            const std::unique_ptr<record_list> back = channel_records.make({});
            RC_ASSERT(back->read_back(text) == 0);
            RC_ASSERT(canonical_lines(*back) == canonical_lines(*list));
        }
    }));
}

/// Gives all parts and the record itself one of two identities, so that many have the same.
void confuse(record &fields, const record_type &type) {
    const bool which = *rc::gen::arbitrary<bool>();
    fields.fields[0] = type.identity().kind == TEXT ? value{which ? "A" : "B"} : value{std::int64_t{which}};
    for (size_t i = 0; i < type.rows.size(); ++i)
        if (type.rows[i].kind == PARTS)
            for (record &part : std::get<std::vector<record>>(fields.fields[i].content))
                confuse(part, *type.rows[i].part);
}

void shuffle(std::vector<record> &all, const record_type &type) {
    for (size_t i = all.size(); i > 1; --i)
        std::swap(all[i - 1], all[*rc::gen::inRange<size_t>(0, i)]);
    for (record &one : all)
        for (size_t i = 0; i < type.rows.size(); ++i)
            if (type.rows[i].kind == PARTS)
                shuffle(std::get<std::vector<record>>(one.fields[i].content), *type.rows[i].part);
}

TEST(RandomRecords, HaveOneCanonicalFormAndNoDifferencesInAnyOrder) {
    for (const layout &one : layouts)
        EXPECT_TRUE(rc::check([&] {
            const record_type &type = one.kind.make(one.how)->type();
            std::vector<record> all = any_records(type);
            for (record &fields : all)
                confuse(fields, type);
            const std::unique_ptr<record_list> before = list_of(one.kind, one.how, all);
            shuffle(all, type);
            const std::unique_ptr<record_list> after = list_of(one.kind, one.how, all);
            RC_ASSERT(canonical_lines(*before) == canonical_lines(*after));
            for_each_pair(*before, *after, [&](const record_pair &pair) {
                RC_ASSERT(pair.before && pair.after);
                RC_ASSERT(differences(*pair.before, *pair.after, type).empty());
            });
        }));
}

} // namespace
