#include "tests/support/hex.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_log.h"

#include <gtest/gtest.h>

namespace tollwick {
namespace {

TEST(LogWriter, LinesAndRecordsHaveTheirKnownBytes) {
    EXPECT_EQ(logLine({1999, 3, 7, 4, 5, 6, 7}, "Could not find file!", "Look for it", 53, 61, 2),
              "03-07-1999 ; 04:05:06:07 ; A:Could not find file! ; (53/61:2) ; Look for it\r\n");
    EXPECT_EQ(logLine({2026, 12, 31, 23, 59, 59, 99}, "", "", -2147483647 - 1, -32768, -1),
              "12-31-2026 ; 23:59:59:99 ; A: ; (-2147483648/-32768:-1) ; \r\n");
    // Date, seconds since midnight, error number, kind 9, routine, step.
    EXPECT_EQ(toHex(logRecord({2000, 1, 1, 0, 0, 0, 0}, 326, 61, 4)),
              "a5420f00000000004601000009003d000400");
    EXPECT_EQ(toHex(logRecord({1999, 3, 7, 12, 30, 15, 50}, -2, -32768, -1)),
              "631c0f0080d72f47feffffff09000080ffff");
}

TEST(LogWriter, AppendsToAllThreeLogs) {
    const TemporaryFolder folder;
    folder.write("Tollwick.log", "no line end");
    TestLog log;
    log.writer.setFolder(folder.text());
    log.writer.LogWrite("Overflow", "Wait", 6, 66, 1);
    log.clock.time = {2000, 1, 1, 0, 0, 0, 1};
    log.writer.LogWrite("Unknown error!", "", 5, 65, 0);
    EXPECT_EQ(log.system.entries,
              (std::vector<std::string>{"M: Overflow, Wait(See corvale.log for details)",
                                        "M: Unknown error!, (See corvale.log for details)"}));
    EXPECT_EQ(folder.read("Tollwick.log"),
              "no line end03-07-1999 ; 04:05:06:07 ; A:Overflow ; (6/66:1) ; Wait\r\n"
              "01-01-2000 ; 00:00:00:01 ; A:Unknown error! ; (5/65:0) ; \r\n");
    EXPECT_EQ(folder.read("error.log"), logRecord({1999, 3, 7, 4, 5, 6, 7}, 6, 66, 1) +
                                            logRecord({2000, 1, 1, 0, 0, 0, 1}, 5, 65, 0));
    EXPECT_EQ(folder.names(), (std::vector<std::string>{"Tollwick.log", "error.log"}));
}

TEST(LogWriter, MarksEveryRepetitionOfTheNumberBefore) {
    const TemporaryFolder folder;
    TestLog log;
    log.writer.setFolder(folder.text());
    std::string expected;
    for (const auto& [number, marked] : std::initializer_list<std::pair<Long, bool>>{{0, false},
                                                                                     {0, true},
                                                                                     {53, false},
                                                                                     {53, true},
                                                                                     {53, true},
                                                                                     {6, false},
                                                                                     {53, false},
                                                                                     {53, true},
                                                                                     {0, false}}) {
        log.writer.LogWrite("text", "", number, 1, 1);
        expected += logLine(log.clock.time, marked ? "Loop->text" : "text", "", number, 1, 1);
        EXPECT_EQ(log.system.entries.back(), "M: text, (See corvale.log for details)");
    }
    EXPECT_EQ(folder.read("Tollwick.log"), expected);
}

TEST(LogWriter, LosesSilentlyWhatItCannotWrite) {
    const TemporaryFolder folder;
    TestLog log;
    log.writer.LogWrite("before the folder is known", "", 1, 1, 1);
    log.writer.setFolder(folder.text("missing"));
    log.writer.LogWrite("into a missing folder", "", 2, 1, 1);
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
    EXPECT_FALSE(std::filesystem::exists("Tollwick.log"));
    // One log that cannot be written does not keep the other from being written.
    std::filesystem::create_directory(folder / "error.log");
    log.writer.setFolder(folder.text());
    log.writer.LogWrite("beside a folder", "", 3, 1, 1);
    EXPECT_NE(folder.read("Tollwick.log").find("A:beside a folder"), std::string::npos);
    EXPECT_EQ(log.system.entries.size(), 3U);
}

} // namespace
} // namespace tollwick
