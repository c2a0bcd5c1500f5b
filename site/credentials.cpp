#include "site/credentials.h"

#include <QPasswordDigestor>
#include <QRandomGenerator>
#include <QStringList>

namespace tollwick {
namespace {

const QString kScheme = QStringLiteral("pbkdf2-sha256");
constexpr int kIterations = 20'000;
// A hand-written file must not make a login take minutes.
constexpr int kMaxIterations = 2'000'000;
constexpr int kHashSize = 32;
constexpr int kSaltSize = 16;

QByteArray derive(const QString& password, const QByteArray& salt, int iterations) {
    return QPasswordDigestor::deriveKeyPbkdf2(QCryptographicHash::Sha256, password.toUtf8(), salt,
                                              iterations, kHashSize);
}

bool sameInConstantTime(const QByteArray& a, const QByteArray& b) {
    if (a.size() != b.size())
        return false;
    int difference = 0;
    for (qsizetype i = 0; i < a.size(); ++i)
        difference |= a[i] ^ b[i];
    return difference == 0;
}

} // namespace

Credentials::Credentials(const QString& user_id, const QString& password)
    : user_id_(user_id), iterations_(kIterations), salt_(kSaltSize, '\0') {
    for (char& byte : salt_)
        byte = static_cast<char>(QRandomGenerator::system()->bounded(256));
    hash_ = derive(password, salt_, iterations_);
}

std::optional<Credentials> Credentials::fromHash(const QString& user_id,
                                                 const QString& password_hash) {
    const QStringList parts = password_hash.split(u'$');
    if (parts.size() != 4 || parts[0] != kScheme)
        return {};
    Credentials credentials;
    credentials.user_id_ = user_id;
    credentials.iterations_ = parts[1].toInt();
    credentials.salt_ = QByteArray::fromHex(parts[2].toLatin1());
    credentials.hash_ = QByteArray::fromHex(parts[3].toLatin1());
    // Written out again it must be the same, or it held something that is no hash.
    if (credentials.iterations_ < 1 || credentials.iterations_ > kMaxIterations ||
        credentials.hash_.size() != kHashSize ||
        credentials.passwordHash() != password_hash.toLower())
        return {};
    return credentials;
}

bool Credentials::accepts(const QString& user_id, const QString& password) const {
    return iterations_ > 0 && user_id == user_id_ &&
           sameInConstantTime(derive(password, salt_, iterations_), hash_);
}

QString Credentials::passwordHash() const {
    return QStringList{kScheme, QString::number(iterations_), QString::fromLatin1(salt_.toHex()),
                       QString::fromLatin1(hash_.toHex())}
        .join(u'$');
}

} // namespace tollwick
