// tollwickctl: administers the Tollwick service from a terminal.
#include "base/run_time_error.h"
#include "ctl/session.h"
#include "ctl/terminal.h"

#include <QCoreApplication>

namespace tollwick::ctl {
namespace {

// The console's language; English where that has no texts.
Integer language(Settings& settings) {
    try {
        return loadLangBase(settings) == kSwedish ? kSwedish : kEnglish;
    } catch (const RunTimeError&) {
        return kEnglish;
    }
}

ExitStatus run(const QStringList& arguments) {
    const auto store = platformSettingsStore();
    Settings settings(*store);
    const StringTable texts(language(settings));
    Messages messages(texts);
    auto status = ExitStatus::Done;
    const std::optional<CommandLine> line = readCommandLine(arguments, messages, status);
    if (!line)
        return status;
    if (line->arguments.has("yes") || line->arguments.has("no"))
        messages.answerAll(line->arguments.has("yes") ? Answer::Yes : Answer::No);
    Session session(texts, messages, settings, line->common);
    try {
        status = line->command->run(session, line->arguments);
    } catch (const RunTimeError& error) {
        status = error.number() == error_number::Overflow
                     ? session.refuse(Text::NumberTooLarge)
                     : session.refuse(Text::CtlFailed, {error.what()});
    }
    session.progress.clear();
    return session.output.finish() ? status : session.refuse(Text::CtlOutputNotWritten);
}

} // namespace
} // namespace tollwick::ctl

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    tollwick::ctl::terminal::prepareStreams();
    return static_cast<int>(tollwick::ctl::run(QCoreApplication::arguments()));
}
