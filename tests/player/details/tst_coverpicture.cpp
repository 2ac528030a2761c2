#include "player/details/coverpicture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

/* Pictures beside sound files. */
class TestCoverPicture : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_directory = std::make_unique<QTemporaryDir>(); }
    void findsThePictureBeside_data();
    void findsThePictureBeside();
    void passesOverWhatCannotBeRead();
    void readsByContents();
    void readsNoLargerThanNeeded();
    void refusesPicturesThatAreTooLarge();
    void fillsThePlace_data();
    void fillsThePlace();

private:
    QString path(const QString& name) const { return m_directory->filePath(name); }
    void save(const QString& name, const QSize& size, Qt::GlobalColor color, const char* format = nullptr) const
    {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(color);
        QVERIFY(picture.save(path(name), format));
    }
    void write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

void TestCoverPicture::findsThePictureBeside_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<bool>("isFound");
    QTest::newRow("none") << QStringList{} << false;
    QTest::newRow("cover.jpg") << QStringList{"cover.jpg"} << true;
    QTest::newRow("folder.png") << QStringList{"folder.png"} << true;
    QTest::newRow("Folder.jpg") << QStringList{"Folder.jpg"} << true;
    QTest::newRow("front.jpeg") << QStringList{"front.jpeg"} << true;
    QTest::newRow("another name") << QStringList{"holiday.jpg"} << false;
}

void TestCoverPicture::findsThePictureBeside()
{
    QFETCH(QStringList, files);
    QFETCH(bool, isFound);
    for (const QString& file : files)
        save(file, QSize(30, 30), Qt::blue);
    QCOMPARE(coverpicture::beside(path(QStringLiteral("song.ogg")), QSize(10, 10)).isNull(), !isFound);
}

void TestCoverPicture::passesOverWhatCannotBeRead()
{
    const QString sound = path(QStringLiteral("song.ogg"));
    write(QStringLiteral("cover.jpg"), "no picture");
    QVERIFY(QDir(m_directory->path()).mkpath(QStringLiteral("cover.png")));
    QVERIFY(coverpicture::beside(sound, QSize(10, 10)).isNull());
    save(QStringLiteral("folder.png"), QSize(30, 30), Qt::red);
    QCOMPARE(coverpicture::beside(sound, QSize(30, 30)).pixel(5, 5), QColor(Qt::red).rgb());

    // Broken behind its head.
    QFile whole(path(QStringLiteral("folder.png")));
    QVERIFY(whole.open(QIODevice::ReadOnly));
    const QByteArray bytes = whole.readAll();
    write(QStringLiteral("half.png"), bytes.left(bytes.size() / 2));
    QVERIFY(coverpicture::read(path(QStringLiteral("half.png")), QSize(10, 10)).isNull());
}

void TestCoverPicture::readsByContents()
{
    save(QStringLiteral("cover.jpg"), QSize(30, 30), Qt::red, "PNG");
    QVERIFY(!coverpicture::read(path(QStringLiteral("cover.jpg")), QSize(10, 10)).isNull());
}

void TestCoverPicture::readsNoLargerThanNeeded()
{
    save(QStringLiteral("cover.jpg"), QSize(2000, 1000), Qt::red);
    QCOMPARE(coverpicture::read(path(QStringLiteral("cover.jpg")), QSize(104, 104)).size(), QSize(208, 104));
    save(QStringLiteral("small.png"), QSize(40, 20), Qt::red);
    QCOMPARE(coverpicture::read(path(QStringLiteral("small.png")), QSize(104, 104)).size(), QSize(40, 20));
}

void TestCoverPicture::refusesPicturesThatAreTooLarge()
{
    save(QStringLiteral("wide.png"), QSize(coverpicture::largestSide + 1, 1), Qt::red);
    QVERIFY(coverpicture::read(path(QStringLiteral("wide.png")), QSize(10, 10)).isNull());

    save(QStringLiteral("heavy.png"), QSize(10, 10), Qt::red);
    QVERIFY(!coverpicture::read(path(QStringLiteral("heavy.png")), QSize(10, 10)).isNull());
    QVERIFY(QFile(path(QStringLiteral("heavy.png"))).resize(coverpicture::largestFile + 1));
    QVERIFY(coverpicture::read(path(QStringLiteral("heavy.png")), QSize(10, 10)).isNull());
}

void TestCoverPicture::fillsThePlace_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("same") << QSize(40, 40);
    QTest::newRow("wide") << QSize(120, 40);
    QTest::newRow("high") << QSize(10, 30);
    QTest::newRow("small") << QSize(1, 1);
    QTest::newRow("line") << QSize(16000, 1);
}

void TestCoverPicture::fillsThePlace()
{
    QFETCH(QSize, size);
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::red);
    // What is cut off.
    if (size == QSize(120, 40)) {
        for (int y = 0; y < 40; ++y) {
            picture.setPixel(0, y, qRgb(0, 0, 255));
            picture.setPixel(119, y, qRgb(0, 0, 255));
        }
    }
    const QImage filling = coverpicture::filling(picture, QSize(40, 40));
    QCOMPARE(filling.size(), QSize(40, 40));
    QImage expected(40, 40, filling.format());
    expected.fill(Qt::red);
    QCOMPARE(filling, expected);
    QVERIFY(coverpicture::filling(QImage(), QSize(40, 40)).isNull());
    QVERIFY(coverpicture::filling(picture, QSize()).isNull());
}

QTEST_GUILESS_MAIN(TestCoverPicture)
#include "tst_coverpicture.moc"
