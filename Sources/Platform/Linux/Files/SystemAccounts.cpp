#include "Platform/Linux/Files/SystemAccounts.h"

#include <QFile>

#include <unistd.h>

namespace {
constexpr uid_t usualHighest = 999;
} // namespace

uid_t highestSystemAccount(const QByteArray &loginDefinitions) {
    for (const QByteArray &line : loginDefinitions.split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        bool isNumber = false;
        const uint highest = words.value(1).toUInt(&isNumber, 0);
        if (words.first() == "SYS_UID_MAX" && isNumber)
            return highest;
    }
    return usualHighest;
}

bool isTrustedAccount(uid_t account) {
    if (account == ::geteuid())
        return true;
    static const uid_t highest = [] {
        QFile file(QStringLiteral("/etc/login.defs"));
        return highestSystemAccount(file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray());
    }();
    return account <= highest;
}
