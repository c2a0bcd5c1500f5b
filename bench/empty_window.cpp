// The floor of the start: a window with the same kinds of widgets as the console's, and nothing in
// them.
#include <QtWidgets>

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
    QWidget* const hidden[] = {new QWidget,   new QFrame,      new QProgressBar, new QCheckBox,
                               new QLineEdit, new QToolButton, new QLabel};
    for (QWidget* part : hidden) {
        part->setParent(pane);
        part->hide();
    }
    window.setCentralWidget(pane);
    window.statusBar()->addWidget(new QLabel, 1);
    window.statusBar()->addWidget(new QProgressBar);
    window.statusBar()->addWidget(new QLabel);
    for (QProgressBar* bar : window.statusBar()->findChildren<QProgressBar*>())
        bar->hide();
    QTimer timer;
    timer.start(100);
    window.show();
    return QApplication::exec();
}
