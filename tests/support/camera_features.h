#ifndef CAMERA_FEATURES_H
#define CAMERA_FEATURES_H

/// Camera features as one text, so that whole vectors are compared at once.

#include <string>
#include <string_view>
#include <vector>

#include "support/capture.h"
#include "support/test_files.h"
#include "zeb5_gige_descr.h"

/// A vector of features that is cleaned when the test is over.
class feature_list : public std::vector<ZEB5GigEFeature *> {
public:
    feature_list() = default;
    ~feature_list() { zeb5_clean_gige_descr(this); }
    feature_list(const feature_list &) = delete;
    feature_list &operator=(const feature_list &) = delete;
};

/// One line a feature: type, name, extension, tool tip and description.
inline std::string all_features(const feature_list &list) {
    std::string all;
    for (const ZEB5GigEFeature *feature : list)
        all += std::to_string(feature->type) + '|' + feature->name + '|' + feature->extension + '|' +
               feature->tooltip + '|' + feature->description + '\n';
    return all;
}

/// What becomes of a fill: "read", "failed" or, for anything printed, that too.
inline std::string fill(const std::string &path, feature_list &list) {
    std::string copy = path;
    bool failed = false;
    const captured seen = capture([&] { failed = zeb5_fill_gige_descr(copy.data(), &list); });
    return (failed ? "failed" : "read") + (seen.out.empty() ? "" : ": " + seen.out) + seen.err;
}

/// The features of a document, after the outcome where that is not "read".
inline std::string features_of(std::string_view document) {
    const temporary_file file(document);
    feature_list list;
    const std::string outcome = fill(file.path(), list);
    return (outcome == "read" ? "" : outcome) + all_features(list);
}

/// The outcome of a document that cannot be read.
inline const std::string parse_failure = "failed: An error occurred during parsing\n ";

#endif
