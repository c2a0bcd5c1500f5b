// The help: contents, index and search on the left, the page on the right.
#pragma once

#include "base/help_book.h"
#include "base/string_table.h"

#include <QWidget>

#include <string>
#include <vector>

class QAction;
class QLayout;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QTabWidget;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;
class QUrl;

namespace tollwick {

class HelpWindow : public QWidget {
    Q_OBJECT
public:
    explicit HelpWindow(const StringTable& texts, QWidget* parent = nullptr);

    [[nodiscard]] const HelpBook& book() const { return book_; }

    // Reads the help and shows its first topic. The paths are UTF-8. Without a contents file the
    // contents list all topics; false without topics, which the page then tells.
    bool open(const std::string& topics_file, const std::string& contents_file);

    // The first topic of the contents when the id is unknown or empty.
    void showTopic(const std::string& id);

private:
    // A topic that has been shown, and how far down it was left.
    struct Visit {
        std::string topic;
        int scroll = 0;
    };

    void makeActions();
    void setUpContents();
    QLayout* makeButtons();
    QWidget* makeIndexTab();
    QWidget* makeSearchTab();

    void fillContents();
    void fillIndex();
    void filterIndex(const QString& part);
    void search(const QString& words);
    // Shows what a row of one of the lists stands for.
    void showTree();
    void showRow(const QListWidgetItem* row);
    void followLink(const QUrl& address);

    // `step` is -1 for back and 1 for forward.
    void travel(int step);
    void display(const Visit& visit);

    StringTable texts_;
    HelpBook book_;
    std::vector<Visit> visits_;
    std::size_t current_ = 0; // the visit that is shown

    QAction* back_ = nullptr;
    QAction* forward_ = nullptr;
    QTabWidget* tabs_;
    QTreeWidget* contents_;
    QLineEdit* index_filter_ = nullptr;
    QListWidget* index_ = nullptr;
    QLineEdit* search_text_ = nullptr;
    QListWidget* results_ = nullptr;
    QTextBrowser* page_;
};

} // namespace tollwick
