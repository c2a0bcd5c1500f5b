// What differs between two sites.
#include "simulator/sample_site.h"
#include "site/differences.h"
#include "wire/scramble.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace tollwick {
namespace {

using Lines = std::vector<std::string>;

Lines told(const Site& first, const Site& second) {
    Lines lines;
    for (const Difference& each : differencesOf(first, second))
        lines.push_back(QStringList{each.kind, each.name, each.field, each.first, each.second}
                            .join('|')
                            .toStdString());
    return lines;
}

TEST(Differences, AreToldByNameAndFieldAndSecretsOnlyAsDiffering) {
    const Site first = simulator::sampleSite();
    Site second = first;
    EXPECT_EQ(told(first, second), Lines{});
    // What is the service's own does not count, nor how a password is scrambled.
    second.settings.service_version = 5;
    second.hosts[0].record_number = 99;
    second.hosts[0].state = 7;
    second.hosts[0].display_name = "malmö HUVUDKONTOR";
    second.hosts[0].password.setBytes(ScrambleField("E", HostPasswordKey, "sm\xF6rg\xE5s"));
    second.schedules[0].record_number = 99;
    std::swap(second.schedules[0], second.schedules[1]);
    EXPECT_EQ(told(first, second),
              (Lines{"host|Malmö huvudkontor|display_name|Malmö huvudkontor|malmö HUVUDKONTOR"}));

    second = first;
    second.settings.mail_logging = kFalse;
    second.settings.admin_port = 600;
    second.schedules[0].day = 4;
    const std::string number = std::to_string(first.schedules[0].record_number);
    second.schedules.push_back(first.schedules[1]);
    second.schedules.back().at_time = "03:03";
    second.schedules.back().timed = 1;
    second.schedules.back().record_number = 77;
    second.hosts[0].uucp_password.setBytes(ScrambleField("E", HostPasswordKey, "x"));
    second.hosts[1].connect_using = 0;
    second.hosts[2].display_name = "Annan";
    second.scripts[0].text = "changed";
    second.scripts[1].file_name = "annan.scp";
    const std::string day = wordOf("day", first.schedules[0].day)->toStdString();
    const std::string new_day = wordOf("day", first.schedules[1].day)->toStdString();
    const std::string third = first.hosts[2].display_name.text();
    EXPECT_EQ(told(first, second),
              (Lines{"setting||admin_port|542|600", "setting||mail_logging|yes|no",
                     "schedule|" + number + "|day|" + day + "|friday",
                     "schedule|77|||" + new_day + " 03:03",
                     "host|Malmö huvudkontor|uucp_password|differs|differs",
                     "host|" + first.hosts[1].display_name.text() + "|connect_using|dialup|modem",
                     "host|" + third + "||" + third + "|", "host|Annan|||Annan",
                     "script|malmo.scp|text|differs|differs", "script|fjall.scp||fjall.scp|",
                     "script|annan.scp|||annan.scp"}));
}

} // namespace
} // namespace tollwick
