// Describes every control of a dialog to assistive tools by the frames around it, or else by the
// dialog's title: "Password:" alone does not tell which one.
#pragma once

#include <QObject>

namespace tollwick {

class ControlDescriber : public QObject {
    Q_OBJECT
public:
    // Works on every dialog of the program from then on.
    explicit ControlDescriber(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tollwick
