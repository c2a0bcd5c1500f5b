#include "app/files.h"
#include "simulator/sample_site.h"
#include "simulator/site_file.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>

namespace tollwick::simulator {
namespace {

class SiteFileTest : public testing::Test {
protected:
    void write(std::string_view text) { ASSERT_TRUE(replaceFile(path, text)); }
    std::string content() { return readWholeFile(path, 1 << 24).value_or("unreadable"); }
    // The value at a place of the file, such as "hosts.0.day".
    QJsonValue at(const char* place) {
        QJsonValue value = QJsonDocument::fromJson(QByteArray::fromStdString(content())).object();
        for (const QString& step : QString::fromLatin1(place).split('.'))
            value =
                value.isArray() ? value.toArray().at(step.toInt()) : value.toObject().value(step);
        return value;
    }
    Site load() { return SiteFile(path).load(); }
    std::string errorOf(std::string_view text) {
        write(text);
        try {
            load();
        } catch (const SiteFileError& error) {
            EXPECT_EQ(content(), text) << "is left untouched";
            return error.what();
        }
        return "no error";
    }
    Site afterRoundTrip(const Site& site) {
        SiteFile(path).save(site);
        return load();
    }

    QTemporaryDir folder;
    std::filesystem::path path = toPath(folder.filePath("site.json").toStdString());
};

TEST_F(SiteFileTest, GivesTheSampleBackReadably) {
    const Site sample = sampleSite();
    const Site site = afterRoundTrip(sample);
    EXPECT_EQ(site.settings, sample.settings);
    EXPECT_EQ(site.schedules, sample.schedules);
    EXPECT_EQ(site.hosts, sample.hosts);
    EXPECT_EQ(site.spool_directories, sample.spool_directories);
    EXPECT_EQ(site.outbox, sample.outbox);
    EXPECT_EQ(site.scripts, sample.scripts);
    EXPECT_EQ(site.tapi_locations, sample.tapi_locations);
    EXPECT_EQ(site.tapi_devices, sample.tapi_devices);
    EXPECT_EQ(site.ras_entries, sample.ras_entries);
    EXPECT_TRUE(site.login.accepts("admin", "tollwick"));
    EXPECT_EQ(at("hosts.0.display_name").toString(), "Malmö huvudkontor");
    EXPECT_EQ(at("schedules.0.at_time").toString(), "07:30");
}

TEST_F(SiteFileTest, GivesOddBytesBack) {
    Site site;
    site.login = sampleLogin();
    HostRecord& host = site.hosts.emplace_back();
    host.record_number = 1;
    host.mail_domain = "";                                       // all blanks
    host.display_name.setBytes(std::string("a\0b \x81\xFF", 6)); // blanks, and all codes
    std::string("ends in NULs").copy(host.tapi_device.data(), 100);
    host.modem_init.setBytes(" leading");
    std::string all;
    for (int code = 0; code < 256; ++code)
        all.push_back(static_cast<char>(code));
    site.scripts.push_back({VarText("x"), VarText()});
    site.scripts[0].text.setBytes(all + "  ");
    site.settings.unnamed_34 = {'\0', ' ', '\xFF', '"', '\\', '\n', ' ', '\0'};
    for (const Single version : {-0.0F, 0.1F, std::numeric_limits<Single>::infinity(),
                                 std::numeric_limits<Single>::denorm_min(), 4.1F}) {
        site.settings.service_version = version;
        const Site read = afterRoundTrip(site);
        EXPECT_EQ(read.hosts, site.hosts);
        EXPECT_EQ(read.scripts, site.scripts);
        EXPECT_EQ(read.settings, site.settings) << version;
    }
    EXPECT_NE(content().find("4.1,"), std::string::npos) << "no digits without a meaning";
}

TEST_F(SiteFileTest, KeepsUnknownKeysWithTheirRecord) {
    write(R"({"comment": "mine", "login": {"user_id": "x", "password": "y", "note": 1},
              "settings": {"admin_port": 542, "why": [1, null]},
              "hosts": [{"record_number": 1, "of": "one"}, {"record_number": 2, "of": "two"}],
              "scripts": [{"file_name": "a.scp", "of": "a"}]})");
    SiteFile file(path);
    Site site = file.load();
    site.hosts.erase(site.hosts.begin());
    file.save(site);
    EXPECT_EQ(at("comment").toString(), "mine");
    EXPECT_EQ(at("login.note").toInt(), 1);
    EXPECT_EQ(at("settings.why").toArray().size(), 2);
    EXPECT_EQ(at("settings.admin_port").toInt(), 542);
    EXPECT_EQ(at("hosts.0.of").toString(), "two");
    EXPECT_EQ(at("scripts.0.of").toString(), "a");

    site.hosts.emplace_back().record_number = 1; // another one under the number of a removed one
    file.save(site);
    EXPECT_FALSE(at("hosts")[1].toObject().contains("of"));
}

TEST_F(SiteFileTest, TakesAPlainPasswordOnceAndWritesOnlyItsHash) {
    write(R"({"login": {"user_id": "åsa", "password": "hemlig", "password_hash": "old"}})");
    SiteFile file(path);
    const Site site = file.load();
    EXPECT_TRUE(site.login.accepts("åsa", "hemlig"));
    EXPECT_FALSE(site.login.accepts("åsa", "Hemlig") || site.login.accepts("admin", "hemlig"));
    file.save(site);
    EXPECT_EQ(content().find("hemlig"), std::string::npos);
    EXPECT_TRUE(load().login.accepts("åsa", "hemlig"));
    EXPECT_NE(Credentials("åsa", "hemlig").passwordHash(), site.login.passwordHash()) << "salted";
}

TEST_F(SiteFileTest, FillsInWhatAHandWrittenFileLacks) {
    write(R"({"hosts": [{"display_name": "A"}, {"record_number": 5}, {"record_number": 5}],
              "settings_save_answer": 8})");
    const Site site = load();
    EXPECT_TRUE(site.login.accepts("admin", "tollwick"));
    EXPECT_EQ(site.settings_save_answer, 8);
    std::set<Long> numbers;
    for (const HostRecord& host : site.hosts)
        numbers.insert(host.record_number);
    EXPECT_EQ(numbers.size(), 3U);
    EXPECT_GE(*numbers.begin(), 1);
}

TEST_F(SiteFileTest, TellsWhatIsWrongWhere) {
    const std::string name = folder.filePath("site.json").toStdString();
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
        {"", "line 1"}, {"{\n  \"hosts\": [\n  }\n", "line 3"}, {"[]", "an object"},
        {R"({"hosts": {}})", "hosts: a list"}, {R"({"hosts": [{}, 3]})", "hosts[1]: an object"},
        {R"({"hosts": [{"active": "yes"}]})", "hosts[0].active: a whole number"},
        {R"({"hosts": [{"active": 1.5}]})", "hosts[0].active: a whole number"},
        {R"({"hosts": [{"active": 32768}]})", "hosts[0].active: a whole number from -32768"},
        {R"({"schedules": [{"at_time": "7:30 sharp"}]})", "schedules[0].at_time: at most 5"},
        {R"({"schedules": [{"at_time": {"hex": "1G"}}]})", "schedules[0].at_time: {\"hex\""},
        {R"({"schedules": [{"at_time": {"hex": "112233445566"}}]})", "at_time: at most 5"},
        {R"({"outbox": [{"recipient": "日本"}]})", "outbox[0].recipient: holds a character"},
        {R"({"settings": {"service_version": null}})", "settings.service_version: a number"},
        {R"({"settings": {"unnamed_34": "x"}})", "settings.unnamed_34: {\"hex\""},
        {R"({"settings_save_answer": 3})", "settings_save_answer: 1, 2, 8 or 9"},
        {R"({"ras_entries": ["a", 1]})", "ras_entries[1]: a text"},
        {R"({"login": {"user_id": "a"}})", "login.password: is missing"},
        {R"({"login": {"user_id": "a", "password_hash": "pbkdf2-sha256$0$$"}})", "is damaged"}};
    // clang-format on
    for (const auto& [text, told] : cases) {
        const std::string error = errorOf(text);
        EXPECT_EQ(error.find(name), 0U) << error;
        EXPECT_NE(error.find(told), std::string::npos) << text << "\n" << error;
    }
}

} // namespace
} // namespace tollwick::simulator
