#include "qtopia/qpeapplication.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

namespace
{

QString withSlash(const QString& directory)
{
    return directory.endsWith(QLatin1Char('/')) ? directory : directory + QLatin1Char('/');
}

bool isWithin(const QString& directory, const QString& root)
{
    return withSlash(directory).startsWith(withSlash(root));
}

// The file that this code was loaded from.
QString codeFile()
{
#ifdef SKINWIDGETS_STATIC
    return QStringLiteral("/proc/self/exe");
#else
    static const char inLibrary = 0;
    Dl_info info;
    if (!dladdr(&inLibrary, &info) || !info.dli_fname)
        return QString();
    return QFile::decodeName(info.dli_fname);
#endif
}

// Links are resolved: a directory that is a link to another one, as /lib often is, leads to the installation's real
// root.
QString codeDirectory()
{
    return QFileInfo(QFileInfo(codeFile()).canonicalFilePath()).path();
}

QString findDataDirectory()
{
    const QString code = codeDirectory();
    const QString build = QFileInfo(QStringLiteral(SKINWIDGETS_BUILD_DIR)).canonicalFilePath();
    const QString installed = QDir::cleanPath(code + QLatin1String("/" SKINWIDGETS_CODE_TO_DATA));
    // An installation may itself be put under the build directory, to be packed or tried.
    const bool isInstalled = isWithin(installed, build) && QFileInfo(installed).isDir();
    if (!build.isEmpty() && isWithin(code, build) && !isInstalled)
        return QStringLiteral(SKINWIDGETS_SOURCE_DATA);
#ifdef SKINWIDGETS_STATIC
    // A program with data of its own has it beside itself; any other one uses what came with the library.
    if (!QFileInfo(installed).isDir())
        return QStringLiteral(SKINWIDGETS_INSTALLED_DATA);
#endif
    return installed;
}

// Found once: the path of the code may be relative to the directory that the program started in.
const QString& dataDirectory()
{
    static const QString directory = withSlash(findDataDirectory());
    return directory;
}

} // namespace

QPEApplication::QPEApplication(int& argc, char** argv) : QApplication(argc, argv)
{
    // Before the program can change its current directory.
    dataDirectory();
}

QPEApplication::~QPEApplication() = default;

QString QPEApplication::qpeDir()
{
    const QString directory = qEnvironmentVariable("QPEDIR");
    if (!directory.isEmpty())
        return withSlash(directory);
    return dataDirectory();
}
