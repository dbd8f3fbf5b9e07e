#ifndef ZEB5XML_KEPT_LISTS_H
#define ZEB5XML_KEPT_LISTS_H

/// What the library's readers of files keep of a document, whatever its faults are. Their reports are
/// dropped.

#include <memory>
#include <string>
#include <vector>

#include "zeb5_gige_descr.h"

/// The address of a vector of pointers to records, which lasts as long as this.
using kept_list = std::shared_ptr<const void>;

kept_list kept_channels(std::string path);
kept_list kept_events(std::string path);
kept_list kept_dictionary(std::string path); // of the 2010 layout, whose fields hold all that classic ones do

std::shared_ptr<const std::vector<ZEB5GigEFeature *>> kept_features(std::string path);

#endif
