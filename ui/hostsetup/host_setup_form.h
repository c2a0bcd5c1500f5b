// The dialog that adds or changes a UUCP host: five pages over the current host record.
#pragma once

#include "rules/connection_lists.h"
#include "rules/host_entry.h"
#include "rules/host_rules.h"
#include "ui/common/console_dialog.h"
#include "ui/hostsetup/script_page.h"

#include <memory>
#include <string>
#include <vector>

class QComboBox;

namespace Ui {
class HostSetupForm;
}

namespace tollwick {

class HostSetupForm : public ConsoleDialog {
    Q_OBJECT
public:
    // Makes the controls, still empty.
    HostSetupForm(ConsoleContext& context, QWidget* parent);
    ~HostSetupForm() override;

    // Shows the current host and fetches what the service knows: script, devices, locations and
    // dial-up entries. To be called once, before the dialog is shown.
    void ShowAllData();

    // Checks and saves; closes when that is done or the link has failed.
    void accept() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void setCaptions();
    void setUpControls();
    void fillLists();
    void connectSignals();

    void showEntry();
    // The dialog may have been laid out before, with all that is hidden by now.
    void layOutAnew();
    // Fetches in their order; the first failure, which has been told, ends it.
    void fetchLists();
    // `are_all`: the service has told them to the end.
    void showRasEntries(const std::vector<std::string>& names, bool are_all);
    void showConnectSpeed();

    // What the controls hold, on top of what was shown at first.
    [[nodiscard]] HostEntry entry() const;
    [[nodiscard]] int connectUsing() const;

    void SetComSpeeds();
    void SetConnectFrames();
    // Takes the selected telephony names into the working copy; no selection changes nothing.
    void ChangeTapiDataFromLists();
    void protocolChanged();
    void pageChanged(int page);
    void setRasOnlyVisible(bool visible);
    void rasEntryChosen(int position);
    void chooseModem();
    void save();
    [[nodiscard]] QWidget* fieldOf(const RunTimeError& error) const override;

    std::unique_ptr<Ui::HostSetupForm> ui_;
    ConnectionLists lists_;
    ScriptPage script_;
    HostEntry entry_; // as shown at first, and the modem as chosen since
};

} // namespace tollwick
