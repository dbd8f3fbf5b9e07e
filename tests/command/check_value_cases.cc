/// Texts and numbers.

#include "command/check_cases.h"

std::vector<checked_case> value_cases() {
    return {
        {rule::IGNORED_TEXT, channel("text"),
         "1:56 ignored-text: text of <CHANNEL> that follows another element is not read\n"},
        {rule::IGNORED_TEXT, channels("text"),
         "1:19 ignored-text: the text 'text' of <CHANDESCRIPTIONS> is not read\n"},
        {rule::IGNORED_TEXT, channel("<DIM>0<DIM_NAME>t</DIM_NAME>\n 1</DIM>"),
         "2:2 ignored-text: channel 'P': text of <DIM> that follows another element is not read\n"},
        {rule::IGNORED_TEXT, matrix_channel("<dimension id=\"0\">text<name>t</name></dimension>"),
         "1:67 repeated-element: channel 'P', dimension 0: the reader makes 2 dimensions of <dimension>: one "
         "at "
         "its start tag, and one at each comment or text behind it\n"
         "1:85 ignored-text: channel 'P': the text 'text' of <dimension> is not read\n"},
        {rule::IGNORED_TEXT, channel("<!-- text -->\n <DIM>0\n <DIM_NAME>t</DIM_NAME>\n </DIM>"), ""},
        {rule::IGNORED_TEXT, camera("<Float Name=\"F\"><ToolTip>a<b/>c</ToolTip></Float>"),
         "1:39 ignored-text: feature 'F': text of <ToolTip> that follows another element is not read\n"},
        {rule::IGNORED_TEXT, camera("<Float Name=\"F\"><ToolTip>a<b/>\n</ToolTip>text</Float>"), ""},
        {rule::LOST_TEXT, channel("<DESC>beam &amp; gas</DESC>"),
         "1:56 lost-text: channel 'P': the text of <DESC> comes in pieces (a reference): the reader keeps "
         "only '& gas'\n"
         "1:56 not-writable: channel 'P': <DESC>: a writer escapes nothing, so '&' is not read back from "
         "what it writes\n"},
        {rule::LOST_TEXT, channel("<DESC>a<![CDATA[b]]>c</DESC>"),
         "1:56 lost-text: channel 'P': the text of <DESC> comes in pieces (a CDATA section): the reader "
         "keeps only 'a'\n"},
        {rule::LOST_TEXT, channel("<DESC>a<!-- & < -->b</DESC>"),
         "1:56 lost-text: channel 'P': the text of <DESC> comes in pieces (a comment or an instruction): the "
         "reader keeps only 'a'\n"},
        {rule::LOST_TEXT, channel("<DESC>a<?pi x?>b</DESC>"),
         "1:56 lost-text: channel 'P': the text of <DESC> comes in pieces (a comment or an instruction): the "
         "reader keeps only 'a'\n"},
        {rule::LOST_TEXT, channel("<DESC> &#65;y</DESC>"),
         "1:56 lost-text: channel 'P': the text of <DESC> comes in pieces (a reference): the reader keeps "
         "nothing of it\n"},
        {rule::LOST_TEXT, channel("<SIZE>1<!-- -->2</SIZE>"),
         "1:56 lost-text: channel 'P': the text of <SIZE> comes in pieces: the reader keeps 1, not '12'\n"},
        {rule::LOST_TEXT, channel("<BIT> &#51;</BIT>"),
         "1:56 lost-text: channel 'P': the text of <BIT> comes in pieces (a reference): the reader keeps "
         "nothing of it\n"},
        {rule::LOST_TEXT, channel("<DESC>&#65;tail</DESC>"), ""},
        {rule::LOST_TEXT, channel("<DESC><!-- first -->text</DESC>"), ""},
        {rule::LOST_TEXT, channel("<DESC>text<!-- last -->\n</DESC>"), ""},
        {rule::LOST_TEXT, channel("<DESC><![CDATA[all of it]]></DESC>"), ""},
        {rule::LOST_TEXT, camera("<Float Name=\"F\"><ToolTip>a<!-- -->b</ToolTip></Float>"),
         "1:25 lost-text: feature 'F': the text of <ToolTip> comes in pieces (a comment or an instruction): "
         "the reader keeps only 'a'\n"},
        {rule::LOST_TEXT, camera("<Float Name=\"F\"><ToolTip>a &amp; b</ToolTip></Float>"), ""},
        {rule::LOST_TEXT,
         channels("<CHANNEL><PROP> "
                  "&#65;B</PROP><NAME>N</NAME></CHANNEL><CHANNEL><PROP>Q</PROP><NAME>M</NAME><UNITS>" +
                  sixteen + "</UNITS></CHANNEL>"),
         "1:28 lost-text: channel named 'N': the text of <PROP> comes in pieces (a reference): the reader "
         "keeps nothing of it\n"
         "1:109 cut-field: channel 'Q': the text of <UNITS> has 16 bytes, of which 15 are kept: it ends with "
         "'uuuuuuuuuuuuuuu'\n"},
        {rule::LOST_TEXT, "<BMR><EVENT><TYPE> &#52;</TYPE><TMASK>1</TMASK></EVENT></BMR>",
         "1:13 lost-text: the text of <TYPE> comes in pieces (a reference): the reader keeps nothing of "
         "it\n"},
        {rule::LOST_TEXT,
         "<ENVINDEXDICT><CHANNEL><PROP>P</PROP><INDEX> &#52;</INDEX></CHANNEL></ENVINDEXDICT>",
         "1:38 lost-text: entry 'P': the text of <INDEX> comes in pieces (a reference): the reader keeps "
         "nothing of it\n"},
        {rule::LOST_TEXT, channel("<BIT>1<!-- -->2<BIT_NAME>on</BIT_NAME></BIT>"),
         "1:56 lost-text: channel 'P', bit 12: the text of <BIT> comes in pieces: the reader keeps 1, not "
         "'12'\n"},
        {rule::LOST_TEXT, camera("<Float Name=\"F\"><ToolTip><![CDATA[a]]></ToolTip>\n</Float>"),
         "1:25 lost-text: feature 'F': the text of <ToolTip> is in a CDATA section, which the reader of "
         "camera "
         "files ignores: it keeps the next text of the file, '\\n'\n"},
        {rule::LOST_TEXT, camera("<Float Name=\"F\"><ToolTip><![CDATA[a]]></ToolTip></Float>"),
         "1:25 lost-text: feature 'F': the text of <ToolTip> is in a CDATA section, which the reader of "
         "camera "
         "files ignores: it keeps nothing\n"},
        {rule::LOST_TEXT, camera("<Float Name=\"F\"><ToolTip>a<![CDATA[b]]></ToolTip>\n</Float>"),
         "1:25 lost-text: feature 'F': the text of <ToolTip> comes in pieces (a CDATA section): the reader "
         "keeps only 'a'\n"},
        {rule::LOST_TEXT, camera("<Float Name=\"F\"><ToolTip>a<![CDATA[]]></ToolTip>\n</Float>"), ""},
        // What the reader writes into fields that it does not know yet, or for whose text it waits
        {rule::LOST_TEXT, camera("<Float Name=\"F\"><ToolTip>Waiting</ToolTip></Float>"),
         "1:25 lost-text: feature 'F': the text 'Waiting' of <ToolTip> gets lost: the reader keeps "
         "nothing\n"},
        {rule::LOST_TEXT, camera("<Float Name=\"Unknown\"/><Integer Name=\"I\"/>"),
         "1:9 lost-text: the Name 'Unknown' of <Float> counts as none: the feature has none, and listings "
         "leave "
         "it out\n"},
        {rule::LOST_TEXT, camera("<Float Name=\"F\"><PvRename Name=\"Unknown\"/></Float>"),
         "1:25 lost-text: feature 'F': the Name 'Unknown' of <PvRename> gets lost\n"},
        {rule::LOST_TEXT, bits_channel("<bitTitle bit=\"0\">\n<!-- c --></bitTitle>"), ""},
        {rule::LOST_TEXT, camera("<Float Name=\"waiting\"><ToolTip>unknown</ToolTip></Float>"), ""},
        {rule::CUT_FIELD, channel("<UNITS>" + sixteen + "</UNITS>"),
         "1:56 cut-field: channel 'P': the text of <UNITS> has 16 bytes, of which 15 are kept: it ends with "
         "'uuuuuuuuuuuuuuu'\n"},
        {rule::CUT_FIELD, channel("<UNITS>" + fifteen + "</UNITS>"), ""},
        {rule::CUT_FIELD, event("<SBLOCK>" + many.substr(0, 255) + "</SBLOCK>"),
         "1:27 cut-field: entry 4, server block 'pppppppppppppppppppppppppppppppppppppppp...': the text of "
         "<SBLOCK> has 255 bytes, of which 254 are kept: it ends with 'pppppppppppppppppppp'\n"},
        {rule::CUT_FIELD, event("<SBLOCK>" + many.substr(0, 254) + "</SBLOCK>"), ""},
        {rule::CUT_FIELD,
         "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>" + many.substr(0, 80) +
             "</PROP></CHANNEL></ENVINDEXDICT>",
         "1:40 cut-field: entry 1: the text of <PROP> has 80 bytes, of which 79 are kept in the classic "
         "layout: it ends with 'pppppppppppppppppppp'\n"},
        {rule::CUT_FIELD,
         "<ENVINDEXDICT><CHANNEL><INDEX>1</INDEX><PROP>" + many.substr(0, 79) +
             "</PROP></CHANNEL></ENVINDEXDICT>",
         ""},
        {rule::CUT_FIELD,
         matrix_channel("<dimension id=\"0\"><description>" + many.substr(0, 80) +
                        "</description></dimension>"),
         "1:85 cut-field: channel 'P', dimension 0: the text of <description> has 80 bytes, of which 79 are "
         "kept: it ends with 'pppppppppppppppppppp'\n"},
        {rule::CUT_FIELD, matrix_channel("<description>" + many.substr(0, 80) + "</description>"), ""},
        {rule::CUT_FIELD, channel("<DESC>" + std::string(1 << 20, 'd') + std::string(10, 'e') + "</DESC>"),
         "1:56 lost-text: channel 'P': the text of <DESC> comes in pieces (its length): the reader keeps "
         "only 'dddddddddddddddddddddddddddddddddddddddd...'\n"},
        {rule::PADDED_VALUE, channel("<DESC>\n  text\n  </DESC>"),
         "1:56 padded-value: channel 'P': the white space around the text of <DESC> is kept: '\\n  text\\n  "
         "'\n"},
        {rule::PADDED_VALUE,
         channel("<DESC>two words</DESC><SIZE> 2 </SIZE><DIM>0\n<DIM_NAME>t</DIM_NAME></DIM>"), ""},
        {rule::PADDED_VALUE,
         camera("<Float Name=\" F\"><ToolTip>T </ToolTip><Description> </Description><PvRename Name=\"V\t\"/>"
                "</Float>"),
         "1:9 padded-value: feature ' F': the white space around the Name of <Float> is kept: ' F'\n"
         "1:26 padded-value: feature ' F': the white space around the text of <ToolTip> is kept: 'T '\n"
         "1:47 padded-value: feature ' F': the white space around the text of <Description> is kept: ' '\n"
         "1:75 padded-value: feature ' F': the white space around the Name of <PvRename> is kept: 'V '\n"},
        {rule::PADDED_VALUE,
         camera("<Float  Name = \"F G\" >\n<ToolTip>two words</ToolTip>\n<PvRename Name=\"V\"/>\n</Float>\n"),
         ""},
        // A non-breaking blank, and one without width
        {rule::PADDED_VALUE, event("<SBLOCK>S\xC2\xA0</SBLOCK><SBLOCK>\xE2\x80\x8BT</SBLOCK>"),
         "1:27 padded-value: entry 4, server block 'S\\xC2\\xA0': the white space around the text of "
         "<SBLOCK> is "
         "kept: 'S\\xC2\\xA0'\n"
         "1:46 padded-value: entry 4, server block '\\xE2\\x80\\x8BT': the white space around the text of "
         "<SBLOCK> is kept: '\\xE2\\x80\\x8BT'\n"},
        {rule::PADDED_VALUE, event("<SBLOCK>S\xC2\xA0T\xC3\xA0</SBLOCK><SBLOCK>\xE2\x82\xAC</SBLOCK>"), ""},
        {rule::FOREIGN_TEXT, camera("<Float Name=\"F\"><ToolTip/></Float>"), ""},
        {rule::FOREIGN_TEXT, camera("<Float Name=\"F\"><ToolTip/><Description>D</Description></Float>"),
         "1:25 foreign-text: feature 'F': the empty <ToolTip> takes the next text of the file, 'D'\n"
         "1:35 lost-text: feature 'F': the text 'D' of <Description> gets lost: the reader keeps nothing\n"},
        {rule::FOREIGN_TEXT, camera("<Float Name=\"F\"><PvRename/><Value Name=\"V\"/></Float>"),
         "1:25 foreign-text: feature 'F': the empty <PvRename> takes the next text or Name of the file, "
         "'V'\n"},
        {rule::FOREIGN_TEXT,
         camera(
             "<Enumeration Name=\"F\"><ToolTip>T</ToolTip><EnumEntry><ToolTip/></EnumEntry></Enumeration>"),
         "1:62 foreign-text: feature 'F': <ToolTip> of another element takes its text away\n"},
        {rule::FOREIGN_TEXT,
         camera("<Float Name=\"F\"/><Category Name=\"c\"><ToolTip>of c</ToolTip></Category>"),
         "1:45 foreign-text: feature 'F': <ToolTip> of another element gives it 'of c'\n"},
        {rule::FOREIGN_TEXT,
         camera("<Category Name=\"c\"><ToolTip>of c</ToolTip></Category><Float Name=\"F\"><ToolTip>of "
                "F</ToolTip></Float>"),
         ""},
        {rule::NOT_A_NUMBER, channel("<SIZE>many</SIZE>"),
         "1:56 not-a-number: channel 'P': <SIZE>: 'many' is no number; the reader keeps 0\n"},
        {rule::NOT_A_NUMBER, channel("<SIZE></SIZE>"),
         "1:56 not-a-number: channel 'P': <SIZE>: there is no number; the reader keeps 1\n"},
        {rule::NOT_A_NUMBER, event("<TMASK>12x</TMASK>"),
         "1:27 not-a-number: entry 4: <TMASK>: '12x' is no number; the reader keeps 0\n"},
        {rule::NOT_A_NUMBER, entry("<DABS>none</DABS>"),
         "1:54 not-a-number: entry 1: <DABS>: 'none' is no number; the reader keeps 0\n"},
        {rule::NOT_A_NUMBER, channel("<SIZE>+3</SIZE>"), ""},
        {rule::NOT_A_NUMBER, bits_channel("<bitTitle bit=\"\">on</bitTitle>"),
         "1:60 not-a-number: channel 'P': 'bit' of <bitTitle>: there is no number; the reader keeps 0\n"},
        {rule::NOT_A_NUMBER, channel("<SIZE>2</SIZE><SIZE/>"),
         "1:70 not-a-number: channel 'P': <SIZE>: there is no number; the value before it stays\n"},
        {rule::NOT_A_NUMBER, channel("<EVTYPE>env</EVTYPE><DTYPE>BLOCK_BPM_2010</DTYPE>"),
         "1:56 not-a-number: channel 'P': <EVTYPE>: 'env' is no number: write 16 for env; the reader "
         "keeps 0\n"
         "1:76 not-a-number: channel 'P': <DTYPE>: 'BLOCK_BPM_2010' is no number: write 2147483712 for "
         "BLOCK_BPM_2010; the reader keeps 0\n"},
        {rule::NOT_A_NUMBER, "<BMR><EVENT><TYPE>ZEB5_EV_ENV</TYPE></EVENT></BMR>",
         "1:13 not-a-number: entry ZEB5_EV_ENV: <TYPE>: 'ZEB5_EV_ENV' is no number: write 4 for ZEB5_EV_ENV; "
         "the reader keeps 0\n"},
        {rule::NUMBER_TAIL, channel("<SIZE>2O48</SIZE>"),
         "1:56 number-tail: channel 'P': <SIZE>: 'O48' after the number is ignored; the reader keeps 2\n"},
        {rule::NUMBER_TAIL, channel("<SIZE>1.5</SIZE>"),
         "1:56 number-tail: channel 'P': <SIZE>: '.5' after the number is ignored; the reader keeps 1\n"},
        {rule::NUMBER_TAIL, entry("<DABS>0.5 V</DABS>"),
         "1:54 number-tail: entry 1: <DABS>: ' V' after the number is ignored; the reader keeps 0.5\n"},
        {rule::NUMBER_TAIL, channel("<SIZE>2048\n</SIZE>"), ""},
        // A number that names its record is shown like a text: nothing reaches the terminal as it is
        {rule::NUMBER_TAIL, channel("<BIT>1\xC2\x9Bm</BIT>"),
         "1:56 number-tail: channel 'P', bit 1\\xC2\\x9Bm: <BIT>: '\\xC2\\x9Bm' after the number is ignored; "
         "the reader keeps 1\n"},
        {rule::NUMBER_TAIL,
         "<ENVINDEXDICT><CHANNEL><INDEX>1\xC2\x9Bm</INDEX><PROP>P</PROP></CHANNEL></ENVINDEXDICT>",
         "1:24 number-tail: entry 1\\xC2\\x9Bm: <INDEX>: '\\xC2\\x9Bm' after the number is ignored; the "
         "reader keeps 1\n"},
        {rule::NUMBER_TAIL, channel("<SIZE>2O48</SIZE><SIZE>4</SIZE>"),
         "1:56 number-tail: channel 'P': <SIZE>: 'O48' after the number is ignored; it reads as 2\n"
         "1:73 repeated-element: channel 'P': <SIZE> replaces the value that was read before; the first is "
         "at 1:56\n"},
        {rule::HEX_NUMBER, channel("<EVTYPE>0x10</EVTYPE>"),
         "1:56 hex-number: channel 'P': <EVTYPE>: '0x10' is in base 16, but base 10 is read; the reader "
         "keeps 0\n"},
        {rule::HEX_NUMBER, event("<TMASK>0X10</TMASK>"),
         "1:27 hex-number: entry 4: <TMASK>: '0X10' is no number: base 16 needs a small x; the reader keeps "
         "0\n"},
        {rule::HEX_NUMBER, event("<TMASK>0x10</TMASK>"), ""},
        {rule::DECIMAL_COMMA, entry("<DABS>0,5</DABS>"),
         "1:54 decimal-comma: entry 1: <DABS>: '0,5' has a decimal comma, at which reading ends; the reader "
         "keeps 0\n"},
        {rule::DECIMAL_COMMA, channel("<SIZE>1,5</SIZE>"),
         "1:56 decimal-comma: channel 'P': <SIZE>: '1,5' has a decimal comma, at which reading ends; the "
         "reader keeps 1\n"},
        {rule::DECIMAL_COMMA, entry("<DABS>0.5</DABS>"), ""},
        {rule::NUMBER_RANGE, channel("<DB_KEY>99999999999</DB_KEY>"),
         "1:56 number-range: channel 'P': <DB_KEY>: '99999999999' does not fit into 32 bits; the reader "
         "keeps 1215752191\n"},
        {rule::NUMBER_RANGE, channel("<DB_KEY>2147483648</DB_KEY>"),
         "1:56 number-range: channel 'P': <DB_KEY>: '2147483648' does not fit into 32 bits; the reader keeps "
         "-2147483648\n"},
        {rule::NUMBER_RANGE, channel("<BIT>" + std::string(41, '3') + "</BIT>"),
         "1:56 number-range: channel 'P', bit 3333333333333333333333333333333333333333...: <BIT>: "
         "'3333333333333333333333333333333333333333...' does not fit into 32 bits; the reader keeps -1\n"},
        {rule::NUMBER_RANGE, event("<TMASK>4294967296</TMASK>"),
         "1:27 number-range: entry 4: <TMASK>: '4294967296' does not fit into 32 bits; the reader keeps 0\n"},
        {rule::NUMBER_RANGE, event("<TMASK>0x1ffffffff</TMASK>"),
         "1:27 number-range: entry 4: <TMASK>: '0x1ffffffff' does not fit into 32 bits; the reader keeps "
         "4294967295\n"},
        {rule::NUMBER_RANGE, entry("<DABS>1e99</DABS>"),
         "1:54 number-range: entry 1: <DABS>: '1e99' does not fit into a float; the reader keeps inf\n"},
        {rule::NUMBER_RANGE, entry("<DABS>3e38</DABS>"), ""},
        {rule::NOT_A_NUMBER, entry("<DABS>nan</DABS>"),
         "1:54 not-a-number: entry 1: <DABS>: 'nan' is no number; the reader keeps nan\n"},
        {rule::NOT_A_NUMBER, entry("<DABS>-information</DABS>"),
         "1:54 not-a-number: entry 1: <DABS>: '-information' is no number; the reader keeps -inf\n"},
        {rule::NUMBER_RANGE,
         channel("<DB_KEY>2147483647</DB_KEY><DTYPE>-2147483584</DTYPE><EVTYPE>4</EVTYPE>"), ""},
        {rule::NUMBER_RANGE, channel("<DTYPE>2147483712</DTYPE>"), ""},
        {rule::NUMBER_RANGE, matrix_channel("<lastIndex>2147483647</lastIndex>"),
         "1:67 number-range: channel 'P': <lastIndex>: '2147483647' does not fit into 32 bits; the reader "
         "keeps -2147483648\n"},
        {rule::VALUE_RANGE, channel("<SIZE>0</SIZE>"),
         "1:56 value-range: channel 'P': <SIZE>: '0' makes no sense: it should be at least 1; the reader "
         "keeps 0\n"},
        {rule::VALUE_RANGE, channel("<BIT>32</BIT>"),
         "1:56 value-range: channel 'P', bit 32: <BIT>: '32' makes no sense: it should be from 0 to 31; the "
         "reader keeps 32\n"},
        {rule::VALUE_RANGE, channel("<BIT>-1</BIT>"),
         "1:56 value-range: channel 'P', bit -1: <BIT>: '-1' makes no sense: it should be from 0 to 31; the "
         "reader keeps -1\n"},
        {rule::VALUE_RANGE, bits_channel("<bitTitle bit=\"32\"/>"),
         "1:60 value-range: channel 'P', bit 32: 'bit' of <bitTitle>: '32' makes no sense: it should be from "
         "0 to 31; the reader keeps 32\n"},
        {rule::VALUE_RANGE, matrix_channel("<lastIndex>-1</lastIndex>"),
         "1:67 value-range: channel 'P': <lastIndex>: '-1' makes no sense: it should be at least 0; the "
         "reader keeps 0\n"},
        {rule::VALUE_RANGE, entry("<DREL>-0.5</DREL>"),
         "1:54 value-range: entry 1: <DREL>: '-0.5' makes no sense: it should be at least 0; the reader "
         "keeps -0.5\n"},
        {rule::VALUE_RANGE, "<BMR><EVENT><TYPE>32</TYPE></EVENT></BMR>",
         "1:13 value-range: entry 32: <TYPE>: '32' makes no sense: it should be from 0 to 31; the reader "
         "keeps 32\n"},
        {rule::FEWER_RECORDS, "<BMR><EVENT><TYPE>33</TYPE><TMASK>1</TMASK></EVENT></BMR>",
         "1:13 fewer-records: entry 33: <TYPE>: '33' makes no sense: it should be from 0 to 31; the reader "
         "makes nothing of it, and ignores what belongs to it\n"},
        {rule::VALUE_RANGE, channel("<SIZE>1</SIZE><BIT>31</BIT><BIT>0</BIT>"), ""},
        {rule::VALUE_RANGE, channel("<COUNT>-1</COUNT><DIM>-1<STAT>-1</STAT></DIM>"),
         "1:56 value-range: channel 'P': <COUNT>: '-1' makes no sense: it should be at least 0; the reader "
         "keeps -1\n"
         "1:73 value-range: channel 'P', dimension -1: <DIM>: '-1' makes no sense: it should be at least 0; "
         "the "
         "reader keeps -1\n"
         "1:80 value-range: channel 'P', dimension -1, statistic -1: <STAT>: '-1' makes no sense: it should "
         "be "
         "at least 0; the reader keeps -1\n"},
        {rule::VALUE_RANGE, channel("<COUNT>0</COUNT><DB_KEY>-1</DB_KEY><DIM>0<STAT>0</STAT></DIM>"), ""},
        {rule::VALUE_RANGE, matrix_channel("<dimension id=\"-1\"/>"),
         "1:67 value-range: channel 'P', dimension -1: 'id' of <dimension>: '-1' makes no sense: it should "
         "be "
         "at least 0; the reader keeps -1\n"},
        {rule::VALUE_RANGE, "<ENVINDEXDICT><CHANNEL><INDEX>-1</INDEX><PROP>P</PROP></CHANNEL></ENVINDEXDICT>",
         "1:24 value-range: entry -1: <INDEX>: '-1' makes no sense: it should be at least 0; the reader "
         "keeps "
         "-1\n"},
        {rule::VALUE_RANGE, "<ENVINDEXDICT><CHANNEL><INDEX>0</INDEX><PROP>P</PROP></CHANNEL></ENVINDEXDICT>",
         ""},
        {rule::VALUE_RANGE, event("<MINTIMEUSEC>1000000</MINTIMEUSEC>"),
         "1:27 value-range: entry 4: <MINTIMEUSEC>: '1000000' makes no sense: it should be from 0 to 999999; "
         "the reader keeps 1000000\n"},
        {rule::VALUE_RANGE, event("<MINTIMEUSEC>0xffffffff</MINTIMEUSEC><MINTIMESEC>-1</MINTIMESEC>"),
         "1:27 value-range: entry 4: <MINTIMEUSEC>: '0xffffffff' makes no sense: it should be from 0 to "
         "999999; "
         "the reader keeps 4294967295\n"
         "1:64 value-range: entry 4: <MINTIMESEC>: '-1' makes no sense: it should be at least 0; the reader "
         "keeps 4294967295\n"},
        {rule::VALUE_RANGE, event("<MINTIMEUSEC>999999</MINTIMEUSEC><MINTIMESEC>4294967295</MINTIMESEC>"),
         ""},
        {rule::VALUE_RANGE, matrix_channel("<lastIndex>0</lastIndex>"), ""},
        {rule::UNNAMED_TYPE, channel("<EVTYPE>268435456</EVTYPE>"),
         "1:56 unnamed-type: channel 'P': <EVTYPE>: no name is known for event type 28\n"},
        {rule::UNNAMED_TYPE, channel("<DTYPE>536870912</DTYPE>"),
         "1:56 unnamed-type: channel 'P': <DTYPE>: no name is known for block type 29\n"},
        {rule::UNNAMED_TYPE, channel("<EVTYPE>-1</EVTYPE><DTYPE>-1</DTYPE>"),
         "1:56 unnamed-type: channel 'P': <EVTYPE>: no name is known for event types 28, 29, 30, 31\n"
         "1:75 unnamed-type: channel 'P': <DTYPE>: no name is known for block types 32, 54, 55, 56, 57, 58, "
         "59\n"},
        {rule::UNNAMED_TYPE, matrix_channel("<evType>536870928</evType>"),
         "1:67 unnamed-type: channel 'P': <evType>: no name is known for event type 29\n"},
        {rule::UNNAMED_TYPE, "<BMR><EVENT><TYPE>29</TYPE></EVENT></BMR>",
         "1:13 unnamed-type: entry 29: <TYPE>: no name is known for event type 29\n"},
        {rule::UNNAMED_TYPE, "<BMR><EVENT><TYPE>27</TYPE></EVENT></BMR>", ""},
        {rule::UNNAMED_TYPE, channel("<EVTYPE>134217744</EVTYPE><DTYPE>512</DTYPE>"), ""},
        {rule::NOT_WRITABLE, channel("<DESC><![CDATA[a<b]]></DESC>"),
         "1:56 not-writable: channel 'P': <DESC>: a writer escapes nothing, so '<' is not read back from "
         "what it writes\n"},
        {rule::NOT_WRITABLE, channel("<DESC>&amp;</DESC>"),
         "1:56 not-writable: channel 'P': <DESC>: a writer escapes nothing, so '&' is not read back from "
         "what it writes\n"},
        {rule::NOT_WRITABLE, channel("<DESC>\xC3\xA4</DESC>"),
         "1:56 not-writable: channel 'P': <DESC>: a writer labels UTF-8 as ISO-8859-1, so '"
         "\xC3"
         "\xA4"
         "' is read back as other characters\n"},
        {rule::NOT_WRITABLE, channel("<DESC>&#13;</DESC>"),
         "1:56 padded-value: channel 'P': the white space around the text of <DESC> is kept: '\\r'\n"
         "1:56 not-writable: channel 'P': <DESC>: a writer escapes nothing, so '\\r' is not read back from "
         "what it writes\n"},
        {rule::NOT_WRITABLE, entry("<DABS>0.0000001</DABS>"),
         "1:54 not-writable: entry 1: <DABS>: a writer keeps six decimals: 1.00000001e-07 becomes "
         "0.000000\n"},
        {rule::NOT_WRITABLE, event("<SBLOCK><![CDATA[a<b]]></SBLOCK>"), ""},
        {rule::NOT_WRITABLE, channel("<DESC>a > b</DESC>"), ""},
        {rule::NOT_WRITABLE, entry("<DABS>0.000001</DABS>"), ""},
    };
}
