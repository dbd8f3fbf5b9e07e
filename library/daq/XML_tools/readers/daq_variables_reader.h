#ifndef ZEB5_DAQ_VARIABLES_READER_H
#define ZEB5_DAQ_VARIABLES_READER_H

/// Reads channel documents of the DAQvariables dialect.

#include "readers/channel_reading.h"
#include "steps/document_steps.h"

namespace zeb5 {

/// Reads what follows the root into `list`. `shift`: evType holds type numbers, which are turned into masks
/// where the variant does that. Returns the number of missing attributes, each of which was reported.
int read_daq_variables(document_steps &steps, channel_vector &list, bool shift,
                       const channel_variant &variant);

} // namespace zeb5

#endif
