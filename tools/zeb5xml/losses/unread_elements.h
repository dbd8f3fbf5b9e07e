#ifndef ZEB5XML_UNREAD_ELEMENTS_H
#define ZEB5XML_UNREAD_ELEMENTS_H

#include <string>
#include <vector>

#include "files/document.h"

/// Elements that are written for other programs and that no reader takes, such as the DBKey of DAQvariables:
/// one line for each name, with the place of the first, in the order of the document. Those that hold what a
/// writer puts there for want of a value are left out, and so is the date of the document.
std::vector<std::string> unread_elements(const document &source);

#endif
