#include "uncommon_documents.h"

#include <cctype>
#include <string_view>

#include "documents.h"

namespace bench {

namespace {

bool is_chosen(text_choice which, int number, std::string_view element) {
    switch (which) {
    case ONE_TEXT_OF_100:
        return number % 100 == 0;
    case ALL_DESC_AND_UNITS:
        return element == "DESC" || element == "UNITS";
    default:
        return false;
    }
}

const char *first_letter(spelling how, int number) {
    switch (how) {
    case UTF8:
        return "\xC2\xB5";
    case LATIN1:
        return "\xB5";
    default:
        return number / 100 % 2 == 0 ? "&#181;" : "&lt;";
    }
}

void replace(std::string &document, std::string_view text, const std::string &by) {
    document.replace(document.find(text), text.size(), by);
}

void declare_utf8(std::string &document) { replace(document, "ISO-8859-1", "UTF-8"); }

} // namespace

std::string spelled_document(int channels, spelling how, text_choice which) {
    const std::string written = channel_document(channels, CHANDESCRIPTIONS);
    std::string spelled;
    spelled.reserve(written.size() + written.size() / 8);
    int texts = 0; // texts that begin with a letter after a tag; numbers do not
    std::size_t at = 0;
    for (std::size_t end; (end = written.find('>', at)) != written.npos;) {
        const std::size_t tag = written.rfind('<', end) + 1;
        const std::string_view element(written.data() + tag, end - tag);
        spelled.append(written, at, end + 1 - at);
        at = end + 1;
        if (!std::isalpha(static_cast<unsigned char>(written[at])))
            continue;
        if (is_chosen(which, texts, element)) {
            spelled += first_letter(how, texts);
            ++at;
        }
        ++texts;
    }
    spelled.append(written, at);
    if (how == UTF8)
        declare_utf8(spelled);
    return spelled;
}

std::string handed_over_document(int channels, surprise where) {
    std::string document = channel_document(channels, CHANDESCRIPTIONS);
    if (where == AT_ONCE) {
        replace(document, "<CHANDESCRIPTIONS>", "<!DOCTYPE CHANDESCRIPTIONS>\n<CHANDESCRIPTIONS>");
        return document;
    }
    constexpr std::string_view end = "</CHANNEL>";
    document.insert(where == IN_FIRST_CHANNEL ? document.find(end) : document.rfind(end),
                    "<\xC3\xA4>1</\xC3\xA4>\n");
    declare_utf8(document);
    return document;
}

} // namespace bench
