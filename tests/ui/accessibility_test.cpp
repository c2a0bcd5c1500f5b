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

template <class... Kinds>
bool isAny(const QObject* object) {
    return (qobject_cast<const Kinds*>(object) || ...);
}

bool isControl(const QWidget& widget) {
    return isAny<QAbstractButton, QLineEdit, QComboBox, QTextEdit, QPlainTextEdit, QProgressBar,
                 QAbstractItemView>(&widget) &&
           !isAny<QHeaderView>(&widget);
}

// Parts that a control of Qt's own is made of.
bool isInner(const QWidget& widget) {
    return widget.objectName().startsWith("qt_") ||
           isAny<QComboBox, QLineEdit, QTabBar>(widget.parentWidget());
}

// No letter stands for two of the entries.
void checkLetters(const QList<QAction*>& entries) {
    std::map<QChar, QString> letters;
    for (const QAction* entry : entries) {
        if (entry->isSeparator())
            continue;
        const qsizetype at = entry->text().indexOf('&');
        EXPECT_GE(at, 0) << entry->text().toStdString() << " has no mnemonic";
        QString& other = letters[entry->text()[at + 1].toUpper()];
        EXPECT_TRUE(other.isEmpty()) << entry->text().toStdString() << ", " << other.toStdString();
        other = entry->text();
    }
}

class Walk {
public:
    Walk(QWidget& window, std::string place) : window_(window), place_(std::move(place)) {}

    void check() {
        SCOPED_TRACE(place_);
        for (QWidget* widget : window_.findChildren<QWidget*>()) {
            if (!widget->isVisible() || widget->window() != &window_ || isInner(*widget))
                continue;
            SCOPED_TRACE(nameOf(*widget));
            checkName(*widget);
            collectMnemonics(*widget);
            checkFits(*widget);
        }
        if (auto* form = qobject_cast<QMainWindow*>(&window_))
            for (const QAction* top : form->menuBar()->actions()) {
                collect(top->text(), top->text().toStdString());
                checkLetters(top->menu()->actions());
            }
        for (const auto& [letter, names] : mnemonics_)
            EXPECT_EQ(names.size(), 1U) << QString(letter).toStdString() << " stands for "
                                        << names.front() << " and " << names.back();
        checkTabOrder();
    }

private:
    void checkName(const QWidget& widget) {
        if (!isControl(widget))
            return;
        QAccessibleInterface* interface =
            QAccessible::queryAccessibleInterface(const_cast<QWidget*>(&widget));
        EXPECT_FALSE(interface->text(QAccessible::Name).trimmed().isEmpty()) << "has no name";
        EXPECT_TRUE(!isAny<QDialog>(&window_) || !widget.accessibleDescription().isEmpty())
            << "has no description";
        // The buttons of the toolbar are known by their actions, those of a box by their role.
        EXPECT_TRUE(!widget.objectName().isEmpty() ||
                    (isAny<QToolBar, QDialogButtonBox>(widget.parentWidget())));
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
        EXPECT_GE(widget.width(), wanted.width()) << "is cut off";
        EXPECT_GE(widget.height(), wanted.height()) << "is cut off";
        // Whole within the window, and within all that lies around it.
        EXPECT_TRUE(!isControl(widget) || window_.rect().contains(placeOf(widget)));
        if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
            for (int i = 0; i < tabs->count(); ++i)
                EXPECT_TRUE(tabs->rect().contains(tabs->tabRect(i))) << "tab " << i;
        } else if (const auto* list = qobject_cast<const ListView*>(&widget)) {
            for (int i = 0; i < list->header()->count(); ++i)
                EXPECT_GE(list->columnWidth(i),
                          list->fontMetrics().horizontalAdvance(
                              list->model()->headerData(i, Qt::Horizontal).toString()))
                    << "column " << i;
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
                << "Tab goes from " << nameOf(*stops[i - 1]) << " back to " << nameOf(*stops[i]);
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
            << nameOf(widget) << " does not show its focus";
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

    // Walks the dialog that `open` brings up, and then acts in it.
    void walkDialog(const Work& open, const std::string& place, const Act& act = {}) {
        inDialog(open, [&](QDialog& dialog) {
            walk(dialog, place);
            if (act)
                act(dialog);
            dialog.reject();
        });
    }

    // The same for the dialog that Properties brings up for a row.
    void walkEditor(const char* node_key, int row, const Act& act = {}) {
        select(node_key, row);
        window().grab(); // which lays out what is made ahead, too
        walkDialog([this] { trigger("PropertiesMenu"); },
                   std::string(node_key) + ' ' + std::to_string(row), act);
    }
};

TEST_P(AccessibilityTest, MainWindow) {
    ASSERT_TRUE(start());
    walk(window(), "logged out");
    walkDialog([this] { trigger("LoginMenu"); }, "login",
               [](QDialog& login) {
                   login.findChild<QAbstractButton*>("btnOptions")->click();
                   walk(login, "login with location");
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
    walkDialog([this] { trigger("AboutMenu"); }, "about");
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
        SCOPED_TRACE(key);
        checkLetters(menu->actions());
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
    for (const char* key : {"loginaccount", "admin", "logs", "uucpdaemon", "schedule"})
        walkEditor(key, 0);
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
            for (const char* button : {"Modems", "BläddraButton"})
                if (host == 0) {
                    auto* opener = child<QAbstractButton>(dialog, button);
                    tabs->setCurrentIndex(*button == 'M' ? 4 : 3);
                    walkDialog([&] { opener->click(); }, button);
                }
        });
}

INSTANTIATE_TEST_SUITE_P(Languages, AccessibilityTest, testing::Values(kEnglish, kSwedish),
                         [](const auto& language) {
                             return language.param == kEnglish ? "English" : "Swedish";
                         });

} // namespace
} // namespace tollwick
