#include "site/field_json.h"

#include <charconv>
#include <cmath>
#include <limits>

namespace tollwick {
namespace {

const QString kHex = QStringLiteral("hex");

[[noreturn]] void fail(const QString& place, const QString& expected) {
    throw SiteFileError(place.isEmpty() ? expected : place + QStringLiteral(": ") + expected);
}

template <class Number>
void wholeNumberFromJson(const QJsonValue& json, const QString& place, Number& value) {
    using Limits = std::numeric_limits<Number>;
    const double number = json.toDouble(std::numeric_limits<double>::quiet_NaN());
    if (!(number >= Limits::min() && number <= Limits::max()) || number != std::floor(number))
        fail(place, QStringLiteral("a whole number from %1 to %2 is expected")
                        .arg(Limits::min())
                        .arg(Limits::max()));
    value = static_cast<Number>(number);
}

} // namespace

QJsonValue toJson(Integer value) {
    return QJsonValue(static_cast<int>(value));
}

QJsonValue toJson(Long value) {
    return QJsonValue(static_cast<int>(value));
}

QJsonValue toJson(Single value) {
    if (!std::isfinite(value) || (value == 0 && std::signbit(value))) {
        char bytes[sizeof value];
        storeLittleEndian(value, bytes);
        return hexJson({bytes, sizeof bytes});
    }
    // The shortest decimal number that gives the value back, 4.1 and not 4.0999999046325684.
    char digits[32];
    const auto written = std::to_chars(digits, digits + sizeof digits, value);
    double number = 0;
    std::from_chars(digits, written.ptr, number);
    return QJsonValue(static_cast<Single>(number) == value ? number : double(value));
}

QJsonValue toJson(const QString& value) {
    return QJsonValue(value);
}

QJsonValue toJson(const VarText& value) {
    const std::string text = fromAnsi(value.bytes());
    return toAnsi(text) == value.bytes() ? toJson(QString::fromStdString(text))
                                         : hexJson(value.bytes());
}

QJsonValue hexJson(std::string_view bytes) {
    const QByteArray raw(bytes.data(), static_cast<qsizetype>(bytes.size()));
    return QJsonObject{{kHex, QString::fromLatin1(raw.toHex())}};
}

void fromJson(const QJsonValue& json, const QString& place, Integer& value) {
    wholeNumberFromJson(json, place, value);
}

void fromJson(const QJsonValue& json, const QString& place, Long& value) {
    wholeNumberFromJson(json, place, value);
}

void fromJson(const QJsonValue& json, const QString& place, Single& value) {
    if (isHex(json)) {
        std::string bytes = hexBytes(json, place, sizeof value);
        bytes.resize(sizeof value);
        value = loadLittleEndian<Single>(bytes.data());
        return;
    }
    const double number = json.toDouble(std::numeric_limits<double>::quiet_NaN());
    if (!(std::abs(number) <= std::numeric_limits<Single>::max()))
        fail(place, QStringLiteral("a number is expected"));
    value = static_cast<Single>(number);
}

void fromJson(const QJsonValue& json, const QString& place, QString& value) {
    if (!json.isString())
        fail(place, QStringLiteral("a text is expected"));
    value = json.toString();
}

void fromJson(const QJsonValue& json, const QString& place, VarText& value) {
    value.setBytes(isHex(json) ? hexBytes(json, place, VarText::max_bytes)
                               : ansiBytes(json, place, VarText::max_bytes));
}

bool isHex(const QJsonValue& json) {
    return json.isObject();
}

std::string hexBytes(const QJsonValue& json, const QString& place, std::size_t max_size) {
    const QJsonObject object = json.toObject();
    const QByteArray digits = object.value(kHex).toString().toLatin1();
    const QByteArray bytes = QByteArray::fromHex(digits);
    // fromHex() skips what is no digit, so the way back tells.
    if (object.size() != 1 || !object.value(kHex).isString() || bytes.toHex() != digits.toLower())
        fail(place, QStringLiteral("{\"hex\": \"...\"} with two digits to a byte is expected"));
    if (static_cast<std::size_t>(bytes.size()) > max_size)
        fail(place, QStringLiteral("at most %1 bytes are expected").arg(max_size));
    return bytes.toStdString();
}

std::string ansiBytes(const QJsonValue& json, const QString& place, std::size_t max_size) {
    if (!json.isString())
        fail(place, QStringLiteral("a text or {\"hex\": \"...\"} is expected"));
    // Some editors write a letter and its accent as two characters.
    const std::string as_written = json.toString().toStdString();
    std::string bytes = toAnsi(as_written);
    if (fromAnsi(bytes) != as_written) {
        const std::string composed =
            json.toString().normalized(QString::NormalizationForm_C).toStdString();
        bytes = toAnsi(composed);
        if (fromAnsi(bytes) != composed)
            fail(place, QStringLiteral("holds a character that the ANSI code page lacks"));
    }
    if (bytes.size() > max_size)
        fail(place, QStringLiteral("at most %1 characters are expected").arg(max_size));
    return bytes;
}

ObjectReader::ObjectReader(const QJsonValue& json, const QString& place)
    : object_(json.toObject()), place_(place) {
    if (!json.isObject())
        fail(place, QStringLiteral("an object {...} is expected"));
}

QString ObjectReader::placeOf(const QString& key) const {
    return place_.isEmpty() ? key : place_ + u'.' + key;
}

} // namespace tollwick
