#include "player/ordersettings.h"
#include "player/playback.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestOrderSettings : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void startsOff();
    void outlivesThePlayback_data();
    void outlivesThePlayback();
    void keepsTheLastChange();
    void writesNothingWithoutAChange();
    void damagedFileCountsAsOff_data();
    void damagedFileCountsAsOff();
    void fileThatCannotBeWrittenIsNone();
    void standardFileIsTheApplications();

private:
    void write(const QByteArray& bytes) const
    {
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_file;
};

void TestOrderSettings::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_file = m_directory->filePath(QStringLiteral("deeper/settings.ini"));
}

void TestOrderSettings::cleanup()
{
    m_directory.reset();
}

void TestOrderSettings::startsOff()
{
    Playback playback;
    const OrderSettings settings(&playback, m_file);
    QVERIFY(!playback.isShuffled());
    QVERIFY(!playback.isRepeated());
}

void TestOrderSettings::outlivesThePlayback_data()
{
    QTest::addColumn<bool>("shuffle");
    QTest::addColumn<bool>("repeat");
    QTest::newRow("shuffle") << true << false;
    QTest::newRow("repeat") << false << true;
    QTest::newRow("both") << true << true;
}

void TestOrderSettings::outlivesThePlayback()
{
    QFETCH(bool, shuffle);
    QFETCH(bool, repeat);
    {
        Playback playback;
        const OrderSettings settings(&playback, m_file);
        playback.setShuffled(shuffle);
        playback.setRepeated(repeat);
    }
    Playback playback;
    const OrderSettings settings(&playback, m_file);
    QCOMPARE(playback.isShuffled(), shuffle);
    QCOMPARE(playback.isRepeated(), repeat);
}

void TestOrderSettings::keepsTheLastChange()
{
    Playback first;
    const OrderSettings settings(&first, m_file);
    first.setShuffled(true);
    first.setRepeated(true);
    first.setShuffled(false);
    Playback second;
    const OrderSettings others(&second, m_file);
    QVERIFY(!second.isShuffled());
    QVERIFY(second.isRepeated());
}

void TestOrderSettings::writesNothingWithoutAChange()
{
    Playback playback;
    {
        const OrderSettings settings(&playback, m_file);
        playback.setShuffled(false);
    }
    QVERIFY(!QFile::exists(m_file));
    // Nobody keeps this.
    playback.setShuffled(true);
    QVERIFY(!QFile::exists(m_file));
}

void TestOrderSettings::damagedFileCountsAsOff_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("garbage") << QByteArray("\0\xff[[[=\n\n%%\x1b", 12).repeated(1000);
    QTest::newRow("other values") << QByteArray("[order]\nshuffle=maybe\nrepeat=1, 2, 3\n");
    QTest::newRow("other type") << QByteArray("[order]\nshuffle=@Variant(\\0\\0\\0\\x7f)\nrepeat=@Invalid()\n");
    QTest::newRow("other group") << QByteArray("[Order]\nshuffle=true\n[]\nrepeat=true\n");
}

void TestOrderSettings::damagedFileCountsAsOff()
{
    QFETCH(QByteArray, bytes);
    m_file = m_directory->filePath(QStringLiteral("settings.ini"));
    write(bytes);
    Playback playback;
    const OrderSettings settings(&playback, m_file);
    QVERIFY(!playback.isShuffled());
    QVERIFY(!playback.isRepeated());
    // And it can be used again.
    playback.setRepeated(true);
    Playback second;
    const OrderSettings others(&second, m_file);
    QVERIFY(second.isRepeated());
}

void TestOrderSettings::fileThatCannotBeWrittenIsNone()
{
    // A directory stands in its place.
    QVERIFY(QDir().mkpath(m_file));
    Playback playback;
    const OrderSettings settings(&playback, m_file);
    playback.setShuffled(true);
    QVERIFY(playback.isShuffled());
}

void TestOrderSettings::standardFileIsTheApplications()
{
    QVERIFY2(OrderSettings::standardFile().endsWith(QLatin1String("/tst_ordersettings/settings.ini")),
             qPrintable(OrderSettings::standardFile()));
}

QTEST_MAIN(TestOrderSettings)
#include "tst_ordersettings.moc"
