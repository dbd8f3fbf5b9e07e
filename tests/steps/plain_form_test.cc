/// Small documents for which the XML library does what nobody would expect. The pull readers deliver exactly
/// these steps. The other readers get those of the steps that deliver a tag, with the plain lane and without.

#include <string>

#include <gtest/gtest.h>

#include "support/lane.h"
#include "support/lane_steps.h"
#include "support/sax_sources.h"
#include "xml_platform.h"

namespace {

struct document_row {
    const char *name;
    std::string document;
    const char *steps; // of a pull reader, up to its last result; "not started" without any
};

const document_row rows[] = {
    {"comment after start tag", "<r><A><!-- c -->t</A></r>", "r A A A[t] ~ ~ ~ -1"},
    {"comment inside text", "<r><A>ab<!-- c -->cd</A></r>", "r A A[ab] ~ ~ ~ ~ ~ -1"},
    {"comment in an empty element", "<r><A><!--c--></A></r>", "r A A A ~ ~ -1"},
    {"space then comment", "<r><A> <!--c--></A></r>", "r A ~ ~ ~ ~ ~ -1"},
    {"comment then space then text", "<r><A><!--c--> t</A></r>", "r A A A[ t] ~ ~ ~ -1"},
    {"two comments", "<r><A><!--c--><!--d--></A></r>", "r A A A A ~ ~ -1"},
    {"child first then text", "<r><A><B/>t</A></r>", "r A B ~ ~ ~ ~ -1"},
    {"text then child", "<r><A>t<B/>u</A></r>", "r A A[t] B ~ ~ ~ ~ -1"},
    {"empty two tags", "<r><A></A></r>", "r A A ~ ~ -1"},
    {"empty one tag", "<r><A/></r>", "r A ~ ~ -1"},
    {"empty root two tags", "<r></r>", "r r ~ -1"},
    {"empty root one tag", "<r/>", "r ~ -1"},
    {"CR only text", "<r><A>\r</A></r>", "r A ~ ~ ~ ~ -1"},
    {"CRLF text", "<r><A>\r\nx\r\r\ny\r</A></r>", "r A A[\nx\n\ny\n] ~ ~ ~ -1"},
    {"char ref CR", "<r><A>&#13;</A></r>", "r A A[\r] ~ ~ ~ -1"},
    {"DEL", "<r><A>\x7f</A></r>", "r A A[\x7f] ~ ~ ~ -1"},
    {"US", "<r><A>\x1f</A></r>", "r A 1"},
    {"VT", "<r><A>\x0b</A></r>", "r A 1"},
    {"FF", "<r><A>\x0c</A></r>", "r A 1"},
    {"]]>", "<r><A>a]]>b</A></r>", "r A 1"},
    {"]]]>", "<r><A>a]]]>b</A></r>", "r A 1"},
    {"]] >", "<r><A>a]] ></A></r>", "r A A[a]] >] ~ ~ ~ -1"},
    {"]]<!---->>", "<r><A>]]<!---->></A></r>", "r A A[]]] ~ ~ ~ ~ ~ -1"},
    {"> alone", "<r><A>a>b</A></r>", "r A A[a>b] ~ ~ ~ -1"},
    {"space in end tag", "<r><A>t</A \n></r>", "r A A[t] ~ ~ ~ -1"},
    {"space before end name", "<r><A>t</ A></r>", "r A A[t] 1"},
    {"end tag prefix", "<r><A>t</AB></r>", "r A A[t] 1"},
    {"attr in end tag", "<r><A>t</A a='1'></r>", "r A A[t] 1"},
    {"colon names", "<:><a:b:c/><:/></:>", ": a:b:c : ~ ~ -1"},
    {"name with . - _ digits", "<_r.-9><a/></_r.-9>", "_r.-9 a ~ ~ -1"},
    {"digit name", "<r><1/></r>", "r 1"},
    {"long name 40",
     "<r><nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn>t</nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn></r>",
     "r nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn[t] ~ ~ ~ -1"},
    {"attr no space", "<r><A a='1'b='2'/></r>", "r 1"},
    {"attr no space before />", "<r><A a='1'/></r>", "r A ~ ~ -1"},
    {"attr space around =", "<r><A a \n= \t'1' /></r>", "r A ~ ~ -1"},
    {"attr dup", "<r><A a='1' a='2'/></r>", "r 1"},
    {"attr >", "<r><A a='>'/></r>", "r A ~ ~ -1"},
    {"attr <", "<r><A a='<'/></r>", "r 1"},
    {"attr tab", "<r><A a='\t\n\r\n\r1'/></r>", "r A ~ ~ -1"},
    {"attr ctl", "<r><A a='\x01'/></r>", "r 1"},
    {"attr no value", "<r><A a/></r>", "r 1"},
    {"attr no quotes", "<r><A a=1/></r>", "r 1"},
    {"xml:space bad", "<r><A xml:space='nonsense'/></r>", "r A ~ ~ -1"},
    {"xmlns:xml", "<r xmlns:xml='u' xmlns=''/>", "r ~ -1"},
    {"undeclared prefix", "<r><p:A/></r>", "r p:A ~ ~ -1"},
    {"/ >", "<r><A / ></r>", "r 1"},
    {"decl 1.1", "<?xml version='1.1'?><r/>", "r ~ -1"},
    {"decl 1.2", "<?xml version='1.2'?><r/>", "r ~ -1"},
    {"decl 2.0", "<?xml version='2.0'?><r/>", "not started"},
    {"decl 1.", "<?xml version='1.'?><r/>", "r ~ -1"},
    {"decl no version", "<?xml encoding='UTF-8'?><r/>", "not started"},
    {"decl tab", "<?xml\tversion='1.0'?><r/>", "r ~ -1"},
    {"decl LF", "<?xml\nversion='1.0'?><r/>", "r ~ -1"},
    {"decl XML", "<?XML version='1.0'?><r/>", "not started"},
    {"decl Xml", "<?Xml version='1.0'?><r/>", "not started"},
    {"decl standalone yes", "<?xml version='1.0' standalone='yes'?><r/>", "r ~ -1"},
    {"decl standalone YES", "<?xml version='1.0' standalone='YES'?><r/>", "not started"},
    {"decl order", "<?xml version='1.0' standalone='no' encoding='UTF-8'?><r/>", "not started"},
    {"decl no gap", "<?xml version='1.0'encoding='UTF-8'?><r/>", "not started"},
    {"decl enc utf8", "<?xml version='1.0' encoding='utf8'?><r/>", "r ~ -1"},
    {"decl enc ISO_8859-1:1987", "<?xml version='1.0' encoding='ISO_8859-1:1987'?><r/>", "not started"},
    {"decl enc nonsense", "<?xml version='1.0' encoding='nonsense'?><r/>", "not started"},
    {"decl enc UTF-16", "<?xml version='1.0' encoding='UTF-16'?><r/>", "1"},
    {"decl enc UTF-16LE", "<?xml version='1.0' encoding='UTF-16LE'?><r/>", "not started"},
    {"decl enc UCS-4", "<?xml version='1.0' encoding='UCS-4'?><r/>", "1"},
    {"decl enc cp1252", "<?xml version='1.0' encoding='windows-1252'?><r/>", "r ~ -1"},
    {"decl enc ebcdic", "<?xml version='1.0' encoding='ebcdic-cp-us'?><r/>", "not started"},
    {"decl second", "<?xml version='1.0'?><?xml version='1.0'?><r/>", "not started"},
    {"decl after space", " <?xml version='1.0'?><r/>", "not started"},
    {"decl after comment", "<!-- --><?xml version='1.0'?><r/>", "not started"},
    {"decl spaces at end", "<?xml version='1.0'   ?><r/>", "r ~ -1"},
    {"decl > in it", "<?xml version='1.0' encoding='a>b'?><r/>", "not started"},
    {"decl CRLF", "<?xml version='1.0'\r\nencoding='UTF-8'?>\r\n<r/>", "r ~ -1"},
    {"BOM", "\xef\xbb\xbf<r/>", "r ~ -1"},
    {"BOM decl", "\xef\xbb\xbf<?xml version='1.0' encoding='ISO-8859-1'?><r/>", "r ~ -1"},
    {"BOM alone", "\xef\xbb\xbf", "not started"},
    {"BOM twice", "\xef\xbb\xbf\xef\xbb\xbf<r/>", "not started"},
    {"BOM after space", " \xef\xbb\xbf<r/>", "not started"},
    {"after root text", "<r/>x", "1"},
    {"after root space", "<r/> \n\t\r\n", "r ~ -1"},
    {"after root comment", "<r/><!-- c -->", "r ~ -1"},
    {"after root PI", "<r/><?p?>", "r ~ -1"},
    {"after root xml PI", "<r/><?xml version='1.0'?>", "1"},
    {"after root second root", "<r/><r/>", "1"},
    {"after root ref", "<r/>&#32;", "1"},
    {"open at end", "<r><A>t", "r A A[t] 1"},
    {"only comment", "<!-- -->", "not started"},
    {"empty", "", "not started"},
    {"blank", "  ", "not started"},
    {"text first", "x<r/>", "not started"},
    {"comment --", "<r><!-- a -- b --></r>", "r 1"},
    {"comment --->", "<r><!-- a ---></r>", "r 1"},
    {"comment <!-->", "<r><!--></r>", "r 1"},
    {"comment <!--->", "<r><!---></r>", "r 1"},
    {"comment ctl", "<r><!-- \x01 --></r>", "r 1"},
    {"comment & <", "<r><!-- & < ]]> --></r>", "r r r ~ -1"},
    {"<!", "<r><!x></r>", "r 1"},
    {"late bad byte (60 ahead)",
     "<r><A>1</A><B>2</B>                                                            \xff</r>",
     "r A A[1] ~ B B[2] ~ ~ 1"},
    {"declared ASCII, byte E9 20 ahead",
     "<?xml version='1.0' encoding='US-ASCII'?><r><A>1</A><B>2</B>          \xe9</r>", "not started"},
    {"latin1 E9", "<?xml version='1.0' encoding='ISO-8859-1'?><r><A>\xe9</A></r>",
     "r A A[\xc3\xa9] ~ ~ ~ -1"},
    {"utf8 e9", "<r><A>\xc3\xa9</A></r>", "r A A[\xc3\xa9] ~ ~ ~ -1"},
    {"utf8 cut at end", "<r/>\xc3", "r ~ -1"},
    {"NEL utf8", "<r><A>\xc2\x85</A></r>", "r A A[\xc2\x85] ~ ~ ~ -1"},
    {"U+FFFF", "<r><A>\xef\xbf\xbf</A></r>", "r A 1"},
    {"refs", "<r><A>a&amp;b&lt;c</A></r>", "r A A[<c] ~ ~ ~ -1"},
    {"ref first", "<r><A>&amp;y</A></r>", "r A A[&y] ~ ~ ~ -1"},
    {"blank ref", "<r><A> &amp;y</A></r>", "r A ~ ~ ~ ~ -1"},
    {"ref last", "<r><A>x&gt;</A></r>", "r A A[>] ~ ~ ~ -1"},
    {"ref space", "<r><A>x&#32;</A></r>", "r A ~ ~ ~ ~ -1"},
    {"CDATA", "<r><A><![CDATA[x]]></A></r>", "r A A[x] ~ ~ ~ -1"},
    {"PI in element", "<r><A><?p?>x</A></r>", "r A A A[x] ~ ~ ~ -1"},
    {"doctype", "<!DOCTYPE r><r/>", "r ~ -1"},
};

template <class Source> std::string pull_steps(const std::string &document) {
    Source source(document);
    const outcome seen = read(source);
    return seen.started == 0 ? seen.steps_seen : "not started";
}

/// The steps of a pull reader that deliver a tag.
std::string tag_steps(const std::string &document) {
    memory_source source(document);
    std::string kept;
    capture([&] {
        char *tag, *value;
        for (int result = source.start(); result == 0 && (result = source.parser().parse(&tag, &value)) == 0;)
            if (tag)
                kept += tag + (value ? '[' + std::string(value) + ']' : "") + ' ';
    });
    return kept;
}

class PlainForm : public testing::Test {
    const xml_platform platform_; // starting it takes longer than a document
};

TEST_F(PlainForm, PullReadersDeliverTheSteps) {
    for (const document_row &row : rows) {
        EXPECT_EQ(pull_steps<memory_source>(row.document), row.steps) << row.name;
        EXPECT_EQ(pull_steps<file_source>(row.document), row.steps) << row.name;
    }
}

TEST_F(PlainForm, ReadersTakeTheStepsThatDeliverATag) {
    for (const document_row &row : rows)
        for (const reading_way way : both_ways)
            for (const reader_form form : both_readers)
                EXPECT_EQ(lane_steps(form, way, row.document).tags, tag_steps(row.document))
                    << row.name << ", " << way_name(way) << ", " << reader_name(form);
}

TEST_F(PlainForm, ReportsAreTheSameWithoutTheLane) {
    for (const document_row &row : rows)
        for (const reader_form form : both_readers)
            EXPECT_EQ(lane_steps(form, WITH_LANE, row.document), lane_steps(form, WITHOUT_LANE, row.document))
                << row.name << ", " << reader_name(form);
}

} // namespace
