/// Programs that were built against the pull readers hold their objects, and take what is in them: where the
/// members stand, and what whoever takes a text or a record over does with it.

#include <cstddef>
#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/SAXParser.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLString.hpp>

#include "support/capture.h"
#include "support/sax_sources.h"
#include "xml_platform.h"

namespace {

static_assert(sizeof(void *) == 8, "the places below are those of LP64");
static_assert(sizeof(xercesc::HandlerBase) == 32);

static_assert(sizeof(attr) == 24 && std::is_standard_layout_v<attr> && std::is_trivial_v<attr>);
static_assert(offsetof(attr, name) == 0 && offsetof(attr, type) == 8 && offsetof(attr, value) == 16);
static_assert(sizeof(attrf) == 24 && std::is_standard_layout_v<attrf> && std::is_trivial_v<attrf>);
static_assert(offsetof(attrf, name) == 0 && offsetof(attrf, type) == 8 && offsetof(attrf, value) == 16);

static_assert(std::is_base_of_v<xercesc::HandlerBase, MemParseHandlers> && sizeof(MemParseHandlers) == 96);
static_assert(std::is_base_of_v<xercesc::HandlerBase, FileParseHandlers> && sizeof(FileParseHandlers) == 104);
static_assert(sizeof(SAX_Memory_Parser) == 40);
static_assert(sizeof(SAX_File_Parser) == 24 + sizeof(FileParseHandlers));

/// The member of this type that stands there, as another program sees it.
template <class Member> Member &at(void *object, std::size_t place) {
    return *reinterpret_cast<Member *>(static_cast<char *>(object) + place);
}

/// A handler's members.
template <class Handlers> struct members;
template <> struct members<MemParseHandlers> {
    static constexpr std::size_t counters = 32, tag = 48, value = 56, attributes = 64, errors = 88,
                                 end_flag = 92;
    using record = attr;
};
template <> struct members<FileParseHandlers> {
    static constexpr std::size_t counters = 32, saw_errors = 48, tag = 56, value = 64, attributes = 72,
                                 errors = 96, end_flag = 100;
    using record = attrf;
};

template <class Handlers> char *&tag_of(Handlers &h) { return at<char *>(&h, members<Handlers>::tag); }
template <class Handlers> char *&value_of(Handlers &h) { return at<char *>(&h, members<Handlers>::value); }

/// The handlers of a source's parser.
template <class Source>
using handlers_type =
    std::conditional_t<std::is_same_v<Source, memory_source>, MemParseHandlers, FileParseHandlers>;

MemParseHandlers &handlers_of(SAX_Memory_Parser &parser) { return *at<MemParseHandlers *>(&parser, 32); }
FileParseHandlers &handlers_of(SAX_File_Parser &parser) { return at<FileParseHandlers>(&parser, 24); }

xercesc::SAXParser &xml_parser_of(SAX_Memory_Parser &parser) {
    return *at<xercesc::SAXParser *>(&parser, 16);
}
xercesc::SAXParser &xml_parser_of(SAX_File_Parser &parser) { return *at<xercesc::SAXParser *>(&parser, 8); }

template <class Source> class SaxLayout : public testing::Test {};
using sources = testing::Types<memory_source, file_source>;
TYPED_TEST_SUITE(SaxLayout, sources, );

TYPED_TEST(SaxLayout, BeginsWithWhetherItIsReadyAndWhetherThereIsMore) {
    TypeParam source("<r/>");
    EXPECT_TRUE(at<bool>(&source.parser(), 0));
    EXPECT_TRUE(at<bool>(&source.parser(), 1));
    ASSERT_EQ(source.start(), 0);
    EXPECT_EQ(steps(source.parser()), "r ~ -1");
    EXPECT_TRUE(at<bool>(&source.parser(), 0));
    EXPECT_FALSE(at<bool>(&source.parser(), 1));
}

TYPED_TEST(SaxLayout, HasAParserThatReportsToTheHandlers) {
    TypeParam source("<r/>");
    const xercesc::SAXParser &parser = xml_parser_of(source.parser());
    auto &handlers = handlers_of(source.parser());
    EXPECT_EQ(parser.getDocumentHandler(), &handlers);
    EXPECT_EQ(parser.getErrorHandler(), &handlers);
    EXPECT_EQ(parser.getValidationScheme(), xercesc::SAXParser::Val_Auto);
    EXPECT_FALSE(parser.getDoNamespaces());
    EXPECT_FALSE(parser.getDoSchema());
    EXPECT_FALSE(parser.getValidationSchemaFullChecking());
}

/// A token is two numbers, which the parser gives when it starts.
TYPED_TEST(SaxLayout, HasItsTokenBehindTheParser) {
    constexpr std::size_t place = std::is_same_v<TypeParam, memory_source> ? 24 : 16;
    TypeParam source("<r/>");
    EXPECT_EQ(at<std::uint64_t>(&source.parser(), place), 0u);
    ASSERT_EQ(source.start(), 0);
    xercesc::XMLPScanToken token = at<xercesc::XMLPScanToken>(&source.parser(), place);
    EXPECT_TRUE(xml_parser_of(source.parser()).parseNext(token));
    EXPECT_STREQ(handlers_of(source.parser()).getTag(), "r");
}

TEST(SaxLayoutInMemory, HasItsInputSourceBeforeTheParser) {
    memory_source source("<r/>");
    const auto &input = *at<xercesc::MemBufInputSource *>(&source.parser(), 8);
    EXPECT_EQ(std::u16string(input.getSystemId()), u"my_mem_info");
}

TYPED_TEST(SaxLayout, HasHandlersWithTheirMembersInOrder) {
    TypeParam source("<!DOCTYPE r [<!ELEMENT r (a)><!ATTLIST r n CDATA #IMPLIED m CDATA #IMPLIED>"
                     "<!ELEMENT a (#PCDATA)>]><r n='1' m='2'> \n <a>text</a></r>");
    auto &h = handlers_of(source.parser());
    using place = members<handlers_type<TypeParam>>;
    ASSERT_EQ(source.start(), 0);
    EXPECT_EQ(step(source.parser()), "r");
    EXPECT_EQ(tag_of(h), h.getTag());
    EXPECT_EQ(value_of(h), nullptr);
    EXPECT_EQ((static_cast<void *>(&at<std::vector<typename place::record *>>(&h, place::attributes))),
              static_cast<void *>(&h.getAttr()));
    EXPECT_EQ(h.getAttr().size(), 2u);
    EXPECT_FALSE(at<bool>(&h, place::end_flag));
    EXPECT_EQ(step(source.parser()), "r");
    EXPECT_EQ(step(source.parser()), "a");
    EXPECT_EQ(step(source.parser()), "a[text]");
    EXPECT_EQ(value_of(h), h.getValue());
    EXPECT_EQ(step(source.parser()), "~");
    EXPECT_TRUE(at<bool>(&h, place::end_flag));
    const std::uint32_t counters[] = {2, 2, 4, 3}; // elements, attributes, characters, ignorable blanks
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ((at<std::uint32_t>(&h, place::counters + 4 * i)), counters[i]) << i;
    EXPECT_EQ(at<std::int32_t>(&h, place::errors), 0);
    capture([&] { h.error(xercesc::SAXParseException(u"m", u"p", u"s", 1, 2)); });
    EXPECT_EQ(at<std::int32_t>(&h, place::errors), 1);
    if constexpr (requires { place::saw_errors; }) {
        EXPECT_FALSE(at<bool>(&h, place::saw_errors));
        at<bool>(&h, place::saw_errors) = true;
        h.resetErrors();
        EXPECT_FALSE(at<bool>(&h, place::saw_errors));
    }
}

// Taking over

template <class Record> void release(std::vector<Record *> &records) {
    for (Record *record : records) {
        for (char **text : {&record->name, &record->type, &record->value})
            xercesc::XMLString::release(text);
        delete record;
    }
}

TYPED_TEST(SaxLayout, GivesUpItsTextsAndAttributesAndReadsOn) {
    const xml_platform platform; // what is taken outlives the reader
    char *tag, *value;
    std::vector<typename members<handlers_type<TypeParam>>::record *> records;
    {
        TypeParam source("<r n=\"1\" \xc3\xa4='\xc3\xb6'>t\xc3\xbc<a m='2'>more</a><b/></r>");
        auto &h = handlers_of(source.parser());
        ASSERT_EQ(source.start(), 0);
        EXPECT_EQ(step(source.parser()), "r");
        EXPECT_EQ(step(source.parser()), "r[t\xc3\xbc]");
        records.swap(h.getAttr());
        tag = std::exchange(tag_of(h), nullptr);
        value = std::exchange(value_of(h), nullptr);
        char name[] = "n", *found = name;
        EXPECT_EQ(source.parser().get_attr(name, &found), -1);
        EXPECT_EQ(found, nullptr);
        EXPECT_EQ(step(source.parser()), "a");
        name[0] = 'm';
        EXPECT_EQ(source.parser().get_attr(name, &found), 0);
        EXPECT_STREQ(found, "2");
        char *const single = std::exchange(h.getAttr()[0]->value, nullptr);
        EXPECT_EQ(source.parser().get_attr(name, &found), -1) << "it has no value any more";
        EXPECT_EQ(found, nullptr);
        EXPECT_STREQ(single, "2");
        char *gone = single;
        xercesc::XMLString::release(&gone);
        EXPECT_EQ(steps(source.parser()), "a[more] ~ b ~ ~ -1");
    }
    EXPECT_STREQ(tag, "r");
    EXPECT_STREQ(value, "t\xc3\xbc");
    xercesc::XMLString::release(&tag);
    xercesc::XMLString::release(&value);
    ASSERT_EQ(records.size(), 2u);
    EXPECT_STREQ(records[0]->name, "n");
    EXPECT_STREQ(records[0]->type, "CDATA");
    EXPECT_STREQ(records[0]->value, "1");
    EXPECT_STREQ(records[1]->name, "\xc3\xa4");
    EXPECT_STREQ(records[1]->value, "\xc3\xb6");
    release(records);
}

TYPED_TEST(SaxLayout, HasHandlersThatNeedNoPlatformForWhatTheyDoNotHold) {
    ASSERT_EQ(xercesc::XMLPlatformUtils::fgMemoryManager, nullptr) << "somebody holds the platform";
    handlers_type<TypeParam> h;
    h.reset_end_tag_flag();
    h.resetTagValue();
    h.resetDocument();
    h.endElement(u"r");
    h.reset_end_tag_flag();
    EXPECT_EQ(h.getTag(), nullptr);
    EXPECT_EQ(h.getValue(), nullptr);
    EXPECT_TRUE(h.getAttr().empty());
}

} // namespace
