#pragma once

#include <QByteArray>

#include <sys/types.h>

/// The highest number of an account of the system in the text of login.defs; the usual one where it names
/// none.
uid_t highestSystemAccount(const QByteArray &loginDefinitions);

/// Whether the account is this user's, root's or one of the system's services: nobody who logs in and wishes
/// this user ill.
bool isTrustedAccount(uid_t account);
