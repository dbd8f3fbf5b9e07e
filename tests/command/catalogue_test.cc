/// The page that the catalogue is: its structure, the records in it, and texts that try to get out of their
/// place. What the page does in a browser is in catalogue_browser.py.

#include "support/command_runner.h"

#include <regex>

#include <gtest/gtest.h>

namespace {

const char channels[] = "<CHANDESCRIPTIONS><CHANNEL><STREAM>1</STREAM><EVTYPE>6</EVTYPE><DTYPE>-2147483584</"
                        "DTYPE><PROP>A/B/C</PROP>"
                        "<NAME>CH.C</NAME><SIZE>800</SIZE><BIT>3<BIT_NAME>on</BIT_NAME></BIT>"
                        "<DIM>0<DIM_NAME>bunch</DIM_NAME><STAT>1<STAT_NAME>RMS</STAT_NAME></STAT></DIM></"
                        "CHANNEL></CHANDESCRIPTIONS>";
const char channel_document[] =
    "{\"name\":\"channels.xml\",\"kind\":\"channel descriptions\",\"type\":\"channel\",\"complete\":true,"
    "\"fields\":[\"prop_name\",\"daq_name\",\"stream\",\"ev_type\",\"dtype\",\"count\",\"db_key\",\"prop_"
    "desc\","
    "\"units\",\"max_size\",\"sb_name\",\"set_point\",\"subsystem\",\"bits\",[\"bit\",\"bit_name\",\"bit_"
    "desc\"],"
    "\"dims\",[\"dim\",\"dim_name\",\"dim_desc\",\"units\",\"stats\",[\"stat\",\"stat_name\",\"stat_desc\","
    "\"units\"]]],\"records\":[\n"
    "[\"A/B/C\",\"CH.C\",1,6,2147483712,0,-1,\"\",\"\",800,\"\",0,\"\",[[3,\"on\",\"\"]],"
    "[[0,\"bunch\",\"\",\"\",[[1,\"RMS\",\"\",\"\"]]]]]]}";
const char events[] =
    "<BMR><EVENT><TYPE>4</TYPE><PRIORITY>2</PRIORITY><SBLOCK>S</SBLOCK><CHLIST><CHAN>CH.C</CHAN>"
    "</CHLIST></EVENT></BMR>";
const char event_document[] =
    "{\"name\":\"events.xml\",\"kind\":\"event list\",\"type\":\"event\",\"complete\":true,"
    "\"fields\":[\"evtype\",\"timeup\",\"timelow\",\"tmask\",\"priority\",\"sb_list\",[\"sb_list\",\"ch_"
    "list\"]],"
    "\"records\":[\n[\"ENV\",0,0,0,2,[[\"S\",[\"CH.C\"]]]]]}";

class Catalogue : public testing::Test {
protected:
    Catalogue() {
        folder.write("channels.xml", channels);
        folder.write("events.xml", events);
    }
    command_result run(const std::vector<std::string> &arguments) const { return folder.run(arguments); }

    /// What stands in the element of the page's data.
    static std::string data_of(const std::string &page) {
        const std::string begin = "<script type=\"application/json\" id=\"data\">";
        const size_t at = page.find(begin) + begin.size();
        return page.substr(at, page.find("</script>", at) - at);
    }
    static size_t count_of(const std::string &part, const std::string &text) {
        size_t count = 0;
        for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at)
            ++count;
        return count;
    }

    command_folder folder;
};

TEST_F(Catalogue, HoldsEveryFieldOfEveryRecord) {
    const command_result said = run({"catalogue", "channels.xml", "events.xml"});
    EXPECT_EQ(said.status, 0);
    EXPECT_EQ(said.err, "");
    const std::string data = data_of(said.out), documents = "\"documents\":[";
    EXPECT_EQ(data.find("{\"title\":\"Catalogue of the data acquisition\",\"version\":\"" ZEB5XML_VERSION
                        "\",\"eventTypes\":[\"HB\",\"NORMAL\",\"BOR\","),
              0u);
    EXPECT_EQ(data.substr(data.find(documents)),
              documents + channel_document + ",\n" + event_document + "]}");
}

TEST_F(Catalogue, IsOnePageThatLoadsNothing) {
    const std::string page = run({"catalogue", "channels.xml"}).out;
    EXPECT_EQ(page.find("<!DOCTYPE html>\n<html lang=\"en\">\n"), 0u);
    EXPECT_EQ(page.substr(page.size() - 8), "</html>\n");
    EXPECT_NE(page.find("content=\"default-src 'none'; "), std::string::npos);
    EXPECT_EQ(page.find("{{"), std::string::npos) << "a part is missing";
    EXPECT_EQ(count_of("<script", page), 2u);
    EXPECT_EQ(count_of("</script>", page), 2u);
    for (const char *loading :
         {" src=", "@import", "url(", "innerHTML", "insertAdjacentHTML", "document.write"})
        EXPECT_EQ(page.find(loading), std::string::npos) << loading;
    std::string addresses;
    const std::regex address("https?:[^ '\"]*");
    for (std::sregex_iterator one(page.begin(), page.end(), address), end; one != end; ++one)
        addresses += one->str() + " ";
    EXPECT_EQ(addresses, "http://www.w3.org/2000/svg ") << "only a name space, which nobody opens";
}

TEST_F(Catalogue, MarkupOfRecordsStaysText) {
    folder.write("<b>.xml",
                 "<CHANDESCRIPTIONS><CHANNEL><PROP><![CDATA[</script><b>&amp;]]></PROP>"
                 "<DESC><![CDATA[<!--<script>{{data}}\\u003c]]></DESC></CHANNEL></CHANDESCRIPTIONS>");
    const std::string page = run({"catalogue", "--title", "</title></script>\xff", "<b>.xml"}).out;
    EXPECT_EQ(count_of("<script", page), 2u);
    EXPECT_EQ(count_of("</script>", page), 2u);
    EXPECT_EQ(count_of("<!--", page), 0u);
    const std::string data = data_of(page);
    EXPECT_EQ(data.find('<'), std::string::npos);
    EXPECT_EQ(data.find("{\"title\":\"\\u003c/title>\\u003c/script>\xc3\xbf\","), 0u);
    EXPECT_NE(data.find("{\"name\":\"\\u003cb>.xml\","), std::string::npos);
    EXPECT_NE(data.find("\n[\"\\u003c/script>\\u003cb>&amp;\",\"\",0,0,0,0,-1,"
                        "\"\\u003c!--\\u003cscript>{{data}}\\\\u003c\","),
              std::string::npos)
        << data;
}

TEST_F(Catalogue, ReplacesAFileByACompletePage) {
    EXPECT_EQ(run({"catalogue", "channels.xml", "-o", "page.html"}), (command_result{0, "", ""}));
    EXPECT_EQ(folder.text("page.html"), run({"catalogue", "channels.xml"}).out);
}

TEST_F(Catalogue, LeavesAFileWhenThereIsNothingToWrite) {
    folder.write("page.html", "before");
    EXPECT_EQ(run({"catalogue", "missing.xml", "-o", "page.html"}),
              (command_result{1, "", "zeb5xml: missing.xml: No such file or directory\n"}));
    EXPECT_EQ(folder.text("page.html"), "before");
}

TEST_F(Catalogue, SaysWhichDocumentIsFaulty) {
    folder.write("broken.xml", "<CHANDESCRIPTIONS>\n<CHANNEL><PROP>X</PROP></CHANNEL>\n<CHANNEL>");
    const command_result said = run({"catalogue", "missing.xml", "broken.xml", "channels.xml"});
    EXPECT_EQ(said.status, 1);
    EXPECT_EQ(
        said.err.find("zeb5xml: missing.xml: No such file or directory\nFatal Error at (file broken.xml, "),
        0u)
        << said.err;
    EXPECT_NE(said.err.find("\nzeb5xml: broken.xml: not read without errors: only "), std::string::npos)
        << said.err;
    const std::string data = data_of(said.out);
    EXPECT_NE(data.find("{\"name\":\"broken.xml\",\"kind\":\"channel descriptions\",\"type\":\"channel\","
                        "\"complete\":false,"),
              std::string::npos);
    EXPECT_NE(data.find(channel_document), std::string::npos);
}

} // namespace
