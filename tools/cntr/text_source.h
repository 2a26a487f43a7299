/// The characters of a stream with line numbers and a bounded look ahead.
#pragma once

#include <cstddef>
#include <cstdint>
#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace qnTool {

class TextSource {
public:
    static constexpr std::size_t kMaxAhead = 4096;

    /// Ends after `maxBytes` bytes even if the stream goes on.
    TextSource(std::istream& in, std::uint64_t maxBytes);

    /// The next `count` bytes, at most kMaxAhead; fewer only before the end. Valid until the next
    /// call of any other member.
    std::string_view ahead(std::size_t count);
    /// The next byte, or -1 at the end.
    int peek()
    {
        bool const any = position_ < size_ || fill(1);
        return any ? static_cast<unsigned char>(buffer_[position_]) : -1;
    }
    bool atEnd() { return peek() < 0; }
    /// Passes over `count` bytes, which were looked at before.
    void skip(std::size_t count = 1);
    /// Passes over blanks, and over line ends where asked.
    void skipBlanks(bool lineEnds);
    /// Passes over the rest of the line and its end.
    void skipLine();
    /// The rest of the line without its end, cut at `maxLength`; passes over the line.
    std::string takeLine(std::size_t maxLength);

    int line() const { return line_; }
    /// Nothing but blanks stands before the next byte on its line.
    bool atLineStart() const { return atLineStart_; }
    /// What stands next, quoted and made printable, for a message.
    std::string found();

    /// The stream goes on beyond the limit, or it failed: asked before the end, either may still
    /// lie ahead.
    bool overLimit() const { return overLimit_; }
    bool failed() const { return failed_; }
    /// Nothing is left, though the text may not have ended here.
    bool cutOff() { return atEnd() && (overLimit_ || failed_); }

private:
    bool fill(std::size_t count);

    std::istream& in_;
    std::uint64_t left_;
    std::vector<char> buffer_;
    std::size_t position_ = 0;
    std::size_t size_ = 0;
    int line_ = 1;
    bool atLineStart_ = true;
    bool ended_ = false;
    bool overLimit_ = false;
    bool failed_ = false;
};

/// A space, tab or carriage return.
inline bool isBlank(int c)
{
    return c == ' ' || c == '\t' || c == '\r';
}

inline bool isLetter(int c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

}  // namespace qnTool
