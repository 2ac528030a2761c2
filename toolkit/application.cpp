#include "toolkit/application.h"

#include <QCoreApplication>

namespace skinwidgets
{

QString applicationName()
{
    const QCoreApplication* application = QCoreApplication::instance();
    if (!application)
        return {};
    const QString name = application->objectName();
    return name.isEmpty() ? QCoreApplication::applicationName() : name;
}

} // namespace skinwidgets
