#include "steps/plain_window.h"

#include <algorithm>
#include <cstring>

#include "steps/plain_characters.h"
#include "steps/plain_lane.h"
#include "text/byte_block.h"

namespace zeb5 {

namespace {

/// Returns the end of the ASCII characters that `from` begins with.
const char *skip_ascii(const char *from, const char *end) {
    constexpr std::ptrdiff_t step = 4 * block_bytes;
    for (; end - from >= step; from += step) {
        const byte_block all =
            load_block(from) | load_block(from + 16) | load_block(from + 32) | load_block(from + 48);
        if (top_bits(all))
            break;
    }
    while (from != end && !is_wide(*from))
        ++from;
    return from;
}

bool continues(char c) { return (c & 0xC0) == 0x80; }

/// Returns the length of the character beyond ASCII at `from`; 0 when it is cut off at the end, -1 for bytes
/// that are no XML character or that the XML library reads in its own way.
int length_of_character(const char *from, const char *end) {
    const auto byte = [from](int i) { return static_cast<unsigned char>(from[i]); };
    const int length = byte(0) < 0xC2   ? -1
                       : byte(0) < 0xE0 ? 2
                       : byte(0) < 0xF0 ? 3
                       : byte(0) < 0xF5 ? 4
                                        : -1;
    if (length < 0)
        return -1;
    for (int i = 1; i < length; ++i) {
        if (from + i == end)
            return 0;
        if (!continues(from[i]))
            return -1;
    }
    const bool is_overlong = (byte(0) == 0xE0 && byte(1) < 0xA0) || (byte(0) == 0xF0 && byte(1) < 0x90);
    const bool is_surrogate = byte(0) == 0xED && byte(1) >= 0xA0;
    const bool is_beyond = byte(0) == 0xF4 && byte(1) >= 0x90;
    const bool is_no_character = byte(0) == 0xEF && byte(1) == 0xBF && byte(2) >= 0xBE; // U+FFFE, U+FFFF
    return is_overlong || is_surrogate || is_beyond || is_no_character ? -1 : length;
}

} // namespace

bool plain_window::load() {
    const char *from = begin_;
    return load_more(from);
}

/// Checks all that is loaded. Returns false when some of it is no character.
bool plain_window::check() {
    if (encoding_ == plain_encoding::ISO_8859_1)
        checked_ = loaded_;
    while ((checked_ = skip_ascii(checked_, loaded_)) != loaded_) {
        if (encoding_ == plain_encoding::ASCII)
            return false;
        do { // more characters beyond ASCII usually follow
            const int length = length_of_character(checked_, loaded_);
            if (length == 0)
                return !end_; // its other bytes are not loaded yet
            if (length < 0)
                return false;
            checked_ += length;
        } while (checked_ != loaded_ && is_wide(*checked_));
    }
    return true;
}

bool plain_window::extend(const char *&from) {
    if (limit_ - from > lane.most_token)
        return false;
    while (!end_) {
        if (!check())
            return false;
        if (checked_ - std::max(from, limit_) > lane.look_ahead) {
            limit_ = checked_ - lane.look_ahead;
            return true;
        }
        if (!load_more(from))
            return false;
    }
    return check() && extend_to_end(from);
}

bool memory_window::load_more(const char *&) {
    const std::size_t more = strnlen(loaded_, lane.part);
    loaded_ += more;
    if (more < lane.part)
        end_ = loaded_;
    return true;
}

bool memory_window::extend_to_end(const char *&from) {
    if (limit_ == end_)
        return false;
    if (end_ - std::max(from, limit_) > readable) {
        limit_ = end_ - readable;
        return true;
    }
    const auto rest = static_cast<std::size_t>(end_ - from);
    last_bytes_.reset(new char[rest + readable]);
    std::memcpy(last_bytes_.get(), from, rest);
    std::memset(last_bytes_.get() + rest, 0, readable);
    from = last_bytes_.get();
    limit_ = checked_ = loaded_ = end_ = from + rest;
    return true;
}

namespace {

/// Holds an incomplete token, the bytes checked ahead, and two parts, so that the bytes need not be moved for
/// every part.
std::size_t largest_room() {
    return static_cast<std::size_t>(lane.most_token + lane.look_ahead) + 2 * lane.part;
}

} // namespace

file_window::file_window(const plain_file &file)
    : file_(file), room_(std::min(file.size(), largest_room())), buffer_(new char[room_ + readable]) {
    begin_ = limit_ = checked_ = loaded_ = buffer_.get();
}

bool file_window::load_more(const char *&from) {
    const std::size_t wanted = std::min(lane.part, file_.size() - read_);
    if (free_room() < wanted)
        make_room(from);
    char *const to = buffer_.get() + (loaded_ - buffer_.get());
    const long got = file_.read(to, std::min(wanted, free_room()), read_);
    if (got <= 0)
        return false;
    loaded_ += got;
    read_ += static_cast<std::size_t>(got);
    if (read_ == file_.size())
        end_ = loaded_;
    return true;
}

std::size_t file_window::free_room() const {
    return room_ - static_cast<std::size_t>(loaded_ - buffer_.get());
}

/// Moves the bytes that are still needed to the beginning of the buffer.
void file_window::make_room(const char *&from) {
    const std::ptrdiff_t gone = from - buffer_.get();
    std::memmove(buffer_.get(), from, static_cast<std::size_t>(loaded_ - from));
    limit_ = std::max(limit_, from);
    for (const char **place : {&from, &limit_, &checked_, &loaded_})
        *place -= gone;
}

bool file_window::extend_to_end(const char *&) {
    if (limit_ == end_)
        return false;
    std::memset(buffer_.get() + (end_ - buffer_.get()), 0, readable);
    limit_ = end_;
    return true;
}

} // namespace zeb5
