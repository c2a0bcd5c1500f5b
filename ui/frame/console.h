// The console as a whole: its parts, wired together, and the start routine. `main` is a few lines
// on top of it, and tests drive the same object.
#pragma once

#include "base/clock.h"
#include "base/error_handler.h"
#include "base/log_writer.h"
#include "base/platform_folders.h"
#include "base/settings_store.h"
#include "base/system_log.h"
#include "link/requests.h"
#include "link/service_link.h"
#include "rules/service_data.h"
#include "ui/common/console_context.h"
#include "ui/common/control_describer.h"
#include "ui/common/input_blocker.h"
#include "ui/common/message_box_prompter.h"
#include "ui/common/swedish_qt_texts.h"
#include "ui/frame/main_form.h"
#include "ui/frame/main_module.h"
#include "ui/frame/main_status_bar.h"
#include "ui/help/help_desk.h"

#include <functional>
#include <memory>

namespace tollwick {

// What the console needs from its surroundings.
struct ConsoleEnvironment {
    SettingsStore& store;
    SystemLog& system_log;
    const Clock& clock;
    Folders folders;
    std::function<void()> end_process;
};

class Console {
public:
    explicit Console(ConsoleEnvironment environment);
    ~Console();

    // The start routine. False when it failed before the main window was shown; the error has been
    // logged then.
    bool Main();

    [[nodiscard]] Twmainform* mainForm() const { return main_form_.get(); }
    [[nodiscard]] ConsoleContext& context() { return context_; }

private:
    ConsoleEnvironment environment_;
    LogWriter log_;
    MainModule main_;
    InputBlocker blocker_;
    MessageBoxPrompter prompter_;
    ErrorHandler errors_;
    ServiceLink link_;
    ServiceData data_;
    MainStatusBar* status_bar_; // owned by the main window once that exists
    std::unique_ptr<MainStatusBar> early_status_bar_;
    Requests requests_;
    HelpDesk help_;
    ControlDescriber describer_;
    SwedishQtTexts swedish_qt_texts_;
    ConsoleContext context_;
    std::unique_ptr<Twmainform> main_form_;
};

} // namespace tollwick
