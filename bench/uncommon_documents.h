#ifndef ZEB5_BENCH_UNCOMMON_DOCUMENTS_H
#define ZEB5_BENCH_UNCOMMON_DOCUMENTS_H

/// Documents that the library's writer would not write: its CHANDESCRIPTIONS with a few places changed.

#include <string>

namespace bench {

/// How the first letter of a text is spelled, and the declared encoding.
enum spelling { UTF8, LATIN1, REFERENCES, SPELLINGS };
inline constexpr const char *spelling_names[] = {"UTF-8", "ISO-8859-1", "references"};
static_assert(sizeof spelling_names / sizeof *spelling_names == SPELLINGS);

/// Which texts have that letter; the others are ASCII.
enum text_choice { NO_TEXT, ONE_TEXT_OF_100, ALL_DESC_AND_UNITS };

/// The channels of channel_document() with the first letter of the chosen texts replaced by a micro sign; for
/// references, by `&#181;` and `&lt;` in turn. For ONE_TEXT_OF_100, the chosen texts are of each of a
/// channel's nine kinds in turn.
std::string spelled_document(int channels, spelling how, text_choice which);

/// Where the scanner meets what makes it hand the document over.
enum surprise { AT_ONCE, IN_FIRST_CHANNEL, IN_LAST_CHANNEL, SURPRISES };

/// The channels of channel_document(): for AT_ONCE with a DOCTYPE in front, else with one more element whose
/// name is not ASCII. All give the same records.
std::string handed_over_document(int channels, surprise where);

} // namespace bench

#endif
