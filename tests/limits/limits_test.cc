/// Limits of a document that the XML library reads: what goes beyond each is refused, and what honest
/// documents ask for is not.

#include "limits/hashed_names.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "support/every_reader.h"
#include "support/lane.h"
#include "support/reader_forms.h"
#include "support/repeated_text.h"
#include "support/sanitized.h"

namespace {

using namespace zeb5;

constexpr char too_much_work[] = "This document takes more work than its length allows";
constexpr char too_much_memory[] = "This document takes more memory than its length allows";
constexpr char too_many_names[] = "This document has too many names";
constexpr char too_large_model[] = "A content model of this document has too many names";

/// The reader's reason for refusing a document, without the place where it is; "" when it reads up to the
/// end.
std::string report(const std::string &document) {
    const read_outcome seen = read_either(
        READ_MEMORY, document,
        [](char *text) {
            std::vector<chan_descr_2010 *> list;
            const int result = parse_descr_list_read(text, &list, false, true);
            clean_chan_desr_list(&list);
            return result;
        },
        [](char *) { return 0; });
    const std::size_t last = seen.err.rfind("\nFatal Error at ");
    if (last == std::string::npos)
        return "";
    const std::size_t begin = seen.err.find("): ", last) + 3;
    return seen.err.substr(begin, seen.err.find('\n', begin) - begin);
}

/// Whether the reader of camera files reads a document.
bool is_read_as_camera_file(const std::string &document) {
    temporary_file file(document);
    std::vector<ZEB5GigEFeature *> list;
    bool failed = true;
    capture([&] { failed = zeb5_fill_gige_descr(file.c_path(), &list); });
    zeb5_clean_gige_descr(&list);
    return !failed;
}

std::string document(const std::string &declarations, const std::string &content = "") {
    return "<!DOCTYPE CHANDESCRIPTIONS [<!ELEMENT CHANDESCRIPTIONS ANY>" + declarations +
           "]><CHANDESCRIPTIONS>" + content + "</CHANDESCRIPTIONS>";
}

// Work. Each row makes a parser do one thing, so often that nothing else counts.

/// A thing that a document asks for `count` times, in few bytes.
struct work_case {
    const char *what;
    price of_one;
    std::string (*make_document)(std::size_t count);
};

/// `declarations`, and content that has `text` so many times by entities.
std::string in_content(const std::string &declarations, std::size_t count, const std::string &text) {
    const std::size_t in_entity = 400;
    return document(declarations + "<!ENTITY e \"" + times(in_entity, text) + "\">",
                    times(count / in_entity, "&e;"));
}

constexpr std::size_t in_entity_of_declarations = 20;

/// Declarations so many times by parameter entities, behind others.
std::string in_declarations(const std::string &declarations, std::size_t count, const std::string &text) {
    return document(declarations + "<!ENTITY % p \"" + times(in_entity_of_declarations, text) + "\">" +
                    times(count / in_entity_of_declarations, "%p;"));
}

const std::string hundred_values = "v" + numbered(100, "|v@");

/// The price of a look-up among i0 to i999.
price among_thousand_identifiers() {
    hashed_names names;
    for (int i = 0; i < 1000; ++i) {
        const std::string name = "i" + std::to_string(i);
        names.add(std::u16string(name.begin(), name.end()).c_str());
    }
    return names.look_up();
}

const work_case work_cases[] = {
    {"declarations",
     declaration_price + compared_name_price + compared_character_price + 14 * character_price +
         164'032 / bytes_per_price / in_entity_of_declarations,
     [](std::size_t n) { return in_declarations("", n, "<!ENTITY n ''>"); }},
    {"elements", element_price, [](std::size_t n) { return in_content("<!ELEMENT a EMPTY>", n, "<a/>"); }},
    {"attributes", element_price + declared_attribute_price + attribute_price + character_price,
     [](std::size_t n) {
         return in_content("<!ELEMENT a EMPTY><!ATTLIST a b CDATA #IMPLIED>", n, "<a b=''/>");
     }},
    {"attributes that are declared", element_price + 200 * declared_attribute_price,
     [](std::size_t n) {
         return in_content("<!ELEMENT a EMPTY><!ATTLIST a" + numbered(200, " b@ CDATA #IMPLIED") + ">", n,
                           "<a/>");
     }},
    {"characters of defaults",
     element_price + declared_attribute_price + attribute_price + 1001 * character_price,
     [](std::size_t n) {
         return in_content("<!ELEMENT a EMPTY><!ATTLIST a b CDATA '" + times(1000, "x") + "'>", n, "<a/>");
     }},
    {"names of defaults", element_price + declared_attribute_price + attribute_price + 1000 * character_price,
     [](std::size_t n) {
         return in_content("<!ELEMENT a EMPTY><!ATTLIST a " + times(1000, "b") + " CDATA ''>", n, "<a/>");
     }},
    {"lists of attributes that are declared", 200 * declared_attribute_price,
     [](std::size_t n) {
         return in_declarations("<!ELEMENT a EMPTY><!ATTLIST a" + numbered(200, " b@ CDATA #IMPLIED") + ">",
                                n, "<!ATTLIST a>");
     }},
    {"expansions in content", 164'032 / bytes_per_price,
     [](std::size_t n) {
         return document("<!ENTITY a 'x'><!ENTITY b '" + times(100, "&a;") + "'>", times(n / 101, "&b;"));
     }},
    {"expansions in attributes", 164'032 / bytes_per_price,
     [](std::size_t n) {
         return document("<!ATTLIST CHANDESCRIPTIONS a CDATA #IMPLIED><!ENTITY a 'x'><!ENTITY b '" +
                             times(100, "&a;") + "'>",
                         "<CHANDESCRIPTIONS a='" + times(n / 101, "&b;") + "'/>");
     }},
    {"expansions in declarations", 164'032 / bytes_per_price,
     [](std::size_t n) {
         return document("<!ENTITY % a ' '><!ENTITY % b '" + times(100, "&#37;a;") + "'>" +
                         times(n / 101, "%b;"));
     }},
    {"characters of entities", character_price,
     [](std::size_t n) {
         return document("<!ENTITY a '" + times(8000, "x") + "'>", times(n / 8000, "&a;"));
     }},
    {"blanks between declarations", character_price,
     [](std::size_t n) {
         return document("<!ENTITY % a '" + times(8000, " ") + "'>" + times(n / 8000, "%a;"));
     }},
    {"comments between declarations", character_price,
     [](std::size_t n) {
         return document("<!ENTITY % a '<!--" + times(8000, "c") + "-->'>" + times(n / 8000, "%a;"));
     }},
    {"instructions between declarations", character_price,
     [](std::size_t n) {
         return document("<!ENTITY % a '<?p " + times(8000, "i") + "?>'>" + times(n / 8000, "%a;"));
     }},
    {"values to choose from", 100 * 100 * compared_value_price + declaration_price + report_price,
     [](std::size_t n) {
         return in_declarations("<!ELEMENT a EMPTY>", n, "<!ATTLIST a b (" + hundred_values + ") #IMPLIED>");
     }},
    {"content models", 199 * 199 * validated_model_price + declaration_price,
     [](std::size_t n) {
         return in_declarations(numbered(100, "<!ELEMENT v@ EMPTY>") + "<!ELEMENT v EMPTY>", n,
                                "<!ELEMENT a (" + hundred_values.substr(2) + ")>");
     }},
    {"comments", element_price + 7 * character_price,
     [](std::size_t n) { return in_content("", n, "<!---->"); }},
    {"instructions", element_price + 5 * character_price,
     [](std::size_t n) { return in_content("", n, "<?p?>"); }},
    {"names in an attribute of an enumerated type", 391 * listed_character_price + 2 * character_price,
     [](std::size_t n) {
         return document("<!ELEMENT a EMPTY><!ATTLIST a b (" + hundred_values + ") #IMPLIED><!ENTITY e '" +
                             times(1000, "v ") + "'>",
                         "<a b='" + times(n / 1000, "&e;") + "'/>");
     }},
    {"references to identifiers", attribute_price + among_thousand_identifiers() + 3 * character_price,
     [](std::size_t n) {
         return document("<!ELEMENT a EMPTY><!ATTLIST a i ID #IMPLIED r IDREFS #IMPLIED><!ENTITY e '" +
                             times(1000, "i0 ") + "'>",
                         numbered(1000, "<a i='i@'/>") + "<a r='" + times(n / 1000, "&e;") + "'/>");
     }},
};

TEST(Limits, OfWorkAreAtTheSumOfThePrices) {
    for (const work_case &row : work_cases) {
        const auto most = static_cast<std::size_t>(free_work / row.of_one);
        EXPECT_EQ(report(row.make_document(most * 7 / 10)), "") << row.what;
        const std::string beyond = row.make_document(most * 11 / 10);
        EXPECT_LT(beyond.size() * work_per_byte, free_work) << row.what;
        EXPECT_EQ(report(beyond), too_much_work) << row.what;
    }
}

TEST(Limits, OfWorkGrowWithTheDocument) {
    const std::string hostile = in_content("<!ELEMENT a EMPTY>", 2 * free_work / element_price, "<a/>");
    EXPECT_EQ(report(hostile), too_much_work);
    const std::string comment = "<!--" + std::string(2 * free_work / work_per_byte, 'c') + "-->";
    EXPECT_EQ(report(comment + hostile), "");
    EXPECT_EQ(report(comment.substr(0, comment.size() / 4) + "-->" + hostile), too_much_work);
}

/// `text` with each of so many names that the parser's hash function does not tell apart in place of '@'.
std::string alike(std::size_t count, const std::string &text) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        std::string name;
        for (int block = 0; block < 11; ++block)
            name += i >> block & 1 ? "az" : "bT"; // 38 * 'a' + 'z' is 38 * 'b' + 'T'
        all += replace_all(text, "@", name);
    }
    return all;
}

TEST(Limits, OfLookUpsGrowWithTheNamesInOneList) {
    constexpr std::size_t names = 2000;
    constexpr price look_up = names * (compared_name_price + 22 * compared_character_price);
    constexpr std::size_t longest_document = 150'000;
    constexpr std::size_t many = 11 * longest_document * work_per_byte / look_up / 10;
    const auto by_entities = [](const std::string &text) {
        return "<!ENTITY e \"" + times(100, text) + "\"><!ENTITY f '" + times(100, "&e;") + "'>";
    };
    const std::string uses = times(many / 10'000 + 1, "&f;");
    const std::string name = alike(1, "@");
    const std::string prefix(100, 'x'); // the parser compares names in a model, it does not hash them
    const std::string element = by_entities("<" + name + "/>");
    const std::string references = by_entities(name + " ");
    const std::pair<const char *, std::string> documents[] = {
        {"declared elements", document(alike(names, "<!ELEMENT @ EMPTY>") + element, uses)},
        {"elements of content models",
         document(alike(names, "<!ELEMENT @ ANY>") + "<!ENTITY % p '" + alike(100, "<!ELEMENT m (a|@)>") +
                  "'>" + times(many / 100, "%p;"))},
        {"declared attributes",
         document("<!ELEMENT a EMPTY><!ATTLIST a" + alike(300, " @ CDATA #IMPLIED") + "><!ENTITY e \"<a" +
                      alike(300, " @=''") + "/>\"><!ENTITY f '" + times(100, "&e;") + "'>",
                  times(200, "&f;"))},
        {"identifiers",
         document("<!ELEMENT a EMPTY><!ATTLIST a i ID #IMPLIED r IDREFS #IMPLIED>" + references,
                  alike(names, "<a i='@'/>") + "<a r='" + uses + "'/>")},
        {"unparsed entities",
         document("<!NOTATION n SYSTEM 'n'>" + alike(names, "<!ENTITY @ SYSTEM 's' NDATA n>") +
                      "<!ELEMENT a EMPTY><!ATTLIST a r ENTITIES #IMPLIED>" + references,
                  "<a r='" + uses + "'/>")},
        {"identifiers that are new, all in one attribute",
         document("<!ELEMENT a EMPTY><!ATTLIST a r IDREFS #IMPLIED><!ENTITY n '" + alike(1300, "@ ") +
                      "'><!ENTITY e '" + times(10, "&n;") + "'>",
                  "<a r='" + times(8, "&e;") + "'/>")},
        {"children in content models",
         document(numbered(250, "<!ELEMENT " + prefix + "@ EMPTY>") + "<!ELEMENT m (#PCDATA" +
                      numbered(250, "|" + prefix + "@") + ")*>" + by_entities("<" + prefix + "249/>"),
                  "<m>" + times(20, "&f;") + "</m>")},
        {"entities", document(alike(names, "<!ENTITY @ ''>") + by_entities("&#38;" + name + ";"), uses)},
    };
    for (const auto &[what, text] : documents) {
        EXPECT_LT(text.size(), longest_document) << what;
        EXPECT_EQ(report(text), too_much_work) << what;
    }
    // The tree's parser does not mind attribute lists of elements that are never declared
    EXPECT_FALSE(is_read_as_camera_file(document(alike(names, "<!ATTLIST @>") + element, uses)));
    // A pull reader ends where a document with declarations has a name that they do not have
    EXPECT_FALSE(is_read_as_camera_file(document(element, alike(names, "<@/>") + uses)));
    EXPECT_FALSE(
        is_read_as_camera_file(document(by_entities("<a" + alike(33, " @=''") + "/>"), times(200, "&f;"))));
}

/// An attribute in which so many references to entities are missing.
std::string missing_entities(std::size_t count) {
    return document("%p;<!ATTLIST CHANDESCRIPTIONS a CDATA #IMPLIED><!ENTITY e '" + times(1000, "&x;") + "'>",
                    "<CHANDESCRIPTIONS a='" + times(count / 1000, "&e;") + "'/>");
}

TEST(Limits, OfReportsAreThoseOfWork) {
    const std::size_t most = free_work / report_price;
    EXPECT_NE(report(missing_entities(most * 7 / 10)), too_much_work);
    EXPECT_EQ(report(missing_entities(most * 11 / 10)), too_much_work);
}

TEST(Limits, OfMemoryAreForATree) {
    const auto text = [](std::size_t bytes) { // which takes two bytes for each character
        return document("<!ENTITY a '" + times(8000, "x") + "'>", times(bytes / 2 / 8000, "&a;<i/>"));
    };
    EXPECT_TRUE(is_read_as_camera_file(text(free_memory / 2)));
    EXPECT_FALSE(is_read_as_camera_file(text(2 * free_memory)));
    EXPECT_TRUE(is_read_as_camera_file("<!--" + times(2 * free_memory / memory_per_byte, "c") + "-->" +
                                       text(2 * free_memory)));
}

TEST(Limits, OfMemoryAreForAnAttribute) {
    EXPECT_EQ(
        report(document("<!ATTLIST CHANDESCRIPTIONS a CDATA #IMPLIED><!ENTITY a '" + times(8000, "x") + "'>",
                        "<CHANDESCRIPTIONS a='" + times(2000, "&a;") + "'/>")),
        too_much_memory);
}

TEST(Limits, OfStatesOfAContentModel) {
    const auto with_states = [](std::size_t groups) { // 2 to the power of their number
        return document("<!ELEMENT a EMPTY><!ELEMENT b EMPTY><!ELEMENT m ((a|b)*,a" +
                            times(groups, ",(a|b)") + ")>",
                        "<m>" + times(100, "<a/>") + "</m>");
    };
    EXPECT_EQ(report(with_states(11)), "");
    EXPECT_EQ(report(with_states(14)), too_large_model);
    EXPECT_EQ(report(with_states(30)), too_large_model);
}

TEST(Limits, OfNamesOfElements) {
    const auto names = [](std::size_t count) {
        return "<CHANDESCRIPTIONS><!---->" + numbered(count - 1, "<a@/>") + "</CHANDESCRIPTIONS>";
    };
    const way_in_use used(WITHOUT_LANE);
    EXPECT_EQ(report(names(most_names)), "");
    EXPECT_EQ(report(names(most_names + 1)), too_many_names);
    EXPECT_TRUE(is_read_as_camera_file(names(most_names)));
    EXPECT_FALSE(is_read_as_camera_file(names(most_names + 1)));
}

TEST(Limits, OfNamesAreThoseOfAttributesTooForATree) {
    const auto names =
        [](std::size_t count) { // two of elements, and one that stands before each of the others
            return "<CHANDESCRIPTIONS>" + numbered(count - 3, "<a n=''/><a n='' a@=''/>") +
                   "</CHANDESCRIPTIONS>";
        };
    const way_in_use used(WITHOUT_LANE);
    EXPECT_TRUE(is_read_as_camera_file(names(most_names)));
    EXPECT_FALSE(is_read_as_camera_file(names(most_names + 1)));
    EXPECT_EQ(report(names(most_names + 1)), "");
}

TEST(Limits, OfContentModels) {
    const auto model = [](std::size_t nodes) {
        return document("<!ELEMENT a EMPTY><!ELEMENT m " + times(nodes - 1, "(") + "(a)" +
                            times(nodes - 1, ")*") + ">",
                        "<m><a/></m>");
    };
    EXPECT_EQ(report(model(most_model_nodes)), "");
    EXPECT_EQ(report(model(most_model_nodes + 1)), too_large_model);
    EXPECT_TRUE(is_read_as_camera_file(model(100'000)));
}

TEST(Limits, AreNamedWithTheirPlace) {
    std::string text = "<!DOCTYPE CHANDESCRIPTIONS [<!ELEMENT a EMPTY>\n<!ELEMENT m " +
                       times(most_model_nodes + 1, "(") + "a" + times(most_model_nodes + 1, ")*") +
                       ">\n]>\n<CHANDESCRIPTIONS/>";
    std::vector<chan_descr_2010 *> list;
    int result = 0;
    const captured seen = capture([&] { result = parse_descr_list_read(text.data(), &list, false, true); });
    EXPECT_EQ(result, 2);
    EXPECT_EQ(seen.err,
              "\nFatal Error at (file my_mem_info, line 2, char 1554): A content model of this document "
              "has too many names\nscanFirst() failed\n");
}

/// Starts a document and takes its steps; returns the result of the start.
int read_to_the_end(SAX_File_Parser &parser, temporary_file &file) {
    const int started = parser.start(file.c_path());
    while (started == 0 && parser.parse(nullptr, nullptr) == 0)
        ;
    return started;
}

TEST(Limits, BeginAnewWithEachStartOfAParser) {
    temporary_file file(document("<!ENTITY a 'x'><!ENTITY b '" + times(10, "&a;") +
                                 "'><!ATTLIST CHANDESCRIPTIONS a CDATA '" + times(1000, "&b;") + "'>"));
    SAX_File_Parser parser;
    for (int i = 0; i < 5; ++i) // each takes a third of what is free
        EXPECT_EQ(read_to_the_end(parser, file), 0) << i;
}

TEST(Limits, LetAParserStartAgainThatRefusedADocument) {
    temporary_file much_memory(document("<!ATTLIST CHANDESCRIPTIONS a CDATA '" + times(9'000'000, "x") +
                                            "'><!ENTITY a '" + times(8000, "x") + "'>",
                                        "<CHANDESCRIPTIONS a='" + times(2000, "&a;") + "'/>"));
    temporary_file refused(document("<!ENTITY a '" + times(8000, "x") +
                                    "'><!ATTLIST CHANDESCRIPTIONS a CDATA '" + times(2000, "&a;") + "'>"));
    temporary_file good("<CHANDESCRIPTIONS/>");
    const captured seen = capture([&] {
        SAX_File_Parser parser;
        EXPECT_EQ(read_to_the_end(parser, refused), 1);
        EXPECT_EQ(read_to_the_end(parser, good), 0);
        EXPECT_EQ(read_to_the_end(parser, much_memory), 0);
    });
    EXPECT_EQ(seen.err, "\nFatal Error at (file " + refused.path() +
                            ", line 1, char 11263): " + too_much_memory + "\nscanFirst() failed\n");
}

// What honest documents ask for, in a list as long as any; under a sanitizer, which is after other faults, in
// a shorter one

constexpr std::size_t channels_of_a_list = is_sanitized ? 2'000 : 20'000;

const std::string elements_of_channels =
    "<!ELEMENT CHANNEL ANY><!ELEMENT PROP ANY><!ELEMENT UNITS ANY><!ELEMENT BIT ANY><!ELEMENT BIT_NAME ANY>"
    "<!ELEMENT BIT_DESCR ANY>";

std::string channels(const std::string &declarations, const std::string &more) {
    return document(elements_of_channels + declarations,
                    numbered(channels_of_a_list, "<CHANNEL><PROP>P@</PROP>" + more + "</CHANNEL>"));
}

std::string bits(std::size_t count) {
    return numbered(count, "<BIT>@</BIT><BIT_NAME>B@</BIT_NAME><BIT_DESCR>bit number @</BIT_DESCR>");
}

TEST(Limits, AreNotMetByHonestDocuments) {
    std::string thirteen =
        "<!ELEMENT C (PROP" + times(13, ",BIT") + ")><!ELEMENT PROP ANY><!ELEMENT BIT ANY>";
    const std::pair<const char *, std::string> documents[] = {
        {"default attributes",
         "<!DOCTYPE DAQvariables [<!ELEMENT DAQvariables ANY><!ELEMENT DaqFloat ANY><!ELEMENT orvin ANY>"
         "<!ATTLIST DaqFloat" +
             numbered(5, " a@ CDATA 'value @'") + ">]><DAQvariables>" +
             numbered(channels_of_a_list, "<DaqFloat><orvin>P@</orvin></DaqFloat>") + "</DAQvariables>"},
        {"references to the channel before",
         document(elements_of_channels + "<!ATTLIST CHANNEL i ID #REQUIRED before IDREF #IMPLIED>",
                  numbered(channels_of_a_list, "<CHANNEL i='b@'/><CHANNEL i='c@' before='b@'><PROP>P@</PROP>"
                                               "</CHANNEL>"))},
        {"references to all channels",
         document(elements_of_channels + "<!ELEMENT SET EMPTY><!ATTLIST CHANNEL i ID #REQUIRED>"
                                         "<!ATTLIST SET of IDREFS #IMPLIED>",
                  numbered(channels_of_a_list, "<CHANNEL i='c@_x'><PROP>P@</PROP></CHANNEL>") + "<SET of='" +
                      numbered(channels_of_a_list, "c@_x ") + "'/>")},
        {"a reference to each channel while the parser's table is crowded",
         document(elements_of_channels + "<!ELEMENT SET EMPTY><!ATTLIST CHANNEL i ID #REQUIRED>"
                                         "<!ATTLIST SET of IDREFS #IMPLIED>",
                  numbered(8000, "<CHANNEL i='i@_x'><PROP>P@</PROP></CHANNEL>") +
                      numbered(8000, "<SET of='i@_x'/>"))},
        {"eight dimensions of an entity, with statistics",
         "<!DOCTYPE CHANDESCRIPTIONS [<!ENTITY dims '" +
             times(8, "<DIM>1</DIM><DIM_NAME>d</DIM_NAME><DIM_DESCR>dimension</DIM_DESCR><DIM_UNITS>m</"
                      "DIM_UNITS>" +
                          times(4, "<STAT>1</STAT><STAT_NAME>s</STAT_NAME><STAT_DESCR>mean</STAT_DESCR>"
                                   "<STAT_UNITS>m</STAT_UNITS>")) +
             "'><!ELEMENT CHANDESCRIPTIONS ANY><!ELEMENT CHANNEL ANY><!ELEMENT PROP ANY><!ELEMENT DIM ANY>"
             "<!ELEMENT DIM_NAME ANY><!ELEMENT DIM_DESCR ANY><!ELEMENT DIM_UNITS ANY><!ELEMENT STAT ANY>"
             "<!ELEMENT STAT_NAME ANY><!ELEMENT STAT_DESCR ANY><!ELEMENT STAT_UNITS "
             "ANY>]><CHANDESCRIPTIONS>" +
             numbered(3000, "<CHANNEL><PROP>A/B/C@</PROP>&dims;</CHANNEL>") + "</CHANDESCRIPTIONS>"},
        {"a model that names a child 13 times",
         document(thirteen,
                  numbered(channels_of_a_list, "<C><PROP>P@</PROP>" + times(13, "<BIT>1</BIT>") + "</C>"))},
        {"15 bits of an entity", channels("<!ENTITY bits '" + bits(15) + "'>", "&bits;")},
        {"32 bits of an entity", channels("<!ENTITY bits '" + bits(32) + "'>", "&bits;")},
        {"an entity of 17 references",
         channels("<!ENTITY m 'm'><!ENTITY e '" + times(17, "&m;") + "'>", "<UNITS>&e;</UNITS>")},
        {"a long entity that is not used", channels("<!ENTITY e '" + times(100'000, "x") + "'>", "")},
        {"entities that name each other and are not used",
         channels("<!ENTITY a '&b;'><!ENTITY b '&a;'>", "")},
        {"the degree sign", channels("<!ENTITY deg '&#176;'>", "<UNITS>&deg;C</UNITS>")},
        {"the degree sign in an attribute",
         channels("<!ATTLIST UNITS u CDATA #IMPLIED><!ENTITY deg '&#176;'>", "<UNITS u='&deg;C'/>")},
        {"nothing but references", document("<!ENTITY d 'd'>", times(100'000, "&d;"))},
    };
    for (const auto &[what, text] : documents) {
        EXPECT_EQ(report(text), "") << what;
        const temporary_file file(text);
        std::string address = "file://" + file.path(); // whose length nobody knows before
        std::vector<chan_descr_2010 *> list;
        EXPECT_EQ(parse_descr_list_readf(address.data(), &list, false, true), 0) << what;
        clean_chan_desr_list(&list);
    }
}

} // namespace
