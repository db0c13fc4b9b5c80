#pragma once

#include <QString>

#include <memory>
#include <vector>

struct URegularExpression;

/// A regular expression in ICU syntax. It may be used from several threads at once.
class RegularExpression {
public:
    enum class Option {
        None,
        CaseInsensitive,
    };

    /// Part of a text in UTF-16 units; `start` is -1 for a group that took no part.
    struct Range {
        qsizetype start = -1;
        qsizetype length = 0;
    };

    /// One match: the whole of it first, then each capture group.
    using Match = std::vector<Range>;

    explicit RegularExpression(const QString &pattern, Option option = Option::None);
    ~RegularExpression();
    RegularExpression(RegularExpression &&) noexcept;
    RegularExpression &operator=(RegularExpression &&) noexcept;

    /// Whether the pattern compiled. One that did not matches nothing.
    bool isValid() const;

    /// All matches in the order of the text.
    std::vector<Match> matches(const QString &text) const;

    /// The text with every match replaced by the literal `replacement`.
    QString replacingMatches(const QString &text, const QString &replacement) const;

private:
    struct Closer {
        void operator()(URegularExpression *expression) const;
    };
    std::unique_ptr<URegularExpression, Closer> m_expression;
};
