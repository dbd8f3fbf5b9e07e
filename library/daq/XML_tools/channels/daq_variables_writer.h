#ifndef ZEB5_DAQ_VARIABLES_WRITER_H
#define ZEB5_DAQ_VARIABLES_WRITER_H

/// Writes channels in the DAQvariables dialect.

#include "elements/chan_descr_tags.h"
#include "parse_chan_descr.h"
#include "text/xml_text.h"

namespace zeb5 {

template <const char *Name> inline constexpr element_tags daq_tag(Name);

void write_daq_variable(xml_text &out, const chan_descr_2010 &channel);

} // namespace zeb5

#endif
