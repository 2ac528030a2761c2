#include "controls/controlsfixture.h"
#include "controls/labelimage.h"

using namespace controlstest;

namespace
{

// A label whose data is in the open.
class Label : public LabelImage
{
public:
    using LabelImage::LabelImage;

    using LabelImage::alignment;
    using LabelImage::backPixmap;
    using LabelImage::baseImage;
    using LabelImage::labelImage;

    // The pictures that the toolkit's own operation got, and those that this class's did.
    int handedOver = 0;
    int changes = 0;

    void setBackgroundPixmap(const QPixmap& pm) override
    {
        ++handedOver;
        LabelImage::setBackgroundPixmap(pm);
    }
    QImage backgroundPixels() const { return backgroundPixmap() ? backgroundPixmap()->toImage() : QImage(); }

protected:
    void backgroundPixmapChange(const QPixmap& old) override
    {
        ++changes;
        LabelImage::backgroundPixmapChange(old);
    }
};

constexpr QRgb ground = 0xff0a141e;

} // namespace

class TestLabelImage : public QObject
{
    Q_OBJECT

private slots:
    void construction();
    void constructionWithoutBase_data();
    void constructionWithoutBase();
    void membersInOrder();
    void initAgain();
    void positions_data();
    void positions();
    void positionsRoundTowardsZero_data();
    void positionsRoundTowardsZero();
    void placesPicture_data();
    void placesPicture();
    void alignmentAloneMovesNothing();

    void backgroundPiece_data();
    void backgroundPiece();
    void nullBackgroundIsIgnored();
    void backgroundWithBase();
    void backgroundWithLabelPicture();
    void backgroundTwice();
    void backgroundKeepsColours_data();
    void backgroundKeepsColours();
    void backgroundOfItself();

    void firstPictureBuildsBackground();
    void firstPictureTakesItsOwnBackground();
    void pictureIsACopy();
    void pictureOfItself();
    void nullPictures();
    void picturesAreBlended();
    void drawImageLabelIsPassing();
    void labelWithoutArea();
    void newSize();
    void showsItInAWindow();
    void translucentWindow();
};

void TestLabelImage::construction()
{
    QWidget parent;
    auto* const picture = new QImage(pattern(30, 20));
    const Label label(picture, &parent, "cover");
    QCOMPARE(label.parentWidget(), &parent);
    QCOMPARE(label.objectName(), QString("cover"));
    QCOMPARE(label.getWFlags(), 0U);
    QCOMPARE(label.baseImage, picture);
    QCOMPARE(label.size(), QSize(30, 20));
    QVERIFY(!label.backPixmap);
    QVERIFY(!label.labelImage);
    QVERIFY(!label.backgroundPixmap());
    QCOMPARE(label.alignment, Qt::Alignment(Qt::AlignHCenter));
}

void TestLabelImage::constructionWithoutBase_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("no picture") << 0;
    QTest::newRow("null pointer") << 1;
    QTest::newRow("null picture") << 2;
}

void TestLabelImage::constructionWithoutBase()
{
    QFETCH(int, kind);
    QWidget parent;
    std::unique_ptr<Label> label(kind == 0   ? new Label(&parent, "cover")
                                 : kind == 1 ? new Label(static_cast<QImage*>(nullptr), &parent, "cover")
                                             : new Label(new QImage, &parent, "cover"));
    QCOMPARE(label->parentWidget(), &parent);
    QCOMPARE(label->objectName(), QString("cover"));
    QCOMPARE(label->size(), QSize(0, 0));
    QCOMPARE(label->alignment, Qt::Alignment(Qt::AlignHCenter));
    QVERIFY(!label->baseImage || label->baseImage->isNull());
    // It is left out when the label is drawn.
    label->resize(40, 20);
    label->setBackgroundPixmap(pixmap(pattern(40, 20)));
    COMPARE_PICTURES(label->backgroundPixels(), pattern(40, 20));
    label->set_image(plain(10, 10, red));
    QImage expected = pattern(40, 20);
    put(expected, plain(10, 10, red), QRect(0, 0, 10, 10), {15, 5});
    COMPARE_PICTURES(label->backgroundPixels(), expected);
}

void TestLabelImage::membersInOrder()
{
    const Label label;
    const QList<const void*> addresses{&label.baseImage, &label.backPixmap, &label.labelImage, &label.alignment};
    for (int i = 1; i < addresses.size(); ++i)
        QVERIFY2(std::less<>()(addresses[i - 1], addresses[i]), QByteArray::number(i));
}

void TestLabelImage::initAgain()
{
    Label label(new QImage(pattern(30, 20)));
    label.set_alignment(Qt::AlignLeft);
    label.resize(5, 5);
    label.init();
    QCOMPARE(label.alignment, Qt::Alignment(Qt::AlignHCenter));
    QCOMPARE(label.size(), QSize(30, 20));
}

void TestLabelImage::positions_data()
{
    QTest::addColumn<Qt::Alignment>("alignment");
    QTest::addColumn<QPoint>("position");
    QTest::newRow("left") << Qt::Alignment(Qt::AlignLeft) << QPoint(0, 5);
    QTest::newRow("centred") << Qt::Alignment(Qt::AlignHCenter) << QPoint(15, 5);
    QTest::newRow("right") << Qt::Alignment(Qt::AlignRight) << QPoint(30, 5);
    QTest::newRow("centred both ways") << Qt::Alignment(Qt::AlignCenter) << QPoint(30, 5);
    QTest::newRow("left and centred") << (Qt::AlignLeft | Qt::AlignVCenter) << QPoint(30, 5);
    QTest::newRow("left and top") << (Qt::AlignLeft | Qt::AlignTop) << QPoint(30, 5);
    QTest::newRow("top") << Qt::Alignment(Qt::AlignTop) << QPoint(30, 5);
    QTest::newRow("bottom and horizontally centred") << (Qt::AlignBottom | Qt::AlignHCenter) << QPoint(30, 5);
    QTest::newRow("none") << Qt::Alignment() << QPoint(30, 5);
}

void TestLabelImage::positions()
{
    QFETCH(Qt::Alignment, alignment);
    QFETCH(QPoint, position);
    Label label;
    label.resize(40, 20);
    label.set_alignment(alignment);
    QCOMPARE(label.get_position(QSize(10, 10)), position);
}

void TestLabelImage::positionsRoundTowardsZero_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("left");
    QTest::addColumn<QPoint>("centre");
    QTest::addColumn<QPoint>("right");
    QTest::newRow("odd rest") << QSize(9, 9) << QPoint(0, 5) << QPoint(15, 5) << QPoint(31, 5);
    QTest::newRow("the label's size") << QSize(40, 20) << QPoint(0, 0) << QPoint(0, 0) << QPoint(0, 0);
    QTest::newRow("one pixel larger") << QSize(41, 21) << QPoint(0, 0) << QPoint(0, 0) << QPoint(-1, 0);
    QTest::newRow("three pixels larger") << QSize(43, 23) << QPoint(0, -1) << QPoint(-1, -1) << QPoint(-3, -1);
    QTest::newRow("nothing") << QSize(0, 0) << QPoint(0, 10) << QPoint(20, 10) << QPoint(40, 10);
}

void TestLabelImage::positionsRoundTowardsZero()
{
    QFETCH(QSize, size);
    QFETCH(QPoint, left);
    QFETCH(QPoint, centre);
    QFETCH(QPoint, right);
    Label label;
    label.resize(40, 20);
    QCOMPARE(label.get_position(size), centre);
    label.set_alignment(Qt::AlignLeft);
    QCOMPARE(label.get_position(size), left);
    label.set_alignment(Qt::AlignRight);
    QCOMPARE(label.get_position(size), right);
}

void TestLabelImage::placesPicture_data()
{
    positions_data();
}

void TestLabelImage::placesPicture()
{
    QFETCH(Qt::Alignment, alignment);
    QFETCH(QPoint, position);
    Label label;
    label.resize(40, 20);
    label.setBackgroundPixmap(pixmap(pattern(40, 20, 70)));
    label.set_alignment(alignment);
    label.set_image(pattern(10, 10, 3));
    QImage expected = pattern(40, 20, 70);
    put(expected, pattern(10, 10, 3), QRect(0, 0, 10, 10), position);
    COMPARE_PICTURES(label.backgroundPixels(), expected);
    COMPARE_PICTURES(shown(label), expected);
}

void TestLabelImage::alignmentAloneMovesNothing()
{
    Window window;
    Label label(&window);
    label.setGeometry(0, 0, 40, 20);
    label.setBackgroundPixmap(pixmap(pattern(40, 20, 70)));
    label.set_image(plain(10, 10, red));
    QVERIFY(window.expose());
    const QImage before = label.backgroundPixels();
    Recorder recorder;
    recorder.watchPaints(&label);
    label.set_alignment(Qt::AlignLeft);
    QVERIFY(window.settle());
    COMPARE_PICTURES(label.backgroundPixels(), before);
    QCOMPARE(recorder.take(), QStringList());
    // A new background moves it as well as a new picture does.
    label.setBackgroundPixmap(pixmap(pattern(40, 20, 70)));
    QImage expected = pattern(40, 20, 70);
    put(expected, plain(10, 10, red), QRect(0, 0, 10, 10), {0, 5});
    COMPARE_PICTURES(label.backgroundPixels(), expected);
}

void TestLabelImage::backgroundPiece_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::newRow("inside") << QPoint(7, 9);
    QTest::newRow("at the corner") << QPoint(0, 0);
    QTest::newRow("over the right edge") << QPoint(90, 5);
    QTest::newRow("over the left edge") << QPoint(-5, -3);
    QTest::newRow("beside it") << QPoint(300, 5);
}

// What the picture does not reach has the palette's colour.
void TestLabelImage::backgroundPiece()
{
    QFETCH(QPoint, at);
    QWidget parent;
    Label label(&parent);
    label.resize(30, 20);
    label.move(at);
    setWindowColour(label, ground);
    const QImage picture = pattern(100, 50, 44);
    label.setBackgroundPixmap(pixmap(picture));
    QImage expected = plain(30, 20, ground);
    put(expected, picture, QRect(at, QSize(30, 20)), {});
    QVERIFY(label.backPixmap);
    QCOMPARE(label.backPixmap->depth(), 32);
    COMPARE_PICTURES(label.backPixmap->toImage(), expected);
    COMPARE_PICTURES(label.backgroundPixels(), expected);
    COMPARE_PICTURES(shown(label), expected);
}

void TestLabelImage::nullBackgroundIsIgnored()
{
    Label label;
    label.resize(30, 20);
    label.setBackgroundPixmap(QPixmap());
    QVERIFY(!label.backPixmap);
    QVERIFY(!label.backgroundPixmap());
    label.setBackgroundPixmap(pixmap(pattern(30, 20)));
    label.set_image(plain(4, 4, red));
    const QImage before = label.backgroundPixels();
    label.setBackgroundPixmap(QPixmap());
    COMPARE_PICTURES(label.backgroundPixels(), before);
    COMPARE_PICTURES(label.backPixmap->toImage(), pattern(30, 20));
}

void TestLabelImage::backgroundWithBase()
{
    QWidget parent;
    const QImage base = pattern(30, 20, 99, 120);
    Label label(new QImage(base), &parent);
    label.move(3, 2);
    const QImage picture = pattern(100, 50, 44);
    label.setBackgroundPixmap(pixmap(picture));
    const QImage expected = blended(picture.copy(3, 2, 30, 20), base);
    COMPARE_PICTURES(label.backPixmap->toImage(), expected);
    COMPARE_PICTURES(shown(label), expected);
    // The base picture itself stays as it was.
    COMPARE_PICTURES(*label.baseImage, base);
}

void TestLabelImage::backgroundWithLabelPicture()
{
    QWidget parent;
    const QImage base = pattern(30, 20, 99, 120);
    const QImage picture = pattern(8, 8, 1, 77);
    Label label(new QImage(base), &parent);
    label.set_image(picture);
    label.move(3, 2);
    const QImage under = pattern(100, 50, 44);
    label.setBackgroundPixmap(pixmap(under));
    const QImage back = blended(under.copy(3, 2, 30, 20), base);
    // The background is kept without the label picture.
    COMPARE_PICTURES(label.backPixmap->toImage(), back);
    COMPARE_PICTURES(shown(label), blended(back, picture, {11, 6}));
}

void TestLabelImage::backgroundTwice()
{
    Label label(new QImage(pattern(30, 20, 99, 120)));
    label.setBackgroundPixmap(pixmap(pattern(30, 20, 1)));
    const QPixmap old = *label.backPixmap;
    label.setBackgroundPixmap(pixmap(pattern(30, 20, 200)));
    COMPARE_PICTURES(label.backPixmap->toImage(), blended(pattern(30, 20, 200), pattern(30, 20, 99, 120)));
    // Nothing accumulates.
    label.setBackgroundPixmap(pixmap(pattern(30, 20, 1)));
    COMPARE_PICTURES(label.backPixmap->toImage(), old.toImage());
}

void TestLabelImage::backgroundKeepsColours_data()
{
    QTest::addColumn<int>("alpha");
    for (const int alpha : {0, 1, 100, 254, 255})
        QTest::addRow("alpha %d", alpha) << alpha;
}

void TestLabelImage::backgroundKeepsColours()
{
    QFETCH(int, alpha);
    QWidget parent;
    Label label(&parent);
    label.setGeometry(3, 2, 30, 20);
    const QImage picture = pattern(100, 50, 44, alpha);
    label.setBackgroundPixmap(pixmap(picture));
    COMPARE_PICTURES(label.backPixmap->toImage(), picture.copy(3, 2, 30, 20));
    // In an opaque window the alpha does not count.
    COMPARE_PICTURES(shown(label), withAlphaBytes(picture.copy(3, 2, 30, 20), 255));
    label.set_image(pattern(8, 8, 1, 77));
    COMPARE_PICTURES(shown(label), blended(picture.copy(3, 2, 30, 20), pattern(8, 8, 1, 77), {11, 6}));
}

void TestLabelImage::backgroundOfItself()
{
    Label label;
    label.resize(30, 20);
    label.setBackgroundPixmap(pixmap(pattern(30, 20)));
    label.setBackgroundPixmap(*label.backPixmap);
    COMPARE_PICTURES(label.backPixmap->toImage(), pattern(30, 20));
    label.setBackgroundPixmap(*label.backgroundPixmap());
    COMPARE_PICTURES(label.backPixmap->toImage(), pattern(30, 20));
}

void TestLabelImage::firstPictureBuildsBackground()
{
    QWidget parent;
    const QImage base = pattern(30, 20, 99, 120);
    Label label(new QImage(base), &parent);
    label.move(7, 5);
    setWindowColour(label, ground);
    label.set_image(plain(4, 4, red));
    QCOMPARE(label.handedOver, 1);
    const QImage back = blended(plain(30, 20, ground), base);
    QVERIFY(label.backPixmap);
    COMPARE_PICTURES(label.backPixmap->toImage(), back);
    QImage expected = back;
    put(expected, plain(4, 4, red), QRect(0, 0, 4, 4), {13, 8});
    COMPARE_PICTURES(label.backgroundPixels(), expected);
    COMPARE_PICTURES(shown(label), expected);
    // Only the first one.
    label.set_image(plain(4, 4, blue));
    QCOMPARE(label.handedOver, 1);
    COMPARE_PICTURES(label.backPixmap->toImage(), back);
}

// What it shows of its own is taken for the parent's picture: the piece at the label's place in it.
void TestLabelImage::firstPictureTakesItsOwnBackground()
{
    QWidget parent;
    Label label(&parent);
    label.setGeometry(7, 5, 30, 20);
    setWindowColour(label, ground);
    static_cast<ToolkitWidget<QWidget>&>(label).ToolkitWidget<QWidget>::setBackgroundPixmap(pixmap(pattern(30, 20, 9)));
    label.drawImageLabel(QImage());
    QImage expected = plain(30, 20, ground);
    put(expected, pattern(30, 20, 9), QRect(7, 5, 30, 20), {});
    COMPARE_PICTURES(label.backPixmap->toImage(), expected);
}

void TestLabelImage::pictureIsACopy()
{
    Label label;
    label.resize(10, 10);
    // A picture in memory of somebody else's.
    QList<QRgb> memory(16, red);
    const QImage picture(reinterpret_cast<const uchar*>(memory.data()), 4, 4, QImage::Format_ARGB32);
    label.set_image(picture);
    QVERIFY(label.labelImage);
    memory.fill(blue);
    COMPARE_PICTURES(*label.labelImage, plain(4, 4, red));
    label.setBackgroundPixmap(pixmap(plain(10, 10, green)));
    QCOMPARE(label.backgroundPixels().pixel(4, 4), red);
}

void TestLabelImage::pictureOfItself()
{
    Label label;
    label.resize(10, 10);
    label.set_image(pattern(4, 4));
    label.set_image(*label.labelImage);
    COMPARE_PICTURES(*label.labelImage, pattern(4, 4));
    label.drawImageLabel(*label.labelImage);
    COMPARE_PICTURES(*label.labelImage, pattern(4, 4));
}

void TestLabelImage::nullPictures()
{
    Label label;
    label.resize(10, 10);
    setWindowColour(label, ground);
    label.drawImageLabel(QImage());
    COMPARE_PICTURES(shown(label), plain(10, 10, ground));
    label.setBackgroundPixmap(pixmap(pattern(10, 10)));
    label.set_image(plain(4, 4, red));
    label.set_image(QImage());
    QVERIFY(label.labelImage->isNull());
    COMPARE_PICTURES(shown(label), pattern(10, 10));
    label.setBackgroundPixmap(pixmap(pattern(10, 10, 7)));
    COMPARE_PICTURES(shown(label), pattern(10, 10, 7));
}

void TestLabelImage::picturesAreBlended()
{
    Label label;
    label.resize(10, 10);
    const QImage back = pattern(10, 10, 200);
    label.setBackgroundPixmap(pixmap(back));
    for (const QImage::Format format : {QImage::Format_ARGB32, QImage::Format_RGB32, QImage::Format_Indexed8,
                                        QImage::Format_ARGB32_Premultiplied, QImage::Format_RGB16}) {
        const QImage picture = strip(2, 4, {qRgba(255, 0, 0, 51), blue}).convertToFormat(format);
        label.set_image(picture);
        COMPARE_PICTURES(shown(label), blended(back, picture, {3, 3}));
    }
    // Larger than the label: its middle shows.
    const QImage large = pattern(30, 40, 5, 99);
    label.set_image(large);
    COMPARE_PICTURES(shown(label), blended(back, large, {-10, -15}));
}

void TestLabelImage::drawImageLabelIsPassing()
{
    Label label;
    label.resize(10, 10);
    label.setBackgroundPixmap(pixmap(plain(10, 10, green)));
    label.set_image(plain(10, 10, red));
    label.drawImageLabel(plain(10, 10, blue));
    COMPARE_PICTURES(shown(label), plain(10, 10, blue));
    COMPARE_PICTURES(*label.labelImage, plain(10, 10, red));
    label.setBackgroundPixmap(pixmap(plain(10, 10, green)));
    COMPARE_PICTURES(shown(label), plain(10, 10, red));
}

void TestLabelImage::labelWithoutArea()
{
    Label label;
    label.set_image(plain(4, 4, red));
    label.setBackgroundPixmap(pixmap(plain(10, 10, green)));
    label.drawImageLabel(plain(4, 4, blue));
    QVERIFY(!label.backgroundPixmap());
    // The picture is there once the label has a size and a background.
    label.resize(4, 4);
    label.setBackgroundPixmap(pixmap(plain(10, 10, green)));
    COMPARE_PICTURES(shown(label), plain(4, 4, red));
}

void TestLabelImage::newSize()
{
    Label label;
    setWindowColour(label, ground);
    label.resize(10, 10);
    label.setBackgroundPixmap(pixmap(pattern(40, 40)));
    label.resize(20, 12);
    // Until the background is handed over again, its piece is as small as it was.
    label.set_image(plain(2, 2, red));
    QImage expected = plain(20, 12, ground);
    put(expected, pattern(10, 10), QRect(0, 0, 10, 10), {});
    put(expected, plain(2, 2, red), QRect(0, 0, 2, 2), {9, 5});
    COMPARE_PICTURES(shown(label), expected);
    label.setBackgroundPixmap(pixmap(pattern(40, 40)));
    expected = pattern(20, 12);
    put(expected, plain(2, 2, red), QRect(0, 0, 2, 2), {9, 5});
    COMPARE_PICTURES(shown(label), expected);
}

void TestLabelImage::showsItInAWindow()
{
    Window window;
    Label label(&window);
    label.setGeometry(10, 10, 30, 20);
    QVERIFY(window.expose());
    Recorder recorder;
    recorder.watchPaints(&label);
    label.setBackgroundPixmap(pixmap(pattern(100, 100)));
    QVERIFY(window.settle());
    QCOMPARE(recorder.take(), QStringList({"paint 0,0 30x20"}));
    label.set_image(plain(2, 2, red));
    QVERIFY(window.settle());
    QCOMPARE(recorder.take(), QStringList({"paint 0,0 30x20"}));
}

// The alpha of what lies beneath lets through what is behind the window, where the label is not opaque itself.
void TestLabelImage::translucentWindow()
{
    QWidget window;
    window.setAttribute(Qt::WA_TranslucentBackground);
    window.resize(20, 20);
    Label label(&window);
    label.setGeometry(0, 0, 20, 20);
    label.setBackgroundPixmap(pixmap(plain(20, 20, qRgba(200, 100, 50, 51))));
    label.set_image(plain(4, 4, red));
    QImage target(20, 20, QImage::Format_ARGB32_Premultiplied);
    target.fill(Qt::transparent);
    window.render(&target, {}, {}, QWidget::DrawChildren);
    QCOMPARE(qAlpha(target.pixel(0, 0)), 51);
    QCOMPARE(target.pixel(10, 10), red);
}

QTEST_MAIN(TestLabelImage)
#include "tst_labelimage.moc"
