#include "app/modem_catalogue.h"
#include "link/little_endian.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace tollwick {
namespace {

using Strings = std::vector<std::string>;

std::string bytesOf(Long number) {
    char bytes[sizeof number];
    storeLittleEndian(number, bytes);
    return {bytes, sizeof bytes};
}

std::string field(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

struct Modem {
    std::string make;
    std::string model = "Model";
    std::string state = std::string(2, '\0');
    Long number = 1;
    std::string init = "ATI^M";
    Long max_speed = 9600;
};

std::string record(const Modem& modem) {
    return modem.state + bytesOf(modem.number) + field(modem.make, 25) + field(modem.model, 40) +
           field(modem.init, 128) + field("ATT", 30) + field("HANG", 50) + field("RESET", 30) +
           field("ANSWER", 30) + field("DIAL", 30) + field("BUSY!", 30) + bytesOf(modem.max_speed) +
           field("CONN", 40);
}

class ModemCatalogueTest : public testing::Test {
protected:
    ModemCatalogue load(std::string_view bytes) {
        folder.write("MODEMS.DAT", bytes);
        return ModemCatalogue::load(folder.text("MODEMS.DAT"));
    }
    ModemCatalogue loadModems(const std::vector<Modem>& modems) {
        std::string bytes = bytesOf(static_cast<Long>(modems.size()));
        for (const Modem& modem : modems)
            bytes += record(modem);
        return load(bytes);
    }

    TemporaryFolder folder;
};

TEST_F(ModemCatalogueTest, ReadsEveryFieldFromItsPlace) {
    const ModemCatalogue catalogue =
        loadModems({{.make = "  Tr\xF6sta", // "Trösta" in the code page
                     .model = std::string("V.32\0left over", 14),
                     .number = 77,
                     .init = std::string("AT&F S0=0^M  \0\0", 15),
                     .max_speed = 115200}});
    ASSERT_EQ(catalogue.records().size(), 1U);
    const ModemRecord& modem = catalogue.records()[0];
    EXPECT_FALSE(modem.deleted);
    EXPECT_EQ(modem.record_number, 77);
    EXPECT_EQ(modem.max_speed, 115200);
    EXPECT_EQ((Strings{modem.make, modem.model, modem.init, modem.attention, modem.hang_up,
                       modem.reset, modem.answer, modem.dial, modem.busy, modem.connect}),
              (Strings{"Trösta", "V.32", "AT&F S0=0^M", "ATT", "HANG", "RESET", "ANSWER", "DIAL",
                       "BUSY!", "CONN"}));
}

TEST_F(ModemCatalogueTest, ListsLiveMakesOnceAndTheirModelsInTheOrderOfTheFile) {
    const std::string deleted = "\xFF\xFF";
    const std::string odd("\x01\x80", 2); // no state that is known, and so not deleted
    const ModemCatalogue catalogue =
        loadModems({{.make = "Zorn", .model = "Two", .number = 5},
                    {.make = "acme", .model = "Small", .state = odd},
                    {.make = "Gone", .state = deleted, .number = 900},
                    {.make = " Zorn", .model = "One", .max_speed = 1},
                    {.make = "Zorn", .model = "Dead", .state = deleted},
                    {.make = "Zorn", .model = "One", .max_speed = 2}});
    EXPECT_EQ(catalogue.makes(), (Strings{"Zorn", "acme"}));
    EXPECT_EQ(catalogue.modelsOf("Zorn"), (Strings{"Two", "One", "One"}));
    EXPECT_EQ(catalogue.modelsOf("Gone"), Strings{});
    EXPECT_EQ(catalogue.largestRecordNumber(), 900);

    ASSERT_NE(catalogue.find("Zorn", "One"), nullptr);
    EXPECT_EQ(catalogue.find("Zorn", "One")->max_speed, 1);
    for (const auto& [make, model] : std::vector<std::pair<std::string, std::string>>{
             {"Gone", "Model"}, {"Zorn", "Dead"}, {"zorn", "One"}, {"Zorn", "one"}})
        EXPECT_EQ(catalogue.find(make, model), nullptr) << make << ' ' << model;
}

TEST_F(ModemCatalogueTest, FindsEveryMakeAndNothingBesideThem) {
    for (int size = 0; size <= 9; ++size) {
        std::vector<Modem> modems;
        for (int i = size; i > 0; --i)
            modems.push_back({.make = "M" + std::to_string(2 * i)});
        const ModemCatalogue catalogue = loadModems(modems);
        for (const std::string& make : catalogue.makes()) {
            EXPECT_TRUE(catalogue.SearchModemList(make)) << make << " of " << size;
            for (const std::string& other : {"m" + make.substr(1), make + " ", make + "!"})
                EXPECT_FALSE(catalogue.SearchModemList(other)) << other << " of " << size;
        }
        for (const char* other : {"", "L", "M3", "M9", "N"})
            EXPECT_FALSE(catalogue.SearchModemList(other)) << other << " of " << size;
    }
}

TEST_F(ModemCatalogueTest, TakesWhatADamagedFileReallyHolds) {
    const std::string two = record({.make = "A"}) + record({.make = "B"});
    const Long huge = std::numeric_limits<Long>::max();
    const auto makes = [&](const std::string& bytes) { return load(bytes).makes(); };
    EXPECT_EQ(makes(bytesOf(1) + two), Strings{"A"});
    EXPECT_EQ(makes(bytesOf(2'000'000'000) + two), (Strings{"A", "B"}));
    EXPECT_EQ(makes(bytesOf(huge) + two.substr(0, two.size() - 1)), Strings{"A"});
    EXPECT_EQ(makes(bytesOf(2) + two.substr(0, 10)), Strings{});
    EXPECT_EQ(makes(bytesOf(-1) + two), Strings{});
    EXPECT_EQ(makes(bytesOf(huge)), Strings{});
    EXPECT_EQ(makes("\1\0"), Strings{});
    // Records of nothing but NULs are live ones without a make.
    EXPECT_EQ(makes(bytesOf(3) + std::string(2 * ModemCatalogue::kRecordSize, '\0')), Strings{""});
}

TEST_F(ModemCatalogueTest, IsEmptyWithoutAFileAndDeletesOneWithoutContents) {
    EXPECT_TRUE(ModemCatalogue::load(folder.text("MODEMS.DAT")).records().empty());
    EXPECT_TRUE(ModemCatalogue::load(folder.text()).records().empty());
    EXPECT_TRUE(load("").records().empty());
    EXPECT_EQ(folder.names(), Strings{});
    load(std::string(1, '\0'));
    EXPECT_EQ(folder.names(), Strings{"MODEMS.DAT"});
}

TEST(ModemDefaults, FillOnlyWhatIsBlank) {
    const ModemRecord blank = withDefaults({});
    EXPECT_EQ((Strings{blank.make, blank.model, blank.init, blank.attention, blank.hang_up,
                       blank.reset, blank.answer, blank.dial, blank.busy, blank.connect}),
              (Strings{"Generic 2400 Baud Modem", "", "AT^M", "AT", "ATH^M", "ATZ^M", "ATA^M",
                       "ATDT", "BUSY", "CONNECT"}));
    EXPECT_EQ(blank.max_speed, 2400);

    ModemRecord own;
    own.make = "Acme";
    own.init = "AT&F^M";
    own.dial = "ATDP";
    own.max_speed = 300;
    own = withDefaults(own);
    EXPECT_EQ((Strings{own.make, own.init, own.dial, own.busy}),
              (Strings{"Acme", "AT&F^M", "ATDP", "BUSY"}));
    EXPECT_EQ(own.max_speed, 300);
}

#ifdef TOLLWICK_MODEMS_DAT
TEST(ShippedModems, CanBeChosenAndFitTheirHostWhole) {
    const ModemCatalogue catalogue = ModemCatalogue::load(TOLLWICK_MODEMS_DAT);
    EXPECT_GE(catalogue.records().size(), 150U);
    EXPECT_GE(catalogue.makes().size(), 40U);
    EXPECT_EQ(catalogue.largestRecordNumber(), static_cast<Long>(catalogue.records().size()));

    // The speeds that the connection page offers; a slower modem would leave it none.
    const std::vector<Long> speeds = {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};
    for (const ModemRecord& record : catalogue.records()) {
        SCOPED_TRACE(record.make + ' ' + record.model);
        EXPECT_EQ(catalogue.find(record.make, record.model), &record);
        const ModemRecord modem = withDefaults(record);
        EXPECT_TRUE(modem.init.starts_with("AT") && modem.init.ends_with("^M")) << modem.init;
        EXPECT_NE(std::find(speeds.begin(), speeds.end(), modem.max_speed), speeds.end());
        // A host keeps less of some texts than the catalogue does.
        EXPECT_LE(modem.init.size(), 60U);
        for (const std::string& text : {modem.model, modem.hang_up, modem.connect})
            EXPECT_LE(text.size(), 30U) << text;
        for (const std::string& command : {modem.hang_up, modem.reset, modem.answer})
            EXPECT_TRUE(command.ends_with("^M")) << command;
    }
}
#endif

} // namespace
} // namespace tollwick
