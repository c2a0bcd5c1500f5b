#include "ui/frame/console.h"

#include <QCoreApplication>

// Outside the namespace, as the macro wants it: the pictures lie in a static library.
static void initResources() {
    Q_INIT_RESOURCE(icons);
}

namespace tollwick {

Console::Console(ConsoleEnvironment environment)
    : environment_(std::move(environment)), log_(environment_.system_log, environment_.clock),
      main_(environment_.store, log_, environment_.folders), prompter_(main_.texts, blocker_),
      errors_(prompter_, log_), link_(environment_.clock), status_bar_(new MainStatusBar),
      early_status_bar_(status_bar_), requests_(link_, data_, main_.texts, prompter_, *status_bar_),
      help_(main_.texts, main_.install_folder, errors_), context_{{main_.texts, prompter_,
                                                                   *status_bar_, link_, data_,
                                                                   requests_},
                                                                  main_.settings,
                                                                  main_.connection,
                                                                  main_.install_folder,
                                                                  errors_,
                                                                  blocker_,
                                                                  help_,
                                                                  {}} {
    initResources();
    link_.setInputLock(blocker_);
    // Later, not from within the event; by then the reply may have come after all.
    QObject::connect(&blocker_, &InputBlocker::giveUpOffered, status_bar_,
                     &MainStatusBar::offerGiveUp);
    QObject::connect(
        &blocker_, &InputBlocker::giveUpWanted, &link_,
        [this] {
            if (blocker_.isLocked())
                link_.giveUp();
        },
        Qt::QueuedConnection);
}

Console::~Console() = default;

bool Console::Main() {
    errors_.guard(Routine::Main, [&](Integer& step) {
        step = 2;
        errors_.guard(Routine::Main, [&](Integer& reading) {
            reading = step;
            main_.loadLanguage();
        });
        if (main_.texts.LangBase() == kSwedish)
            QCoreApplication::installTranslator(&swedish_qt_texts_);
        errors_.guard(Routine::LoadConnectionSettings,
                      [&](Integer&) { main_.loadConnectionSettings(); });
        step = 3;
        main_.prepareInstallFolder();
        step = 4;
        // In a language without texts the window comes up as it was designed, in English, and
        // whatever needs a text later fails: wanted.
        const StringTable texts = main_.texts;
        if (!errors_.guard(Routine::LoadMainForm,
                           [&](Integer&) { (void)main_.texts(Text::FileMenu); }))
            main_.texts = StringTable(kEnglish);
        main_form_ = std::make_unique<Twmainform>(context_, early_status_bar_.release(),
                                                  environment_.end_process);
        main_.texts = texts;
        main_form_->restorePlacement();
        main_form_->show();
        main_form_->startTimer();
    });
    const bool is_up = main_form_ && main_form_->isVisible();
    if (!is_up) {
        // The language may be the very thing that is missing.
        const Integer language = main_.texts.LangBase() == kSwedish ? kSwedish : kEnglish;
        prompter_.critical(StringTable(language)(Text::StartupFailed));
    }
    return is_up;
}

} // namespace tollwick
