#ifndef ZEB5_CHAN_DESCRIPTIONS_WRITER_H
#define ZEB5_CHAN_DESCRIPTIONS_WRITER_H

/// Writes channels in the CHANDESCRIPTIONS dialect.

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "channels/chan_descr_parts.h"
#include "elements/chan_descr_tags.h"
#include "parse_chan_descr.h"
#include "text/field_text.h"
#include "text/name_hash.h"
#include "text/xml_text.h"

namespace zeb5 {

/// Position of a record in the list, skipped duplicates included.
using list_position = std::uint32_t;

template <tag_number Number, tag_level Level = OF_CHANNEL>
inline constexpr element_tags chan_descr_tag(tags[Number][Level]);

/// The axes of each channel, by its DAQ name.
class axes_of_channels {
public:
    explicit axes_of_channels(const std::vector<dim_params *> *entries) {
        if (!entries)
            return;
        for (const dim_params *axes : *entries)
            if (axes->name && axes->num != 0 && (axes->params || axes->iparams))
                by_name_.try_emplace(axes->name, axes); // the first one of a name counts
    }

    const dim_params *find(const char (&name)[256]) const {
        if (by_name_.empty())
            return nullptr; // saves the hash
        const auto found = by_name_.find(field_text(name));
        return found == by_name_.end() ? nullptr : found->second;
    }

private:
    std::unordered_map<std::string_view, const dim_params *, seeded_name_hash> by_name_; // names of documents
};

void write_chan_descr(xml_text &out, const chan_descr_2010 &channel, list_position position,
                      const axes_of_channels &all_axes);

} // namespace zeb5

#endif
