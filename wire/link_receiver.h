// What the console makes of the bytes that arrive on a connection: first the session key, then
// lines. Knows no socket: bytes in, records out, bounded in size.
#pragma once

#include "wire/comrecord.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace tollwick {

inline constexpr std::size_t kSessionKeySize = 32;
inline constexpr std::string_view kLineEnd = "\r\n";
// The longest valid line: the start value and every byte of a record as two digits, and the line
// end.
inline constexpr std::size_t kMaxLineSize = 2 + 2 * kComrecordSize + kLineEnd.size();
// What may wait to be taken; at most one line is ever asked for.
inline constexpr std::size_t kMaxBuffered = 64 * kMaxLineSize;

// The line for a record, CR LF included. `start` is the random start value, 1 to 255.
std::string encodeLine(const Comrecord& record, std::string_view key, std::uint8_t start);

// The record of a line without its CR LF.
void decodeLine(std::string_view line, std::string_view key, Comrecord& record);

// Cuts a stream of bytes into lines, however the bytes are split.
class LineFramer {
public:
    void append(std::string_view bytes) { buffer_.append(bytes); }

    // Moves the first whole line, without its CR LF, into `line`; false when there is none.
    bool takeLine(std::string& line);
    // True when what is buffered starts with more bytes than any valid line has.
    [[nodiscard]] bool overlong() const;

    [[nodiscard]] std::string_view buffered() const {
        return std::string_view(buffer_).substr(start_);
    }
    void clear();

private:
    std::string buffer_;
    std::size_t start_ = 0;   // of the first line that is not taken yet
    std::size_t scanned_ = 0; // no line end starts before this position
};

class LinkReceiver {
public:
    enum class Arrival {
        Nothing, // an incomplete line, or data that is no key
        Key,     // SessionKey has come
        Record,  // a line has been unpacked into the record
        TooLong, // more has come than any service sends: the link is to be closed
    };

    // `arrived` are the bytes of one arrival, which may be none when only the rest of an earlier
    // one is to be looked at. At most one line is taken per call.
    Arrival DataArrival(std::string_view arrived, Comrecord& record);

    // True when a further call would take a line from what has already arrived.
    [[nodiscard]] bool hasLine() const;

    // Back to the state of a new connection. SessionKey is kept until a new one comes.
    void close();
    // Forgets the key, too.
    void reset();

    // The 32 bytes that the service sends first; they key every line in both directions.
    std::string SessionKey;
    // 0: no data yet on this connection; -1: the key has come; 1: the first data was no key.
    Integer KeyReceived = 0;

private:
    LineFramer framer_;
    std::string line_;
};

} // namespace tollwick
