#include "controls/controlsfixture.h"

#include <QWindow>

using namespace controlstest;

namespace
{

constexpr QRgb titleColour = qRgb(255, 249, 178);
constexpr QRgb fileNameColour = qRgb(255, 255, 255);
constexpr QRgb ground = 0xff0a141e;

// A text as the toolkit paints it into a box.
void paintText(QImage& picture, const QFont& font, int x, const QString& text, QRgb colour)
{
    QPainter painter(&picture);
    painter.setFont(font);
    painter.setPen(QColor::fromRgb(colour));
    painter.drawText(QRect(x, 0, QFontMetrics(font).horizontalAdvance(text), 23), Qt::AlignLeft | Qt::AlignVCenter,
                     text);
}

// The bar without its button on a plain ground.
QImage expectedBar(const QFont& font, const QString& title, const QString& fileName)
{
    QImage picture(480, 23, QImage::Format_RGB32);
    picture.fill(ground);
    paintText(picture, font, 10, title, titleColour);
    if (!fileName.isNull())
        paintText(picture, font, QFontMetrics(font).horizontalAdvance(title) + 20, fileName, fileNameColour);
    return picture.convertToFormat(QImage::Format_ARGB32);
}

QImage shownBar(Bar& bar)
{
    setWindowColour(bar, ground);
    if (bar.closeButton)
        bar.closeButton->hide();
    return shown(bar);
}

} // namespace

class TestTitleBar : public ControlsTest
{
    Q_OBJECT

private slots:
    void construction();
    void signalsAndSlots();
    void membersInOrder();
    void background();
    void backgroundMissing_data();
    void backgroundMissing();
    void closeButton();
    void closeButtonPictures();
    void closeButtonFocus();
    void clickEmitsExitClicked();
    void keysOfTheCloseButton();
    void sendClicked();

    void texts_data();
    void texts();
    void textsOverTheBackground();
    void fontOfTheBar_data();
    void fontOfTheBar();
    void titleDoesNotRepaint();
    void fileNameRepaintsAtOnce();
    void nullAndEmptyFileName();
};

void TestTitleBar::construction()
{
    QWidget parent;
    const Bar bar(&parent, "bar", Qt::WRepaintNoErase);
    QCOMPARE(bar.parentWidget(), &parent);
    QCOMPARE(bar.objectName(), QString("bar"));
    QVERIFY(bar.testWFlags(Qt::WRepaintNoErase));
    QCOMPARE(bar.geometry(), QRect(0, 0, 480, 23));
    QVERIFY(bar.title.isNull());
    QVERIFY(bar.fileName.isNull());
    const Bar bare;
    QCOMPARE(bare.objectName(), QString());
    QCOMPARE(bare.geometry(), QRect(0, 0, 480, 23));
}

void TestTitleBar::signalsAndSlots()
{
    QCOMPARE(methods(TitleBar::staticMetaObject, QMetaMethod::Signal), QStringList({"exitClicked()"}));
    QCOMPARE(methods(TitleBar::staticMetaObject, QMetaMethod::Slot), QStringList({"sendClicked()"}));
}

void TestTitleBar::membersInOrder()
{
    const Bar bar;
    const QList<const void*> addresses{&bar.title, &bar.fileName, &bar.closeButton};
    for (int i = 1; i < addresses.size(); ++i)
        QVERIFY2(std::less<>()(addresses[i - 1], addresses[i]), QByteArray::number(i));
}

void TestTitleBar::background()
{
    const QImage picture = plain(480, 23, 0xff336699);
    surroundings->picture("app/title_bg", picture);
    surroundings->picture("title_bg", plain(480, 23, red));
    Bar bar;
    QVERIFY(bar.backgroundPixmap());
    COMPARE_PICTURES(bar.backgroundPixmap()->toImage(), picture);
    bar.closeButton->hide();
    COMPARE_PICTURES(shown(bar), picture);
}

void TestTitleBar::backgroundMissing_data()
{
    QTest::addColumn<QString>("application");
    QTest::newRow("no picture") << "app";
    QTest::newRow("name leads elsewhere") << "../app";
    QTest::newRow("absolute name") << "/app";
}

void TestTitleBar::backgroundMissing()
{
    QFETCH(QString, application);
    qApp->setObjectName(application);
    Bar bar;
    QVERIFY(!bar.backgroundPixmap());
    COMPARE_PICTURES(shownBar(bar), plain(480, 23, ground));
}

void TestTitleBar::closeButton()
{
    Bar bar;
    QVERIFY(bar.closeButton);
    QCOMPARE(bar.closeButton->parentWidget(), &bar);
    QCOMPARE(bar.closeButton->objectName(), QString("close"));
    QCOMPARE(bar.closeButton->getWFlags(), 16U);
    QVERIFY(!bar.closeButton->isWindow());
    QCOMPARE(bar.closeButton->focusPolicy(), Qt::ClickFocus);
    QCOMPARE(bar.closeButton->geometry(), QRect(450, 1, 20, 21));
    QCOMPARE(bar.findChildren<ImageButton*>().size(), 1);
}

void TestTitleBar::closeButtonPictures()
{
    const QStringList names{"normal", "press", "focus", "disable"};
    for (int k = 0; k < 4; ++k)
        surroundings->picture("app/close_" + names[k], plain(20, 21, Button::pixelOf(0, k)));
    surroundings->picture("close_bt", pattern(80, 21));
    Bar bar;
    setWindowColour(bar, ground);
    QImage expected = plain(480, 23, ground);
    put(expected, plain(20, 21, Button::pixelOf(0, 0)), QRect(0, 0, 20, 21), {450, 1});
    COMPARE_PICTURES(shown(bar), expected);
    press(bar.closeButton, {3, 3});
    put(expected, plain(20, 21, Button::pixelOf(0, 1)), QRect(0, 0, 20, 21), {450, 1});
    COMPARE_PICTURES(shown(bar), expected);
    release(bar.closeButton, {3, 3});
    put(expected, plain(20, 21, Button::pixelOf(0, 2)), QRect(0, 0, 20, 21), {450, 1});
    COMPARE_PICTURES(shown(bar), expected);
    bar.closeButton->setEnabled(false);
    put(expected, plain(20, 21, Button::pixelOf(0, 3)), QRect(0, 0, 20, 21), {450, 1});
    COMPARE_PICTURES(shown(bar), expected);
}

void TestTitleBar::closeButtonFocus()
{
    Window window("player", QSize(480, 100));
    Bar bar(&window);
    QVERIFY(window.activate());
    QTest::keyPress(&window, Qt::Key_Tab);
    QVERIFY(!bar.closeButton->hasFocus());
    QTest::mousePress(window.windowHandle(), Qt::LeftButton, {}, QPoint(455, 10));
    QVERIFY(bar.closeButton->hasFocus());
}

void TestTitleBar::clickEmitsExitClicked()
{
    Bar bar;
    int exits = 0;
    connect(&bar, &TitleBar::exitClicked, &bar, [&] { ++exits; });
    press(bar.closeButton, {3, 3});
    QCOMPARE(exits, 0);
    release(bar.closeButton, {3, 3});
    QCOMPARE(exits, 1);
    press(bar.closeButton, {3, 3});
    release(bar.closeButton, {300, 3});
    QCOMPARE(exits, 1);
    press(&bar, {3, 3});
    release(&bar, {3, 3});
    QCOMPARE(exits, 1);
}

void TestTitleBar::keysOfTheCloseButton()
{
    Receiver screen;
    Bar bar(&screen);
    int exits = 0;
    connect(&bar, &TitleBar::exitClicked, &bar, [&] { ++exits; });
    key(bar.closeButton, QEvent::KeyPress, Qt::Key_Return);
    QCOMPARE(exits, 0);
    key(bar.closeButton, QEvent::KeyRelease, Qt::Key_Return);
    QCOMPARE(exits, 1);
    // The bar has no use for Escape, so that the screen gets it.
    key(bar.closeButton, QEvent::KeyPress, Qt::Key_Escape);
    QCOMPARE(screen.received, QStringList({"press of 1000000"}));
    QCOMPARE(exits, 1);
}

void TestTitleBar::sendClicked()
{
    Bar bar;
    int exits = 0;
    connect(&bar, &TitleBar::exitClicked, &bar, [&] { ++exits; });
    bar.sendClicked();
    QCOMPARE(exits, 1);
    QVERIFY(QMetaObject::invokeMethod(&bar, "sendClicked"));
    QCOMPARE(exits, 2);
}

void TestTitleBar::texts_data()
{
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("fileName");
    QTest::newRow("title") << "Music" << QString();
    QTest::newRow("both") << "Music"
                          << "night walk.ogg";
    QTest::newRow("file name alone") << QString() << "night walk.ogg";
    QTest::newRow("empty title") << ""
                                 << "night walk.ogg";
    QTest::newRow("ampersand, tags") << "R & B"
                                     << "<b>&amp;</b>";
    QTest::newRow("slashes") << "a/../b"
                             << "../../etc/passwd";
    QTest::newRow("title runs under the button") << QString(60, 'm') << "x";
    QTest::newRow("title beyond the bar") << QString(100, 'm') << "x";
    QTest::newRow("10000 characters") << QString(10000, 'm') << QString(10000, 'i');
    QTest::newRow("line break") << "two\nlines"
                                << "x";
    QTest::newRow("other letters") << QString::fromUtf8("\u00c4\u00d6\u00dc") << QString::fromUtf8("\u03b1\u03b2");
}

void TestTitleBar::texts()
{
    QFETCH(QString, title);
    QFETCH(QString, fileName);
    Bar bar;
    bar.setTitleBarText(title);
    bar.setFileNameText(fileName);
    QCOMPARE(bar.title, title);
    QCOMPARE(bar.fileName, fileName);
    const QImage expected = expectedBar(bar.font(), title, fileName);
    QVERIFY(expected != plain(480, 23, ground));
    COMPARE_PICTURES(shownBar(bar), expected);
}

void TestTitleBar::textsOverTheBackground()
{
    surroundings->picture("app/title_bg", plain(480, 23, ground));
    Bar bar;
    bar.setTitleBarText("Music");
    bar.closeButton->hide();
    COMPARE_PICTURES(shown(bar), expectedBar(bar.font(), "Music", QString()));
}

void TestTitleBar::fontOfTheBar_data()
{
    QTest::addColumn<bool>("plain");
    QTest::newRow("its own operation") << false;
    QTest::newRow("a plain pointer") << true;
}

void TestTitleBar::fontOfTheBar()
{
    QFETCH(bool, plain);
    Window window("player", QSize(480, 100));
    Bar bar(&window);
    bar.setTitleBarText("Music");
    bar.setFileNameText("night walk.ogg");
    QVERIFY(window.expose());
    QFont font = bar.font();
    font.setPixelSize(17);
    font.setBold(true);
    Recorder recorder;
    recorder.watchPaints(&bar);
    if (plain)
        static_cast<QWidget&>(bar).setFont(font);
    else
        bar.setFont(font);
    QVERIFY(window.settle());
    QCOMPARE(recorder.take(), QStringList({"paint 0,0 480x23"}));
    COMPARE_PICTURES(shownBar(bar), expectedBar(font, "Music", "night walk.ogg"));
}

void TestTitleBar::titleDoesNotRepaint()
{
    Window window("player", QSize(480, 100));
    Bar bar(&window);
    setWindowColour(bar, ground);
    QVERIFY(window.expose());
    Recorder recorder;
    recorder.watchPaints(&bar);
    bar.setTitleBarText("Music");
    QVERIFY(window.settle());
    QCOMPARE(recorder.take(), QStringList());
    // It shows with the next repaint, whatever causes it.
    bar.update();
    QVERIFY(window.settle());
    QCOMPARE(recorder.take(), QStringList({"paint 0,0 480x23"}));
    COMPARE_PICTURES(shownBar(bar), expectedBar(bar.font(), "Music", QString()));
}

void TestTitleBar::fileNameRepaintsAtOnce()
{
    Window window("player", QSize(480, 100));
    Bar bar(&window);
    QVERIFY(window.expose());
    Recorder recorder;
    recorder.watchPaints(&bar);
    bar.setFileNameText("night walk.ogg");
    QCOMPARE(recorder.take(), QStringList({"paint 0,0 480x23"}));
    // Even where it is the same.
    bar.setFileNameText("night walk.ogg");
    QCOMPARE(recorder.take(), QStringList({"paint 0,0 480x23"}));
    QVERIFY(window.settle());
    QCOMPARE(recorder.take(), QStringList());
}

void TestTitleBar::nullAndEmptyFileName()
{
    Bar bar;
    bar.setTitleBarText("Music");
    bar.setFileNameText("night walk.ogg");
    const QImage without = expectedBar(bar.font(), "Music", QString());
    QVERIFY(shownBar(bar) != without);
    bar.setFileNameText(QString());
    QVERIFY(bar.fileName.isNull());
    COMPARE_PICTURES(shownBar(bar), without);
    bar.setFileNameText("");
    QVERIFY(!bar.fileName.isNull());
    COMPARE_PICTURES(shownBar(bar), without);
}

QTEST_MAIN(TestTitleBar)
#include "tst_titlebar.moc"
