#include "ctl/command_line.h"

#include <QCommandLineParser>

#include <cmath>
#include <cstdio>
#include <set>

namespace tollwick::ctl {
namespace {

const QString kProgram = QStringLiteral("tollwickctl");

constexpr CommandOption kCommonOptions[] = {
    {"host", "HOST", "Host or IP address of the service."},
    {"port", "N", "Its TCP port."},
    {"user", "USER", "The user who logs in."},
    {"password-file", "FILE",
     "Holds the password in its first line; - is standard input. Without it TOLLWICK_PASSWORD, "
     "else the terminal is asked."},
    {"timeout", "SECONDS", "Time to wait for a reply of the service."},
    {"json", "", "Puts out JSON, with names and values as in a site file."},
    {"help", "", "Shows this text."},
    {"version", "", "Shows the version."},
};

QString toQ(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

void addOptions(QCommandLineParser& parser, std::span<const CommandOption> options) {
    for (const CommandOption& option : options) {
        QStringList names(toQ(option.name));
        if (option.name == "help" || option.name == "version")
            names.prepend(toQ(option.name.substr(0, 1)));
        parser.addOption(QCommandLineOption(names, toQ(option.description), toQ(option.value)));
    }
}

QString usageOf(const Command& command) {
    QString usage = toQ(command.name);
    if (!command.arguments.empty())
        usage += u' ' + toQ(command.arguments);
    for (const CommandOption& option : command.options)
        usage +=
            QStringLiteral(" [--%1%2]")
                .arg(toQ(option.name), option.value.empty() ? QString() : u' ' + toQ(option.value));
    return usage;
}

// The commands whose names begin with these words.
QString commandList(const QString& words) {
    QString list = QStringLiteral("\n\nCommands:\n");
    for (const Command& command : commands())
        if ((toQ(command.name) + u' ').startsWith(words))
            list += QStringLiteral("  %1\n      %2\n").arg(usageOf(command), toQ(command.summary));
    return list;
}

// The command that these words begin with, the longer name first.
const Command* findCommand(const QStringList& words) {
    for (const qsizetype count : {2, 1}) {
        const std::string name = words.mid(0, count).join(u' ').toStdString();
        for (const Command& command : commands())
            if (words.size() >= count && command.name == name)
                return &command;
    }
    return nullptr;
}

class Reader {
public:
    Reader(Messages& messages, ExitStatus& status) : messages_(messages), status_(status) {
        parser_.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsOptions);
        addOptions(parser_, kCommonOptions);
    }

    std::optional<CommandLine> read(const QStringList& arguments);

private:
    std::optional<CommandLine> refuse(Text text, std::initializer_list<std::string_view> values) {
        messages_.error(text, values);
        messages_.error(Text::CtlTryHelp);
        status_ = ExitStatus::Usage;
        return {};
    }
    // Shows a text that was asked for.
    std::optional<CommandLine> show(const QString& text) {
        std::fputs(text.toUtf8().constData(), stdout);
        status_ = std::fflush(stdout) == 0 ? ExitStatus::Done : ExitStatus::Usage;
        return {};
    }
    std::optional<CommandLine> showHelp(const QStringList& words, const Command* command);
    std::optional<CommandLine> take(const Command& command, const QStringList& words);
    // False when a value is refused.
    bool takeCommon(CommonOptions& common);
    [[nodiscard]] std::optional<std::string> valueOf(const char* option) const {
        return parser_.isSet(option) ? std::optional(parser_.value(option).toStdString())
                                     : std::nullopt;
    }

    Messages& messages_;
    ExitStatus& status_;
    QCommandLineParser parser_;
};

std::optional<CommandLine> Reader::read(const QStringList& arguments) {
    // Which command it is decides which options there are, and options may stand before it.
    QCommandLineParser all;
    addOptions(all, kCommonOptions);
    std::set<std::string_view> added;
    for (const Command& command : commands())
        for (const CommandOption& option : command.options)
            if (added.insert(option.name).second)
                addOptions(all, {&option, 1});
    all.parse(arguments);
    const QStringList words = all.positionalArguments();
    const Command* command = findCommand(words);
    if (command)
        addOptions(parser_, command->options);
    const bool is_well_formed = parser_.parse(arguments);
    if (parser_.isSet("help"))
        return showHelp(words, command);
    if (parser_.isSet("version"))
        return show(kProgram + QStringLiteral(" " TOLLWICK_VERSION "\n"));
    if (words.isEmpty())
        return refuse(Text::CtlCommandMissing, {});
    if (!command)
        return refuse(Text::CtlUnknownCommand, {words.mid(0, 2).join(u' ').toStdString()});
    if (const QStringList unknown = parser_.unknownOptionNames(); !unknown.isEmpty())
        return refuse(Text::CtlUnknownOption, {unknown.constFirst().toStdString()});
    if (!is_well_formed)
        return refuse(Text::CtlOptionValue, {});
    return take(*command, words.mid(toQ(command->name).count(u' ') + 1));
}

std::optional<CommandLine> Reader::showHelp(const QStringList& words, const Command* command) {
    QCommandLineParser help;
    addOptions(help, kCommonOptions);
    if (command)
        addOptions(help, command->options);
    help.setApplicationDescription(
        QStringLiteral("Administers the Tollwick mail service from a terminal.") +
        commandList(command           ? toQ(command->name) + u' '
                    : words.isEmpty() ? QString()
                                      : words.constFirst() + u' ')
            .chopped(1));
    // Qt's own first line knows of no commands.
    return show(QStringLiteral("Usage: tollwickctl [OPTIONS] COMMAND [ARGUMENTS]\n") +
                help.helpText().section(u'\n', 1));
}

std::optional<CommandLine> Reader::take(const Command& command, const QStringList& words) {
    const auto count = static_cast<std::size_t>(words.size());
    if (count > command.most)
        return refuse(Text::CtlUnexpectedArgument, {words.constLast().toStdString()});
    if (count < command.least)
        return refuse(Text::CtlArgumentsMissing, {command.name, command.arguments});
    CommandLine line;
    line.command = &command;
    for (const QString& word : words)
        line.arguments.words.push_back(word.toStdString());
    for (const CommandOption& option : command.options)
        if (const auto value = valueOf(std::string(option.name).c_str()))
            line.arguments.options.emplace(option.name, *value);
    if (line.arguments.has("yes") && line.arguments.has("no"))
        return refuse(Text::CtlYesAndNo, {});
    if (!takeCommon(line.common))
        return {};
    return line;
}

bool Reader::takeCommon(CommonOptions& common) {
    common.host = valueOf("host");
    common.port = valueOf("port");
    common.user = valueOf("user");
    common.password_file = valueOf("password-file");
    common.json = parser_.isSet("json");
    if (common.port) {
        bool is_number = false;
        const int port = parser_.value("port").toInt(&is_number);
        if (!is_number || port < 1 || port > 65535)
            return refuse(Text::CtlBadPort, {*common.port}).has_value();
    }
    if (const auto timeout = valueOf("timeout")) {
        bool is_number = false;
        common.timeout = parser_.value("timeout").toFloat(&is_number);
        if (!is_number || !std::isfinite(*common.timeout) || *common.timeout <= 0)
            return refuse(Text::CtlBadTimeout, {*timeout}).has_value();
    }
    return true;
}

} // namespace

std::optional<CommandLine> readCommandLine(const QStringList& arguments, Messages& messages,
                                           ExitStatus& status) {
    return Reader(messages, status).read(arguments);
}

} // namespace tollwick::ctl
