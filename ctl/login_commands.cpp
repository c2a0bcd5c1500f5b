// The login itself.
#include "base/text.h"
#include "ctl/input.h"
#include "ctl/session.h"
#include "wire/record_packing.h"

namespace tollwick::ctl {

ExitStatus changeLogin(Session& session, const Arguments& arguments) {
    const auto file = arguments.options.find("new-password-file");
    if (file == arguments.options.end())
        return session.refuse(Text::CtlNewPasswordMissing);
    const std::string user_id = trimmed(arguments.words.front());
    // From standard input the old password comes first.
    if (const auto status = session.findPassword(); status != ExitStatus::Done)
        return status;
    const auto password = readSecretFile(file->second, session.messages);
    if (!password)
        return ExitStatus::Usage;
    if (!fitsBlock(LoginRecord{VarText(user_id), VarText(*password)}))
        return session.refuse(Text::SettingTooLarge);
    if (password->empty())
        session.messages.error(Text::PasswordEmpty); // a warning: it goes on
    if (const auto status = session.logIn(); status != ExitStatus::Done)
        return status;
    session.context.data.user_id = user_id;
    session.context.data.password = *password;
    return session.statusOfChange(session.requests.txNewLogin());
}

} // namespace tollwick::ctl
