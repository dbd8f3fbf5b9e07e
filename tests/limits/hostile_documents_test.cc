/// What a document of 10,000 bytes may cost a reader at most, whatever stands in it, and that nothing but the
/// document is opened for it.

#include <set>

#include <gtest/gtest.h>

#include "support/read_apart.h"
#include "support/repeated_text.h"
#include "support/sanitized.h"

namespace {

const std::string any = "<!ELEMENT ROOT ANY>";

std::string document(const std::string &declarations, const std::string &content = "") {
    return "<!DOCTYPE ROOT [" + declarations + "]><ROOT>" + content + "</ROOT>";
}

/// An entity of 4,032 characters, in few.
const std::string long_entity = "<!ENTITY d '" + times(252, "x") + "'><!ENTITY e '" + times(16, "&d;") + "'>";

/// An entity `a` of as many elements as may be.
const std::string elements = "<!ENTITY a '" + times(113, "<a/>") + "'>";

/// Entities from `e0` on, each of which refers to the next; the last is `text`.
std::string chain(std::size_t length, const std::string &kind, const std::string &mark,
                  const std::string &text) {
    const auto entity = [&kind](std::size_t number, const std::string &its_text) {
        return "<!ENTITY " + kind + "e" + std::to_string(number) + " '" + its_text + "'>";
    };
    std::string all;
    for (std::size_t i = 0; i + 1 < length; ++i)
        all += entity(i, mark + "e" + std::to_string(i + 1) + ";");
    return all + entity(length - 1, text);
}

/// Elements, and a model of ROOT in which one of them stands once and the others twice.
std::string twice(std::size_t count) {
    const std::string names = numbered(count, "|a", "");
    return "<!ELEMENT a EMPTY>" + numbered(count, "<!ELEMENT a", " EMPTY>") + "<!ELEMENT ROOT (a" + names +
           names + ")*>";
}

/// A model of ROOT with repetitions within repetitions.
std::string repetitions(std::size_t count) {
    return "<!ELEMENT a EMPTY><!ELEMENT ROOT " + times(count, "(") + "a" + times(count, ")*") + ">";
}

/// An identifier, and references to it that have 65,472 characters and those of `more`.
std::string references(const std::string &more) {
    return document(any +
                        "<!ELEMENT a EMPTY><!ATTLIST a b ID #IMPLIED c IDREFS #IMPLIED><!ENTITY e '<a c=\"" +
                        times(511, "i ") + "i\"/>'>",
                    "<a b='i'/>" + times(64, "&e;") + more);
}

/// An attribute, an entity `d` of digits, and one, `s`, of as many steps as may be.
std::string long_number(const std::string &element, const std::string &attribute) {
    return "<!ATTLIST " + element + " " + attribute + " CDATA #IMPLIED><!ENTITY d '" + times(4000, "0") +
           "'><!ENTITY s '" + times(110, "<?p?>") + "'>";
}

/// An element with 1,600,000 digits that is delivered 55,000 times.
std::string many_steps(const std::string &element, const std::string &attribute) {
    return "<" + element + " " + attribute + "='" + times(400, "&d;") + "7'>" + times(500, "&s;") + "</" +
           element + ">";
}

/// Two to the power of `length` names that the unseeded hash of the XML library takes for one, with something
/// before and behind each.
std::string alike(unsigned length, const std::string &before, const std::string &behind) {
    std::string all;
    for (unsigned i = 0; i < 1U << length; ++i) {
        all += before;
        for (unsigned bit = 0; bit < length; ++bit)
            all += i >> bit & 1 ? "az" : "bT"; // 38 times the first character and the second are the same sum
        all += behind;
    }
    return all;
}

/// Entities from `l0` to `l9`, each of which is ten of the one before.
const std::string laughs = "<!ENTITY l0 'lol'>" + [] {
    std::string all;
    for (int i = 1; i < 10; ++i)
        all += "<!ENTITY l" + std::to_string(i) + " '" + times(10, "&l" + std::to_string(i - 1) + ";") + "'>";
    return all;
}();

const std::string long_text = "<!ENTITY t '" + times(4000, "x") + "'>";

struct hostile_case {
    const char *what;
    std::string document;
    ending by_sax, by_camera; // the camera reader does not validate
};

const hostile_case small_cases[] = {
    {"one long default", document(any + long_entity + "<!ATTLIST ROOT a CDATA '" + times(2900, "&e;") + "'>"),
     REFUSED, REFUSED},
    {"a long default for many elements",
     document(any + long_entity + "<!ATTLIST ROOT a CDATA '" + times(1300, "&e;") + "'>",
              times(450, "<ROOT/>")),
     REFUSED, REFUSED},
    {"a default of some length for many elements",
     document(any + "<!ELEMENT a ANY><!ATTLIST a b CDATA '" + times(4000, "x") + "'>", times(1300, "<a/>")),
     READ, REFUSED},
    {"many lists of long defaults",
     document(any + long_entity + numbered(200, "<!ATTLIST ROOT a", " CDATA '&e;&e;&e;&e;&e;'>")), REFUSED,
     REFUSED},
    {"many lists of empty defaults", document(any + numbered(205, "<!ATTLIST ROOT a", " CDATA ''>")), READ,
     READ},
    {"lists of no attributes", document(any + times(400, "<!ATTLIST ROOT>")), READ, READ},
    {"elements of an entity",
     document(any + "<!ELEMENT a EMPTY><!ENTITY a '" + times(1000, "<a/>") + "'>", times(1000, "&a;")),
     REFUSED, REFUSED},
    {"attributes of an entity",
     document(any + "<!ELEMENT a ANY><!ENTITY a '<a" + numbered(500, " a", "=\"\"") + "/>'>",
              times(1000, "&a;")),
     REFUSED, REFUSED},
    {"defaults for elements of an entity",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a b CDATA '" + times(1000, "x") + "'>" + elements,
              times(1000, "&a;")),
     REFUSED, REFUSED},
    {"an empty default for elements of an entity",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a b CDATA ''>" + elements, times(1000, "&a;")), REFUSED,
     REFUSED},
    {"many empty defaults for elements of an entity",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a " + numbered(400, "a", " CDATA '' ") + ">" + elements,
              times(600, "&a;")),
     REFUSED, REFUSED},
    {"many empty defaults for many elements",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a " + numbered(350, "a", " CDATA '' ") + ">",
              times(1000, "<a/>")),
     READ, REFUSED},
    {"some empty defaults for many elements",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a " + numbered(5, "a", " CDATA '' ") + ">",
              times(2400, "<a/>")),
     READ, READ},
    {"many attributes that elements of an entity do not have",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a " + numbered(300, "a", " CDATA #IMPLIED ") + ">" +
                  elements,
              times(900, "&a;")),
     REFUSED, REFUSED},
    {"elements of an entity, in a model of many names",
     document("<!ELEMENT ROOT (#PCDATA" + times(1000, "|a") + "|a)*><!ELEMENT a EMPTY>" + elements,
              times(900, "&a;")),
     REFUSED, READ},
    {"defaults that elements of an entity do not take",
     document(any + long_entity + "<!ELEMENT a ANY><!ATTLIST a b CDATA '" + times(500, "&e;") +
                  "'><!ENTITY a '" + times(56, "<a b=\"\"/>") + "'>",
              times(1000, "&a;")),
     REFUSED, REFUSED},
    {"a long name for elements of an entity",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a " + times(8000, "b") + " CDATA ''>" + elements,
              times(290, "&a;")),
     REFUSED, REFUSED},
    {"identifiers that are alike",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a " + numbered(100, "a", " ID #IMPLIED ") +
                  "><!ENTITY a '<a" + numbered(100, " a", "=\"\"") + "/>'>",
              times(1000, "&a;")),
     REFUSED, REFUSED},
    {"much of everything",
     document("<!ATTLIST Int64 z CDATA 'x'><!ENTITY b '" + times(99, "<Int64/>x") + "'><!ENTITY % d '" +
                  times(252, " ") + "'><!ENTITY % e '" + times(15, "&#37;d;") + "'><!ENTITY a '" +
                  times(99, "<Float/>x") + "'>" + times(1500, "%e;"),
              times(200, "&b;") + times(780, "&a;")),
     REFUSED, REFUSED},
    {"comments of an entity",
     document(any + "<!ENTITY e '" + times(500, "<!---->") + "'>", times(1000, "&e;")), REFUSED, REFUSED},
    {"text of an entity", document(any + long_entity, times(15, "&e;")), READ, READ},
    {"declarations of a parameter entity",
     document(any + "<!ENTITY % e \"" + times(100, "<!ELEMENT a ANY>") + "\">" + times(2600, "%e;")), REFUSED,
     REFUSED},
    {"attributes of a parameter entity",
     document(any + "<!ENTITY % e \"" + times(70, "<!ATTLIST a a ID #IMPLIED>") + "\">" + times(2600, "%e;")),
     REFUSED, REFUSED},
    {"notations of a parameter entity",
     document(any + "<!ENTITY % e \"" + times(70, "<!NOTATION a PUBLIC 'b'>") + "\">" + times(2600, "%e;")),
     REFUSED, REFUSED},
    {"entities of a parameter entity",
     document(any + "<!ENTITY % e \"" + times(90, "<!ENTITY a ''>") + "\">" + times(2600, "%e;")), REFUSED,
     REFUSED},
    {"blanks of a parameter entity",
     document("<!ENTITY % e '" + times(4000, " ") + "'>" + any + times(1900, "%e;")), READ, READ},
    {"entities within entities", document(any + chain(17, "", "&", "x"), times(62, "&e1;")), READ, READ},
    {"entities within the entities of a default",
     document(any + chain(17, "", "&", "") + "<!ENTITY a '&e1;'><!ATTLIST ROOT a CDATA '" +
              times(2900, "&a;") + "'>"),
     REFUSED, REFUSED},
    {"parameter entities within parameter entities",
     document(any + chain(17, "% ", "&#37;", " ") + "<!ENTITY % a '&#37;e1;'>" + times(2700, "%a;")), REFUSED,
     REFUSED},
    {"a model of a parameter entity",
     document(any + "<!ENTITY % e \"<!ELEMENT a (#PCDATA" + times(1900, "|b") + ")*>\">" +
              times(1900, "%e;")),
     REFUSED, REFUSED},
    {"one name after the other", document("<!ELEMENT ROOT (a" + numbered(1200, ",a", "") + ")>"), REFUSED,
     READ},
    {"one name or the other", document("<!ELEMENT ROOT (a" + numbered(1200, "|a", "") + ")*>"), REFUSED,
     READ},
    {"one of many names, each twice", document(twice(148)), REFUSED, READ},
    {"a repeated repetition", document(repetitions(1024)), REFUSED, READ},
    {"an attribute of many values",
     document(any + "<!ATTLIST ROOT a (a" + numbered(1500, "|a", "") + ") #IMPLIED>"), READ, READ},
    {"many names", "<ROOT>" + numbered(1200, "<a", "/>") + "</ROOT>", READ, READ},
    {"many attributes", "<ROOT " + numbered(1000, " a", "=''") + "/>", READ, READ},
    {"an identifier for each element",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a b ID #REQUIRED>", numbered(600, "<a b='i", "'/>")), READ,
     READ},
    {"references to an identifier", references("<a c='" + times(32, "i ") + "'/><a c='i'/><a c='i'/>"), READ,
     READ},
    {"entities that are not declared, in an attribute",
     document("%p;" + any + "<!ENTITY e '" + times(16, "&x;") + "'>", "<a a='" + times(999, "&e;") + "'/>"),
     REFUSED, READ},
    {"a channel that is named anew again and again",
     document(any + "<!ELEMENT CHANNEL ANY><!ELEMENT PROP ANY><!ENTITY e '" +
                  times(25, "<PROP>a</PROP><PROP>b</PROP>") + "'>",
              "<CHANNEL>" + times(990, "&e;") + "</CHANNEL>"),
     READ, READ},
    {"a DAQ variable that is named anew again and again",
     document(any + "<!ELEMENT DaqFloat ANY><!ELEMENT orvin ANY><!ENTITY e '" +
                  times(25, "<orvin>a</orvin><orvin>b</orvin>") + "'>",
              "<DaqFloat>" + times(990, "&e;") + "</DaqFloat>"),
     READ, READ},
    {"a dimension with a long number, delivered again and again",
     document(any + "<!ELEMENT DaqFloatMatrix ANY><!ELEMENT dimension ANY>" + long_number("dimension", "id"),
              "<DaqFloatMatrix>" + many_steps("dimension", "id") + "</DaqFloatMatrix>"),
     READ, READ},
    {"a bit with a long number, delivered again and again",
     document(any + "<!ELEMENT DaqBits ANY><!ELEMENT bitTitle ANY>" + long_number("bitTitle", "bit"),
              "<DaqBits>" + many_steps("bitTitle", "bit") + "</DaqBits>"),
     READ, READ},
    {"many entities", document(any + numbered(450, "<!ENTITY a", " '&a;'>")), READ, READ},
    {"a chain of entities",
     document(any + numbered(330, "<!ENTITY a", " '&b;&b;&b;&b;'>") + "<!ENTITY b ''>"), READ, READ},
    {"entities of entities of entities, in content", document(any + laughs, "&l9;"), REFUSED, REFUSED},
    {"entities of entities of entities, in an attribute", document(any + laughs, "<ROOT a='&l9;'/>"), REFUSED,
     REFUSED},
    {"entities of entities of entities, in a default",
     document(any + laughs + "<!ATTLIST ROOT a CDATA '&l9;'>"), REFUSED, REFUSED},
    {"a long text again and again", document(any + long_text, times(1900, "&t;")), READ, READ},
    {"a long text again and again, in an attribute",
     document(any + long_text, "<ROOT a='" + times(1900, "&t;") + "'/>"), REFUSED, REFUSED},
    {"a long text again and again and again",
     document(any + long_text + "<!ENTITY u '" + times(500, "&t;") + "'>", times(1000, "&u;")), REFUSED,
     REFUSED},
    {"a long text again and again and again, in an attribute",
     document(any + long_text + "<!ENTITY u '" + times(500, "&t;") + "'>",
              "<ROOT a='" + times(1000, "&u;") + "'/>"),
     REFUSED, REFUSED},
    {"blanks of parameter entities",
     document("<!ENTITY % e '" + times(3000, " ") + "'><!ENTITY % f '" + times(400, "&#37;e;") + "'>" + any +
              times(1000, "%f;")),
     REFUSED, REFUSED},
    {"long entities of parameter entities",
     document("<!ENTITY % e \"<!ENTITY a '" + times(3000, "x") + "'>\"><!ENTITY % f '" +
              times(400, "&#37;e;") + "'>" + any + times(1000, "%f;")),
     REFUSED, REFUSED},
    {"lists of no attributes beside many, of a parameter entity",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a " + numbered(200, "a", " CDATA #IMPLIED ") +
              "><!ENTITY % e \"" + times(93, "<!ATTLIST a>") + "\">" + times(1300, "%e;")),
     REFUSED, REFUSED},
    {"channels of an entity",
     document(any + "<!ELEMENT CHANNEL ANY><!ELEMENT PROP ANY><!ENTITY c '" +
                  times(150, "<CHANNEL><PROP>p</PROP></CHANNEL>") + "'>",
              times(1200, "&c;")),
     REFUSED, REFUSED},
    {"dimensions of an entity",
     document(any + "<!ELEMENT CHANNEL ANY><!ELEMENT DIM ANY><!ELEMENT PROP ANY><!ENTITY c '" +
                  times(300, "<DIM>1</DIM>") + "'>",
              "<CHANNEL><PROP>x</PROP>" + times(1500, "&c;") + "</CHANNEL>"),
     REFUSED, REFUSED},
    {"features of an entity",
     document(any + "<!ENTITY c '" + times(500, "<Float/>") + "'>", times(1200, "&c;")), REFUSED, REFUSED},
    {"references to identifiers whose names meet in one place",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a b ID #IMPLIED c IDREFS #IMPLIED><!ENTITY e '" +
                  alike(7, "", " ") + "'><!ENTITY f '" + times(100, "&e;") + "'>",
              alike(7, "<a b='", "'/>") + "<a c='" + times(1000, "&f;") + "'/>"),
     REFUSED, REFUSED},
    {"names in attributes of an enumerated type",
     document(any + "<!ELEMENT a EMPTY><!ATTLIST a b (a" + numbered(900, "|b", "") +
                  ") #IMPLIED><!ENTITY e '" + times(900, "a ") + "'><!ENTITY f '<a b=\"" + times(300, "&e;") +
                  "\"/>'>",
              times(20, "&f;")),
     REFUSED, REFUSED},
    {"instructions, behind each of which a dimension is made anew",
     document(any +
                  "<!ELEMENT DaqFloatMatrix ANY><!ELEMENT orvin ANY><!ELEMENT dimension ANY>"
                  "<!ATTLIST dimension id CDATA #IMPLIED><!ENTITY s '" +
                  times(1000, "<?p?>") + "'><!ENTITY t '" + times(70, "&s;") + "'>",
              "<DaqFloatMatrix><orvin>p</orvin><dimension id='1'>" + times(56, "&t;") +
                  "</dimension></DaqFloatMatrix>"),
     REFUSED, REFUSED},
    {"blanks of entities that an attribute does not keep",
     document(any + "<!ATTLIST ROOT a NMTOKENS #IMPLIED><!ENTITY e '" + times(5000, " ") + "'><!ENTITY f '" +
                  times(280, "&e;") + "'>",
              "<ROOT a='" + times(100, "&f;") + "'/>"),
     REFUSED, REFUSED},
    {"long notations of a parameter entity",
     document(any + "<!ENTITY % e \"<!NOTATION a PUBLIC '" + times(5000, "x") + "'>\">" + times(1200, "%e;")),
     REFUSED, READ},
    {"a model of many states",
     document("<!ELEMENT a EMPTY><!ELEMENT b EMPTY><!ELEMENT ROOT ((a|b)*,a" + times(60, ",(a|b)") + ")>",
              times(400, "<a/><b/>")),
     REFUSED, READ},
    {"another file", document(any + "<!ENTITY e SYSTEM '/etc/passwd'>", "&e;"), REFUSED, REFUSED},
    {"another file by its address", document(any + "<!ENTITY e SYSTEM 'file:///etc/passwd'>", "&e;"), REFUSED,
     REFUSED},
    {"another host", document(any + "<!ENTITY e SYSTEM 'http://127.0.0.1:9/'>", "&e;"), REFUSED, REFUSED},
    {"declarations in another file", "<!DOCTYPE ROOT SYSTEM '/etc/passwd'><ROOT/>", REFUSED, REFUSED},
    {"declarations on another host", "<!DOCTYPE ROOT SYSTEM 'http://127.0.0.1:9/'><ROOT/>", REFUSED, REFUSED},
    {"a parameter entity in another file", document("<!ENTITY % e SYSTEM '/etc/passwd'>%e;" + any), REFUSED,
     REFUSED},
    {"a parameter entity on another host", document("<!ENTITY % e SYSTEM 'http://127.0.0.1:9/'>%e;" + any),
     REFUSED, REFUSED},
};

const double most_seconds = 1;
const double most_megabytes = 100;

/// The file reader of each kind and one of a text: the others walk documents in the same way. A sanitizer
/// takes minutes, and looks at what the two parsers do: one reader for each is enough.
bool one_of_a_kind(const reader_row &reader) {
    static const std::set<std::string> of_parsers = {"channels in memory", "camera file"};
    static const std::set<std::string> of_kinds = {"channels in memory",        "channels in a file",
                                                   "DAQ variables in a file",   "events in a file",
                                                   "2010 dictionary in a file", "camera file"};
    return (is_sanitized ? of_parsers : of_kinds).count(reader.name) > 0;
}

void expect_cheap(const hostile_case &row, double limit_of_seconds, double limit_of_megabytes) {
    for (const reader_row &reader : every_reader) {
        if (!one_of_a_kind(reader))
            continue;
        SCOPED_TRACE(std::string(row.what) + ", " + reader.name);
        const cost seen = read_apart(reader, row.document);
        EXPECT_EQ(seen.end, reader.kind == CAMERA ? row.by_camera : row.by_sax) << seen;
        if (!is_sanitized) {
            EXPECT_LT(seen.seconds, limit_of_seconds) << seen;
            EXPECT_LT(seen.megabytes, limit_of_megabytes) << seen;
        }
    }
}

TEST(HostileDocuments, OfTenThousandBytesCostLittle) {
    for (const hostile_case &row : small_cases) {
        EXPECT_LE(row.document.size(), 10'000u) << row.what;
        expect_cheap(row, most_seconds, most_megabytes);
    }
}

// Documents of any size: what they cost goes with their size, and neither depth nor number breaks a reader

/// Made one by one, as what is measured is the whole process.
struct large_case {
    const char *what;
    std::string (*make_document)();
    ending by_sax, by_camera;
};

std::string models_of_201_names(std::size_t count) {
    return "<!ELEMENT a EMPTY>" + numbered(200, "<!ELEMENT a", " EMPTY>") +
           numbered(count, "<!ELEMENT b", " (a" + numbered(200, "|a", "") + ")*>");
}

std::string mixed_models_of_7_names(std::size_t count) {
    return numbered(7, "<!ELEMENT a", " EMPTY>") +
           numbered(count, "<!ELEMENT b", " (#PCDATA|a0|a1|a2|a3|a4|a5|a6)*>");
}

std::string lists_of_64_characters(std::size_t count) {
    const std::string text(64, 'x');
    std::string all;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string element = "a" + std::to_string(i);
        all += "<!ELEMENT " + element + " EMPTY><!ATTLIST " + element + " b CDATA '" + text + "'>";
    }
    return all;
}

/// Seventy thousand elements, each with two defaults of these lengths.
std::string elements_with_defaults(std::size_t first, std::size_t second) {
    return document(any + "<!ELEMENT a EMPTY><!ATTLIST a b CDATA '" + times(first, "x") + "' c CDATA '" +
                        times(second, "x") + "'>",
                    times(70'000, "<a/>"));
}

/// Fifty thousand elements that may have so many attributes, but have none.
std::string elements_without_attributes(std::size_t count) {
    return document(any + "<!ELEMENT a EMPTY><!ATTLIST a " + numbered(count, "a", " CDATA #IMPLIED ") + ">",
                    times(50'000, "<a/>"));
}

/// An attribute that has one of the values 100000, 100001 and so on, cut at so many characters together.
std::string values(std::size_t length) {
    std::string all;
    for (std::size_t i = 100'000; all.size() < length; ++i)
        all += (all.empty() ? "" : "|") + std::to_string(i);
    return "<!ATTLIST ROOT a (" + all.substr(0, length) + ") #IMPLIED>";
}

/// A hundred thousand children of an element that lets one of so many others stand there as well.
std::string children_of_names(std::size_t count) {
    return document("<!ELEMENT a EMPTY>" + numbered(count - 1, "<!ELEMENT a", " EMPTY>") +
                        "<!ELEMENT ROOT (#PCDATA" + numbered(count - 1, "|a", "") + "|a)*>",
                    times(100'000, "<a/>"));
}

const large_case large_cases[] = {
    {"elements within elements",
     [] { return "<ROOT>" + times(100'000, "<a>") + times(100'000, "</a>") + "</ROOT>"; }, READ, READ},
    {"elements within elements without an end", [] { return "<ROOT>" + times(100'000, "<a>"); }, REFUSED,
     REFUSED},
    {"repetitions within repetitions", [] { return document(repetitions(100'000)); }, REFUSED, READ},
    {"groups within groups",
     [] {
         return document("<!ELEMENT a EMPTY><!ELEMENT ROOT " + times(500'000, "(") + "a?" +
                         times(500'000, ")") + ">");
     },
     READ, READ},
    {"groups without an end", [] { return document("<!ELEMENT ROOT " + times(500'000, "(")); }, REFUSED,
     REFUSED},
    {"names within names",
     [] { return document("<!ELEMENT ROOT " + times(100'000, "(a,") + "a" + times(100'000, ")") + ">"); },
     REFUSED, REFUSED},
    {"names in a row", [] { return document("<!ELEMENT ROOT (a" + times(100'000, ",a") + ")>"); }, REFUSED,
     READ},
    {"models of many names", [] { return document(any + models_of_201_names(7)); }, READ, READ},
    {"models of few names",
     [] { return document(any + mixed_models_of_7_names(8'192) + "<!ELEMENT e (a)>"); }, REFUSED, READ},
    {"declarations", [] { return document(any + numbered(16'384, "<!ELEMENT a", " EMPTY>")); }, READ, READ},
    {"lists of defaults", [] { return document(any + lists_of_64_characters(5'035)); }, READ, READ},
    {"elements with defaults", [] { return elements_with_defaults(255, 256); }, READ, REFUSED},
    {"attributes that elements do not have", [] { return elements_without_attributes(1'025); }, READ, READ},
    {"values of an attribute", [] { return document(any + values(65'537)); }, READ, READ},
    {"children in a model of many names", [] { return children_of_names(1'000); }, REFUSED, READ},
    {"a million attributes", [] { return "<ROOT" + numbered(1'000'000, " a", "=''") + "/>"; }, READ, REFUSED},
    {"names of elements", [] { return "<ROOT>" + numbered(32'768, "<a", "/>") + "</ROOT>"; }, REFUSED,
     REFUSED},
    {"names of attributes", [] { return "<ROOT>" + numbered(32'768, "<a n='' a", "=''/>") + "</ROOT>"; },
     READ, REFUSED},
    {"names of elements that meet in one place", [] { return "<ROOT>" + alike(15, "<", "/>") + "</ROOT>"; },
     REFUSED, REFUSED},
    {"names of attributes that meet in one place",
     [] { return "<ROOT><!---->" + alike(15, "<a n='' ", "=''/>") + "</ROOT>"; }, READ, REFUSED},
    {"names of entities that meet in one place",
     [] { return document(any + alike(12, "<!ENTITY ", " 'x'>"), alike(12, "&", ";")); }, REFUSED, REFUSED},
    {"identifiers that meet in one place",
     [] {
         return document(any + "<!ELEMENT a EMPTY><!ATTLIST a b ID #IMPLIED>", alike(13, "<a b='", "'/>"));
     },
     REFUSED, READ},
    {"a long text", [] { return "<ROOT>" + std::string(50'000'000, 'x') + "</ROOT>"; }, READ, READ},
    {"a long name", [] { return "<ROOT><" + std::string(1'000'000, 'a') + "/></ROOT>"; }, READ, READ},
    {"a long attribute", [] { return "<ROOT a='" + std::string(5'000'000, 'x') + "'/>"; }, READ, READ},
    {"a long comment", [] { return "<ROOT><!--" + std::string(5'000'000, 'x') + "--></ROOT>"; }, READ, READ},
    {"a long instruction", [] { return "<ROOT><?p " + std::string(5'000'000, 'x') + "?></ROOT>"; }, READ,
     READ},
    {"a long CDATA section", [] { return "<ROOT><![CDATA[" + std::string(5'000'000, 'x') + "]]></ROOT>"; },
     READ, READ},
    {"empty CDATA sections", [] { return "<ROOT>" + times(200'000, "<![CDATA[]]>") + "</ROOT>"; }, READ,
     READ},
    {"comments", [] { return "<ROOT>" + times(200'000, "<!---->") + "</ROOT>"; }, READ, READ},
    {"characters", [] { return "<ROOT>" + times(500'000, "&#65;") + "</ROOT>"; }, READ, READ},
    {"attributes", [] { return "<ROOT" + numbered(30'000, " a", "=''") + "/>"; }, READ, REFUSED},
    // Plain to the scanner, or nearly so
    {"elements with all that may be plain",
     [] {
         return "<ROOT>" + times(20'000, "<a" + numbered(16, " a", "='&lt;'") + ">&lt;&#65;&lt;</a>") +
                "</ROOT>";
     },
     READ, READ},
    {"elements that are plain but for the last",
     [] {
         return "<ROOT>" + times(300'000, "<a>1</a><!----><b/>") + "<" + std::string(40, 'n') + "/></ROOT>";
     },
     READ, READ},
};

TEST(HostileDocuments, OfAnySizeAreReadOrRefused) {
    for (const large_case &row : large_cases)
        expect_cheap({row.what, row.make_document(), row.by_sax, row.by_camera}, 10, 700);
}

} // namespace
