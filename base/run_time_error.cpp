#include "base/run_time_error.h"

#include <new>
#include <system_error>

namespace tollwick {
namespace {

std::int32_t numberOf(const std::error_code& code) {
    const auto is = [&](std::errc condition) { return code == condition; };
    if (is(std::errc::no_such_file_or_directory))
        return error_number::FileNotFound;
    if (is(std::errc::no_space_on_device))
        return error_number::DiskFull;
    if (is(std::errc::too_many_files_open) || is(std::errc::too_many_files_open_in_system))
        return error_number::TooManyFiles;
    if (is(std::errc::permission_denied) || is(std::errc::operation_not_permitted))
        return error_number::PermissionDenied;
    if (is(std::errc::not_a_directory))
        return error_number::PathNotFound;
    if (is(std::errc::filename_too_long) || is(std::errc::invalid_argument))
        return error_number::BadFileName;
    return error_number::PathFileAccess;
}

} // namespace

std::int32_t currentErrorNumber() {
    try {
        throw;
    } catch (const RunTimeError& error) {
        return error.number();
    } catch (const std::bad_alloc&) {
        return error_number::OutOfMemory;
    } catch (const std::system_error& error) {
        return numberOf(error.code());
    } catch (const std::out_of_range&) {
        return error_number::SubscriptOutOfRange;
    } catch (...) {
        return error_number::InvalidCall;
    }
}

} // namespace tollwick
