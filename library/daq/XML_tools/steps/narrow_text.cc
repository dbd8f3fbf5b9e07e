#include "steps/narrow_text.h"

#include <cstdint>
#include <cstring>

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "steps/local_code.h"
#include "text/byte_block.h"

namespace zeb5 {

namespace {

/// Whether a character is ASCII but not NUL.
bool is_ascii(XMLCh character) { return static_cast<XMLCh>(character - 1) < 127; }

using wide_block [[gnu::vector_size(16)]] = std::uint16_t; // clang has no vectors of char16_t

/// Copies the eight characters at `i`; returns a vector that is 0 if all of them are ASCII but not NUL.
wide_block narrow_eight(const XMLCh *text, char *out, std::size_t i) {
    wide_block wide;
    std::memcpy(&wide, text + i, sizeof wide);
    const auto bytes = reinterpret_cast<byte_block>(wide);
    const byte_block narrow =
        __builtin_shufflevector(bytes, bytes, 0, 2, 4, 6, 8, 10, 12, 14, 0, 2, 4, 6, 8, 10, 12, 14);
    std::memcpy(out + i, &narrow, 8);
    constexpr std::uint16_t one = 1, beyond_ascii = 0xFF80;
    return (wide | (wide - one)) & beyond_ascii;
}

/// Narrows to `length` + 1 bytes. Returns false when the text is not all ASCII or does not end at `length`.
bool narrow_ascii(const XMLCh *text, std::size_t length, char *out) {
    XMLCh odd = 0;
    if (length >= 8) {
        wide_block odd_block =
            narrow_eight(text, out, length - 8); // overlaps the last block of the loop below
        for (std::size_t i = 0; i + 8 < length; i += 8)
            odd_block |= narrow_eight(text, out, i);
        std::uint64_t halves[2];
        std::memcpy(halves, &odd_block, sizeof halves);
        odd = (halves[0] | halves[1]) != 0;
    } else {
        for (std::size_t i = 0; i < length; ++i) {
            odd = static_cast<XMLCh>(odd | ((text[i] | (text[i] - 1)) & 0xFF80));
            out[i] = static_cast<char>(text[i]);
        }
    }
    out[length] = '\0';
    return odd == 0 && text[length] == 0;
}

/// What this thread knows of the default transcoder. To call local_code_keeps_ascii() for every text would
/// take 4 % of the instructions of reading through the XML library. The TLS model saves a call of the dynamic
/// linker for each text.
[[gnu::tls_model("initial-exec")]] thread_local enum {
    NOT_ASKED,
    KEEPS_ASCII,
    CHANGES_ASCII
} thread_code = NOT_ASKED;

bool keeps_ascii() {
    if (thread_code == NOT_ASKED)
        thread_code = local_code_keeps_ascii() ? KEEPS_ASCII : CHANGES_ASCII;
    return thread_code == KEEPS_ASCII;
}

} // namespace

std::string plain_message(const xercesc::XMLException &problem) {
    std::string plain;
    if (const XMLCh *text = problem.getMessage())
        for (; *text; ++text)
            plain += is_ascii(*text) ? static_cast<char>(*text) : '?';
    return plain;
}

void forget_local_code() { thread_code = NOT_ASKED; }

// Most texts are narrowed without the transcoder, which takes two locks and some 1,000 instructions for each
// text: with it, reading through the XML library would take half as long again

char *narrow(const XMLCh *text, std::size_t length) {
    if (keeps_ascii()) {
        xercesc::MemoryManager &memory = *xercesc::XMLPlatformUtils::fgMemoryManager;
        char *const copy = static_cast<char *>(memory.allocate(length + 1));
        if (narrow_ascii(text, length, copy))
            return copy;
        memory.deallocate(copy);
    }
    return xercesc::XMLString::transcode(text);
}

std::optional<std::string_view> narrower::narrow(const XMLCh *text, std::size_t length) {
    if (keeps_ascii()) {
        if (buffer_.size() <= length)
            buffer_.resize(length + 1);
        if (narrow_ascii(text, length, buffer_.data()))
            return std::string_view(buffer_.data(), length);
    }
    const transcoded narrow = transcode(text);
    if (!narrow)
        return std::nullopt;
    return buffer_ = narrow.get();
}

} // namespace zeb5
