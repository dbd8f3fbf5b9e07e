#ifndef ZEB5XML_CHECK_RULES_H
#define ZEB5XML_CHECK_RULES_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// What `check` finds. Rows of `rule_rows` stand in this order.
enum class rule {
    UNREADABLE,
    NOT_XML,
    WRONG_ROOT,
    ENCODING_MISMATCH,
    DOCTYPE,
    UNKNOWN_ELEMENT,
    MISPLACED_ELEMENT,
    ORPHAN_ELEMENT,
    REPEATED_ELEMENT,
    IGNORED_ATTRIBUTE,
    MISSING_ATTRIBUTE,
    IGNORED_TEXT,
    LOST_TEXT,
    CUT_FIELD,
    PADDED_VALUE,
    FOREIGN_TEXT,
    NOT_A_NUMBER,
    NUMBER_TAIL,
    HEX_NUMBER,
    DECIMAL_COMMA,
    NUMBER_RANGE,
    VALUE_RANGE,
    UNNAMED_TYPE,
    MISSING_IDENTITY,
    EMPTY_IDENTITY,
    DUPLICATE_IDENTITY,
    FEWER_RECORDS,
    MISSING_NAME,
    NOT_WRITABLE,
    COUNT
};

enum class severity {
    NOTE,    // nothing is lost, but it may not be meant
    WARNING, // a reader makes something else of it than most people would
    FAULT    // a reader loses or misreads data
};

struct rule_row {
    const char *name;
    severity level;
    const char *summary; // one line
    const char *example; // a part of a document that breaks the rule
};

const rule_row &row_of(rule id);

/// "error", "warning" or "note".
const char *name_of(severity level);

std::vector<std::string> rule_names();

/// The list that `check --rules` prints.
std::string rule_list();

/// One thing that was found in a document.
struct finding {
    static constexpr std::size_t none = static_cast<std::size_t>(-1);

    std::size_t at; // where its token starts in the decoded text
    rule id;
    std::string message;
    std::size_t first = none; // where the token stands that it is in conflict with
    std::size_t kept = none;  // bytes of a field that is cut
    bool loses = false;       // readers drop what stands there; for rules that do not always mean it
};

#endif
