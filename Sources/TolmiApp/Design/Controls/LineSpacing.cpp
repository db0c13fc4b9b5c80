#include "TolmiApp/Design/Controls/LineSpacing.h"

#include <QScopedValueRollback>
#include <QTextBlockFormat>
#include <QTextCursor>
#include <QTextDocument>

void LineSpacing::setDocument(QQuickTextDocument *document) {
    if (m_document == document)
        return;
    if (m_document)
        m_document->textDocument()->disconnect(this);
    m_document = document;
    if (m_document)
        connect(m_document->textDocument(), &QTextDocument::contentsChanged, this, &LineSpacing::apply);
    apply();
    Q_EMIT documentChanged();
}

void LineSpacing::setLineHeight(int lineHeight) {
    if (m_lineHeight == lineHeight)
        return;
    m_lineHeight = lineHeight;
    apply();
    Q_EMIT lineHeightChanged();
}

void LineSpacing::apply() {
    if (!m_document || m_lineHeight <= 0 || m_isApplying)
        return;
    // Changing the format also emits contentsChange.
    const QScopedValueRollback applying(m_isApplying, true);
    QTextBlockFormat format;
    format.setLineHeight(m_lineHeight, QTextBlockFormat::FixedHeight);
    QTextCursor all(m_document->textDocument());
    all.select(QTextCursor::Document);
    all.mergeBlockFormat(format);
}
