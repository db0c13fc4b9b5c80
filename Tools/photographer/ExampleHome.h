#pragma once

#include "dictate/Home.h"

/// Colour scheme and language of the pictures.
struct Look {
    /// "dark" or "light".
    QString scheme;
    /// "en" or "ro".
    QString language;

    bool isRomanian() const { return language == u"ro"; }
    /// As used in the names of the pictures.
    QString name() const { return scheme + u'-' + language; }
};

/// Sets up the home folder of a user who has used the program for a while: settings, a name and a history in
/// the language of the look, with recordings from `samplesFolder` for some entries.
bool prepareExampleHome(const Look &look, HomeOptions options, const QString &samplesFolder);

/// The longest text in that history.
QString longestExample(const Look &look);
