#pragma once

#include <QString>

/// The words of HTML release notes as plain text: paragraphs and headings apart, list entries behind a
/// bullet. Nothing of it is loaded, run or shown as a link.
QString plainReleaseNotes(const QString &html);
