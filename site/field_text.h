// The fields of records by the names that they have in a site file, as people type and read them: a
// number that has a name is that word.
#pragma once

#include "site/field_json.h"

#include <optional>

namespace tollwick {

// The word for the field's value, such as "friday" for 4 of "day"; nothing where there is none.
std::optional<QString> wordOf(std::string_view field, int value);
// The value that a word stands for in this field.
std::optional<int> valueOfWord(std::string_view field, const QString& word);

template <class Number>
QString fieldText(std::string_view field, Number value) requires std::is_arithmetic_v<Number> {
    if constexpr (std::is_same_v<Number, Integer>)
        if (const auto word = wordOf(field, value))
            return *word;
    return QString::number(value);
}
template <std::size_t N>
QString fieldText(std::string_view, const FixedText<N>& value) {
    return QString::fromStdString(value.text());
}
template <std::size_t N>
QString fieldText(std::string_view, const RawBytes<N>& value) {
    return QString::fromLatin1(QByteArray(value.data(), N).toHex());
}
inline QString fieldText(std::string_view, const VarText& value) {
    return QString::fromStdString(value.text());
}

// Whether the field is a secret, which is shown to nobody and never part of a command line.
bool isSecret(std::string_view field);

// Sets the field with this name from what was typed: a word, a number or a text. False when there
// is no such field. Throws SiteFileError when the value does not fit it.
template <class Record>
bool setField(Record& record, const QString& name, const QString& typed) {
    bool found = false;
    forEachField<Record>([&](const auto& field) {
        if (QString::fromUtf8(field.name.data(), static_cast<qsizetype>(field.name.size())) != name)
            return;
        found = true;
        auto& value = record.*field.member;
        QJsonValue json(typed);
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>) {
            bool is_number = false;
            const double number = typed.toDouble(&is_number);
            const auto word = valueOfWord(field.name, typed);
            json = word ? QJsonValue(*word) : is_number ? QJsonValue(number) : QJsonValue(typed);
        }
        fromJson(json, name, value);
    });
    return found;
}

} // namespace tollwick
