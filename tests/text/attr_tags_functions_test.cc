/// Tags that are appended to a text, with attributes and without.

#include "attr_tags_functions.h"

#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Names or values as the writers take them.
class texts {
public:
    texts(std::initializer_list<const char *> all) : all_(all.begin(), all.end()) {}
    std::vector<char *> *get() {
        pointers_.clear();
        for (auto &text : all_)
            pointers_.push_back(text.data());
        return &pointers_;
    }

private:
    std::vector<std::string> all_;
    std::vector<char *> pointers_; // into all_
};

using plain_writer = void (*)(std::string &, const char *);
using attribute_writer = void (*)(std::string &, const char *, std::vector<char *> *, std::vector<char *> *);

struct plain_case {
    plain_writer write;
    const char *element;
    const char *expect;
};
const plain_case plain_cases[] = {
    {START_TAG, "X", "<X>"},         {START_TAGN, "X", "<X>\n"},
    {END_TAG, "X", "</X>"},          {END_TAGN, "X", "</X>\n"},
    {START_TAG, "", "<>"},           {END_TAGN, "", "</>\n"},
    {START_TAG, "a<b&c", "<a<b&c>"}, {END_TAG, "two words", "</two words>"},
};

struct attribute_form {
    attribute_writer write;
    const char *end; // what closes the tag
};
const attribute_form attribute_forms[] = {
    {START_TAG_ATTR, "/>"},
    {START_TAG_ATTRN, "/>\n"},
    {START_TAG_ATTRNS, ">"},
    {START_TAG_ATTRNNS, ">\n"},
};

struct list_case {
    texts names;
    texts values;
    const char *expect; // between element name and end
};

std::vector<list_case> list_cases() {
    return {
        {{}, {}, " "},
        {{}, {"unused"}, " "},
        {{"n"}, {"1"}, " n=\"1\""},
        {{"n", "m"}, {"1", "2"}, " n=\"1\" m=\"2\""},
        {{"n", "m", "n"}, {"1", "2", "3", "unused"}, " n=\"1\" m=\"2\" n=\"3\""},
        {{""}, {""}, " =\"\""},
        {{"n"}, {"a<b&c\"d'\n"}, " n=\"a<b&c\"d'\n\""}, // nothing is escaped
    };
}

const char *const texts_before[] = {"", "<before>\n", "no line end"};

TEST(AttrTagsFunctionsPlain, AreAppendedToWhatIsThere) {
    for (const char *before : texts_before)
        for (const auto &c : plain_cases) {
            std::string text = before;
            c.write(text, c.element);
            EXPECT_EQ(text, std::string(before) + c.expect);
        }
}

TEST(AttrTagsFunctionsAttributes, AreAppendedToWhatIsThereInEveryForm) {
    for (const char *before : texts_before)
        for (const auto &form : attribute_forms)
            for (auto &c : list_cases()) {
                std::string text = before;
                form.write(text, "E", c.names.get(), c.values.get());
                EXPECT_EQ(text, std::string(before) + "<E" + c.expect + form.end);
            }
}

TEST(AttrTagsFunctionsAttributes, KeepTheirBlankWithoutAttributes) {
    texts none{};
    std::string text;
    START_TAG_ATTR(text, "E", none.get(), none.get());
    START_TAG_ATTRNS(text, "E", none.get(), none.get());
    EXPECT_EQ(text, "<E /><E >");
}

TEST(AttrTagsFunctionsAttributes, ThrowAtAMissingValueAndKeepWhatWasWritten) {
    struct {
        texts names, values;
        const char *expect;
    } cases[] = {
        {{"n", "m"}, {"1"}, "before<E n=\"1\" m=\""},
        {{"n"}, {}, "before<E n=\""},
    };
    for (auto &c : cases)
        for (const auto &form : attribute_forms) {
            std::string text = "before";
            EXPECT_THROW(form.write(text, "E", c.names.get(), c.values.get()), std::out_of_range);
            EXPECT_EQ(text, c.expect);
        }
}

TEST(AttrTagsFunctionsAttributes, LeaveTheirListsAlone) {
    texts names{"n", "m"}, values{"1", "2"};
    const std::vector<char *> names_before = *names.get(), values_before = *values.get();
    std::string text;
    START_TAG_ATTRN(text, "E", names.get(), values.get());
    EXPECT_EQ(*names.get(), names_before);
    EXPECT_EQ(*values.get(), values_before);
}

TEST(AttrTagsFunctions, MakeADocumentTogether) {
    texts names{"n", "m"}, values{"1", "2"};
    std::string text;
    START_TAGN(text, "A");
    START_TAG_ATTRN(text, "E", names.get(), values.get());
    START_TAG_ATTRNNS(text, "F", names.get(), values.get());
    START_TAG(text, "B");
    text += "t";
    END_TAGN(text, "B");
    END_TAG(text, "F");
    END_TAGN(text, "A");
    EXPECT_EQ(text, "<A>\n<E n=\"1\" m=\"2\"/>\n<F n=\"1\" m=\"2\">\n<B>t</B>\n</F></A>\n");
}

} // namespace
