// The fields of a record as a person writes and reads them: by their names in the site file, with
// words where numbers have names.
#pragma once

#include "base/string_table.h"
#include "rules/host_entry.h"
#include "wire/record_packing.h"

#include <QString>

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tollwick {

// Why a text is no value of a field; `part` is what "%1" of the text stands for.
struct FieldProblem {
    Text text;
    std::string part;
};

// A word in place of a number; the same in every language.
struct FieldWord {
    std::string_view word;
    Long number;
};
// The words that a field of this name takes; none for a plain number or a text.
std::span<const FieldWord> wordsOf(std::string_view field_name);

// Whether the field is a secret, which is shown to nobody and never part of a command line.
bool isSecret(std::string_view field);

// The word for the field's value, such as "friday" for 4 of "day"; nothing where there is none.
std::optional<QString> wordOf(std::string_view field, Long value);

template <class Number>
QString fieldText(std::string_view field, Number value) requires std::is_arithmetic_v<Number> {
    if constexpr (std::is_integral_v<Number>)
        return wordOf(field, value).value_or(QString::number(value));
    else
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

namespace detail {

std::optional<FieldProblem> readNumber(std::string_view field_name, const std::string& text,
                                       Long least, Long most, Long& number);
// What keeps the text from standing in a field of this width, in bytes of the code page.
std::optional<FieldProblem> textProblem(const std::string& text, std::size_t width);

inline std::optional<FieldProblem> set(std::string_view name, const std::string& text,
                                       Integer& field) {
    Long number = field;
    const auto problem = readNumber(name, text, INT16_MIN, INT16_MAX, number);
    field = static_cast<Integer>(number);
    return problem;
}
inline std::optional<FieldProblem> set(std::string_view name, const std::string& text,
                                       Long& field) {
    return readNumber(name, text, INT32_MIN, INT32_MAX, field);
}
inline std::optional<FieldProblem> set(std::string_view, const std::string& text, VarText& field) {
    const auto problem = textProblem(text, VarText::max_bytes);
    if (!problem)
        field = text;
    return problem;
}
template <std::size_t N>
std::optional<FieldProblem> set(std::string_view name, const std::string& text,
                                FixedText<N>& field) {
    const bool is_secret = isSecret(name);
    // Scrambled, a password takes twice its length and two characters more.
    const auto problem = textProblem(text, is_secret ? (N - 2) / 2 : N);
    if (!problem && is_secret)
        field.setBytes(scrambledPassword(text));
    else if (!problem)
        field = text;
    return problem;
}
// What has no form for people.
template <class Value>
std::optional<FieldProblem> set(std::string_view, const std::string&, Value&) {
    return FieldProblem{Text::CtlUnknownField, {}};
}

// The value for people; of a secret only whether there is one. UTF-8.
template <class Value>
std::string shown(std::string_view name, const Value& value) {
    const std::string text = fieldText(name, value).toStdString();
    return isSecret(name) && !text.empty() ? "***" : text;
}

} // namespace detail

// Gives the field of this name the value that the text (UTF-8) stands for, or tells why it is none;
// the record is what it was then.
template <class Record>
std::optional<FieldProblem> setFieldText(Record& record, std::string_view name,
                                         const std::string& text) {
    std::optional<FieldProblem> problem = FieldProblem{Text::CtlUnknownField, {}};
    forEachField<Record>([&](const auto& field) {
        if (field.name == name)
            problem = detail::set(name, text, record.*field.member);
    });
    return problem;
}

// The value of the field of this name, for people; UTF-8. Of a secret only whether there is one.
template <class Record>
std::string shownField(const Record& record, std::string_view name) {
    std::string text;
    forEachField<Record>([&](const auto& field) {
        if (field.name == name)
            text = detail::shown(name, record.*field.member);
    });
    return text;
}

// Names and values of all fields that have a name, as shownField() has them.
template <class Record>
std::vector<std::vector<std::string>> fieldRows(const Record& record) {
    std::vector<std::vector<std::string>> rows;
    forEachField<Record>([&](const auto& field) {
        if (!field.name.starts_with("unnamed_"))
            rows.push_back(
                {std::string(field.name), detail::shown(field.name, record.*field.member)});
    });
    return rows;
}

} // namespace tollwick
