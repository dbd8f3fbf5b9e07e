#include "records/family_list.h"
#include "records/record_types.h"
#include "zeb5_gige_descr.h"

namespace {

struct camera_family {
    using record = ZEB5GigEFeature;
    using list = std::vector<record *>;
    static constexpr const record_type &type = feature_type;

    static int read(char *path, list *records) { return zeb5_fill_gige_descr(path, records); } // true: failed
    static void print(const list *records) { zeb5_dump_gige_descr(records); }
    static void clean(list *records) { zeb5_clean_gige_descr(records); }
};

} // namespace

const record_kind camera_records = {"camera file", "a camera file", "features", &feature_type,
                                    make_list<camera_family>};
