#pragma once

#include <QString>

/// Converts HTML release notes to plain text with separated paragraphs and bulleted lists. Nothing is loaded,
/// executed or shown as a link.
QString plainReleaseNotes(const QString &html);
