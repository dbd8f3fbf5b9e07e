#include "check/check_rules.h"

#include <iterator>

namespace {

constexpr severity NOTE = severity::NOTE;
constexpr severity WARNING = severity::WARNING;
constexpr severity FAULT = severity::FAULT;

const rule_row rule_rows[] = {
    {"unreadable", FAULT, "the file cannot be opened or read, or is longer than 128 MiB",
     "zeb5xml check missing.xml"},
    {"not-xml", FAULT, "the parser reports an error; what follows is not read", "<NAME>BPM01</NAM>"},
    {"wrong-root", FAULT, "no reader knows the root element", "<CHANDESCRIPTION>"},
    {"encoding-mismatch", WARNING, "bytes of one encoding stand under the label of another",
     "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?> and UTF-8 below it"},
    {"doctype", WARNING,
     "what a document type declares turns validation on, and external ones are never opened",
     "<!DOCTYPE BMR SYSTEM \"bmr.dtd\">"},
    {"unknown-element", WARNING, "no reader knows the element", "<SBLOK>BPM_SRV</SBLOK>"},
    {"misplaced-element", WARNING, "the element stands where the reader gives it to another record",
     "<DIM>0<UNITS>mm</UNITS></DIM>"},
    {"orphan-element", WARNING, "the record that the element belongs to is not there",
     "<CHANNEL><PROP>P</PROP><BIT_NAME>on</BIT_NAME></CHANNEL>"},
    {"repeated-element", WARNING, "the element replaces one before it, or does its work twice",
     "<UNITS>mm</UNITS><UNITS>V</UNITS>"},
    {"ignored-attribute", WARNING, "no reader looks at the attribute", "<SIZE unit=\"kB\">2</SIZE>"},
    {"missing-attribute", FAULT, "without the attribute, the element makes no record",
     "<bitTitle>on</bitTitle>"},
    {"ignored-text", WARNING, "text stands where no reader reads any",
     "<CHANNEL>BPM01<PROP>P</PROP></CHANNEL>"},
    {"lost-text", FAULT, "the reader keeps only a piece of a text, or nothing of it",
     "<DESC>beam &amp; gas</DESC>"},
    {"cut-field", FAULT, "the text is longer than its field", "<UNITS>millimetres of water</UNITS>"},
    {"padded-value", WARNING, "the value is kept with the white space around it", "<NAME> BPM01.X </NAME>"},
    {"foreign-text", WARNING,
     "a feature of a camera file gets the text of another element, or another element takes its text",
     "<Integer Name=\"Gain\"><ToolTip/></Integer>"},
    {"not-a-number", FAULT, "there is no number where one is read", "<SIZE>many</SIZE>"},
    {"number-tail", FAULT, "something follows the number", "<SIZE>2O48</SIZE>"},
    {"hex-number", FAULT, "a number in base 16 stands where base 10 is read", "<EVTYPE>0x10</EVTYPE>"},
    {"decimal-comma", FAULT, "a number has a decimal comma", "<DABS>0,5</DABS>"},
    {"number-range", FAULT, "the number does not fit into its field", "<DB_KEY>99999999999</DB_KEY>"},
    {"value-range", WARNING, "the number makes no sense in its field", "<BIT>32</BIT>"},
    {"unnamed-type", NOTE, "an event type or block type has no name", "<EVTYPE>268435456</EVTYPE>"},
    {"missing-identity", FAULT, "the record is not read, as the element that lists it is not there",
     "<CHANNEL><NAME>BPM01.X</NAME></CHANNEL>"},
    {"empty-identity", FAULT, "the record is not read, as the element that lists it is empty",
     "<CHANNEL><PROP></PROP></CHANNEL>"},
    {"duplicate-identity", WARNING, "two records have the same identity",
     "<INDEX>1</INDEX> in two entries of a dictionary"},
    {"fewer-records", FAULT, "the element looks like a record but gives none",
     "<BIT><BIT_NAME>on</BIT_NAME></BIT>"},
    {"missing-name", NOTE, "a channel has no name in the acquisition, so a writer makes one up",
     "<CHANNEL><PROP>P</PROP></CHANNEL>"},
    {"not-writable", WARNING, "a writer cannot give the value back", "<DESC><![CDATA[p & q]]></DESC>"},
};
static_assert(std::size(rule_rows) == static_cast<std::size_t>(rule::COUNT), "one row for each rule");

} // namespace

const rule_row &row_of(rule id) { return rule_rows[static_cast<std::size_t>(id)]; }

const char *name_of(severity level) {
    return level == severity::FAULT ? "error" : level == severity::WARNING ? "warning" : "note";
}

std::vector<std::string> rule_names() {
    std::vector<std::string> names;
    for (const rule_row &row : rule_rows)
        names.push_back(row.name);
    return names;
}

std::string rule_list() {
    std::string list;
    for (const rule_row &row : rule_rows)
        list.append(row.name)
            .append(" (")
            .append(name_of(row.level))
            .append("): ")
            .append(row.summary)
            .append("\n    ")
            .append(row.example)
            .append("\n");
    return list;
}
