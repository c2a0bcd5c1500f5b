#include "base/files.h"
#include "simulator/sample_site.h"
#include "site/site_file.h"
#include "tests/support/temporary_folder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <gtest/gtest.h>

#include <limits>
#include <set>

namespace tollwick::simulator {
namespace {

class SiteFileTest : public testing::Test {
protected:
    // The value at a place of the file, such as "hosts.0.day".
    QJsonValue at(const char* place) {
        const std::string json = folder.read("site.json");
        QJsonValue value = QJsonDocument::fromJson(QByteArray::fromStdString(json)).object();
        for (const QString& step : QString::fromLatin1(place).split('.'))
            value =
                value.isArray() ? value.toArray().at(step.toInt()) : value.toObject().value(step);
        return value;
    }
    Site load(std::string_view text) {
        folder.write("site.json", text);
        return file.load();
    }
    Site afterRoundTrip(const Site& site) {
        file.save(site);
        return SiteFile(folder / "site.json").load();
    }

    TemporaryFolder folder;
    SiteFile file{folder / "site.json"};
};

TEST_F(SiteFileTest, GivesTheSampleBackReadablyAndWithoutPasswordsInPlain) {
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
    EXPECT_TRUE(site.login->accepts("admin", "tollwick"));
    EXPECT_EQ(at("hosts.0.display_name").toString(), "Malmö huvudkontor");
    for (const char* password : {kSamplePassword, "smörgås", "fiskmås", "nattpost"})
        EXPECT_EQ(folder.read("site.json").find('"' + std::string(password) + '"'),
                  std::string::npos)
            << password;
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
    for (const Single version : {-0.0F, std::numeric_limits<Single>::infinity(), 4.1F}) {
        site.settings.service_version = version;
        const Site read = afterRoundTrip(site);
        EXPECT_EQ(read.hosts, site.hosts);
        EXPECT_EQ(read.scripts, site.scripts);
        EXPECT_EQ(read.settings, site.settings) << version;
    }
    EXPECT_NE(folder.read("site.json").find("4.1,"), std::string::npos) << "no idle digits";
}

TEST_F(SiteFileTest, KeepsUnknownKeysWithTheirRecord) {
    Site site = load(R"({"comment": "mine", "login": {"user_id": "x", "password": "y", "note": 1},
              "settings": {"admin_port": 542, "why": [1, null]}, "hosts": [
              {"record_number": 1, "of": "one"}, {"record_number": 2, "of": "two"}]})");
    site.hosts.erase(site.hosts.begin());
    file.save(site);
    EXPECT_EQ(at("comment").toString(), "mine");
    EXPECT_EQ(at("login.note").toInt(), 1);
    EXPECT_EQ(at("settings.why").toArray().size(), 2);
    EXPECT_EQ(at("settings.admin_port").toInt(), 542);
    EXPECT_EQ(at("hosts.0.of").toString(), "two");
    site.hosts.emplace_back().record_number = 1; // another one under the number of a removed one
    file.save(site);
    EXPECT_FALSE(at("hosts")[1].toObject().contains("of"));
}

TEST_F(SiteFileTest, TakesAPlainPasswordOnceAndWritesOnlyItsHash) {
    const Site site =
        load(R"({"login": {"user_id": "åsa", "password": "hemlig", "password_hash": "old"}})");
    EXPECT_TRUE(site.login->accepts("åsa", "hemlig"));
    EXPECT_FALSE(site.login->accepts("åsa", "Hemlig") || site.login->accepts("admin", "hemlig"));
    EXPECT_TRUE(afterRoundTrip(site).login->accepts("åsa", "hemlig"));
    EXPECT_EQ(folder.read("site.json").find("hemlig"), std::string::npos);
    EXPECT_NE(Credentials("åsa", "hemlig").passwordHash(), site.login->passwordHash()) << "salted";
}

TEST_F(SiteFileTest, FillsInWhatAHandWrittenFileLacks) {
    const Site site =
        load(R"({"hosts": [{"display_name": "A"}, {"record_number": 5}, {"record_number": 5}]})");
    EXPECT_FALSE(site.login) << "which is for who serves it";
    std::set<Long> numbers;
    for (const HostRecord& host : site.hosts)
        numbers.insert(host.record_number);
    EXPECT_EQ(numbers.size(), 3U);
    EXPECT_GE(*numbers.begin(), 1);
}

TEST_F(SiteFileTest, TellsWhatIsWrongWhere) {
    // clang-format off
    const std::pair<const char*, const char*> cases[] = {
        {"{\n  \"hosts\": [\n  }\n", "line 3"}, {"[]", "an object"},
        {R"({"hosts": [{"active": 32768}]})", "hosts[0].active: a whole number from -32768"},
        {R"({"schedules": [{"at_time": "7:30 sharp"}]})", "schedules[0].at_time: at most 5"},
        {R"({"schedules": [{"at_time": {"hex": "1G"}}]})", "schedules[0].at_time: {\"hex\""},
        {R"({"outbox": [{"recipient": "日"}]})", "outbox[0].recipient: holds a character"},
        {R"({"settings_save_answer": 3})", "settings_save_answer: 1, 2, 8 or 9"},
        {R"({"ras_entries": ["a", 1]})", "ras_entries[1]: a text"},
        {R"({"login": {"user_id": "a", "password_hash": "pbkdf2-sha256$0$$"}})", "is damaged"}};
    // clang-format on
    for (const auto& [text, told] : cases) {
        std::string error;
        try {
            load(text);
        } catch (const SiteFileError& thrown) {
            error = thrown.what();
        }
        EXPECT_TRUE(error.starts_with(folder.text("site.json"))) << error;
        EXPECT_NE(error.find(told), std::string::npos) << text << "\n" << error;
        EXPECT_EQ(folder.read("site.json"), text) << "is left untouched";
    }
}

} // namespace
} // namespace tollwick::simulator
