#include "base/modem_catalogue.h"
#include "tests/support/modem_file.h"
#include "tests/support/temporary_folder.h"

#include <gtest/gtest.h>

#include <set>

namespace tollwick {
namespace {

using Strings = std::vector<std::string>;

ModemCatalogue catalogueOf(const std::vector<Modem>& modems) {
    return ModemCatalogue::parse(modemFile(modems));
}

Strings textsOf(const ModemRecord& modem) {
    return {modem.make,  modem.model,  modem.init, modem.attention, modem.hang_up,
            modem.reset, modem.answer, modem.dial, modem.busy,      modem.connect};
}

TEST(ModemCatalogue, ReadsEveryFieldFromItsPlace) {
    const ModemCatalogue catalogue = catalogueOf({{.make = "  Tr\xF6sta", // in the code page
                                                   .model = std::string("V.32\0left over", 14),
                                                   .number = 77,
                                                   .max_speed = 115200}});
    const ModemRecord& modem = catalogue.records().at(0);
    EXPECT_EQ(modem.record_number, 77);
    EXPECT_EQ(modem.max_speed, 115200);
    EXPECT_EQ(textsOf(modem), (Strings{"Trösta", "V.32", "ATI^M", "ATT", "HANG", "RESET", "ANSWER",
                                       "DIAL", "BUSY!", "CONN"}));
}

TEST(ModemCatalogue, ListsLiveMakesOnceAndTheirModelsInTheOrderOfTheFile) {
    const std::string deleted = "\xFF\xFF";
    const std::string odd("\x01\x80", 2); // no state that is known, and so not deleted
    const ModemCatalogue catalogue =
        catalogueOf({{.make = "Zorn", .model = "Two", .number = 5},
                     {.make = "acme", .state = odd},
                     {.make = "Gone", .state = deleted, .number = 900},
                     {.make = " Zorn", .model = "One", .max_speed = 1},
                     {.make = "Zorn", .model = "Dead", .state = deleted},
                     {.make = "Zorn", .model = "One", .max_speed = 2},
                     {.make = "Bell"}});
    EXPECT_EQ(catalogue.makes(), (Strings{"Bell", "Zorn", "acme"}));
    EXPECT_EQ(catalogue.modelsOf("Zorn"), (Strings{"Two", "One", "One"}));
    EXPECT_EQ(catalogue.modelsOf("Gone"), Strings{});
    EXPECT_EQ(catalogue.largestRecordNumber(), 900);
    EXPECT_EQ(catalogue.find("Zorn", "One"), &catalogue.records()[3]);
    for (const auto& [make, model] :
         {std::pair{"Gone", "Model"}, {"Zorn", "Dead"}, {"zorn", "One"}, {"Zorn", "one"}})
        EXPECT_EQ(catalogue.find(make, model), nullptr) << make << ' ' << model;
    for (const std::string& make : catalogue.makes())
        EXPECT_TRUE(catalogue.SearchModemList(make)) << make;
    for (const char* make : {"", "Bel", "bell", "Gone", "Zorn ", "z"})
        EXPECT_FALSE(catalogue.SearchModemList(make)) << make;
}

TEST(ModemCatalogue, TakesWhatADamagedFileReallyHolds) {
    const std::string two = modemFile({{.make = "A"}, {.make = "B"}}).substr(4);
    const std::pair<std::string, Strings> cases[] = {
        {bytesOf(1) + two, {"A"}},
        {bytesOf(2147483647) + two, {"A", "B"}},
        {bytesOf(2) + two.substr(0, two.size() - 1), {"A"}},
        {bytesOf(-1) + two, {}},
        {std::string(1, '\1'), {}},
        // Records of nothing but NULs are live ones without a make.
        {bytesOf(3) + std::string(2 * ModemCatalogue::kRecordSize, '\0'), {""}}};
    const TemporaryFolder folder;
    const std::string file = folder.text("MODEMS.DAT");
    for (const auto& [bytes, makes] : cases) {
        folder.write("MODEMS.DAT", bytes);
        EXPECT_EQ(ModemCatalogue::load(file).makes(), makes) << bytes.size();
    }
    EXPECT_EQ(folder.names(), Strings{"MODEMS.DAT"});
    // Only a file without contents is deleted.
    folder.write("MODEMS.DAT", "");
    EXPECT_TRUE(ModemCatalogue::load(file).records().empty());
    EXPECT_EQ(folder.names(), Strings{});
    EXPECT_TRUE(ModemCatalogue::load(folder.text()).records().empty());
}

TEST(ModemDefaults, FillOnlyWhatIsBlank) {
    ModemRecord modem = withUsualValues({});
    EXPECT_EQ(textsOf(modem), (Strings{"Generic 2400 Baud Modem", "", "AT^M", "AT", "ATH^M",
                                       "ATZ^M", "ATA^M", "ATDT", "BUSY", "CONNECT"}));
    EXPECT_EQ(modem.max_speed, 2400);
    modem.init = "AT&F^M";
    modem.max_speed = 300;
    EXPECT_EQ(textsOf(withUsualValues(modem)), textsOf(modem));
    EXPECT_EQ(withUsualValues(modem).max_speed, 300);
}

#ifdef TOLLWICK_MODEMS_DAT
TEST(ShippedModems, CanBeChosenAndFitTheirHostWhole) {
    const ModemCatalogue catalogue = ModemCatalogue::load(TOLLWICK_MODEMS_DAT);
    EXPECT_GE(catalogue.records().size(), 150U);
    for (const ModemRecord& record : catalogue.records()) {
        SCOPED_TRACE(record.make + ' ' + record.model);
        EXPECT_EQ(catalogue.find(record.make, record.model), &record);
        const ModemRecord modem = withUsualValues(record);
        // A speed that the connection page offers.
        EXPECT_TRUE((std::set{1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200})
                        .contains(modem.max_speed));
        // A host keeps less of some texts than the catalogue does.
        EXPECT_TRUE(modem.init.size() <= 60U && modem.model.size() <= 30U &&
                    modem.hang_up.size() <= 30U && modem.connect.size() <= 30U);
        for (const std::string& command : {modem.init, modem.hang_up, modem.reset, modem.answer})
            EXPECT_TRUE(command.starts_with("AT") && command.ends_with("^M")) << command;
    }
}
#endif

} // namespace
} // namespace tollwick
