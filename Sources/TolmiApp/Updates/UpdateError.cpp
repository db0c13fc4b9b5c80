#include "TolmiApp/Updates/UpdateError.h"

QString UpdateError::errorDescription() const {
    switch (m_code) {
    case Code::Insecure:
        return QStringLiteral("The address of the updates is not secure.");
    case Code::InvalidPublicKey:
        return QStringLiteral("The program was built with an unusable key for its updates.");
    case Code::Refused:
        return QStringLiteral("The server did not give what was asked for.");
    case Code::InvalidFeed:
        return QStringLiteral("The list of updates cannot be read.");
    case Code::Unsigned:
        return QStringLiteral("The update is not signed.");
    case Code::InvalidSize:
        return QStringLiteral("The size of the update is not known or not possible.");
    case Code::WrongSize:
        return QStringLiteral("The update does not have the size that was announced.");
    case Code::WrongSignature:
        return QStringLiteral("The update is not from the makers of this program, or it was damaged.");
    case Code::WrongVersion:
        return QStringLiteral("The makers of this program did not give the update this version.");
    case Code::Cancelled:
        return QStringLiteral("The download was cancelled.");
    }
    Q_UNREACHABLE();
}
