// Swedish for the texts that Qt itself shows, so that they speak the console's language.
#pragma once

#include <QTranslator>

namespace tollwick {

class SwedishQtTexts : public QTranslator {
    Q_OBJECT
public:
    using QTranslator::QTranslator;

    [[nodiscard]] QString translate(const char* context, const char* source,
                                    const char* disambiguation, int n) const override;
    [[nodiscard]] bool isEmpty() const override { return false; }
};

} // namespace tollwick
