#ifndef ZEB5_BOUNDED_VALIDATOR_H
#define ZEB5_BOUNDED_VALIDATOR_H

/// How many references to identifiers, and to entities that are no text, the attributes of a document may
/// have.

#include <cstddef>

#include <xercesc/validators/DTD/DTDValidator.hpp>

namespace zeb5 {

/// Validates as its base does, and adds up the characters of such references; ends the document when they are
/// too many.
///
/// Each is looked up in a table that a document can crowd, and entities may repeat it in one attribute more
/// than a million times: 10,000 bytes take 2.5 s.
class bounded_validator final : public xercesc::DTDValidator {
public:
    static constexpr std::size_t most_characters = std::size_t{1} << 16;

    void validateAttrValue(const xercesc::XMLAttDef *attribute, const XMLCh *value, bool is_declaration,
                           const xercesc::XMLElementDecl *element) override;

private:
    std::size_t characters_ = 0;
};

} // namespace zeb5

#endif
