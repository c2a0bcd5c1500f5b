#include "tests/ui/support/console_test.h"

namespace tollwick {
namespace {

// Titles, then key, image and cells of each row.
// clang-format off
const std::pair<const char*, Lines> kEnglish[] = {
    {"servername", {""}}, {"configuration", {""}}, {"system", {""}}, {"view", {""}},
    {"loginaccount", {"Login account", "setting lock admin"}},
    {"schedule",
     {"Day|When|Between|Delay", "setting schedule Weekdays|At: 07:30|00:00 - 23:59|0",
      "setting schedule Every day|At: 23:15|00:00 - 23:59|0",
      "setting schedule Weekdays|Every: 15 min|08:00 - 17:00|5",
      "setting schedule Weekends|Every: 2 hour|09:00 - 21:00|0",
      "setting schedule Friday|Every: 30 min|12:00 - 16:30|10"}},
    {"admin",
     {"Options|Setting", "adminip netadress Admin server IP:|127.0.0.1",
      "adminport portin Admin port to listen at:|542"}},
    {"logs",
     {"Available logs|Period", "maillogging squareselected Mail logging|30",
      "uucptransferlogging squareselected UUCP transfer logging|14",
      "smtplogging squareselected Smtp logging|14", "scriptlogging square Script logging|7",
      "comlogging square Communication logging|3", "uucpcmdlogging square UUCP command logging|7",
      "uucpadvlogging square UUCP advanced logging|7"}},
    {"options",
     {"Options|Setting", "docviewer paper Document viewer:|notepad.exe",
      "allowpriority squareselected Transport on priority mail|-",
      "Scheduleactivated squareselected Schedule activated|-"}},
    {"smtpserver",
     {"Function:|Setting", "SmtpServiceIp netadress SMTP service address:|127.0.0.1",
      "SmtpServicePort portin SMTP port to listen at:|25"}},
    {"smtpforward",
     {"Function|Setting", "smtpforwardip netadress SMTP forward to address:|192.0.2.10",
      "smtpforwardport portin SMTP forward to port:|2525"}},
    {"uucpdaemon",
     {"Options|Setting", "uucppriorcmd command Command to run prior transport:|",
      "uucpaftercmd command Command to run after transport:|rensa.bat",
      "remotedebugginglevel debug16 Remote debugging level:|3",
      "dischargecr squareselected Discharge CR in oubound mail|-",
      "forcesendparams square Force protocol 'g' sendparameters|-"}},
    {"uucphosts",
     {"DisplayName|Domain|Active", "setting transport Malmö huvudkontor|malmo.corvale.example|Yes",
      "setting transport Göteborgs lager|lager.corvale.example|Yes",
      "setting transport Stockholm|sthlm.corvale.example|Yes",
      "setting transport Åre fjällstation|are.corvale.example|No",
      "setting transport Växjö tryckeri|tryckeri.example|Yes"}},
    {"outbox",
     {"To:|Via node:|File size:|File name:",
      "setting outboxcont åke.öberg@malmo.corvale.example|malmo|1,234,567 kB|D.corv0A18",
      "setting outboxcont info@sthlm.corvale.example|sthlm|40 kB|D.corv0A1A"}},
    {"uucpmonitor",
     {"Item:|Status:", "setting monitor State:|", "setting monitor Number of queued files:|0",
      "setting monitor Transferring file #:|0", "setting monitor File in progress:|",
      "setting monitor File size:|0 kB", "setting monitor Progress:|0 %",
      "setting monitor Average speed:|0 bps"}}};

const std::pair<const char*, Lines> kSwedish[] = {
    {"schedule",
     {"Dag|När|Mellan|Fördröjning", "setting schedule Vardagar|Klockan: 07:30|00:00 - 23:59|0",
      "setting schedule Varje dag|Klockan: 23:15|00:00 - 23:59|0",
      "setting schedule Vardagar|Varje: 15 min|08:00 - 17:00|5",
      "setting schedule Helger|Varje: 2 tim|09:00 - 21:00|0",
      "setting schedule Fredag|Varje: 30 min|12:00 - 16:30|10"}},
    {"smtpforward",
     {"Funktion|Inställning", "smtpforwardip netadress Vidarebefordra till adress:|192.0.2.10",
      "smtpforwardport portin Vidarebefordra till port:|2525"}}};
// clang-format on

class ListTest : public ConsoleTest {
protected:
    template <std::size_t N>
    void expectLists(const std::pair<const char*, Lines> (&lists)[N]) {
        onServer([](simulator::Server& s) { // two mails, one of them huge
            s.site().outbox = {s.site().outbox[1], s.site().outbox[3]};
            s.site().outbox[0].size = 1'234'567;
        });
        logIn();
        for (const auto& [node, lines] : lists) {
            clickNode(node);
            EXPECT_EQ(listed(), lines) << node;
            EXPECT_EQ(list().selectedRow(), -1);
            for (int row = 0; row < list().model()->rowCount(); ++row)
                EXPECT_FALSE(list().model()->index(row, 0).data(Qt::DecorationRole).isNull());
        }
    }
};

TEST_F(ListTest, EveryNodeHasItsList) {
    expectLists(kEnglish);
    EXPECT_EQ(std::size(kEnglish), tree().size());
}

TEST_F(ListTest, InSwedishOnlyTheWordsDiffer) {
    set(setting::CountryCode, "4000");
    expectLists(kSwedish);
    EXPECT_EQ(tree().at(1), ".configuration config2 Konfiguration");
    EXPECT_EQ(tree().at(14), "..uucpmonitor monitor UUCP-monitor");
    EXPECT_EQ(info(), "Klar");
}

} // namespace
} // namespace tollwick
