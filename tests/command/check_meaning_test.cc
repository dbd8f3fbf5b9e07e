/// What a document without findings promises: readers get what its author means.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h> // needs the one above

#include "command/meant_documents.h"
#include "support/told_findings.h"
#include "xml_platform.h"

namespace {

std::string channels_of(temporary_file &file) {
    channel_list list;
    const int problems = parse_descr_list_readf(file.c_path(), list, false, false);
    return problems == 0 ? describe(list.records) : "problems";
}

std::string events_of(temporary_file &file) {
    event_list list;
    const int problems = zeb5_parse_ev_list_readf(file.c_path(), &list.entries);
    return problems == 0 ? describe(list.entries) : "problems";
}

template <class Layout> std::string dictionary_of(temporary_file &file) {
    dictionary<Layout> list;
    const int problems = Layout::read_file(file.c_path(), &list.entries);
    return problems == 0 ? describe(list.entries) : "problems";
}

std::string camera_of(temporary_file &file) {
    feature_list list;
    return zeb5_fill_gige_descr(file.c_path(), &list) ? "problems" : all_features(list);
}

struct kind_of_document {
    const char *name;
    meant_document (meant_documents::*make)();
    std::string (*read)(temporary_file &file);
};
const kind_of_document kinds[] = {
    {"channels", &meant_documents::channels, channels_of},
    {"variables", &meant_documents::variables, channels_of},
    {"events", &meant_documents::events, events_of},
    {"classic_dictionary", &meant_documents::dictionary<classic_layout>, dictionary_of<classic_layout>},
    {"dictionary_2010", &meant_documents::dictionary<layout_2010>, dictionary_of<layout_2010>},
    {"camera", &meant_documents::camera, camera_of},
};

class CheckMeaning : public testing::TestWithParam<kind_of_document> {
protected:
    xml_platform platform; // saves the start for each document
};

TEST_P(CheckMeaning, IsReadFromDocumentsWithoutFindings) {
    int clean = 0, all = 0;
    EXPECT_TRUE(rc::check([&](unsigned seed) {
        for (unsigned part = 0; part < 10; ++part) {
            const meant_document one = (meant_documents(seed + part, 25).*GetParam().make)();
            ++all;
            if (!told(one.text).empty())
                continue;
            ++clean;
            RC_LOG() << one.text;
            RC_ASSERT(!one.is_doubtful);
            temporary_file file(one.text);
            RC_ASSERT(GetParam().read(file) == one.records);
        }
    }));
    EXPECT_GT(clean, all / 5);
    EXPECT_LT(clean, all);
}

// But what stands twice, by chance
TEST_P(CheckMeaning, OfDocumentsInUsualFormIsReadWithoutFindings) {
    EXPECT_TRUE(rc::check([&](unsigned seed) {
        const meant_document one = (meant_documents(seed, 0).*GetParam().make)();
        for (const placed_finding &found : check_document(one.text))
            if (found.id != rule::DUPLICATE_IDENTITY && found.id != rule::UNNAMED_TYPE)
                RC_FAIL(found.message + " in " + one.text);
    }));
}

INSTANTIATE_TEST_SUITE_P(EveryKind, CheckMeaning, testing::ValuesIn(kinds),
                         [](const auto &kind) { return std::string(kind.param.name); });

} // namespace
