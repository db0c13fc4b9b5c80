#include "Foundation/Error.h"

#include <system_error>

const char *LocalizedError::what() const noexcept {
    try {
        m_what = errorDescription().toStdString();
        return m_what.c_str();
    } catch (...) {
        return "error";
    }
}

SystemError::SystemError(QString description)
    : m_description(std::move(description)) { }

SystemError SystemError::fromErrno(int errorNumber, const QString &path) {
    const QString text = QString::fromStdString(std::generic_category().message(errorNumber));
    return SystemError(text + QStringLiteral(": ") + path);
}

QString localizedDescription(const std::exception &error) {
    if (const auto *localized = dynamic_cast<const LocalizedError *>(&error))
        return localized->errorDescription();
    return QString::fromUtf8(error.what());
}

QString localizedDescription(std::exception_ptr error) {
    try {
        std::rethrow_exception(error);
    } catch (const std::exception &known) {
        return localizedDescription(known);
    } catch (...) {
        return QStringLiteral("Unknown error.");
    }
}
