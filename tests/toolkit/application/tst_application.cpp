#include "toolkit/application.h"

#include <QCoreApplication>
#include <QTest>

class TestApplication : public QObject
{
    Q_OBJECT

private slots:
    void withoutApplication();
    void names_data();
    void names();
};

void TestApplication::withoutApplication()
{
    QCOMPARE(skinwidgets::applicationName(), QString());
}

void TestApplication::names_data()
{
    QTest::addColumn<QString>("objectName");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("found");
    QTest::newRow("object name wins") << "player"
                                      << "skinplayer"
                                      << "player";
    QTest::newRow("application name") << ""
                                      << "skinplayer"
                                      << "skinplayer";
    QTest::newRow("neither: the program's file name") << ""
                                                      << ""
                                                      << "program";
}

void TestApplication::names()
{
    QFETCH(QString, objectName);
    QFETCH(QString, name);
    QFETCH(QString, found);
    int count = 1;
    char program[] = "/somewhere/program";
    char* arguments[] = {program, nullptr};
    QCoreApplication application(count, arguments);
    application.setObjectName(objectName);
    if (!name.isEmpty())
        QCoreApplication::setApplicationName(name);
    QCOMPARE(skinwidgets::applicationName(), found);
    QCoreApplication::setApplicationName(QString());
}

QTEST_APPLESS_MAIN(TestApplication)
#include "tst_application.moc"
