#include "Platform/Desktop/QtSavePanel.h"

#include "Platform/Desktop/FileDialog.h"

#include <QFileDialog>

void QtSavePanel::run(const SavePanelRequest &request, Answer answer) {
    auto *dialog = new QFileDialog;
    dialog->setWindowTitle(request.title);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setMimeTypeFilters({ QStringLiteral("text/plain") });
    dialog->setDefaultSuffix(QStringLiteral("txt"));
    dialog->selectFile(request.proposedName);
    showFileDialog(dialog, QStandardPaths::DocumentsLocation, std::move(answer));
}
