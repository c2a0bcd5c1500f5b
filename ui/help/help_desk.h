// Shows the help page of whatever is in front: on F1 anywhere in the program, for the Help buttons,
// and for the Help menu.
#pragma once

#include "base/error_handler.h"
#include "base/string_table.h"

#include <QObject>

#include <memory>

class QWidget;

namespace tollwick {

class HelpWindow;

// A widget whose page is not the one under its object name carries that page's topic in this
// property.
inline constexpr const char* kHelpTopicProperty = "helpTopic";

class HelpDesk : public QObject {
    Q_OBJECT
public:
    // `install_folder` is UTF-8.
    HelpDesk(const StringTable& texts, const std::string& install_folder, ErrorHandler& errors);
    ~HelpDesk() override;

    // The first page, with the contents beside it.
    void showContents();
    // The page of the widget or of the closest thing around it that has one; a message box has the
    // page that explains its message.
    void showPageOf(const QWidget* widget);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show(const std::function<void(HelpWindow&)>& choose);

    const StringTable& texts_;
    const std::string& install_folder_;
    ErrorHandler& errors_;
    std::unique_ptr<HelpWindow> window_;
};

} // namespace tollwick
