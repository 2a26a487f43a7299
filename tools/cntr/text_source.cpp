// Buffered reading with line numbers. The buffer never grows: what is looked at is bounded.
#include "text_source.h"

#include <algorithm>
#include <cstring>

namespace qnTool {

namespace {

constexpr std::size_t kBufferSize = 1 << 16;

}  // namespace

TextSource::TextSource(std::istream& in, std::uint64_t maxBytes)
    : in_(in), left_(maxBytes), buffer_(kBufferSize)
{
}

/// Makes `count` bytes ready if the input has them; true if any are.
bool TextSource::fill(std::size_t count)
{
    while (size_ - position_ < count && !ended_) {
        std::memmove(buffer_.data(), buffer_.data() + position_, size_ - position_);
        size_ -= position_;
        position_ = 0;
        in_.read(buffer_.data() + size_, static_cast<std::streamsize>(buffer_.size() - size_));
        auto const got = static_cast<std::uint64_t>(in_.gcount());
        failed_ = in_.bad();
        overLimit_ = got > left_;
        ended_ = overLimit_ || !in_;
        auto const used = std::min(got, left_);
        left_ -= used;
        size_ += static_cast<std::size_t>(used);
    }
    return position_ < size_;
}

std::string_view TextSource::ahead(std::size_t count)
{
    count = std::min(count, kMaxAhead);
    if (size_ - position_ < count)
        fill(count);
    return {buffer_.data() + position_, std::min(count, size_ - position_)};
}

void TextSource::skip(std::size_t count)
{
    for (; count > 0; --count) {
        char const c = buffer_[position_++];
        if (c == '\n') {
            ++line_;
            atLineStart_ = true;
        } else if (!isBlank(c)) {
            atLineStart_ = false;
        }
    }
}

void TextSource::skipBlanks(bool lineEnds)
{
    for (int c = peek(); isBlank(c) || (lineEnds && c == '\n'); c = peek())
        skip();
}

void TextSource::skipLine()
{
    for (int c = peek(); c >= 0; c = peek()) {
        skip();
        if (c == '\n')
            return;
    }
}

std::string TextSource::takeLine(std::size_t maxLength)
{
    std::string text;
    for (int c = peek(); c >= 0 && c != '\n' && text.size() < maxLength; c = peek()) {
        text.push_back(static_cast<char>(c));
        skip();
    }
    skipLine();
    return text;
}

std::string TextSource::found()
{
    auto const next = ahead(24);
    if (next.empty())
        return "the end of the input";
    if (next[0] == '\n' || (next[0] == '\r' && next.size() > 1 && next[1] == '\n'))
        return "the end of the line";
    std::string text = "'";
    for (char const c : next) {
        if (c == '\n' || c == '\r')
            break;
        auto const byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte < 0x7f) {
            text.push_back(c);
        } else {
            char const digits[] = "0123456789abcdef";
            text += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
        }
    }
    return text + "'";
}

}  // namespace qnTool
