#ifndef ZEB5XML_NUMBER_FAULTS_H
#define ZEB5XML_NUMBER_FAULTS_H

#include <optional>
#include <string>
#include <string_view>

#include "check/check_rules.h"
#include "elements/element_row.h"

/// What is wrong with a number, without what the reader makes of it.
struct number_fault {
    rule id;
    std::string what;
};

/// Compares the text of a number with what its element is for.
std::optional<number_fault> fault_of_number(const zeb5::element_row &row, std::string_view text);

/// The number that a reader takes from the text for the row's field.
double number_read(const zeb5::element_row &row, std::string_view text);

#endif
