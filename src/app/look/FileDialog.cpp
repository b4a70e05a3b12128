// SPDX-FileCopyrightText: 2026 The Brindle PeopleNook developers
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/look/FileDialog.h"

#include "app/look/Controls.h"
#include "base/Job.h"

#include <QFileDialog>
#include <QFileIconProvider>
#include <QHeaderView>
#include <QTreeView>

namespace {

/// Tells the type of a file by its name only.
class IconsByName : public QFileIconProvider
{
public:
    using QFileIconProvider::icon;
    QIcon icon(const QFileInfo &file) const override { return icon(file.isDir() ? Folder : File); }
    QString type(const QFileInfo &file) const override
    {
        if (file.isDir())
            return QFileDialog::tr("Folder");
        return file.suffix().isEmpty() ? QFileDialog::tr("File") : QFileDialog::tr("%1 file").arg(file.suffix());
    }
};

} // namespace

QStringList askForFiles(
    QWidget *parent, FilesAsked asked, const QString &title, const QString &start, const QString &filter)
{
    const Job::Hold hold;
    IconsByName icons;
    QFileDialog dialog(parent, title, QStringLiteral("/")); // nothing is listed before the icons are set
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setIconProvider(&icons);
    if (asked == FilesAsked::Folder) {
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
    } else if (asked == FilesAsked::ToSave) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
    } else {
        dialog.setFileMode(asked == FilesAsked::ToOpen ? QFileDialog::ExistingFile : QFileDialog::ExistingFiles);
    }
    if (!filter.isEmpty())
        dialog.setNameFilter(filter);
    if (auto *files = dialog.findChild<QTreeView *>(QStringLiteral("treeView"))) { // whose dates would be cut off
        for (int column = 1; column < files->model()->columnCount(); ++column)
            files->header()->setSectionResizeMode(column, QHeaderView::ResizeToContents);
        files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
    setFirstSize(dialog, {800, 520});
    const QFileInfo proposed(start);
    dialog.setDirectory(proposed.isDir() ? start : proposed.path());
    if (!proposed.isDir())
        dialog.selectFile(proposed.fileName());
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
}
