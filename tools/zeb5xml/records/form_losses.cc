#include "records/form_losses.h"

#include <algorithm>

namespace {

bool is_at_or_below(const std::string &field, const std::string &above) {
    return field == above || field.compare(0, above.size() + 1, above + ".") == 0;
}

bool is_text(const std::optional<value> &one, const char *text) {
    return !text || (one && std::holds_alternative<std::string>(one->content) && one->text() == text);
}

} // namespace

const form *form_named(const record_kind &kind, const std::string &name) {
    const auto found =
        std::find_if(kind.forms.begin(), kind.forms.end(), [&](const form &one) { return name == one.name; });
    return found == kind.forms.end() ? nullptr : &*found;
}

size_t loss_of(const form &to, const difference &one) {
    size_t i = 0;
    while (i < to.losses.size() &&
           !(is_at_or_below(one.field, to.losses[i].field) && is_text(one.was, to.losses[i].was) &&
             is_text(one.is, to.losses[i].becomes)))
        ++i;
    return i;
}

bool is_held(const form_loss &loss) { return loss.was || !loss.is_accepted; }

bool holds(const form &one, const std::string &field) {
    return std::none_of(one.losses.begin(), one.losses.end(), [&](const form_loss &loss) {
        return !is_held(loss) && is_at_or_below(field, loss.field);
    });
}

texts fields_not_held(const form &one) {
    texts fields;
    for (const form_loss &loss : one.losses)
        if (!loss.was)
            fields.push_back(loss.field);
    return fields;
}
