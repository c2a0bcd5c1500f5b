#include "ui/frame/console.h"

#include <QApplication>
#include <QDir>

#include <cstdlib>

namespace {

// Where the files that come with the program lie: beside it, or in the data folder of its prefix.
std::string suppliedFolder() {
    const QDir program(QCoreApplication::applicationDirPath());
    for (const QString place : {"data", "../share/tollwick"})
        if (program.exists(place + "/note.txt"))
            return QDir::cleanPath(program.absoluteFilePath(place)).toStdString();
    return program.absolutePath().toStdString();
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setDesktopFileName("tollwickadmin");

    const auto store = tollwick::platformSettingsStore();
    const auto system_log = tollwick::platformSystemLog();
    const tollwick::SystemClock clock;
    const std::string program_folder = QCoreApplication::applicationDirPath().toStdString();
    tollwick::Console console({*store,
                               *system_log,
                               clock,
                               {suppliedFolder(), tollwick::defaultInstallFolder(program_folder)},
                               [] { std::_Exit(EXIT_SUCCESS); }});
    return console.Main() ? QApplication::exec() : EXIT_FAILURE;
}
