#include "split_values.h"

#include <algorithm>

namespace {

/// Walks over the mark-up of a document. It checks nothing, as the parser has done that.
class markup_walk {
public:
    explicit markup_walk(std::string_view xml) : xml_(xml) {}

    std::vector<split_value> run() {
        while (at_ < xml_.size()) {
            if (xml_[at_] == '<')
                markup();
            else
                text();
        }
        return found_;
    }

private:
    void markup() {
        if (skip_if("<!--", "-->"))
            interrupt("comment");
        else if (skip_if("<?", "?>"))
            interrupt("processing instruction");
        else if (starts_with("<![CDATA["))
            cdata();
        else if (starts_with("<!"))
            skip_document_type();
        else
            tag();
    }

    void tag() {
        finish_value();
        bool opens = !starts_with("</");
        size_t name_end = std::min(xml_.find_first_of(" \t\r\n/>", at_ + 1), xml_.size());
        value_ = {line(), std::string(xml_.substr(at_ + 1, name_end - at_ - 1)), 0, ""};
        inside_ = opens; // no reader gets text after a child's end
        skip_tag();
        if (xml_[at_ - 2] == '/')
            inside_ = false;
    }

    void text() {
        bool reference = xml_[at_] == '&';
        size_t end = std::min(xml_.find_first_of("<&", at_ + 1), xml_.size());
        std::string_view piece = xml_.substr(at_, end - at_);
        if (reference && pieces_ > 0)
            interrupt("entity or character reference");
        add_piece(piece.find_first_not_of(" \t\r\n") == std::string_view::npos);
        at_ = end;
    }

    void cdata() {
        interrupt("CDATA section");
        skip_if("<![CDATA[", "]]>");
        add_piece(false);
    }

    void add_piece(bool blank) {
        ++pieces_;
        if (!blank) { // nothing is lost by blanks at the end; blanks in front lose the rest
            value_.pieces = pieces_;
            value_.causes = causes_;
        }
    }

    void interrupt(const std::string &cause) {
        if (causes_.find(cause) == std::string::npos)
            causes_ += (causes_.empty() ? "" : ", ") + cause;
    }

    void finish_value() {
        if (inside_ && value_.pieces > 1)
            found_.push_back(value_);
        pieces_ = 0;
        causes_.clear();
    }

    bool starts_with(std::string_view what) const { return xml_.substr(at_, what.size()) == what; }

    bool skip_if(std::string_view opening, std::string_view closing) {
        if (!starts_with(opening))
            return false;
        size_t end = xml_.find(closing, at_ + opening.size());
        at_ = end == std::string_view::npos ? xml_.size() : end + closing.size();
        return true;
    }

    void skip_tag() {
        for (char quote = 0; at_ < xml_.size(); ++at_) {
            char c = xml_[at_];
            if (quote)
                quote = c == quote ? '\0' : quote;
            else if (c == '"' || c == '\'')
                quote = c;
            else if (c == '>')
                break;
        }
        at_ = std::min(at_ + 1, xml_.size());
    }

    /// Declarations in an internal subset end with `>`, too; only the `>` after the bracket ends the document
    /// type.
    void skip_document_type() {
        int depth = 0;
        while (at_ < xml_.size()) {
            if (skip_if("<!--", "-->") || skip_if("<?", "?>") || skip_if("\"", "\"") || skip_if("'", "'"))
                continue;
            char c = xml_[at_++];
            depth += (c == '<') - (c == '>');
            if (depth == 0)
                return;
        }
    }

    int line() {
        line_ += static_cast<int>(std::count(xml_.begin() + counted_to_, xml_.begin() + position(), '\n'));
        counted_to_ = position();
        return line_;
    }

    std::string_view::difference_type position() const {
        return static_cast<std::string_view::difference_type>(at_);
    }

    std::string_view xml_;
    size_t at_ = 0;
    int line_ = 1;
    std::string_view::difference_type counted_to_ = 0;

    bool inside_ = false; // directly after a start tag
    int pieces_ = 0;      // since the last tag
    std::string causes_;
    split_value value_{0, "", 0, ""};
    std::vector<split_value> found_;
};

} // namespace

std::vector<split_value> find_split_values(std::string_view xml) { return markup_walk(xml).run(); }
