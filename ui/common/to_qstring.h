// The core's texts, which are UTF-8, as Qt wants them.
#pragma once

#include <QString>

#include <string_view>

namespace tollwick {

inline QString toQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

} // namespace tollwick
