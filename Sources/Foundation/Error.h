#pragma once

#include <QString>

#include <exception>
#include <string>

/// An error that a person can be shown. The root of every error that this program throws.
class LocalizedError : public std::exception {
public:
    /// The text of the error, without any context around it.
    virtual QString errorDescription() const = 0;

    /// UTF-8 form of errorDescription(), valid as long as the error.
    const char *what() const noexcept override;

private:
    mutable std::string m_what;
};

/// A failure that the operating system reported; layers above pass it on unwrapped.
class SystemError : public LocalizedError {
public:
    /// `description` is the whole text that is shown.
    explicit SystemError(QString description);

    /// The error of an errno value met while working on `path`: "<strerror text>: <path>".
    static SystemError fromErrno(int errorNumber, const QString &path);

    QString errorDescription() const override { return m_description; }

private:
    QString m_description;
};

/// The text of any exception: errorDescription() where there is one, else what().
QString localizedDescription(const std::exception &error);

/// The text of a stored exception; see above.
QString localizedDescription(std::exception_ptr error);
