#ifndef ZEB5_BOUNDED_VALIDATOR_H
#define ZEB5_BOUNDED_VALIDATOR_H

/// A validator whose look-ups have a price.

#include <string_view>

#include <xercesc/validators/DTD/DTDValidator.hpp>

#include "limits/parse_meter.h"

namespace zeb5 {

/// Validates as its base does. Each name in an ID, IDREF(S) or ENTITY/ENTITIES attribute is looked up in a
/// table, and each of an enumerated type in the list of its values; entities may repeat it in one attribute
/// more than a million times.
class bounded_validator final : public xercesc::DTDValidator {
public:
    /// `meter` must outlive this.
    explicit bounded_validator(parse_meter &meter) : meter_(meter) {}

    void validateAttrValue(const xercesc::XMLAttDef *attribute, const XMLCh *value, bool is_declaration,
                           const xercesc::XMLElementDecl *element) override;

private:
    void spend_on_identifiers(std::u16string_view text);

    parse_meter &meter_;
};

} // namespace zeb5

#endif
