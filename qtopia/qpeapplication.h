#ifndef SKINWIDGETS_QTOPIA_QPEAPPLICATION_H
#define SKINWIDGETS_QTOPIA_QPEAPPLICATION_H

#include "toolkit/export.h"

#include <QApplication>
#include <QString>

/*
 * The application object, and where the pictures of skins and widgets lie.
 *
 * Its object name is the application name by which widgets find their own pictures.
 */
class SKINWIDGETS_EXPORT QPEApplication : public QApplication
{
    Q_OBJECT

public:
    // argc must outlive the object, as for every QApplication.
    QPEApplication(int& argc, char** argv);
    ~QPEApplication() override;

    // The directory under which pics/ lies, with a slash at its end. It need not exist.
    // The environment variable QPEDIR gives it, read at every call and taken as it is; a relative one refers to the
    // current directory. Where it is unset or empty: share/skinwidgets/ of the installation that the library in use
    // lies in, wherever that was moved to, or skins/ of the source tree for a library in its build tree. A static
    // library takes the program's place for its own, and where it was installed if there is nothing. Needs no
    // application object.
    static QString qpeDir();
};

#endif
