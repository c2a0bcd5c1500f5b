// The one record that travels in both directions: a header of four numbers and a data block.
#pragma once

#include "wire/wire_types.h"

#include <array>
#include <string>
#include <string_view>

namespace tollwick {

inline constexpr std::size_t kDataBlockSize = 4096;
inline constexpr std::size_t kComrecordSize = 4106;

using DataBlock = std::array<char, kDataBlockSize>;

struct Comrecord {
    Integer Operation{}; // in a request an operation code, in a reply the result code
    Integer ObjectClass{};
    Long RecordNumber{};
    Integer RecordLength{}; // declared length of the sub-record, a constant per request
    DataBlock ComrecordData{};

    // Not sent: how many bytes at the start of the data block count even where they look like the
    // blanks behind a text: up to the last number that was packed, or all that have come.
    std::size_t data_end = 0;

    friend bool operator==(const Comrecord& a, const Comrecord& b) {
        return a.Operation == b.Operation && a.ObjectClass == b.ObjectClass &&
               a.RecordNumber == b.RecordNumber && a.RecordLength == b.RecordLength &&
               a.ComrecordData == b.ComrecordData;
    }
};

// The blank that every record is cleared from.
inline constexpr Comrecord EmptyComrecord{};

// What a request asks for (`Operation` of a request).
enum class Operation : Integer {
    Add = 20, // or carry out a command
    Save = 30,
    Delete = 40,
    Get = 50, // the first of a list, or the only one
    GetNext = 60,
    Authenticate = 70,
};

// The kind of object that a request addresses.
enum class ObjectClass : Integer {
    Host = 20,
    Schedule = 30,
    Settings = 40,
    TapiLocation = 50,
    TapiDevice = 60,
    RasEntry = 70,
    Script = 80,
    ScriptFile = 90,
    HostDirectory = 100,
    Login = 120,
    OutboxMail = 130,
    UucpStatus = 140,
    UucpCommand = 150,
};

// How a request ended: word 0 of the reply, or -1 from the wait.
namespace result {
inline constexpr Integer NoReply = -1;
inline constexpr Integer Done = 1;
inline constexpr Integer Refused = 2;
inline constexpr Integer EndOfList = 3;
// Two further answers to a save of the settings.
inline constexpr Integer SettingsAnswer8 = 8;
inline constexpr Integer SettingsAnswer9 = 9;
} // namespace result

// The record's 4106 bytes without trailing NULs and blanks, as they are scrambled and sent. Of a
// number no byte up to its last one that is not NUL is taken for a blank.
std::string toBytes(const Comrecord& record);

// Reads a record from bytes that may be shorter (the missing tail counts as NULs) or longer (the
// rest is ignored) than 4106.
void fromBytes(std::string_view bytes, Comrecord& record);

} // namespace tollwick
