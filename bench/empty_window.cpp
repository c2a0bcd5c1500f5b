// The floor of the start: a window with the same kinds of widgets as the console's, and nothing in
// them.
#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QProgressBar>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(496, 349);
    for (const int entries : {7, 7, 4}) {
        QMenu* menu = window.menuBar()->addMenu("Menu");
        for (int i = 0; i < entries; ++i)
            menu->addAction("Entry");
    }
    QToolBar* toolbar = window.addToolBar(QString());
    for (int i = 0; i < 6; ++i)
        toolbar->addAction("Button");

    auto* pane = new QWidget;
    auto* tree = new QTreeWidget(pane);
    auto* list = new QTreeView(pane);
    tree->setHeaderHidden(true);
    tree->setGeometry(0, 0, 199, 280);
    list->setModel(new QStandardItemModel(list));
    list->setGeometry(205, 0, 291, 280);
    (new QWidget(pane))->setGeometry(199, 0, 6, 280);
    // What is below the list, and in the status bar, only at times.
    auto* hidden = new QWidget(pane);
    auto* layout = new QHBoxLayout(hidden);
    for (QWidget* widget :
         std::initializer_list<QWidget*>{new QProgressBar, new QWidget, new QCheckBox,
                                         new QLineEdit, new QLabel, new QToolButton, new QFrame})
        layout->addWidget(widget);
    hidden->hide();
    window.setCentralWidget(pane);
    window.statusBar()->addWidget(new QLabel, 1);
    for (QWidget* part :
         std::initializer_list<QWidget*>{new QLabel, new QProgressBar, new QLabel}) {
        window.statusBar()->addWidget(part);
        part->hide();
    }
    QTimer timer;
    timer.start(100);
    window.show();
    return QApplication::exec();
}
