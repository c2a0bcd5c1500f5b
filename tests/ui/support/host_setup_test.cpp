#include "tests/ui/support/host_setup_test.h"

#include "link/little_endian.h"
#include "link/scramble.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QGroupBox>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>

namespace tollwick {

CriticalQuestions::CriticalQuestions(BoxWatcher& others) : others_(others) {
    QApplication::instance()->installEventFilter(this);
}

CriticalQuestions::~CriticalQuestions() {
    for (const Question& left : expected_)
        ADD_FAILURE() << "Question that never came: " << left.text;
}

void CriticalQuestions::expect(const std::string& text, QMessageBox::StandardButton default_button,
                               QMessageBox::StandardButton pressed) {
    expected_.push_back({text, default_button, pressed});
}

bool CriticalQuestions::eventFilter(QObject* watched, QEvent* event) {
    auto* box = qobject_cast<QMessageBox*>(watched);
    if (event->type() != QEvent::Show || !box || box->icon() != QMessageBox::Critical ||
        !box->button(QMessageBox::Yes))
        return false;
    // Kept from the other watcher, which would find it unexpected.
    QApplication::instance()->removeEventFilter(&others_);
    QTimer::singleShot(0, box, [this, box] {
        QApplication::instance()->installEventFilter(&others_);
        QApplication::instance()->installEventFilter(this);
        answer(*box);
    });
    return false;
}

void CriticalQuestions::answer(QMessageBox& box) {
    if (expected_.empty()) {
        ADD_FAILURE() << "Unexpected question: " << box.text().toStdString();
        return box.reject();
    }
    const Question next = std::move(expected_.front());
    expected_.pop_front();
    EXPECT_EQ(box.text().toStdString(), next.text);
    EXPECT_EQ(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(box.standardButton(box.defaultButton()), next.default_button);
    QTest::mouseClick(box.button(next.pressed), Qt::LeftButton);
}

HostBytes& HostBytes::number(std::size_t offset, Integer value) {
    storeLittleEndian(value, bytes_.data() + offset);
    return *this;
}

HostBytes& HostBytes::number32(std::size_t offset, Long value) {
    storeLittleEndian(value, bytes_.data() + offset);
    return *this;
}

HostBytes& HostBytes::text(std::size_t offset, std::size_t width, std::string_view utf8) {
    std::string text = toAnsi(utf8);
    text.resize(width, ' ');
    bytes_.replace(offset, width, text);
    return *this;
}

std::string differences(const std::string& bytes, const HostBytes& expected) {
    if (bytes.size() != expected.bytes().size())
        return "size " + std::to_string(bytes.size());
    std::string words;
    for (std::size_t i = 0; i < bytes.size(); ++i)
        if (bytes[i] != expected.bytes()[i])
            words += std::to_string(i) + ": " + std::to_string(bytes[i]) + " for " +
                     std::to_string(expected.bytes()[i]) + "; ";
    return words;
}

std::string bytesOf(const HostRecord& host) {
    Comrecord comrecord;
    packRecord(host, comrecord);
    return {comrecord.ComrecordData.data(), wireSize<HostRecord>()};
}

void HostSetupTest::addHost(const Work& act) {
    if (!console || !context().link.isOpen())
        logIn();
    clickNode("uucphosts");
    inForm("AddMenu", act);
}

void HostSetupTest::editHost(int row, const Work& act) {
    if (!console || !context().link.isOpen())
        logIn();
    select("uucphosts", row);
    inForm("PropertiesMenu", act);
}

void HostSetupTest::inForm(const char* command, const Work& act) {
    inDialogs([&] { trigger(command); }, {[&](QDialog& dialog) {
                  EXPECT_EQ(dialog.objectName(), "HostSetupForm");
                  form_ = &dialog;
                  act();
              }});
}

std::string HostSetupTest::textOf(const char* name) {
    const auto* widget = control(name);
    if (const auto* edit = qobject_cast<const QLineEdit*>(widget))
        return edit->text().toStdString();
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return label->text().toStdString();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return button->text().toStdString();
    if (const auto* list = qobject_cast<const QComboBox*>(widget))
        return list->currentText().toStdString();
    if (const auto* box = qobject_cast<const QGroupBox*>(widget))
        return box->title().toStdString();
    return "(no text)";
}

int HostSetupTest::page() {
    return control<QTabWidget>("SysSetupTab")->currentIndex();
}

void HostSetupTest::showPage(int page) {
    QTabBar* bar = control<QTabWidget>("SysSetupTab")->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(page).center());
}

Lines HostSetupTest::shown(std::initializer_list<const char*> names) {
    Lines left;
    for (const char* name : names)
        if (!control(name)->isHidden())
            left.emplace_back(name);
    return left;
}

void HostSetupTest::click(const char* name) {
    // No window manager does it here when a box over the dialog is gone.
    form().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(form_, kPatience));
    QWidget* widget = control(name);
    auto* tabs = control<QTabWidget>("SysSetupTab");
    for (QWidget* parent = widget; parent; parent = parent->parentWidget())
        if (const int its_page = tabs->indexOf(parent); its_page >= 0 && its_page != page())
            showPage(its_page);
    ASSERT_TRUE(widget->isVisible() && widget->isEnabled()) << name;
    QTest::mouseClick(widget, Qt::LeftButton, {}, {8, widget->height() / 2});
}

void HostSetupTest::enter(const char* name, const char* text) {
    click(name);
    ASSERT_EQ(focused(), name);
    press(Qt::Key_A, Qt::ControlModifier);
    press(Qt::Key_Delete);
    type(text);
}

void HostSetupTest::choose(const char* name, int position) {
    QComboBox* list = combo(name);
    auto* tabs = control<QTabWidget>("SysSetupTab");
    for (QWidget* parent = list; parent; parent = parent->parentWidget())
        if (const int its_page = tabs->indexOf(parent); its_page >= 0 && its_page != page())
            showPage(its_page);
    ASSERT_TRUE(list->isVisible()) << name;
    list->setFocus();
    QTest::keyClick(list, Qt::Key_Home);
    for (int i = 0; i < position; ++i)
        QTest::keyClick(list, Qt::Key_Down);
}

void HostSetupTest::paste(const char* name, const QString& text) {
    QApplication::clipboard()->setText(text);
    click(name);
    press(Qt::Key_End);
    press(Qt::Key_V, Qt::ControlModifier);
}

void HostSetupTest::enterNames(const char* display_name, const char* domain, const char* node) {
    enter("HostSetupNameTxt", display_name);
    enter("MailDomainTxt", domain);
    enter("RemoteHostNameTxt", node);
}

void HostSetupTest::inChild(const Work& open, const Act& act) {
    bool came = false;
    QTimer later;
    later.callOnTimeout([&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (came || !dialog || dialog == form_ || !dialog->isVisible() ||
            qobject_cast<QMessageBox*>(dialog))
            return;
        came = true;
        if (!QTest::qWaitForWindowActive(dialog, kPatience))
            ADD_FAILURE() << "a dialog without the focus";
        act(*dialog);
        if (dialog->isVisible()) {
            ADD_FAILURE() << "Dialog that stays: " << dialog->objectName().toStdString();
            dialog->reject();
        }
    });
    later.start(5);
    open();
    EXPECT_TRUE(came) << "no dialog came up";
}

void HostSetupTest::failingAt(Failure failure, ObjectClass object_class, const std::string& message,
                              const Work& work) {
    if (failure == Failure::Refused)
        return failing(failure, object_class, message, work);
    boxes.expectBox(QMessageBox::Critical, message);
    QObject here;
    const auto strike = [&] {
        if (failure == Failure::ConnectionLost)
            return onServer([](simulator::Server& server) { server.closeConnections(); });
        clock.time.second += 1;
        clock.time.hundredths += 1;
    };
    const auto connection = onServer([&](simulator::Server& server) {
        server.faults().only_class = object_class;
        server.faults().never_reply = true;
        return QObject::connect(&server, &simulator::Server::requestReceived, &server, [&] {
            if (server.requests().back().object_class == static_cast<Integer>(object_class))
                QMetaObject::invokeMethod(&here, strike, Qt::QueuedConnection);
        });
    });
    work();
    onServer([&](simulator::Server&) { QObject::disconnect(connection); });
}

Lines HostSetupTest::statusesDuring(const Work& work) {
    Lines seen;
    QObject receiver;
    onServer([&](simulator::Server& server) {
        // The service waits until it is noted, so that nothing is missed.
        QObject::connect(
            &server, &simulator::Server::requestReceived, &receiver,
            [&] {
                seen.push_back(std::to_string(server.requests().back().object_class) + ' ' +
                               info());
            },
            Qt::BlockingQueuedConnection);
    });
    work();
    onServer([&](simulator::Server& server) { server.disconnect(&receiver); });
    return seen;
}

std::string HostSetupTest::sentHost(Operation operation) {
    const Comrecord request = onServer([](auto& server) { return server.lastRequest(); });
    EXPECT_EQ(request.Operation, static_cast<Integer>(operation));
    EXPECT_EQ(request.ObjectClass, static_cast<Integer>(ObjectClass::Host));
    EXPECT_EQ(request.RecordNumber, 0);
    EXPECT_EQ(request.RecordLength, 2292);
    const std::string_view block(request.ComrecordData.data(), request.ComrecordData.size());
    EXPECT_EQ(withoutTrailingNuls(block.substr(2292)), "");
    HostBytes host{std::string(block.substr(0, 2292))};
    for (const auto& [offset, width] : {std::pair{822U, 60U}, {942U, 60U}, {2096U, 50U}}) {
        const std::string scrambled(withoutTrailingBlanks(block.substr(offset, width)));
        if (!scrambled.empty())
            host.text(offset, width, fromAnsi(unscramble(HostPasswordKey, scrambled)));
    }
    return host.bytes();
}

void HostSetupTest::change(int row, const std::function<void(HostRecord&)>& change) {
    onServer([&](simulator::Server& server) {
        change(server.site().hosts.at(static_cast<std::size_t>(row)));
    });
}

int HostSetupTest::saves() {
    return onServer([](simulator::Server& server) {
        return static_cast<int>(std::count_if(
            server.requests().begin(), server.requests().end(), [](const auto& request) {
                return request.operation == static_cast<Integer>(Operation::Add) ||
                       request.operation == static_cast<Integer>(Operation::Save) ||
                       request.operation == static_cast<Integer>(Operation::Delete);
            }));
    });
}

Lines HostSetupTest::directories() {
    Lines names;
    for (const VarText& name : site().spool_directories)
        names.push_back(name.text());
    return names;
}

std::string HostSetupTest::script(std::string_view name) {
    for (const ScriptRecord& script : site().scripts)
        if (script.file_name.text() == name)
            return script.text.scriptText();
    return "(none)";
}

} // namespace tollwick
