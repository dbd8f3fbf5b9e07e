#ifndef ZEB5_XML_PLATFORM_H
#define ZEB5_XML_PLATFORM_H

#include "zeb5_export.h"

/// Keeps the Xerces platform up while it lives.
///
/// Plain documents in ASCII are read without it, but for the first one of a process. For others, and in
/// SAX_Memory_Parser and SAX_File_Parser always, a reader starts and stops the platform by itself, which
/// takes 1.2 ms, thirty times the reading of a ten-channel document. In a process that holds an xml_platform
/// for its lifetime those calls are mere reference counts. Every Initialize and Terminate of this library
/// goes through this class and is serialised here, so readers may run at the same time on different threads.
/// After fork(), the child must not use the library if another thread was reading: a lock that this thread
/// held is never released in the child.
///
/// Xerces does not survive running out of memory on its way up: it ends the process with status 255, or
/// throws OutOfMemoryException and cannot be brought up again; every later attempt of this library throws the
/// same then. A process that must go on holds one from its beginning. Out of memory later is the failure of
/// the one call: a reader passes on std::bad_alloc or xercesc::OutOfMemoryException, which is no
/// std::exception.
class ZEB5_API xml_platform {
public:
    /// Throws what xercesc::XMLPlatformUtils::Initialize throws; nothing is held then.
    xml_platform();
    ~xml_platform();

    xml_platform(const xml_platform &) = delete;
    xml_platform &operator=(const xml_platform &) = delete;
};

#endif
