#include "Text/RegularExpression.h"

#include <unicode/uregex.h>

namespace {
const UChar *codeUnits(const QString &text) {
    return reinterpret_cast<const UChar *>(text.utf16());
}
} // namespace

void RegularExpression::Closer::operator()(URegularExpression *expression) const {
    uregex_close(expression);
}

RegularExpression::RegularExpression(const QString &pattern, Option option) {
    UErrorCode status = U_ZERO_ERROR;
    UParseError parseError;
    const uint32_t flags = option == Option::CaseInsensitive ? UREGEX_CASE_INSENSITIVE : 0;
    URegularExpression *expression
        = uregex_open(codeUnits(pattern), int32_t(pattern.size()), flags, &parseError, &status);
    if (U_SUCCESS(status))
        m_expression.reset(expression);
}

RegularExpression::~RegularExpression() = default;
RegularExpression::RegularExpression(RegularExpression &&) noexcept = default;
RegularExpression &RegularExpression::operator=(RegularExpression &&) noexcept = default;

bool RegularExpression::isValid() const {
    return m_expression != nullptr;
}

std::vector<RegularExpression::Match> RegularExpression::matches(const QString &text) const {
    std::vector<Match> found;
    if (!m_expression)
        return found;
    UErrorCode status = U_ZERO_ERROR;
    // A search modifies the expression, so each call uses its own clone.
    const std::unique_ptr<URegularExpression, Closer> search(uregex_clone(m_expression.get(), &status));
    uregex_setText(search.get(), codeUnits(text), int32_t(text.size()), &status);
    const int32_t groupCount = uregex_groupCount(search.get(), &status);
    while (U_SUCCESS(status) && uregex_findNext(search.get(), &status)) {
        Match match;
        for (int32_t group = 0; group <= groupCount; ++group) {
            const int32_t start = uregex_start(search.get(), group, &status);
            const int32_t end = uregex_end(search.get(), group, &status);
            match.push_back(start < 0 ? Range {} : Range { start, end - start });
        }
        found.push_back(std::move(match));
    }
    return found;
}

QString RegularExpression::replacingMatches(const QString &text, const QString &replacement) const {
    QString result;
    qsizetype copiedTo = 0;
    for (const Match &match : matches(text)) {
        const Range &whole = match.front();
        result += QStringView(text).mid(copiedTo, whole.start - copiedTo);
        result += replacement;
        copiedTo = whole.start + whole.length;
    }
    result += QStringView(text).mid(copiedTo);
    return result;
}
