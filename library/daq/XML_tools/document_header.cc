#include "document_header.h"

void create_isodate(char *isodate_str, time_t *t) {
    constexpr std::size_t room = 40;
    if (!isodate_str)
        return;
    tm local;
    // A time outside of the calendar has no text
    if (!localtime_r(t, &local) || std::strftime(isodate_str, room, "%FT%T", &local) == 0)
        isodate_str[0] = '\0';
}

void create_isodate(char *isodate_str) {
    time_t now = std::time(nullptr);
    create_isodate(isodate_str, &now);
}

void set_xml_header(std::string &str) { str = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\" ?>\n"; }

void add_iso_date(std::string &str) {
    char date[64];
    create_isodate(date);
    str += "\t<isodate>";
    str += date;
    str += "</isodate>\n";
}
