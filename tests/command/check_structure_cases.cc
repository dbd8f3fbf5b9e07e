/// What elements there are, and where.

#include "command/check_cases.h"

namespace {

/// ASCII, with a byte order mark.
std::string in_utf_16(const std::string &text) {
    std::string wide = "\xFF\xFE";
    for (const char c : text)
        wide.append(1, c).append(1, '\0');
    return wide;
}

/// 58 bytes, so that 60 bytes of an element's name with more of them end within a character.
const std::string umlauts = [] {
    std::string text;
    for (int i = 0; i < 29; ++i)
        text += "\xC3\xA4";
    return text;
}();

} // namespace

std::vector<checked_case> structure_cases() {
    return {
        {rule::NOT_XML, channels("<CHANNEL>\n<NAME>a</NAM></CHANNEL>"),
         "2:10 not-xml: expected end of tag 'NAME': readers stop here, and keep the records that they "
         "have\n"},
        {rule::NOT_XML, "", "1:1 not-xml: the document is empty: no reader takes it\n"},
        {rule::NOT_XML, "\xEF\xBB\xBF\n\n", "1:1 not-xml: the document is empty: no reader takes it\n"},
        {rule::NOT_XML, "\n text",
         "2:2 not-xml: invalid document structure: readers refuse the whole document\n"},
        {rule::NOT_XML, "\xEF\xBB\xBF" + channel(""), ""},
        {rule::NOT_XML, "<BMR>\n\xC3\xA4 \xE4</BMR>",
         "2:3 not-xml: the byte 0xE4 is no character of UTF-8: readers refuse the whole document\n"},
        {rule::NOT_XML, "<BMR>" + std::string(200'000, ' ') + "\xE4</BMR>",
         "1:200006 not-xml: the byte 0xE4 is no character of UTF-8: readers stop some way before it, and "
         "keep "
         "the records that they have\n"},
        {rule::NOT_XML, std::string("<BMR>\0</BMR>", 12),
         "1:6 not-xml: input ended before all started tags were ended; last tag started is 'BMR': readers "
         "stop here, and keep the records that they have\n"},
        {rule::NOT_XML, "<Camera>\n<Integer Name=\"Gain\"/><Float",
         "2:29 not-xml: unexpected end of input: readers refuse the whole document\n"},
        {rule::NOT_XML, channel("<DESC>x < 5</DESC>"),
         "1:65 not-xml: element name expected: readers stop here, and keep the records that they have\n"},
        {rule::WRONG_ROOT, "<CHANDESCRIPTION/>",
         "1:1 wrong-root: the root <CHANDESCRIPTION> is none of CHANDESCRIPTIONS, DAQvariables, BMR and "
         "ENVINDEXDICT, and no camera feature is in it; did you mean 'CHANDESCRIPTIONS'?\n"},
        {rule::WRONG_ROOT, "<bmr/>",
         "1:1 wrong-root: the root <bmr> is none of CHANDESCRIPTIONS, DAQvariables, BMR and ENVINDEXDICT, "
         "and no camera feature is in it; did you mean 'BMR'?\n"},
        {rule::WRONG_ROOT, "<Other><A/></Other>",
         "1:1 wrong-root: the root <Other> is none of CHANDESCRIPTIONS, DAQvariables, BMR and ENVINDEXDICT, "
         "and no camera feature is in it\n"},
        {rule::WRONG_ROOT, "<BMR/>", ""},
        {rule::ENCODING_MISMATCH,
         "<?xml version=\"1.0\" "
         "encoding=\"ISO-8859-1\"?>\n<BMR><EVENT><TYPE>4</TYPE><SBLOCK>\xC3\xA4</SBLOCK></EVENT></BMR>",
         "2:35 encoding-mismatch: the characters beyond ASCII are UTF-8, but the document is labelled "
         "'ISO-8859-1': readers make other characters of them\n"},
        {rule::ENCODING_MISMATCH,
         "<?xml version=\"1.0\" "
         "encoding=\"ISO-8859-1\"?>\n<BMR><EVENT><TYPE>4</TYPE><SBLOCK>\xE4</SBLOCK></EVENT></BMR>",
         ""},
        {rule::ENCODING_MISMATCH,
         "<?xml version=\"1.0\" "
         "encoding=\"UTF-8\"?>\n<BMR><EVENT><TYPE>4</TYPE><SBLOCK>\xC3\xA4</SBLOCK></EVENT></BMR>",
         ""},
        {rule::ENCODING_MISMATCH,
         "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<BMR><EVENT><TYPE>4</TYPE><SBLOCK>a\x96"
         "b</SBLOCK></EVENT></BMR>",
         "2:36 encoding-mismatch: a control character of 'ISO-8859-1': it would be a quotation mark, a dash "
         "or "
         "another sign in windows-1252\n"},
        {rule::ENCODING_MISMATCH,
         "<?xml version=\"1.0\" encoding=\"windows-1252\"?>\n<BMR><EVENT><TYPE>4</TYPE><SBLOCK>a\x96"
         "b</SBLOCK></EVENT></BMR>",
         ""},
        {rule::ENCODING_MISMATCH,
         "<?xml version=\"1.0\" encoding=\"ISO-8859-15\"?>\n<BMR><EVENT><TYPE>4</TYPE><SBLOCK>\xA4"
         "</SBLOCK></EVENT></BMR>",
         ""},
        {rule::ENCODING_MISMATCH, in_utf_16("<?xml version=\"1.0\" encoding=\"UTF-8\"?><BMR/>"),
         "1:1 encoding-mismatch: the document is in UTF-16, but labelled 'UTF-8', which readers believe\n"
         "1:40 not-xml: element name expected: readers refuse the whole document\n"},
        {rule::ENCODING_MISMATCH, in_utf_16("<?xml version=\"1.0\" encoding=\"UTF-16\"?><BMR/>"), ""},
        {rule::DOCTYPE, "<!DOCTYPE BMR>\n<BMR/>",
         "1:1 doctype: what the document type declares turns validation on (not of a camera file), and no "
         "reader opens another file for it\n"},
        {rule::DOCTYPE, "<!DOCTYPE BMR SYSTEM \"bmr.dtd\">\n<BMR/>",
         "1:1 doctype: what the document type declares turns validation on (not of a camera file), and no "
         "reader opens another file for it\n"
         "1:32 not-xml: unable to open DTD document 'bmr.dtd': readers refuse the whole document\n"},
        {rule::DOCTYPE, "<!DOCTYPE BMR [<!ELEMENT BMR ANY><!-- ' > --><!ENTITY e \"]>\">]>\n<BMR/>",
         "1:1 doctype: what the document type declares turns validation on (not of a camera file), and no "
         "reader opens another file for it\n"},
        {rule::DOCTYPE, "<!-- <!DOCTYPE BMR> --><BMR/>", ""},
        {rule::UNKNOWN_ELEMENT, event("<SBLOK>S</SBLOK>"),
         "1:27 unknown-element: no reader knows <SBLOK>; did you mean <SBLOCK>? Without it, the entry asks "
         "for the full event\n"},
        {rule::UNKNOWN_ELEMENT, channel("<EVTYP>4</EVTYP>"),
         "1:56 unknown-element: channel 'P': no reader knows <EVTYP>; did you mean <EVTYPE>? Without it, the "
         "channel belongs to no event type\n"},
        {rule::UNKNOWN_ELEMENT, channel("<DESCRIPTION>d</DESCRIPTION><CHANNELDOCUMENT>d</CHANNELDOCUMENT>"),
         "1:56 unknown-element: channel 'P': no reader knows <DESCRIPTION>; did you mean <DESC>?\n"
         "1:84 unknown-element: channel 'P': no reader knows <CHANNELDOCUMENT>\n"},
        {rule::UNKNOWN_ELEMENT, channel("<COLOUR>red</COLOUR>"),
         "1:56 unknown-element: channel 'P': no reader knows <COLOUR>\n"},
        {rule::UNKNOWN_ELEMENT, channel("<q" + umlauts + umlauts + "/>"),
         "1:56 unknown-element: channel 'P': no reader knows <q" + umlauts + "...>\n"},
        {rule::UNKNOWN_ELEMENT, channel("<units>V</units>"),
         "1:56 unknown-element: channel 'P': no reader knows <units>; did you mean <UNITS>?\n"},
        {rule::UNKNOWN_ELEMENT,
         channels(
             "<CHANNEL><PROP>P</PROP><NAME>N</NAME></CHANNEL><CHANEL><PROP>Q</PROP><NAME>M</NAME></CHANEL>"),
         "1:66 unknown-element: no reader knows <CHANEL>; did you mean <CHANNEL>? What is in it goes to the "
         "record before it, or is ignored\n"},
        {rule::UNKNOWN_ELEMENT, channels("<GROUP><CHANNEL><PROP>P</PROP><NAME>N</NAME></CHANNEL></GROUP>"),
         "1:19 unknown-element: no reader knows <GROUP>; did you mean <PROP>?\n"},
        {rule::UNKNOWN_ELEMENT, camera("<Interger Name=\"Gain\"/><Float Name=\"F\"/>"),
         "1:9 unknown-element: no reader knows <Interger>; did you mean <Integer>?\n"},
        {rule::UNKNOWN_ELEMENT, camera("<Float Name=\"F\"><Tooltip>T</Tooltip></Float>"),
         "1:25 unknown-element: no reader knows <Tooltip>; did you mean <ToolTip>?\n"},
        {rule::UNKNOWN_ELEMENT, camera("<Float Name=\"F\"><FloatReg/><pFeature/><Unit/></Float>"), ""},
        {rule::UNKNOWN_ELEMENT, channels("<isodate>now</isodate>"), ""},
        {rule::UNKNOWN_ELEMENT,
         channels("<CHANNELS><CHANNEL><PROP>P</PROP><NAME>N</NAME></CHANNEL></CHANNELS>"),
         "1:19 unknown-element: no reader knows <CHANNELS>, and what is in it is read as if it were not "
         "there\n"},
        {rule::UNKNOWN_ELEMENT, channel("<BITS>3<BIT_NAME>on</BIT_NAME></BITS>"),
         "1:56 unknown-element: channel 'P': no reader knows <BITS>; did you mean <BIT>?\n"},
        {rule::UNKNOWN_ELEMENT, event("<SBLOCK>S</SBLOCK><CHANLIST><CHAN>C</CHAN></CHANLIST>"),
         "1:45 unknown-element: no reader knows <CHANLIST>; did you mean <CHLIST>?\n"},
        {rule::MISPLACED_ELEMENT, channel("<DIM>0<UNITS>mm</UNITS></DIM>"),
         "1:62 misplaced-element: channel 'P', dimension 0: <UNITS> stands in <DIM> but goes to channel "
         "'P'\n"},
        {rule::MISPLACED_ELEMENT, channel("<DIM>0<DIM_UNITS>mm</DIM_UNITS></DIM>"), ""},
        {rule::MISPLACED_ELEMENT, channel("<DIM>0</DIM><DIM_UNITS>mm</DIM_UNITS>"), ""},
        {rule::MISPLACED_ELEMENT, channels("<CHANNEL><PROP>P</PROP><NAME>N</NAME></CHANNEL><UNITS>V</UNITS>"),
         "1:66 misplaced-element: <UNITS> stands in <CHANDESCRIPTIONS> but goes to channel 'P'\n"},
        {rule::MISPLACED_ELEMENT,
         channels("<CHANNEL><PROP>P</PROP><NAME>N</NAME><CHANNEL><PROP>Q</PROP><NAME>M</NAME></"
                  "CHANNEL><UNITS>V</UNITS></CHANNEL>"),
         "1:56 misplaced-element: channel 'P': <CHANNEL> stands in <CHANNEL> but begins a new channel, which "
         "gets all that follows\n"
         "1:103 misplaced-element: channel 'P': <UNITS> stands in <CHANNEL> but goes to channel 'Q'\n"},
        {rule::MISPLACED_ELEMENT, channel("<BIT>3</BIT><DIM>0<BIT_NAME>on</BIT_NAME></DIM>"),
         "1:74 misplaced-element: channel 'P', dimension 0: <BIT_NAME> stands in <DIM> but goes to channel "
         "'P', bit 3\n"},
        {rule::MISPLACED_ELEMENT, channel("<DESC>d<UNITS>V</UNITS></DESC>"),
         "1:63 misplaced-element: channel 'P': <UNITS> stands in <DESC> but goes to channel 'P'\n"},
        {rule::MISPLACED_ELEMENT, bits_channel("<dimension id=\"0\"/>"),
         "1:60 misplaced-element: channel 'P': <dimension> is ignored here: it is read in <DaqFloatMatrix> "
         "only\n"},
        {rule::MISPLACED_ELEMENT,
         event("<SBLOCK>S<CHLIST><CHAN>C</CHAN></CHLIST></SBLOCK><SBLOCK>T</SBLOCK><CHLIST><CHAN>C</CHAN></"
               "CHLIST>"),
         ""},
        {rule::ORPHAN_ELEMENT, channel("<BIT_NAME>on</BIT_NAME>"),
         "1:56 orphan-element: channel 'P': <BIT_NAME> is ignored: there is no bit that it belongs to\n"},
        {rule::ORPHAN_ELEMENT, channel("<DIM>0<STAT_DESCR>" + many.substr(0, 100) + "</STAT_DESCR></DIM>"),
         "1:62 orphan-element: channel 'P', dimension 0: <STAT_DESCR> belongs to nothing here, so its text "
         "goes to the channel\n"},
        {rule::ORPHAN_ELEMENT, channel("<DIM>0<STAT>1<STAT_DESCR>d</STAT_DESCR></STAT></DIM>"), ""},
        {rule::ORPHAN_ELEMENT, channels("<UNITS>V</UNITS>"),
         "1:19 orphan-element: <UNITS> is ignored: there is no channel that it belongs to\n"},
        {rule::ORPHAN_ELEMENT, "<BMR><EVENT><TMASK>1</TMASK><TYPE>4</TYPE></EVENT></BMR>",
         "1:13 orphan-element: <TMASK> is ignored: there is no entry that it belongs to\n"},
        {rule::ORPHAN_ELEMENT, event("<CHLIST><CHAN>C</CHAN></CHLIST>"),
         "1:27 orphan-element: <CHLIST> is ignored: there is no server block that it belongs to\n"},
        {rule::ORPHAN_ELEMENT, event("<SBLOCK>S</SBLOCK><CHAN>C</CHAN>"),
         "1:45 orphan-element: <CHAN> is ignored: there is no channel list that it belongs to\n"},
        {rule::REPEATED_ELEMENT, channel("\n<UNITS>V</UNITS>\n<UNITS>A</UNITS>"),
         "3:1 repeated-element: channel 'P': <UNITS> replaces the value that was read before; the first is "
         "at 2:1\n"},
        {rule::REPEATED_ELEMENT, channel("<PROP>Q</PROP>"),
         "1:56 repeated-element: channel 'P': <PROP> stands here again: it renames the record and lists it "
         "once more; the first is at 1:28\n"},
        {rule::REPEATED_ELEMENT, event("<TYPE>5</TYPE>"),
         "1:27 repeated-element: <TYPE> makes one more entry of the same event\n"},
        {rule::REPEATED_ELEMENT, channel("<UNITS>V</UNITS><UNITS></UNITS>"),
         "1:72 repeated-element: channel 'P': <UNITS> stands here again without a text: the value before it "
         "stays; the first is at 1:56\n"},
        {rule::REPEATED_ELEMENT,
         matrix_channel("<units>V</units><dimension id=\"0\"><units>s</units></dimension>"), ""},
        {rule::REPEATED_ELEMENT,
         matrix_channel("<dimension id=\"0\"><units>s</units><units>m</units></dimension>"),
         "1:101 repeated-element: channel 'P', dimension 0: <units> replaces the value that was read before; "
         "the first is at 1:85\n"},
        {rule::REPEATED_ELEMENT, channel("<PROP>P</PROP>"),
         "1:56 repeated-element: channel 'P': <PROP> stands here again: it renames the record and lists it "
         "once more; the first is at 1:28\n"},
        {rule::REPEATED_ELEMENT, bits_channel("<orvin>P</orvin><units>" + sixteen + "</units>"),
         "1:60 repeated-element: channel 'P': <orvin> stands here again: the same name ends the record, "
         "another lists it anew; the first is at 1:24\n"},
        {rule::REPEATED_ELEMENT,
         event("<SBLOCK>S</SBLOCK><CHLIST><CHAN>C</CHAN></CHLIST><CHLIST><CHAN>D</CHAN></CHLIST>"),
         "1:76 repeated-element: entry 4, server block 'S': <CHLIST> stands here again: what is in it is "
         "added "
         "to what was read before\n"},
        {rule::REPEATED_ELEMENT,
         camera("<Float Name=\"F\"><ToolTip>T</ToolTip>\n<ToolTip>U</ToolTip></Float>"),
         "2:1 repeated-element: feature 'F': <ToolTip> replaces what was read before; the first is at "
         "1:25\n"},
        {rule::REPEATED_ELEMENT,
         camera(
             "<Float Name=\"F\"><ToolTip>T</ToolTip></Float><Float Name=\"G\"><ToolTip>T</ToolTip></Float>"),
         ""},
        {rule::REPEATED_ELEMENT, matrix_channel("<dimension id=\"0\"><!-- c --><name>t</name></dimension>"),
         "1:67 repeated-element: channel 'P', dimension 0: the reader makes 2 dimensions of <dimension>: one "
         "at "
         "its start tag, and one at each comment or text behind it\n"},
        {rule::REPEATED_ELEMENT, matrix_channel("<dimension id=\"0\">\n<!-- c --><name>t</name></dimension>"),
         ""},
        {rule::REPEATED_ELEMENT, bits_channel("<bitTitle bit=\"0\"><!-- c -->on</bitTitle>"),
         "1:60 repeated-element: channel 'P', bit 0: the reader makes 3 bits of <bitTitle>: one at its start "
         "tag, and one at each comment or text behind it\n"},
        {rule::REPEATED_ELEMENT, bits_channel("<bitTitle bit=\"0\">on</bitTitle><bitTitle bit=\"1\"/>"), ""},
        {rule::IGNORED_ATTRIBUTE, channel("<SIZE unit=\"kB\">2</SIZE>"),
         "1:62 ignored-attribute: channel 'P': no reader looks at the attribute 'unit' of <SIZE>\n"},
        {rule::IGNORED_ATTRIBUTE, "<BMR version=\"2\"/>",
         "1:6 ignored-attribute: no reader looks at the attribute 'version' of <BMR>\n"},
        {rule::IGNORED_ATTRIBUTE,
         "<BMR xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
         "xsi:noNamespaceSchemaLocation=\"BMR.xsd\"/>",
         ""},
        {rule::MISSING_ATTRIBUTE, bits_channel("<bitTitle>on</bitTitle>"),
         "1:60 missing-attribute: channel 'P': <bitTitle> has no attribute 'bit': the reader reports it and "
         "makes no bit\n"},
        {rule::MISSING_ATTRIBUTE, matrix_channel("<dimension><name>t</name></dimension>"),
         "1:67 missing-attribute: channel 'P': <dimension> has no attribute 'id': the reader reports it and "
         "makes no dimension\n"
         "1:78 orphan-element: channel 'P': <name> is ignored: there is no dimension that it belongs to\n"},
        {rule::MISSING_ATTRIBUTE, bits_channel("<bitTitle bit=\"3\">on</bitTitle>"), ""},
        {rule::MISSING_IDENTITY, channels("<CHANNEL><NAME>N</NAME></CHANNEL>"),
         "1:19 missing-identity: channel named 'N': <CHANNEL> has no <PROP>: the channel is not read\n"},
        {rule::MISSING_IDENTITY, "<BMR><EVENT><TMASK>1</TMASK></EVENT></BMR>",
         "1:6 missing-identity: <EVENT> has no <TYPE>: the event is not read\n"},
        {rule::MISSING_IDENTITY, "<ENVINDEXDICT><CHANNEL><PROP>P</PROP></CHANNEL></ENVINDEXDICT>",
         "1:15 missing-identity: entry 'P': <CHANNEL> has no <INDEX>: the entry is not read\n"},
        {rule::MISSING_IDENTITY, camera("<Float name=\"F\"/><Float Name=\"G\"/>"),
         "1:9 missing-identity: <Float> has no Name; did you mean it by 'name'? The feature has none, and "
         "listings leave it out\n"},
        {rule::MISSING_IDENTITY, camera("<Float name=\"F\"><Value Name=\"V\"/></Float>"),
         "1:9 missing-identity: <Float> has no Name; did you mean it by 'name'? It gets 'V' from the next "
         "element with one\n"},
        {rule::MISSING_IDENTITY, camera("<Float/>"),
         "1:9 missing-identity: <Float> has no Name: the feature has none, and listings leave it out\n"},
        {rule::MISSING_IDENTITY, channels("<CHANNEL><NAME>N</NAME><PROP>P</PROP></CHANNEL>"), ""},
        {rule::EMPTY_IDENTITY, channels("<CHANNEL><PROP></PROP><NAME>N</NAME></CHANNEL>"),
         "1:28 empty-identity: channel named 'N': <PROP> is empty: the channel is not read\n"},
        {rule::EMPTY_IDENTITY, "<BMR><EVENT><TYPE/><TMASK>1</TMASK></EVENT></BMR>",
         "1:13 empty-identity: <TYPE> without a number gives no entry; what follows goes to the one before "
         "it, or is ignored\n"},
        {rule::EMPTY_IDENTITY, channels("<CHANNEL><PROP>0</PROP><NAME>N</NAME></CHANNEL>"), ""},
        {rule::EMPTY_IDENTITY, channels("<CHANNEL><PROP>P</PROP><PROP/><NAME>N</NAME></CHANNEL>"),
         "1:42 repeated-element: channel 'P': <PROP> stands here again without a text: the value before it "
         "stays; the first is at 1:28\n"},
        {rule::EMPTY_IDENTITY,
         "<ENVINDEXDICT><CHANNEL><INDEX/><PROP>P</PROP><DABS>1</DABS></CHANNEL></ENVINDEXDICT>",
         "1:24 empty-identity: entry 'P': <INDEX> is empty: the entry is not read\n"},
        {rule::DUPLICATE_IDENTITY,
         channels("\n<CHANNEL><PROP>P</PROP><NAME>N</NAME></CHANNEL>\n<CHANNEL><PROP>P</PROP><NAME>N</NAME></"
                  "CHANNEL>"),
         "3:10 duplicate-identity: another channel has the same <PROP> 'P': both are kept, and look-ups find "
         "the first one only; the first is at 2:10\n"},
        {rule::DUPLICATE_IDENTITY,
         "<DAQvariables><DaqFloat><orvin>P</orvin><daqName>N</daqName></DaqFloat><DaqFloat><orvin>P</"
         "orvin><units>" +
             sixteen + "</units></DaqFloat></DAQvariables>",
         "1:82 duplicate-identity: another channel has the same <orvin> 'P': only event types are merged "
         "into it, and the rest of this one is ignored; the first is at 1:25\n"},
        {rule::DUPLICATE_IDENTITY, channel("<BIT>1</BIT><BIT>1</BIT>"),
         "1:68 duplicate-identity: channel 'P': there is another bit 1: both are kept; the first is at "
         "1:56\n"},
        {rule::DUPLICATE_IDENTITY,
         "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>P</PROP></CHANNEL><CHANNEL><INDEX>01</INDEX><PROP>Q</"
         "PROP></CHANNEL></ENVINDEXDICT>",
         "1:73 duplicate-identity: another entry has the same <INDEX> '01': both are kept, and look-ups find "
         "the first one only; the first is at 1:24\n"},
        {rule::DUPLICATE_IDENTITY, matrix_channel("<dimension id=\"1\"/><dimension id=\"1\"/>"),
         "1:86 duplicate-identity: channel 'P': there is another dimension 1: both are kept; the first is at "
         "1:67\n"},
        {rule::DUPLICATE_IDENTITY, "<BMR><EVENT><TYPE>4</TYPE></EVENT><EVENT><TYPE>04</TYPE></EVENT></BMR>",
         "1:42 duplicate-identity: there is another entry 4: both are kept; the first is at 1:13\n"},
        {rule::DUPLICATE_IDENTITY, "<BMR><EVENT><TYPE>4</TYPE></EVENT><EVENT><TYPE>5</TYPE></EVENT></BMR>",
         ""},
        {rule::DUPLICATE_IDENTITY,
         event("<SBLOCK>S</SBLOCK><CHLIST><CHAN>C</CHAN><CHAN>C</CHAN></CHLIST><SBLOCK>S</SBLOCK>"),
         "1:67 duplicate-identity: entry 4, server block 'S': there is another channel 'C': both are kept; "
         "the "
         "first is at 1:53\n"
         "1:90 duplicate-identity: entry 4: there is another server block 'S': both are kept; the first is "
         "at "
         "1:27\n"},
        {rule::DUPLICATE_IDENTITY,
         event("<SBLOCK>S</SBLOCK><CHLIST><CHAN>C</CHAN></CHLIST><SBLOCK>T</SBLOCK><CHLIST><CHAN>C</CHAN>"
               "</CHLIST>"),
         ""},
        {rule::DUPLICATE_IDENTITY,
         event("<SBLOCK>" + many.substr(0, 253) + "1</SBLOCK><SBLOCK>" + many.substr(0, 253) + "2</SBLOCK>"),
         ""},
        {rule::DUPLICATE_IDENTITY,
         event("<SBLOCK>" + many.substr(0, 254) + "1</SBLOCK><SBLOCK>" + many.substr(0, 254) + "2</SBLOCK>"),
         "1:27 cut-field: entry 4, server block 'pppppppppppppppppppppppppppppppppppppppp...': the text of "
         "<SBLOCK> has 255 bytes, of which 254 are kept: it ends with 'pppppppppppppppppppp'\n"
         "1:299 duplicate-identity: entry 4: there is another server block "
         "'pppppppppppppppppppppppppppppppppppppppp...': both are kept; the first is at 1:27\n"
         "1:299 cut-field: entry 4, server block 'pppppppppppppppppppppppppppppppppppppppp...': the text of "
         "<SBLOCK> has 255 bytes, of which 254 are kept: it ends with 'pppppppppppppppppppp'\n"},
        {rule::DUPLICATE_IDENTITY, camera("<Float Name=\"F\"/><Integer Name=\"F\"/>"),
         "1:26 duplicate-identity: another feature is named 'F': both are kept; the first is at 1:9\n"},
        {rule::DUPLICATE_IDENTITY,
         channels("<CHANNEL><PROP>" + many + "</PROP><NAME>N</NAME></CHANNEL><CHANNEL><PROP>" + many +
                  "q</PROP><NAME>N</NAME></CHANNEL>"),
         "1:28 cut-field: channel 'pppppppppppppppppppppppppppppppppppppppp...': the text of <PROP> has 256 "
         "bytes, of which 255 are kept: it ends with 'pppppppppppppppppppp'\n"
         "1:330 duplicate-identity: another channel has the same <PROP> "
         "'pppppppppppppppppppppppppppppppppppppppp...': both are kept, and look-ups find the first one "
         "only; the first is at 1:28\n"
         "1:330 cut-field: channel 'pppppppppppppppppppppppppppppppppppppppp...': the text of <PROP> has 257 "
         "bytes, of which 255 are kept: it ends with 'pppppppppppppppppppp'\n"},
        {rule::DUPLICATE_IDENTITY,
         channels("<CHANNEL><PROP>P</PROP><NAME>N</NAME></CHANNEL><CHANNEL><PROP>p</PROP><NAME>N</NAME></"
                  "CHANNEL>"),
         ""},
        {rule::FEWER_RECORDS, channel("<BIT><BIT_NAME>on</BIT_NAME></BIT>"),
         "1:56 fewer-records: channel 'P': <BIT> without a number gives no bit\n"
         "1:61 orphan-element: channel 'P': <BIT_NAME> is ignored: there is no bit that it belongs to\n"},
        {rule::FEWER_RECORDS, channel("<BIT>1</BIT><BIT/>"),
         "1:68 fewer-records: channel 'P': <BIT> without a number gives no bit\n"},
        {rule::FEWER_RECORDS, event("<SBLOCK></SBLOCK>"),
         "1:27 fewer-records: entry 4: <SBLOCK> without a name gives no server block\n"},
        {rule::FEWER_RECORDS, channel("<BIT>0<BIT_NAME/></BIT>"), ""},
        {rule::FEWER_RECORDS,
         "<ENVINDEXDICT><CHANNEL><INDEX> &#52;</INDEX><PROP>P</PROP></CHANNEL></ENVINDEXDICT>",
         "1:24 lost-text: entry 'P': the text of <INDEX> comes in pieces (a reference): the reader keeps "
         "nothing of it\n"},
        {rule::MISSING_NAME, channels("<CHANNEL><PROP>P</PROP></CHANNEL>"),
         "1:19 missing-name: channel 'P': there is no <NAME>: a writer names the channel "
         "'!!!UNDEFINED!!!'\n"},
        {rule::MISSING_NAME, channel(""), ""},
    };
}
