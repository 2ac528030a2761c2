#include "toolkit/pictureloader.h"

#include <QBuffer>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTemporaryFile>
#include <QTest>

#include <cstdio>

#include <sys/stat.h>
#include <unistd.h>

using namespace skinwidgets;

class TestPictureLoader : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void loadsFormats_data();
    void loadsFormats();
    void pixelsAre32Bits();
    void contentsDecideTheFormat();
    void refuses_data();
    void refuses();
    void damagedPicturesPrintNothing_data();
    void damagedPicturesPrintNothing();
    void damagedPngPrintsNothingAtAll_data();
    void damagedPngPrintsNothingAtAll();
    void messagesPassAgainAfterwards();
    void memory();

private:
    QString write(const QString& name, const QByteArray& data);

    QTemporaryDir m_directory;
};

namespace
{

int messages = 0;

void countMessage(QtMsgType, const QMessageLogContext&, const QString&)
{
    ++messages;
}

QByteArray encoded(const char* format, QImage::Format pixels = QImage::Format_ARGB32)
{
    QImage image(16, 16, pixels);
    image.fill(QColor(10, 20, 30, 40));
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return data;
}

void put32(QByteArray& data, int at, quint32 value)
{
    for (int i = 0; i < 4; ++i)
        data[at + i] = static_cast<char>(value >> (24 - 8 * i));
}

quint32 crc(const QByteArray& bytes)
{
    quint32 value = ~0U;
    for (const char byte : bytes) {
        value ^= static_cast<uchar>(byte);
        for (int bit = 0; bit < 8; ++bit)
            value = (value >> 1) ^ (value & 1 ? 0xedb88320U : 0U);
    }
    return ~value;
}

// A PNG file whose header promises a size that its pixels do not keep.
QByteArray promising(quint32 width, quint32 height)
{
    QByteArray data = encoded("png");
    put32(data, 16, width);
    put32(data, 20, height);
    put32(data, 29, crc(data.mid(12, 17)));
    return data;
}

} // namespace

void TestPictureLoader::initTestCase()
{
    QVERIFY(m_directory.isValid());
}

QString TestPictureLoader::write(const QString& name, const QByteArray& data)
{
    const QString path = m_directory.filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(data) != data.size())
        qFatal("cannot write the test's own file");
    return path;
}

void TestPictureLoader::loadsFormats_data()
{
    QTest::addColumn<QByteArray>("format");
    QTest::newRow("png") << QByteArray("png");
    QTest::newRow("bmp") << QByteArray("bmp");
    QTest::newRow("jpeg") << QByteArray("jpg");
    QTest::newRow("ppm") << QByteArray("ppm");
}

void TestPictureLoader::loadsFormats()
{
    QFETCH(QByteArray, format);
    QString error;
    const QImage image = loadPicture(write("picture." + format, encoded(format)), &error);
    QCOMPARE(image.size(), QSize(16, 16));
    QCOMPARE(image.depth(), 32);
    QVERIFY(error.isEmpty());
}

void TestPictureLoader::pixelsAre32Bits()
{
    const QImage alpha = loadPicture(encoded("png"));
    QCOMPARE(alpha.format(), QImage::Format_ARGB32);
    QCOMPARE(alpha.pixel(3, 3), qRgba(10, 20, 30, 40));
    const QImage opaque = loadPicture(encoded("png", QImage::Format_RGB32));
    QCOMPARE(opaque.format(), QImage::Format_RGB32);
    QCOMPARE(opaque.pixel(3, 3), 0xff0a141eU);
    const QImage grey = loadPicture(encoded("png", QImage::Format_Grayscale8));
    QCOMPARE(grey.format(), QImage::Format_RGB32);
}

void TestPictureLoader::contentsDecideTheFormat()
{
    QCOMPARE(loadPicture(write("wrong.jpg", encoded("png"))).size(), QSize(16, 16));
}

void TestPictureLoader::refuses_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << m_directory.filePath("missing.png");
    QTest::newRow("empty path") << QString();
    QTest::newRow("name with a NUL") << m_directory.filePath("a") + QChar(QChar::Null) + "b.png";
    QTest::newRow("directory") << m_directory.path();
    QTest::newRow("directory with a slash") << m_directory.path() + "/";
    QTest::newRow("device without end") << "/dev/zero";
    QTest::newRow("empty file") << write("empty.png", QByteArray());
    QTest::newRow("no picture") << write("text.png", "no picture at all");
    QTest::newRow("wide") << write("wide.png", promising(largestPictureSide + 1, 1));
    QTest::newRow("high") << write("high.png", promising(1, largestPictureSide + 1));
    QTest::newRow("many pixels") << write("many.png", promising(8192, 2049));
    QTest::newRow("60000 x 60000") << write("huge.png", promising(60000, 60000));
    const QString pipe = m_directory.filePath("pipe.png");
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    QTest::newRow("pipe") << pipe;
    const QString large = write("large.png", encoded("png"));
    QVERIFY(QFile::resize(large, largestPictureFile + 1));
    QTest::newRow("large file") << large;
}

void TestPictureLoader::refuses()
{
    QFETCH(QString, path);
    QElapsedTimer timer;
    timer.start();
    QString error;
    QVERIFY(loadPicture(path, &error).isNull());
    QVERIFY(!error.isEmpty());
    QVERIFY(loadPicture(path).isNull());
    QVERIFY2(timer.elapsed() < 2000, "refusing must be quick");
}

void TestPictureLoader::damagedPicturesPrintNothing_data()
{
    QTest::addColumn<QByteArray>("data");
    for (const char* format : {"png", "jpg", "bmp", "ppm"}) {
        const QByteArray whole = encoded(format);
        for (const int keep : {whole.size() / 4, whole.size() / 2, whole.size() - 5})
            QTest::addRow("%s cut to %d bytes", format, keep) << whole.left(keep);
        QByteArray broken = whole;
        for (int i = 20; i < broken.size(); i += 7)
            broken[i] = static_cast<char>(broken[i] ^ 0x5a);
        QTest::addRow("%s with wrong bytes", format) << broken;
    }
    QTest::newRow("svg") << QByteArray(
        "<svg xmlns='http://www.w3.org/2000/svg' width='1e9' height='1e9'><rect/></bad>");
    QTest::newRow("xpm") << QByteArray("/* XPM */\nstatic char* a[] = {\n\"4 4 2 1\",\n\"a b\"\n};");
    QTest::newRow("gif") << QByteArray("GIF89a\xff\xff\xff\xff\x80\x00\x00", 13);
}

void TestPictureLoader::damagedPicturesPrintNothing()
{
    QFETCH(QByteArray, data);
    messages = 0;
    const QtMessageHandler before = qInstallMessageHandler(countMessage);
    const QImage image = loadPicture(data);
    QVERIFY(qInstallMessageHandler(before) == &countMessage);
    QCOMPARE(messages, 0);
    QVERIFY(qint64(image.width()) * image.height() <= largestPicturePixels);
}

void TestPictureLoader::damagedPngPrintsNothingAtAll_data()
{
    QTest::addColumn<QByteArray>("data");
    const QByteArray whole = encoded("png");
    for (int keep = 8; keep < whole.size(); ++keep)
        QTest::addRow("cut to %d bytes", keep) << whole.left(keep);
    for (int at = 8; at < whole.size(); ++at) {
        QByteArray changed = whole;
        changed[at] = static_cast<char>(changed[at] ^ 0x10);
        QTest::addRow("byte %d changed", at) << changed;
    }
}

// The PNG library writes past every message handler, so the error output itself is watched.
void TestPictureLoader::damagedPngPrintsNothingAtAll()
{
    QFETCH(QByteArray, data);
    QTemporaryFile output;
    QVERIFY(output.open());
    std::fflush(stderr);
    const int kept = dup(STDERR_FILENO);
    dup2(output.handle(), STDERR_FILENO);
    const QImage image = loadPicture(data);
    std::fflush(stderr);
    dup2(kept, STDERR_FILENO);
    close(kept);
    QVERIFY(image.isNull());
    QCOMPARE(output.size(), 0);
}

void TestPictureLoader::messagesPassAgainAfterwards()
{
    messages = 0;
    const QtMessageHandler before = qInstallMessageHandler(countMessage);
    loadPicture(encoded("png").left(60));
    qWarning("heard");
    qInstallMessageHandler(before);
    QCOMPARE(messages, 1);
}

void TestPictureLoader::memory()
{
    QString error;
    QVERIFY(loadPicture(QByteArray(), &error).isNull());
    QVERIFY(!error.isEmpty());
    QCOMPARE(loadPicture(encoded("bmp")).size(), QSize(16, 16));
}

QTEST_MAIN(TestPictureLoader)
#include "tst_pictureloader.moc"
