#include "toolkit/toolkit.h"

#include <QKeyEvent>
#include <QTest>
#include <QTimer>
#include <QWidget>

class TestSettings : public QObject
{
    Q_OBJECT

private slots:
    void strut();
    void leftHandScrollBars() { QVERIFY(!qt_left_hand_scrollbars); }
    void oldNames();
    void sync();
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

// Pending paint events come, input and timers do not.
void TestSettings::sync()
{
    class Widget : public QWidget
    {
    public:
        int paints = 0;
        int others = 0;

    protected:
        void paintEvent(QPaintEvent*) override { ++paints; }
        void keyPressEvent(QKeyEvent*) override { ++others; }
    };
    Widget widget;
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QVERIFY(QTest::qWaitFor([&] { return widget.paints > 0; }));
    syncX();
    widget.paints = 0;

    QTimer::singleShot(0, &widget, [&] { ++widget.others; });
    QMetaObject::invokeMethod(
        &widget, [&] { ++widget.others; }, Qt::QueuedConnection);
    QCoreApplication::postEvent(&widget, new QKeyEvent(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier));
    widget.update();
    QCOMPARE(widget.paints, 0);
    syncX();
    QCOMPARE(widget.paints, 1);
    QCOMPARE(widget.others, 0);
    QVERIFY(QTest::qWaitFor([&] { return widget.others == 3; }));
}

QTEST_MAIN(TestSettings)
#include "tst_settings.moc"
