#include "controls/controlsfixture.h"
#include "controls/whineexitbutton.h"
#include "toolkit/builtinpictures.h"

#include <QWindow>

using namespace controlstest;

namespace
{

// A button whose data is in the open and that writes down the pictures that it is given.
class ExitButton : public WhineExitButton
{
public:
    using WhineExitButton::focusPixmap;
    using WhineExitButton::normalPixmap;
    using WhineExitButton::pressedPixmap;
    using WhineExitButton::WhineExitButton;

    QStringList log;

    void setBackgroundPixmap(const QPixmap& pm) override
    {
        log << nameOf(pm);
        WhineExitButton::setBackgroundPixmap(pm);
    }
    // What shows.
    QString picture() const { return backgroundPixmap() ? nameOf(*backgroundPixmap()) : QStringLiteral("nothing"); }
    QStringList take() { return std::exchange(log, {}); }
    void fill() { setPictures(pixmap(normal()), pixmap(focus()), pixmap(pressedLook())); }

    static QImage normal() { return plain(20, 21, grey); }
    static QImage focus() { return plain(20, 21, blue); }
    static QImage pressedLook() { return plain(20, 21, red); }

private:
    static QString nameOf(const QPixmap& picture)
    {
        if (picture.isNull())
            return QStringLiteral("nothing");
        const QRgb pixel = picture.toImage().pixel(0, 0);
        return pixel == grey ? "normal" : pixel == blue ? "focus" : pixel == red ? "pressed" : "unknown";
    }
};

struct Scene : ButtonScene<ExitButton> {
    Scene() : ButtonScene("exit") {}
    bool activate()
    {
        const bool there = ButtonScene::activate();
        button.take();
        return there;
    }
    QWindow* handle() const { return window.windowHandle(); }

    QPoint inside{15, 15};
    QPoint outside{200, 100};
};

} // namespace

class TestWhineExitButton : public ControlsTest
{
    Q_OBJECT

private slots:
    void construction();
    void slotsInOrder();
    void membersInOrder();
    void setPictures_data();
    void setPictures();
    void builtinPictures();
    void drawPressed();
    void drawReleased();
    void focusEvents();
    void showsThePictures();

    void stylus();
    void stylusLeavesAndComesBack();
    void keys();
    void drawnBeforeReceiversHear();
    void focusLeavesWhileHeld();
    void disabledWhileHeld();
    void nullPictures();
    void notResized();
};

void TestWhineExitButton::construction()
{
    QWidget parent;
    const ExitButton button(&parent, "exit", Qt::WRepaintNoErase);
    QCOMPARE(button.parentWidget(), &parent);
    QCOMPARE(button.objectName(), QString("exit"));
    QVERIFY(button.testWFlags(Qt::WRepaintNoErase));
    QVERIFY(button.normalPixmap.isNull());
    QVERIFY(button.focusPixmap.isNull());
    QVERIFY(button.pressedPixmap.isNull());
    QVERIFY(!button.backgroundPixmap());
    const ExitButton bare;
    QVERIFY(!bare.parentWidget());
}

void TestWhineExitButton::slotsInOrder()
{
    QCOMPARE(methods(WhineExitButton::staticMetaObject, QMetaMethod::Slot),
             QStringList({"draw_pressed()", "draw_released()"}));
}

void TestWhineExitButton::membersInOrder()
{
    const ExitButton button;
    const QList<const void*> addresses{&button.normalPixmap, &button.focusPixmap, &button.pressedPixmap};
    for (int i = 1; i < addresses.size(); ++i)
        QVERIFY2(std::less<>()(addresses[i - 1], addresses[i]), QByteArray::number(i));
}

void TestWhineExitButton::setPictures_data()
{
    QTest::addColumn<bool>("focused");
    QTest::addColumn<bool>("down");
    QTest::addColumn<QString>("picture");
    QTest::newRow("normal") << false << false << "normal";
    QTest::newRow("focused") << true << false << "focus";
    QTest::newRow("held") << false << true << "pressed";
    QTest::newRow("focused and held") << true << true << "pressed";
}

void TestWhineExitButton::setPictures()
{
    QFETCH(bool, focused);
    QFETCH(bool, down);
    QFETCH(QString, picture);
    Scene scene;
    QVERIFY(scene.activate());
    if (focused)
        scene.button.setFocus();
    scene.button.setDown(down);
    scene.button.setPictures(QPixmap(), QPixmap(), QPixmap());
    QCOMPARE(scene.button.picture(), QString("nothing"));
    scene.button.fill();
    QCOMPARE(scene.button.picture(), picture);
    COMPARE_PICTURES(scene.button.normalPixmap.toImage(), ExitButton::normal());
    COMPARE_PICTURES(scene.button.focusPixmap.toImage(), ExitButton::focus());
    COMPARE_PICTURES(scene.button.pressedPixmap.toImage(), ExitButton::pressedLook());
}

void TestWhineExitButton::builtinPictures()
{
    const auto builtin = [](const char* name) {
        return QImage::fromData(skinwidgets::findBuiltinImage(name)).convertToFormat(QImage::Format_ARGB32);
    };
    QVERIFY(difference(builtin("close_normal"), builtin("close_focus")) != QString());
    QVERIFY(difference(builtin("close_normal"), builtin("close_press")) != QString());
    QVERIFY(difference(builtin("close_focus"), builtin("close_press")) != QString());
    ExitButton button;
    button.setBuiltinPictures();
    QCOMPARE(button.normalPixmap.size(), QSize(20, 21));
    COMPARE_PICTURES(button.normalPixmap.toImage(), builtin("close_normal"));
    COMPARE_PICTURES(button.focusPixmap.toImage(), builtin("close_focus"));
    COMPARE_PICTURES(button.pressedPixmap.toImage(), builtin("close_press"));
    button.resize(20, 21);
    COMPARE_PICTURES(shown(button), builtin("close_normal"));
    button.draw_pressed();
    COMPARE_PICTURES(shown(button), builtin("close_press"));
}

void TestWhineExitButton::drawPressed()
{
    Scene scene;
    QVERIFY(scene.activate());
    scene.button.draw_pressed();
    QCOMPARE(scene.button.take(), QStringList({"pressed"}));
    scene.button.setFocus();
    scene.button.take();
    QVERIFY(QMetaObject::invokeMethod(&scene.button, "draw_pressed"));
    QCOMPARE(scene.button.take(), QStringList({"pressed"}));
}

void TestWhineExitButton::drawReleased()
{
    Scene scene;
    QVERIFY(scene.activate());
    scene.button.draw_released();
    QCOMPARE(scene.button.take(), QStringList({"normal"}));
    scene.button.setFocus();
    scene.button.take();
    QVERIFY(QMetaObject::invokeMethod(&scene.button, "draw_released"));
    QCOMPARE(scene.button.take(), QStringList({"focus"}));
}

void TestWhineExitButton::focusEvents()
{
    Scene scene;
    QVERIFY(scene.activate());
    scene.button.setFocus();
    QCOMPARE(scene.button.take(), QStringList({"focus"}));
    scene.other.setFocus();
    QCOMPARE(scene.button.take(), QStringList({"normal"}));
    static_cast<QWidget&>(scene.button).setFocus(Qt::TabFocusReason);
    QCOMPARE(scene.button.take(), QStringList({"focus"}));
    static_cast<QWidget&>(scene.button).clearFocus();
    QCOMPARE(scene.button.take(), QStringList({"normal"}));
}

void TestWhineExitButton::showsThePictures()
{
    Scene scene;
    QVERIFY(scene.activate());
    QVERIFY(scene.window.settle());
    Recorder recorder;
    recorder.watchPaints(&scene.button);
    COMPARE_PICTURES(shown(scene.button), ExitButton::normal());
    recorder.take();
    scene.button.draw_pressed();
    QVERIFY(scene.window.settle());
    QCOMPARE(recorder.take(), QStringList({"paint 0,0 20x21"}));
    COMPARE_PICTURES(shown(scene.button), ExitButton::pressedLook());
    scene.button.setFocus();
    COMPARE_PICTURES(shown(scene.button), ExitButton::focus());
}

void TestWhineExitButton::stylus()
{
    Scene scene;
    QVERIFY(scene.activate());
    QTest::mousePress(scene.handle(), Qt::LeftButton, {}, scene.inside);
    QCOMPARE(scene.button.take(), QStringList({"focus", "pressed"}));
    QTest::mouseRelease(scene.handle(), Qt::LeftButton, {}, scene.inside);
    QCOMPARE(scene.button.take(), QStringList({"focus"}));
    scene.button.setFocusPolicy(Qt::NoFocus);
    scene.other.setFocus();
    scene.button.take();
    QTest::mousePress(scene.handle(), Qt::LeftButton, {}, scene.inside);
    QCOMPARE(scene.button.take(), QStringList({"pressed"}));
    QTest::mouseRelease(scene.handle(), Qt::LeftButton, {}, scene.inside);
    QCOMPARE(scene.button.take(), QStringList({"normal"}));
}

void TestWhineExitButton::stylusLeavesAndComesBack()
{
    Scene scene;
    QVERIFY(scene.activate());
    int clicks = 0;
    connect(&scene.button, &QAbstractButton::clicked, &scene.button, [&] { ++clicks; });
    QTest::mousePress(scene.handle(), Qt::LeftButton, {}, scene.inside);
    QCOMPARE(scene.button.picture(), QString("pressed"));
    move(&scene.button, {100, 100});
    QCOMPARE(scene.button.picture(), QString("focus"));
    move(&scene.button, {5, 5});
    QCOMPARE(scene.button.picture(), QString("pressed"));
    QTest::mouseRelease(scene.handle(), Qt::LeftButton, {}, scene.inside);
    QCOMPARE(scene.button.picture(), QString("focus"));
    QCOMPARE(clicks, 1);
}

void TestWhineExitButton::keys()
{
    Scene scene;
    QVERIFY(scene.activate());
    scene.button.setFocus();
    QTest::keyPress(&scene.button, Qt::Key_Space);
    QCOMPARE(scene.button.picture(), QString("pressed"));
    QTest::keyRelease(&scene.button, Qt::Key_Space);
    QCOMPARE(scene.button.picture(), QString("focus"));
}

void TestWhineExitButton::drawnBeforeReceiversHear()
{
    Scene scene;
    QVERIFY(scene.activate());
    QStringList seen;
    connect(&scene.button, &QAbstractButton::pressed, &scene.button, [&] { seen << scene.button.picture(); });
    connect(&scene.button, &QAbstractButton::released, &scene.button, [&] { seen << scene.button.picture(); });
    QTest::mouseClick(scene.handle(), Qt::LeftButton, {}, scene.inside);
    QCOMPARE(seen, QStringList({"pressed", "focus"}));
}

void TestWhineExitButton::focusLeavesWhileHeld()
{
    Scene scene;
    QVERIFY(scene.activate());
    scene.button.setFocus();
    QTest::keyPress(&scene.button, Qt::Key_Space);
    int releases = 0;
    connect(&scene.button, &QAbstractButton::released, &scene.button, [&] { ++releases; });
    scene.other.setFocus();
    QCOMPARE(scene.button.picture(), QString("normal"));
    QVERIFY(!scene.button.isDown());
    QCOMPARE(releases, 1);
}

void TestWhineExitButton::disabledWhileHeld()
{
    Scene scene;
    QVERIFY(scene.activate());
    QTest::mousePress(scene.handle(), Qt::LeftButton, {}, scene.inside);
    scene.button.setEnabled(false);
    QCOMPARE(scene.button.picture(), QString("normal"));
}

void TestWhineExitButton::nullPictures()
{
    ExitButton button;
    button.resize(20, 21);
    setWindowColour(button, green);
    button.draw_pressed();
    button.draw_released();
    COMPARE_PICTURES(shown(button), plain(20, 21, green));
    button.setPictures(pixmap(ExitButton::normal()), QPixmap(), QPixmap());
    COMPARE_PICTURES(shown(button), ExitButton::normal());
    button.draw_pressed();
    COMPARE_PICTURES(shown(button), plain(20, 21, green));
    button.draw_released();
    COMPARE_PICTURES(shown(button), ExitButton::normal());
}

void TestWhineExitButton::notResized()
{
    ExitButton button;
    button.resize(7, 9);
    button.fill();
    button.setBuiltinPictures();
    QCOMPARE(button.size(), QSize(7, 9));
}

QTEST_MAIN(TestWhineExitButton)
#include "tst_whineexitbutton.moc"
