#ifndef RANDOM_DOCUMENTS_H
#define RANDOM_DOCUMENTS_H

/// Channel documents, good ones and damaged ones; the same in every run.

#include <array>
#include <cstddef>
#include <random>
#include <string>
#include <string_view>

class random_documents {
public:
    explicit random_documents(unsigned seed) : random_(seed) {}

    /// A document of one dialect; every third has odd texts, and every third is damaged at a few places.
    std::string next() {
        const bool daq = below(2) == 0;
        is_odd_ = below(3) == 0;
        std::string text = one_of(prologues);
        text += daq ? "<DAQvariables>" : below(40) == 0 ? "<CHANNELS>" : "<CHANDESCRIPTIONS>";
        for (std::size_t channels = below(12); channels-- > 0;)
            add_channel(text, daq);
        text += daq ? "</DAQvariables>\n" : "</CHANDESCRIPTIONS>\n";
        if (below(3) == 0)
            for (std::size_t damages = 1 + below(3); damages-- > 0;)
                damage(text);
        return text;
    }

private:
    static constexpr std::array prologues{
        "",
        "",
        "",
        "",
        "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n",
        "<?xml version=\"1.0\"?><!-- - -->\n",
        "<!DOCTYPE CHANDESCRIPTIONS [<!ENTITY e \"of &lt;entity>\"><!ATTLIST NAME unit CDATA \"mm\">]>\n"};
    static constexpr std::array chan_tags{
        "PROP",      "PROP",       "EVTYPE",     "STREAM",   "SB_NAME",
        "DTYPE",     "DB_KEY",     "COUNT",      "SETPOINT", "NAME",
        "SUBSYSTEM", "DESC",       "UNITS",      "SIZE",     "BIT",
        "BIT_NAME",  "BIT_DESCR",  "DIM",        "DIM",      "STAT",
        "STAT_NAME", "STAT_DESCR", "STAT_UNITS", "DIM_NAME", "DIM_DESCR",
        "DIM_UNITS", "CHANNEL",    "UNKNOWN",    "D",        "A_TAG_OF_MORE_THAN_FORTY_CHARACTERS_OR_SO"};
    static constexpr std::array daq_tags{"orvin",    "orvin",       "evType",    "daqName",   "subSystem",
                                         "setPoint", "description", "units",     "lastIndex", "bitTitle",
                                         "bitTitle", "dimension",   "dimension", "name",      "DBKey",
                                         "freq",     "Daq"};
    static constexpr std::array daq_channels{"DaqFloat", "DaqBits", "DaqFloatMatrix"};
    static constexpr std::array pieces{"A",
                                       "ORVIN.DIAG/BPM/1/X",
                                       "B",
                                       "0",
                                       "7",
                                       "31",
                                       "32",
                                       "63",
                                       "-1",
                                       " 12 ",
                                       "+3",
                                       "1234567",
                                       "123456789012345678",
                                       "1234567890123456789",
                                       "99999999999999999999",
                                       "0x10",
                                       "1.5",
                                       "12ab",
                                       "&amp;",
                                       "&#228;",
                                       "&#x20AC;",
                                       "<![CDATA[<c>]]>",
                                       "<!-- c -->",
                                       "<?p i?>",
                                       "\n\t ",
                                       " ",
                                       "a text of more than sixteen characters",
                                       "<X/>",
                                       "name with blanks"};
    /// Texts of which some documents have none.
    static constexpr std::array odd_pieces{"&e;", "&e;", "&none;", "&#0;", "\xE4", "\xC3\xA4", "]]>", "&"};

    std::size_t below(std::size_t limit) { return random_() % limit; }
    template <std::size_t N> const char *one_of(const std::array<const char *, N> &list) {
        return list[below(N)];
    }

    /// More names than a reader keeps at hand.
    std::string unknown_tag() { return 'T' + std::to_string(below(300)); }

    void add_channel(std::string &text, bool daq) {
        const std::string tag = daq ? one_of(daq_channels) : "CHANNEL";
        text += "\n <" + tag + '>';
        add_element(text, daq ? "orvin" : "PROP");
        for (std::size_t elements = below(20); elements-- > 0;)
            add_element(text, below(8) == 0 ? unknown_tag() : daq ? one_of(daq_tags) : one_of(chan_tags));
        text += "</" + tag + '>';
    }

    void add_element(std::string &text, const std::string &tag) {
        text += "\n  <" + tag;
        for (const char *name : {" bit", " id", " unit"})
            if (below(4) == 0)
                (((text += name) += "=\"") += std::to_string(below(70))) += '"';
        if (below(12) == 0) {
            text += "/>";
            return;
        }
        text += '>';
        for (std::size_t count = below(8); count < 6; count += 2 + below(6))
            text += is_odd_ && below(8) == 0 ? one_of(odd_pieces) : one_of(pieces);
        if (below(40) == 0)
            text.append(below(600), 'l');
        if (below(30) == 0)
            add_element(text, "DESC");
        text += "</" + tag + '>';
    }

    /// Changes, removes or repeats what stands at a random place, or cuts the document off there.
    void damage(std::string &text) {
        const std::size_t at = below(text.size() + 1), count = 1 + below(12);
        switch (below(4)) {
        case 0:
            if (at < text.size())
                text[at] = static_cast<char>(1 + below(255));
            break;
        case 1:
            text.erase(at, count);
            break;
        case 2:
            text.insert(at, text.substr(at, count));
            break;
        default:
            if (below(4) == 0)
                text.resize(at);
        }
    }

    std::mt19937 random_;
    bool is_odd_ = false;
};

#endif
