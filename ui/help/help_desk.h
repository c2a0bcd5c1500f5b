// Shows the help page of whatever is in front: on F1 anywhere in the program, for the Help buttons,
// and for the Help menu.
#pragma once

#include "base/error_handler.h"
#include "base/string_table.h"
#include "ui/common/help_pages.h"

#include <QObject>

#include <memory>

class QWidget;

namespace tollwick {

class HelpWindow;

class HelpDesk : public QObject, public HelpPages {
    Q_OBJECT
public:
    // `install_folder` is UTF-8.
    HelpDesk(const StringTable& texts, const std::string& install_folder, ErrorHandler& errors);
    ~HelpDesk() override;

    void showContents() override;
    void showPageOf(const QWidget* widget) override;

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
