#include <memory>
#include <string>

#include "files/failure.h"
#include "files/output.h"
#include "records/read_records.h"
#include "records/record_order.h"
#include "subcommands.h"

namespace {

int canonical(const std::string &path) {
    const read_records records(path);
    records.require_all("nothing written");
    output_buffer out;
    for (const keyed_place &one : sorted_places(*records.list))
        out.add(content_of(records.list->at(one.place), records.list->type()) + "\n");
    out.flush();
    return STATUS_DONE;
}

const char details[] =
    R"(One JSON object a line, as `zeb5xml export` writes it, sorted by identity: property, event type,
index or name of the feature; those of one identity, by content. Bits, dimensions and server blocks
are sorted alike. The date of a document and its dialect make no difference.
To have git compare records instead of text:
  git config diff.zeb5xml.textconv 'zeb5xml canonical'
  echo 'channels*.xml diff=zeb5xml' >> .gitattributes
)";

} // namespace

subcommand canonical_subcommand() {
    auto file = std::make_shared<std::string>();
    return {"canonical",
            "Write the records of a document so that equal ones give equal lines",
            details,
            {{"FILE", file.get(), "Document of any kind; - is standard input", argument::REQUIRED}},
            [file] { return canonical(*file); },
            {{"What changed, in the eyes of any tool that compares lines",
              "zeb5xml canonical channels.xml | sha256sum"}}};
}
