#ifndef ZEB5_BENCH_UNCOMMON_DOCUMENTS_H
#define ZEB5_BENCH_UNCOMMON_DOCUMENTS_H

/// CHANDESCRIPTIONS that the library's writer would not make: the written ones with a few places changed.

#include <string>

namespace bench {

/// How a text has its first letter, and how the document is declared.
enum spelling { UTF8, LATIN1, REFERENCES, SPELLINGS };
inline constexpr const char *spelling_names[] = {"UTF-8", "ISO-8859-1", "references"};
static_assert(sizeof spelling_names / sizeof *spelling_names == SPELLINGS);

/// Which texts have it; the others are ASCII.
enum text_choice { NO_TEXT, ONE_TEXT_OF_100, ALL_DESC_AND_UNITS };

/// The channels of channel_document() with the first letter of the chosen texts replaced by a micro sign, as
/// a reference by `&lt;` in turn with it. One text of 100 is each kind of text in turn: a channel has nine.
std::string spelled_document(int channels, spelling how, text_choice which);

/// Why a document is handed over, and how late that is seen.
enum surprise { AT_ONCE, IN_FIRST_CHANNEL, IN_LAST_CHANNEL, SURPRISES };

/// The channels of channel_document(), AT_ONCE with a DOCTYPE before them, else with one further element
/// whose name is not ASCII. All make the same records.
std::string handed_over_document(int channels, surprise where);

} // namespace bench

#endif
