/// Camera files from the file system: whole ones, long ones, encodings, and files that cannot be read.

#include "zeb5_gige_descr.h"

#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>
#include <xercesc/util/PlatformUtils.hpp>

#include "support/camera_features.h"
#include "support/lane.h"
#include "support/repeated_text.h"
#include "support/sanitized.h"
#include "support/watched.h"
#include "xml_platform.h"

namespace {

std::string data_file(const char *name) { return std::string(TEST_DATA_DIR "/") + name; }

/// Reads a file and lists it; the outcome stands first where that is not "read".
std::string listing_of(const std::string &path) {
    feature_list list;
    const std::string outcome = fill(path, list);
    return (outcome == "read" ? "" : outcome) + capture([&] { zeb5_dump_gige_descr(&list); }).out;
}

TEST(Zeb5GigeDescrFiles, OfAMakerIsListedWhole) {
    // Texts of the enumeration's entries and of the category behind it replace its own; an empty tool tip and
    // a CDATA section leave room for the white space behind them
    EXPECT_EQ(listing_of(data_file("camera_quillport.xml")),
              "[0] Name:'ExposureTime' Extension:'ExpTime' type:2 ToolTip:'Exposure time in \xc2\xb5s' "
              "Description:'How long a frame is exposed.\nValues between two steps are rounded.'\n"
              "[1] Name:'TriggerMode' type:3 ToolTip:'One frame a trigger' "
              "Description:'Everything about the trigger'\n"
              "[2] Name:'TriggerSoftware' type:6 ToolTip:'\n      ' Description:''\n"
              "[3] Name:'DeviceUserID' type:5 ToolTip:'Name given by the user' Description:''\n"
              "[5] Name:'PayloadSize' type:1 ToolTip:'Bytes a frame' Description:'\n  '\n");
}

TEST(Zeb5GigeDescrFiles, WrittenByHandIsListedWhole) {
    EXPECT_EQ(listing_of(data_file("camera_tarnwick.xml")),
              "[0] Name:'Timestamp' type:8 ToolTip:'Zeit in 1/10 \xc2\xb5s' Description:''\n"
              "[1] Name:'Reserved1' type:0 ToolTip:'' Description:''\n"
              "[2] Name:'Mirror' Extension:'Flip' type:4 ToolTip:'' Description:'Gr\xc3\xb6\xc3\x9f"
              "e bleibt'\n"
              "[3] Name:'StatusReg' type:7 ToolTip:'' Description:''\n");
}

TEST(Zeb5GigeDescrFiles, OfTheExamplesIsRead) {
    feature_list list;
    EXPECT_EQ(fill(EXAMPLES_DIR "/camera.xml", list), "read");
    ASSERT_EQ(list.size(), 10u);
    EXPECT_EQ(list[4]->extension, "Exposure");
}

TEST(Zeb5GigeDescrFiles, WithoutAFeatureEmptiesTheVectorAndSucceeds) {
    ZEB5GigEFeature before;
    std::vector<ZEB5GigEFeature *> list = {&before, nullptr};
    std::string path = data_file("camera_no_features.xml");
    EXPECT_FALSE(zeb5_fill_gige_descr(path.data(), &list));
    EXPECT_TRUE(list.empty());
}

TEST(Zeb5GigeDescrFiles, ReadTwiceIntoOneVectorLeavesTheFirstFeaturesToTheCaller) {
    feature_list list;
    ASSERT_EQ(fill(data_file("camera_tarnwick.xml"), list), "read");
    feature_list first;
    first.assign(list.begin(), list.end());
    ASSERT_EQ(fill(data_file("camera_quillport.xml"), list), "read");
    EXPECT_EQ(list.size(), 6u);
    ASSERT_EQ(first.size(), 5u);
    EXPECT_EQ(first[0]->name, "Timestamp");
    EXPECT_EQ(list[0]->name, "ExposureTime");
}

/// ASCII as UTF-16, high or low byte first.
std::string utf16(std::string_view ascii, bool high_first) {
    std::string wide = high_first ? "\xfe\xff" : "\xff\xfe";
    for (const char c : ascii) {
        const char bytes[] = {high_first ? '\0' : c, high_first ? c : '\0'};
        wide.append(bytes, 2);
    }
    return wide;
}

TEST(Zeb5GigeDescrFiles, MayComeInAnyEncoding) {
    const xml_platform platform;
    const std::string inside = "<r>\r\n<Integer Name='a'>\r\n<ToolTip>t\r\nu&#xe4;</ToolTip></Integer></r>";
    const std::string features = "1|a||t\nu\xc3\xa4|\n";
    EXPECT_EQ(features_of(inside), features);
    EXPECT_EQ(features_of("\xef\xbb\xbf" + inside), features);
    EXPECT_EQ(features_of("\xef\xbb\xbf<?xml version='1.0' encoding='UTF-8'?>" + inside), features);
    EXPECT_EQ(features_of("<?xml version='1.0' encoding='US-ASCII'?>" + inside), features);
    for (const bool high_first : {true, false}) {
        EXPECT_EQ(features_of(utf16("<?xml version='1.0' encoding='UTF-16'?>" + inside, high_first)),
                  features);
        EXPECT_EQ(features_of(utf16(inside, high_first)), features);
    }
    EXPECT_EQ(features_of("<?xml version='1.0' encoding='ISO-8859-1'?><r><Int64 Name='\xe4'/></r>"),
              "8|\xc3\xa4|||\n");
    // The parser warns of an encoding that the bytes do not have, and reads on
    EXPECT_EQ(features_of("<?xml version='1.0' encoding='UTF-16'?>" + inside), features);
}

TEST(Zeb5GigeDescrFiles, MayHoldVeryLongLinesAndTexts) {
    const std::string long_text =
        times(250'000, "0123456789"); // beyond the million that the parser hands out
    const std::string mixed = times(100'000, "ab\xc3\xa4");
    const std::string references = times(20'000, "x&amp;");
    EXPECT_EQ(features_of("<r><Integer Name='" + mixed + "'><ToolTip>" + long_text +
                          "</ToolTip><Description>" + references + "</Description></Integer></r>"),
              "1|" + mixed + "||" + long_text + '|' + times(20'000, "x&") + '\n');
}

TEST(Zeb5GigeDescrFiles, MayHoldThousandsOfFeatures) {
    const std::string description = times(8, "A feature of the camera, told at length. ");
    std::string document = "<r>", expected;
    for (int i = 0; i < 2'700; ++i) {
        const std::string name = "Feature" + std::to_string(i);
        document += "\n<Group><Integer Name='" + name + "'>\n<ToolTip>" + name +
                    " tip</ToolTip><Description>" + description + "</Description><pValue>" + name +
                    "Reg</pValue></Integer></Group>";
        expected += "1|" + name + "||" + name + " tip|" + description + '\n';
    }
    document += "</r>";
    ASSERT_GT(document.size(), 1'200'000u);
    EXPECT_EQ(features_of(document), expected);
}

TEST(Zeb5GigeDescrFiles, MayHoldTensOfThousandsOfSiblings) {
    const int count = 30'000;
    EXPECT_EQ(features_of("<r>" + times(count, "<Integer Name='a'/>\n") + "</r>"), times(count, "1|a|||\n"));
}

TEST(Zeb5GigeDescrFiles, MayBeNestedDeeperThanTheStackAllows) {
    const int depth = 100'000;
    EXPECT_EQ(features_of(times(depth, "<a>") + "<Integer Name='deep'/>" + times(depth, "</a>")),
              "1|deep|||\n");
    EXPECT_EQ(features_of(times(depth, "<Float Name='f'>") + times(depth, "</Float>")),
              times(depth, "2|f|||\n"));
    EXPECT_EQ(features_of(times(depth, "<a>")), parse_failure);
}

/// What a failed read must leave alone.
void expect_failure(const std::string &path, const std::string &outcome) {
    ZEB5GigEFeature before;
    before.name = "Unknown";
    std::vector<ZEB5GigEFeature *> list = {&before};
    bool failed = false;
    std::string copy = path;
    const captured seen = capture([&] { failed = zeb5_fill_gige_descr(copy.data(), &list); });
    EXPECT_TRUE(failed) << path;
    EXPECT_EQ(seen.out, outcome) << path;
    EXPECT_EQ(seen.err, "") << path;
    ASSERT_EQ(list.size(), 1u) << path;
    EXPECT_EQ(list[0], &before) << path;
    EXPECT_EQ(before.name, "Unknown") << path;
}

const char failure_line[] = "An error occurred during parsing\n ";

TEST(Zeb5GigeDescrFiles, ThatCannotBeOpenedFails) {
    const temporary_folder folder;
    expect_failure(folder / "none.xml", failure_line);
    expect_failure(folder / "none/none.xml", failure_line);
    expect_failure(folder.path(), failure_line);
    expect_failure("", failure_line);
    expect_failure("/dev/null", failure_line);
    expect_failure("http://127.0.0.1:1/camera.xml", failure_line);
}

TEST(Zeb5GigeDescrFiles, ThatIsNotWellFormedFails) {
    const xml_platform platform;
    const std::string documents[] = {
        "",
        "\n",
        "junk",
        "junk\n<?xml version='1.0'?>\n<r><Integer Name='a'/></r>",
        "\n<?xml version='1.0'?>\n<r><Integer Name='a'/></r>",
        " <?xml version='1.0'?><r/>",
        "<?xml version='1.0'?>",
        "<?xml version='2.0'?><r/>",
        "<?xml version='1.0' encoding='none-such'?><r/>",
        "<?xml version='1.0' encod\xc3\xa4ng='UTF-8'?><r/>",
        "<r>",
        "<r></s>",
        "<r/><s/>",
        "<r/>junk",
        "<r><Integer Name='a'/><Float Name='b' Name='c'/></r>",
        "<r><Integer Name=a/></r>",
        "<r><Integer Name='<'/></r>",
        "<r>\xff</r>",
        "<r>\x01</r>",
        "<r>&none;</r>",
        "<r>&#0;</r>",
        std::string("<r>\0</r>", 8),
        "<r><!-- -- --></r>",
    };
    for (const auto &document : documents) {
        SCOPED_TRACE(document);
        expect_failure(temporary_file(document).path(), failure_line);
    }
}

TEST(Zeb5GigeDescrFiles, WithAnUnknownVersionTellsOfADomException) {
    const temporary_file file("<?xml version='1.2'?><r><Integer Name='a'/></r>");
    expect_failure(file.path(), "\nDOM Error during parsing: '" + file.path() +
                                    "' DOMException code is: 9\nMessage is: implementation does not support "
                                    "the requested type of object or operation");
}

TEST(Zeb5GigeDescrFiles, CutAnywhereInsideItsRootFails) {
    const xml_platform platform;
    const std::string whole = file_text(data_file("camera_tarnwick.xml"));
    const std::size_t end = whole.rfind('>') + 1;
    EXPECT_NE(features_of(whole.substr(0, end)), parse_failure);
    for (std::size_t length = 0; length < end; ++length) {
        SCOPED_TRACE(length);
        expect_failure(temporary_file(whole.substr(0, length)).path(), failure_line);
    }
}

/// The thread ends where the parser next opens or reads a file.
TEST(Zeb5GigeDescrFiles, MayBeLeftByAThreadThatIsCancelled) {
    if (is_sanitized)
        GTEST_SKIP() << "the address sanitizer takes the unwinding of a cancelled thread for an overflow";
    const xml_platform platform;
    temporary_file file("<!DOCTYPE r><r><Integer Name='a'/></r>");
    for (const reading_way way : both_ways) {
        const way_in_use used(way);
        pthread_t thread;
        const auto read = [](void *path) -> void * {
            pthread_cancel(pthread_self());
            feature_list list;
            zeb5_fill_gige_descr(static_cast<char *>(path), &list);
            return nullptr;
        };
        ASSERT_EQ(pthread_create(&thread, nullptr, read, file.c_path()), 0);
        void *result = nullptr;
        ASSERT_EQ(pthread_join(thread, &result), 0);
        EXPECT_EQ(result, PTHREAD_CANCELED) << way_name(way);
    }
}

TEST(Zeb5GigeDescrFiles, WithoutANameOrAVectorFailsWithoutAWord) {
    feature_list list;
    char path[] = "/dev/null";
    const captured seen = capture([&] {
        EXPECT_TRUE(zeb5_fill_gige_descr(nullptr, &list));
        EXPECT_TRUE(zeb5_fill_gige_descr(path, nullptr));
        EXPECT_TRUE(zeb5_fill_gige_descr(nullptr, nullptr));
    });
    EXPECT_EQ(seen.out + seen.err, "");
    EXPECT_TRUE(list.empty());
}

const std::string with_entities = "<!DOCTYPE r [<!ENTITY e 'E'><!ENTITY two '&e;E'>"
                                  "<!ENTITY tip '<ToolTip>T &two;</ToolTip>'>"
                                  "<!ATTLIST Float Name CDATA 'Default'>]>";

TEST(Zeb5GigeDescrFiles, MayDeclareEntitiesAndDefaults) {
    EXPECT_EQ(features_of(with_entities + "<r><Integer Name='a&e;'>&tip;<Description>b &two; c</Description>"
                                          "</Integer><Float/></r>"),
              "1|aE||T EE|b EE c\n2|Default|||\n");
}

TEST(Zeb5GigeDescrFiles, MayDeclareIdentifiers) {
    EXPECT_EQ(features_of("<!DOCTYPE r [<!ATTLIST Integer Name ID #IMPLIED>]>"
                          "<r><Integer Name='a'/><Integer Name='a'/></r>"),
              "1|a|||\n1|a|||\n");
}

TEST(Zeb5GigeDescrFiles, MayExpandEntities) {
    for (const std::string &references :
         {times(2000, "&e;"), times(1000, "&two;"), "<Int64 Name='" + times(2000, "&e;") + "'/>",
          times(2000, "&amp;&#65;&lt;")})
        EXPECT_NE(features_of(with_entities + "<r>" + references + "</r>"), parse_failure)
            << references.substr(0, 40);
}

/// Entities e0 to e7, each of which is ten of the one before: e7 is ten million blanks.
std::string bomb(const std::string &kind, const std::string &mark) {
    std::string all = "<!ENTITY " + kind + " e0 ' '>";
    for (int i = 1; i < 8; ++i)
        all += "<!ENTITY " + kind + " e" + std::to_string(i) + " '" +
               times(10, mark + "e" + std::to_string(i - 1) + ";") + "'>";
    return all;
}

TEST(Zeb5GigeDescrFiles, MayNotExpandEntitiesThatGrowWithEveryLevel) {
    const std::string documents[] = {
        "<!DOCTYPE r [" + bomb("", "&") + "]><r>&e7;</r>",
        "<!DOCTYPE r [" + bomb("", "&") + "]><r Name='&e7;'/>",
        "<!DOCTYPE r [<!ENTITY a '&b;'><!ENTITY b '&a;'>]><r>&a;</r>",
    };
    for (const auto &document : documents) {
        SCOPED_TRACE(document);
        expect_failure(temporary_file(document).path(), failure_line);
    }
}

TEST(Zeb5GigeDescrFiles, MayNotExpandThemInItsDeclarationsEither) {
    const std::string documents[] = {
        "<!DOCTYPE r [" + bomb("", "&") + "<!ATTLIST r Name CDATA '&e7;'>]><r/>",
        "<!DOCTYPE r [" + bomb("%", "&#37;") + "%e7;]><r/>",
    };
    for (const auto &document : documents) {
        SCOPED_TRACE(document);
        expect_failure(temporary_file(document).path(), failure_line);
    }
}

TEST(Zeb5GigeDescrFiles, OpensNoOtherFileAndNoAddress) {
    setenv("no_proxy", "*", 1);
    const temporary_file secret("<!ENTITY s 'secret'>");
    const watched_file watch(secret.path());
    const watched_port port;
    for (const std::string &target : {secret.path(), "file://" + secret.path(), port.address()}) {
        const std::string documents[] = {
            "<!DOCTYPE r SYSTEM '" + target + "'><r/>",
            "<!DOCTYPE r PUBLIC '-//X//EN' '" + target + "'><r/>",
            "<!DOCTYPE r SYSTEM '" + target + "' [<!ELEMENT r ANY>]><r/>",
            "<!DOCTYPE r [<!ENTITY e SYSTEM '" + target + "'>]><r>&e;</r>",
            "<!DOCTYPE r [<!ENTITY e PUBLIC '-//X//EN' '" + target + "'>]><r>&e;</r>",
            "<!DOCTYPE r [<!ENTITY % e SYSTEM '" + target + "'> %e;]><r/>",
        };
        for (const auto &document : documents) {
            SCOPED_TRACE(document);
            expect_failure(temporary_file(document).path(), failure_line);
        }
        // Declared but not used is no harm
        EXPECT_EQ(features_of("<!DOCTYPE r [<!ENTITY e SYSTEM '" + target + "'>]><r><Int64 Name='a'/></r>"),
                  "8|a|||\n");
        EXPECT_EQ(features_of("<r xmlns:x='http://www.w3.org/2001/XMLSchema-instance' x:schemaLocation='a " +
                              target + "' x:noNamespaceSchemaLocation='" + target + "'/>"),
                  "");
    }
    EXPECT_FALSE(watch.was_opened());
    EXPECT_FALSE(port.was_called());
    EXPECT_EQ(secret.text(), "<!ENTITY s 'secret'>");
    EXPECT_TRUE(watch.was_opened()) << "the watch does not see what it should";
}

/// The platform has its memory manager from the first reference to the last.
bool is_up() { return xercesc::XMLPlatformUtils::fgMemoryManager != nullptr; }

TEST(Zeb5GigeDescrFiles, GivesThePlatformBackHoweverItsReadingEnds) {
    const temporary_file version("<?xml version='1.2'?><r/>");
    const std::string paths[] = {data_file("camera_quillport.xml"), data_file("camera_no_features.xml"),
                                 "/nowhere/none.xml", "/dev/null", version.path()};
    for (const auto &path : paths) {
        feature_list list;
        ASSERT_FALSE(is_up()) << path;
        fill(path, list);
        ASSERT_FALSE(is_up()) << path << ": taken once too often";
        const auto holder = std::make_unique<xml_platform>();
        zeb5_clean_gige_descr(&list);
        fill(path, list);
        ASSERT_TRUE(is_up()) << path << ": given back once too often";
    }
    ASSERT_FALSE(is_up());
}

TEST(Zeb5GigeDescrFiles, MayBeReadOnSeveralThreads) {
    feature_list alone;
    ASSERT_EQ(fill(data_file("camera_quillport.xml"), alone), "read");
    std::vector<std::string> seen(4);
    std::vector<std::thread> threads;
    threads.reserve(seen.size());
    for (auto &features : seen)
        threads.emplace_back([&features] {
            for (int i = 0; i < 20; ++i) {
                feature_list list;
                std::string path = data_file("camera_quillport.xml");
                if (!zeb5_fill_gige_descr(path.data(), &list) && i == 19)
                    features = all_features(list);
            }
        });
    for (auto &thread : threads)
        thread.join();
    EXPECT_EQ(seen, std::vector<std::string>(4, all_features(alone)));
}

} // namespace
