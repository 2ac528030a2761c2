#include "toolkit/qbutton.h"

#include <QPainter>
#include <QSignalSpy>
#include <QTest>

class TestQButton : public QObject
{
    Q_OBJECT

private slots:
    void construction();
    void showsItsBackgroundOnly_data();
    void showsItsBackgroundOnly();
    void drawsOverTheBackground();
    void signalsOfAPress();
};

namespace
{

constexpr QRgb ground = 0xff204060;

QPixmap plain(const QSize& size)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(ground);
    return skinwidgets::pixmapFromStraight(image);
}

bool isAll(const QImage& image, QRgb pixel)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixel(x, y) != pixel)
                return false;
    return !image.isNull();
}

} // namespace

void TestQButton::construction()
{
    QWidget parent;
    const QButton button(&parent, "exit", Qt::WRepaintNoErase);
    QCOMPARE(button.parentWidget(), &parent);
    QCOMPARE(button.name(), "exit");
    QVERIFY(button.testWFlags(Qt::WRepaintNoErase));
    QVERIFY(button.inherits("QButton"));
    QVERIFY(button.inherits("QAbstractButton"));
    const QButton bare;
    QVERIFY(!bare.parentWidget());
    QCOMPARE(bare.name(), "");
}

void TestQButton::showsItsBackgroundOnly_data()
{
    QTest::addColumn<QString>("state");
    for (const char* state : {"idle", "down", "checked", "focused", "disabled", "text"})
        QTest::newRow(state) << state;
}

void TestQButton::showsItsBackgroundOnly()
{
    QFETCH(QString, state);
    QButton button;
    button.resize(12, 9);
    button.setBackgroundPixmap(plain(QSize(12, 9)));
    button.show();
    QVERIFY(QTest::qWaitForWindowActive(&button));
    button.setCheckable(true);
    button.setDown(state == "down");
    button.setChecked(state == "checked");
    button.setEnabled(state != "disabled");
    if (state == "text")
        button.setText(QStringLiteral("text"));
    if (state == "focused")
        button.setFocus();
    else
        button.clearFocus();
    QCOMPARE(button.hasFocus(), state == "focused");
    QVERIFY(isAll(button.grab().toImage().convertToFormat(QImage::Format_ARGB32), ground));
}

void TestQButton::drawsOverTheBackground()
{
    class Dotted : public QButton
    {
    protected:
        void drawButton(QPainter* painter) override { painter->fillRect(2, 3, 1, 1, Qt::white); }
    };
    Dotted button;
    button.resize(8, 8);
    button.setBackgroundPixmap(plain(QSize(8, 8)));
    const QImage shown = button.grab().toImage();
    QCOMPARE(shown.pixel(2, 3), 0xffffffffU);
    QCOMPARE(shown.pixel(3, 3), ground);
    QCOMPARE(shown.pixel(2, 4), ground);
}

void TestQButton::signalsOfAPress()
{
    QButton button;
    button.resize(10, 10);
    QStringList calls;
    connect(&button, &QButton::pressed, this, [&] { calls << "pressed"; });
    connect(&button, &QButton::released, this, [&] { calls << "released"; });
    connect(&button, &QButton::clicked, this, [&] { calls << "clicked"; });
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(calls, QStringList({"pressed", "released", "clicked"}));
}

QTEST_MAIN(TestQButton)
#include "tst_qbutton.moc"
