#pragma once

#include <QString>

#include <memory>
#include <vector>

struct URegularExpression;

/// A regular expression in ICU syntax. Thread-safe.
class RegularExpression {
public:
    enum class Option {
        None,
        CaseInsensitive,
    };

    /// A range in UTF-16 units; `start` is -1 for a group that did not participate.
    struct Range {
        qsizetype start = -1;
        qsizetype length = 0;
    };

    /// One match: the whole match first, then each capture group.
    using Match = std::vector<Range>;

    explicit RegularExpression(const QString &pattern, Option option = Option::None);
    ~RegularExpression();
    RegularExpression(RegularExpression &&) noexcept;
    RegularExpression &operator=(RegularExpression &&) noexcept;

    /// Whether the pattern compiled; an invalid one matches nothing.
    bool isValid() const;

    /// All matches, in order.
    std::vector<Match> matches(const QString &text) const;

    /// `text` with every match replaced by the literal `replacement`.
    QString replacingMatches(const QString &text, const QString &replacement) const;

private:
    struct Closer {
        void operator()(URegularExpression *expression) const;
    };
    std::unique_ptr<URegularExpression, Closer> m_expression;
};
