#ifndef ZEB5_CHAN_DESCRIPTIONS_READER_H
#define ZEB5_CHAN_DESCRIPTIONS_READER_H

/// Reads channel documents of the CHANDESCRIPTIONS dialect.

#include "readers/channel_reading.h"
#include "steps/document_steps.h"

namespace zeb5 {

/// Reads what follows the root into `list`. `shift`: EVTYPE and DTYPE hold type numbers, which are turned
/// into masks. `merges`: a channel whose property is in the list already is merged into that record.
void read_chan_descriptions(document_steps &steps, channel_vector &list, bool shift, bool merges);

} // namespace zeb5

#endif
