#include "media/sliderskin.h"
#include "player/messagefilter.h"

#include <QImage>
#include <QTest>

namespace
{

QStringList printed;

void record(QtMsgType, const QMessageLogContext&, const QString& message)
{
    printed << message;
}

} // namespace

/* What the filter lets through to the handler that it found installed. */
class TestMessageFilter : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { printed.clear(); }
    void cleanupTestCase() { qInstallMessageHandler(m_testHandler); }
    void lostMarkersAreNoNews();
    void searchForASoundServerIsNoNews();
    void brokenPicturesAreNoNews();
    void everythingElseIs_data();
    void everythingElseIs();
    void otherKindsOfMessagesAre();

private:
    QtMessageHandler m_testHandler = nullptr;
};

void TestMessageFilter::initTestCase()
{
    m_testHandler = qInstallMessageHandler(record);
    SliderSkin slider;
    slider.insertMarker(Marker_1, 0);
    slider.removeMarker(0);
    // Without the filter there are lines to be kept back.
    QCOMPARE(printed.count(QStringLiteral(" index =0")), 1);
    printed.clear();
    QVERIFY(QImage::fromData(QByteArray("\xff\xd8\xff\xe0 no more than a beginning")).isNull());
    QVERIFY(!printed.isEmpty());
    installMessageFilter();
}

void TestMessageFilter::lostMarkersAreNoNews()
{
    SliderSkin slider;
    for (int i = 0; i < SliderSkin::maxMarkers; ++i)
        QCOMPARE(slider.insertMarker(Marker_1, i), i);
    printed.clear();
    slider.clearMarkers();
    QCOMPARE(printed, QStringList());
}

void TestMessageFilter::searchForASoundServerIsNoNews()
{
    qWarning("PulseAudioService: pa_context_connect() failed");
    QCOMPARE(printed, QStringList());
}

void TestMessageFilter::brokenPicturesAreNoNews()
{
    QVERIFY(QImage::fromData(QByteArray("\xff\xd8\xff\xe0 no more than a beginning")).isNull());
    QCOMPARE(printed, QStringList());
}

void TestMessageFilter::everythingElseIs_data()
{
    QTest::addColumn<QString>("message");
    for (const char* message : {"anything", " index =10", " index =", " index =x", "index =1", " index =1 ", ""})
        QTest::newRow(message) << message;
}

void TestMessageFilter::everythingElseIs()
{
    QFETCH(QString, message);
    qWarning("%s", qPrintable(message));
    QCOMPARE(printed, QStringList{message});
}

void TestMessageFilter::otherKindsOfMessagesAre()
{
    qDebug(" index =%d", 1);
    qCritical(" index =%d", 1);
    QCOMPARE(printed.size(), 2);
}

QTEST_MAIN(TestMessageFilter)
#include "tst_messagefilter.moc"
