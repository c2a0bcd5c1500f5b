#include "base/connection_settings.h"

#include "base/numeric.h"

namespace tollwick {

ConnectionSettings loadConnectionSettings(Settings& settings) {
    ConnectionSettings connection;
    connection.InstallDir = settings.read(setting::InstallDir);
    connection.ComTimeout = static_cast<Single>(numericValue(settings.read(setting::ComTimeout)));
    connection.ServerConnectIp = settings.read(setting::ServerConnectIp);
    connection.ServerConnectPort = settings.read(setting::ServerConnectPort);
    connection.ServerConnectUsername = settings.read(setting::ServerConnectUsername);
    return connection;
}

void saveConnectionSettings(Settings& settings, const ConnectionSettings& connection) {
    settings.write(setting::InstallDir, connection.InstallDir);
    settings.write(setting::ServerConnectIp, connection.ServerConnectIp);
    settings.write(setting::ServerConnectPort, connection.ServerConnectPort);
    settings.write(setting::ServerConnectUsername, connection.ServerConnectUsername);
}

Integer loadLangBase(Settings& settings) {
    return toInteger(numericValue(settings.read(setting::CountryCode)));
}

} // namespace tollwick
