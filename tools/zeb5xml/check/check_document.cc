#include "check/check_document.h"

#include <algorithm>
#include <iterator>
#include <optional>

#include "check/camera_check.h"
#include "check/decoded_text.h"
#include "check/element_text.h"
#include "check/kept_lists.h"
#include "check/outline.h"
#include "check/record_fields.h"
#include "check/tree_builder.h"
#include "elements/chan_descriptions_elements.h"
#include "elements/daq_variables_elements.h"
#include "elements/env_index_dictionary_elements.h"
#include "elements/event_list_elements.h"
#include "files/memory_file.h"
#include "files/parser_reports.h"
#include "words/nearest.h"

namespace {

/// What is checked for one root element.
struct checked_kind {
    const zeb5::document_elements *elements;
    kept_list (*read)(std::string path);
    bool merges; // the reader merges records of one identity
    field_rules rules;
};

const checked_kind checked_kinds[] = {
    {&zeb5::chan_descriptions_elements, kept_channels, false, {true, 0}},
    {&zeb5::daq_variables_elements, kept_channels, true, {true, 0}},
    {&zeb5::event_list_elements, kept_events, false, {false, 0}},
    {&zeb5::env_index_dictionary_elements<zeb5_env_index_dictionary_entry_2010>,
     kept_dictionary,
     false,
     {true, sizeof(zeb5_env_dictionary_block::env_prop)}},
};

class document_check {
public:
    explicit document_check(const std::string &bytes) : file_(bytes), decoded_(decode(bytes)) {}

    std::vector<finding> run();

private:
    void check_encoding();
    void check_report();
    void check_kind();
    void check_wrong_root();
    void check_records(const checked_kind &kind);
    bool read_camera();
    bool has_own_entities() const;
    std::string_view root() const;
    const checked_kind *kind() const;
    std::string end_of_reading(const char *where) const;

    void tell(rule id, std::size_t at, const std::string &message) { found_.push_back({at, id, message}); }
    void take(std::vector<finding> more) { std::move(more.begin(), more.end(), std::back_inserter(found_)); }

    memory_file file_; // readers of files read the very bytes that are checked
    decoded_text decoded_;
    std::optional<parser_report> report_;
    outline content_;
    std::vector<finding> found_;
};

std::vector<finding> document_check::run() {
    report_ = first_report(file_.path());
    const std::size_t end = report_ ? offset_of(decoded_.text, report_->place) : decoded_.text.size();
    content_ = outline_of(decoded_.text, end);
    check_encoding();
    check_kind();
    check_report();
    std::stable_sort(found_.begin(), found_.end(),
                     [](const finding &a, const finding &b) { return a.at < b.at; });
    return std::move(found_);
}

void document_check::check_encoding() {
    if (decoded_.mislabelled != decoded_text::none)
        tell(rule::ENCODING_MISMATCH, decoded_.mislabelled,
             "the characters beyond ASCII are UTF-8, but the document is labelled " +
                 in_quotes(decoded_.label) + ": readers make other characters of them");
    if (decoded_.is_wide && report_)
        tell(rule::ENCODING_MISMATCH, 0,
             "the document is in UTF-16, but labelled " + in_quotes(decoded_.label) +
                 ", which readers believe");
    if (decoded_.control != decoded_text::none)
        tell(rule::ENCODING_MISMATCH, decoded_.control,
             "a control character of " + in_quotes(decoded_.label) +
                 ": it would be a quotation mark, a dash or another sign in windows-1252");
    if (content_.doctype != outline_element::none)
        tell(rule::DOCTYPE, content_.doctype,
             "what the document type declares turns validation on (not of a camera file), and no reader "
             "opens another file for it");
}

void document_check::check_report() {
    const bool is_malformed = decoded_.malformed != decoded_text::none;
    if (is_malformed)
        tell(rule::NOT_XML, decoded_.malformed,
             "the byte " + decoded_.malformed_bytes + " is no character of " +
                 (decoded_.label.empty() ? "UTF-8" : decoded_.label) + end_of_reading("some way before it"));
    if (trimmed(decoded_.text).empty())
        return tell(rule::NOT_XML, 0, "the document is empty: no reader takes it");
    if (report_ && !(is_malformed && report_->message.find("byte") != std::string::npos))
        tell(rule::NOT_XML, offset_of(decoded_.text, report_->place),
             report_->message + end_of_reading("here"));
}

/// What readers do at an error.
std::string document_check::end_of_reading(const char *where) const {
    return kind() ? std::string(": readers stop ") + where + ", and keep the records that they have"
                  : ": readers refuse the whole document";
}

std::string_view document_check::root() const {
    return content_.elements.empty() ? "" : content_.elements.front().name;
}

/// Returns null for a camera file and for an unknown root.
const checked_kind *document_check::kind() const {
    const auto *const found =
        std::find_if(std::begin(checked_kinds), std::end(checked_kinds),
                     [&](const checked_kind &one) { return one.elements->root == root(); });
    return found == std::end(checked_kinds) ? nullptr : found;
}

void document_check::check_kind() {
    if (root().empty())
        return;
    if (kind())
        check_records(*kind());
    else if (!read_camera())
        check_wrong_root();
}

void document_check::check_wrong_root() {
    std::vector<std::string> roots;
    for (const checked_kind &kind : checked_kinds)
        roots.emplace_back(kind.elements->root);
    tell(rule::WRONG_ROOT, content_.elements.front().at,
         "the root " + in_tag(root()) +
             " is none of CHANDESCRIPTIONS, DAQvariables, BMR and ENVINDEXDICT, and no camera feature is "
             "in it" +
             did_you_mean(root(), roots));
}

/// Returns whether the document is a camera file.
bool document_check::read_camera() {
    const auto &elements = content_.elements;
    if (std::none_of(elements.begin(), elements.end(),
                     [](const outline_element &element) { return is_feature_element(element.name); }))
        return false;
    const auto features = kept_features(file_.path());
    if (!features->empty()) {
        report_.reset(); // of a document type, which this reader does not look at
        content_ = outline_of(decoded_.text, decoded_.text.size());
        take(faults_of_camera(content_, *features));
    }
    return true;
}

/// Whether an entity of the document's own is referred to, so that elements may be unseen.
bool document_check::has_own_entities() const {
    if (!content_.has_entities)
        return false;
    return std::any_of(
        content_.elements.begin(), content_.elements.end(), [&](const outline_element &element) {
            return text_of(content_, element).has_entity || element.later_text != outline_element::none;
        });
}

void document_check::check_records(const checked_kind &kind) {
    const kept_list list = kind.read(file_.path());
    const checked_document document{*kind.elements, content_, has_own_entities() ? nullptr : list.get(),
                                    kind.merges, !report_};
    record_tree tree = tree_builder(document).run();
    take(std::move(tree.findings));
    take(faults_of_fields(document, tree, kind.rules));
}

/// Turns offsets into places, each in one pass over the text.
std::vector<placed_finding> placed(const std::vector<finding> &findings, std::string_view text) {
    std::vector<placed_finding> result;
    result.reserve(findings.size());
    text_places places(text);
    for (const finding &one : findings)
        result.push_back({places.place_of(one.at), one.id, one.message, one.kept, one.loses});
    std::vector<std::size_t> with_first;
    for (std::size_t i = 0; i < findings.size(); ++i)
        if (findings[i].first != finding::none)
            with_first.push_back(i);
    std::stable_sort(with_first.begin(), with_first.end(),
                     [&](std::size_t a, std::size_t b) { return findings[a].first < findings[b].first; });
    for (const std::size_t i : with_first) {
        const text_place first = places.place_of(findings[i].first);
        result[i].message +=
            "; the first is at " + std::to_string(first.line) + ":" + std::to_string(first.column);
    }
    return result;
}

} // namespace

std::vector<placed_finding> check_document(const std::string &bytes) {
    const decoded_text decoded = decode(bytes);
    return placed(document_check(bytes).run(), decoded.text);
}
