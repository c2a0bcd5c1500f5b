// The settings that say where the service is, who logs in, in which language, and where the product
// is installed.
#pragma once

#include "base/number_types.h"
#include "base/settings_store.h"

#include <string>

namespace tollwick {

// Texts are UTF-8.
struct ConnectionSettings {
    std::string ServerConnectIp;
    std::string ServerConnectPort; // decimal text
    std::string ServerConnectUsername;
    Single ComTimeout = 30; // seconds to wait for a reply
    std::string
        InstallDir; // as it is stored: empty stands for a default, which is not written back
};

ConnectionSettings loadConnectionSettings(Settings& settings);

// ComTimeout is never written.
void saveConnectionSettings(Settings& settings, const ConnectionSettings& connection);

// "CountryCode" as the base id of a language block. Throws RunTimeError 6 beyond 16 bits.
Integer loadLangBase(Settings& settings);

} // namespace tollwick
