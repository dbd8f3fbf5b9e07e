/// What a document without findings promises: nothing of it is lost when it is read, written and read again.

#include <random>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h> // needs the one above

#include "standard_streams.h"
#include "support/channel_records.h"
#include "support/env_dictionary_records.h"
#include "support/random_documents.h"
#include "support/test_files.h"
#include "support/told_findings.h"
#include "xml_platform.h"

namespace {

/// Documents of which most elements are as they should be.
class fair_documents {
public:
    /// One in `oddness` things is odd; 0: none.
    explicit fair_documents(unsigned seed, unsigned oddness = 40) : random_(seed), oddness_(oddness) {}

    std::string channels() {
        std::string text = "<CHANDESCRIPTIONS>\n";
        for (std::size_t count = below(4); count-- > 0;)
            text += "<CHANNEL>" + element("PROP", "P/" + std::to_string(below(30))) + element("NAME", "N") +
                    channel_content() + "</CHANNEL>\n";
        return text + "</CHANDESCRIPTIONS>\n";
    }

    std::string variables() {
        std::string text = "<DAQvariables>\n";
        for (std::size_t count = below(4); count-- > 0;) {
            const std::string kind = one_of({"DaqFloat", "DaqBits", "DaqFloatMatrix"});
            text += "<" + kind + ">" + element("orvin", "P/" + std::to_string(below(30))) +
                    element("daqName", "N") + variable_content(kind) + "</" + kind + ">\n";
        }
        return text + "</DAQvariables>\n";
    }

    std::string dictionary() {
        std::string text = "<ENVINDEXDICT>\n";
        for (std::size_t count = below(5); count-- > 0;)
            text += "<CHANNEL>" + element("INDEX", std::to_string(below(30))) +
                    element("PROP", "P/" + std::to_string(below(30))) + element("DABS", real()) +
                    element("DREL", real()) + "</CHANNEL>\n";
        return text + "</ENVINDEXDICT>\n";
    }

private:
    std::size_t below(std::size_t limit) { return random_() % limit; }
    std::string one_of(const std::vector<std::string> &list) { return list[below(list.size())]; }
    bool is_odd() { return oddness_ != 0 && below(oddness_) == 0; }

    std::string value(const std::string &usual) {
        return is_odd() ? one_of({"", " x ", "a&amp;b", "&#65;b", "a<!-- -->b", "<!-- -->a", "<![CDATA[<]]>",
                                  "<![CDATA[c]]>d", "12x", "0x12", "-1", "99999999999", "\xC3\xA4", "&#13;",
                                  "\n", "b<X/>c", " &#66;", std::string(below(300), 'l')})
                        : usual;
    }
    std::string element(const std::string &name, const std::string &usual) {
        if (is_odd())
            return is_odd() ? "" : "<" + name + "/>";
        const std::string tag = is_odd() ? name + "X" : name;
        return "<" + tag + (is_odd() ? " a=\"b\">" : ">") + value(usual) + "</" + tag + ">" +
               (is_odd() ? "text" : "\n");
    }
    std::string number() { return one_of({"1", "7", "12", "+3", " 4 ", "01", "31"}); }
    std::string real() { return one_of({"0", "0.5", "1e-3", "12", "0.1", "3.25", ".5", "7.", "0x8"}); }
    std::string text() { return one_of({"mm", "two words", "a > b", "x", "\"quoted\"", "a\nb"}); }

    std::string channel_content() {
        std::string all;
        for (const char *name : {"STREAM", "EVTYPE", "DTYPE", "DB_KEY", "COUNT", "SETPOINT", "SIZE"})
            if (below(2) == 0)
                all += element(name, number());
        for (const char *name : {"SB_NAME", "SUBSYSTEM", "UNITS", "DESC"})
            if (below(2) == 0)
                all += element(name, text());
        for (std::size_t bit = below(3); bit-- > 0;)
            all += "<BIT>" + value(std::to_string(bit)) + "\n" + element("BIT_NAME", text()) +
                   element("BIT_DESCR", text()) + "</BIT>";
        for (std::size_t dim = below(3); dim-- > 0;) {
            all += "<DIM>" + value(std::to_string(dim)) + "\n" + element("DIM_NAME", text()) +
                   element("DIM_UNITS", "s") + element("DIM_DESCR", text());
            for (std::size_t stat = below(3); stat-- > 0;)
                all += "<STAT>" + value(std::to_string(stat)) + "\n" + element("STAT_NAME", text()) +
                       element("STAT_UNITS", "s") + element("STAT_DESCR", text()) + "</STAT>";
            all += is_odd() ? element("UNITS", "V") + "</DIM>" : "</DIM>";
        }
        return all;
    }

    std::string variable_content(const std::string &kind) {
        std::string all;
        for (const char *name : {"evType", "setPoint", "lastIndex", "DBKey"})
            if (below(2) == 0)
                all += element(name, number());
        for (const char *name : {"subSystem", "units", "description"})
            if (below(2) == 0)
                all += element(name, text());
        for (std::size_t part = below(3); part-- > 0;) {
            const std::string number = std::to_string(part);
            if (kind == "DaqBits" || is_odd())
                all += "<bitTitle bit=\"" + number + "\">" + value(text()) + "</bitTitle>";
            if (kind == "DaqFloatMatrix" || is_odd())
                all += "<dimension id=\"" + number + "\">" + element("name", text()) +
                       element("description", text()) + element("units", "s") + "</dimension>";
        }
        return all;
    }

    std::mt19937 random_;
    unsigned oddness_;
};

/// What is read from a file, written as CHANDESCRIPTIONS and read again.
void expect_channels_survive(const std::string &document) {
    temporary_file file(document);
    channel_list first, second;
    ASSERT_EQ(parse_descr_list_readf(file.c_path(), first, false, false), 0) << document;
    std::string written;
    ASSERT_EQ(dump_chan_desr(first, nullptr, 2, 0, -1, &written, nullptr), 0) << document;
    ASSERT_EQ(parse_descr_list_read(written.data(), second, false, false), 0) << document << written;
    ASSERT_EQ(describe(first.records), describe(second.records)) << document;
}

void expect_dictionary_survives(const std::string &document) {
    temporary_file file(document);
    dictionary<layout_2010> first, second;
    ASSERT_EQ(layout_2010::read_file(file.c_path(), &first.entries), 0) << document;
    std::string written;
    ASSERT_EQ(layout_2010::dump(&first.entries, nullptr, 3, -1, &written), 0) << document;
    ASSERT_EQ(layout_2010::read_memory(written.data(), &second.entries), 0) << document << written;
    ASSERT_EQ(describe(first.entries), describe(second.entries)) << document;
}

class CheckDocumentPromise : public testing::Test {
protected:
    xml_platform platform; // saves the start for each document
};

constexpr int documents = 1500;

TEST_F(CheckDocumentPromise, ChannelsWithoutFindingsSurviveWritingAndReading) {
    int clean = 0, all = 0;
    EXPECT_TRUE(rc::check([&](unsigned seed) {
        fair_documents source(seed);
        for (const std::string &document : {source.channels(), source.variables()}) {
            ++all;
            if (!told(document).empty())
                continue;
            ++clean;
            expect_channels_survive(document);
            RC_ASSERT(!testing::Test::HasFatalFailure());
        }
    }));
    EXPECT_GT(clean, all / 5);
    EXPECT_LT(clean, all);
}

TEST_F(CheckDocumentPromise, DictionariesWithoutFindingsSurviveWritingAndReading) {
    int clean = 0, all = 0;
    EXPECT_TRUE(rc::check([&](unsigned seed) {
        const std::string document = fair_documents(seed).dictionary();
        ++all;
        if (!told(document).empty())
            return;
        ++clean;
        expect_dictionary_survives(document);
        RC_ASSERT(!testing::Test::HasFatalFailure());
    }));
    EXPECT_GT(clean, all / 5);
    EXPECT_LT(clean, all);
}

// Numbers in these documents may stand for types that have no name
TEST_F(CheckDocumentPromise, NothingIsFoundInPlainDocumentsButWhatStandsTwice) {
    EXPECT_TRUE(rc::check([&](unsigned seed) {
        fair_documents source(seed, 0);
        for (const std::string &document : {source.channels(), source.variables(), source.dictionary()})
            for (const placed_finding &one : check_document(document))
                if (one.id != rule::DUPLICATE_IDENTITY && one.id != rule::UNNAMED_TYPE)
                    RC_FAIL(one.message + " in " + document);
    }));
}

// Whatever comes, damaged documents included
TEST_F(CheckDocumentPromise, TheRestOfThePromiseIsThatReportsOfReadersAreFound) {
    random_documents source(1);
    for (int i = 0; i < documents; ++i) {
        const std::string document = source.next();
        temporary_file file(document);
        channel_list list;
        int problems = 0;
        held_output({1, 2}, [&] { problems = parse_descr_list_readf(file.c_path(), list, false, false); });
        const std::string findings = told(document);
        EXPECT_FALSE(problems != 0 && findings.empty()) << document;
        if (findings.empty())
            expect_channels_survive(document);
        if (HasFailure())
            return;
    }
}

} // namespace
