#include "ui/help/help_window.h"

#include "base/files.h"
#include "ui/common/icons.h"
#include "ui/common/to_qstring.h"

#include <QAction>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextTable>
#include <QToolButton>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QUrl>
#include <QVBoxLayout>

namespace tollwick {
namespace {

// The id of the topic that a tree item or a list row stands for.
constexpr int kTopicRole = Qt::UserRole;
constexpr QSize kWindowSize(720, 480);
constexpr int kListWidth = 230;
constexpr int kPageMargin = 12;
constexpr int kHeadingSpace = 14;
constexpr int kCellPadding = 4;

void addEntries(QTreeWidgetItem* parent, const std::vector<HelpEntry>& entries) {
    for (const HelpEntry& entry : entries) {
        auto* item = new QTreeWidgetItem(parent, {toQString(entry.title)});
        item->setData(0, kTopicRole, toQString(entry.topic));
        addEntries(item, entry.children);
    }
}

QListWidgetItem* addRow(QListWidget* list, const QString& text, const HelpTopic& topic) {
    auto* row = new QListWidgetItem(text, list);
    row->setData(kTopicRole, toQString(topic.id));
    row->setToolTip(toQString(topic.title));
    return row;
}

// Gives headings and tables the air that a page of Markdown lacks.
void spaceOut(QTextDocument& page, const QColor& lines) {
    for (QTextBlock block = page.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level == 0)
            continue;
        QTextBlockFormat format = block.blockFormat();
        format.setTopMargin(block == page.begin() ? 0 : kHeadingSpace);
        format.setBottomMargin(kHeadingSpace / 2.0);
        QTextCursor(block).setBlockFormat(format);
    }
    for (QTextFrame* frame : page.rootFrame()->childFrames())
        if (auto* table = qobject_cast<QTextTable*>(frame)) {
            QTextTableFormat format = table->format();
            format.setBorderCollapse(true);
            format.setBorder(1);
            format.setBorderBrush(lines);
            format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
            format.setCellPadding(kCellPadding);
            format.setCellSpacing(0);
            format.setTopMargin(kHeadingSpace / 2.0);
            format.setBottomMargin(kHeadingSpace);
            table->setFormat(format);
        }
}

// A text box over a list, as one tab.
QWidget* stacked(QLineEdit* edit, QListWidget* list) {
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->addWidget(edit);
    layout->addWidget(list);
    list->setSpacing(1);
    tab->setFocusProxy(edit);
    return tab;
}

} // namespace

HelpWindow::HelpWindow(const StringTable& texts, QWidget* parent)
    : QWidget(parent, Qt::Window), texts_(texts), tabs_(new QTabWidget), contents_(new QTreeWidget),
      page_(new QTextBrowser) {
    setObjectName("HelpWindow");
    setWindowTitle(toQString(texts_(Text::HelpTitle)));
    setWindowIcon(imageIcon("tollwick"));
    resize(kWindowSize);
    makeActions();
    setUpContents();
    tabs_->setObjectName("HelpTabs");
    tabs_->addTab(contents_, toQString(texts_(Text::HelpContentsTab)));
    tabs_->addTab(makeIndexTab(), toQString(texts_(Text::HelpIndexTab)));
    tabs_->addTab(makeSearchTab(), toQString(texts_(Text::HelpSearchTab)));
    // Ready to type after a click on a tab; who walks along the tabs with the keys stays there.
    connect(tabs_, &QTabWidget::currentChanged, this, [this] {
        if (!tabs_->tabBar()->hasFocus())
            tabs_->currentWidget()->setFocus();
    });

    page_->setObjectName("HelpPage");
    page_->setAccessibleName(toQString(texts_(Text::HelpPage)));
    page_->setOpenLinks(false);
    page_->document()->setDocumentMargin(kPageMargin);
    connect(page_, &QTextBrowser::anchorClicked, this, &HelpWindow::followLink);

    auto* splitter = new QSplitter;
    splitter->setObjectName("HelpSplitter");
    splitter->addWidget(tabs_);
    splitter->addWidget(page_);
    splitter->setChildrenCollapsible(false);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({kListWidth, kWindowSize.width() - kListWidth});

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(makeButtons());
    layout->addWidget(splitter, 1);

    QWidget* previous = tabs_;
    for (QWidget* next : std::initializer_list<QWidget*>{contents_, index_filter_, index_,
                                                         search_text_, results_, page_}) {
        setTabOrder(previous, next);
        previous = next;
    }
    contents_->setFocus();
}

void HelpWindow::setUpContents() {
    contents_->setObjectName("HelpContents");
    contents_->setAccessibleName(toQString(texts_(Text::HelpContentsTab)));
    contents_->setHeaderHidden(true);
    // A narrow list scrolls sideways instead of cutting titles off.
    contents_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    contents_->header()->setStretchLastSection(false);
    contents_->setFrameShape(QFrame::NoFrame);
    connect(contents_, &QTreeWidget::itemSelectionChanged, this, &HelpWindow::showTree);
    connect(contents_, &QTreeWidget::itemClicked, this, &HelpWindow::showTree);
}

QLayout* HelpWindow::makeButtons() {
    auto* buttons = new QHBoxLayout;
    for (QAction* action : {back_, forward_}) {
        auto* button = new QToolButton;
        button->setObjectName(action->objectName());
        button->setDefaultAction(action);
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        button->setAccessibleName(action->text());
        buttons->addWidget(button);
    }
    buttons->addStretch();
    return buttons;
}

void HelpWindow::makeActions() {
    const auto make = [this](const char* name, Text caption, QStyle::StandardPixmap icon,
                             Qt::Key key, int step) {
        auto* action = new QAction(style()->standardIcon(icon), toQString(texts_(caption)), this);
        action->setObjectName(name);
        action->setShortcut(QKeySequence(Qt::ALT | key));
        action->setEnabled(false);
        connect(action, &QAction::triggered, this, [this, step] { travel(step); });
        addAction(action);
        return action;
    };
    back_ = make("HelpBack", Text::HelpBack, QStyle::SP_ArrowBack, Qt::Key_Left, -1);
    forward_ = make("HelpForward", Text::HelpForward, QStyle::SP_ArrowForward, Qt::Key_Right, 1);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, this, &QWidget::close);
    connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
        tabs_->setCurrentIndex(tabs_->count() - 1);
        search_text_->setFocus();
        search_text_->selectAll();
    });
}

QWidget* HelpWindow::makeIndexTab() {
    index_filter_ = new QLineEdit;
    index_filter_->setObjectName("HelpIndexFilter");
    index_filter_->setAccessibleName(toQString(texts_(Text::FilterHint)));
    index_filter_->setPlaceholderText(toQString(texts_(Text::FilterHint)));
    index_filter_->setClearButtonEnabled(true);
    connect(index_filter_, &QLineEdit::textChanged, this, &HelpWindow::filterIndex);

    index_ = new QListWidget;
    index_->setObjectName("HelpIndex");
    index_->setAccessibleName(toQString(texts_(Text::HelpIndexTab)));
    connect(index_, &QListWidget::itemSelectionChanged, this,
            [this] { showRow(index_->selectedItems().value(0)); });
    connect(index_, &QListWidget::itemClicked, this, &HelpWindow::showRow);
    return stacked(index_filter_, index_);
}

QWidget* HelpWindow::makeSearchTab() {
    search_text_ = new QLineEdit;
    search_text_->setObjectName("HelpSearchText");
    search_text_->setAccessibleName(toQString(texts_(Text::HelpSearchHint)));
    search_text_->setPlaceholderText(toQString(texts_(Text::HelpSearchHint)));
    search_text_->setClearButtonEnabled(true);

    results_ = new QListWidget;
    results_->setObjectName("HelpSearchResults");
    results_->setAccessibleName(toQString(texts_(Text::HelpSearchResults)));
    connect(search_text_, &QLineEdit::textChanged, this, &HelpWindow::search);
    connect(search_text_, &QLineEdit::returnPressed, this, [this] { results_->setCurrentRow(0); });
    connect(results_, &QListWidget::itemSelectionChanged, this,
            [this] { showRow(results_->selectedItems().value(0)); });
    connect(results_, &QListWidget::itemClicked, this, &HelpWindow::showRow);
    return stacked(search_text_, results_);
}

bool HelpWindow::open(const std::string& topics_file, const std::string& contents_file) {
    const auto read = [](const std::string& file) {
        return readWholeFile(toPath(file), HelpBook::kMaxFileSize).value_or(std::string());
    };
    book_ = HelpBook::parse(read(topics_file), read(contents_file));
    visits_.clear();
    fillContents();
    fillIndex();
    search(search_text_->text());
    if (!book_.firstTopic()) {
        back_->setEnabled(false);
        forward_->setEnabled(false);
        page_->setPlainText(toQString(texts_(Text::HelpNotFound)));
        return false;
    }
    showTopic({});
    return true;
}

void HelpWindow::showTopic(const std::string& id) {
    const HelpTopic* topic = book_.topic(id);
    if (!topic)
        topic = book_.firstTopic();
    if (!topic || (!visits_.empty() && visits_[current_].topic == topic->id))
        return;
    if (!visits_.empty()) {
        visits_[current_].scroll = page_->verticalScrollBar()->value();
        visits_.resize(current_ + 1);
    }
    visits_.push_back({topic->id});
    current_ = visits_.size() - 1;
    display(visits_[current_]);
}

void HelpWindow::fillContents() {
    const QSignalBlocker quiet(contents_);
    contents_->clear();
    addEntries(contents_->invisibleRootItem(), book_.contents());
    contents_->expandAll();
}

void HelpWindow::fillIndex() {
    const QSignalBlocker quiet(index_);
    index_->clear();
    for (const HelpKeyword& entry : book_.index())
        for (const std::string& id : entry.topics) {
            const HelpTopic& topic = *book_.topic(id);
            QString text = toQString(entry.keyword);
            if (entry.topics.size() > 1)
                text += QStringLiteral(" \u2013 ") + toQString(topic.title);
            addRow(index_, text, topic);
        }
    filterIndex(index_filter_->text());
}

void HelpWindow::filterIndex(const QString& part) {
    for (int i = 0; i < index_->count(); ++i) {
        QListWidgetItem* row = index_->item(i);
        row->setHidden(!row->text().contains(part.trimmed(), Qt::CaseInsensitive));
    }
}

void HelpWindow::search(const QString& words) {
    const QSignalBlocker quiet(results_);
    results_->clear();
    for (const HelpTopic* topic : book_.search(words.toStdString()))
        addRow(results_, toQString(topic->title), *topic);
}

void HelpWindow::showTree() {
    const QList<QTreeWidgetItem*> selected = contents_->selectedItems();
    if (selected.isEmpty())
        return;
    const QString id = selected.first()->data(0, kTopicRole).toString();
    if (!id.isEmpty())
        showTopic(id.toStdString());
}

void HelpWindow::showRow(const QListWidgetItem* row) {
    if (row)
        showTopic(row->data(kTopicRole).toString().toStdString());
}

void HelpWindow::followLink(const QUrl& address) {
    const std::string id = address.path(QUrl::FullyDecoded).toStdString();
    if (book_.topic(id))
        showTopic(id);
}

void HelpWindow::travel(int step) {
    visits_[current_].scroll = page_->verticalScrollBar()->value();
    current_ = step < 0 ? current_ - 1 : current_ + 1;
    display(visits_[current_]);
}

void HelpWindow::display(const Visit& visit) {
    const HelpTopic& topic = *book_.topic(visit.topic);
    const bool has_heading = topic.text.starts_with("# ");
    page_->setMarkdown(
        toQString(has_heading ? topic.text : "# " + topic.title + "\n\n" + topic.text));
    spaceOut(*page_->document(), palette().color(QPalette::Mid));
    page_->verticalScrollBar()->setValue(visit.scroll);
    back_->setEnabled(current_ > 0);
    forward_->setEnabled(current_ + 1 < visits_.size());

    // The contents follow the page. A topic may stand in them more than once.
    const QSignalBlocker quiet(contents_);
    const QString id = toQString(topic.id);
    if (QTreeWidgetItem* item = contents_->currentItem();
        item && item->isSelected() && item->data(0, kTopicRole) == id)
        return;
    contents_->setCurrentItem(nullptr);
    for (QTreeWidgetItemIterator item(contents_); *item; ++item)
        if ((*item)->data(0, kTopicRole) == id) {
            contents_->setCurrentItem(*item);
            break;
        }
}

} // namespace tollwick
