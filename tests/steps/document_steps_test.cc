/// Which documents the scanner reads to their end, which it hands over midway, and which it hands over at
/// once. A reader must not see the difference: steps, attributes and reports are those of the XML library.

#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

#include "support/lane_steps.h"
#include "support/repeated_text.h"
#include "xml_platform.h"

namespace {

using zeb5::lane_end;

/// Reads a document with the plain lane and without it, from memory and from a file, and expects the same
/// steps. Returns how the document ended in the lane.
lane_end end_of(const std::string &document, zeb5::row_finder find_row = every_row) {
    std::optional<lane_end> ends[2];
    for (const reader_form form : both_readers) {
        if (form == READ_MEMORY && document.find('\0') != document.npos)
            continue; // a text in memory ends there
        const steps_seen seen = lane_steps(form, WITH_LANE, document, find_row);
        const steps_seen other_way = lane_steps(form, WITHOUT_LANE, document, find_row);
        EXPECT_EQ(seen, other_way) << reader_name(form) << ": " << document.substr(0, 300);
        EXPECT_EQ(other_way.lane, lane_end::LEFT_AT_ONCE);
        ends[form] = seen.lane;
    }
    const lane_end of_file = ends[READ_FILE].value_or(lane_end::LEFT_AT_ONCE);
    EXPECT_EQ(ends[READ_MEMORY].value_or(of_file), of_file) << document.substr(0, 300);
    return of_file;
}

/// Each of the four kinds of rows that there are, by an element's name.
zeb5::reader_row row_by_name(std::string_view name) {
    constexpr int none = zeb5::reader_row::none;
    constexpr zeb5::reader_row rows[] = {{2, true}, {1, false}, {none, false}, {none, true}};
    return rows[static_cast<unsigned char>(name[0]) % 4];
}

/// Near the end of a document the scanner uses its slower code. So each document is also read with blanks
/// behind it.
void expect_end(lane_end expected, const std::string &document, zeb5::row_finder find_row = every_row) {
    for (const std::size_t blanks : {0u, 100u})
        EXPECT_EQ(static_cast<int>(end_of(document + std::string(blanks, ' '), find_row)),
                  static_cast<int>(expected))
            << document.substr(0, 300) << ", " << blanks << " blanks";
}

class DocumentSteps : public testing::Test {
    const xml_platform platform_; // starting it takes longer than a document
};

TEST_F(DocumentSteps, OfPlainDocumentsComeFromTheScanner) {
    const std::string documents[] = {
        "<r/>",
        "<r></r>",
        "<r a='1'/>",
        " \t\r\n<r>x</r> \n<!-- c --><?p?>\r\n",
        "<!-- c --><?p i?><r/>",
        "\xEF\xBB\xBF<r>\xC3\xA4</r>",
        "\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?><r/>",
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n<r>\xE4\xF6\x80\x9F</r>",
        "<?xml version='1.0' encoding='US-ASCII' standalone='yes'?><r>x</r>",
        "<r><a>x</a><b>y</b><a>z</a></r>",
        "<r><a>\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80</a></r>",
        "<r><a b='&lt;&#x20AC;\xC3\xA4' a=\"'\t\n\r\n\r'\" id = '1' >x</a></r>",
        "<r><a>&amp;&lt;&gt;&apos;&quot;&#65;&#x42;&#x10FFFF;</a></r>",
        "<r><a>x&amp;y</a><b> &amp;y</b><c>y&#32;</c><d>&#13;</d><e>&#13;&#10;</e><f>x&#9;y&#9;</f></r>",
        "<r><a><![CDATA[<&]>]]]]></a><b><![CDATA[]]></b><c><![CDATA[ ]]></c><d>x<![CDATA[y]]>z</d></r>",
        "<r><a><![CDATA[\r\n\r\xC3\xA4]]></a><b>\r</b><c>x\ry\r\nz\r\r\n</c></r>",
        "<r><!----><a><!-- c -->x<!-- d --></a><?p?><b><?q i ? >?></b></r>",
        "<r><a>]</a><b>]]</b><c>]] ></c><d>></d><e>]&gt;]]&gt;</e></r>",
        "<r><a>x\ny</a><b>\nx</b><c>x\n</c><d>\tx</d><e>  </e></r>",
        "<r>\n  <a>\n    <b/></a></r>",
        "<r><a> x</a><b>x </b><c>  x</c><d> \n</d><e>\n\n<f/></e></r>",
        "<r><a>1</a><b>2</b><a a='3'>4</a><b>5</b><a>6</a><b a='7'></b><a></a><b/></r>",
        "<r><a>\x7F</a><b>\xC2\x80</b><c>\xDF\xBF\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80</c></r>",
        "<r>\xEF\xBF\xBD\xF0\x90\x80\x80\xF4\x8F\xBF\xBF</r>",
        "<r><a>&#x80;</a><b>&#xD7FF;&#xE000;&#xFFFD;&#x10000;</b></r>",
        "<r><a>&#xaf;&#xfa;&#xAF;&#xFA;&#x90;&#x109;&#190;&#x00000041;&#00000065;</a></r>",
        "<r><a ></a ><b\n/><c\t></c\n></r>",
        "<r><r><r>x</r></r><r/></r>",
        "<r><a_name_of_more_than_16_b>x</a_name_of_more_than_16_b><a_name_of_16_byt>x</a_name_of_16_byt></r>",
        "<r><a/><ab/><a>1</a><ab>2</ab><abc>3</abc><a b='1'/><ab b='2'/></r>",
        "<:><_/><a:b.c-9_/></:>",
    };
    for (const std::string &document : documents)
        expect_end(lane_end::FINISHED, document);
}

TEST_F(DocumentSteps, ComeFromTheXmlLibraryAtOnceWhereTheBeginningIsNotPlain) {
    using namespace std::string_literals;
    const std::string documents[] = {
        "",
        " ",
        "x",
        "<",
        "<r",
        "<!DOCTYPE r><r>x</r>",
        "<!DOCTYPE r [<!ENTITY e 'x'>]><r>&e;</r>",
        "<?xml version='1.1'?><r/>",
        "<?xml version='1.0' encoding='UTF-16'?><r/>",
        "<?xml version='1.0' encoding='KOI8-R'?><r/>",
        "<?xml version='1.0' encoding='US-ASCII'?><r>\xE4</r>",
        "<?xml version='1.0' encoding='windows-1252'?><r>\x80</r>",
        "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?><r/>",
        "\xFF\xFE<\0r\0/\0>\0"s,
        "<\0r\0/\0>\0"s,
        "\0<r/>"s,
        "<r/>\xC3",
        "<r>\xC3</r>",
        "<r>\xC0\x80</r>",
        "<r>\xED\xA0\x80</r>",
        "<r>\xEF\xBF\xBF</r>",
        "<r>\xF4\x90\x80\x80</r>",
        "<r>\xF7\xBF\xBF\xBF</r>",
        "<\xC3\xA4/>",
        "<?xml-stylesheet href='x'?><r/>",
        "<?XML?><r/>",
        " <?xml version='1.0'?><r/>",
        "<!-- -- --><r/>",
        "<r a='1' a='2'/>",
        "<r a='<'/>",
        "<r a=1/>",
        "<r a='1'b='2'/>",
        "<r/>x",
        "<r/><r/>",
        "<r/>&#32;",
        "<r/><![CDATA[ ]]>",
        "<r/>\0"s,
        "<r/>\0 <!-- "s,
        "<" + std::string(32, 'n') + "/>",
        "<r " + times(1, "a='1' ") + times(2, "b='1' ") + "/>",
    };
    for (const std::string &document : documents)
        expect_end(lane_end::LEFT_AT_ONCE, document);
}

TEST_F(DocumentSteps, OfEncodingsThatKeepAsciiComeFromTheScanner) {
    const struct {
        const char *name;
        lane_end beyond_ascii;
    } encodings[] = {
        {"UTF-8", lane_end::LEFT_AT_ONCE},       {"utf8", lane_end::LEFT_AT_ONCE},
        {"ISO-8859-1", lane_end::FINISHED},      {"iso8859-1", lane_end::FINISHED},
        {"Latin1", lane_end::FINISHED},          {"us-ascii", lane_end::LEFT_AT_ONCE},
        {"ASCII", lane_end::LEFT_AT_ONCE},       {"iso-8859-2", lane_end::LEFT_AT_ONCE},
        {"ISO-8859-15", lane_end::LEFT_AT_ONCE}, {"Windows-1252", lane_end::LEFT_AT_ONCE},
    };
    for (const auto &encoding : encodings) {
        const std::string declared = "<?xml version='1.0' encoding='" + std::string(encoding.name) + "'?>";
        expect_end(lane_end::FINISHED, declared + "<r>x\x7F</r>");
        expect_end(encoding.beyond_ascii, declared + "<r>\xE4</r>");
    }
}

TEST_F(DocumentSteps, GoOnWithTheXmlLibraryWhereTheScannerLeaves) {
    using namespace std::string_literals;
    const char *const rests[] = {
        "</r>x",
        "</r><a/>",
        "</R>",
        "<a>",
        "<a></b></r>",
        "<a>x</a b='1'></r>",
        "<a>x</ab></r>",
        "<a>x</ a></r>",
        "<a / ></r>",
        "<1/></r>",
        "<a>&e;</a></r>",
        "<a>&amp</a></r>",
        "<a>&</a></r>",
        "<a>&#;</a></r>",
        "<a>&#x;</a></r>",
        "<a>&#X41;</a></r>",
        "<a>&#0;</a></r>",
        "<a>&#xFFFE;</a></r>",
        "<a>&#xD800;</a></r>",
        "<a>&#x110000;</a></r>",
        "<a>&#99999999999;</a></r>",
        "<a>&#x100000041;</a></r>",
        "<a>&#65 </a></r>",
        "<a>&#1114112;</a></r>",
        "<a b='&e;'/></r>",
        "<a b='&#1;'/></r>",
        "<a b='\x01'/></r>",
        "<a>\xE2\x80\xA8</a>&e;</r>",
        "<a>]]></a></r>",
        "<a>x]]]></a></r>",
        "<a>\x01</a></r>",
        "<a>x\x0B</a></r>",
        "<!-- -- --></r>",
        "<!-- --->",
        "<!-- \x02 --></r>",
        "<!-></r>",
        "<!x></r>",
        "<![CDATA[x]]</r>",
        "<![CDATA[\x1F]]></r>",
        "<![cdata[x]]></r>",
        "<?x?></r>",
        "<?xml version='1.0'?></r>",
        "<? p?></r>",
        "<?p\x01?></r>",
        "<?p/?></r>",
        "\n< x</r>",
        "\n& x</r>",
        "<?p",
        "<a b></a></r>",
        "<a b='1'",
        "<a><!-- c -->x<b",
        "<\xC3\xA4/></r>",
        "<a \xC3\xA4='1'/></r>",
    };
    for (const std::string rest : rests)
        for (const char *const before :
             {"<r>", "<r><A>1</A>\n", "<r><A>1</A><B a='2'/>text<A/>\n <!-- c -->", "<r><a>1</a><a>2</a>"})
            for (const zeb5::row_finder rows : {every_row, row_by_name})
                expect_end(lane_end::LEFT_MIDWAY, before + rest, rows);
}

/// The scanner has a quick way for an element that it knows and that holds a text alone. These elements are
/// known, but their text or what follows it only looks like an end tag.
TEST_F(DocumentSteps, OfElementsWithWhatLooksLikeTheirEndTag) {
    const std::string before = "<r>\n<a>1</a>\n<a>2</a>\n<ey>1</ey><a>3</a><ey>1</ey><abc>1</abc><a>4</a>";
    for (const zeb5::row_finder rows : {every_row, row_by_name}) {
        for (const char *const rest :
             {"<a>x&/a></a></r>", "<a>x]]>/a></a></r>", "<a>x></ab></r>", "<a>x</ab></r>", "<ey>ey</zz></r>",
              "<abc>1</abc><abc>2</abc><abc>x></abcd></r>", "<abc>1</abc><abc>2</abc><abc>x>></abcde></r>",
              "<a>x</b></r>"})
            expect_end(lane_end::LEFT_MIDWAY, before + rest, rows);
        for (const char *const rest :
             {"<a>x<ba>y</ba></a></r>", "<a>x<ba/></a></r>", "<a></a></r>", "<a></a><a>5</a></r>", "<a/></r>",
              "<a>x]/a></a></r>", "<a>x/a></a></r>", "<a> </a></r>", "<a>\n</a></r>",
              "<a>x><!-- a --></a></r>", "<ey>ey<zz/></ey></r>", "<abc>1</abc><abc>2</abc><abc>x></abc></r>"})
            expect_end(lane_end::FINISHED, before + rest, rows);
    }
}

/// A text in memory ends at the first NUL; a file goes on behind it.
TEST_F(DocumentSteps, OfFilesWithANulInsideATokenComeFromTheXmlLibraryFromThereOn) {
    using namespace std::string_literals;
    for (const std::string &rest : {"\0</r>"s,
                                    "x\0</r>"s,
                                    "x\0x</r>"s,
                                    "<\0a/></r>"s,
                                    "<a\0/></r>"s,
                                    "<a \0b='1'/></r>"s,
                                    "<a b\0='1'/></r>"s,
                                    "<a b='\0'/></r>"s,
                                    "<a b='1\0'/></r>"s,
                                    "<a b='1'\0/></r>"s,
                                    "<a/\0></r>"s,
                                    "<a>\0</a></r>"s,
                                    "<a>x\0</a></r>"s,
                                    "<a>x</\0a></r>"s,
                                    "<a>x</a\0></r>"s,
                                    "<a>x</a></r\0>"s,
                                    "<a>&\0amp;</a></r>"s,
                                    "<a>&amp\0;</a></r>"s,
                                    "<a>&#\0;</a></r>"s,
                                    "<a>&#6\0;</a></r>"s,
                                    "<!\0-- --></r>"s,
                                    "<!--\0--></r>"s,
                                    "<!-- \0 --></r>"s,
                                    "<!-- -\0-></r>"s,
                                    "<!-- --\0></r>"s,
                                    "<?\0p?></r>"s,
                                    "<?p\0?></r>"s,
                                    "<?p \0 ?></r>"s,
                                    "<?p ?\0></r>"s,
                                    "<![CDATA\0[x]]></r>"s,
                                    "<![CDATA[\0]]></r>"s,
                                    "<![CDATA[x\0x]]></r>"s,
                                    "<![CDATA[x]\0]></r>"s,
                                    "<![CDATA[x]]\0></r>"s,
                                    "</r><!-- \0 -->"s,
                                    "</r><?p \0?>"s,
                                    "</r> \0x"s,
                                    "<a>\xC3\xA4\0</a></r>"s,
                                    "<a>x\xC3\xA4\0x</a></r>"s})
        for (const char *const before : {"<r>", "<r><A>1</A>\n", "<r><a>1</a><a>2</a>"})
            for (const zeb5::row_finder rows : {every_row, row_by_name})
                expect_end(lane_end::LEFT_MIDWAY, before + rest, rows);
}

/// The XML library reports such bytes when it decodes them. So the scanner looks for them ahead of the steps.
TEST_F(DocumentSteps, OfDocumentsWithBytesThatAreNoCharacterComeFromTheXmlLibrary) {
    for (const std::string bad : {"\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xED\xA0\x80", "\xC0\x80", "\xFF",
                                  "\xF7\xBF\xBF\xBF", "\xF4\x90\x80\x80"})
        for (const std::string &rest :
             {"<a b='" + bad + "'/></r>", "<!-- " + bad + " --></r>", "<![CDATA[" + bad + "]]></r>",
              "<?p " + bad + "?></r>", "<" + bad + "/></r>", "<a " + bad + "='1'/></r>",
              "</r><!--" + bad + "-->"})
            for (const char *const before : {"<r>", "<r><A>1</A>\n"})
                expect_end(lane_end::LEFT_AT_ONCE, before + rest);
}

TEST_F(DocumentSteps, OfAReaderThatPassesOverElementsAreTheSameWhereverTheScannerLeaves) {
    std::string document = "<r>";
    for (const char *const name : {"d", "e", "f", "g"})
        for (const char *const inside :
             {"", " ", "x", " x", "x&lt;", "&lt;", "\n", "<!-- c -->", "<h>y</h>", "<h/>z"})
            document.append("<").append(name).append(">").append(inside).append("</").append(name).append(
                ">");
    document += document.substr(3) + "<d/><e a='1'/><f/><g a='2'/></r>";
    EXPECT_EQ(end_of(document, row_by_name), lane_end::FINISHED);
    for (const char *const not_plain : {"<?x?>", "<!>"})
        for (std::size_t at = 3; at < document.size(); ++at)
            if (document[at] == '<' || document[at - 1] == '>') {
                std::string other = document;
                EXPECT_EQ(end_of(other.insert(at, not_plain), row_by_name), lane_end::LEFT_MIDWAY) << at;
            }
}

// What a document may need of the scanner at most

TEST_F(DocumentSteps, OfDocumentsThatAreTooMuchForTheScannerComeFromTheXmlLibrary) {
    const auto nested = [](std::size_t depth) { return times(depth, "<a>") + times(depth, "</a>"); };
    const auto named = [](int names) {
        std::string all = "<r>";
        for (int i = 1; i < names; ++i)
            all += "<n" + std::to_string(i) + "/>";
        return all + "</r>";
    };
    const auto attributed = [](int attributes) {
        std::string all = "<r><a";
        for (int i = 0; i < attributes; ++i)
            all += " a" + std::to_string(i) + "='1'";
        return all + "/></r>";
    };
    const auto name_of = [](std::size_t bytes) { return "<r><" + std::string(bytes, 'n') + "/></r>"; };
    expect_end(lane_end::FINISHED, nested(64));
    expect_end(lane_end::LEFT_MIDWAY, nested(65));
    expect_end(lane_end::FINISHED, named(128));
    expect_end(lane_end::LEFT_MIDWAY, named(129));
    expect_end(lane_end::FINISHED, attributed(16));
    expect_end(lane_end::LEFT_MIDWAY, attributed(17));
    expect_end(lane_end::FINISHED, name_of(31));
    expect_end(lane_end::LEFT_MIDWAY, name_of(32));
}

TEST_F(DocumentSteps, OfTokensThatAreTooLongComeFromTheXmlLibrary) {
    const struct {
        const char *before, *behind;
    } tokens[] = {{"<a>", "</a>"}, {"<a b='", "'/>"},           {"<!--", "-->"},
                  {"<?p ", "?>"},  {"<a><![CDATA[", "]]></a>"}, {"<a", "/>"},
                  {"", ""}};
    for (const auto &token : tokens)
        for (const std::size_t bytes : {60'000u, 300'000u, 1'200'000u}) {
            const char filler = *token.before == '\0' || token.before == std::string("<a") ? ' ' : 'x';
            const std::string document = "<r><b>1</b>" + std::string(token.before) +
                                         std::string(bytes, filler) + token.behind + "<b>2</b></r>";
            expect_end(bytes == 60'000 ? lane_end::FINISHED : lane_end::LEFT_MIDWAY, document);
        }
}

// A document is read in parts

/// A document with every kind of token, which is plain.
std::string of_all_kinds() {
    return "<?xml "
           "version='1.0'?>\n<r><CHANNEL>\n<PROP>A.LONG.NAME/WITH/SEVERAL/PARTS</PROP><NAME>short</NAME>\n"
           "<EVTYPE>4</EVTYPE><DIM>0\n<DIM_NAME>x</DIM_NAME></DIM></CHANNEL><a b  =  '1' "
           "id=\"&lt;2\">t&amp;u</a>"
           "<!-- a comment -->\n  <?p i?><b/><c><![CDATA[c]]></c>\r\n<d>text\r\nof lines</d><e></e>"
           "<a_name_of_more_than_16_b bit='7'>x</a_name_of_more_than_16_b></r>\n<!-- end -->";
}

TEST_F(DocumentSteps, AreTheSameWhereverAPartEnds) {
    for (std::size_t shift = 0; shift < 70; ++shift)
        for (const std::size_t part : {std::size_t{24}, std::size_t{48}, std::size_t{100}}) {
            const way_in_use restored(WITH_LANE);
            zeb5::lane.part = part;
            zeb5::lane.look_ahead = 64;
            zeb5::lane.most_token = 128;
            std::string document = of_all_kinds();
            document.insert(document.find("<CHANNEL>"), shift, ' ');
            expect_end(lane_end::FINISHED, document);
        }
}

TEST_F(DocumentSteps, OfLargeDocumentsAreTheSame) {
    std::string channels;
    for (int i = 0; i < 3000; ++i)
        channels += "<CHANNEL>\n<PROP>ORVIN.DIAG/BPM/" + std::to_string(i * 7919) +
                    "/X</PROP><EVTYPE>4</EVTYPE>" +
                    (i % 50 == 0 ? "<UNITS>\xC2\xB5m</UNITS><DESC>x &lt; y</DESC>" : "") + "</CHANNEL>\n";
    for (std::size_t shift = 0; shift < 3; ++shift)
        expect_end(lane_end::FINISHED,
                   std::string(shift, '\n') + "<CHANDESCRIPTIONS>" + channels + "</CHANDESCRIPTIONS>");
    expect_end(lane_end::LEFT_MIDWAY, "<CHANDESCRIPTIONS>" + channels + "<a>&e;</a></CHANDESCRIPTIONS>");
    expect_end(lane_end::LEFT_MIDWAY, "<CHANDESCRIPTIONS>" + channels);
}

/// The XML library reports a byte that is no character when it decodes it, which is before the steps in front
/// of it.
TEST_F(DocumentSteps, AreNotDeliveredThatTheXmlLibraryWouldNotHaveReached) {
    const std::string channels = times(8000, "<A>1</A>\n");
    for (const char *const bad : {"\xFF", "\xC3", "\xE2\x82", "\xED\xA0\x80"})
        for (const std::size_t ahead :
             {0u, 20u, 200u, 16'000u, 16'400u, 40'000u, 49'000u, 49'200u, 65'000u, 66'000u, 71'000u}) {
            std::string document = "<r>" + channels + "</r>";
            document.insert(document.size() - 4 - ahead, bad);
            end_of(document);
        }
}

} // namespace
