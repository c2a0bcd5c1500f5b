// The box under the list whose text narrows the list. It is up only while it is wanted.
#pragma once

#include "base/string_table.h"

#include <QWidget>

class QLabel;
class QLineEdit;

namespace tollwick {

class ListView;

class FilterBar : public QWidget {
    Q_OBJECT
public:
    FilterBar(ListView& list, const StringTable& texts, QWidget* parent);

    // Comes up, ready to type.
    void open();
    // Goes away, and with it the filter.
    void dismiss();

signals:
    // It came up or went away.
    void toggled();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showCount();

    ListView& list_;
    QLineEdit* text_;
    QLabel* count_; // rows that pass, of all
};

} // namespace tollwick
