#pragma once

#include <QObject>
#include <QPointer>
#include <QQmlEngine>
#include <QQuickTextDocument>

/// Gives every line of a TextEdit the same height, as a Text has it by its own properties.
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
    /// Paragraphs that came with a new text have the usual height.
    void apply();

    QPointer<QQuickTextDocument> m_document;
    int m_lineHeight = 0;
    bool m_isApplying = false;
};
