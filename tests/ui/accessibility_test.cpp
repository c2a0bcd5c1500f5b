// Walks every window in both languages as someone does who sees little or has no mouse: each
// control has a name, no mnemonic stands for two things, no text is cut off, the Tab key goes in
// reading order, and the control that has the focus looks different from when it has not.
#include "tests/ui/support/console_test.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStyleOptionComboBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTextEdit>
#include <QToolBar>

#include <map>

namespace tollwick {
namespace {

std::string nameOf(const QWidget& widget) {
    return widget.objectName().toStdString() + " (" + widget.metaObject()->className() + ')';
}

bool isControl(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) ||
           qobject_cast<const QLineEdit*>(&widget) || qobject_cast<const QComboBox*>(&widget) ||
           qobject_cast<const QTextEdit*>(&widget) ||
           qobject_cast<const QPlainTextEdit*>(&widget) ||
           qobject_cast<const QProgressBar*>(&widget) ||
           (qobject_cast<const QAbstractItemView*>(&widget) &&
            !qobject_cast<const QHeaderView*>(&widget));
}

// Parts that a control of Qt's own is made of.
bool isInner(const QWidget& widget) {
    return widget.objectName().startsWith("qt_") ||
           qobject_cast<QComboBox*>(widget.parentWidget()) ||
           qobject_cast<QLineEdit*>(widget.parentWidget()) ||
           qobject_cast<QTabBar*>(widget.parentWidget());
}

class Walk {
public:
    Walk(QWidget& window, std::string place) : window_(window), place_(std::move(place)) {}

    void check() {
        for (QWidget* widget : window_.findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->window() != &window_ || isInner(*widget))
                continue;
            checkName(*widget);
            collectMnemonics(*widget);
            checkFits(*widget);
        }
        if (auto* form = qobject_cast<QMainWindow*>(&window_))
            checkMenus(*form);
        for (const auto& [letter, names] : mnemonics_)
            if (names.size() > 1)
                ADD_FAILURE() << place_ << ": Alt+" << QString(letter).toStdString()
                              << " stands for " << names[0] << " and " << names[1];
        checkTabOrder();
    }

private:
    void checkName(const QWidget& widget) {
        if (!isControl(widget))
            return;
        QAccessibleInterface* interface =
            QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
        EXPECT_FALSE(interface->text(QAccessible::Name).trimmed().isEmpty())
            << place_ << ": " << nameOf(widget) << " has no name";
        EXPECT_TRUE(!qobject_cast<QDialog*>(&window_) || !widget.accessibleDescription().isEmpty())
            << place_ << ": " << nameOf(widget) << " has no description";
        // The buttons of the toolbar are known by their actions, those of a box by their role.
        EXPECT_FALSE(widget.objectName().isEmpty() &&
                     !qobject_cast<QToolBar*>(widget.parentWidget()) &&
                     !qobject_cast<QDialogButtonBox*>(widget.parentWidget()))
            << place_ << ": " << nameOf(widget);
    }

    void collect(const QString& text, const std::string& name) {
        if (const QKeySequence key = QKeySequence::mnemonic(text); !key.isEmpty())
            mnemonics_[text[text.indexOf('&') + 1].toUpper()].push_back(name);
    }

    void collectMnemonics(const QWidget& widget) {
        if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
            collect(button->text(), nameOf(widget));
        else if (const auto* label = qobject_cast<const QLabel*>(&widget); label && label->buddy())
            collect(label->text(), nameOf(widget));
        else if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
            collect(group->title(), nameOf(widget));
        else if (const auto* tabs = qobject_cast<const QTabBar*>(&widget))
            for (int i = 0; i < tabs->count(); ++i)
                collect(tabs->tabText(i), nameOf(widget));
    }

    void checkMenus(QMainWindow& form) {
        for (const QAction* top : form.menuBar()->actions()) {
            collect(top->text(), top->text().toStdString());
            std::map<QChar, QString> letters;
            for (const QAction* entry : top->menu()->actions()) {
                if (entry->isSeparator())
                    continue;
                const qsizetype at = entry->text().indexOf('&');
                ASSERT_GE(at, 0) << entry->text().toStdString() << " has no mnemonic";
                QString& other = letters[entry->text()[at + 1].toUpper()];
                EXPECT_TRUE(other.isEmpty())
                    << place_ << ": " << entry->text().toStdString() << ", " << other.toStdString();
                other = entry->text();
            }
        }
    }

    void checkFits(const QWidget& widget) {
        QSize wanted;
        if (const auto* label = qobject_cast<const QLabel*>(&widget))
            wanted = label->text().isEmpty() || label->wordWrap() ? QSize() : label->sizeHint();
        else if (const auto* group = qobject_cast<const QGroupBox*>(&widget))
            wanted = {group->fontMetrics().horizontalAdvance(group->title()), 0};
        else if (const auto* combo = qobject_cast<const QComboBox*>(&widget))
            wanted = {combo->fontMetrics().horizontalAdvance(combo->currentText()) + 20, 0};
        else if (qobject_cast<const QAbstractButton*>(&widget))
            wanted = widget.minimumSizeHint();
        EXPECT_GE(widget.width(), wanted.width())
            << place_ << ": " << nameOf(widget) << " is cut off";
        EXPECT_GE(widget.height(), wanted.height()) << place_ << ": " << nameOf(widget);
        // Whole within the window, and within all that lies around it.
        const QRect place(widget.mapTo(&window_, QPoint()), widget.size());
        EXPECT_TRUE(!isControl(widget) || window_.rect().contains(place))
            << place_ << ": " << nameOf(widget);
        if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
            for (int i = 0; i < tabs->count(); ++i)
                EXPECT_TRUE(tabs->rect().contains(tabs->tabRect(i)))
                    << place_ << ": tab " << tabs->tabText(i).toStdString();
        } else if (const auto* list = qobject_cast<const ListView*>(&widget)) {
            for (int i = 0; i < list->header()->count(); ++i)
                EXPECT_GE(list->columnWidth(i),
                          list->fontMetrics().horizontalAdvance(
                              list->model()->headerData(i, Qt::Horizontal).toString()))
                    << place_ << ": column " << i;
        }
    }

    // The controls that Tab goes to, from the first one on.
    std::vector<QWidget*> tabStops() {
        std::vector<QWidget*> stops;
        QWidget* widget = &window_;
        do {
            if ((widget->focusPolicy() & Qt::TabFocus) && widget->isVisibleTo(&window_) &&
                widget->isEnabled() && !widget->focusProxy() && widget != &window_ &&
                widget->window() == &window_)
                stops.push_back(widget);
            widget = widget->nextInFocusChain();
        } while (widget != &window_);
        return stops;
    }

    QRect placeOf(const QWidget& widget) {
        return {widget.mapTo(&window_, QPoint()), widget.size()};
    }

    void checkTabOrder() {
        const std::vector<QWidget*> stops = tabStops();
        for (std::size_t i = 1; i < stops.size(); ++i) {
            const QRect from = placeOf(*stops[i - 1]);
            const QRect to = placeOf(*stops[i]);
            const bool goes_up = to.bottom() <= from.top() && to.left() <= from.left();
            const bool goes_left = to.right() <= from.left() && to.center().y() <= from.bottom() &&
                                   to.center().y() >= from.top();
            EXPECT_FALSE(goes_up || goes_left)
                << place_ << ": Tab goes from " << nameOf(*stops[i - 1]) << " back to "
                << nameOf(*stops[i]);
        }
        for (QWidget* stop : stops)
            checkFocusShows(*stop);
    }

    void checkFocusShows(QWidget& widget) {
        const auto* view = qobject_cast<QAbstractItemView*>(&widget);
        const auto* button = qobject_cast<QPushButton*>(&widget);
        window_.setAttribute(Qt::WA_KeyboardFocusChange); // as the Tab key does
        window_.setFocus();
        // An empty list has nothing to show it on, and the default button looks alike to the style.
        if (!window_.isActiveWindow() || (view && view->model()->rowCount() == 0) ||
            (button && button->isDefault()))
            return;
        const QImage without = window_.grab(placeOf(widget)).toImage();
        widget.setFocus(Qt::TabFocusReason);
        if (!widget.hasFocus()) // a rule of the window moved it on
            return;
        EXPECT_TRUE(window_.grab(placeOf(widget)).toImage() != without)
            << place_ << ": " << nameOf(widget) << " does not show its focus";
    }

    QWidget& window_;
    std::string place_;
    std::map<QChar, std::vector<std::string>> mnemonics_;
};

class AccessibilityTest : public ConsoleTest, public testing::WithParamInterface<Integer> {
protected:
    AccessibilityTest() {
        set(setting::CountryCode, std::to_string(GetParam()));
        set(setting::WindowXsize, "11400");
        set(setting::WindowYsize, "7200");
    }

    static void walk(QWidget& window, const std::string& place) {
        QApplication::processEvents();
        EXPECT_LE(window.frameGeometry().height(), 560) << place << ": too high for a small screen";
        EXPECT_LE(window.frameGeometry().width(), 1024) << place;
        Walk(window, place).check();
    }

    // Walks the dialog that Properties brings up for a row.
    void walkEditor(const char* node_key, int row, const std::function<void(QDialog&)>& act = {}) {
        clickNode(node_key);
        clickRow(row);
        window().grab(); // which lays out what is made ahead, too
        inDialog([this] { trigger("PropertiesMenu"); },
                 [&](QDialog& dialog) {
                     walk(dialog, std::string(node_key) + ' ' + std::to_string(row));
                     if (act)
                         act(dialog);
                     dialog.reject();
                 });
    }

    // Walks a dialog that a button of another one brings up.
    void walkChild(QDialog& parent, const char* button) {
        inDialog([&] { parent.findChild<QAbstractButton*>(button)->click(); },
                 [&](QDialog& dialog) {
                     walk(dialog, button);
                     dialog.reject();
                 });
    }
};

TEST_P(AccessibilityTest, MainWindow) {
    ASSERT_TRUE(start());
    walk(window(), "logged out");
    inDialog([this] { trigger("LoginMenu"); },
             [](QDialog& login) {
                 walk(login, "login");
                 login.findChild<QAbstractButton*>("btnOptions")->click();
                 walk(login, "login with location");
                 login.reject();
             });
    logIn();
    for (const char* key :
         {"servername", "loginaccount", "schedule", "admin", "logs", "options", "smtpserver",
          "smtpforward", "uucpdaemon", "uucphosts", "outbox", "uucpmonitor"}) {
        clickNode(key);
        walk(window(), key);
    }
    trigger("FilterRows");
    walk(window(), "filter");
    inDialog([this] { trigger("AboutMenu"); },
             [](QDialog& about) {
                 walk(about, "about");
                 about.reject();
             });
}

TEST_P(AccessibilityTest, HelpAndContextMenus) {
    logIn();
    trigger("ContentsMenu");
    for (QWidget* top : QApplication::topLevelWidgets())
        if (top->objectName() == "HelpWindow" && top->isVisible()) {
            auto* tabs = top->findChild<QTabWidget*>();
            for (int tab = 0; tab < tabs->count(); ++tab) {
                tabs->setCurrentIndex(tab);
                walk(*top, "help " + std::to_string(tab));
            }
            top->close();
        }
    for (const char* key :
         {"loginaccount", "schedule", "logs", "uucphosts", "outbox", "uucpmonitor"}) {
        clickNode(key);
        emit list().contextMenuWanted(window().mapToGlobal(QPoint(300, 100)));
        auto* menu = window().findChild<QMenu*>("ContextMenu");
        std::map<QChar, QString> letters;
        for (const QAction* entry : menu->actions()) {
            const qsizetype at = entry->text().indexOf('&');
            if (at < 0)
                continue;
            QString& other = letters[entry->text()[at + 1].toUpper()];
            EXPECT_TRUE(other.isEmpty())
                << key << ": " << entry->text().toStdString() << ", " << other.toStdString();
            other = entry->text();
        }
        menu->close();
    }
}

TEST_P(AccessibilityTest, MessageBoxes) {
    logIn();
    std::vector<std::string> texts;
    boxes.takeAll(texts, [](QMessageBox& box) { walk(box, box.text().toStdString()); });
    select("schedule", 0);
    trigger("DeleteMenu");
    select("outbox", 0);
    neverReply(ObjectClass::OutboxMail);
    inRequest([this] { trigger("Refreshmenu"); }, [this] { loseConnection(); });
    EXPECT_EQ(texts.size(), 2U) << "a question and a loss";
}

TEST_P(AccessibilityTest, Editors) {
    logIn();
    walkEditor("loginaccount", 0);
    walkEditor("admin", 0);
    walkEditor("logs", 0);
    walkEditor("uucpdaemon", 0);
    walkEditor("schedule", 0);
    walkEditor("schedule", 2);
}

TEST_P(AccessibilityTest, HostDialog) {
    logIn();
    for (int host = 0; host < list().model()->rowCount() || host == 0; ++host)
        walkEditor("uucphosts", host, [&](QDialog& dialog) {
            auto* tabs = dialog.findChild<QTabWidget*>("SysSetupTab");
            for (int page = 1; page < tabs->count(); ++page) {
                tabs->setCurrentIndex(page);
                walk(dialog, "host " + std::to_string(host) + " page " + std::to_string(page));
            }
            if (host > 0)
                return;
            walkChild(dialog, "Modems");
            tabs->setCurrentIndex(3);
            walkChild(dialog, dialog.findChild<QAbstractButton*>("BläddraButton") ? "BläddraButton"
                                                                                  : "BrowseButton");
        });
}

INSTANTIATE_TEST_SUITE_P(Languages, AccessibilityTest, testing::Values(kEnglish, kSwedish),
                         [](const auto& language) {
                             return language.param == kEnglish ? "English" : "Swedish";
                         });

} // namespace
} // namespace tollwick
