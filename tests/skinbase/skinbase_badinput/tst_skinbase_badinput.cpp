#include "skinbase/skinfixture.h"

#include <QBuffer>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QRandomGenerator>
#include <QTemporaryFile>
#include <QtEndian>

#include <climits>
#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

using namespace skintest;

namespace
{

// Milliseconds; far above what any of these takes, on a busy machine and with sanitizers too.
constexpr int boundedTime = 60000;

// Lowers the bar for every row: prints nothing and comes back in time.
class Watch
{
public:
    Watch() { m_clock.start(); }
    QString verdict() const
    {
        if (m_clock.elapsed() > boundedTime)
            return QStringLiteral("took %1 ms").arg(m_clock.elapsed());
        return Messages::texts().join(QLatin1Char('\n'));
    }

private:
    Messages m_messages;
    QElapsedTimer m_clock;
};

// What reaches the standard error stream past the message handler while it lives: decoders have a voice of their own.
class StandardError
{
public:
    StandardError()
    {
        if (!m_file.open())
            qFatal("no temporary file");
        std::fflush(stderr);
        dup2(m_file.handle(), STDERR_FILENO);
    }
    ~StandardError()
    {
        dup2(m_before, STDERR_FILENO);
        close(m_before);
    }
    Q_DISABLE_COPY_MOVE(StandardError)

    QByteArray written()
    {
        std::fflush(stderr);
        m_file.seek(0);
        return m_file.readAll();
    }

private:
    int m_before = dup(STDERR_FILENO);
    QTemporaryFile m_file;
};

#define VERIFY_QUIET(watch) QCOMPARE((watch).verdict(), QString())

QByteArray pngOf(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

QByteArray bigEndian(quint32 number)
{
    QByteArray bytes(4, 0);
    qToBigEndian(number, bytes.data());
    return bytes;
}

QByteArray littleEndian(quint32 number)
{
    QByteArray bytes(4, 0);
    qToLittleEndian(number, bytes.data());
    return bytes;
}

template <size_t size>
QByteArray withZeros(const char (&text)[size])
{
    return QByteArray(text, size - 1);
}

quint32 crc32(const QByteArray& bytes)
{
    quint32 crc = 0xffffffff;
    for (const char byte : bytes) {
        crc ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit)
            crc = (crc >> 1) ^ ((crc & 1) ? 0xedb88320U : 0U);
    }
    return ~crc;
}

QByteArray pngChunk(const QByteArray& type, const QByteArray& data)
{
    return bigEndian(static_cast<quint32>(data.size())) + type + data + bigEndian(crc32(type + data));
}

QByteArray pngOf(quint32 width, quint32 height, const QByteArray& packedPixels)
{
    return QByteArray("\x89PNG\r\n\x1a\n", 8) +
           pngChunk("IHDR", bigEndian(width) + bigEndian(height) + QByteArray("\x08\x06\x00\x00\x00", 5)) +
           pngChunk("IDAT", packedPixels) + pngChunk("IEND", QByteArray());
}

QByteArray packed(const QByteArray& bytes)
{
    return qCompress(bytes).mid(4);
}

// A correct PNG header that claims a size, with hardly any pixels after it.
QByteArray pngClaiming(quint32 width, quint32 height)
{
    return pngOf(width, height, packed(QByteArray(64, 0)));
}

// A whole picture of one colour table entry a pixel that packs very well.
QByteArray hugeButSmall(int side)
{
    QImage picture(side, side, QImage::Format_Mono);
    picture.fill(1);
    return pngOf(picture);
}

QByteArray bmpClaiming(quint32 width, quint32 height)
{
    return QByteArray("BM") + littleEndian(100) + littleEndian(0) + littleEndian(54) + littleEndian(40) +
           littleEndian(width) + littleEndian(height) + QByteArray("\x01\x00\x18\x00", 4) + QByteArray(46, 0);
}

QByteArray randomBytes(quint32 seed, int size)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, 0);
    for (char& byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

// A config with some of its bytes replaced, removed or doubled.
QByteArray damaged(QByteArray config, quint32 seed)
{
    QRandomGenerator random(seed);
    const int faults = 1 + random.bounded(40);
    for (int i = 0; i < faults && !config.isEmpty(); ++i) {
        const int at = random.bounded(int(config.size()));
        switch (random.bounded(4)) {
        case 0:
            config[at] = static_cast<char>(random.bounded(256));
            break;
        case 1:
            config.remove(at, 1 + random.bounded(5));
            break;
        case 2:
            config.insert(at, config.mid(random.bounded(int(config.size())), random.bounded(40)));
            break;
        default:
            config.insert(at, QByteArray::number(random.generate() - 0x80000000LL));
            break;
        }
    }
    return config;
}

constexpr auto wholeConfig = "[Control]\nbackground = bg.png\nmaskimage = mask.png\ncount = 3\n"
                             "[Control_BUTTON0]\nname = c\nimage = c.png\nxpos = 4\nypos = 3\nmask = ff000011\n"
                             "[Control_BUTTON1]\nname = a\nimage = a.png\nxpos = 34\nypos = 5\nmask = ff000022\n"
                             "[Control_BUTTON2]\nname = b\nimage = b.png\nxpos = 64\nypos = 3\nmask = ff000033\n";

} // namespace

class TestSkinBaseBadInput : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void randomConfig_data();
    void randomConfig();
    void damagedConfig_data();
    void damagedConfig();
    void oddConfig_data();
    void oddConfig();
    void configIsNoRegularFile_data();
    void configIsNoRegularFile();

    void badPicture_data();
    void badPicture();
    void pictureIsNoRegularFile_data();
    void pictureIsNoRegularFile();
    void pictureNames_data();
    void pictureNames();
    void picturesTooLargeTogether();

    void extremePositions_data();
    void extremePositions();
    void manyButtons();
    void manyButtonsOfOneName();

    void operationsBeforeLoading();
    void operationsOnAnEmptySection();
    void unknownNames_data();
    void unknownNames();
    void presses_data();
    void presses();
    void pressesWithoutMask();

    void diagnosticsAreOffByDefault();
    void diagnosticsOfACompleteSkin();
    void diagnostics_data();
    void diagnostics();
    void diagnosticsCategory();
    void diagnosticsOfASecondSection();

private:
    // Loads and then uses a panel in every way.
    void exercise(const QString& section = QStringLiteral("Control"));
    void useEverything(Panel& panel);

    std::unique_ptr<Installation> installation;
};

void TestSkinBaseBadInput::init()
{
    installation = std::make_unique<Installation>();
    ThreeButtons::install(*installation);
}

void TestSkinBaseBadInput::cleanup()
{
    installation.reset();
}

void TestSkinBaseBadInput::useEverything(Panel& panel)
{
    panel.setAlphaOverride(128);
    panel.redrawButtonImages();
    QPixmap target(50, 50);
    target.fill(Qt::black);
    panel.drawButtons(&target, QRect(-5, -5, 50, 50));
    QStringList names = panel.buttonMap.keys().mid(0, 5);
    names << QString() << QStringLiteral("nobody");
    for (const QString& name : std::as_const(names)) {
        panel.setButtonFocus(name);
        panel.pressButton(name);
        panel.releaseButton(name);
        panel.disableButton(name);
        panel.hideButton(name);
        panel.showNormal(name);
        panel.showFocus(name);
        panel.setButtonState(name, Pressed);
        panel.setButtonState(name, Normal);
    }
    for (const int key : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Return, Qt::Key_Down}) {
        sendKey(panel, QEvent::KeyPress, key);
        sendKey(panel, QEvent::KeyRelease, key);
    }
    for (const QPoint& at : {QPoint(0, 0), QPoint(-1, -1), QPoint(35, 5), QPoint(100000, -100000)}) {
        sendMouse(panel, QEvent::MouseButtonPress, at);
        sendMouse(panel, QEvent::MouseButtonRelease, at);
    }
    panel.grab();
    panel.setBackgroundPixmap(QPixmap::fromImage(pattern(60, 60)));
    panel.grab();
    panel.setBackgroundImage(QImage());
    panel.setBackgroundImage(plain(3, 3, red));
    panel.grab();
}

void TestSkinBaseBadInput::exercise(const QString& section)
{
    Stage stage;
    stage.window.show();
    stage.panel.do_configloading(section);
    useEverything(stage.panel);
    QCoreApplication::processEvents();
    QVERIFY(stage.panel.backgroundImage);
    QVERIFY(stage.panel.maskImage);
    QVERIFY(stage.panel.buttons.size() <= size_t(SkinBase::maxButtons));
}

void TestSkinBaseBadInput::randomConfig_data()
{
    QTest::addColumn<quint32>("seed");
    QTest::addColumn<int>("size");
    for (quint32 seed = 1; seed <= 8; ++seed)
        QTest::addRow("seed %u", seed) << seed << int(200 * seed * seed);
}

void TestSkinBaseBadInput::randomConfig()
{
    QFETCH(quint32, seed);
    QFETCH(int, size);
    installation->config("player", randomBytes(seed, size));
    const Watch watch;
    exercise();
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::damagedConfig_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 40; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestSkinBaseBadInput::damagedConfig()
{
    QFETCH(quint32, seed);
    installation->config("player", damaged(wholeConfig, seed));
    const Watch watch;
    exercise();
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::oddConfig_data()
{
    QTest::addColumn<QByteArray>("config");
    QTest::addColumn<int>("buttons");
    QTest::newRow("empty") << QByteArray() << 0;
    QTest::newRow("zero bytes alone") << QByteArray(1000, '\0') << 0;
    QTest::newRow("one bracket") << QByteArray("[") << 0;
    QTest::newRow("brackets alone") << QByteArray(100000, '[') << 0;
    QTest::newRow("equals signs alone") << QByteArray(100000, '=') << 0;
    QTest::newRow("ends of lines alone") << QByteArray(100000, '\n') << 0;
    QTest::newRow("zero byte in a picture's name")
        << withZeros(
               "[Control]\nbackground = b\0g.png\nmaskimage = \0\ncount = 1\n[Control_BUTTON0]\nimage = a\0.png\n")
        << 1;
    QTest::newRow("zero byte in a number") << withZeros("[Control]\ncount = 1\0002\n") << 0;
    QTest::newRow("zero byte in a name") << withZeros("[Control]\ncount = 1\n[Control_BUTTON0]\nname = a\0b\n") << 1;
    QTest::newRow("not UTF-8") << QByteArray("[Control]\ncount = 1\n[Control_BUTTON0]\nname = \xff\xfe\xc0\n") << 1;
    QTest::newRow("very long line") << "[Control]\nbackground = " + QByteArray(500000, 'x') + "\ncount = 1\n" << 1;
    QTest::newRow("very long name") << "[Control]\ncount = 1\n[Control_BUTTON0]\nname = " + QByteArray(500000, 'x') +
                                           "\n"
                                    << 1;
    QTest::newRow("count -5") << QByteArray("[Control]\ncount = -5\n") << 0;
    QTest::newRow("count abc") << QByteArray("[Control]\ncount = abc\n") << 0;
    QTest::newRow("count 2147483647") << QByteArray("[Control]\nbackground = bg.png\ncount = 2147483647\n")
                                      << int(SkinBase::maxButtons);
    QTest::newRow("count beyond int") << QByteArray("[Control]\ncount = 2147483648\n") << 0;
    QTest::newRow("far too large a file")
        << QByteArray("[Control]\n") + QByteArray(4 * 1024 * 1024, '#') + "\ncount = 1\n"
        << 0;
}

void TestSkinBaseBadInput::oddConfig()
{
    QFETCH(QByteArray, config);
    QFETCH(int, buttons);
    installation->config("player", config);
    const Watch watch;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    QCOMPARE(int(panel.buttons.size()), buttons);
    QCOMPARE(panel.focusPolicy(), buttons > 0 ? Qt::StrongFocus : Qt::NoFocus);
    useEverything(panel);
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::configIsNoRegularFile_data()
{
    QTest::addColumn<QString>("kind");
    for (const char* kind : {"directory", "pipe", "endless device", "dangling link", "link to itself"})
        QTest::newRow(kind) << QString(kind);
}

void makeOddFile(const QString& path, const QString& kind)
{
    QFile::remove(path);
    const QByteArray name = QFile::encodeName(path);
    bool made = true;
    if (kind == QLatin1String("directory"))
        made = QDir().mkpath(path);
    else if (kind == QLatin1String("pipe"))
        made = mkfifo(name.constData(), 0600) == 0;
    else if (kind == QLatin1String("endless device"))
        made = QFile::link(QStringLiteral("/dev/zero"), path);
    else if (kind == QLatin1String("dangling link"))
        made = QFile::link(QStringLiteral("nowhere"), path);
    else
        made = QFile::link(QFileInfo(path).fileName(), path);
    if (!made)
        qFatal("cannot make %s", name.constData());
}

void TestSkinBaseBadInput::configIsNoRegularFile()
{
    QFETCH(QString, kind);
    makeOddFile(installation->skin("player") + "/config", kind);
    const Watch watch;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    QVERIFY(panel.buttons.empty());
    QCOMPARE(panel.focusPolicy(), Qt::NoFocus);
    useEverything(panel);
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::badPicture_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray noise = randomBytes(77, 100 * 40 * 4);
    const QByteArray whole =
        pngOf(QImage(reinterpret_cast<const uchar*>(noise.constData()), 100, 40, QImage::Format_ARGB32));
    QTest::newRow("empty") << QByteArray();
    for (const int percent : {1, 10, 30, 50, 70, 90, 99})
        QTest::addRow("cut after %d of 100", percent) << whole.left(whole.size() * percent / 100);
    QByteArray flipped = whole;
    flipped[whole.size() / 2] = static_cast<char>(~flipped[whole.size() / 2]);
    QTest::newRow("a byte changed") << flipped;
    QTest::newRow("text") << QByteArray("this is no picture\n");
    for (quint32 seed = 1; seed <= 4; ++seed)
        QTest::addRow("random bytes %u", seed) << randomBytes(seed, 5000);
    QTest::newRow("random bytes after a PNG header") << pngClaiming(100, 40).left(33) + randomBytes(9, 5000);
    QTest::newRow("PNG that claims 60000 x 60000") << pngClaiming(60000, 60000);
    QTest::newRow("crafted PNG that claims 2147483647 x 2147483647") << pngClaiming(INT_MAX, INT_MAX);
    QTest::newRow("crafted PNG that claims 0 x 0") << pngClaiming(0, 0);
    QTest::newRow("crafted PNG with too few pixels") << pngClaiming(100, 40);
    QTest::newRow("crafted PNG with a line filter that does not exist") << pngOf(4, 4, packed(QByteArray(4 * 17, 9)));
    QTest::newRow("crafted PNG with damaged packing") << pngOf(4, 4, randomBytes(3, 60));
    QTest::newRow("crafted PNG with no packed bytes") << pngOf(4, 4, QByteArray());
    QTest::newRow("PNG that claims 65536 x 1") << pngClaiming(65536, 1);
    QTest::newRow("whole PNG of 20000 x 20000") << hugeButSmall(20000);
    QTest::newRow("BMP that claims 60000 x 60000") << bmpClaiming(60000, 60000);
    QTest::newRow("BMP of negative width") << bmpClaiming(static_cast<quint32>(-5), 10);
    QTest::newRow("PPM that claims 60000 x 60000") << QByteArray("P6\n60000 60000\n255\nabc");
    QTest::newRow("PGM that claims 60000 x 60000 in digits") << QByteArray("P2\n60000 60000\n255\n1 2 3");
    QTest::newRow("XPM that claims 60000 x 60000")
        << QByteArray("/* XPM */\nstatic char* p[] = {\n\"60000 60000 1 1\",\n\"a c #ff0000\",\n\"a\"};\n");
    QTest::newRow("GIF that claims 60000 x 60000")
        << QByteArray("GIF89a") + QByteArray("\x60\xea\x60\xea\x80\x00\x00", 7) + QByteArray(20, 0);
    QTest::newRow("JPEG header alone") << QByteArray("\xff\xd8\xff\xe0\x00\x10JFIF\x00", 11);
}

void TestSkinBaseBadInput::badPicture()
{
    QFETCH(QByteArray, bytes);
    for (const char* file : {"bg.png", "mask.png", "a.png"})
        installation->write("player", file, bytes);
    const Watch watch;
    StandardError standardError;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    // The PNG library tells of contents that are wrong behind right checksums; that is no accident, and let pass.
    if (!QByteArray(QTest::currentDataTag()).startsWith("crafted"))
        QCOMPARE(standardError.written(), QByteArray());
    QVERIFY(panel.backgroundImage != nullptr);
    QVERIFY(panel.backgroundImage->isNull());
    QVERIFY(panel.maskImage->isNull());
    QVERIFY(panel.buttonMap["a"]->image.isNull());
    QVERIFY(panel.buttonMap["a"]->workImage.isNull());
    // The others are not harmed.
    COMPARE_PICTURES(panel.buttonMap["b"]->image, ThreeButtons::stripOf('b'));
    useEverything(panel);
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::pictureIsNoRegularFile_data()
{
    configIsNoRegularFile_data();
}

void TestSkinBaseBadInput::pictureIsNoRegularFile()
{
    QFETCH(QString, kind);
    for (const char* file : {"bg.png", "mask.png", "a.png"})
        makeOddFile(installation->skin("player") + "/" + file, kind);
    const Watch watch;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    QVERIFY(panel.backgroundImage->isNull());
    QVERIFY(panel.maskImage->isNull());
    QVERIFY(panel.buttonMap["a"]->image.isNull());
    QCOMPARE(panel.buttonMap.size(), 3);
    useEverything(panel);
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::pictureNames_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("the directory itself") << QByteArray(".");
    QTest::newRow("an endless device") << QByteArray("../../../../../../../../../../dev/zero");
    QTest::newRow("a resource") << QByteArray(":/x.png");
    QTest::newRow("an address") << QByteArray("http://localhost/x.png");
    QTest::newRow("very long") << QByteArray(10000, 'x');
    QTest::newRow("many directories") << QByteArray("x/").repeated(5000);
    QTest::newRow("percent signs") << QByteArray("%1%s%n");
}

void TestSkinBaseBadInput::pictureNames()
{
    QFETCH(QByteArray, name);
    installation->config("player", "[Control]\nbackground = " + name + "\nmaskimage = " + name +
                                       "\ncount = 1\n[Control_BUTTON0]\nimage = " + name + "\n");
    const Watch watch;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    QVERIFY(panel.backgroundImage->isNull());
    QVERIFY(panel.buttons[0]->image.isNull());
    useEverything(panel);
    VERIFY_QUIET(watch);
}

// Each of the pictures may be loaded, all of them may not.
void TestSkinBaseBadInput::picturesTooLargeTogether()
{
    installation->write("player", "huge.png", hugeButSmall(4096));
    QByteArray config = "[Control]\nbackground = huge.png\ncount = 40\n";
    for (int i = 0; i < 40; ++i)
        config +=
            "[Control_BUTTON" + QByteArray::number(i) + "]\nname = n" + QByteArray::number(i) + "\nimage = huge.png\n";
    installation->config("player", config);
    const Watch watch;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    QCOMPARE(panel.buttons.size(), size_t(40));
    QCOMPARE(panel.backgroundImage->size(), QSize(4096, 4096));
    QVERIFY(!panel.buttonMap["n0"]->image.isNull());
    for (int i = 1; i < 40; ++i)
        QVERIFY(panel.buttons[size_t(i)]->image.isNull());
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::extremePositions_data()
{
    QTest::addColumn<int>("x");
    QTest::addColumn<int>("y");
    for (const int x : {INT_MAX, INT_MAX - 10, INT_MAX / 2, 1 << 30, -1, -(1 << 30), INT_MIN + 1, INT_MIN})
        for (const int y : {5, INT_MAX, INT_MIN})
            QTest::addRow("%d, %d", x, y) << x << y;
}

void TestSkinBaseBadInput::extremePositions()
{
    QFETCH(int, x);
    QFETCH(int, y);
    installation->config("player", "[Control]\nbackground = bg.png\nmaskimage = mask.png\ncount = 1\n"
                                   "[Control_BUTTON0]\nname = a\nimage = a.png\nmask = ff000022\nxpos = " +
                                       QByteArray::number(x) + "\nypos = " + QByteArray::number(y) + "\n");
    Stage stage;
    stage.panel.do_configloading("Control");
    stage.panel.setAlphaOverride(255);
    QVERIFY(stage.show());
    const Watch watch;
    QCOMPARE(QPoint(stage.panel.buttonMap["a"]->xpos, stage.panel.buttonMap["a"]->ypos), QPoint(x, y));
    sendMouse(stage.panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
    sendMouse(stage.panel, QEvent::MouseButtonRelease, ThreeButtons::pointInA);
    QCOMPARE(stage.panel.clicks.size(), 1);
    stage.panel.update();
    QVERIFY(stage.settle());
    QImage expected = ThreeButtons::background();
    if (x == -1 && y == 5)
        for (int row = 5; row < 11; ++row)
            for (int column = 0; column < 9; ++column)
                expected.setPixel(column, row, ThreeButtons::pixel('a', 0));
    COMPARE_PICTURES(stage.onScreen(), expected);
    useEverything(stage.panel);
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::manyButtons()
{
    QByteArray config = "[Control]\nbackground = bg.png\nmaskimage = mask.png\ncount = 5000\n";
    for (int i = 0; i < 5000; ++i)
        config += "[Control_BUTTON" + QByteArray::number(i) + "]\nname = n" + QByteArray::number(i) +
                  "\nimage = a.png\nxpos = " + QByteArray::number(i % 90) + "\nypos = 3\nmask = ff000022\n";
    installation->config("player", config);
    const Watch watch;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    QCOMPARE(int(panel.buttons.size()), int(SkinBase::maxButtons));
    QCOMPARE(panel.buttons.back()->name, QStringLiteral("n%1").arg(SkinBase::maxButtons - 1));
    panel.setAlphaOverride(128);
    panel.grab();
    sendMouse(panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
    sendMouse(panel, QEvent::MouseButtonRelease, ThreeButtons::pointInA);
    QCOMPARE(panel.clicks.size(), 1);
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::manyButtonsOfOneName()
{
    QByteArray config = "[Control]\nbackground = bg.png\nmaskimage = mask.png\ncount = 300\n";
    for (int i = 0; i < 300; ++i)
        config += "[Control_BUTTON" + QByteArray::number(i) + "]\nname = x\nimage = a.png\nmask = ff000022\n";
    installation->config("player", config);
    const Watch watch;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    QCOMPARE(panel.buttons.size(), size_t(300));
    QCOMPARE(panel.buttonMap.size(), 1);
    useEverything(panel);
    sendMouse(panel, QEvent::MouseButtonPress, ThreeButtons::pointInA);
    sendMouse(panel, QEvent::MouseButtonRelease, ThreeButtons::pointInA);
    QVERIFY(panel.focusButton == panel.buttons.end() - 1);
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::operationsBeforeLoading()
{
    const Watch watch;
    Panel panel;
    useEverything(panel);
    QVERIFY(panel.buttonMap.isEmpty());
    QVERIFY(panel.clicks.isEmpty());
    QFocusEvent in(QEvent::FocusIn);
    panel.focusInEvent(&in);
    QFocusEvent out(QEvent::FocusOut);
    panel.focusOutEvent(&out);
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::operationsOnAnEmptySection()
{
    const Watch watch;
    exercise("NoSuchSection");
    exercise(QString());
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::unknownNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << "";
    QTest::newRow("other case") << "A";
    QTest::newRow("longer") << "aa";
    QTest::newRow("very long") << QString(100000, QLatin1Char('a'));
    QTest::newRow("zero character") << QString(1, QChar(0));
}

void TestSkinBaseBadInput::unknownNames()
{
    QFETCH(QString, name);
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    const Watch watch;
    panel.forget();
    panel.pressButton(name);
    panel.releaseButton(name);
    panel.disableButton(name);
    panel.hideButton(name);
    panel.showNormal(name);
    panel.showFocus(name);
    panel.setButtonFocus(name);
    for (int state = 0; state <= 4; ++state)
        panel.setButtonState(name, static_cast<SkinButtonState>(state));
    QCOMPARE(panel.callsOf("drawButton"), QStringList());
    QVERIFY(panel.clicks.isEmpty());
    QCOMPARE(panel.buttonMap.keys(), QStringList({"a", "b", "c"}));
    QVERIFY(panel.focusButton == panel.buttons.end());
    for (const SkinButton* button : panel.buttons)
        QCOMPARE(button->state, Normal);
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::presses_data()
{
    QTest::addColumn<QPointF>("at");
    QTest::newRow("far right") << QPointF(1e9, 5);
    QTest::newRow("far left") << QPointF(-1e9, 5);
    QTest::newRow("just outside") << QPointF(-1, -1);
    QTest::newRow("just outside the other corner") << QPointF(100, 40);
    QTest::newRow("highest") << QPointF(INT_MAX, INT_MAX);
    QTest::newRow("lowest") << QPointF(INT_MIN, INT_MIN);
}

void TestSkinBaseBadInput::presses()
{
    QFETCH(QPointF, at);
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    const Watch watch;
    for (int i = 0; i < 2; ++i) {
        const QMouseEvent press(QEvent::MouseButtonPress, at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QMouseEvent copy(press.type(), at, at, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        panel.mousePressEvent(&copy);
    }
    QCOMPARE(panel.buttonHeld, false);
    QCOMPARE(panel.callsOf("pressButton"), QStringList());
    VERIFY_QUIET(watch);
}

// A mask picture that could not be loaded claims nothing, even for buttons whose mask is 0.
void TestSkinBaseBadInput::pressesWithoutMask()
{
    installation->config("player", "[Control]\ncount = 1\n[Control_BUTTON0]\nname = x\n");
    Panel panel(nullptr, "player");
    const Watch watch;
    sendMouse(panel, QEvent::MouseButtonPress, QPoint(0, 0));
    panel.do_configloading("Control");
    for (const QPoint& at : {QPoint(0, 0), QPoint(-1, -1), QPoint(5, 5)})
        sendMouse(panel, QEvent::MouseButtonPress, at);
    QCOMPARE(panel.buttonHeld, false);
    VERIFY_QUIET(watch);
}

void TestSkinBaseBadInput::diagnosticsAreOffByDefault()
{
    installation->config("player", "[Control]\nbackground = x.png\ncount = 3\n");
    Messages messages;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    panel.do_configloading("Other");
    Panel other(nullptr, "noskin");
    other.do_configloading("Control");
    QCOMPARE(Messages::texts(), QStringList());
}

namespace
{

// Switches the diagnostics on while it lives.
class Diagnostics
{
public:
    Diagnostics() { QLoggingCategory::setFilterRules(QStringLiteral("skinwidgets.skin.debug=true")); }
    ~Diagnostics() { QLoggingCategory::setFilterRules(QString()); }
    Q_DISABLE_COPY_MOVE(Diagnostics)

    // How many lines hold all of the words.
    static int lines(const QStringList& words)
    {
        const QStringList texts = Messages::texts();
        return int(std::count_if(texts.begin(), texts.end(), [&words](const QString& text) {
            return std::all_of(words.begin(), words.end(),
                               [&text](const QString& word) { return text.contains(word); });
        }));
    }

private:
    Messages m_messages;
};

} // namespace

void TestSkinBaseBadInput::diagnosticsOfACompleteSkin()
{
    const Diagnostics diagnostics;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    QCOMPARE(Messages::texts(), QStringList());
}

void TestSkinBaseBadInput::diagnostics_data()
{
    QTest::addColumn<QByteArray>("config");
    QTest::addColumn<QStringList>("words");
    const auto without = [](const QByteArray& line) { return QByteArray(wholeConfig).replace(line + "\n", ""); };
    const auto changed = [](const QByteArray& before, const QByteArray& after) {
        return QByteArray(wholeConfig).replace(before, after);
    };
    const QString section = QStringLiteral("[Control]");
    const QString second = QStringLiteral("[Control_BUTTON1]");
    QTest::newRow("background key") << without("background = bg.png") << QStringList{"/config", section, "background"};
    QTest::newRow("maskimage key") << without("maskimage = mask.png") << QStringList{"/config", section, "maskimage"};
    QTest::newRow("count key") << without("count = 3") << QStringList{"/config", section, "count"};
    QTest::newRow("name key") << without("name = a") << QStringList{"/config", second, "name"};
    QTest::newRow("image key") << without("image = a.png") << QStringList{"/config", second, "image"};
    QTest::newRow("mask key") << without("mask = ff000022") << QStringList{"/config", second, "mask"};
    QTest::newRow("xpos key") << without("xpos = 34") << QStringList{"/config", second, "xpos"};
    QTest::newRow("ypos key") << without("ypos = 5") << QStringList{"/config", second, "ypos"};
    QTest::newRow("section") << QByteArray("[Other]\n") << QStringList{"/config", section};
    QTest::newRow("button group") << changed("[Control_BUTTON1]", "[Control_BUTTON9]")
                                  << QStringList{"/config", second};
    QTest::newRow("background file") << changed("bg.png", "none.png")
                                     << QStringList{section, "background", "/pics/player/none.png"};
    QTest::newRow("mask file") << changed("mask.png", "none.png")
                               << QStringList{section, "maskimage", "/pics/player/none.png"};
    QTest::newRow("strip file") << changed("a.png", "none.png")
                                << QStringList{second, "image", "/pics/player/none.png"};
    QTest::newRow("unreadable background")
        << changed("bg.png", "config") << QStringList{section, "background", "/pics/player/config"};
    QTest::newRow("unreadable mask") << changed("mask.png", "config")
                                     << QStringList{section, "maskimage", "/pics/player/config"};
    QTest::newRow("unreadable strip") << changed("a.png", "config")
                                      << QStringList{second, "image", "/pics/player/config"};
    QTest::newRow("directory in a picture's place")
        << changed("a.png", ".") << QStringList{second, "image", "/pics/player/."};
    QTest::newRow("mask that no pixel has")
        << changed("ff000022", "00000022") << QStringList{"/config", second, "mask", "00000022"};
    QTest::newRow("mask that is no number") << changed("ff000022", "blue") << QStringList{"/config", second, "mask"};
    QTest::newRow("count beyond the most")
        << changed("count = 3", "count = 99999") << QStringList{"/config", section, "count"};
}

void TestSkinBaseBadInput::diagnostics()
{
    QFETCH(QByteArray, config);
    QFETCH(QStringList, words);
    installation->config("player", config);
    const Diagnostics diagnostics;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    words << installation->skin("player");
    QVERIFY2(Diagnostics::lines(words) > 0, qPrintable(Messages::texts().join('\n')));
}

void TestSkinBaseBadInput::diagnosticsCategory()
{
    QFile::remove(installation->skin("player") + "/config");
    const Diagnostics diagnostics;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    QVERIFY(Diagnostics::lines({installation->skin("player") + "/config", "missing"}) > 0);
    for (const Messages::Message& message : std::as_const(Messages::all())) {
        QCOMPARE(message.category, QByteArray("skinwidgets.skin"));
        QCOMPARE(message.type, QtDebugMsg);
    }
}

// A panel that is loaded twice tells of its second section under that section's groups.
void TestSkinBaseBadInput::diagnosticsOfASecondSection()
{
    installation->config("player", QByteArray(wholeConfig) +
                                       "[More]\nbackground = bg.png\nmaskimage = mask.png\ncount = 1\n"
                                       "[More_BUTTON0]\nname = m\nimage = a.png\nxpos = 0\nypos = 0\nmask = 77\n");
    const Diagnostics diagnostics;
    Panel panel(nullptr, "player");
    panel.do_configloading("Control");
    panel.do_configloading("More");
    QCOMPARE(Messages::texts().size(), 1);
    QCOMPARE(Diagnostics::lines({"[More_BUTTON0]", "mask", "00000077"}), 1);
}

QTEST_MAIN(TestSkinBaseBadInput)
#include "tst_skinbase_badinput.moc"
