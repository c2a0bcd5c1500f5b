// Single values and whole records as JSON, for the site file. A value that JSON text cannot give
// back byte for byte is written as {"hex": "..."}.
#pragma once

#include "wire/record_packing.h"
#include "wire/records.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

#include <stdexcept>

namespace tollwick {

// A value of the site file that cannot be taken, with its place ("hosts[2].day") in the message.
class SiteFileError : public std::runtime_error {
public:
    explicit SiteFileError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

QJsonValue toJson(Integer value);
QJsonValue toJson(Long value);
QJsonValue toJson(Single value);
QJsonValue toJson(const QString& value);
QJsonValue toJson(const VarText& value);
QJsonValue hexJson(std::string_view bytes);
template <std::size_t N>
QJsonValue toJson(const RawBytes<N>& value) {
    return hexJson({value.data(), N});
}
template <std::size_t N>
QJsonValue toJson(const FixedText<N>& value) {
    const std::string text = value.text();
    FixedText<N> assigned;
    assigned = text;
    if (assigned == value)
        return toJson(QString::fromStdString(text));
    return hexJson(withoutTrailingNuls(value.bytes()));
}

void fromJson(const QJsonValue& json, const QString& place, Integer& value);
void fromJson(const QJsonValue& json, const QString& place, Long& value);
void fromJson(const QJsonValue& json, const QString& place, Single& value);
void fromJson(const QJsonValue& json, const QString& place, QString& value);
void fromJson(const QJsonValue& json, const QString& place, VarText& value);

[[nodiscard]] bool isHex(const QJsonValue& json);
// The bytes of {"hex": "..."}, at most `max_size` of them.
std::string hexBytes(const QJsonValue& json, const QString& place, std::size_t max_size);
// The bytes of a string in the ANSI code page, at most `max_size` of them.
std::string ansiBytes(const QJsonValue& json, const QString& place, std::size_t max_size);

template <std::size_t N>
void fromJson(const QJsonValue& json, const QString& place, RawBytes<N>& value) {
    value = {};
    const std::string bytes = hexBytes(json, place, N);
    bytes.copy(value.data(), N);
}
template <std::size_t N>
void fromJson(const QJsonValue& json, const QString& place, FixedText<N>& value) {
    value = FixedText<N>();
    if (isHex(json)) // shorter than the field: the rest is NULs
        hexBytes(json, place, N).copy(value.data(), N);
    else
        value.setBytes(ansiBytes(json, place, N));
}

// One object of the site file while it is read. What has been taken is gone from it, so that in the
// end the unknown keys are left.
class ObjectReader {
public:
    // `place` is empty for the whole file.
    ObjectReader(const QJsonValue& json, const QString& place);

    // Leaves `value` alone when there is no such key; true when there is one.
    template <class Value>
    bool take(const QString& key, Value& value) {
        const QJsonValue json = object_.take(key);
        if (json.isUndefined())
            return false;
        fromJson(json, placeOf(key), value);
        return true;
    }
    template <class Record>
    void takeFields(Record& record) {
        forEachField<Record>([&](const auto& field) {
            take(QString::fromUtf8(field.name.data(), static_cast<qsizetype>(field.name.size())),
                 record.*field.member);
        });
    }
    QJsonValue takeValue(const QString& key) { return object_.take(key); }

    [[nodiscard]] QString placeOf(const QString& key) const;
    [[nodiscard]] const QJsonObject& unknownKeys() const { return object_; }

private:
    QJsonObject object_;
    QString place_;
};

// Sets the record's fields in `object`, whose other keys stay.
template <class Record>
void putFields(const Record& record, QJsonObject& object) {
    forEachField<Record>([&](const auto& field) {
        object.insert(
            QLatin1StringView(field.name.data(), static_cast<qsizetype>(field.name.size())),
            toJson(record.*field.member));
    });
}

} // namespace tollwick
