#include "narrow_text.h"

#include <algorithm>

#include <emmintrin.h>

namespace zeb5 {

namespace {

/// Whether a character is ASCII and no NUL.
bool is_ascii(XMLCh character) { return static_cast<XMLCh>(character - 1) < 127; }

/// Copies characters `Width` at a time; the last ones overlap those before.
template <std::size_t Width> bool narrow_by(const XMLCh *text, std::size_t length, char *out) {
    static_assert(sizeof(XMLCh) == 2 && (Width == 8 || Width == 4));
    __m128i beyond = _mm_setzero_si128(); // set where a character is not 1..127
    const auto narrow_at = [&](std::size_t i) {
        const auto *const wide = reinterpret_cast<const __m128i *>(text + i);
        const __m128i characters = Width == 8 ? _mm_loadu_si128(wide) : _mm_loadl_epi64(wide);
        beyond = _mm_or_si128(
            beyond, _mm_subs_epu16(_mm_sub_epi16(characters, _mm_set1_epi16(1)), _mm_set1_epi16(126)));
        const __m128i narrow = _mm_packus_epi16(characters, characters);
        std::memcpy(out + i, &narrow, Width);
    };
    for (std::size_t i = 0; i + Width < length; i += Width)
        narrow_at(i);
    narrow_at(length - Width);
    constexpr int loaded = Width == 8 ? 0xFFFF : 0xFF; // a byte each
    return (_mm_movemask_epi8(_mm_cmpeq_epi8(beyond, _mm_setzero_si128())) & loaded) == loaded;
}

/// Copies `length` characters to `out`; whether all of them were ASCII and none a NUL.
bool copy_ascii(const XMLCh *text, std::size_t length, char *out) {
    if (length >= 8)
        return narrow_by<8>(text, length, out);
    if (length >= 4)
        return narrow_by<4>(text, length, out);
    bool all = true;
    for (std::size_t i = 0; i < length; ++i) {
        all = all && is_ascii(text[i]);
        out[i] = static_cast<char>(text[i]);
    }
    return all;
}

/// Fills a buffer that is large enough; false when the text is not all ASCII or goes on behind its length.
bool narrow_ascii(const XMLCh *text, std::size_t length, narrow_buffer &buffer) {
    char *const out = buffer.bytes();
    if (!copy_ascii(text, length, out) || text[length] != 0)
        return false;
    out[length] = '\0';
    buffer.set_size(length);
    return true;
}

char *narrow_by_transcoder(const XMLCh *text, narrow_buffer &buffer) {
    const transcoded narrow = transcode(text);
    if (!narrow)
        return nullptr;
    const std::size_t bytes = std::strlen(narrow.get());
    std::memcpy(buffer.reserve(bytes + 1), narrow.get(), bytes + 1);
    buffer.set_size(bytes);
    return buffer.bytes();
}

} // namespace

bool transcoder_keeps_ascii() {
    XMLCh wide[128] = {};
    char plain[128] = {};
    for (unsigned i = 0; i < 127; ++i) {
        wide[i] = static_cast<XMLCh>(i + 1);
        plain[i] = static_cast<char>(i + 1);
    }
    const transcoded narrow = transcode(wide);
    return narrow && std::strcmp(narrow.get(), plain) == 0;
}

std::string plain_message(const xercesc::XMLException &problem) {
    std::string plain;
    if (const XMLCh *text = problem.getMessage())
        for (; *text; ++text)
            plain += is_ascii(*text) ? static_cast<char>(*text) : '?';
    return plain;
}

char *narrow_buffer::reserve(std::size_t bytes) {
    if (bytes > capacity_) {
        const std::size_t grown = std::max({bytes, 2 * capacity_, std::size_t{64}});
        bytes_.reset(new char[grown]);
        capacity_ = grown;
    }
    return bytes_.get();
}

// Most text is ASCII, and the transcoder costs an allocation, two locks and some 1,000 instructions a text

char *narrower::narrow(const XMLCh *text, std::size_t length, narrow_buffer &buffer) {
    if (keeps_ascii_ == yes && length < buffer.capacity() && narrow_ascii(text, length, buffer))
        return buffer.bytes();
    return narrow_any(text, length, buffer);
}

/// Apart from narrow(), which needs no stack that way: 0.7 % of the instructions of reading channels.
[[gnu::noinline]] char *narrower::narrow_any(const XMLCh *text, std::size_t length, narrow_buffer &buffer) {
    if (keeps_ascii_ == not_asked)
        keeps_ascii_ = transcoder_keeps_ascii() ? yes : no;
    if (keeps_ascii_ == yes) {
        buffer.reserve(length + 1);
        if (narrow_ascii(text, length, buffer))
            return buffer.bytes();
    }
    return narrow_by_transcoder(text, buffer);
}

} // namespace zeb5
