// Has the installer treat the files that come with the console as the console itself does: what is
// untouched is brought up to date, a site's own stays.
// Usage: place-files SUPPLIED INSTALL_FOLDER COUNTRY_CODE
#include "base/files.h"
#include "base/install_files.h"
#include "base/numeric.h"

int wmain(int argc, wchar_t** argv) {
    using namespace tollwick;
    if (argc != 4)
        return 2;
    const auto utf8 = [argv](int argument) {
        return fromPath(std::filesystem::path(argv[argument]));
    };
    placeSuppliedFiles(utf8(1), utf8(2), toInteger(numericValue(utf8(3))));
    return 0;
}
