#include "app/error_handler.h"
#include "tests/support/recording_prompter.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_log.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <system_error>
#include <vector>

namespace tollwick {
namespace {

#ifdef _WIN32
constexpr const char* kLogFolder = "C:\\no such folder\\Logs";
#define DRIVE "C:"
#else
constexpr const char* kLogFolder = "/no such folder/Logs";
#define DRIVE "/"
#endif

struct Row {
    std::vector<Long> numbers;
    std::string_view box; // empty: none is shown
    std::string_view message;
    std::string_view advice;
};

const Row kRows[] = {
    {{6}, "", "Overflow", ""},
    {{7},
     "Fatal error: Out of memoryFree up some memory and restart Corvale!, vbCritical, ProgramName",
     "Fatal error: Out of memory!",
     "Free up some memory and restart Corvale"},
    {{9}, "", "Subscript is out of range", ""},
    {{48, 298},
     "Fatal error: Cannot load DLL!Press OK to terminate!, vbCritical, ProgramName",
     "Fatal error: Cannot load DLL!",
     ""},
    {{52}, "", "Invalid filename!", ""},
    {{53}, "", "Could not find file!", ""},
    {{55}, "", "Tried to open same file twice!", ""},
    {{61},
     "Fatal error: Disk " DRIVE " is full!Make some room on this disk and restart Corvale!",
     "Fatal error: Disk " DRIVE " is full",
     "Make some room on this disk and restart Corvale!"},
    {{62}, "", "Tried to write beyond file end", ""},
    {{67},
     "Fatal error: Too many files are open!Increase 'Files=' in your CONFIG.SYS",
     "Fatal error: Too many files are open!",
     "Increase 'Files=' in your CONFIG.SYS"},
    {{70}, "", "Permission to access file is denied", ""},
    {{75, 76},
     "Fatal error: Directory is missing!Inspect corvale directory structure and recreate missing "
     "directorys!",
     "Fatal error: Directory is missing!",
     "Inspect corvale directory structure and recreate missing directorys!"},
    {{280, 281, 288, 295}, "", "DDE session failed!", ""},
    {{321, 336, 337, 338},
     "Fatal error: Corrupt or missing system file!Try replacing Corvale OCX files!",
     "Fatal error: Corrupt or missing system file!",
     "Try replacing Corvale OCX files"},
    {{325},
     "Fatal error: Resource file is missing!!!!Email support!",
     "Fatal error: Resource file is missing!!!!!",
     "Email support!"},
    {{326},
     "The localized text that was about to be shown, could not be found in this language. Please "
     "e-mail support and describe exactly 'when' and how this error occured!",
     "Fatal error: Corrupt or missing system file!",
     "Please e-mail support and describe exactly 'when' and how this error occured!"},
    {{335},
     "Fatal error: Cannot access system registry!Study MS Windows documentation for resolving "
     "this error!",
     "Fatal error: Cannot access system registry!",
     "Study MS Windows documentation for resolving this error!"},
    {{0,  5,  8,   10,  47,  49,  51,  54,  56,  60,  63,  66,  68, 69,        71,
      74, 77, 279, 296, 297, 299, 320, 322, 324, 327, 334, 339, -6, 2147483647},
     "",
     "Unknown error!",
     ""},
};

TEST(ErrorHandler, EachNumberHasItsBoxItsMessageAndItsAdvice) {
    for (const Row& row : kRows)
        for (const Long number : row.numbers) {
            SCOPED_TRACE(number);
            TestLog log;
            log.writer.setFolder(kLogFolder);
            RecordingPrompter prompter;
            if (!row.box.empty())
                prompter.expectBox(BoxIcon::Critical, row.box);
            ErrorHandler handler(prompter, log.writer);
            handler(number, Routine::Main, 1);
            ASSERT_EQ(log.system.entries.size(), 1U);
            EXPECT_EQ(log.system.entries[0], "M: " + std::string(row.message) + ", " +
                                                 std::string(row.advice) +
                                                 "(See corvale.log for details)");
        }
}

std::function<void()> failing(std::errc code) {
    return [code] { throw std::filesystem::filesystem_error("test", std::make_error_code(code)); };
}

TEST(ErrorHandler, GuardGivesEveryExceptionItsNumber) {
    struct {
        std::function<void()> body;
        Long number;
    } const cases[] = {
        {[] { throw RunTimeError(326); }, 326},
        {[] { throw std::bad_alloc(); }, 7},
        {[] { static_cast<void>(std::vector<int>().at(0)); }, 9},
        {[] { throw std::runtime_error("something else"); }, 5},
        {[] { throw 1; }, 5},
        {failing(std::errc::no_such_file_or_directory), 53},
        {failing(std::errc::no_space_on_device), 61},
        {failing(std::errc::too_many_files_open), 67},
        {failing(std::errc::permission_denied), 70},
        {failing(std::errc::directory_not_empty), 75},
        {failing(std::errc::not_a_directory), 76},
        {failing(std::errc::filename_too_long), 52},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.number);
        const TemporaryFolder folder;
        TestLog log;
        log.writer.setFolder(folder.text());
        struct AnyPrompter : Prompter {
            void tell(BoxIcon, std::string_view) override {}
            Answer ask(BoxIcon, std::string_view, Answer) override { return Answer::No; }
            void beep() override {}
        } prompter;
        ErrorHandler handler(prompter, log.writer);
        EXPECT_FALSE(handler.guard(Routine::AddSchedule, [&](Integer& step) {
            step = 3;
            c.body();
            ++step;
        }));
        const std::string place = " ; (" + std::to_string(c.number) + "/102:3) ; ";
        EXPECT_NE(folder.read("Tollwick.log").find(place), std::string::npos)
            << folder.read("Tollwick.log");
    }
}

TEST(ErrorHandler, GuardIsSilentWhenNothingFails) {
    TestLog log;
    RecordingPrompter prompter;
    ErrorHandler handler(prompter, log.writer);
    EXPECT_TRUE(handler.guard(Routine::Exit, [](Integer& step) {
        EXPECT_EQ(step, 0);
        step = 1;
    }));
    EXPECT_TRUE(log.system.entries.empty());
}

} // namespace
} // namespace tollwick
