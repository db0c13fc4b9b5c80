#pragma once

#include "dictate/Home.h"

/// How the example user likes the program to look.
struct Look {
    /// "dark" or "light".
    QString scheme;
    /// "en" or "ro".
    QString language;

    bool isRomanian() const { return language == u"ro"; }
    /// As in the names of the pictures.
    QString name() const { return scheme + u'-' + language; }
};

/// Fills the home of the desktop as if somebody had used the program for a while: settings, a name and a
/// history in the language of the look, with recordings of `samplesFolder` for some entries.
bool prepareExampleHome(const Look &look, HomeOptions options, const QString &samplesFolder);

/// The longest of the texts in that history.
QString longestExample(const Look &look);
