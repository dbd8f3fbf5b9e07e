#include "limits/parser_files.h"

#include <utility>

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/util/BinFileInputStream.hpp>
#include <xercesc/util/Janitor.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLURL.hpp>

namespace zeb5 {

/// A file that its parser knows of as long as it is open.
class file_stream final : public xercesc::BinFileInputStream {
public:
    file_stream(const XMLCh *path, parser_files &files)
        : BinFileInputStream(path, &files.memory_), files_(files), before_(files.open_) {
        if (before_)
            before_->behind_ = this;
        files_.open_ = this;
    }
    ~file_stream() override {
        (behind_ ? behind_->before_ : files_.open_) = before_;
        if (before_)
            before_->behind_ = behind_;
    }

private:
    parser_files &files_;
    file_stream *before_;
    file_stream *behind_ = nullptr;
};

namespace {

class file_source final : public xercesc::LocalFileInputSource {
public:
    file_source(const XMLCh *path, parser_files &files, xercesc::MemoryManager &memory)
        : LocalFileInputSource(path, &memory), files_(files) {}

    xercesc::BinInputStream *makeStream() const override {
        std::unique_ptr<file_stream> stream(new (getMemoryManager()) file_stream(getSystemId(), files_));
        return stream->getIsOpen() ? stream.release() : nullptr;
    }

private:
    parser_files &files_;
};

} // namespace

parser_files::~parser_files() {
    while (const file_stream *const last = std::exchange(open_, nullptr))
        delete last; // puts the one before in its place
}

std::unique_ptr<xercesc::InputSource> parser_files::source_of(const char *path) {
    try {
        XMLCh *const text = xercesc::XMLString::transcode(path, &memory_);
        const xercesc::ArrayJanitor<XMLCh> owner(text, &memory_);
        xercesc::XMLURL address(&memory_);
        if (xercesc::XMLURL::parse(text, address) && !address.isRelative())
            return nullptr;
        return std::unique_ptr<xercesc::InputSource>(new (&memory_) file_source(text, *this, memory_));
    } catch (const xercesc::XMLException &) {
        return nullptr;
    }
}

} // namespace zeb5
