// tollwick-simulator: a stand-in for the Tollwick service, to try the console without one.
#include "base/files.h"
#include "simulator/sample_site.h"
#include "simulator/server.h"
#include "site/site_file.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QTimer>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>

namespace {

using namespace tollwick;
using namespace tollwick::simulator;

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;
constexpr int kEndCheck = 200; // milliseconds between two looks at `end_requested`

// Set by a signal handler, which may do little else.
std::atomic<bool> end_requested{false};
static_assert(std::atomic<bool>::is_always_lock_free);

void print(std::FILE* stream, const QString& text) {
    std::fputs(qPrintable(text), stream);
    std::fflush(stream);
}

int fail(int exit_code, const QString& message) {
    print(stderr, QStringLiteral("tollwick-simulator: %1\n").arg(message));
    return exit_code;
}

struct Options {
    QHostAddress address;
    quint16 port = 0;
    QString site_file; // empty: the site lives in memory only
};

class CommandLine {
public:
    CommandLine() {
        parser_.setApplicationDescription(
            QStringLiteral("Stands in for the Tollwick service, so that the administration console "
                           "can be tried without\none. The sample site's login is user \"%1\", "
                           "password \"%2\".")
                .arg(QLatin1StringView(kSampleUserId), QLatin1StringView(kSamplePassword)));
        parser_.addOptions({port_, bind_, site_, help_, version_});
    }

    // Nothing when the program is to end with `exit_code`: all is said then.
    std::optional<Options> parse(const QStringList& arguments, int& exit_code) {
        exit_code = EXIT_SUCCESS;
        if (!parser_.parse(arguments))
            return refuse(parser_.errorText(), exit_code);
        if (parser_.isSet(help_)) {
            print(stdout, parser_.helpText());
            return {};
        }
        if (parser_.isSet(version_)) {
            print(stdout, QStringLiteral("tollwick-simulator " TOLLWICK_VERSION "\n"));
            return {};
        }
        if (!parser_.positionalArguments().isEmpty())
            return refuse(QStringLiteral("Unexpected argument '%1'.")
                              .arg(parser_.positionalArguments().constFirst()),
                          exit_code);

        Options options;
        bool is_number = false;
        options.port = parser_.value(port_).toUShort(&is_number);
        if (!is_number)
            return refuse(QStringLiteral("'%1' is no port; 0 to 65535 is expected.")
                              .arg(parser_.value(port_)),
                          exit_code);
        const QString address = parser_.value(bind_);
        options.address = address == QLatin1StringView("localhost")
                              ? QHostAddress(QHostAddress::LocalHost)
                              : QHostAddress(address);
        if (options.address.isNull())
            return refuse(QStringLiteral("'%1' is no IP address.").arg(address), exit_code);
        options.site_file = parser_.value(site_);
        if (parser_.isSet(site_) && options.site_file.isEmpty())
            return refuse(QStringLiteral("The name of the site file is empty."), exit_code);
        return options;
    }

private:
    static std::optional<Options> refuse(const QString& message, int& exit_code) {
        exit_code = fail(kExitUsage, message + QStringLiteral(" Try --help."));
        return {};
    }

    QCommandLineParser parser_;
    const QCommandLineOption port_{
        QStringLiteral("port"),
        QStringLiteral("TCP port to listen on (default 542); 0 takes a free one."),
        QStringLiteral("N"), QStringLiteral("542")};
    const QCommandLineOption bind_{QStringLiteral("bind"),
                                   QStringLiteral("IP address to listen on (default 127.0.0.1)."),
                                   QStringLiteral("ADDRESS"), QStringLiteral("127.0.0.1")};
    const QCommandLineOption site_{
        QStringLiteral("site"),
        QStringLiteral("JSON file with all that is served. Made with the sample site when missing, "
                       "written back after each change. Without it everything lives in memory."),
        QStringLiteral("FILE")};
    const QCommandLineOption help_{{QStringLiteral("h"), QStringLiteral("help")},
                                   QStringLiteral("Shows this text.")};
    const QCommandLineOption version_{{QStringLiteral("v"), QStringLiteral("version")},
                                      QStringLiteral("Shows the version.")};
};

Site loadOrMake(SiteFile& file, const QString& name) {
    if (file.exists()) {
        Site site = file.load();
        if (!site.login) // a backup of a real site
            site.login = sampleLogin();
        return site;
    }
    Site site = sampleSite();
    file.save(site);
    print(stderr, QStringLiteral("Made %1 with the sample site.\n").arg(name));
    return site;
}

QString withPort(const QHostAddress& address, quint16 port) {
    const bool is_v6 = address.protocol() == QAbstractSocket::IPv6Protocol;
    return QStringLiteral("%1:%2")
        .arg(is_v6 ? u'[' + address.toString() + u']' : address.toString())
        .arg(port);
}

void endOnSignal(QCoreApplication& application, QTimer& timer) {
    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, [](int) { end_requested = true; });
    QObject::connect(&timer, &QTimer::timeout, &application, [] {
        if (end_requested)
            QCoreApplication::quit();
    });
    timer.start(kEndCheck);
}

int run(QCoreApplication& application, const Options& options) {
    std::unique_ptr<SiteFile> file;
    Site site;
    if (options.site_file.isEmpty()) {
        site = sampleSite();
    } else {
        file = std::make_unique<SiteFile>(tollwick::toPath(options.site_file.toStdString()));
        site = loadOrMake(*file, options.site_file);
    }

    Server server(std::move(site));
    if (file) {
        QObject::connect(&server, &Server::siteChanged, &application, [&server, &file] {
            try {
                file->save(server.site());
            } catch (const SiteFileError& error) { // the next change tries again
                fail(kExitFailure, QString::fromUtf8(error.what()));
            }
        });
    }
    if (!server.listen(options.address, options.port))
        return fail(kExitFailure,
                    QStringLiteral("Cannot listen on %1: %2.")
                        .arg(withPort(options.address, options.port), server.errorString()));
    QTimer end_timer;
    endOnSignal(application, end_timer);
    print(stdout,
          QStringLiteral("Listening on %1\n").arg(withPort(options.address, server.port())));
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    int exit_code = EXIT_SUCCESS;
    const std::optional<Options> options =
        CommandLine().parse(QCoreApplication::arguments(), exit_code);
    if (!options)
        return exit_code;
    try {
        return run(application, *options);
    } catch (const SiteFileError& error) {
        return fail(kExitFailure, QString::fromUtf8(error.what()));
    }
}
