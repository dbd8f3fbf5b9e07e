/// What a document without findings promises: readers get what its author means, and nothing of it is lost
/// when it is written and read again.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h> // needs the one above

#include "command/meant_documents.h"
#include "support/capture.h"
#include "support/random_documents.h"
#include "support/test_files.h"
#include "support/told_findings.h"
#include "xml_platform.h"

namespace {

// Each returns the records of the document: read, and where the library has a writer, read from what it
// writes

std::string channels_of(std::string document) {
    temporary_file file(document);
    channel_list first, second;
    if (parse_descr_list_readf(file.c_path(), first, false, false) != 0)
        return "not read";
    std::string written;
    if (dump_chan_desr(first, nullptr, 2, 0, -1, &written, nullptr) != 0 ||
        parse_descr_list_read(written.data(), second, false, false) != 0)
        return "not read again: " + written;
    const std::string records = describe(first.records), again = describe(second.records);
    return records == again ? records : "read again: " + again;
}

template <class Layout> std::string dictionary_of(std::string document) {
    temporary_file file(document);
    dictionary<Layout> first, second;
    if (Layout::read_file(file.c_path(), &first.entries) != 0)
        return "not read";
    std::string written;
    if (Layout::dump(&first.entries, nullptr, 3, -1, &written) != 0 ||
        Layout::read_memory(written.data(), &second.entries) != 0)
        return "not read again: " + written;
    const std::string records = describe(first.entries), again = describe(second.entries);
    return records == again ? records : "read again: " + again;
}

std::string events_of(std::string document) {
    temporary_file file(document);
    event_list list;
    return zeb5_parse_ev_list_readf(file.c_path(), &list.entries) == 0 ? describe(list.entries) : "not read";
}

std::string camera_of(std::string document) {
    temporary_file file(document);
    feature_list list;
    return zeb5_fill_gige_descr(file.c_path(), &list) ? "not read" : all_features(list);
}

struct kind_of_document {
    const char *name;
    meant_document (meant_documents::*make)();
    std::string (*read)(std::string document);
};
void PrintTo(const kind_of_document &kind, std::ostream *out) { *out << kind.name; }

const kind_of_document kinds[] = {
    {"channels", &meant_documents::channels, channels_of},
    {"variables", &meant_documents::variables, channels_of},
    {"events", &meant_documents::events, events_of},
    {"classic_dictionary", &meant_documents::dictionary<classic_layout>, dictionary_of<classic_layout>},
    {"dictionary_2010", &meant_documents::dictionary<layout_2010>, dictionary_of<layout_2010>},
    {"camera", &meant_documents::camera, camera_of},
};

class CheckDocumentPromise : public testing::TestWithParam<kind_of_document> {
protected:
    xml_platform platform; // saves the start for each document
};

TEST_P(CheckDocumentPromise, DocumentsWithoutFindingsAreReadAsMeantAndSurviveWriting) {
    constexpr unsigned oddness = 25, documents = 10;
    int clean = 0, all = 0;
    EXPECT_TRUE(rc::check([&](unsigned seed) {
        for (unsigned i = 0; i < documents; ++i) {
            const meant_document one = (meant_documents(seed + i, oddness).*GetParam().make)();
            ++all;
            if (!told(one.text).empty())
                continue;
            ++clean;
            if (one.is_doubtful)
                RC_FAIL("nothing is told of " + one.text);
            RC_LOG() << one.text;
            RC_ASSERT(GetParam().read(one.text) == one.records);
        }
    }));
    EXPECT_GT(clean, all / 5);
    EXPECT_LT(clean, all);
}

// Numbers may stand for types that have no name, and records may by chance have one identity
TEST_P(CheckDocumentPromise, NothingIsFoundInPlainDocumentsButWhatStandsTwice) {
    EXPECT_TRUE(rc::check([&](unsigned seed) {
        const meant_document one = (meant_documents(seed, 0).*GetParam().make)();
        for (const placed_finding &found : check_document(one.text))
            if (found.id != rule::DUPLICATE_IDENTITY && found.id != rule::UNNAMED_TYPE)
                RC_FAIL(found.message + " in " + one.text);
    }));
}

INSTANTIATE_TEST_SUITE_P(EveryKind, CheckDocumentPromise, testing::ValuesIn(kinds),
                         [](const auto &kind) { return std::string(kind.param.name); });

TEST(CheckDamagedDocument, HasFindingsWhereReadersReport) {
    constexpr int documents = 1500;
    xml_platform platform;
    random_documents source(1);
    for (int i = 0; i < documents; ++i) {
        const std::string document = source.next();
        temporary_file file(document);
        channel_list list;
        int problems = 0;
        (void)capture([&] { problems = parse_descr_list_readf(file.c_path(), list, false, false); });
        const std::string findings = told(document);
        EXPECT_FALSE(problems != 0 && findings.empty()) << document;
        if (findings.empty()) {
            EXPECT_EQ(channels_of(document), describe(list.records)) << document;
        }
        if (HasFailure())
            return;
    }
}

} // namespace
