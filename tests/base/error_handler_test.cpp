// What goes wrong: its number, its words, and its entries in the three logs.
#include "base/error_handler.h"
#include "tests/support/hex.h"
#include "tests/support/recording_prompter.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_log.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <system_error>
#include <utility>

namespace tollwick {
namespace {

#ifdef _WIN32
const std::string kDrive = "C:";
#else
const std::string kDrive = "/";
#endif

class ErrorHandlerTest : public testing::Test, protected TestLog {
protected:
    TemporaryFolder folder;
    RecordingPrompter prompter;
    ErrorHandler handler{prompter, writer};
};

TEST_F(ErrorHandlerTest, EachNumberHasItsBoxAndItsEntryInTheLog) {
    const std::string fatal = "Fatal error: ";
    const struct {
        std::vector<Long> numbers;
        std::string entry;
        std::string box = {}; // empty: none is shown
    } rows[] = {
        {{280, 295}, "DDE session failed!, "},
        {{61}, // the exclamation marks differ
         fatal + "Disk " + kDrive + " is full, Make some room on this disk and restart Corvale!",
         fatal + "Disk " + kDrive + " is full!Make some room on this disk and restart Corvale!"},
        {{336, 338},
         fatal + "Corrupt or missing system file!, Try replacing Corvale OCX files",
         fatal + "Corrupt or missing system file!Try replacing Corvale OCX files!"},
        {{0, 8, 60, 77, 279, 296, 322, 339, -6, 2147483647}, "Unknown error!, "}};
    writer.setFolder(joinPath(kDrive, "no such folder"));
    for (const auto& row : rows)
        for (const Long number : row.numbers) {
            if (!row.box.empty())
                prompter.expectBox(BoxIcon::Critical, row.box);
            handler(number, Routine::Main, 1);
            EXPECT_EQ(system.entries.back(), "M: " + row.entry + "(See corvale.log for details)")
                << number;
            EXPECT_TRUE(prompter.done()) << number;
        }
}

TEST_F(ErrorHandlerTest, GuardReportsWhatEscapes) {
    writer.setFolder(folder.text());
    EXPECT_TRUE(handler.guard(Routine::Exit, [](Integer& step) { EXPECT_EQ(step, 0); }));
    EXPECT_EQ(folder.names(), std::vector<std::string>());
    EXPECT_FALSE(handler.guard(Routine::AddSchedule, [](Integer& step) {
        step = 3;
        throw RunTimeError(6);
    }));
    EXPECT_EQ(folder.read("Tollwick.log"),
              "03-07-1999 ; 04:05:06:07 ; A:Overflow ; (6/102:3) ; \r\n");
}

template <class Exception>
Long numberOf(const Exception& thrown) {
    try {
        throw Exception(thrown);
    } catch (...) {
        return currentErrorNumber();
    }
}

TEST(RunTimeErrors, EveryExceptionHasItsNumber) {
    EXPECT_EQ(numberOf(RunTimeError(6)), 6);
    EXPECT_EQ(numberOf(std::out_of_range("at")), 9);
    EXPECT_EQ(numberOf(std::system_error(make_error_code(std::errc::no_space_on_device))), 61);
    EXPECT_EQ(numberOf(1), 5);
}

TEST(LogWriter, LinesAndRecordsHaveTheirKnownBytes) {
    EXPECT_EQ(logLine({1999, 3, 7, 4, 5, 6, 7}, "Could not find file!", "Look for it", 53, 61, 2),
              "03-07-1999 ; 04:05:06:07 ; A:Could not find file! ; (53/61:2) ; Look for it\r\n");
    // Date, seconds since midnight, error number, kind 9, routine, step.
    EXPECT_EQ(toHex(logRecord({2000, 1, 1, 0, 0, 0, 0}, 326, 61, 4)),
              "a5420f00000000004601000009003d000400");
    EXPECT_EQ(toHex(logRecord({1999, 3, 7, 12, 30, 15, 50}, -2, -32768, -1)),
              "631c0f0080d72f47feffffff09000080ffff");
}

TEST_F(ErrorHandlerTest, TheLogsGrowAndMarkEveryRepetitionOfANumber) {
    folder.write("Tollwick.log", "no line end");
    writer.setFolder(folder.text());
    std::string lines = "no line end";
    std::string records;
    int last = -1;
    for (const int number : {0, 0, 53, 53, 53, 6, 53}) {
        const bool marked = number == std::exchange(last, number);
        ++clock.time.minute;
        writer.LogWrite("text", "Wait", number, 66, 1);
        lines += logLine(clock.time, marked ? "Loop->text" : "text", "Wait", number, 66, 1);
        records += logRecord(clock.time, number, 66, 1);
        EXPECT_EQ(system.entries.back(), "M: text, Wait(See corvale.log for details)");
    }
    EXPECT_EQ(folder.read("Tollwick.log"), lines);
    EXPECT_EQ(folder.read("error.log"), records);
}

TEST_F(ErrorHandlerTest, WhatCannotBeLoggedIsLostSilently) {
    writer.LogWrite("before the folder is known", "", 1, 1, 1);
    EXPECT_FALSE(std::filesystem::exists("Tollwick.log"));
    writer.setFolder(folder.text("missing"));
    writer.LogWrite("into a missing folder", "", 2, 1, 1);
    EXPECT_FALSE(std::filesystem::exists(folder / "missing"));
    // One log that cannot be written does not keep the other from being written.
    std::filesystem::create_directory(folder / "error.log");
    writer.setFolder(folder.text());
    writer.LogWrite("beside a folder", "", 3, 1, 1);
    EXPECT_NE(folder.read("Tollwick.log").find("A:beside a folder"), std::string::npos);
    EXPECT_EQ(system.entries.size(), 3U);
}

} // namespace
} // namespace tollwick
