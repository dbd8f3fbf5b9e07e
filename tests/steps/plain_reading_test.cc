/// The library's readers compared with readers that are written plainly. Both read random documents, some of
/// them with every kind of text, some damaged. Both must deliver the same records and messages.

#include <string>

#include <gtest/gtest.h>

#include "support/descr_readers.h"
#include "support/locales.h"
#include "support/plain_channels.h"
#include "support/plain_steps.h"
#include "support/random_documents.h"
#include "support/sax_sources.h"

namespace {

/// Everything a reader of steps sees, as text.
struct sight {
    std::string delivered;
    captured streams;
};

void add_step(std::string &seen, int result, const char *tag, const char *value) {
    seen += std::to_string(result) + ' ' + (tag ? tag : "~") + " [" + (value ? value : "~") + ']';
}

constexpr const char *asked_attributes[] = {"bit", "id", "unit", "none"};
constexpr int most_steps = 4; // after the end or a report

template <class Source> sight library_steps(const std::string &document) {
    sight seen;
    Source source(document);
    seen.streams = capture([&] {
        if (source.start() != 0) {
            seen.delivered = "not started";
            return;
        }
        for (int result = 0, after = 0; after < most_steps; after += result != 0) {
            char *tag, *value;
            result = source.parser().parse(&tag, &value);
            add_step(seen.delivered, result, tag, value);
            for (const char *name : asked_attributes) {
                std::string asked = name;
                if (source.parser().get_attr(asked.data(), &value) == 0)
                    seen.delivered += ' ' + asked + '=' + value;
            }
            seen.delivered += '\n';
        }
    });
    seen.delivered += std::to_string(source.parser().get_error_counter());
    seen.streams.err = replace_all(seen.streams.err, source.system_id(), "DOCUMENT");
    return seen;
}

sight plain_way_of_steps(reader_form form, std::string document) {
    sight seen;
    temporary_file file(document);
    plain_steps source(form, form == READ_FILE ? file.c_path() : document.data());
    seen.streams = capture([&] {
        if (source.start() != 0) {
            seen.delivered = "not started";
            return;
        }
        for (int result = 0, after = 0; after < most_steps; after += result != 0) {
            result = source.next();
            const bool delivers = result == 0;
            add_step(seen.delivered, result, delivers && source.tag ? source.tag->c_str() : nullptr,
                     delivers && source.value ? source.value->c_str() : nullptr);
            for (const char *name : asked_attributes)
                if (const std::string *const value = source.attribute(name); value && source.errors == 0)
                    seen.delivered += std::string(" ") + name + '=' + *value;
            seen.delivered += '\n';
        }
    });
    seen.delivered += std::to_string(source.errors);
    seen.streams.err =
        replace_all(seen.streams.err, form == READ_FILE ? file.path() : "my_mem_info", "DOCUMENT");
    return seen;
}

read_outcome plain_way_of_channels(reader_form form, const std::string &document,
                                   std::vector<chan_descr_2010 *> &list, read_options options) {
    const auto read = [&](reader_form as) {
        return [&, as](char *source) {
            return plain_channels(as, source, list, options.shift, options.delete_duplicated).read();
        };
    };
    return read_either(form, document, read(READ_MEMORY), read(READ_FILE));
}

void expect_same_steps(reader_form form, const std::string &document) {
    const sight seen =
        form == READ_MEMORY ? library_steps<memory_source>(document) : library_steps<file_source>(document);
    const sight plain = plain_way_of_steps(form, document);
    ASSERT_EQ(seen.delivered, plain.delivered) << reader_name(form) << ": " << document;
    ASSERT_EQ(seen.streams.out, plain.streams.out) << reader_name(form) << ": " << document;
    ASSERT_EQ(seen.streams.err, plain.streams.err) << reader_name(form) << ": " << document;
}

void expect_same_channels(reader_form form, const std::string &document, read_options options) {
    channel_list seen, plain;
    const read_outcome outcome = read_document(form, document, seen, options);
    const read_outcome expected = plain_way_of_channels(form, document, plain.records, options);
    ASSERT_EQ(outcome.result, expected.result) << reader_name(form) << ": " << document;
    ASSERT_EQ(describe(seen.records), describe(plain.records)) << reader_name(form) << ": " << document;
    ASSERT_EQ(outcome.out, expected.out) << reader_name(form) << ": " << document;
    ASSERT_EQ(outcome.err, expected.err) << reader_name(form) << ": " << document;
}

class PlainReading : public InEachLocale {
protected:
    const xml_platform platform_; // starting it takes longer than a document
    static constexpr int documents = 500;
};
INSTANTIATE_TEST_SUITE_P(Locale, PlainReading, testing::ValuesIn(locales), locale_in_name);

TEST_P(PlainReading, DeliversTheSameSteps) {
    random_documents next(1);
    for (int i = 0; i < documents && !HasFatalFailure(); ++i) {
        const std::string document = next.next();
        for (const reader_form form : both_readers)
            ASSERT_NO_FATAL_FAILURE(expect_same_steps(form, document));
    }
}

TEST_P(PlainReading, FillsTheSameChannels) {
    random_documents next(2);
    for (int i = 0; i < documents && !HasFatalFailure(); ++i) {
        const std::string document = next.next();
        for (const reader_form form : both_readers)
            for (const bool shift : {false, true})
                for (const bool delete_duplicated : {false, true})
                    ASSERT_NO_FATAL_FAILURE(expect_same_channels(form, document, {shift, delete_duplicated}));
    }
}

/// A thread may have a locale of its own, which the transcoder may or may not look at.
TEST(PlainReadingOnAThread, FillsTheSameChannelsInALocaleOfItsOwn) {
    for (const char *const name : locales) {
        const locale_in_use process(name);
        if (!process.is_set())
            continue;
        const locale_t own = newlocale(LC_ALL_MASK, name == locales[0] ? "C.UTF-8" : "C", nullptr);
        ASSERT_TRUE(own);
        const locale_t before = uselocale(own);
        random_documents next(3);
        for (int i = 0; i < 100 && !testing::Test::HasFatalFailure(); ++i) {
            const std::string document = next.next();
            for (const reader_form form : both_readers)
                expect_same_channels(form, document, {});
        }
        uselocale(before);
        freelocale(own);
    }
}

} // namespace
