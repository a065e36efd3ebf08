#include "viewer/BrowseDir.h"

#include <QFileDialog>

QString BrowseForFolder(QWidget* vOwner, const QString& vTitle, const QString& vStartFolder)
{
    QFileDialog dialog(vOwner, vTitle);
    dialog.setObjectName(QStringLiteral("BrowseForFolder"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly, true);
    if (!vStartFolder.trimmed().isEmpty())
        dialog.setDirectory(vStartFolder);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return dialog.selectedFiles().value(0);
}
