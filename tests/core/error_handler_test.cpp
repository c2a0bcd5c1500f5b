#include "app/error_handler.h"
#include "tests/support/recording_prompter.h"
#include "tests/support/temporary_folder.h"
#include "tests/support/test_log.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <system_error>

namespace tollwick {
namespace {

#ifdef _WIN32
constexpr const char* kLogFolder = "C:\\no such folder\\Logs";
#define DRIVE "C:"
#else
constexpr const char* kLogFolder = "/no such folder/Logs";
#define DRIVE "/"
#endif

TEST(ErrorHandler, EachNumberHasItsBoxItsMessageAndItsAdvice) {
    const std::string fatal = "Fatal error: ";
    // clang-format off
    const struct {
        std::vector<Long> numbers;
        std::string message, advice = {}, box = {}; // an empty box: none is shown
    } rows[] = {
        {{6}, "Overflow"}, {{9}, "Subscript is out of range"}, {{52}, "Invalid filename!"},
        {{53}, "Could not find file!"}, {{55}, "Tried to open same file twice!"},
        {{62}, "Tried to write beyond file end"}, {{70}, "Permission to access file is denied"},
        {{280, 281, 288, 295}, "DDE session failed!"},
        {{7}, fatal + "Out of memory!", "Free up some memory and restart Corvale",
         fatal + "Out of memoryFree up some memory and restart Corvale!, vbCritical, ProgramName"},
        {{48, 298}, fatal + "Cannot load DLL!", "",
         fatal + "Cannot load DLL!Press OK to terminate!, vbCritical, ProgramName"},
        {{61}, fatal + "Disk " DRIVE " is full", "Make some room on this disk and restart Corvale!",
         fatal + "Disk " DRIVE " is full!Make some room on this disk and restart Corvale!"},
        {{67}, fatal + "Too many files are open!", "Increase 'Files=' in your CONFIG.SYS",
         fatal + "Too many files are open!Increase 'Files=' in your CONFIG.SYS"},
        {{75, 76}, fatal + "Directory is missing!",
         "Inspect corvale directory structure and recreate missing directorys!",
         fatal + "Directory is missing!Inspect corvale directory structure and recreate missing "
         "directorys!"},
        {{321, 336, 337, 338}, fatal + "Corrupt or missing system file!",
         "Try replacing Corvale OCX files",
         fatal + "Corrupt or missing system file!Try replacing Corvale OCX files!"},
        {{325}, fatal + "Resource file is missing!!!!!", "Email support!",
         fatal + "Resource file is missing!!!!Email support!"},
        {{326}, fatal + "Corrupt or missing system file!",
         "Please e-mail support and describe exactly 'when' and how this error occured!",
         "The localized text that was about to be shown, could not be found in this language. "
         "Please e-mail support and describe exactly 'when' and how this error occured!"},
        {{335}, fatal + "Cannot access system registry!",
         "Study MS Windows documentation for resolving this error!",
         fatal + "Cannot access system registry!Study MS Windows documentation for resolving this "
         "error!"},
        {{0, 5, 8, 10, 47, 49, 51, 54, 56, 60, 63, 66, 68, 69, 71, 74, 77, 279, 296, 297, 299, 320,
          322, 324, 327, 334, 339, -6, 2147483647}, "Unknown error!"}};
    // clang-format on
    for (const auto& row : rows)
        for (const Long number : row.numbers) {
            SCOPED_TRACE(number);
            TestLog log;
            log.writer.setFolder(kLogFolder);
            RecordingPrompter prompter;
            if (!row.box.empty())
                prompter.expectBox(BoxIcon::Critical, row.box);
            ErrorHandler(prompter, log.writer)(number, Routine::Main, 1);
            EXPECT_EQ(log.system.entries, std::vector{"M: " + row.message + ", " + row.advice +
                                                      "(See corvale.log for details)"});
        }
}

TEST(ErrorHandler, GuardGivesEveryExceptionItsNumber) {
    const auto failing = [](std::errc code) {
        return
            [code] { throw std::filesystem::filesystem_error("test", std::make_error_code(code)); };
    };
    const std::pair<std::function<void()>, Long> cases[] = {
        {[] { throw RunTimeError(6); }, 6},
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
        {failing(std::errc::filename_too_long), 52}};
    struct : Prompter {
        void tell(BoxIcon, std::string_view) override {}
        Answer ask(BoxIcon, std::string_view, Answer) override { return Answer::No; }
        void beep() override {}
    } prompter;
    for (const auto& [body, number] : cases) {
        const TemporaryFolder folder;
        TestLog log;
        log.writer.setFolder(folder.text());
        ErrorHandler handler(prompter, log.writer);
        EXPECT_TRUE(handler.guard(Routine::Exit, [](Integer& step) { EXPECT_EQ(step, 0); }));
        EXPECT_TRUE(log.system.entries.empty());
        EXPECT_FALSE(handler.guard(Routine::AddSchedule, [&body](Integer& step) {
            step = 3;
            body();
            ++step;
        }));
        const std::string written = folder.read("Tollwick.log");
        EXPECT_NE(written.find(" ; (" + std::to_string(number) + "/102:3) ; "), std::string::npos)
            << number << ": " << written;
    }
}

} // namespace
} // namespace tollwick
