#include "controls/controlsfixture.h"
#include "controls/labelimage.h"
#include "controls/labelskin.h"
#include "controls/whineexitbutton.h"

#include <QLoggingCategory>

using namespace controlstest;

namespace
{

// A file that says to be a picture of a size and holds nothing of it.
QByteArray headerOnly(quint32 width, quint32 height)
{
    QByteArray bytes = png(plain(1, 1, red));
    const auto put = [&bytes](int at, quint32 number) {
        for (int i = 0; i < 4; ++i)
            bytes[at + i] = char(number >> (24 - 8 * i));
    };
    put(16, width);
    put(20, height);
    return bytes;
}

// Everything that a button can be told.
void exercise(Button& button)
{
    button.setToggle();
    button.setButtonImage(true);
    button.setButtonImage(false);
    for (const int state : {0, 1, 2, 3}) {
        button.state = state;
        press(&button, {1, 1});
        release(&button, {1, 1});
        release(&button, {-2147483648.0, 2147483647.0});
        key(&button, QEvent::KeyPress, Qt::Key_Return);
        key(&button, QEvent::KeyRelease, Qt::Key_Return);
        key(&button, QEvent::KeyPress, Qt::Key_Escape);
        button.changeToggleState(true);
        button.setEnabled(false);
        button.setEnabled(true);
        button.grab();
    }
}

} // namespace

// Missing, damaged and hostile input: nothing is shown in its place, nothing is printed and nothing breaks.
class TestControlsBadInput : public ControlsTest
{
    Q_OBJECT

private slots:
    void names_data();
    void names();
    void nullName();
    void applicationNames_data();
    void applicationNames();
    void namesWithSlashes();
    void narrowStrips_data();
    void narrowStrips();
    void damagedPictures_data();
    void damagedPictures();
    void faultsAreToldWhenAsked();
    void textsOfManyCharacters();
    void nullPicturesEverywhere();
    void labelPicturesOfOddShapes();
    void backgroundsOfOddShapes();
};

void TestControlsBadInput::names_data()
{
    QTest::addColumn<QByteArray>("name");
    for (const char* name : {"", "/", "//", ".", "..", "../", "../secret", "a/../../../secret", "/etc/hostname", "%s%n",
                             "*", "a b", "\xff\xfe", "a\nb", "~", "C:\\x", "a\\..\\b"})
        QTest::addRow("\"%s\"", QByteArray(name).toPercentEncoding().constData()) << QByteArray(name);
    QTest::newRow("10000 characters") << QByteArray(10000, 'n');
    QTest::newRow("10000 folders up") << QByteArray("../").repeated(10000);
}

// There are pictures around the picture folder, which no name leads to.
void TestControlsBadInput::names()
{
    QFETCH(QByteArray, name);
    for (const char* ending : {"_normal", "_bt", "2_bt", "_normal2"}) {
        const QString file = QLatin1String(ending) + QStringLiteral(".png");
        plain(8, 8, red).save(surroundings->installation.root() + "/secret" + file);
        plain(8, 8, red).save(surroundings->installation.root() + "/pics" + file);
    }
    Button separate(nullptr, name.constData());
    separate.resize(20, 21);
    separate.setToggle();
    separate.setButtonImage(true);
    QCOMPARE(separate.imageName, "app/" + QString::fromLatin1(name));
    Button cut(nullptr, name.constData());
    cut.resize(20, 21);
    cut.setToggle();
    cut.setButtonImage(false);
    QCOMPARE(cut.imageName, QString::fromLatin1(name) + "2");
    for (const Button* button : {&separate, &cut})
        for (const auto& set : button->pixmaps)
            for (const QPixmap& picture : set)
                QVERIFY(picture.isNull());
    exercise(separate);
    exercise(cut);
    Bar bar(nullptr, name.constData());
    bar.grab();
    LabelSkin label(nullptr, name.constData());
    LabelImage image(nullptr, name.constData());
    WhineExitButton exitButton(nullptr, name.constData());
    QCOMPARE(exitButton.objectName(), QString::fromLatin1(name));
}

void TestControlsBadInput::nullName()
{
    // The name is what stands before the endings, so that these files are the ones of no name.
    surroundings->picture("app/_normal", plain(3, 3, red));
    surroundings->picture("_bt", plain(8, 8, blue));
    Button button(nullptr, nullptr);
    QVERIFY(button.imageName.isEmpty());
    button.setButtonImage(true);
    QCOMPARE(button.imageName, QString("app/"));
    COMPARE_PICTURES(button.pixmaps[0][0].toImage(), plain(3, 3, red));
    QVERIFY(button.pixmaps[0][1].isNull());
    Button cut(nullptr, nullptr);
    cut.setButtonImage(false);
    COMPARE_PICTURES(cut.pixmaps[0][0].toImage(), plain(2, 8, blue));
    exercise(button);
}

void TestControlsBadInput::applicationNames_data()
{
    QTest::addColumn<QString>("application");
    for (const char* name : {"/", "..", "../..", "/etc", "a/../..", "%s", "\n"})
        QTest::addRow("\"%s\"", QByteArray(name).toPercentEncoding().constData()) << QString(name);
    QTest::newRow("10000 characters") << QString(10000, 'n');
}

void TestControlsBadInput::applicationNames()
{
    QFETCH(QString, application);
    plain(8, 8, red).save(surroundings->installation.root() + "/play_normal.png");
    plain(8, 8, red).save(surroundings->installation.root() + "/title_bg.png");
    qApp->setObjectName(application);
    Button button(nullptr, "play");
    button.setButtonImage(true);
    QVERIFY(button.pixmaps[0][0].isNull());
    exercise(button);
    Bar bar;
    QVERIFY(!bar.backgroundPixmap());
    bar.grab();
}

void TestControlsBadInput::namesWithSlashes()
{
    surroundings->picture("app/set/play_normal", plain(3, 3, red));
    surroundings->picture("set/play_bt", plain(8, 8, blue));
    Button button(nullptr, "set/play");
    button.setButtonImage(true);
    COMPARE_PICTURES(button.pixmaps[0][0].toImage(), plain(3, 3, red));
    Button cut(nullptr, "set/play");
    cut.setButtonImage(false);
    COMPARE_PICTURES(cut.pixmaps[0][3].toImage(), plain(2, 8, blue));
}

void TestControlsBadInput::narrowStrips_data()
{
    QTest::addColumn<int>("width");
    for (const int width : {1, 2, 3})
        QTest::addRow("%d", width) << width;
}

void TestControlsBadInput::narrowStrips()
{
    QFETCH(int, width);
    surroundings->picture("play_bt", plain(width, 9, red));
    surroundings->picture("play2_bt", plain(40, 9, red));
    Button button(nullptr, "play");
    button.resize(20, 21);
    setWindowColour(button, green);
    button.setToggle();
    button.setButtonImage(false);
    for (const auto& set : button.pixmaps)
        for (const QPixmap& picture : set)
            QVERIFY(picture.isNull());
    COMPARE_PICTURES(shown(button), plain(20, 21, green));
    exercise(button);
}

void TestControlsBadInput::damagedPictures_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray whole = png(pattern(80, 21));
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("no picture\n");
    QTest::newRow("cut short") << whole.left(whole.size() / 2);
    QTest::newRow("signature alone") << whole.left(8);
    QTest::newRow("huge header") << headerOnly(0x7fffffff, 0x7fffffff);
    QTest::newRow("wide header") << headerOnly(0x7fffffff, 1);
    QTest::newRow("no width") << headerOnly(0, 5);
    QByteArray flipped = whole;
    for (qsizetype i = 8; i < flipped.size(); i += 3)
        flipped[i] = char(~flipped[i]);
    QTest::newRow("flipped bytes") << flipped;
}

void TestControlsBadInput::damagedPictures()
{
    QFETCH(QByteArray, bytes);
    for (const char* name : {"play_bt", "play2_bt", "app/play_normal", "app/title_bg", "app/close_normal"})
        surroundings->installation.write(QString(), QLatin1String(name) + QStringLiteral(".png"), bytes);
    Button cut(nullptr, "play");
    cut.resize(20, 21);
    cut.setToggle();
    cut.setButtonImage(false);
    for (const auto& set : cut.pixmaps)
        for (const QPixmap& picture : set)
            QVERIFY(picture.isNull());
    Button separate(nullptr, "play");
    separate.resize(20, 21);
    separate.setButtonImage(true);
    QVERIFY(separate.pixmaps[0][0].isNull());
    exercise(cut);
    exercise(separate);
    Bar bar;
    QVERIFY(!bar.backgroundPixmap());
    setWindowColour(bar, green);
    COMPARE_PICTURES(shown(bar), plain(480, 23, green));
}

void TestControlsBadInput::faultsAreToldWhenAsked()
{
    surroundings->picture("app/play_focus", plain(3, 3, red));
    surroundings->installation.write("app", "play_press.png", "no picture");
    QLoggingCategory::setFilterRules("skinwidgets.skin.debug=true");
    Button button(nullptr, "play");
    button.setButtonImage(true);
    QLoggingCategory::setFilterRules(QString());
    const QString pics = surroundings->installation.root() + "/pics/app/";
    const QStringList printed = Messages::texts();
    Messages::all().clear();
    QCOMPARE(printed.size(), 3);
    QCOMPARE(printed.at(0), pics + "play_normal.* picture is missing");
    QVERIFY2(printed.at(1).startsWith(pics + "play_press.png "), qPrintable(printed.at(1)));
    QCOMPARE(printed.at(2), pics + "play_disable.* picture is missing");
}

void TestControlsBadInput::textsOfManyCharacters()
{
    Window window("player", QSize(480, 100));
    Bar bar(&window);
    LabelSkin label(&window);
    label.setGeometry(0, 30, 400, 60);
    QVERIFY(window.expose());
    for (const QString& text :
         {QString(10000, 'm'), QString(10000, '\n'), QString(10000, '\t'), QString(10000, QChar()),
          QString(10000, QChar(0xd800)), QString(10000, QChar(0x202e)), QString("<b>").repeated(3000)}) {
        bar.setTitleBarText(text);
        bar.setFileNameText(text);
        label.setText(text);
        QVERIFY(label.rect().contains(label.mask().boundingRect()) || label.mask().isEmpty());
        QVERIFY(window.settle());
    }
    bar.setTitleBarText(QString());
    bar.setFileNameText("x");
    setWindowColour(bar, green);
    QVERIFY(shown(bar) != plain(480, 23, green));
}

void TestControlsBadInput::nullPicturesEverywhere()
{
    LabelImage label(new QImage);
    setWindowColour(label, green);
    label.set_image(QImage());
    label.setBackgroundPixmap(QPixmap());
    label.drawImageLabel(QImage());
    label.resize(10, 10);
    label.set_image(QImage());
    label.setBackgroundPixmap(QPixmap());
    label.drawImageLabel(QImage());
    COMPARE_PICTURES(shown(label), plain(10, 10, green));
    LabelSkin text;
    text.resize(10, 10);
    text.setPixmap(QPixmap());
    text.setMovie(nullptr);
    QVERIFY(text.mask().isEmpty());
    WhineExitButton exitButton;
    exitButton.resize(10, 10);
    setWindowColour(exitButton, green);
    exitButton.setPictures(QPixmap(), QPixmap(), QPixmap());
    exitButton.draw_pressed();
    COMPARE_PICTURES(shown(exitButton), plain(10, 10, green));
}

void TestControlsBadInput::labelPicturesOfOddShapes()
{
    LabelImage label;
    label.resize(10, 10);
    label.setBackgroundPixmap(pixmap(plain(10, 10, green)));
    for (const Qt::Alignment alignment :
         {Qt::Alignment(Qt::AlignLeft), Qt::Alignment(Qt::AlignHCenter), Qt::Alignment(), Qt::Alignment::fromInt(-1)}) {
        label.set_alignment(alignment);
        for (const QSize size : {QSize(1, 1), QSize(30000, 1), QSize(1, 30000), QSize(2000, 2000)}) {
            const QPoint at = label.get_position(size);
            label.set_image(plain(size.width(), size.height(), red));
            QImage expected = plain(10, 10, green);
            put(expected, plain(10, 10, red), QRect(QPoint(), size) & QRect(0, 0, 10, 10),
                {qMax(0, at.x()), qMax(0, at.y())});
            COMPARE_PICTURES(shown(label), expected);
        }
    }
}

void TestControlsBadInput::backgroundsOfOddShapes()
{
    LabelImage label(new QImage(pattern(10, 10, 0, 128)));
    for (const QPoint at : {QPoint(), QPoint(-5000, 3), QPoint(QWIDGETSIZE_MAX, -QWIDGETSIZE_MAX)}) {
        label.move(at);
        for (const QSize size : {QSize(1, 1), QSize(30000, 1), QSize(1, 30000)}) {
            label.setBackgroundPixmap(pixmap(plain(size.width(), size.height(), blue)));
            QVERIFY(label.backgroundPixmap());
            QCOMPARE(label.backgroundPixmap()->size(), QSize(10, 10));
        }
        QBitmap bits(20, 20);
        bits.clear();
        label.setBackgroundPixmap(bits);
        QCOMPARE(label.backgroundPixmap()->depth(), 32);
    }
    // A label as wide as a base picture can be.
    LabelImage wide(new QImage(16384, 2, QImage::Format_ARGB32));
    wide.setBackgroundPixmap(pixmap(plain(4, 4, blue)));
    QCOMPARE(wide.backgroundPixmap()->size(), QSize(16384, 2));
}

QTEST_MAIN(TestControlsBadInput)
#include "tst_controls_badinput.moc"
