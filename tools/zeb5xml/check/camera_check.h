#ifndef ZEB5XML_CAMERA_CHECK_H
#define ZEB5XML_CAMERA_CHECK_H

#include <string_view>
#include <vector>

#include "check/check_rules.h"
#include "check/outline.h"
#include "zeb5_gige_descr.h"

/// Whether the element is one of those that make a feature.
bool is_feature_element(std::string_view name);

/// Compares each feature of a camera file with its element. `features` is what the reader made of the whole
/// file.
std::vector<finding> faults_of_camera(const outline &content, const std::vector<ZEB5GigEFeature *> &features);

#endif
