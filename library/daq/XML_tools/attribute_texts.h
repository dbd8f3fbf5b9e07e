#ifndef ZEB5_ATTRIBUTE_TEXTS_H
#define ZEB5_ATTRIBUTE_TEXTS_H

/// What is behind the attribute records that a pull reader hands out.

#include <array>
#include <string>
#include <vector>

#include <xercesc/sax/AttributeList.hpp>
#include <xercesc/util/XMLString.hpp>

#include "narrow_text.h"

namespace zeb5 {

/// The attributes of one element after the other, in memory that is used again: of our own making rather than
/// the transcoder's, so that they may outlive the platform. Record is attr or attrf.
template <class Record> class attribute_texts {
public:
    /// Points `list` to a record for each attribute; good until the next call. The XML platform must be up.
    void take(const xercesc::AttributeList &attributes, narrower &narrower, std::vector<Record *> &list) {
        const XMLSize_t count = attributes.getLength();
        texts_.clear();
        records_.resize(count);
        places_.resize(count);
        for (XMLSize_t i = 0; i < count; ++i)
            places_[i] = {place_of(attributes.getName(i), narrower),
                          place_of(attributes.getType(i), narrower),
                          place_of(attributes.getValue(i), narrower)};
        list.resize(count);
        for (XMLSize_t i = 0; i < count; ++i) {
            records_[i] = {text_at(places_[i][0]), text_at(places_[i][1]), text_at(places_[i][2])};
            list[i] = &records_[i];
        }
    }

private:
    static constexpr std::size_t none = std::string::npos;

    /// Narrows a text behind the others; where it begins, or `none` when the transcoder gives none.
    std::size_t place_of(const XMLCh *text, narrower &narrower) {
        if (!narrower.narrow(text, xercesc::XMLString::stringLen(text), buffer_))
            return none;
        const std::size_t place = texts_.size();
        texts_.append(buffer_.bytes(), buffer_.size() + 1);
        return place;
    }

    char *text_at(std::size_t place) { return place == none ? nullptr : &texts_[place]; }

    std::vector<Record> records_;
    std::vector<std::array<std::size_t, 3>> places_; // of name, type and value in texts_
    std::string texts_;                              // each with its NUL
    narrow_buffer buffer_;
};

} // namespace zeb5

#endif
