#ifndef ZEB5XML_CATALOGUE_PARTS_H
#define ZEB5XML_CATALOGUE_PARTS_H

/// A file of this folder, as it was when the command was built.
struct catalogue_part {
    const char *name;
    const char *text;
};
extern const catalogue_part catalogue_parts[];

#endif
