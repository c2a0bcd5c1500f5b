#include "ui/common/swedish_qt_texts.h"

#include <map>
#include <string_view>

namespace tollwick {
namespace {

const std::map<std::string_view, const char*>& texts() {
    static const std::map<std::string_view, const char*> table = {
#define QT_TEXT(english, swedish) {english, swedish},
#include "resources/qt_sv.def"
#undef QT_TEXT
    };
    return table;
}

} // namespace

QString SwedishQtTexts::translate(const char*, const char* source, const char*, int) const {
    const auto found = texts().find(source);
    return found == texts().end() ? QString() : QString::fromUtf8(found->second);
}

} // namespace tollwick
