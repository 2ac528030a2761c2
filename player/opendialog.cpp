#include "player/opendialog.h"

#include "player/playlist/soundtypes.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QPointer>
#include <QPushButton>

OpenDialog::OpenDialog(QWidget* parent, const QString& title, const QString& directory)
    : QFileDialog(parent, title, directory)
{
    // The platform's own dialog may be another process that a player on a bare screen does not have.
    setOption(DontUseNativeDialog);
    setFileMode(ExistingFiles);
    setNameFilters({soundtypes::openFilter(), tr("All files (*)")});
    connect(this, &QFileDialog::filesSelected, this, &OpenDialog::chosen);

    auto* box = findChild<QDialogButtonBox*>();
    if (!box)
        return;
    auto* folder = new QPushButton(tr("&Folder"));
    folder->setObjectName(QStringLiteral("folder"));
    folder->setAutoDefault(false);
    folder->setToolTip(tr("Everything in the marked folder, or in this one"));
    box->addButton(folder, QDialogButtonBox::ActionRole);
    connect(folder, &QPushButton::clicked, this, &OpenDialog::chooseFolder);
}

void OpenDialog::chooseFolder()
{
    QStringList folders = selectedFiles();
    folders.removeIf([](const QString& path) { return !QFileInfo(path).isDir(); });
    if (folders.isEmpty())
        folders << directory().absolutePath();
    const QPointer<OpenDialog> self(this);
    emit chosen(folders);
    if (self)
        done(Accepted);
}
