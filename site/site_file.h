// The JSON file that a site is kept in. Its keys are the names of the records' fields; keys that it
// does not know are kept when it is written again.
#pragma once

#include "site/field_json.h"
#include "site/site.h"

#include <QHash>

#include <filesystem>

namespace tollwick {

class SiteFile {
public:
    // What is done about keys that name no field.
    enum class UnknownKeys { Keep, Refuse };

    explicit SiteFile(std::filesystem::path path, UnknownKeys unknown = UnknownKeys::Keep)
        : path_(std::move(path)), unknown_(unknown) {}

    [[nodiscard]] bool exists() const;

    // Throws SiteFileError, whose message names the file and what is wrong where. The file is never
    // changed by this. Settings that it does not name are taken from `unnamed`.
    Site load(const SettingsRecord& unnamed = {});

    // Replaces the file whole or not at all; throws SiteFileError when it cannot be written.
    void save(const Site& site);

private:
    Site parse(const QByteArray& json, const SettingsRecord& unnamed);
    template <class Record>
    void loadList(ObjectReader& file, const QString& key, std::vector<Record>& records,
                  std::vector<QJsonObject>& unknown_keys);
    template <class Record>
    void keepUnknownKeys(const QString& key, const std::vector<Record>& records,
                         const std::vector<QJsonObject>& unknown_keys);
    template <class Record>
    void saveList(QJsonObject& file, const QString& key, const std::vector<Record>& records);

    void check(const ObjectReader& object) const;

    std::filesystem::path path_;
    UnknownKeys unknown_;
    // The unknown keys of each object by the object's place; that of a list's element names the
    // record itself and not its position.
    QHash<QString, QJsonObject> unknown_keys_;
};

} // namespace tollwick
