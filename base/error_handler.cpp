#include "base/error_handler.h"

#include "base/files.h"

#include <string>

namespace tollwick {
namespace {

// The texts are fixed, not taken from the string table, and what looks odd in them is wanted: words
// such as ", vbCritical, ProgramName", exclamation marks that differ between box and log. "%"
// stands for the drive of the log folder.
struct ErrorText {
    Long first; // range of error numbers
    Long last;
    std::string_view box; // empty: no box is shown
    std::string_view message;
    std::string_view advice;
};

constexpr ErrorText kErrorTexts[] = {
    {6, 6, "", "Overflow", ""},
    {7, 7,
     "Fatal error: Out of memory"
     "Free up some memory and restart Corvale!, vbCritical, ProgramName",
     "Fatal error: Out of memory!", "Free up some memory and restart Corvale"},
    {9, 9, "", "Subscript is out of range", ""},
    {48, 48, "Fatal error: Cannot load DLL!Press OK to terminate!, vbCritical, ProgramName",
     "Fatal error: Cannot load DLL!", ""},
    {52, 52, "", "Invalid filename!", ""},
    {53, 53, "", "Could not find file!", ""},
    {55, 55, "", "Tried to open same file twice!", ""},
    {61, 61, "Fatal error: Disk % is full!Make some room on this disk and restart Corvale!",
     "Fatal error: Disk % is full", "Make some room on this disk and restart Corvale!"},
    {62, 62, "", "Tried to write beyond file end", ""},
    {67, 67, "Fatal error: Too many files are open!Increase 'Files=' in your CONFIG.SYS",
     "Fatal error: Too many files are open!", "Increase 'Files=' in your CONFIG.SYS"},
    {70, 70, "", "Permission to access file is denied", ""},
    {75, 76,
     "Fatal error: Directory is missing!"
     "Inspect corvale directory structure and recreate missing directorys!",
     "Fatal error: Directory is missing!",
     "Inspect corvale directory structure and recreate missing directorys!"},
    {280, 295, "", "DDE session failed!", ""},
    {298, 298, "Fatal error: Cannot load DLL!Press OK to terminate!, vbCritical, ProgramName",
     "Fatal error: Cannot load DLL!", ""},
    {321, 321, "Fatal error: Corrupt or missing system file!Try replacing Corvale OCX files!",
     "Fatal error: Corrupt or missing system file!", "Try replacing Corvale OCX files"},
    {325, 325, "Fatal error: Resource file is missing!!!!Email support!",
     "Fatal error: Resource file is missing!!!!!", "Email support!"},
    {326, 326,
     "The localized text that was about to be shown, could not be found in this language. "
     "Please e-mail support and describe exactly 'when' and how this error occured!",
     "Fatal error: Corrupt or missing system file!",
     "Please e-mail support and describe exactly 'when' and how this error occured!"},
    {335, 335,
     "Fatal error: Cannot access system registry!"
     "Study MS Windows documentation for resolving this error!",
     "Fatal error: Cannot access system registry!",
     "Study MS Windows documentation for resolving this error!"},
    {336, 338, "Fatal error: Corrupt or missing system file!Try replacing Corvale OCX files!",
     "Fatal error: Corrupt or missing system file!", "Try replacing Corvale OCX files"},
};
constexpr ErrorText kUnknown{0, 0, "", "Unknown error!", ""};

const ErrorText& textsOf(Long number) {
    for (const ErrorText& text : kErrorTexts)
        if (number >= text.first && number <= text.last)
            return text;
    return kUnknown;
}

std::string withDrive(std::string_view text, std::string_view log_folder) {
    std::string result(text);
    const std::size_t place = result.find('%');
    if (place != std::string::npos)
        result.replace(place, 1, driveOf(log_folder));
    return result;
}

} // namespace

void ErrorHandler::operator()(Long error_number, Routine routine, Integer step) {
    const ErrorText& texts = textsOf(error_number);
    if (!texts.box.empty())
        prompter_.critical(withDrive(texts.box, log_.folder()));
    log_.LogWrite(withDrive(texts.message, log_.folder()), texts.advice, error_number,
                  static_cast<Integer>(routine), step);
}

} // namespace tollwick
