#pragma once

#include <QByteArray>

#include <sys/types.h>

/// The highest user ID of a system account according to the content of login.defs; the default if not set
/// there.
uid_t highestSystemAccount(const QByteArray &loginDefinitions);

/// Whether the account is this user, root or a system account, and so not another login user.
bool isTrustedAccount(uid_t account);
