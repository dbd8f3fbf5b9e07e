#include "readers/feature_scan.h"

#include <memory>

#include "readers/feature_collector.h"
#include "steps/plain_lane.h"
#include "steps/plain_scanner.h"
#include "steps/plain_text.h"
#include "steps/plain_window.h"
#include "text/owned_list.h"

namespace zeb5 {

namespace {

reader_row row_of(std::string_view name) {
    return {find_feature_element([name](const char *known) { return name == known; })};
}

/// Hands the tokens of a file to the collector.
class token_collector {
public:
    token_collector(plain_window &window, std::vector<ZEB5GigEFeature *> &out)
        : scanner_(window), collector_(out) {
        scanner_.set_rows(row_of);
    }

    /// Returns whether the whole file is plain.
    bool collect() {
        if (!scanner_.start())
            return false;
        plain_token token;
        do
            token = scanner_.next();
        while (take(token));
        return token == plain_token::FINISHED;
    }

private:
    /// Returns whether to continue with the next token.
    bool take(plain_token token) {
        switch (token) {
        case plain_token::START:
            collector_.take_element(scanner_.element().row.number);
            return take_attributes();
        case plain_token::TEXT:
            return take_text();
        case plain_token::END:
        case plain_token::CDATA:
        case plain_token::ASIDE:
            return true;
        default:
            return false;
        }
    }

    bool take_attributes() {
        for (const raw_attribute &attribute : scanner_.attributes()) {
            if (attribute.name != Attributes[ATTRIBUTE_NAME]) {
                if (!other_attributes_.find(attribute.name))
                    return false; // the DOM parser limits the number of such names
            } else if (std::string *const field = collector_.field_for_name()) {
                const auto name = text_.attribute(attribute.value, scanner_.encoding());
                if (!name)
                    return false;
                *field = *name;
            }
        }
        return true;
    }

    bool take_text() {
        std::string *const field = collector_.field_for_text();
        if (!field)
            return true;
        const auto text = text_.content(scanner_.text(), scanner_.encoding());
        if (text)
            *field = *text;
        return text.has_value();
    }

    plain_scanner scanner_;
    element_names other_attributes_;
    plain_text text_;
    feature_collector collector_;
};

} // namespace

scan_result scan_features(const plain_file &file, std::vector<ZEB5GigEFeature *> &out) {
    if (!is_lane_open())
        return scan_result::NOT_PLAIN;
    bool is_plain = false;
    owned_list<ZEB5GigEFeature, zeb5_clean_gige_descr> found;
    if (file.is_open()) {
        file_window window(file);
        is_plain = std::make_unique<token_collector>(window, found.records)->collect();
    }
    tell_lane_end(is_plain                ? lane_end::FINISHED
                  : found.records.empty() ? lane_end::LEFT_AT_ONCE
                                          : lane_end::LEFT_MIDWAY);
    if (!is_plain)
        return file.is_open() && file.has_changed() ? scan_result::CHANGED : scan_result::NOT_PLAIN;
    clear_markers(found.records);
    out.swap(found.records); // Kept: the records are the caller's, who may still use them
    found.records.clear();
    return scan_result::READ;
}

} // namespace zeb5
