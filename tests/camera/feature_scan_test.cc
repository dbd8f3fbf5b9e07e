/// Which camera files the scanner reads to their end, which it leaves midway and which at once; and that the
/// list is untouched unless it read them all.

#include "readers/feature_scan.h"

#include <memory>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "support/camera_features.h"
#include "support/lane_steps.h"
#include "xml_platform.h"

namespace {

using zeb5::lane_end;
using zeb5::scan_result;

struct scan {
    scan_result result;
    std::optional<lane_end> lane;
    std::string features; // of the list
};

/// Scans a file into a list that has a feature already.
scan scan_file(const std::string &path, reading_way way) {
    const way_in_use used(way);
    last_lane_end.reset();
    zeb5::lane.watch = [](lane_end end) { last_lane_end = end; };
    feature_list list;
    list.push_back(new ZEB5GigEFeature);
    list.back()->name = "before";
    const std::unique_ptr<ZEB5GigEFeature> before(list.back());
    scan seen{zeb5::scan_features(zeb5::plain_file(path.c_str()), list), last_lane_end, all_features(list)};
    if (seen.result != scan_result::READ)
        list.clear(); // else it has others, and this one is the caller's
    return seen;
}

scan scan_document(const std::string &document, reading_way way = WITH_LANE) {
    const temporary_file file(document);
    return scan_file(file.path(), way);
}

constexpr char untouched[] = "0|before|||\n";

TEST(FeatureScan, ReadsPlainFilesToTheirEnd) {
    const xml_platform platform;
    struct {
        const char *document;
        const char *features;
    } const rows[] = {
        {"<Integer Name='a'/>", "1|a|||\n"},
        {"<c><Float Name='a' Other='b'><ToolTip>t</ToolTip></Float></c>", "2|a||t|\n"},
        {"<c><Float Name='a&lt;'><ToolTip>t&amp;u</ToolTip>x</Float>y</c>", "2|a<||t&u|\n"},
        {"<c><Float Name='\xC3\xA9'><ToolTip>\xC3\xA8</ToolTip></Float></c>",
         nullptr}, // as the locale has them
        {"<c><Float Name='a'/><!-- c --><?p?><![CDATA[x]]></c>", "2|a|||\n"},
        {"<c/>", ""},
    };
    for (const auto &row : rows) {
        const scan seen = scan_document(row.document);
        EXPECT_EQ(seen.result, scan_result::READ) << row.document;
        EXPECT_EQ(seen.lane, lane_end::FINISHED) << row.document;
        const way_in_use used(WITHOUT_LANE);
        EXPECT_EQ(seen.features, features_of(row.document)) << row.document;
        if (row.features) {
            EXPECT_EQ(seen.features, row.features);
        }
    }
}

TEST(FeatureScan, LeavesAListAsItWasWhereAFileIsNotPlain) {
    struct {
        const char *document;
        lane_end lane;
    } const rows[] = {
        {"", lane_end::LEFT_AT_ONCE},
        {"<!DOCTYPE c><c><Float Name='a'/></c>", lane_end::LEFT_AT_ONCE},
        {"<c>&e;<Float Name='a'/></c>", lane_end::LEFT_AT_ONCE},
        {"<c><Float Name='a'/>&e;</c>", lane_end::LEFT_MIDWAY},
        {"<c><Float Name='a'/><Float Name='&e;'/></c>", lane_end::LEFT_MIDWAY},
        {"<c><Float Name='a'/>", lane_end::LEFT_MIDWAY},
        {"<c><Float Name='a'/></c><c/>", lane_end::LEFT_MIDWAY},
    };
    for (const auto &row : rows) {
        const scan seen = scan_document(row.document);
        EXPECT_EQ(seen.result, scan_result::NOT_PLAIN) << row.document;
        EXPECT_EQ(seen.lane, row.lane) << row.document;
        EXPECT_EQ(seen.features, untouched) << row.document;
    }
}

TEST(FeatureScan, LeavesFilesWithManyNamesOfAttributesToTheParser) {
    for (const int names : {100, 200}) {
        std::string document = "<c><Float Name='a'/>";
        for (int i = 0; i < names; ++i)
            document += "<x a" + std::to_string(i) + "='1'/>";
        EXPECT_EQ(scan_document(document + "</c>").result,
                  names == 100 ? scan_result::READ : scan_result::NOT_PLAIN)
            << names;
    }
}

TEST(FeatureScan, LeavesWhatIsNoFileToTheParser) {
    const temporary_folder folder;
    for (const std::string &path : {folder.path(), folder / "none"}) {
        const scan seen = scan_file(path, WITH_LANE);
        EXPECT_EQ(seen.result, scan_result::NOT_PLAIN);
        EXPECT_EQ(seen.lane, lane_end::LEFT_AT_ONCE);
        EXPECT_EQ(seen.features, untouched);
    }
}

TEST(FeatureScan, ReadsNothingWhereTheLaneIsClosed) {
    const scan seen = scan_document("<Integer Name='a'/>", WITHOUT_LANE);
    EXPECT_EQ(seen.result, scan_result::NOT_PLAIN);
    EXPECT_EQ(seen.lane, std::nullopt);
    EXPECT_EQ(seen.features, untouched);
}

} // namespace
