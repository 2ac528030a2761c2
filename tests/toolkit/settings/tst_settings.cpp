#include "toolkit/toolkit.h"

#include <QTest>

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void strut();
    void leftHandScrollBars() { QVERIFY(!qt_left_hand_scrollbars); }
    void oldNames();
    void syncReturns() { syncX(); }
};

void TestSettings::strut()
{
    QCOMPARE(globalStrut(), QSize(0, 0));
    setGlobalStrut(QSize(12, 8));
    QCOMPARE(globalStrut(), QSize(12, 8));
    setGlobalStrut(QSize(-3, 4));
    QCOMPARE(globalStrut(), QSize(0, 4));
    setGlobalStrut(QSize());
    QCOMPARE(globalStrut(), QSize(0, 0));
}

void TestSettings::oldNames()
{
    QCOMPARE(Qt::Key_Prior, Qt::Key_PageUp);
    QCOMPARE(Qt::Key_Next, Qt::Key_PageDown);
    const Qt::AlignmentFlags alignment = Qt::AlignLeft | Qt::AlignVCenter;
    QVERIFY(alignment & Qt::AlignLeft);
    QCOMPARE(static_cast<WFlags>(Qt::WStyle_Customize), 16U);
    QCOMPARE(static_cast<WFlags>(Qt::WResizeNoErase), 0x100000U);
    QCOMPARE(static_cast<WFlags>(Qt::WRepaintNoErase), 0x800000U);
}

QTEST_MAIN(TestSettings)
#include "tst_settings.moc"
