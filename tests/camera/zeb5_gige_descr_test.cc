/// Which elements of a camera file become features with which texts, and how features are listed and
/// released.

#include "zeb5_gige_descr.h"

#include <string>

#include <gtest/gtest.h>

#include "support/camera_features.h"
#include "xml_platform.h"

namespace {

struct document_case {
    const char *inside; // of the root element
    const char *features;
};

class Zeb5GigeDescrFeatures : public testing::Test {
protected:
    template <std::size_t Size> static void check(const document_case (&cases)[Size]) {
        for (const auto &c : cases)
            EXPECT_EQ(features_of("<Camera>" + std::string(c.inside) + "</Camera>"), c.features) << c.inside;
    }

private:
    xml_platform platform_; // for speed
};

const document_case kind_cases[] = {
    {"<Undefined Name='a'/>", "0|a|||\n"},
    {"<Integer Name='a'/>", "1|a|||\n"},
    {"<Float Name='a'/>", "2|a|||\n"},
    {"<Enumeration Name='a'/>", "3|a|||\n"},
    {"<Boolean Name='a'/>", "4|a|||\n"},
    {"<StringReg Name='a'/>", "5|a|||\n"},
    {"<Command Name='a'/>", "6|a|||\n"},
    {"<IntReg Name='a'/>", "7|a|||\n"},
    {"<Int64 Name='a'/>", "8|a|||\n"},
    // Nothing but these exact names
    {"", ""},
    {"<integer Name='a'/><INTEGER Name='a'/>", ""},
    {"<Integers Name='a'/><Intege Name='a'/><I Name='a'/>", ""},
    {"<x:Integer Name='a' xmlns:x='x'/>", ""},
    {"<Int\xc3\xa9ger Name='a'/>", ""},
    {"<Category Name='a'/><Node Name='b'/>", ""},
    {"<ToolTip>t</ToolTip><Description>d</Description><PvRename Name='g'/>", ""},
};

TEST_F(Zeb5GigeDescrFeatures, AreTheElementsNamedAfterAKind) { check(kind_cases); }

TEST_F(Zeb5GigeDescrFeatures, MayBeTheRootElementItself) {
    EXPECT_EQ(features_of("<Integer Name='Gain'><ToolTip>T</ToolTip></Integer>"), "1|Gain||T|\n");
}

const document_case depth_cases[] = {
    {"<Group><Group><Category><Integer Name='a'/></Category></Group><Float Name='b'/></Group><Int64 "
     "Name='c'/>",
     "1|a|||\n2|b|||\n8|c|||\n"},
    {"<Integer Name='a'><Float Name='b'><Boolean Name='c'/></Float></Integer>", "1|a|||\n2|b|||\n4|c|||\n"},
    // What follows a nested feature belongs to that, not to the one around it
    {"<Integer Name='a'><Float Name='b'/><ToolTip>t</ToolTip></Integer>", "1|a|||\n2|b||t|\n"},
    {"<Integer Name='a'><ToolTip><Float Name='b'/>t</ToolTip></Integer>", "1|a|||\n2|b|||\n"},
    {"<Integer Name='a'><ToolTip><Bold>t</Bold></ToolTip></Integer>", "1|a||t|\n"},
    {"<Integer Name='a'><Address>0x10</Address><Length>4</Length><ToolTip>t</ToolTip></Integer>",
     "1|a||t|\n"},
};

TEST_F(Zeb5GigeDescrFeatures, AreFoundAtAnyDepthInDocumentOrder) { check(depth_cases); }

const document_case text_cases[] = {
    {"<Integer Name='Gain'><ToolTip>T</ToolTip><Description>D</Description></Integer>", "1|Gain||T|D\n"},
    {"<Integer Name='Gain'><Description>D</Description><ToolTip>T</ToolTip></Integer>", "1|Gain||T|D\n"},
    {"<Integer Name='Gain'><ToolTip> T\n\tt </ToolTip></Integer>", "1|Gain|| T\n\tt |\n"},
    {"<Integer Name='Gain'><tooltip>T</tooltip><description>D</description></Integer>", "1|Gain|||\n"},
    {"<Integer Name='Gain'>text</Integer>", "1|Gain|||\n"},
    // The last one counts
    {"<Integer Name='Gain'><ToolTip>T</ToolTip><ToolTip>U</ToolTip></Integer>", "1|Gain||U|\n"},
    // References are part of the text, comments and processing instructions cut it
    {"<Integer Name='Gain'><ToolTip>a&amp;b&lt;c&#65;d &#xe4;</ToolTip></Integer>",
     "1|Gain||a&b<cAd \xc3\xa4|\n"},
    {"<Integer Name='Gain'><ToolTip>a<!-- c -->b</ToolTip></Integer>", "1|Gain||a|\n"},
    {"<Integer Name='Gain'><ToolTip><!-- c -->b</ToolTip></Integer>", "1|Gain||b|\n"},
    {"<Integer Name='Gain'><ToolTip>a<?p i?>b</ToolTip></Integer>", "1|Gain||a|\n"},
    // A CDATA section is no text
    {"<Integer Name='Gain'><ToolTip><![CDATA[x]]></ToolTip></Integer>", "1|Gain|||\n"},
    {"<Integer Name='Gain'><ToolTip><![CDATA[x]]>y</ToolTip></Integer>", "1|Gain||y|\n"},
    {"<Integer Name='Gain'><ToolTip>a<![CDATA[x]]>y</ToolTip></Integer>", "1|Gain||a|\n"},
    // Outside of ASCII: an umlaut, the euro sign, beyond 16 bits
    {"<Integer Name='\xc3\xa4'><ToolTip>\xe2\x82\xac \xf0\x9f\x93\xb7</ToolTip></Integer>",
     "1|\xc3\xa4||\xe2\x82\xac \xf0\x9f\x93\xb7|\n"},
};

TEST_F(Zeb5GigeDescrFeatures, TakeToolTipAndDescriptionFromTheElementsOfTheseNames) { check(text_cases); }

const document_case waiting_cases[] = {
    // An empty element waits for the next text, whatever that belongs to
    {"<Integer Name='a'><ToolTip/>\n <Length>4</Length></Integer>", "1|a||\n |\n"},
    {"<Integer Name='a'><ToolTip></ToolTip><Length>4</Length></Integer>", "1|a||4|\n"},
    {"<Integer Name='a'><ToolTip/></Integer>\n<Other>o</Other>", "1|a||\n|\n"},
    {"<Integer Name='a'><ToolTip/></Integer><Other>o</Other>", "1|a||o|\n"},
    {"<Integer Name='a'><ToolTip/></Integer>", "1|a|||\n"},
    {"<Integer Name='a'><Description/></Integer>", "1|a|||\n"},
    // but is forgotten with the next feature
    {"<Integer Name='a'><ToolTip/></Integer><Float Name='b'/>text", "1|a|||\n2|b|||\n"},
    // Several wait: the alternative name is filled first, then the tool tip, then the description
    {"<Integer Name='a'><Description/><ToolTip/><PvRename/><x>1</x><x>2</x><x>3</x><x>4</x></Integer>",
     "1|a|1|2|3\n"},
    {"<Integer Name='a'><ToolTip/><Description>D</Description>\n</Integer>", "1|a||D|\n\n"},
    {"<Integer Name='a'><Description/><ToolTip>T</ToolTip></Integer>", "1|a||T|\n"},
    // Asking again empties what was there
    {"<Integer Name='a'><ToolTip>T</ToolTip><ToolTip/></Integer>", "1|a|||\n"},
    {"<Integer Name='a'><ToolTip/><ToolTip>T</ToolTip>u</Integer>", "1|a||T|\n"},
};

TEST_F(Zeb5GigeDescrFeatures, GiveAnEmptyElementTheNextTextOfTheDocument) { check(waiting_cases); }

const document_case rename_cases[] = {
    {"<Integer Name='Gain'><PvRename Name='G'/></Integer>", "1|Gain|G||\n"},
    {"<Integer Name='Gain'><PvRename Name='G'>text</PvRename></Integer>", "1|Gain|G||\n"},
    {"<Integer Name='Gain'><PvRename Name=''/>text</Integer>", "1|Gain|||\n"},
    {"<Integer Name='Gain'><PvRename Name='G'/><PvRename Name='H'/></Integer>", "1|Gain|H||\n"},
    // Without a Name of its own: the next text or Name
    {"<Integer Name='Gain'><PvRename>G</PvRename></Integer>", "1|Gain|G||\n"},
    {"<Integer Name='Gain'><PvRename/>\n<ToolTip>T</ToolTip></Integer>", "1|Gain|\n|T|\n"},
    {"<Integer Name='Gain'><PvRename/><ToolTip>T</ToolTip></Integer>", "1|Gain|T||\n"},
    {"<Integer Name='Gain'><PvRename/><Entry Name='E'/>text</Integer>", "1|Gain|E||\n"},
    {"<Integer Name='Gain'><PvRename/></Integer>", "1|Gain|||\n"},
    {"<Integer Name='Gain'><PvRename name='G' x:Name='G' Nam='G' Names='G' xmlns:x='x'/></Integer>",
     "1|Gain|||\n"},
    // Before the feature has a name it is the name that is given
    {"<Integer><PvRename Name='G'/><PvRename Name='H'/></Integer>", "1|G|H||\n"},
    // Extension is not acted on, but its Name is a Name
    {"<Integer Name='Gain'><Extension Name='E'>text</Extension></Integer>", "1|Gain|||\n"},
    {"<Integer><Extension Name='E'>text</Extension></Integer>", "1|E|||\n"},
    {"<Integer Name='Gain'><ToolTip/><Extension>text</Extension></Integer>", "1|Gain||text|\n"},
};

TEST_F(Zeb5GigeDescrFeatures, TakeAnAlternativeNameFromPvRename) { check(rename_cases); }

const document_case name_cases[] = {
    {"<Integer/>", "1||||\n"},
    {"<Integer name='a' NAME='a' Nam='a' Names='a' x:Name='a' xmlns:x='x'/>", "1||||\n"},
    {"<Integer Name=''/>", "1||||\n"},
    {"<Integer Name='a&amp;b&#65; &lt;'/>", "1|a&bA <|||\n"},
    {"<Integer Name='a\n\tb'/>", "1|a  b|||\n"}, // line ends and tabs of an attribute are blanks to XML
    {"<Integer Comment='c' Name='a' Zone='z'/>", "1|a|||\n"},
    // A feature without a Name takes the next one, whosever it is
    {"<Enumeration><EnumEntry Name='e'/><EnumEntry Name='f'/></Enumeration>", "3|e|||\n"},
    {"<Integer><ToolTip Name='n'>T</ToolTip></Integer>", "1|n||T|\n"},
    {"<Integer/><Category Name='c'/>", "1|c|||\n"},
    {"<Integer/><Float Name='b'/>", "1||||\n2|b|||\n"},
    // but an empty one is a name given
    {"<Enumeration Name=''><EnumEntry Name='e'/></Enumeration>", "3||||\n"},
    // Names before the first feature are nobody's
    {"<Category Name='c'/><Integer/>", "1||||\n"},
};

TEST_F(Zeb5GigeDescrFeatures, TakeTheirNameFromTheFirstNameAttribute) { check(name_cases); }

const document_case marker_cases[] = {
    // A text that is one of the two markers counts as missing
    {"<Integer Name='Unknown'/>", "1||||\n"},
    {"<Enumeration Name='Unknown'><EnumEntry Name='e'/></Enumeration>", "3|e|||\n"},
    {"<Integer Name='Waiting'><EnumEntry Name='e'/></Integer>", "1||||\n"},
    {"<Integer Name='a'><ToolTip>Unknown</ToolTip>u</Integer>", "1|a|||\n"},
    {"<Integer Name='a'><ToolTip>Waiting</ToolTip></Integer>", "1|a|||\n"},
    {"<Integer Name='a'><ToolTip>Waiting</ToolTip>u</Integer>", "1|a||u|\n"},
    {"<Integer Name='a'><PvRename Name='Waiting'/>u</Integer>", "1|a|u||\n"},
    {"<Integer Name='a'><PvRename Name='Unknown'/>u</Integer>", "1|a|||\n"},
    {"<Integer Name='a'><Description>Waiting</Description><ToolTip>T</ToolTip></Integer>", "1|a||T|\n"},
    // Exactly the marker, that is
    {"<Integer Name='unknown'><ToolTip>Waiting </ToolTip><Description>Unknown.</Description></Integer>",
     "1|unknown||Waiting |Unknown.\n"},
};

TEST_F(Zeb5GigeDescrFeatures, AreReadAsWithoutATextThatIsAMarker) { check(marker_cases); }

const document_case foreign_cases[] = {
    // Texts of a category go to the feature before it
    {"<Category Name='c'><ToolTip>lost</ToolTip></Category><Integer Name='a'><ToolTip>T</ToolTip></Integer>"
     "<Category Name='d'><ToolTip>foreign</ToolTip><Description>too</Description></Category>",
     "1|a||foreign|too\n"},
    // and those of an enumeration's entries to the enumeration
    {"<Enumeration Name='a'><ToolTip>T</ToolTip><Description>D</Description>"
     "<EnumEntry Name='e'><ToolTip>first</ToolTip></EnumEntry>"
     "<EnumEntry Name='f'><ToolTip>last</ToolTip><Description>entry</Description></EnumEntry></Enumeration>",
     "3|a||last|entry\n"},
};

TEST_F(Zeb5GigeDescrFeatures, TakeTheTextsOfOtherElementsBehindThem) { check(foreign_cases); }

TEST(Zeb5GigeDescrFeature, StartsUndefinedAndEmpty) {
    const ZEB5GigEFeature feature;
    EXPECT_EQ(feature.type, FEATURE_TYPE_UNDEF);
    EXPECT_EQ(feature.name + feature.extension + feature.tooltip + feature.description, "");
}

TEST(Zeb5GigeDescrTables, HoldTheNamesInTheOrderOfTheirCodes) {
    EXPECT_EQ(std::size(FeatureTags), 9u);
    EXPECT_STREQ(FeatureTags[FEATURE_TYPE_UNDEF], "Undefined");
    EXPECT_STREQ(FeatureTags[FEATURE_TYPE_INT], "Integer");
    EXPECT_STREQ(FeatureTags[FEATURE_TYPE_FLOAT], "Float");
    EXPECT_STREQ(FeatureTags[FEATURE_TYPE_ENUMER], "Enumeration");
    EXPECT_STREQ(FeatureTags[FEATURE_TYPE_BOOL], "Boolean");
    EXPECT_STREQ(FeatureTags[FEATURE_TYPE_STRING], "StringReg");
    EXPECT_STREQ(FeatureTags[FEATURE_TYPE_COMMAND], "Command");
    EXPECT_STREQ(FeatureTags[FEATURE_TYPE_REGISTER], "IntReg");
    EXPECT_STREQ(FeatureTags[FEATURE_TYPE_LONG], "Int64");
    EXPECT_EQ(std::size(MoreTags), 4u);
    EXPECT_STREQ(MoreTags[MORE_TAGS_EXTENSION], "Extension");
    EXPECT_STREQ(MoreTags[MORE_TAGS_PVRENAME], "PvRename");
    EXPECT_STREQ(MoreTags[MORE_TAGS_TOOLTIP], "ToolTip");
    EXPECT_STREQ(MoreTags[MORE_TAGS_DESCRIPTION], "Description");
    EXPECT_EQ(std::size(Attributes), 1u);
    EXPECT_STREQ(Attributes[ATTRIBUTE_NAME], "Name");
}

/// A feature with all its texts, appended to `list`.
void add(feature_list &list, int type, const char *name, const char *extension, const char *tooltip,
         const char *description) {
    auto feature = std::make_unique<ZEB5GigEFeature>();
    feature->type = type;
    feature->name = name;
    feature->extension = extension;
    feature->tooltip = tooltip;
    feature->description = description;
    list.push_back(feature.get());
    (void)feature.release();
}

TEST(Zeb5GigeDescrListing, ShowsTheNamedFeaturesUnderTheirPlaceInTheVector) {
    feature_list list;
    add(list, 1, "Gain", "", "T", "D");
    add(list, 7, "", "E", "no name", "not shown");
    add(list, 2, "Exposure", "Exp", "tip", "text");
    list.push_back(nullptr);
    add(list, 0, "Bare", "", "", "");
    add(list, -3, "100 %s %n 'quoted'", "%d", "%%", "two\nlines");
    const captured seen = capture([&] { zeb5_dump_gige_descr(&list); });
    EXPECT_EQ(seen.out, "[0] Name:'Gain' type:1 ToolTip:'T' Description:'D'\n"
                        "[2] Name:'Exposure' Extension:'Exp' type:2 ToolTip:'tip' Description:'text'\n"
                        "[4] Name:'Bare' type:0 ToolTip:'' Description:''\n"
                        "[5] Name:'100 %s %n 'quoted'' Extension:'%d' type:-3 ToolTip:'%%' "
                        "Description:'two\nlines'\n");
    EXPECT_EQ(seen.err, "");
}

TEST(Zeb5GigeDescrListing, IsEmptyForANullOrEmptyVector) {
    const feature_list empty;
    const captured seen = capture([&] {
        zeb5_dump_gige_descr(nullptr);
        zeb5_dump_gige_descr(&empty);
    });
    EXPECT_EQ(seen.out + seen.err, "");
}

TEST(Zeb5GigeDescrCleaning, ReleasesTheFeaturesAndKeepsTheVectorsRoom) {
    feature_list list;
    add(list, 1, "Gain", "", "a text long enough for a block of its own", "");
    list.push_back(nullptr);
    add(list, 2, "Exposure", "", "", "");
    const std::size_t room = list.capacity();
    zeb5_clean_gige_descr(&list);
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(list.capacity(), room);
    zeb5_clean_gige_descr(&list);
    EXPECT_EQ(list.capacity(), room);
    zeb5_clean_gige_descr(nullptr);
}

} // namespace
