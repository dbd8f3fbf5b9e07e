#ifndef ZEB5_FEATURE_SCAN_H
#define ZEB5_FEATURE_SCAN_H

/// Reads features from the tokens of a plain camera file, without building a tree.

#include <vector>

#include "steps/plain_file.h"
#include "zeb5_gige_descr.h"

namespace zeb5 {

enum class scan_result {
    READ,      // all features are in the list
    NOT_PLAIN, // the XML library has to read the file
    CHANGED    // somebody has written to the file meanwhile
};

/// Reads a whole file, or leaves `out` as it was.
scan_result scan_features(const plain_file &file, std::vector<ZEB5GigEFeature *> &out);

} // namespace zeb5

#endif
