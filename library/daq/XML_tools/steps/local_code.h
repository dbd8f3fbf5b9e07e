#ifndef ZEB5_LOCAL_CODE_H
#define ZEB5_LOCAL_CODE_H

/// What is known of the local code, in which texts are handed out, without asking the transcoder for each
/// text.

namespace zeb5 {

/// Returns whether the default transcoder leaves every ASCII character as it is. The transcoder is asked once
/// for each character set of the locales that the process uses. This starts the platform, so it throws what
/// xml_platform throws.
bool local_code_keeps_ascii();

} // namespace zeb5

#endif
