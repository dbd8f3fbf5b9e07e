#include "check/record_tree.h"

#include "check/element_text.h"

std::string described(const checked_document &document, const record_tree &tree, std::size_t number) {
    std::string text;
    for (; number != tree_record::none && number != 0; number = tree.records[number].parent) {
        const tree_record &record = tree.records[number];
        const zeb5::level_row &level = document.kind.levels[static_cast<std::size_t>(record.level)];
        const std::string &label = record.label.empty() ? record.name_label : record.label;
        if (level.part && !label.empty())
            text.insert(0, level.noun + (" " + label) + (text.empty() ? ": " : ", "));
    }
    return text;
}

const outline_attribute *attribute_of(const checked_document &document, const zeb5::element_row &row,
                                      std::size_t number) {
    const outline_element &element = document.content.elements[number];
    for (std::size_t i = 0; i < element.attributes; ++i) {
        const outline_attribute &attribute = document.content.attributes[element.first_attribute + i];
        if (attribute.name == row.attribute)
            return &attribute;
    }
    return nullptr;
}

std::string number_text(const checked_document &document, const zeb5::element_row &row, std::size_t number) {
    if (row.attribute.empty())
        return text_of(document.content, document.content.elements[number]).whole;
    const outline_attribute *const attribute = attribute_of(document, row, number);
    return attribute ? attribute_value(attribute->value) : "";
}
