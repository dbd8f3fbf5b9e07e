#include "narrow_text.h"

#include <xercesc/framework/MemoryManager.hpp>
#include <xercesc/util/PlatformUtils.hpp>

#include "local_code.h"

namespace zeb5 {

namespace {

/// Whether a character is ASCII and no NUL.
bool is_ascii(XMLCh character) { return static_cast<XMLCh>(character - 1) < 127; }

/// Narrows to `length` + 1 bytes; false when the text is not all ASCII or goes on behind its length.
bool narrow_ascii(const XMLCh *text, std::size_t length, char *out) {
    XMLCh seen = 0; // the bits of all characters and of those before them, which tells of a NUL, too
    for (std::size_t i = 0; i < length; ++i) {
        seen = static_cast<XMLCh>(seen | text[i] | (text[i] - 1));
        out[i] = static_cast<char>(text[i]);
    }
    out[length] = '\0';
    return seen < 0x80 && text[length] == 0;
}

} // namespace

std::string plain_message(const xercesc::XMLException &problem) {
    std::string plain;
    if (const XMLCh *text = problem.getMessage())
        for (; *text; ++text)
            plain += is_ascii(*text) ? static_cast<char>(*text) : '?';
    return plain;
}

// Most texts need no transcoder, which takes two locks and some 1,000 instructions for each: reading through
// the XML library would take half as long again

char *narrow(const XMLCh *text, std::size_t length) {
    if (local_code_keeps_ascii()) {
        xercesc::MemoryManager &memory = *xercesc::XMLPlatformUtils::fgMemoryManager;
        char *const copy = static_cast<char *>(memory.allocate(length + 1));
        if (narrow_ascii(text, length, copy))
            return copy;
        memory.deallocate(copy);
    }
    return xercesc::XMLString::transcode(text);
}

std::optional<std::string_view> narrower::narrow(const XMLCh *text, std::size_t length) {
    if (local_code_keeps_ascii()) {
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
