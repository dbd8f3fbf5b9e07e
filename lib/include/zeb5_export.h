#ifndef ZEB5_EXPORT_H
#define ZEB5_EXPORT_H

/// Marks what the shared libraries hand out; everything without it stays inside.
#define ZEB5_API __attribute__((visibility("default")))

#endif
