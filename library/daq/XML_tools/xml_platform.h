#ifndef ZEB5_XML_PLATFORM_H
#define ZEB5_XML_PLATFORM_H

#include "zeb5_export.h"

/// While an object of this class lives, the Xerces platform is up.
///
/// Plain documents in ASCII are read without the platform, except for the first one in each character set of
/// a locale. Readers of other documents need it, and SAX_Memory_Parser and SAX_File_Parser always do. Each of
/// them starts and stops the platform by itself, which takes 1.4 to 1.9 ms: thirty times as long as reading a
/// document of ten channels. While an xml_platform is held, these calls only change a reference count. Every
/// Initialize and Terminate of this library goes through this class and is serialised here, so readers may
/// run at the same time on different threads. After fork(), the child must not use the library if another
/// thread was reading: a lock that this thread held is never released in the child.
///
/// Xerces does not survive running out of memory while it starts. It ends the process with status 255, or it
/// throws OutOfMemoryException and cannot be started again; every later attempt of this library then throws
/// the same. A process that must go on should hold an xml_platform from its beginning. When memory runs out
/// later, only the one call fails: a reader passes on std::bad_alloc or xercesc::OutOfMemoryException, which
/// is not derived from std::exception.
class ZEB5_API xml_platform {
public:
    /// Throws what xercesc::XMLPlatformUtils::Initialize throws; nothing is held then.
    xml_platform();
    ~xml_platform();

    xml_platform(const xml_platform &) = delete;
    xml_platform &operator=(const xml_platform &) = delete;
};

#endif
