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

// The directory of the file that this code was loaded from, links resolved, so that a directory that is a link to
// another one (as /lib often is) leads up to the installation's real root.
QString libraryDirectory()
{
    static const char inLibrary = 0;
    Dl_info info;
    if (!dladdr(&inLibrary, &info) || !info.dli_fname)
        return QString();
    return QFileInfo(QFileInfo(QFile::decodeName(info.dli_fname)).canonicalFilePath()).path();
}

QString dataDirectory()
{
    const QString library = libraryDirectory();
    const QString build = QFileInfo(QStringLiteral(SKINWIDGETS_BUILD_DIR)).canonicalFilePath();
    const QString installed = QDir::cleanPath(library + QLatin1String("/" SKINWIDGETS_LIBRARY_TO_DATA));
    // An installation may itself be put under the build directory, to be packed or tried.
    const bool isInstalled = isWithin(installed, build) && QFileInfo(installed).isDir();
    if (!build.isEmpty() && isWithin(library, build) && !isInstalled)
        return QStringLiteral(SKINWIDGETS_SOURCE_DATA);
    return installed;
}

} // namespace

QPEApplication::QPEApplication(int& argc, char** argv) : QApplication(argc, argv) {}

QPEApplication::~QPEApplication() = default;

QString QPEApplication::qpeDir()
{
    const QString directory = qEnvironmentVariable("QPEDIR");
    if (!directory.isEmpty())
        return withSlash(directory);
    // Found at the first call: the library's own path may be relative to the directory that the program started in.
    static const QString library = withSlash(dataDirectory());
    return library;
}
