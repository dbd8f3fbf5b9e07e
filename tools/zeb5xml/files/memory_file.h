#ifndef ZEB5XML_MEMORY_FILE_H
#define ZEB5XML_MEMORY_FILE_H

#include "zeb5xml_files.hpp"

using zeb5xml::detail::memory_file;

#endif
