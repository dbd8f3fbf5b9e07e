#ifndef ZEB5_EXPORT_H
#define ZEB5_EXPORT_H

/// Marks what the shared libraries export; everything else is hidden.
#define ZEB5_API __attribute__((visibility("default")))

#endif
