#include "ctl/session.h"

#include "base/text.h"
#include "ctl/input.h"
#include "ctl/terminal.h"
#include "link/login_sequence.h"
#include "wire/record_packing.h"

#include <QtGlobal>

namespace tollwick::ctl {

Session::Session(const StringTable& string_table, Messages& told, Settings& settings,
                 const CommonOptions& common)
    : texts(string_table), messages(told), output(common.json),
      connection_(loadConnectionSettings(settings)), password_file_(common.password_file),
      link_(clock_),
      requests(link_, data_, texts, messages, progress), context{texts, messages, progress,
                                                                 link_, data_,    requests} {
    link_.setInputLock(interrupt_);
    connection_.ServerConnectIp = common.host.value_or(connection_.ServerConnectIp);
    connection_.ServerConnectPort = common.port.value_or(connection_.ServerConnectPort);
    connection_.ServerConnectUsername = common.user.value_or(connection_.ServerConnectUsername);
    connection_.ComTimeout = common.timeout.value_or(connection_.ComTimeout);
}

ExitStatus Session::findPassword() {
    if (password_)
        return ExitStatus::Done;
    if (password_file_) {
        password_ = readSecretFile(*password_file_, messages);
        return password_ ? ExitStatus::Done : ExitStatus::Usage;
    }
    if (qEnvironmentVariableIsSet("TOLLWICK_PASSWORD")) {
        password_ = trimmed(qEnvironmentVariable("TOLLWICK_PASSWORD").toStdString());
        return ExitStatus::Done;
    }
    if (!terminal::isInput())
        return refuse(Text::CtlNoPassword);
    password_ = terminal::readSecret(
        printable(filledIn(texts(Text::CtlPasswordPrompt),
                           {connection_.ServerConnectUsername, connection_.ServerConnectIp})));
    if (password_)
        password_ = trimmed(*password_);
    return password_ ? ExitStatus::Done : ExitStatus::Interrupted;
}

ExitStatus Session::logIn() {
    context.data.user_id = connection_.ServerConnectUsername;
    if (const auto status = findPassword(); status != ExitStatus::Done)
        return status;
    context.data.password = *password_;
    if (!fitsBlock(LoginRecord{VarText(context.data.user_id), VarText(context.data.password)}))
        return refuse(Text::SettingTooLarge);
    interrupt_.watch();
    switch (LoginSequence(context, connection_).run(LoginFetch::Nothing)) {
    case LoginOutcome::LoggedIn:
        return ExitStatus::Done;
    case LoginOutcome::Rejected:
        return ExitStatus::LoginRefused;
    case LoginOutcome::LinkFailed:
        return requests.wasAnswered() ? ExitStatus::LoginRefused : ExitStatus::NoConnection;
    default:
        return ExitStatus::NoConnection;
    }
}

ExitStatus Session::statusOfChange(Integer outcome) {
    if (hasFailed(outcome))
        return failure();
    if (requests.wasDone())
        return ExitStatus::Done;
    messages.error(Text::CtlNotDone);
    return ExitStatus::ServiceRefused;
}

} // namespace tollwick::ctl
