#include "Platform/Desktop/QtSavePanel.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

namespace {
/// Where the user keeps documents, else the home folder.
QString usualFolder() {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}
} // namespace

void QtSavePanel::run(const SavePanelRequest &request, Answer answer) {
    auto *dialog = new QFileDialog;
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->setWindowTitle(request.title);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setMimeTypeFilters({ QStringLiteral("text/plain") });
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    dialog->setDirectory(usualFolder());
    dialog->selectFile(request.proposedName);
    QObject::connect(
        dialog, &QFileDialog::finished, dialog, [dialog, answer = std::move(answer)](int result) {
            const QString path = dialog->selectedFiles().value(0);
            const bool isChosen = result == QDialog::Accepted && !path.isEmpty();
            answer(isChosen ? std::optional(FileURL(path)) : std::nullopt);
        });
    dialog->open();
}
