#include "Platform/Desktop/FileDialog.h"

#include <QDir>
#include <QFileDialog>

void showFileDialog(QFileDialog *dialog, QStandardPaths::StandardLocation folder,
    std::function<void(const std::optional<FileURL> &)> answer) {
    const QString usual = QStandardPaths::writableLocation(folder);
    dialog->setDirectory(QDir(usual).exists() ? usual : QDir::homePath());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::ApplicationModal);
    QObject::connect(
        dialog, &QFileDialog::finished, dialog, [dialog, answer = std::move(answer)](int result) {
            const QString path = dialog->selectedFiles().value(0);
            const bool isChosen = result == QDialog::Accepted && !path.isEmpty();
            answer(isChosen ? std::optional(FileURL(path)) : std::nullopt);
        });
    // open() makes the dialog window-modal, which blocks nothing, because it has no parent.
    dialog->show();
}
