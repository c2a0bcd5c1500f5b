// The way to the help, for windows that do not show it themselves.
#pragma once

class QWidget;

namespace tollwick {

// A widget whose page is not the one under its object name carries that page's topic in this
// property.
inline constexpr const char* kHelpTopicProperty = "helpTopic";

class HelpPages {
public:
    virtual ~HelpPages() = default;

    // The first page, with the contents beside it.
    virtual void showContents() = 0;
    // The page of the widget or of the closest thing around it that has one; a message box has the
    // page that explains its message.
    virtual void showPageOf(const QWidget* widget) = 0;
};

} // namespace tollwick
