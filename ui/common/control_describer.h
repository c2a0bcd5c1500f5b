// Describes every control of a window to assistive tools by the frames around it, or else by the
// window's title: "Password:" alone does not tell which one.
#pragma once

#include <QObject>

namespace tollwick {

class ControlDescriber : public QObject {
    Q_OBJECT
public:
    // Works on every window of the program from then on.
    explicit ControlDescriber(QObject* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace tollwick
