#include "Platform/Desktop/QtOpenPanel.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

namespace {
/// Where the user keeps pictures, else the home folder.
QString usualFolder() {
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QDir(pictures).exists() ? pictures : QDir::homePath();
}

/// The endings in small and in capital letters: the toolkit's own dialog tells them apart.
QString filterOf(const OpenPanelRequest &request) {
    QStringList patterns;
    for (const QString &extension : request.fileExtensions)
        patterns << QStringLiteral("*.") + extension << QStringLiteral("*.") + extension.toUpper();
    return QStringLiteral("%1 (%2)").arg(request.title, patterns.join(u' '));
}
} // namespace

void QtOpenPanel::run(const OpenPanelRequest &request, Answer answer) {
    auto *dialog = new QFileDialog;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->setWindowTitle(request.title);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setNameFilter(filterOf(request));
    dialog->setDirectory(usualFolder());
    QObject::connect(
        dialog, &QFileDialog::finished, dialog, [dialog, answer = std::move(answer)](int result) {
            const QString path = dialog->selectedFiles().value(0);
            const bool isChosen = result == QDialog::Accepted && !path.isEmpty();
            answer(isChosen ? std::optional(FileURL(path)) : std::nullopt);
        });
    dialog->open();
}
