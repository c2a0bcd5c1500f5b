// The administrator login of a site, kept as a salted hash only.
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace tollwick {

class Credentials {
public:
    // A login that nobody can use.
    Credentials() = default;
    Credentials(const QString& user_id, const QString& password);

    // The login of a site file; nothing when `password_hash` is not of the form that passwordHash()
    // writes.
    static std::optional<Credentials> fromHash(const QString& user_id,
                                               const QString& password_hash);

    [[nodiscard]] bool accepts(const QString& user_id, const QString& password) const;

    [[nodiscard]] const QString& userId() const { return user_id_; }
    // "pbkdf2-sha256$iterations$salt$hash", the last two in hexadecimal.
    [[nodiscard]] QString passwordHash() const;

private:
    QString user_id_;
    int iterations_ = 0;
    QByteArray salt_;
    QByteArray hash_;
};

} // namespace tollwick
