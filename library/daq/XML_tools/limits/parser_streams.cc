#include "limits/parser_streams.h"

#include <utility>

#include <xercesc/framework/LocalFileInputSource.hpp>
#include <xercesc/framework/URLInputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/Janitor.hpp>
#include <xercesc/util/XMLException.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLURL.hpp>

namespace zeb5 {

/// Stands in its parser's list as long as it lives.
class metered_stream final : public xercesc::BinInputStream {
public:
    metered_stream(std::unique_ptr<xercesc::BinInputStream> bytes, parser_streams &streams)
        : bytes_(std::move(bytes)), streams_(streams), before_(streams.open_) {
        if (before_)
            before_->behind_ = this;
        streams_.open_ = this;
    }
    ~metered_stream() override {
        (behind_ ? behind_->before_ : streams_.open_) = before_;
        if (before_)
            before_->behind_ = behind_;
    }

    XMLFilePos curPos() const override { return bytes_->curPos(); }
    const XMLCh *getContentType() const override { return bytes_->getContentType(); }
    const XMLCh *getEncoding() const override { return bytes_->getEncoding(); }

    XMLSize_t readBytes(XMLByte *to, XMLSize_t most) override {
        const XMLSize_t count = bytes_->readBytes(to, most);
        streams_.meter_.count_bytes(count);
        return count;
    }

private:
    std::unique_ptr<xercesc::BinInputStream> bytes_;
    parser_streams &streams_;
    metered_stream *before_;
    metered_stream *behind_ = nullptr;
};

parser_streams::~parser_streams() {
    while (const metered_stream *const last = std::exchange(open_, nullptr))
        delete last; // puts the one before in its place
}

std::unique_ptr<xercesc::InputSource> parser_streams::source_of(const char *path) {
    using source = std::unique_ptr<xercesc::InputSource>;
    try {
        XMLCh *const text = xercesc::XMLString::transcode(path, &memory_);
        const xercesc::ArrayJanitor<XMLCh> owner(text, &memory_);
        xercesc::XMLURL address(&memory_);
        if (xercesc::XMLURL::parse(text, address) && !address.isRelative())
            return source(new (&memory_) xercesc::URLInputSource(address, &memory_));
        return source(new (&memory_) xercesc::LocalFileInputSource(text, &memory_));
    } catch (const xercesc::XMLException &) {
        return nullptr;
    }
}

metered_source::metered_source(const xercesc::InputSource &source, parser_streams &streams)
    : InputSource(source.getSystemId(), source.getPublicId(), source.getMemoryManager()), source_(source),
      streams_(streams) {
    setEncoding(source.getEncoding());
    setIssueFatalErrorIfNotFound(source.getIssueFatalErrorIfNotFound());
}

xercesc::BinInputStream *metered_source::makeStream() const {
    std::unique_ptr<xercesc::BinInputStream> bytes(source_.makeStream());
    return bytes ? new (&streams_.memory_) metered_stream(std::move(bytes), streams_) : nullptr;
}

} // namespace zeb5
