#include "toolkit/movedevent.h"

#include <QTest>

class TestMovedEvent : public QObject
{
    Q_OBJECT

private slots:
    void mouse();
    void wheel();
};

void TestMovedEvent::mouse()
{
    QMouseEvent event(QEvent::MouseMove, QPointF(1, 2), QPointF(11, 12), QPointF(101, 102), Qt::NoButton,
                      Qt::LeftButton | Qt::RightButton, Qt::ControlModifier);
    event.ignore();
    const QMouseEvent moved = skinwidgets::movedEvent(event, QPointF(-30, 40));
    QCOMPARE(moved.type(), QEvent::MouseMove);
    QCOMPARE(moved.position(), QPointF(-30, 40));
    QCOMPARE(moved.pos(), QPoint(-30, 40));
    QCOMPARE(moved.scenePosition(), QPointF(11, 12));
    QCOMPARE(moved.globalPosition(), QPointF(101, 102));
    QCOMPARE(moved.button(), Qt::NoButton);
    QCOMPARE(moved.buttons(), Qt::LeftButton | Qt::RightButton);
    QCOMPARE(moved.modifiers(), Qt::ControlModifier);
    QVERIFY(moved.isAccepted());
}

void TestMovedEvent::wheel()
{
    QWheelEvent event(QPointF(1, 2), QPointF(101, 102), QPoint(3, 4), QPoint(0, -120), Qt::MiddleButton,
                      Qt::ShiftModifier, Qt::ScrollUpdate, true);
    event.ignore();
    const QWheelEvent moved = skinwidgets::movedEvent(event, QPointF(5, 6));
    QCOMPARE(moved.position(), QPointF(5, 6));
    QCOMPARE(moved.globalPosition(), QPointF(101, 102));
    QCOMPARE(moved.pixelDelta(), QPoint(3, 4));
    QCOMPARE(moved.angleDelta(), QPoint(0, -120));
    QCOMPARE(moved.buttons(), Qt::MiddleButton);
    QCOMPARE(moved.modifiers(), Qt::ShiftModifier);
    QCOMPARE(moved.phase(), Qt::ScrollUpdate);
    QVERIFY(moved.inverted());
    QVERIFY(moved.isAccepted());
}

QTEST_MAIN(TestMovedEvent)
#include "tst_movedevent.moc"
