/// Which declarations are plain, where they end, and what encoding they name.

#include "steps/plain_declaration.h"

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

namespace {

using zeb5::plain_encoding;

struct prologue_seen {
    long length; // -1: not plain
    plain_encoding encoding;

    bool operator==(const prologue_seen &) const = default;
};

std::ostream &operator<<(std::ostream &to, const prologue_seen &seen) {
    return to << seen.length << " bytes, encoding " << static_cast<int>(seen.encoding);
}

constexpr prologue_seen not_plain{-1, plain_encoding::UTF_8};

prologue_seen read(const std::string &document, std::size_t given = std::string::npos) {
    const char *const begin = document.data();
    const zeb5::plain_prologue read = zeb5::read_declaration(begin, begin + std::min(given, document.size()));
    return {read.end ? read.end - begin : -1, read.encoding};
}

prologue_seen whole(const std::string &declaration, plain_encoding encoding = plain_encoding::UTF_8) {
    return {static_cast<long>(declaration.size()), encoding};
}

TEST(PlainDeclaration, NeedNotBeThere) {
    for (const char *document :
         {"", "<r/>", " <?xml version='1.0'?>", "<?xml-stylesheet?>", "<?xmlversion='1.0'?>", "<?x", "<?xml"})
        EXPECT_EQ(read(document), (prologue_seen{0, plain_encoding::UTF_8})) << document;
    EXPECT_EQ(read("\xEF\xBB\xBF<r/>"), (prologue_seen{3, plain_encoding::UTF_8}));
}

TEST(PlainDeclaration, EndsBehindItsMark) {
    for (const std::string declaration :
         {"<?xml version='1.0'?>", "<?xml\tversion = \"1.0\"\r\n?>", "<?xml version='1.0' standalone='yes'?>",
          "<?xml version='1.0' encoding='UTF-8' standalone \n=\n \"no\" ?>",
          "\xEF\xBB\xBF<?xml version='1.0'\tencoding\n=\r\"utf-8\"  standalone='no'?>"})
        EXPECT_EQ(read(declaration + "<?p?><r/>"), whole(declaration)) << declaration;
}

TEST(PlainDeclaration, NamesAnEncodingInAnyCase) {
    const struct {
        const char *name;
        plain_encoding encoding;
    } encodings[] = {
        {"utf-8", plain_encoding::UTF_8},           {"Utf8", plain_encoding::UTF_8},
        {"ISO-8859-1", plain_encoding::ISO_8859_1}, {"iso8859-1", plain_encoding::ISO_8859_1},
        {"LATIN1", plain_encoding::ISO_8859_1},     {"us-ascii", plain_encoding::ASCII},
        {"AsciI", plain_encoding::ASCII},           {"iso-8859-2", plain_encoding::ASCII},
        {"iso-8859-15", plain_encoding::ASCII},     {"windows-1252", plain_encoding::ASCII},
        {"WINDOWS-1252", plain_encoding::ASCII},
    };
    for (const auto &row : encodings) {
        const std::string declaration = "<?xml version='1.0' encoding='" + std::string(row.name) + "'?>";
        EXPECT_EQ(read(declaration + "<r/>"), whole(declaration, row.encoding)) << row.name;
    }
}

TEST(PlainDeclaration, IsNotPlain) {
    for (const char *declaration : {"<?xml ?>",
                                    "<?xml version?>",
                                    "<?xml version=1.0?>",
                                    "<?xml version=x1.0x?>",
                                    "<?xml version='1.0?>",
                                    "<?xml version='1.1'?>",
                                    "<?xml version='1.0\"?>",
                                    "<?xml version='1.0'>",
                                    "<?xml version='1.0' ?",
                                    "<?xml encoding='UTF-8'?>",
                                    "<?xml version='1.0' encoding='UTF-16'?>",
                                    "<?xml version='1.0' encoding=''?>",
                                    "<?xml version='1.0' encoding='UTF-88'?>",
                                    "<?xml version='1.0' encoding='UTF'?>",
                                    "<?xml version='1.0' encoding?>",
                                    "<?xml version='1.0' encoding='UTF-8'standalone='no'?>",
                                    "<?xml version='1.0'encoding='UTF-8'?>",
                                    "<?xml version='1.0'standalone='no'?>",
                                    "<?xml version='1.0' standalone?>",
                                    "<?xml version='1.0' standalone='YES'?>",
                                    "<?xml version='1.0' standalone='no' encoding='UTF-8'?>",
                                    "<?xml version='1.0' x='y'?>",
                                    "\xEF\xBB\xBF<?xml version='1.0' encoding='ISO-8859-1'?>",
                                    "\xEF\xBB\xBF<?xml version='1.0' encoding='US-ASCII'?>"})
        EXPECT_EQ(read(declaration + std::string("<r/>")), not_plain) << declaration;
}

TEST(PlainDeclaration, IsNotReadBehindTheGivenBytes) {
    const std::string declaration = "<?xml version='1.0' encoding='ISO-8859-1' standalone='no' ?>";
    for (std::size_t given = 6; given < declaration.size(); ++given)
        EXPECT_EQ(read(declaration, given), not_plain) << given;
    EXPECT_EQ(read(declaration, declaration.size()), whole(declaration, plain_encoding::ISO_8859_1));
}

TEST(PlainDeclaration, HasAThousandBytesAtMost) {
    const std::string begin = "<?xml version='1.0'", end = "?>";
    const auto of_bytes = [&](std::size_t bytes) {
        return begin + std::string(bytes - begin.size() - end.size(), ' ') + end;
    };
    EXPECT_EQ(read(of_bytes(1024) + "<r/>"), whole(of_bytes(1024)));
    EXPECT_EQ(read(of_bytes(1025) + "<r/>"), not_plain);
}

} // namespace
