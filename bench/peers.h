#ifndef ZEB5_BENCH_PEERS_H
#define ZEB5_BENCH_PEERS_H

/// The same work done with other XML libraries, each used as its manual shows. Before anything is measured,
/// their results are compared with this library's.

#include <string>
#include <vector>

#include "documents.h"
#include "zeb5_gige_descr.h"

namespace bench {

/// A reader of channels: of a document in memory and of a file.
struct channel_peer {
    const char *name;
    void (*read)(const std::string &document, dialect form, channel_list &list);
    void (*read_file)(const char *path, dialect form, channel_list &list);
};
extern const channel_peer libxml2_reader;
extern const channel_peer expat_reader;
extern const channel_peer pugixml_reader;

/// A writer of CHANDESCRIPTIONS; `text` gets the document.
struct channel_writer_peer {
    const char *name;
    void (*write)(const channel_list &list, std::string &text);
};
extern const channel_writer_peer fprintf_writer;
extern const channel_writer_peer libxml2_writer;
extern const channel_writer_peer pugixml_writer;

/// A reader of camera files, which builds the whole tree and then collects the features. A feature in the
/// generated files has a name, a tool tip and a description only.
using feature_list = std::vector<ZEB5GigEFeature *>;
struct camera_peer {
    const char *name;
    void (*read_file)(const char *path, feature_list &list);
};
extern const camera_peer libxml2_camera;
extern const camera_peer pugixml_camera;

} // namespace bench

#endif
