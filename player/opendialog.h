#ifndef SKINWIDGETS_PLAYER_OPENDIALOG_H
#define SKINWIDGETS_PLAYER_OPENDIALOG_H

#include <QFileDialog>

/* Lets the user choose files, or with the button Folder a folder: the marked ones, else the one that shows. */
class OpenDialog : public QFileDialog
{
    Q_OBJECT

public:
    OpenDialog(QWidget* parent, const QString& title, const QString& directory);

signals:
    // Files or folders, before the dialog closes.
    void chosen(const QStringList& paths);

private:
    void chooseFolder();
};

#endif
