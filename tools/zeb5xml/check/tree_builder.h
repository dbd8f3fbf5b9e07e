#ifndef ZEB5XML_TREE_BUILDER_H
#define ZEB5XML_TREE_BUILDER_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "check/element_text.h"
#include "check/record_tree.h"

/// Follows the elements of a document in their order, as a reader does, but with an eye on their nesting.
/// What it finds on the way is told in tree_findings.cc.
class tree_builder {
public:
    explicit tree_builder(const checked_document &document)
        : document_(document), elements_(document.content.elements) {
        for (const zeb5::element_row &row : document.kind.rows) {
            rows_[row.name].push_back(&row);
            if (!row.is_stray)
                names_.emplace_back(row.name);
        }
        current_.fill(tree_record::none);
        last_.fill(tree_record::none);
    }

    record_tree run();

private:
    /// What an element means for those in it.
    struct surroundings {
        std::size_t record;                     // that encloses them
        bool is_muted = false;                  // the element is probably a misspelt record
        bool has_failed = false;                // it should have opened a record but did not
        const zeb5::element_row *row = nullptr; // null: an unknown element, or the root
    };

    void take(std::size_t number);
    void take_unknown(std::size_t number, surroundings &own);
    bool is_wrapper(std::size_t number, std::string_view meant) const;
    void take_muted(std::size_t number, const zeb5::element_row &row);
    void take_known(std::size_t number, const zeb5::element_row &row, surroundings &own);
    void fill(std::size_t number, const zeb5::element_row &row, std::size_t owner);
    bool put_field(std::size_t number, const zeb5::element_row &row, std::size_t owner, bool is_blank);
    void open(std::size_t number, const zeb5::element_row &row, std::size_t owner, surroundings &own);
    void open_ignored(std::size_t number, const zeb5::element_row &row, std::size_t owner);
    void note_repeated_part(std::size_t number, const zeb5::element_row &row, std::size_t part,
                            const std::string &name);
    std::size_t add_record(std::size_t number, const zeb5::element_row &row, std::size_t owner);
    void identify(std::size_t number, const zeb5::element_row &row, std::size_t owner,
                  const std::string &value);
    void list_again(std::size_t owner);
    void note_duplicate(std::size_t number, const zeb5::element_row &row, std::size_t owner,
                        const std::string &value);
    const zeb5::element_row &choose(const std::vector<const zeb5::element_row *> &rows) const;
    bool acts(const zeb5::element_row &row) const;
    void check_place(std::size_t number, const zeb5::element_row &row, std::size_t owner);
    void check_attributes(std::size_t number, const zeb5::element_row *row);
    void check_texts(std::size_t number, bool reads_text, std::size_t record);
    void tell_orphan(std::size_t number, const zeb5::element_row &row);
    void lose_identity(std::size_t number, const zeb5::element_row &row, std::size_t owner,
                       const element_text &text);
    void tell_lost(std::size_t number, const zeb5::element_row &row, std::size_t record,
                   const element_text &text);
    void tell_not_made(std::size_t number, const zeb5::element_row &row, std::size_t record);
    void tell_missing_identities();
    const std::string &meant_by(std::string_view name);
    std::string beginning_of(std::string_view name) const;

    void tell(rule id, std::size_t number, std::size_t record, const std::string &message,
              std::size_t first = finding::none) {
        pending_.push_back({{elements_[number].at, id, message, first}, record});
    }
    void tell_at(std::size_t place, rule id, std::size_t record, const std::string &message) {
        pending_.push_back({{place, id, message}, record});
    }
    void tell_that_it_is_lost() { pending_.back().what.loses = true; }
    tree_record &record(std::size_t number) { return tree_.records[number]; }
    const surroundings &around(std::size_t number) const { return around_[elements_[number].parent]; }
    const zeb5::level_row &level(int number) const {
        return document_.kind.levels[static_cast<std::size_t>(number)];
    }
    std::size_t &current(int level) { return current_[static_cast<std::size_t>(level)]; }
    std::size_t current(int level) const { return current_[static_cast<std::size_t>(level)]; }
    std::uint64_t identities_of(int level) const;

    /// Where an identity came first.
    struct first_use {
        std::size_t element;
        std::size_t record;
    };

    /// A finding whose record gets its label only later.
    struct pending_finding {
        finding what;
        std::size_t record;
    };

    const checked_document &document_;
    const std::vector<outline_element> &elements_;
    std::unordered_map<std::string_view, std::vector<const zeb5::element_row *>> rows_;
    std::vector<std::string> names_;
    std::unordered_map<std::string_view, std::string> meant_;   // by name that no reader knows
    std::vector<surroundings> around_;                          // by element: what it means for those in it
    std::array<std::size_t, tree_record::most_levels> current_; // record of each level
    std::array<std::size_t, tree_record::most_levels> last_;    // that was opened by a value, of each level
    std::unordered_map<std::string, first_use> first_of_;       // by identity
    std::vector<pending_finding> pending_;
    record_tree tree_;
};

#endif
