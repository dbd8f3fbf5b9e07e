#ifndef ZEB5_GIGE_DESCR_H
#define ZEB5_GIGE_DESCR_H

/// Features of a GigE Vision camera, read from the camera's XML feature file.
///
/// Functions of type bool return true when they FAILED. A feature is an element, at any depth, whose name is
/// that of a kind of feature. Its name comes from its attribute Name, its texts from the ToolTip and
/// Description elements that follow, up to the next feature, and its alternative name from a PvRename. It
/// does not matter where an element stands: texts of a category or of an enumeration's entries replace those
/// of the feature before them, and an element without text takes the next text of the file, white space
/// included. A plain file is read as a stream of tokens; for any other, the DOM parser builds a tree of the
/// whole document. Files have the limits of SAX_Memory_Parser.h with two differences: content models may be
/// of any size, and names of attributes count as those of elements, so that there may be 4,096 of both
/// together.
///
/// Several files may be read at the same time on different threads; one vector belongs to one thread at a
/// time.

#include <string>
#include <vector>

#include <xercesc/dom/DOMNodeList.hpp>

#include "zeb5_export.h"

/// Kinds of feature; FeatureTags holds the element name of each.
enum feature_tags {
    FEATURE_TYPE_UNDEF = 0,
    FEATURE_TYPE_INT = 1,
    FEATURE_TYPE_FLOAT = 2,
    FEATURE_TYPE_ENUMER = 3,
    FEATURE_TYPE_BOOL = 4,
    FEATURE_TYPE_STRING = 5,
    FEATURE_TYPE_COMMAND = 6,
    FEATURE_TYPE_REGISTER = 7,
    FEATURE_TYPE_LONG = 8,
    FEATURE_TYPE_MAX = 9
};
static const char *const FeatureTags[FEATURE_TYPE_MAX] = {
    "Undefined", "Integer", "Float", "Enumeration", "Boolean", "StringReg", "Command", "IntReg", "Int64"};

/// Elements that give details of a feature. Extension is listed but has no effect.
enum more_tags {
    MORE_TAGS_EXTENSION = 0,
    MORE_TAGS_PVRENAME = 1,
    MORE_TAGS_TOOLTIP = 2,
    MORE_TAGS_DESCRIPTION = 3,
    MORE_TAGS_MAX = 4
};
static const char *const MoreTags[MORE_TAGS_MAX] = {"Extension", "PvRename", "ToolTip", "Description"};

enum attribute_names { ATTRIBUTE_NAME = 0, ATTRIBUTE_MAX = 1 };
static const char *const Attributes[ATTRIBUTE_MAX] = {"Name"};

/// One feature; a text that the file does not give is empty.
class ZEB5_API ZEB5GigEFeature {
public:
    ZEB5GigEFeature();
    ~ZEB5GigEFeature();

    int type;              // feature_tags
    std::string name;      // attribute Name of the feature's element
    std::string extension; // alternative name, given by a PvRename
    std::string tooltip;
    std::string description;
};

/// Reads a camera file. Once the file is parsed, `*out` is emptied WITHOUT releasing what it held. Returns
/// false when done. Returns TRUE WHEN IT FAILED, and leaves `*out` as it was: for a null argument, and, with
/// a message on standard output, for a file that changes while it is read (SECURITY.md says which changes
/// are not seen) and for any error of the parser, recoverable or not (warnings are ignored). When memory runs
/// out it fails, too, and may leave the features that it has found so far. The features are made with `new`;
/// release them with zeb5_clean_gige_descr().
ZEB5_API bool zeb5_fill_gige_descr(char *file_name, std::vector<ZEB5GigEFeature *> *out);

/// Appends the features found in the nodes and below them, depth first. The nodes may be the children of a
/// node or any other list; what stands before their first feature goes to the last feature of `*out`. A text
/// that was not found is "Unknown" or "Waiting"; zeb5_fill_gige_descr() makes it empty. A DOM exception is
/// reported on standard output and ends the walk of the list in which it occurred, but not of the lists
/// around it. Returns true when an argument is null or when an exception ended the walk of `nodes` itself.
ZEB5_API bool dump_nodes(xercesc::DOMNodeList *nodes, std::vector<ZEB5GigEFeature *> *out);

/// Lists the features that have a name on standard output, each under its place in the vector; prints nothing
/// for a null or empty vector.
ZEB5_API void zeb5_dump_gige_descr(const std::vector<ZEB5GigEFeature *> *out);

/// Releases the features and empties the vector; does nothing for a null vector.
ZEB5_API void zeb5_clean_gige_descr(std::vector<ZEB5GigEFeature *> *out);

#endif
