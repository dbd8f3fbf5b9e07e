#include <memory>
#include <string>

#include "failure.h"
#include "output.h"
#include "read_records.h"
#include "record_order.h"
#include "subcommand.h"

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

} // namespace

subcommand canonical_subcommand() {
    auto file = std::make_shared<std::string>();
    return {"canonical",
            "Write the records of a document so that equal ones give equal lines",
            "One JSON object a line, as `zeb5xml export` writes it, sorted by identity: property, event "
            "type, index\n"
            "or name of the feature; those of one identity, by content. Bits, dimensions and server blocks "
            "are\n"
            "sorted alike. The date of a document and its dialect make no difference.\n"
            "To have git compare records instead of text:\n"
            "  git config diff.zeb5xml.textconv 'zeb5xml canonical'\n"
            "  echo 'channels*.xml diff=zeb5xml' >> .gitattributes\n",
            {{"FILE", file.get(), "Document of any kind; - is standard input", argument::REQUIRED}},
            [file] { return canonical(*file); },
            {{"What changed, in the eyes of any tool that compares lines",
              "zeb5xml canonical channels.xml | sha256sum"}}};
}
