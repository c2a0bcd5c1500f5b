// For the tests of the host dialog: fills it in as a person does and shows what the service got.
#pragma once

#include "tests/ui/support/editor_test.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPointer>

namespace tollwick {

// Answers the questions with the critical icon; all other boxes are left to the BoxWatcher.
class CriticalQuestions : public QObject {
public:
    explicit CriticalQuestions(BoxWatcher& others);
    ~CriticalQuestions() override;

    void expect(const std::string& text, QMessageBox::StandardButton default_button,
                QMessageBox::StandardButton pressed);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Question {
        std::string text;
        QMessageBox::StandardButton default_button;
        QMessageBox::StandardButton pressed;
    };

    void answer(QMessageBox& box);

    BoxWatcher& others_;
    std::deque<Question> expected_;
};

// The bytes of a host record, written at their places.
class HostBytes {
public:
    explicit HostBytes(std::string bytes = std::string(2292, '\0')) : bytes_(std::move(bytes)) {}

    HostBytes& number(std::size_t offset, Integer value);
    HostBytes& number32(std::size_t offset, Long value);
    // Padded with blanks.
    HostBytes& text(std::size_t offset, std::size_t width, std::string_view utf8);
    [[nodiscard]] const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

// Where the two differ, in words; empty when they are the same.
std::string differences(const std::string& bytes, const HostBytes& expected);
std::string bytesOf(const HostRecord& host);

class HostSetupTest : public EditorTest {
protected:
    using Work = std::function<void()>;
    enum Page { General, Transport, Login, LoginScript, Connection };

    // Logs in and opens the dialog on a new host, or on one of the list; `act` closes it.
    void addHost(const Work& act);
    void editHost(int row, const Work& act);

    QDialog& form() { return *form_; }
    template <class Widget = QWidget>
    Widget* control(const char* name) {
        return child<Widget>(form(), name);
    }
    QComboBox* combo(const char* name) { return control<QComboBox>(name); }
    std::string textOf(const char* name);
    [[nodiscard]] int page();
    void showPage(int page);
    // Those of these controls that are not hidden themselves.
    Lines shown(std::initializer_list<const char*> names);

    // Clicks a control on its page.
    void click(const char* name);
    // Clicks into a line and types in place of what is there.
    void enter(const char* name, const char* text);
    // Chooses in a list with the keyboard.
    void choose(const char* name, int position);
    void paste(const char* name, const QString& text);
    // Enters what a host cannot do without.
    void enterNames(const char* display_name, const char* domain, const char* node);
    void ok() { click("OkButton"); }
    void cancel() { click("CancelButton"); }

    // Opens a dialog over this one; `act` closes it.
    void inChild(const Work& open, const Act& act);

    // As failing(), for work of several requests, one of which is for this class.
    void failingAt(Failure failure, ObjectClass object_class, const std::string& message,
                   const Work& work);
    // Class and status text, as they were when the service got each request of `work`.
    Lines statusesDuring(const Work& work);

    // The host that the latest request, of this operation, brought to the service; passwords plain.
    std::string sentHost(Operation operation);
    // Sets a host of the service; call before the login.
    void change(int row, const std::function<void(HostRecord&)>& change);
    HostRecord siteHost(int row) { return site().hosts.at(static_cast<std::size_t>(row)); }
    // The host's requests that change something at the service.
    int saves();
    Lines directories();
    // The text of a script at the service; "(none)" when there is none.
    std::string script(std::string_view name);

    CriticalQuestions questions{boxes};

private:
    void inForm(const char* command, const Work& act);

    QPointer<QDialog> form_;
};

} // namespace tollwick
