#include "qtopia/resource.h"

#include "toolkit/pictureloader.h"

#include <QDir>
#include <QImageReader>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <sys/stat.h>

class TestResource : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void findsPictures_data();
    void findsPictures();
    void findsNothing_data();
    void findsNothing();
    void prefersFormatsInOrder();
    void prefersPngToOtherPictures_data();
    void prefersPngToOtherPictures();
    void takesRegularFilesOnly();
    void keepsPixels();
    void pixmapsShowTheSame();
    void damagedPicturesAreNull_data();
    void damagedPicturesAreNull();
    void refusesHugePictures();
    void followsTheDataDirectory();

private:
    QString pathOf(const QString& file) const { return m_root->path() + QLatin1String("/pics/") + file; }
    void write(const QString& file, const QByteArray& bytes) const;
    void paint(const QString& file, const QColor& color) const;

    std::unique_ptr<QTemporaryDir> m_root;
};

void TestResource::init()
{
    QTest::failOnWarning(QRegularExpression(".*"));
    m_root = std::make_unique<QTemporaryDir>();
    QVERIFY(m_root->isValid());
    QVERIFY(QDir(m_root->path()).mkpath("pics/sub/deeper"));
    qputenv("QPEDIR", QFile::encodeName(m_root->path()));
}

void TestResource::cleanup()
{
    qunsetenv("QPEDIR");
    m_root.reset();
}

void TestResource::write(const QString& file, const QByteArray& bytes) const
{
    QFile target(pathOf(file));
    QVERIFY(target.open(QIODevice::WriteOnly));
    QCOMPARE(target.write(bytes), qint64(bytes.size()));
}

void TestResource::paint(const QString& file, const QColor& color) const
{
    QImage picture(6, 4, QImage::Format_RGB32);
    picture.fill(color);
    QVERIFY2(picture.save(pathOf(file)), qPrintable(file));
}

void TestResource::findsPictures_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");

    QTest::newRow("plain") << "play"
                           << "play.png";
    QTest::newRow("sub-folder") << "sub/play"
                                << "sub/play.png";
    QTest::newRow("sub-folders") << "sub/deeper/play"
                                 << "sub/deeper/play.png";
    QTest::newRow("dot in the name") << "play.on"
                                     << "play.on.png";
    QTest::newRow("two dots in the name") << "play..on"
                                          << "play..on.png";
    QTest::newRow("name that looks like a file") << "play.png"
                                                 << "play.png.png";
    QTest::newRow("blanks") << "play it"
                            << "play it.png";
    QTest::newRow("beyond ASCII") << QStringLiteral(u"\u00fcber") << QStringLiteral(u"\u00fcber.png");
    QTest::newRow("other format") << "play"
                                  << "play.bmp";
}

void TestResource::findsPictures()
{
    QFETCH(QString, name);
    QFETCH(QString, file);
    paint(file, Qt::red);
    QCOMPARE(Resource::findPixmap(name), pathOf(file));
    QCOMPARE(Resource::loadImage(name).pixelColor(3, 2), QColor(Qt::red));
    QCOMPARE(Resource::loadPixmap(name).size(), QSize(6, 4));
}

void TestResource::findsNothing_data()
{
    QTest::addColumn<QString>("name");

    QTest::newRow("missing") << "pause";
    QTest::newRow("null") << QString();
    QTest::newRow("empty") << "";
    QTest::newRow("slash") << "/";
    QTest::newRow("parent") << "..";
    QTest::newRow("out of the directory") << "../outside";
    QTest::newRow("out and back") << "../pics/play";
    QTest::newRow("parent in the middle") << "sub/../play";
    QTest::newRow("parent at the end") << "sub/..";
    QTest::newRow("leading slash") << "/play";
    QTest::newRow("trailing slash") << "sub/";
    QTest::newRow("with its ending") << "play.png";
    QTest::newRow("other case") << "Play";
    QTest::newRow("NUL at the end") << QStringLiteral("play") + QChar(0);
    QTest::newRow("NUL inside") << QStringLiteral("pl") + QChar(0) + QStringLiteral("ay");
    QTest::newRow("ending of no picture format") << "notes";
    QTest::newRow("very long") << QString(100000, 'x');
    QTest::newRow("very deep") << QString("a/").repeated(50000) + "b";
}

void TestResource::findsNothing()
{
    QFETCH(QString, name);
    paint("play.png", Qt::red);
    paint("../outside.png", Qt::red);
    // What a lookup of an empty last part would meet.
    paint("outside.png", Qt::red);
    QVERIFY(QFile::rename(pathOf("outside.png"), pathOf(".png")));
    QVERIFY(QFile::copy(pathOf(".png"), pathOf("sub/.png")));
    QVERIFY(QFile::copy(pathOf(".png"), pathOf("notes.txt")));
    QVERIFY(Resource::findPixmap(name).isNull());
    QVERIFY(Resource::loadImage(name).isNull());
    QVERIFY(Resource::loadPixmap(name).isNull());
}

void TestResource::prefersFormatsInOrder()
{
    QByteArrayList formats = QImageReader::supportedImageFormats();
    QVERIFY(formats.size() > 2);
    formats.removeAll("png");
    formats.prepend("png");
    for (const QByteArray& format : formats)
        write("play." + format, "anything");
    for (const QByteArray& format : formats) {
        QCOMPARE(Resource::findPixmap("play"), pathOf("play." + format));
        QVERIFY(QFile::remove(pathOf("play." + format)));
    }
    QVERIFY(Resource::findPixmap("play").isNull());
}

void TestResource::prefersPngToOtherPictures_data()
{
    QTest::addColumn<QString>("other");
    QTest::newRow("jpg") << "jpg";
    QTest::newRow("bmp") << "bmp";
    QTest::newRow("ppm") << "ppm";
}

void TestResource::prefersPngToOtherPictures()
{
    QFETCH(QString, other);
    paint("play." + other, Qt::blue);
    QCOMPARE(Resource::loadImage("play").pixelColor(0, 0).red(), 0);
    QCOMPARE(Resource::loadPixmap("play").toImage().pixelColor(0, 0).red(), 0);
    paint("play.png", Qt::red);
    QCOMPARE(Resource::loadImage("play").pixelColor(0, 0), QColor(Qt::red));
    QCOMPARE(Resource::loadPixmap("play").toImage().pixelColor(0, 0), QColor(Qt::red));
}

void TestResource::takesRegularFilesOnly()
{
    QVERIFY(QDir().mkpath(pathOf("play.png")));
    QVERIFY(Resource::findPixmap("play").isNull());
    QCOMPARE(mkfifo(QFile::encodeName(pathOf("play.bmp")).constData(), 0600), 0);
    QVERIFY(Resource::findPixmap("play").isNull());
    QVERIFY(Resource::loadImage("play").isNull());
    // They do not stand in the way of a picture of a later format either.
    paint("play.ppm", Qt::red);
    QCOMPARE(Resource::findPixmap("play"), pathOf("play.ppm"));
    QVERIFY(QFile::link("/dev/zero", pathOf("zero.png")));
    QVERIFY(Resource::findPixmap("zero").isNull());
    QVERIFY(QFile::link(pathOf("absent"), pathOf("dangling.png")));
    QVERIFY(Resource::findPixmap("dangling").isNull());
    QVERIFY(QFile::link(pathOf("play.ppm"), pathOf("link.png")));
    QCOMPARE(Resource::loadImage("link").pixelColor(0, 0), QColor(Qt::red));
}

void TestResource::keepsPixels()
{
    QImage picture(2, 1, QImage::Format_ARGB32);
    picture.setPixel(0, 0, 0x00123456);
    picture.setPixel(1, 0, 0x80ff8000);
    QVERIFY(picture.save(pathOf("alpha.png")));
    const QImage loaded = Resource::loadImage("alpha");
    QCOMPARE(loaded.size(), QSize(2, 1));
    QCOMPARE(loaded.pixel(0, 0), 0x00123456u);
    QCOMPARE(loaded.pixel(1, 0), 0x80ff8000u);
}

void TestResource::pixmapsShowTheSame()
{
    QImage picture(2, 1, QImage::Format_ARGB32);
    picture.setPixel(0, 0, 0xff123456);
    picture.setPixel(1, 0, 0x00000000);
    QVERIFY(picture.save(pathOf("alpha.png")));
    const QPixmap loaded = Resource::loadPixmap("alpha");
    QCOMPARE(loaded.size(), QSize(2, 1));
    QVERIFY(loaded.hasAlphaChannel());
    QCOMPARE(loaded.toImage().pixel(0, 0), 0xff123456u);
    QCOMPARE(loaded.toImage().pixel(1, 0), 0x00000000u);
}

void TestResource::damagedPicturesAreNull_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("no picture at all");
    QTest::newRow("signature alone") << QByteArray("\x89PNG\r\n\x1a\n", 8);
}

void TestResource::damagedPicturesAreNull()
{
    QFETCH(QByteArray, bytes);
    write("play.png", bytes);
    // Also with a sound picture of a later format beside it.
    paint("play.bmp", Qt::red);
    QCOMPARE(Resource::findPixmap("play"), pathOf("play.png"));
    QVERIFY(Resource::loadImage("play").isNull());
    QVERIFY(Resource::loadPixmap("play").isNull());
}

void TestResource::refusesHugePictures()
{
    QImage picture(skinwidgets::largestPictureSide + 1, 1, QImage::Format_Mono);
    picture.fill(0);
    QVERIFY(picture.save(pathOf("wide.png")));
    QVERIFY(!Resource::findPixmap("wide").isNull());
    QVERIFY(Resource::loadImage("wide").isNull());
    QVERIFY(Resource::loadPixmap("wide").isNull());
}

void TestResource::followsTheDataDirectory()
{
    const QTemporaryDir other;
    QVERIFY(QDir(other.path()).mkpath("pics"));
    paint("play.png", Qt::red);
    QVERIFY(!Resource::loadImage("play").isNull());
    qputenv("QPEDIR", QFile::encodeName(other.path()));
    QVERIFY(Resource::loadImage("play").isNull());
    QVERIFY(QFile::copy(pathOf("play.png"), other.path() + "/pics/play.png"));
    QCOMPARE(Resource::findPixmap("play"), other.path() + "/pics/play.png");
    QVERIFY(!Resource::loadPixmap("play").isNull());
}

QTEST_MAIN(TestResource)
#include "tst_resource.moc"
