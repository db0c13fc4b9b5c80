#pragma once

#include <QString>

/// `text` as it may be pasted: without control characters but tab and line feed, since an application may
/// obey them. A terminal runs what ends in a line feed, so that it gets a blank in its place.
QString pastableText(QString text, bool isForTerminal);
