#pragma once

#include "Foundation/Error.h"
#include "Foundation/Task.h"

#include <variant>

/// The errors of a refiner. The messages are English in every interface language.
class TextRefinerError final : public LocalizedError {
public:
    struct ServiceUnavailable {
        QString detail;
        friend bool operator==(const ServiceUnavailable &, const ServiceUnavailable &) = default;
    };
    struct RefinementFailed {
        QString detail;
        friend bool operator==(const RefinementFailed &, const RefinementFailed &) = default;
    };
    struct Timeout {
        friend bool operator==(const Timeout &, const Timeout &) = default;
    };
    using Case = std::variant<ServiceUnavailable, RefinementFailed, Timeout>;

    TextRefinerError(Case errorCase)
        : m_case(std::move(errorCase)) { }

    const Case &errorCase() const { return m_case; }
    QString errorDescription() const override;

    friend bool operator==(const TextRefinerError &left, const TextRefinerError &right) {
        return left.m_case == right.m_case;
    }

private:
    Case m_case;
};

/// Turns a raw transcript into text that is ready to paste.
class TextRefiner {
public:
    virtual ~TextRefiner() = default;

    /// Throws when it has no better text to offer.
    virtual Task<QString> refine(QString text) = 0;
};
