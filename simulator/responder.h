// Answers requests from a site: one request in, one reply out. Knows no socket.
#pragma once

#include "simulator/transport.h"
#include "site/site.h"

#include <deque>
#include <functional>
#include <map>

namespace tollwick::simulator {

// What the service remembers of one console.
struct Session {
    bool is_authenticated = false;
    // What is still to come of each list that the console walks, by class of object. A list is told
    // as it was when its first entry was asked for.
    std::map<ObjectClass, std::deque<Comrecord>> rest_of_lists;
};

class Responder {
public:
    // `site_changed` is called after each change that a request has made to the site.
    Responder(Site& site, Transport& transport, std::function<void()> site_changed);

    // Never fails: what cannot be made sense of is refused.
    Comrecord reply(const Comrecord& request, Session& session);

private:
    Comrecord authenticate(const Comrecord& request, Session& session);
    Comrecord saveLogin(const Comrecord& request);

    Comrecord saveSettings(const Comrecord& request);

    Comrecord addSchedule(const Comrecord& request);
    Comrecord saveSchedule(const Comrecord& request);
    Comrecord addHost(const Comrecord& request);
    Comrecord saveHost(const Comrecord& request);
    Comrecord deleteHostDirectory(const Comrecord& request);

    Comrecord deleteMail(const Comrecord& request);
    Comrecord carryOutCommand(const Comrecord& request);

    Comrecord getScript(const Comrecord& request);
    Comrecord saveScript(const Comrecord& request);

    Comrecord getFirstOfList(ObjectClass object_class, Session& session);
    static Comrecord getNextOfList(ObjectClass object_class, Session& session);
    [[nodiscard]] std::deque<Comrecord> wholeList(ObjectClass object_class) const;

    void createSpoolDirectory(const HostRecord& host);

    Site& site_;
    Transport& transport_;
    std::function<void()> site_changed_;
};

} // namespace tollwick::simulator
