#include "Platform/Desktop/QtOpenPanel.h"

#include "Platform/Desktop/FileDialog.h"

#include <QFileDialog>

namespace {
/// Lists the extensions in lower and upper case: the toolkit's own dialog is case-sensitive.
QString filterOf(const OpenPanelRequest &request) {
    QStringList patterns;
    for (const QString &extension : request.fileExtensions)
        patterns << QStringLiteral("*.") + extension << QStringLiteral("*.") + extension.toUpper();
    return QStringLiteral("%1 (%2)").arg(request.title, patterns.join(u' '));
}
} // namespace

void QtOpenPanel::run(const OpenPanelRequest &request, Answer answer) {
    auto *dialog = new QFileDialog;
    dialog->setWindowTitle(request.title);
    dialog->setAcceptMode(QFileDialog::AcceptOpen);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setOption(QFileDialog::HideNameFilterDetails);
    dialog->setNameFilter(filterOf(request));
    showFileDialog(dialog, QStandardPaths::PicturesLocation, std::move(answer));
}
