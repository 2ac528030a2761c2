#include "qtopia/qpeapplication.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace
{

// An installation directory as this build would fill it, but under another root.
QString moved(const QString& installed, const QString& root)
{
    return QDir::cleanPath(root + QLatin1Char('/') + QDir(QStringLiteral(INSTALL_PREFIX)).relativeFilePath(installed));
}

QString movedLibraries(const QString& root)
{
    return moved(QStringLiteral(INSTALL_LIBDIR), root);
}

QString movedData(const QString& root)
{
    return moved(QStringLiteral(INSTALL_DATADIR), root) + QLatin1String("/skinwidgets/");
}

bool copyLibraryTo(const QString& directory)
{
    return QDir().mkpath(directory) &&
           QFile::copy(QStringLiteral(LIBRARY_FILE), directory + QLatin1String("/" LIBRARY_NAME));
}

// What a program says that finds its libraries in a directory first.
QString dataDirectorySeen(const QString& libraries, const QString& start, const QStringList& arguments = {})
{
    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LD_LIBRARY_PATH"), libraries);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.remove(QStringLiteral("QPEDIR"));
    probe.setProcessEnvironment(environment);
    probe.setWorkingDirectory(start);
    probe.start(QStringLiteral(PROBE), arguments);
    if (!probe.waitForFinished() || probe.exitCode() != 0)
        return QStringLiteral("failed: ") + QString::fromLocal8Bit(probe.readAllStandardError());
    return QString::fromLocal8Bit(probe.readAllStandardOutput());
}

} // namespace

class TestQPEApplication : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void isTheApplication();
    void readsTheEnvironment_data();
    void readsTheEnvironment();
    void readsTheEnvironmentAtEveryCall();
    void findsTheSourceTreeFromTheBuildTree();
    void followsTheLibrary_data();
    void followsTheLibrary();
    void findsTheRealRootThroughALink();
    void remembersWhereItStarted();
};

void TestQPEApplication::init()
{
    qunsetenv("QPEDIR");
#ifdef SKINWIDGETS_STATIC
    const QStringList moving{"followsTheLibrary", "findsTheRealRootThroughALink", "remembersWhereItStarted"};
    if (moving.contains(QLatin1String(QTest::currentTestFunction())))
        QSKIP("a static library cannot be moved without its program");
#endif
}

void TestQPEApplication::isTheApplication()
{
    char program[] = "program";
    char argument[] = "argument";
    char* argv[] = {program, argument, nullptr};
    int argc = 2;
    const QPEApplication application(argc, argv);
    QCOMPARE(qApp, &application);
    QCOMPARE(QCoreApplication::arguments(), QStringList({"program", "argument"}));
    QVERIFY(application.inherits("QPEApplication"));
}

void TestQPEApplication::readsTheEnvironment_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("expected");

    QTest::newRow("with a slash") << QByteArray("/opt/device/") << "/opt/device/";
    QTest::newRow("without a slash") << QByteArray("/opt/device") << "/opt/device/";
    QTest::newRow("root") << QByteArray("/") << "/";
    QTest::newRow("relative") << QByteArray("device") << "device/";
    QTest::newRow("blanks belong to it") << QByteArray(" /a b ") << " /a b /";
}

void TestQPEApplication::readsTheEnvironment()
{
    QFETCH(QByteArray, value);
    qputenv("QPEDIR", value);
    QTEST(QPEApplication::qpeDir(), "expected");
}

void TestQPEApplication::readsTheEnvironmentAtEveryCall()
{
    const QString unset = QPEApplication::qpeDir();
    QVERIFY(unset.endsWith('/'));
    qputenv("QPEDIR", "/first");
    QCOMPARE(QPEApplication::qpeDir(), QStringLiteral("/first/"));
    qputenv("QPEDIR", "/second");
    QCOMPARE(QPEApplication::qpeDir(), QStringLiteral("/second/"));
    qputenv("QPEDIR", "");
    QCOMPARE(QPEApplication::qpeDir(), unset);
    qputenv("QPEDIR", "/third");
    QCOMPARE(QPEApplication::qpeDir(), QStringLiteral("/third/"));
    qunsetenv("QPEDIR");
    QCOMPARE(QPEApplication::qpeDir(), unset);
}

void TestQPEApplication::findsTheSourceTreeFromTheBuildTree()
{
    QCOMPARE(QPEApplication::qpeDir(), QStringLiteral(SOURCE_DATA));
    QVERIFY(QDir(QPEApplication::qpeDir() + QLatin1String("pics")).exists());
}

void TestQPEApplication::followsTheLibrary_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<bool>("hasData");
    QTest::addColumn<bool>("expectedInstalled");

    const QString elsewhere = QDir::tempPath() + QLatin1String("/installation-XXXXXX");
    const QString inBuild = QStringLiteral(BUILD_DIR "/installation-XXXXXX");
    QTest::newRow("moved installation") << elsewhere << true << true;
    QTest::newRow("moved installation without its data") << elsewhere << false << true;
    QTest::newRow("installation in the build tree") << inBuild << true << true;
    QTest::newRow("library in another folder of the build tree") << inBuild << false << false;
}

void TestQPEApplication::followsTheLibrary()
{
    QFETCH(QString, place);
    QFETCH(bool, hasData);
    QFETCH(bool, expectedInstalled);
    const QTemporaryDir directory(place);
    const QString root = QDir(directory.path()).canonicalPath();
    QVERIFY(copyLibraryTo(movedLibraries(root)));
    QVERIFY(!hasData || QDir().mkpath(movedData(root)));
    const QString expected = expectedInstalled ? movedData(root) : QStringLiteral(SOURCE_DATA);
    QCOMPARE(dataDirectorySeen(movedLibraries(root), root), expected);
}

void TestQPEApplication::findsTheRealRootThroughALink()
{
    const QTemporaryDir directory;
    const QString root = QDir(directory.path()).canonicalPath();
    QVERIFY(copyLibraryTo(movedLibraries(root)));
    QVERIFY(QDir(root).mkpath(QStringLiteral("a/b/c")));
    const QString link = root + QLatin1String("/a/b/c/libraries");
    QVERIFY(QFile::link(movedLibraries(root), link));
    QCOMPARE(dataDirectorySeen(link, root), movedData(root));
}

void TestQPEApplication::remembersWhereItStarted()
{
    const QTemporaryDir directory;
    const QString root = QDir(directory.path()).canonicalPath();
    QVERIFY(copyLibraryTo(movedLibraries(root)));
    const QString relative = QDir(root).relativeFilePath(movedLibraries(root));
    QCOMPARE(dataDirectorySeen(relative, root, {QStringLiteral("/")}), movedData(root));
}

// The application object is what is tested, so none exists before.
int main(int argc, char** argv)
{
    TestQPEApplication test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_qpeapplication.moc"
