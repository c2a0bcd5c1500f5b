#include "wire/link_receiver.h"

#include "wire/scramble.h"

namespace tollwick {

std::string encodeLine(const Comrecord& record, std::string_view key, std::uint8_t start) {
    return scramble(key, toBytes(record), start).append(kLineEnd);
}

void decodeLine(std::string_view line, std::string_view key, Comrecord& record) {
    fromBytes(unscramble(key, line), record);
}

bool LineFramer::takeLine(std::string& line) {
    const std::size_t end = buffer_.find(kLineEnd, scanned_);
    if (end == std::string::npos) {
        // A CR at the very end may be the first half of a line end.
        scanned_ = std::max(start_, buffer_.empty() ? 0 : buffer_.size() - 1);
        return false;
    }
    line.assign(buffer_, start_, end - start_);
    start_ = scanned_ = end + kLineEnd.size();
    if (start_ == buffer_.size())
        clear();
    else if (start_ > kMaxLineSize) {
        buffer_.erase(0, start_);
        start_ = scanned_ = 0;
    }
    return true;
}

bool LineFramer::overlong() const {
    const std::string_view rest = buffered();
    return rest.size() > kMaxLineSize &&
           rest.substr(0, kMaxLineSize).find(kLineEnd) == std::string_view::npos;
}

void LineFramer::clear() {
    buffer_.clear();
    start_ = scanned_ = 0;
}

LinkReceiver::Arrival LinkReceiver::DataArrival(std::string_view arrived, Comrecord& record) {
    framer_.append(arrived);
    if (KeyReceived == 0) {
        if (framer_.buffered().empty())
            return Arrival::Nothing;
        if (framer_.buffered().size() == kSessionKeySize) {
            KeyReceived = kTrue;
            SessionKey = framer_.buffered();
            framer_.clear();
            return Arrival::Key;
        }
        // Only a first packet of exactly the key's size is a key. Anything else is read as lines
        // from the next arrival on, and this is wanted.
        KeyReceived = 1;
        return Arrival::Nothing;
    }
    if (framer_.overlong() || framer_.buffered().size() > kMaxBuffered)
        return Arrival::TooLong;
    if (!framer_.takeLine(line_))
        return Arrival::Nothing;
    decodeLine(line_, SessionKey, record);
    return Arrival::Record;
}

bool LinkReceiver::hasLine() const {
    return KeyReceived != 0 && framer_.buffered().find(kLineEnd) != std::string_view::npos;
}

void LinkReceiver::close() {
    KeyReceived = 0;
    framer_.clear();
}

void LinkReceiver::reset() {
    close();
    SessionKey.clear();
}

} // namespace tollwick
