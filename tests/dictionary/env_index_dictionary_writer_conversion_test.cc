/// The conversion of an env index dictionary in memory. Reader and writer have tests of their own; that all
/// records are released, and each once, is for the leak checkers to see.

#include "support/descriptors.h"
#include "support/env_dictionary_writing.h"

namespace {

template <class Layout> class EnvIndexDictionaryWriterConversion : public testing::Test {};

const char source[] =
    "<ENVINDEXDICT><CHANNEL><INDEX>3</INDEX><PROP>ORVIN/A</PROP><DABS>0.5</DABS></CHANNEL>"
    "<CHANNEL><PROP>ORVIN/B</PROP><INDEX>4</INDEX><DREL>0.25</DREL></CHANNEL></ENVINDEXDICT>";
const std::string source_document =
    dictionary_document(dictionary_channel("3", "ORVIN/A", "0.500000", "0.000000") +
                        dictionary_channel("4", "ORVIN/B", "0.000000", "0.250000"));
const char source_lines[] = "3\tORVIN/A\t0.500000\t0.000000\n4\tORVIN/B\t0.000000\t0.250000\n";
const char source_listing[] = "-------------- 1 -----------------\n"
                              " Index : 3\n"
                              " Channel: ORVIN/A DABS 0.5 DREL 0\n"
                              "-------------- 2 -----------------\n"
                              " Index : 4\n"
                              " Channel: ORVIN/B DABS 0 DREL 0.25\n";
const char cannot_be_read[] = "Failed to parse ENV INDEX DICT list\n";

} // namespace

TYPED_TEST_SUITE(EnvIndexDictionaryWriterConversion, both_layouts);

TYPED_TEST(EnvIndexDictionaryWriterConversion, EachDestinationGetsWhatItsModeWrites) {
    for (int mode : all_dictionary_modes)
        for (unsigned combination = 0; combination < 4; ++combination) {
            const bool to_file = combination & 1, to_fd = combination & 2;
            SCOPED_TRACE("mode " + std::to_string(mode) + (to_file ? " file" : "") + (to_fd ? " fd" : ""));
            const temporary_file file("old content");
            const memory_file target;
            const std::string since = local_date();

            const dump_outcome seen = convert_dictionary<TypeParam>(source, to_file ? &file.path() : nullptr,
                                                                    mode, to_fd ? target.fd() : -1);

            const bool refused = mode == text_lines && to_fd && !to_file;
            const bool whole = mode == xml_to_file_and_fd;
            EXPECT_EQ(seen.result, refused ? 2 : 0);
            EXPECT_EQ(seen.streams.out,
                      refused   ? invalid_argument_line<TypeParam>()
                      : to_file ? created_line<TypeParam>(file.path()) + closed_line<TypeParam>(file.path())
                      : to_fd   ? ""
                                : source_listing);
            EXPECT_EQ(seen.streams.err, "");
            const std::string in_file = whole ? source_document : mode == text_lines ? source_lines : "";
            EXPECT_EQ(to_file && whole ? without_dictionary_date(file.text(), since) : file.text(),
                      to_file ? in_file : "old content");
            EXPECT_EQ(to_fd && whole ? without_dictionary_date(target.text(), since) : target.text(),
                      to_fd && whole ? source_document : "");
        }
}

TYPED_TEST(EnvIndexDictionaryWriterConversion, ADocumentThatCannotBeReadWithoutErrorsIsNotPassedOn) {
    const struct {
        std::string document, err;
    } rows[] = {
        {"<ENVINDEXDICTX/>", "WRONG root tag: 'ENVINDEXDICTX' must be 'ENVINDEXDICT'\n"},
        {"<ENVINDEXDICT><CHANNEL><INDEX>3</INDEX><PROP>A</PROP></CHANNEL></X>",
         "\nFatal Error at (file my_mem_info, line 1, char 66): expected end of tag 'ENVINDEXDICT'\n"},
    };
    for (const auto &row : rows)
        for (int mode : all_dictionary_modes) {
            const temporary_file file("untouched");
            const dump_outcome seen = convert_dictionary<TypeParam>(row.document, &file.path(), mode, -1);
            EXPECT_EQ(seen.result, 3) << mode;
            EXPECT_EQ(seen.streams.out, cannot_be_read) << mode;
            EXPECT_EQ(seen.streams.err, row.err) << mode;
            EXPECT_EQ(file.text(), "untouched") << mode;
        }
}

TYPED_TEST(EnvIndexDictionaryWriterConversion, RefusesANullText) {
    const captured seen = capture([] { EXPECT_EQ(TypeParam::convert(nullptr, nullptr, text_lines, -1), 3); });
    EXPECT_EQ(seen.out, cannot_be_read);
    EXPECT_EQ(seen.err, "");
}

TYPED_TEST(EnvIndexDictionaryWriterConversion, EveryCutDocumentGivesNothing) {
    const std::string whole = source;
    for (std::size_t length = 1; length < whole.size(); ++length) {
        const dump_outcome seen =
            convert_dictionary<TypeParam>(whole.substr(0, length), nullptr, text_lines, -1);
        EXPECT_EQ(seen.result, 3) << length;
        EXPECT_EQ(seen.streams.out, cannot_be_read) << length;
    }
}

TYPED_TEST(EnvIndexDictionaryWriterConversion, AnEntryThatStandsThereAgainIsWrittenAgain) {
    const std::string document = "<ENVINDEXDICT><CHANNEL/><PROP>a</PROP><INDEX>1</INDEX><INDEX>2</INDEX>"
                                 "<INDEX>3</INDEX><CHANNEL/><INDEX>4</INDEX><PROP>b</PROP><PROP>c</PROP>"
                                 "<CHANNEL/><PROP>never listed</PROP></ENVINDEXDICT>";
    const temporary_file file;
    EXPECT_EQ(convert_dictionary<TypeParam>(document, &file.path(), text_lines, -1).result, 0);
    const std::string first = "3\ta\t0.000000\t0.000000\n", second = "4\tc\t0.000000\t0.000000\n";
    EXPECT_EQ(file.text(), first + first + first + second + second);
}

TYPED_TEST(EnvIndexDictionaryWriterConversion, HandsOnTheWritersFailures) {
    const temporary_folder folder;
    const std::string missing = folder / "missing/out.xml";
    const dump_outcome unopened = convert_dictionary<TypeParam>(source, &missing, xml_to_file_and_fd, -1);
    EXPECT_EQ(unopened.result, 1);
    EXPECT_EQ(unopened.streams.out,
              std::string(TypeParam::function) + " failed to open file: '" + missing + "'\n");
    EXPECT_EQ(unopened.streams.err, "fopen: No such file or directory\n");
    const dump_outcome unwritten =
        convert_dictionary<TypeParam>(source, nullptr, xml_to_file_and_fd, closed_descriptor());
    EXPECT_EQ(unwritten.result, 2);
    EXPECT_EQ(unwritten.streams.out, TypeParam::write_failed_line);
}

TYPED_TEST(EnvIndexDictionaryWriterConversion, WritesWhatItReadsAlike) {
    const temporary_file first, second;
    const std::string since = local_date();
    EXPECT_EQ(convert_dictionary<TypeParam>(source, &first.path(), xml_to_file_and_fd, -1).result, 0);
    EXPECT_EQ(convert_dictionary<TypeParam>(first.text(), &second.path(), xml_to_file_and_fd, -1).result, 0);
    EXPECT_EQ(without_dictionary_date(second.text(), since), without_dictionary_date(first.text(), since));
}
