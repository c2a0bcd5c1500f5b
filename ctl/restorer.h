// Makes a service equal to a site, with only the requests that this takes: what is equal already is
// not sent, so that a restore that has ended halfway goes on when it is begun again.
#pragma once

#include "link/service_context.h"
#include "site/site.h"

#include <functional>
#include <string>

namespace tollwick {

struct RestoreOptions {
    bool is_dry_run = false; // tells the steps and sends nothing
    bool deletes = false;    // also what the site lacks
    bool scripts = true;
    bool hosts = true;
    bool schedules = true;
    bool settings = true;
};

enum class RestoreOutcome {
    Done,
    Refused,    // a step, by the service; what went before it is done, what follows is not
    LinkFailed, // which has been told; the same
};

class Restorer {
public:
    // `present` is what the service holds now: settings, schedules, hosts and scripts. `say` is
    // told each step before it is taken, in the language of the context.
    Restorer(ServiceContext& context, Site present, const Site& wanted,
             const RestoreOptions& options, std::function<void(const std::string& step)> say)
        : context_(context), present_(std::move(present)), wanted_(wanted), options_(options),
          say_(std::move(say)) {}

    // Scripts, hosts, schedules, settings, in this order.
    RestoreOutcome run();

    // Steps that have been taken, and that were still to be taken when it ended.
    [[nodiscard]] std::size_t stepsDone() const { return done_; }
    [[nodiscard]] std::size_t stepsLeft() const { return steps_.size() - done_; }
    // The latter, in the words in which they are told.
    [[nodiscard]] std::vector<std::string> left() const;

private:
    struct Step {
        std::string text;
        std::function<RestoreOutcome()> take;
    };
    void plan();
    void planScripts();
    void planHosts();
    void planSchedules();
    void planSettings();
    void add(Text text, std::string_view name, std::function<RestoreOutcome()> take);
    RestoreOutcome saveHost(const HostRecord& wanted, const HostRecord* present);
    RestoreOutcome saveSchedule(const ScheduleRecord& wanted, const ScheduleRecord* present);

    ServiceContext& context_;
    Site present_;
    const Site& wanted_;
    RestoreOptions options_;
    std::function<void(const std::string&)> say_;
    std::vector<Step> steps_;
    std::size_t done_ = 0;
};

} // namespace tollwick
