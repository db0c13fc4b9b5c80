#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickTextDocument>

/// Sets a fixed line height for a TextEdit, which lacks the lineHeight property of Text.
class LineSpacing : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The `textDocument` of the TextEdit.
    Q_PROPERTY(QQuickTextDocument *document READ document WRITE setDocument NOTIFY documentChanged)
    /// In pixels.
    Q_PROPERTY(int lineHeight READ lineHeight WRITE setLineHeight NOTIFY lineHeightChanged)

public:
    using QObject::QObject;

    QQuickTextDocument *document() const { return m_document; }
    void setDocument(QQuickTextDocument *document);
    int lineHeight() const { return m_lineHeight; }
    void setLineHeight(int lineHeight);

Q_SIGNALS:
    void documentChanged();
    void lineHeightChanged();

private:
    /// Applies the line height to all paragraphs; those of a new text have the default height.
    void apply();

    QPointer<QQuickTextDocument> m_document;
    int m_lineHeight = 0;
    bool m_isApplying = false;
};
