// The site survives a kill at any moment of a write, and its file gives no password away.
#include "simulator/sample_site.h"
#include "simulator/site_file.h"
#include "tests/support/kill_while_writing.h"
#include "tests/support/temporary_folder.h"

namespace tollwick::simulator {
namespace {

TEST(Crash, ASiteIsOldOrNewNeverBroken) {
    TemporaryFolder folder;
    const auto path = toPath(folder.text("site.json"));
    const Site sample = sampleSite();
    killWhileWriting(
        [&](int round) {
            Site site = sample;
            site.settings.admin_port = 1000 + round;
            site.settings.smtp_forward_port = 1000 + round;
            SiteFile(path).save(site);
        },
        [&] {
            const Site site = SiteFile(path).load();
            ASSERT_EQ(site.hosts, sample.hosts);
            ASSERT_EQ(site.settings.admin_port, site.settings.smtp_forward_port);
        });
}

TEST(Secrets, ASitesFileHoldsNoPasswordInPlain) {
    TemporaryFolder folder;
    SiteFile(toPath(folder.text("site.json"))).save(sampleSite());
    const std::string json = folder.read("site.json");
    ASSERT_NE(json.find("corvale"), std::string::npos);
    for (const char* password : {kSamplePassword, "smörgås", "fiskmås", "nattpost"})
        EXPECT_EQ(json.find('"' + std::string(password) + '"'), std::string::npos) << password;
}

} // namespace
} // namespace tollwick::simulator
