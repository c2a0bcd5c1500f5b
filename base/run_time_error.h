// A run-time error: what goes wrong outside the rules of a dialog has a number, which the error
// handler turns into words.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tollwick {

namespace error_number {
inline constexpr std::int32_t InvalidCall = 5;
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t OutOfMemory = 7;
inline constexpr std::int32_t SubscriptOutOfRange = 9;
inline constexpr std::int32_t BadFileName = 52;
inline constexpr std::int32_t FileNotFound = 53;
inline constexpr std::int32_t DiskFull = 61;
inline constexpr std::int32_t InputPastEnd = 62;
inline constexpr std::int32_t TooManyFiles = 67;
inline constexpr std::int32_t PermissionDenied = 70;
inline constexpr std::int32_t PathFileAccess = 75;
inline constexpr std::int32_t PathNotFound = 76;
inline constexpr std::int32_t ResourceNotFound = 326;
} // namespace error_number

class RunTimeError : public std::runtime_error {
public:
    explicit RunTimeError(std::int32_t number)
        : std::runtime_error("run-time error " + std::to_string(number)), number_(number) {}

    [[nodiscard]] std::int32_t number() const { return number_; }

private:
    std::int32_t number_;
};

// The number of the exception that is being handled; to be called inside a catch block. Failures of
// files and memory get the numbers above, anything without one gets InvalidCall.
std::int32_t currentErrorNumber();

} // namespace tollwick
