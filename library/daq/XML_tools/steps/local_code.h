#ifndef ZEB5_LOCAL_CODE_H
#define ZEB5_LOCAL_CODE_H

/// What is known of the code in which texts are handed out, without asking the transcoder for each of them.

namespace zeb5 {

/// Whether the default transcoder leaves every ASCII character as it is. It is asked once for each character
/// set of a locale that the process uses; the platform comes up for that, and this throws what xml_platform
/// throws.
bool local_code_keeps_ascii();

} // namespace zeb5

#endif
