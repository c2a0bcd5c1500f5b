// The site that the stand-in service starts with when nobody gives it another.
#pragma once

#include "site/site.h"

namespace tollwick::simulator {

inline constexpr char kSampleUserId[] = "admin";
inline constexpr char kSamplePassword[] = "tollwick";

Credentials sampleLogin();

// Five hosts of all kinds of connection, schedules, mail that takes about 20 seconds to send,
// scripts, telephony and dial-up names; service version 4.
Site sampleSite();

} // namespace tollwick::simulator
