#include "steps/plain_file_source.h"

#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/Janitor.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLExceptMsgs.hpp>
#include <xercesc/util/XMLString.hpp>

namespace zeb5 {

namespace {

class plain_file_stream final : public xercesc::BinInputStream {
public:
    explicit plain_file_stream(const plain_file &file) : file_(file) {}

    XMLFilePos curPos() const override { return at_; }
    const XMLCh *getContentType() const override { return nullptr; }

    XMLSize_t readBytes(XMLByte *to, XMLSize_t most) override {
        const long got = file_.read(reinterpret_cast<char *>(to), most, at_);
        if (got < 0) // as the XML library does when a file cannot be read any further
            ThrowXML(xercesc::XMLPlatformUtilsException, xercesc::XMLExcepts::File_CouldNotReadFromFile);
        at_ += static_cast<std::size_t>(got);
        return static_cast<XMLSize_t>(got);
    }

private:
    const plain_file &file_;
    std::size_t at_ = 0;
};

/// Holds the path in the XML library's characters while it lives.
class wide_path {
public:
    wide_path(const char *path, xercesc::MemoryManager &memory)
        : text_(xercesc::XMLString::transcode(path, &memory)), owner_(text_, &memory) {}

    const XMLCh *text() const { return text_; }

private:
    XMLCh *text_;
    xercesc::ArrayJanitor<XMLCh> owner_;
};

} // namespace

plain_file_source::plain_file_source(const char *path, const plain_file &file, xercesc::MemoryManager &memory)
    : LocalFileInputSource(wide_path(path, memory).text(), &memory), file_(file) {}

xercesc::BinInputStream *plain_file_source::makeStream() const {
    return new (getMemoryManager()) plain_file_stream(file_);
}

} // namespace zeb5
