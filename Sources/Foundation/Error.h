#pragma once

#include <QString>

#include <exception>
#include <string>

/// An error with a message for the user. Base class of every error that this program throws.
class LocalizedError : public std::exception {
public:
    /// The error message, without context.
    virtual QString errorDescription() const = 0;

    /// errorDescription() in UTF-8, valid for the lifetime of the error.
    const char *what() const noexcept override;

private:
    mutable std::string m_what;
};

/// A failure reported by the operating system; higher layers pass it on unwrapped.
class SystemError : public LocalizedError {
public:
    /// `description` is the complete message shown to the user.
    explicit SystemError(QString description);

    /// The error for an errno value that occurred on `path`: "<strerror text>: <path>".
    static SystemError fromErrno(int errorNumber, const QString &path);

    QString errorDescription() const override { return m_description; }

private:
    QString m_description;
};

/// The message of any exception: errorDescription() if it has one, else what().
QString localizedDescription(const std::exception &error);

/// The message of a stored exception; see above.
QString localizedDescription(std::exception_ptr error);
