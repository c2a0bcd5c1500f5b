#include "program.h"
#include "site/differences.h"
#include "site/site_file.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>

#include <filesystem>
#include <set>

namespace tollwick::ctl {
namespace {

class SiteCommandTest : public ProgramTest {
protected:
    Site load(std::string_view name) { return SiteFile(folder / name).load(); }
    // Every record of a site file, apart from its number and its place in the list.
    std::multiset<std::string> recordsOf(std::string_view name) {
        std::multiset<std::string> records;
        const std::string json = folder.read(name);
        for (const QJsonValue part :
             QJsonDocument::fromJson(QByteArray::fromStdString(json)).object())
            for (const QJsonValue& each : part.isArray() ? part.toArray() : QJsonArray{part}) {
                QJsonObject record = each.toObject();
                record.remove("record_number");
                records.insert(QJsonDocument(record).toJson().toStdString());
            }
        return records;
    }
    // Leaves nothing of the service's configuration as it was.
    void changeEverything() {
        service.run([](simulator::Server& server) {
            Site& changed = server.site();
            changed.settings.admin_port = 1;
            changed.settings.doc_viewer = "vi";
            changed.schedules.erase(changed.schedules.begin());
            changed.schedules[0].delay = 9;
            changed.schedules.push_back(changed.schedules[0]);
            changed.schedules.back().day = 6;
            changed.schedules.back().record_number = 40;
            changed.hosts.erase(changed.hosts.begin());
            changed.hosts[0].mail_domain = "elsewhere.example";
            changed.hosts[1].uucp_password.setBytes(scrambledPassword("another"));
            changed.hosts.push_back(changed.hosts[0]);
            changed.hosts.back().display_name = "Ny";
            changed.hosts.back().record_number = 41;
            changed.scripts.erase(changed.scripts.begin());
            changed.scripts[0].text = "changed";
        });
    }
};

TEST_F(SiteCommandTest, ABackupRestoresWhateverHasChanged) {
    ASSERT_EQ(run({"backup", file("site.json")}).status, 0);
    const Site before = load("site.json");
    EXPECT_TRUE(differencesOf(before, site()).empty());
    EXPECT_FALSE(before.login);
    EXPECT_TRUE(before.outbox.empty());
#ifdef Q_OS_UNIX
    EXPECT_EQ(std::filesystem::status(folder / "site.json").permissions(),
              std::filesystem::perms(0600));
#endif
    EXPECT_EQ(run({"diff", file("site.json")}).output, "");

    changeEverything();
    ASSERT_EQ(run({"backup", file("changed.json")}).status, 0);
    const Result differs = run({"diff", file("site.json")});
    EXPECT_EQ(differs.status, 1);
    EXPECT_EQ(run({"diff", file("site.json"), file("changed.json")}).output, differs.output);
    const auto json = QJsonDocument::fromJson(
        QByteArray::fromStdString(run({"diff", "--json", file("site.json")}).output));
    EXPECT_EQ(json["differences"].toArray().size(),
              static_cast<qsizetype>(differencesOf(before, site()).size()));
    EXPECT_NE(differs.output.find("uucp_password  differs"), std::string::npos) << differs.output;

    const Result dry = run({"restore", "--dry-run", "--delete", file("site.json")});
    EXPECT_EQ(dry.status, 0);
    EXPECT_TRUE(differencesOf(load("changed.json"), site()).empty());
    const Result restored = run({"restore", "--delete", file("site.json")});
    EXPECT_EQ(restored.status, 0) << restored.errors;
    EXPECT_EQ(restored.output,
              "Script malmo.scp: save\nScript fjall.scp: save\nHost Malmö huvudkontor: add\n"
              "Host Göteborgs lager: change\nHost Stockholm: change\nHost Ny: remove\n"
              "Schedule weekdays 07:30: add\nSchedule everyday 23:15: change\n"
              "Schedule sunday 23:15: remove\nSettings: save\n");
    EXPECT_EQ(dry.output, restored.output);
    EXPECT_EQ(run({"diff", file("site.json")}).status, 0);
    EXPECT_EQ(run({"restore", "--delete", file("site.json")}).output, "");
    ASSERT_EQ(run({"backup", file("after.json")}).status, 0);
    EXPECT_EQ(recordsOf("after.json"), recordsOf("site.json"));
}

TEST_F(SiteCommandTest, WhatTheFileLacksAndOtherPartsAreLeftAlone) {
    ASSERT_EQ(run({"backup", file("site.json")}).status, 0);
    changeEverything();
    ASSERT_EQ(run({"restore", "--only", "hosts", file("site.json")}).status, 0);
    const Site after = site();
    EXPECT_EQ(after.hosts.size(), 6U); // "Ny" is still there
    EXPECT_TRUE(findHost(after.hosts, "Malmö huvudkontor"));
    EXPECT_EQ(after.settings.admin_port, 1);
    EXPECT_EQ(run({"restore", "--only", "hosts,mails", file("site.json")}).status, 2);

    folder.write("part.json", R"({"settings": {"admin_port": 700}})");
    EXPECT_EQ(run({"restore", file("part.json")}).output, "Settings: save\n");
    EXPECT_EQ(site().settings.admin_port, 700);
    EXPECT_EQ(site().settings.doc_viewer.text(), "vi");
    folder.write("part.json", R"({"settings": {"admin_ip": "300.0.0.1"}})");
    EXPECT_EQ(run({"restore", file("part.json")}).status, 2);
}

TEST_F(SiteCommandTest, ARestoreThatIsStoppedGoesOnFromThere) {
    ASSERT_EQ(run({"backup", file("site.json")}).status, 0);
    changeEverything();
    const auto close = [](QTcpSocket& socket, const Comrecord&, const std::string&) {
        socket.abort();
    };
    setFaults(
        {.deliver = close, .only_class = ObjectClass::Host, .only_operation = Operation::Save});
    const Result lost = run({"restore", "--delete", file("site.json")});
    EXPECT_EQ(lost.status, 3) << lost.errors;
    EXPECT_NE(lost.errors.find("Not done: Settings: save"), std::string::npos) << lost.errors;

    setFaults(
        {.result = 2, .only_class = ObjectClass::Settings, .only_operation = Operation::Save});
    EXPECT_EQ(run({"restore", "--delete", file("site.json")}).status, 5);
    setFaults({});
    const Result last = run({"restore", "--delete", file("site.json")});
    EXPECT_EQ(last.status, 0);
    EXPECT_EQ(last.output, "Settings: save\n");
    EXPECT_EQ(run({"diff", file("site.json")}).status, 0);
}

TEST_F(SiteCommandTest, AFileThatIsNoSiteIsRefusedWithItsPlaceAndNothingIsSent) {
    ASSERT_EQ(run({"backup", file("good.json")}).status, 0);
    const std::string good = folder.read("good.json");
    service.run([](simulator::Server& server) { server.forgetRequests(); });
    std::filesystem::create_directory(folder / "folder.json");
    const auto object = [](const char* list, const std::string& fields) {
        return "{\"" + std::string(list) + "\": [{" + fields + "}]}";
    };
    const std::string host = "\"display_name\": \"A\", \"mail_domain\": \"a\"";
    const std::pair<std::string, std::string> cases[] = {
        {"hello", "line 1"},
        {good.substr(0, good.size() / 2), "line "},
        {object("hosts", "\"colour\": 3"), "hosts[0].colour"},
        {"{\"setings\": {}}", "setings"},
        {object("scripts", R"("file_name": "a:b.scp", "text": "")"), "scripts[0]"},
        {object("schedules", "\"day\": \"friday\""), "schedules[0].day"},
        {object("hosts", "\"uucp_timeout\": 70000"), "hosts[0].uucp_timeout"},
        {object("hosts", host + "}, {" + host), "hosts[1]"},
        {object("scripts", R"("file_name": "a.scp", "text": ")" + std::string(5000, 'x') + '"'),
         "scripts[0]"},
    };
    for (const auto& [text, place] : cases) {
        SCOPED_TRACE(text.substr(0, 60));
        folder.write("bad.json", text);
        for (const char* command : {"restore", "diff"}) {
            const Result result = run({command, file("bad.json")});
            EXPECT_EQ(result.status, 2);
            EXPECT_NE(result.errors.find("bad.json: "), std::string::npos) << result.errors;
            EXPECT_NE(result.errors.find(place), std::string::npos) << result.errors;
        }
    }
    // What only the dialogs would refuse can be compared, but not restored.
    for (const std::string& rows :
         {object("schedules", "\"timed\": 1, \"at_time\": \"25:00\""), object("hosts", host)}) {
        folder.write("bad.json", rows);
        EXPECT_EQ(run({"restore", file("bad.json")}).status, 2);
    }
    for (const QStringList& arguments : {QStringList{"restore", file("folder.json")},
                                         {"restore", file("none.json")},
                                         {"diff", file("good.json"), file("none.json")},
                                         {"backup", file("folder.json")}})
        EXPECT_EQ(run(arguments).status, 2) << arguments.join(' ').toStdString();
    EXPECT_TRUE(requests().empty());
}

} // namespace
} // namespace tollwick::ctl
