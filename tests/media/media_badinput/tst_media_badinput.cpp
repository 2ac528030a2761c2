#include "media/timeskin.h"
#include "media/volumefixture.h"

#include <QElapsedTimer>
#include <QRandomGenerator>

using namespace mediatest;

namespace
{

// Pixels that a widget may come to at most, whatever its skin says; a window of that size takes 64 MiB.
constexpr qint64 mostPixels = qint64(16) * 1024 * 1024;

QByteArray randomBytes(int count)
{
    QRandomGenerator generator(4711);
    QByteArray bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(generator.bounded(256));
    return bytes;
}

// A display whose data is in the open.
class Time : public TimeSkin
{
public:
    using TimeSkin::digits;
    using TimeSkin::numberImage;
    using TimeSkin::spacing;
    using TimeSkin::TimeSkin;
};

void exerciseBackgrounds(SkinBase& widget)
{
    const QPixmap parent = pixmap(pattern(40, 40));
    for (const unsigned char alpha : {0, 1, 128, 255}) {
        widget.setAlphaOverride(alpha);
        widget.setBackgroundPixmap(parent);
        widget.setBackgroundPixmap(QPixmap());
        widget.redrawButtonImages();
        widget.grab();
    }
    widget.setBackgroundImage(QImage());
    widget.setAlphaOverride(77);
    widget.setBackgroundPixmap(parent);
    widget.setBackgroundImage(pattern(3, 3));
    widget.setBackgroundPixmap(parent);
    widget.setAlphaOverride(255);
    widget.grab();
}

void exerciseStylus(QWidget& widget)
{
    for (const QPointF at : {QPointF(1, 1), QPointF(30, 3), QPointF(-5, 2), QPointF(1e6, -1e6),
                             QPointF(-2147483648.0, 0), QPointF(2147483647.0, 2147483647.0)}) {
        press(&widget, at);
        for (const QPointF to : {QPointF(3, 3), QPointF(-2147483648.0, -2147483648.0), QPointF(2147483647.0, 1)})
            move(&widget, to);
        release(&widget, at);
    }
    for (const int code : {Qt::Key_Left, Qt::Key_Right, Qt::Key_Return}) {
        key(&widget, QEvent::KeyPress, code);
        key(&widget, QEvent::KeyRelease, code);
    }
}

void exercise(Slider& slider)
{
    for (const int value : {0, 50, 99, -1, highest, lowest}) {
        slider.setValue(value);
        slider.insertMarker(Marker_2, value);
        slider.updateMarker(0);
        slider.grab();
    }
    exerciseStylus(slider);
    for (const QSize& size : {QSize(0, 0), QSize(1, 1), QSize(50, 3), QSize(3, 50)}) {
        slider.resize(size);
        exerciseStylus(slider);
        exerciseBackgrounds(slider);
    }
    slider.redrawBack();
    slider.grab();
}

void exercise(Time& time)
{
    for (const unsigned int seconds : {0U, 3723U, 359999U, 360000U, 4294967295U}) {
        time.update_time(seconds);
        time.grab();
    }
    exerciseStylus(time);
    exerciseBackgrounds(time);
}

void exercise(Volume& panel)
{
    for (const unsigned int value : {0U, 5U, 2147483648U, 4294967295U}) {
        panel.set_volumeValue(value);
        exerciseStylus(panel);
        exerciseStylus(*panel.slider);
        panel.change_muteButton(value == 0);
        panel.grab();
    }
    exerciseBackgrounds(panel);
}

} // namespace

class TestMediaBadInput : public InstalledTest
{
    Q_OBJECT

private slots:
    void pictures_data();
    void pictures();
    void picturePaths_data();
    void picturePaths();
    void configs_data();
    void configs();
    void configIsADirectory();
    void noInstallation();

    void withoutBackground_data();
    void withoutBackground();
    void strangeStrips_data();
    void strangeStrips();

    void ranges_data();
    void ranges();
    void positions_data();
    void positions();
    void markers_data();
    void markers();
    void clickOffsets_data();
    void clickOffsets();

    void times();
    void spacings_data();
    void spacings();
    void sliderPositions_data();
    void sliderPositions();
    void volumes_data();
    void volumes();
    void buttonNames_data();
    void buttonNames();

private:
    void installSkins() override
    {
        SliderSkins::install(*installation);
        VolumeSkins::install(*installation, "volume");
        installation->picture("time", "numbers.png", pattern(100, 20));
        installation->picture("time", "colon.png", pattern(4, 20));
        installation->config("time", "[Time]\nnumber_image = numbers.png\ncolon_image = colon.png\nspacing = 2\n");
    }
    void setUp() override
    {
        InstalledTest::setUp();
        clock.start();
    }
    void tearDown() override
    {
        InstalledTest::tearDown();
        // Bounded time: each row is done in a moment.
        QVERIFY2(clock.elapsed() < 20000, qPrintable(QString::number(clock.elapsed())));
    }
    QElapsedTimer clock;
};

void TestMediaBadInput::pictures_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("kind");
    for (const char* file :
         {"player/seek_back.png", "player/seek_bar.png", "player/marker_2.png", "time/numbers.png", "time/colon.png",
          "volume/bg.png", "volume/mask.png", "volume/off.png", "volume/back.png", "volume/bar.png"})
        for (const char* kind : {"missing", "directory", "empty", "random bytes", "truncated", "text", "no pixels",
                                 "too large", "one pixel", "one column", "one line"})
            QTest::addRow("%s: %s", file, kind) << QString(file) << QString(kind);
}

void TestMediaBadInput::pictures()
{
    QFETCH(QString, file);
    QFETCH(QString, kind);
    const QString skin = file.section('/', 0, 0);
    const QString name = file.section('/', 1);
    const QString path = installation->skin(skin) + '/' + name;
    const QByteArray whole = png(pattern(100, 20));
    QVERIFY(QFile::remove(path));
    if (kind == "directory")
        QDir().mkpath(path);
    else if (kind == "empty")
        installation->write(skin, name, QByteArray());
    else if (kind == "random bytes")
        installation->write(skin, name, randomBytes(3000));
    else if (kind == "truncated")
        installation->write(skin, name, whole.left(whole.size() * 2 / 3));
    else if (kind == "text")
        installation->write(skin, name, "this is no picture\n");
    else if (kind == "no pixels")
        installation->write(skin, name, "P6\n0 0\n255\n");
    else if (kind == "too large")
        installation->write(skin, name, "P6\n2000000000 2000000000\n255\nabc");
    else if (kind == "one pixel")
        installation->picture(skin, name, pattern(1, 1));
    else if (kind == "one column")
        installation->picture(skin, name, pattern(1, 20));
    else if (kind == "one line")
        installation->picture(skin, name, pattern(100, 1));
    const bool readable = kind.startsWith("one ");

    Window window(skin);
    if (skin == "player") {
        Slider slider(&window, "Seek");
        const QImage& loaded = name == "seek_back.png"  ? slider.backImage
                               : name == "seek_bar.png" ? slider.barImage
                                                        : slider.markerImages[1];
        QCOMPARE(loaded.isNull(), !readable || (name == "seek_bar.png" && kind != "one line"));
        QCOMPARE(slider.size().isEmpty(), name == "seek_back.png" && kind != "one line");
        exercise(slider);
        Slider fromPaths(path, path, path, path, &window, "x");
        QCOMPARE(fromPaths.backImage.isNull(), !readable);
        exercise(fromPaths);
    } else if (skin == "time") {
        Time time(&window, "Time");
        QCOMPARE(time.numberImage->isNull(), name == "numbers.png" && !readable);
        exercise(time);
    } else {
        Volume panel(&window, "Volume");
        QCOMPARE(panel.size().isEmpty(), name == "bg.png" && !readable);
        exercise(panel);
    }
}

void TestMediaBadInput::picturePaths_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << QString("");
    QTest::newRow("directory") << QString("/");
    QTest::newRow("device") << QString("/dev/zero");
    QTest::newRow("no such file") << QString("/no/such/file.png");
    QTest::newRow("NUL in the name") << QString::fromLatin1("a\0b", 3);
    QTest::newRow("resource") << QString(":/nothing");
}

void TestMediaBadInput::picturePaths()
{
    QFETCH(QString, path);
    Window window;
    Slider two(path, path, &window, "two");
    QVERIFY(two.backImage.isNull() && two.barImage.isNull() && two.size().isEmpty());
    exercise(two);
    Slider four(path, path, path, path, &window, "four");
    QVERIFY(four.markerImages[0].isNull() && four.markerImages[2].isNull());
    exercise(four);
}

void TestMediaBadInput::configs_data()
{
    QTest::addColumn<QByteArray>("config");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("random bytes") << randomBytes(5000);
    QTest::newRow("zeros") << QByteArray(5000, '\0');
    QTest::newRow("brackets only") << QByteArray("[\n[]\n]\n[[\n");
    QTest::newRow("equals signs only") << QByteArray("=\n==\n = \n");
    QTest::newRow("keys outside groups") << QByteArray("back_image = seek_back.png\n");
    QTest::newRow("groups without keys") << QByteArray("[Seek]\n[Time]\n[Volume]\n[Volume_SLIDER]\n");
    QTest::newRow("empty values") << QByteArray("[Seek]\nback_image =\nbar_image =\nmarker_1 =\n[Time]\nnumber_image=\n"
                                                "colon_image =\nspacing =\n[Volume]\ncount =\nbackground =\n"
                                                "[Volume_SLIDER]\nxpos =\nypos =\nback_image =\n");
    QTest::newRow("pictures that are the directory")
        << QByteArray("[Seek]\nback_image = .\nbar_image = ..\nmarker_1 = /\n[Time]\nnumber_image = .\n"
                      "colon_image = ../..\n[Volume]\nbackground = .\n[Volume_SLIDER]\nback_image = .\n");
    QTest::newRow("the config as a picture")
        << QByteArray("[Seek]\nback_image = config\n[Time]\nnumber_image = config\n[Volume]\nbackground = config\n"
                      "[Volume_SLIDER]\nback_image = config\nbar_image = config\n");
    QTest::newRow("count beyond measure") << QByteArray("[Volume]\ncount = 2000000000\n");
}

void TestMediaBadInput::configs()
{
    QFETCH(QByteArray, config);
    installation->config("player", config);
    Window window;
    Slider slider(&window, "Seek");
    QVERIFY(slider.size().isEmpty());
    exercise(slider);
    Time time(&window, "Time");
    QVERIFY(time.size().isEmpty());
    exercise(time);
    Volume panel(&window, "Volume");
    QVERIFY(panel.size().isEmpty());
    QVERIFY(panel.slider->size().isEmpty());
    exercise(panel);
}

void TestMediaBadInput::configIsADirectory()
{
    QDir().mkpath(installation->skin("odd") + "/config");
    Window window("odd");
    Slider slider(&window, "Seek");
    exercise(slider);
    Time time(&window, "Time");
    exercise(time);
    Volume panel(&window, "Volume");
    exercise(panel);
}

void TestMediaBadInput::noInstallation()
{
    qputenv("QPEDIR", "/no/such/directory");
    Window window;
    Slider slider(&window, "Seek");
    QVERIFY(slider.size().isEmpty());
    exercise(slider);
    Time time(&window, "Time");
    exercise(time);
    Volume panel(&window, "Volume");
    QCOMPARE(panel.slider->pos(), QPoint(-1, -1));
    exercise(panel);
    // Neither names nor parents are needed.
    Slider orphan;
    exercise(orphan);
    Time loneTime;
    exercise(loneTime);
    Volume lonePanel;
    exercise(lonePanel);
}

void TestMediaBadInput::withoutBackground_data()
{
    QTest::addColumn<bool>("shown");
    QTest::newRow("hidden") << false;
    QTest::newRow("shown") << true;
}

// Sliders and displays have no background picture of their own unless they are given one.
void TestMediaBadInput::withoutBackground()
{
    QFETCH(bool, shown);
    Window window;
    Slider slider(&window, "Seek");
    Slider standing(&window, "Level");
    Window timeWindow("time");
    Time time(&timeWindow, "Time");
    Window volumeWindow("volume");
    installation->write("volume", "bg.png", "none");
    Volume panel(&volumeWindow, "Volume");
    QVERIFY(!slider.backgroundImage);
    if (shown) {
        QVERIFY(window.expose());
        QVERIFY(timeWindow.expose());
        QVERIFY(volumeWindow.expose());
    }
    for (SkinBase* widget : {static_cast<SkinBase*>(&slider), static_cast<SkinBase*>(&standing),
                             static_cast<SkinBase*>(&time), static_cast<SkinBase*>(&panel)})
        exerciseBackgrounds(*widget);
    QCOMPARE(slider.size(), QSize(200, 20));
    QCOMPARE(time.size(), QSize(82, 20));
}

void TestMediaBadInput::strangeStrips_data()
{
    QTest::addColumn<QSize>("back");
    QTest::addColumn<QSize>("bar");
    QTest::newRow("bar larger than the slider") << QSize(20, 4) << QSize(100, 90);
    QTest::newRow("bar as large as the slider") << QSize(20, 4) << QSize(20, 4);
    QTest::newRow("bar of one column") << QSize(20, 4) << QSize(1, 4);
    QTest::newRow("odd widths") << QSize(41, 7) << QSize(7, 3);
    QTest::newRow("standing, bar larger than the slider") << QSize(8, 20) << QSize(100, 90);
    QTest::newRow("slider of one pixel") << QSize(2, 1) << QSize(2, 1);
    QTest::newRow("very long") << QSize(16384, 1) << QSize(2, 1);
    QTest::newRow("very high") << QSize(2, 16384) << QSize(2, 1);
}

void TestMediaBadInput::strangeStrips()
{
    QFETCH(QSize, back);
    QFETCH(QSize, bar);
    installation->picture("player", "seek_back.png", plain(back.width(), back.height(), red));
    installation->picture("player", "seek_bar.png", plain(bar.width(), bar.height(), blue));
    Window window;
    Slider slider(&window, "Seek");
    QCOMPARE(slider.size(), QSize(back.width() / 2, back.height()));
    if (slider.available() <= 0) {
        // No room for the bar: it stays at 0 and stands for the minimum.
        slider.setValue(50);
        QCOMPARE(slider.sliderPos, 0);
        slider.moveSlider(30);
        QCOMPARE(slider.sliderPos, 0);
        QCOMPARE(slider.sliderVal, 0);
    }
    exercise(slider);
}

void TestMediaBadInput::ranges_data()
{
    QTest::addColumn<QList<int>>("range");
    QTest::newRow("widest") << QList<int>{lowest, highest, highest};
    QTest::newRow("turned round, widest") << QList<int>{highest, lowest, lowest};
    QTest::newRow("empty at the top") << QList<int>{highest, highest, 1};
    QTest::newRow("empty at the bottom") << QList<int>{lowest, lowest, 0};
    QTest::newRow("negative page step") << QList<int>{0, 10, -3};
    QTest::newRow("lowest page step") << QList<int>{0, 10, lowest};
    QTest::newRow("from below zero") << QList<int>{lowest, 0, 1};
}

void TestMediaBadInput::ranges()
{
    QFETCH(QList<int>, range);
    Window window;
    Slider slider(&window, "Seek");
    const int minimum = range[0];
    const int maximum = qMax(range[0], range[1]);
    slider.setValueInit(range[0], range[1], range[2]);
    QCOMPARE(slider.minValue(), minimum);
    QCOMPARE(slider.maxValue(), maximum);
    for (const int value : {lowest, lowest + 1, -1, 0, 1, highest - 1, highest}) {
        slider.setValue(value);
        QCOMPARE(slider.value(), qBound(minimum, value, maximum));
        QVERIFY(slider.sliderPos >= 0 && slider.sliderPos <= 190);
        const int position = slider.positionFromValue(value);
        QVERIFY(position >= 0 && position <= 190);
        const int back = slider.valueFromPosition(value);
        QVERIFY(back >= minimum && back <= maximum);
        slider.addStep();
        slider.subtractStep();
        slider.moveSlider(value);
        QVERIFY(slider.sliderVal >= minimum && slider.sliderVal <= maximum);
    }
    exercise(slider);
    Slider constructed(range[0], range[1], range[2], lowest, &window, "Seek");
    QCOMPARE(constructed.sliderVal, lowest);
    exercise(constructed);
}

void TestMediaBadInput::positions_data()
{
    QTest::addColumn<QByteArray>("group");
    QTest::addColumn<int>("position");
    for (const QByteArray group : {"Seek", "Level"})
        for (const int position : {lowest, lowest + 5, -100000, 100000, highest - 5, highest})
            QTest::addRow("%s at %d", group.constData(), position) << group << position;
}

// Positions are not checked; whatever they are, painting, the stylus and the way back work.
void TestMediaBadInput::positions()
{
    QFETCH(QByteArray, group);
    QFETCH(int, position);
    Window window;
    Slider slider(&window, group.constData());
    QVERIFY(window.expose());
    slider.setValue(50);
    slider.reallyMoveSlider(position);
    QVERIFY(qAbs(qint64(slider.sliderPos)) >= qMin<qint64>(qAbs(qint64(position)), QWIDGETSIZE_MAX));
    slider.grab();
    slider.barRect();
    slider.progRect();
    press(&slider, {5, 5});
    move(&slider, {50, 50});
    release(&slider, {50, 50});
    slider.reallyMoveSlider(position);
    slider.reallyMoveSlider(0);
    QCOMPARE(slider.sliderPos, 0);
    slider.reallyMoveSlider(position);
    slider.grab();
    slider.resetState();
    slider.setValue(20);
    slider.setRange(0, 50);
    QCOMPARE(slider.sliderPos, 76);
}

void TestMediaBadInput::markers_data()
{
    QTest::addColumn<int>("index");
    for (const int index : {lowest, -1, 0, 9, 10, 11, 1000, highest})
        QTest::addRow("%d", index) << index;
}

void TestMediaBadInput::markers()
{
    QFETCH(int, index);
    Window window;
    Slider slider(&window, "Seek");
    QVERIFY(window.expose());
    slider.updateMarker(index);
    slider.removeMarker(index);
    slider.markerImages[0] = QImage();
    QCOMPARE(slider.insertMarker(Marker_1, index), 0);
    QVERIFY(slider.markers[0].rect.isEmpty());
    QCOMPARE(slider.insertMarker(static_cast<MarkerType>(index), index), index == 0 ? 1 : -1);
    slider.grab();
    slider.updateMarker(index);
}

void TestMediaBadInput::clickOffsets_data()
{
    QTest::addColumn<int>("offset");
    for (const int offset : {lowest, -1000, 1000, highest})
        QTest::addRow("%d", offset) << offset;
}

void TestMediaBadInput::clickOffsets()
{
    QFETCH(int, offset);
    Window window;
    Slider slider(&window, "Seek");
    slider.setRange(0, 19);
    slider.setValue(10);
    slider.clickOffset = offset;
    press(&slider, {150, 5});
    QCOMPARE(slider.sliderVal, offset < 0 ? 19 : 0);
    for (const QPointF to : {QPointF(-2147483648.0, 0), QPointF(2147483647.0, 0), QPointF(3, 3)})
        move(&slider, to);
    QVERIFY(slider.value() >= 0 && slider.value() <= 19);
    release(&slider, {0, 0});
    QCOMPARE(int(slider.state), int(SliderState::Idle));
}

void TestMediaBadInput::times()
{
    Window window("time");
    Time time(&window, "Time");
    QRandomGenerator generator(99);
    for (int i = 0; i < 20000; ++i) {
        const unsigned int seconds = generator.generate() >> generator.bounded(16);
        time.update_time(seconds);
        const QList<int> figures{qMin(9, int(seconds / 36000)), int(seconds / 3600 % 10), int(seconds / 60 % 60 / 10),
                                 int(seconds / 60 % 60 % 10),   int(seconds % 60 / 10),   int(seconds % 60 % 10)};
        for (int place = 0; place < 6; ++place)
            if (time.digits[place].current != figures[place])
                QFAIL(qPrintable(QStringLiteral("%1 seconds: figure %2").arg(seconds).arg(place)));
    }
}

void TestMediaBadInput::spacings_data()
{
    QTest::addColumn<QByteArray>("spacing");
    QTest::addColumn<QSize>("numbers");
    const QSize usual(100, 20);
    QTest::newRow("highest") << QByteArray("2147483647") << usual;
    QTest::newRow("lowest") << QByteArray("-2147483648") << usual;
    QTest::newRow("no int") << QByteArray("99999999999999999999") << usual;
    QTest::newRow("large") << QByteArray("100000") << usual;
    QTest::newRow("very negative") << QByteArray("-100000") << usual;
    QTest::newRow("highest, high figures") << QByteArray("2147483647") << QSize(200, 16000);
    QTest::newRow("highest, no figures") << QByteArray("2147483647") << QSize(9, 20);
}

void TestMediaBadInput::spacings()
{
    QFETCH(QByteArray, spacing);
    QFETCH(QSize, numbers);
    installation->picture("time", "numbers.png", plain(numbers.width(), numbers.height(), red));
    installation->config("time", "[Time]\nnumber_image = numbers.png\ncolon_image = colon.png\nspacing = " + spacing);
    Window window("time");
    Time time(&window, "Time");
    QVERIFY2(qint64(time.width()) * time.height() <= mostPixels,
             qPrintable(QStringLiteral("%1 x %2").arg(time.width()).arg(time.height())));
    time.update_time(3723);
    time.setBackgroundPixmap(pixmap(pattern(40, 40)));
    time.setAlphaOverride(3);
    time.grab(QRect(0, 0, 50, 50));
}

void TestMediaBadInput::sliderPositions_data()
{
    QTest::addColumn<QByteArray>("position");
    for (const char* position : {"2147483647", "-2147483648", "99999999999", "100000", "-100000", "1e5", "0x10"})
        QTest::newRow(position) << QByteArray(position);
}

void TestMediaBadInput::sliderPositions()
{
    QFETCH(QByteArray, position);
    installation->config("volume", QByteArray(VolumeSkins::panelGroups) +
                                       "[Volume_SLIDER]\nback_image = back.png\nbar_image = bar.png\nxpos = " +
                                       position + "\nypos = " + position + "\n");
    Window window("volume");
    Volume panel(&window, "Volume");
    QCOMPARE(panel.slider->size(), QSize(50, 12));
    exercise(panel);
    QVERIFY(window.expose());
    exercise(panel);
}

void TestMediaBadInput::volumes_data()
{
    ranges_data();
}

void TestMediaBadInput::volumes()
{
    QFETCH(QList<int>, range);
    Window window("volume");
    Volume panel(&window, "Volume");
    panel.set_volumeRange(range[0], range[1], range[2]);
    exercise(panel);
    QVERIFY(panel.slider->value() >= panel.slider->minValue() && panel.slider->value() <= panel.slider->maxValue());
}

void TestMediaBadInput::buttonNames_data()
{
    QTest::addColumn<QByteArray>("names");
    QTest::newRow("none") << QByteArray("[Volume]\nbackground = bg.png\ncount = 0\n");
    QTest::newRow("without names") << QByteArray("[Volume]\nbackground = bg.png\ncount = 2\n");
    QTest::newRow("only mute_off") << QByteArray("[Volume]\nbackground = bg.png\nmaskimage = mask.png\ncount = 1\n"
                                                 "[Volume_BUTTON0]\nname = mute_off\nimage = off.png\n"
                                                 "mask = ffff8000\n");
    QTest::newRow("only mute_on") << QByteArray("[Volume]\nbackground = bg.png\nmaskimage = mask.png\ncount = 1\n"
                                                "[Volume_BUTTON0]\nname = mute_on\nimage = on.png\nmask = ffff8000\n");
    QTest::newRow("equal names") << QByteArray("[Volume]\nbackground = bg.png\nmaskimage = mask.png\ncount = 2\n"
                                               "[Volume_BUTTON0]\nname = mute_on\nimage = on.png\nmask = ffff8000\n"
                                               "[Volume_BUTTON1]\nname = mute_on\nimage = on.png\nmask = ffff8000\n");
}

void TestMediaBadInput::buttonNames()
{
    QFETCH(QByteArray, names);
    installation->config("volume", names + VolumeSkins::sliderGroup);
    Window window("volume");
    Volume panel(&window, "Volume");
    QCOMPARE(panel.slider->geometry(), QRect(60, 14, 50, 12));
    panel.set_volumeRange(0, 10, 1);
    exercise(panel);
    panel.button_event(nullptr, QString());
    panel.change_muteButton(true);
    panel.change_muteButton(false);
    panel.grab();
}

QTEST_MAIN(TestMediaBadInput)
#include "tst_media_badinput.moc"
