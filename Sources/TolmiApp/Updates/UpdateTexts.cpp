#include "TolmiApp/Updates/UpdateTexts.h"

#include <array>

namespace UpdateTexts {

namespace {
struct Row {
    Key key;
    QStringView english;
    QStringView romanian;
};

// clang-format off
constexpr std::array table {
    Row { Key::windowTitle, u"Software Update", u"Actualizare software" },
    Row { Key::checkingTitle, u"Checking for updates...", u"Se cauta actualizari..." },
    Row { Key::foundTitle, u"Tolmi %1 is available", u"Tolmi %1 este disponibil" },
    Row { Key::foundHint, u"You have version %1. Do you want to download the new one?", u"Ai versiunea %1. Vrei sa o descarci pe cea noua?" },
    Row { Key::releaseNotes, u"What is new", u"Ce este nou" },
    Row { Key::download, u"Download", u"Descarca" },
    Row { Key::later, u"Later", u"Mai tarziu" },
    Row { Key::upToDateTitle, u"Tolmi is up to date", u"Tolmi este la zi" },
    Row { Key::upToDateHint, u"Version %1 is the newest one.", u"Versiunea %1 este cea mai noua." },
    Row { Key::failedTitle, u"The update did not work", u"Actualizarea nu a reusit" },
    Row { Key::failedHint, u"Nothing was changed on this computer. Check the network connection and try again, now or later.", u"Nu s-a schimbat nimic pe acest calculator. Verifica conexiunea la retea si incearca din nou, acum sau mai tarziu." },
    Row { Key::tryAgain, u"Try Again", u"Incearca din nou" },
    Row { Key::downloadingTitle, u"Downloading Tolmi %1...", u"Se descarca Tolmi %1..." },
    Row { Key::downloadProgress, u"Progress of the download", u"Progresul descarcarii" },
    Row { Key::downloadedTitle, u"Tolmi %1 is downloaded", u"Tolmi %1 a fost descarcat" },
    Row { Key::downloadedHint, u"The file is genuine and lies here. Quit Tolmi before you install it.", u"Fisierul este autentic si se afla aici. Inchide Tolmi inainte sa il instalezi." },
    Row { Key::downloadedFile, u"Downloaded file", u"Fisierul descarcat" },
    Row { Key::showInFolder, u"Show in Folder", u"Arata in dosar" },
    Row { Key::cancel, u"Cancel", u"Anuleaza" },
    Row { Key::close, u"Close", u"Inchide" },
};
// clang-format on

constexpr bool isInOrder() {
    for (size_t index = 0; index < table.size(); ++index) {
        if (size_t(table[index].key) != index)
            return false;
    }
    return table.size() == size_t(Key::close) + 1;
}
static_assert(isInOrder(), "a key's row stands at the key's place");
} // namespace

QString text(Key key, AppLanguage language) {
    const Row &row = table[size_t(key)];
    return (language == AppLanguage::Romanian ? row.romanian : row.english).toString();
}

QString text(Key key, AppLanguage language, const QString &version) {
    return text(key, language).replace(QStringLiteral("%1"), version);
}

} // namespace UpdateTexts
