#include "site/site_file.h"

#include "base/files.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <system_error>

namespace tollwick {
namespace {

constexpr std::size_t kMaxFileSize = 64 * 1024 * 1024;

const QString kLogin = QStringLiteral("login");
const QString kUserId = QStringLiteral("user_id");
const QString kPassword = QStringLiteral("password"); // hand-written only
const QString kPasswordHash = QStringLiteral("password_hash");
const QString kSettings = QStringLiteral("settings");
const QString kSettingsSaveAnswer = QStringLiteral("settings_save_answer");
const QString kSchedules = QStringLiteral("schedules");
const QString kHosts = QStringLiteral("hosts");
const QString kOutbox = QStringLiteral("outbox");
const QString kScripts = QStringLiteral("scripts");

struct NameList {
    QString key;
    std::vector<VarText> Site::*names;
};
const NameList kNameLists[] = {{QStringLiteral("spool_directories"), &Site::spool_directories},
                               {QStringLiteral("tapi_locations"), &Site::tapi_locations},
                               {QStringLiteral("tapi_devices"), &Site::tapi_devices},
                               {QStringLiteral("ras_entries"), &Site::ras_entries}};

// What tells a record of a list apart while the list changes.
template <class Record>
QString nameOf(const Record& record) {
    return QString::number(record.record_number);
}
template <>
QString nameOf(const OutboxRecord& record) {
    return QString::fromStdString(record.file_name.text() + '\n' + record.recipient.text());
}
template <>
QString nameOf(const ScriptRecord& record) {
    return QString::fromStdString(record.file_name.text()).toLower();
}

template <class Record>
QString placeOf(const QString& key, const Record& record) {
    return key + u'/' + nameOf(record);
}

QJsonArray takeArray(ObjectReader& file, const QString& key) {
    const QJsonValue json = file.takeValue(key);
    if (!json.isArray() && !json.isUndefined())
        throw SiteFileError(key + QStringLiteral(": a list [...] is expected"));
    return json.toArray();
}

QString elementPlace(const QString& key, qsizetype index) {
    return QStringLiteral("%1[%2]").arg(key).arg(index);
}

Credentials readLogin(ObjectReader& login) {
    QString user_id;
    QString password;
    QString hash;
    if (!login.take(kUserId, user_id))
        throw SiteFileError(login.placeOf(kUserId) + QStringLiteral(": is missing"));
    const bool has_hash = login.take(kPasswordHash, hash);
    if (login.take(kPassword, password)) // whoever wrote it by hand means it
        return {user_id, password};
    if (!has_hash)
        throw SiteFileError(login.placeOf(kPassword) + QStringLiteral(": is missing"));
    const std::optional<Credentials> credentials = Credentials::fromHash(user_id, hash);
    if (!credentials)
        throw SiteFileError(login.placeOf(kPasswordHash) +
                            QStringLiteral(": is damaged; put \"password\": \"...\" in its place"));
    return *credentials;
}

void readSettingsSaveAnswer(ObjectReader& file, Integer& answer) {
    file.take(kSettingsSaveAnswer, answer);
    if (answer != result::Done && answer != result::Refused && answer != result::SettingsAnswer8 &&
        answer != result::SettingsAnswer9)
        throw SiteFileError(kSettingsSaveAnswer + QStringLiteral(": 1, 2, 8 or 9 is expected"));
}

QString lineAndColumn(const QByteArray& text, qsizetype offset) {
    const QByteArray before = text.left(offset);
    return QStringLiteral("line %1, column %2")
        .arg(before.count('\n') + 1)
        .arg(before.size() - before.lastIndexOf('\n'));
}

} // namespace

bool SiteFile::exists() const {
    std::error_code error;
    return std::filesystem::exists(path_, error);
}

template <class Record>
void SiteFile::loadList(ObjectReader& file, const QString& key, std::vector<Record>& records,
                        std::vector<QJsonObject>& unknown_keys) {
    for (const QJsonValue json : takeArray(file, key)) {
        ObjectReader element(json, elementPlace(key, static_cast<qsizetype>(records.size())));
        element.takeFields(records.emplace_back());
        check(element);
        unknown_keys.push_back(element.unknownKeys());
    }
}

template <class Record>
void SiteFile::keepUnknownKeys(const QString& key, const std::vector<Record>& records,
                               const std::vector<QJsonObject>& unknown_keys) {
    for (std::size_t i = 0; i < records.size(); ++i) {
        if (!unknown_keys[i].isEmpty())
            unknown_keys_.insert(placeOf(key, records[i]), unknown_keys[i]);
    }
}

Site SiteFile::load(const SettingsRecord& unnamed) {
    const QString name = QString::fromStdString(fromPath(path_));
    const std::optional<std::string> bytes = readWholeFile(path_, kMaxFileSize);
    if (!bytes)
        throw SiteFileError(name + QStringLiteral(": cannot be read"));
    try {
        return parse(QByteArray::fromStdString(*bytes), unnamed);
    } catch (const SiteFileError& error) {
        throw SiteFileError(name + QStringLiteral(": ") + QString::fromUtf8(error.what()));
    }
}

Site SiteFile::parse(const QByteArray& json, const SettingsRecord& unnamed) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        throw SiteFileError(
            QStringLiteral("%1: %2").arg(lineAndColumn(json, error.offset), error.errorString()));

    unknown_keys_.clear();
    Site site;
    site.settings = unnamed;
    ObjectReader file(document.isObject() ? QJsonValue(document.object()) : QJsonValue(), {});

    const QJsonValue login_json = file.takeValue(kLogin);
    if (!login_json.isUndefined()) {
        ObjectReader login(login_json, kLogin);
        site.login = readLogin(login);
        check(login);
        unknown_keys_.insert(kLogin, login.unknownKeys());
    }

    const QJsonValue settings_json = file.takeValue(kSettings);
    if (!settings_json.isUndefined()) {
        ObjectReader settings(settings_json, kSettings);
        settings.takeFields(site.settings);
        check(settings);
        unknown_keys_.insert(kSettings, settings.unknownKeys());
    }
    readSettingsSaveAnswer(file, site.settings_save_answer);

    std::vector<QJsonObject> of_schedules, of_hosts, of_outbox, of_scripts;
    loadList(file, kSchedules, site.schedules, of_schedules);
    loadList(file, kHosts, site.hosts, of_hosts);
    loadList(file, kOutbox, site.outbox, of_outbox);
    loadList(file, kScripts, site.scripts, of_scripts);
    site.assignRecordNumbers();
    keepUnknownKeys(kSchedules, site.schedules, of_schedules);
    keepUnknownKeys(kHosts, site.hosts, of_hosts);
    keepUnknownKeys(kOutbox, site.outbox, of_outbox);
    keepUnknownKeys(kScripts, site.scripts, of_scripts);

    for (const NameList& list : kNameLists) {
        std::vector<VarText>& names = site.*list.names;
        for (const QJsonValue name : takeArray(file, list.key)) {
            const QString place = elementPlace(list.key, static_cast<qsizetype>(names.size()));
            fromJson(name, place, names.emplace_back());
        }
    }

    check(file);
    unknown_keys_.insert(QString(), file.unknownKeys());
    return site;
}

void SiteFile::check(const ObjectReader& object) const {
    if (unknown_ == UnknownKeys::Refuse && !object.unknownKeys().isEmpty())
        throw SiteFileError(object.placeOf(object.unknownKeys().constBegin().key()) +
                            QStringLiteral(": is no field that is known"));
}

template <class Record>
void SiteFile::saveList(QJsonObject& file, const QString& key, const std::vector<Record>& records) {
    QJsonArray array;
    QHash<QString, QJsonObject> kept;
    for (const Record& record : records) {
        const QString place = placeOf(key, record);
        QJsonObject object = unknown_keys_.value(place);
        if (!object.isEmpty())
            kept.insert(place, object);
        putFields(record, object);
        array.append(object);
    }
    file.insert(key, array);

    // What belonged to a removed record must not turn up in a later one of the same name.
    const QString prefix = key + u'/';
    unknown_keys_.removeIf([&](const auto& entry) { return entry.key().startsWith(prefix); });
    unknown_keys_.insert(kept);
}

void SiteFile::save(const Site& site) {
    QJsonObject file = unknown_keys_.value(QString());

    if (site.login) {
        QJsonObject login = unknown_keys_.value(kLogin);
        login.insert(kUserId, site.login->userId());
        login.insert(kPasswordHash, site.login->passwordHash());
        file.insert(kLogin, login);
    }

    QJsonObject settings = unknown_keys_.value(kSettings);
    putFields(site.settings, settings);
    file.insert(kSettings, settings);
    if (!site.is_backup)
        file.insert(kSettingsSaveAnswer, toJson(site.settings_save_answer));

    saveList(file, kSchedules, site.schedules);
    saveList(file, kHosts, site.hosts);
    if (!site.is_backup)
        saveList(file, kOutbox, site.outbox);
    saveList(file, kScripts, site.scripts);
    for (const NameList& list : kNameLists) {
        if (site.is_backup)
            break;
        QJsonArray names;
        for (const VarText& name : site.*list.names)
            names.append(toJson(name));
        file.insert(list.key, names);
    }

    if (!replaceFile(path_, QJsonDocument(file).toJson(QJsonDocument::Indented).toStdString(),
                     site.is_backup ? FileAccess::Owner : FileAccess::Usual))
        throw SiteFileError(QString::fromStdString(fromPath(path_)) +
                            QStringLiteral(": cannot be written"));
}

} // namespace tollwick
