#include "controls/controlsfixture.h"
#include "controls/labelskin.h"

#include <QPicture>
#include <QVBoxLayout>
#include <QWindow>

#include <functional>

using namespace controlstest;

using Change = std::function<void(LabelSkin&)>;
Q_DECLARE_METATYPE(Change)

namespace
{

// A label that counts its mask updates and writes down its paints.
class Label : public LabelSkin
{
public:
    using LabelSkin::LabelSkin;

    int masks = 0;
    QStringList* log = nullptr;

    using LabelSkin::contentsMask;
    void updateMask() override
    {
        ++masks;
        if (log)
            *log << "mask";
        LabelSkin::updateMask();
        if (log)
            *log << "done";
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        if (log)
            *log << "paint " + rectText(event->region().boundingRect());
        LabelSkin::paintEvent(event);
    }
};

// Contents of its own: one pixel.
class Dot : public LabelSkin
{
protected:
    void drawContents(QPainter* painter) override { painter->drawPoint(2, 3); }
};

// The pixels that text covers when it is drawn in one colour, without soft edges.
QRegion textPixels(const LabelSkin& label)
{
    QImage picture(label.size(), QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    QFont font = label.font();
    font.setStyleStrategy(QFont::NoAntialias);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(label.rect(), int(label.alignment()), label.text());
    painter.end();
    return QBitmap::fromImage(picture.createMaskFromColor(0xff000000, Qt::MaskOutColor));
}

// The same drawn to a one-bit picture itself, which Qt gets right for letters that are not large.
QRegion bitmapPixels(const LabelSkin& label)
{
    QBitmap bits(label.size());
    bits.clear();
    QPainter painter(&bits);
    painter.setPen(Qt::color1);
    painter.setBackground(QBrush(Qt::color0));
    painter.setFont(label.font());
    painter.drawText(label.rect(), int(label.alignment()), label.text());
    painter.end();
    return bits;
}

QPixmap halves(QRgb left, QRgb right)
{
    return pixmap(strip(5, 6, {left, right}));
}

} // namespace

class TestLabelSkin : public QObject
{
    Q_OBJECT

private slots:
    void construction();
    void colours_data();
    void colours();
    void invalidColours();
    void maskIsTheText_data();
    void maskIsTheText();
    void maskThroughTheContentsHook();
    void emptyMask_data();
    void emptyMask();
    void clicksFallThrough();
    void legible_data();
    void legible();
    void richTextKeepsItsColours();
    void backgroundShowsInside();
    void newColoursShow();
    void maskRepaintsAtOnce();
    void maskFollows_data();
    void maskFollows();
    void maskFollowsThroughPlainPointer_data();
    void maskFollowsThroughPlainPointer();
    void longText();
};

void TestLabelSkin::construction()
{
    QWidget parent;
    const LabelSkin label(&parent, "label", Qt::WRepaintNoErase);
    QCOMPARE(label.parentWidget(), &parent);
    QCOMPARE(label.objectName(), QString("label"));
    QVERIFY(label.testWFlags(Qt::WRepaintNoErase));
    QVERIFY(label.autoMask());
    const LabelSkin bare;
    QVERIFY(!bare.parentWidget());
    QCOMPARE(bare.objectName(), QString());
    QVERIFY(bare.autoMask());
}

void TestLabelSkin::colours_data()
{
    QTest::addColumn<bool>("text");
    QTest::newRow("set_bgColor") << false;
    QTest::newRow("set_textColor") << true;
}

void TestLabelSkin::colours()
{
    QFETCH(bool, text);
    LabelSkin label;
    QPalette expected = label.palette();
    const QColor colour(10, 200, 30, 40);
    if (text)
        label.set_textColor(colour);
    else
        label.set_bgColor(colour);
    // In every group, and in no other role.
    const QPalette::ColorRole role = text ? QPalette::WindowText : QPalette::Window;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(label.palette().color(group, role), colour);
        expected.setColor(group, role, colour);
    }
    QCOMPARE(label.palette(), expected);
    // The other one's colour stays.
    const QPalette before = label.palette();
    if (text)
        label.set_bgColor(Qt::red);
    else
        label.set_textColor(Qt::red);
    QCOMPARE(label.palette().color(role), before.color(role));
}

void TestLabelSkin::invalidColours()
{
    LabelSkin label;
    label.set_bgColor(QColor());
    label.set_textColor(QColor());
    QCOMPARE(label.palette().color(QPalette::Window).rgba(), 0xff000000);
    QCOMPARE(label.palette().color(QPalette::WindowText).rgba(), 0xff000000);
}

void TestLabelSkin::maskIsTheText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<Qt::Alignment>("alignment");
    QTest::addColumn<int>("pixels");
    QTest::newRow("left") << "Some text" << (Qt::AlignLeft | Qt::AlignVCenter) << 12;
    QTest::newRow("centred") << "Some text" << Qt::Alignment(Qt::AlignCenter) << 12;
    QTest::newRow("bottom right") << "Some text" << (Qt::AlignRight | Qt::AlignBottom) << 12;
    QTest::newRow("large") << "Some text" << Qt::Alignment(Qt::AlignCenter) << 25;
    QTest::newRow("very large") << "Text" << Qt::Alignment(Qt::AlignCenter) << 90;
    QTest::newRow("two lines") << "Some\ntext" << Qt::Alignment(Qt::AlignCenter) << 12;
    QTest::newRow("ampersand") << "R & B" << Qt::Alignment(Qt::AlignCenter) << 12;
}

void TestLabelSkin::maskIsTheText()
{
    QFETCH(QString, text);
    QFETCH(Qt::Alignment, alignment);
    QFETCH(int, pixels);
    LabelSkin label;
    label.resize(220, 110);
    QFont font = label.font();
    font.setPixelSize(pixels);
    label.setFont(font);
    label.setAlignment(alignment);
    label.setText(text);
    const QRegion expected = textPixels(label);
    QVERIFY(!expected.isEmpty());
    QCOMPARE(label.mask(), expected);
    if (pixels < 60)
        QCOMPARE(label.mask(), bitmapPixels(label));
    // It is Qt's mask, too.
    QCOMPARE(label.QWidget::mask(), expected);
}

void TestLabelSkin::maskThroughTheContentsHook()
{
    Dot dot;
    dot.resize(9, 9);
    QCOMPARE(dot.mask(), QRegion(2, 3, 1, 1));
}

void TestLabelSkin::emptyMask_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("never set") << Change([](LabelSkin&) {});
    QTest::newRow("null text") << Change([](LabelSkin& l) { l.setText(QString()); });
    QTest::newRow("empty text") << Change([](LabelSkin& l) { l.setText(""); });
    QTest::newRow("blanks") << Change([](LabelSkin& l) { l.setText("   "); });
    QTest::newRow("text that went") << Change([](LabelSkin& l) {
        l.setText("text");
        l.setText("");
    });
    QTest::newRow("null pixmap") << Change([](LabelSkin& l) { l.setPixmap(QPixmap()); });
    QTest::newRow("transparent pixmap") << Change([](LabelSkin& l) { l.setPixmap(halves(0, 0)); });
    QTest::newRow("frame") << Change([](LabelSkin& l) { l.setFrameStyle(int(QFrame::Box) | int(QFrame::Plain)); });
    QTest::newRow("colours") << Change([](LabelSkin& l) {
        l.set_bgColor(Qt::red);
        l.set_textColor(Qt::blue);
    });
}

void TestLabelSkin::emptyMask()
{
    QFETCH(Change, change);
    QWidget parent;
    parent.resize(60, 30);
    setWindowColour(parent, green);
    LabelSkin label(&parent);
    label.setGeometry(5, 5, 40, 20);
    label.set_bgColor(Qt::red);
    change(label);
    QVERIFY(label.mask().isEmpty());
    // Qt takes an empty mask for none.
    QVERIFY(!label.QWidget::mask().isEmpty());
    COMPARE_PICTURES(shown(parent), plain(60, 30, green));
}

void TestLabelSkin::clicksFallThrough()
{
    Window window;
    Button button(&window, "beneath");
    button.setGeometry(0, 0, 60, 40);
    Recorder recorder;
    button.watch(recorder);
    LabelSkin label(&window, "above");
    label.setGeometry(0, 0, 60, 40);
    QVERIFY(window.expose());
    QWindow* const handle = window.windowHandle();
    QTest::mouseClick(handle, Qt::LeftButton, {}, QPoint(20, 20));
    QCOMPARE(recorder.take().filter("clicked").size(), 1);
    label.setPixmap(halves(red, red));
    label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
    QTest::mouseClick(handle, Qt::LeftButton, {}, QPoint(5, 3));
    QCOMPARE(recorder.take().filter("clicked").size(), 0);
    QTest::mouseClick(handle, Qt::LeftButton, {}, QPoint(10, 3));
    QCOMPARE(recorder.take().filter("clicked").size(), 1);
}

void TestLabelSkin::legible_data()
{
    QTest::addColumn<int>("pixels");
    QTest::addColumn<QImage>("ground");
    QTest::addColumn<bool>("enabled");
    const QImage busy = pattern(220, 60, 128);
    for (const int pixels : {8, 11, 14, 19, 40, 70})
        for (const QRgb ground : {0xff000000U, 0xffffffffU, 0xff808080U})
            QTest::addRow("%d pixels on %08x", pixels, ground) << pixels << plain(220, 60, ground) << true;
    QTest::newRow("on a picture") << 14 << busy << true;
    QTest::newRow("disabled") << 14 << busy << false;
}

// Every pixel of the mask has the text colour, whatever lies beneath and whatever the label's own background is; every
// other pixel shows what lies beneath.
void TestLabelSkin::legible()
{
    QFETCH(int, pixels);
    QFETCH(QImage, ground);
    QFETCH(bool, enabled);
    ToolkitWidget<QWidget> parent;
    parent.resize(220, 60);
    parent.setBackgroundPixmap(pixmap(ground));
    LabelSkin label(&parent);
    label.setGeometry(10, 5, 200, 50);
    QFont font = label.font();
    font.setPixelSize(pixels);
    label.setFont(font);
    label.set_bgColor(QColor(255, 0, 0));
    label.set_textColor(QColor(20, 250, 80));
    label.setText("Small & thin: ilfj");
    label.setEnabled(enabled);
    const QRegion text = textPixels(label).translated(10, 5);
    QVERIFY(!text.isEmpty());
    QImage expected = ground;
    for (int y = 0; y < 60; ++y)
        for (int x = 0; x < 220; ++x)
            if (text.contains(QPoint(x, y)))
                expected.setPixel(x, y, qRgb(20, 250, 80));
    COMPARE_PICTURES(shown(parent), expected);
}

void TestLabelSkin::richTextKeepsItsColours()
{
    QWidget parent;
    parent.resize(200, 40);
    setWindowColour(parent, blue);
    LabelSkin label(&parent);
    label.setGeometry(0, 0, 200, 40);
    label.set_bgColor(QColor(1, 2, 3));
    label.set_textColor(QColor(0, 255, 0));
    label.setText("<b>Some</b> <font color=\"#ff0000\">text</font>");
    const QRegion text = label.mask();
    QVERIFY(!text.isEmpty());
    const QImage picture = shown(parent);
    int greens = 0;
    int reds = 0;
    for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 200; ++x) {
            const QRgb pixel = picture.pixel(x, y);
            if (!text.contains(QPoint(x, y))) {
                QCOMPARE(pixel, blue);
                continue;
            }
            QVERIFY2(pixel == green || pixel == red, QByteArray::number(pixel, 16));
            ++(pixel == green ? greens : reds);
        }
    }
    QVERIFY(greens > 20);
    QVERIFY(reds > 20);
}

// Pixels that are more than half opaque belong to the widget, and the label's background shows through them.
void TestLabelSkin::backgroundShowsInside()
{
    QWidget parent;
    parent.resize(30, 20);
    setWindowColour(parent, blue);
    LabelSkin label(&parent);
    label.setGeometry(4, 3, 10, 6);
    label.set_bgColor(QColor(255, 255, 0));
    label.setPixmap(halves(qRgba(0, 0, 0, 200), qRgba(0, 0, 0, 100)));
    QCOMPARE(label.mask(), QRegion(0, 0, 5, 6));
    QImage expected = plain(30, 20, blue);
    put(expected, blended(plain(5, 6, yellow), plain(5, 6, qRgba(0, 0, 0, 200))), QRect(0, 0, 5, 6), {4, 3});
    COMPARE_PICTURES(shown(parent), expected);
}

void TestLabelSkin::newColoursShow()
{
    Window window;
    Label label(&window);
    label.setGeometry(0, 0, 80, 30);
    label.setText("Text");
    QVERIFY(window.expose());
    QStringList log;
    label.log = &log;
    label.set_textColor(Qt::red);
    QVERIFY(window.settle());
    QVERIFY(!log.isEmpty());
    log.clear();
    label.set_bgColor(Qt::red);
    QVERIFY(window.settle());
    QVERIFY(!log.isEmpty());
}

void TestLabelSkin::maskRepaintsAtOnce()
{
    Window window;
    Label label(&window);
    label.setGeometry(0, 0, 80, 30);
    label.setText("Text");
    QVERIFY(window.expose());
    QStringList log;
    label.log = &log;
    label.updateMask();
    // Everything that the mask leaves of the widget.
    QCOMPARE(log, QStringList({"mask", "paint " + rectText(label.mask().boundingRect()), "done"}));
}

void TestLabelSkin::maskFollows_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("text") << Change([](LabelSkin& l) { l.setText("Other"); });
    QTest::newRow("number") << Change([](LabelSkin& l) { l.setNum(42); });
    QTest::newRow("clear") << Change([](LabelSkin& l) { l.clear(); });
    QTest::newRow("font") << Change([](LabelSkin& l) {
        QFont font = l.font();
        font.setPixelSize(25);
        l.setFont(font);
    });
    QTest::newRow("size") << Change([](LabelSkin& l) { l.resize(90, 40); });
    QTest::newRow("geometry") << Change([](LabelSkin& l) { l.setGeometry(4, 4, 90, 40); });
    QTest::newRow("alignment") << Change([](LabelSkin& l) { l.setAlignment(Qt::AlignRight | Qt::AlignBottom); });
    QTest::newRow("pixmap") << Change([](LabelSkin& l) { l.setPixmap(halves(red, blue)); });
    QTest::newRow("picture") << Change([](LabelSkin& l) {
        QPicture picture;
        QPainter(&picture).fillRect(1, 2, 5, 6, Qt::red);
        l.setPicture(picture);
    });
    QTest::newRow("indent") << Change([](LabelSkin& l) { l.setIndent(9); });
    QTest::newRow("margin") << Change([](LabelSkin& l) { l.setMargin(7); });
}

void TestLabelSkin::maskFollows()
{
    QFETCH(Change, change);
    QWidget parent;
    Label label(&parent);
    label.resize(60, 60);
    label.setText("Text");
    const QRegion before = label.mask();
    change(label);
    QVERIFY(label.mask() != before);
    QCOMPARE(label.mask(), QRegion(label.contentsMask()));
}

void TestLabelSkin::maskFollowsThroughPlainPointer_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("text") << Change([](LabelSkin& l) { l.QLabel::setText("Other"); });
    QTest::newRow("font") << Change([](LabelSkin& l) {
        QFont font = l.font();
        font.setPixelSize(25);
        l.QWidget::setFont(font);
    });
    QTest::newRow("size") << Change([](LabelSkin& l) { l.QWidget::resize(90, 40); });
    QTest::newRow("alignment") << Change([](LabelSkin& l) { l.QLabel::setAlignment(Qt::AlignRight | Qt::AlignTop); });
    QTest::newRow("pixmap") << Change([](LabelSkin& l) { l.QLabel::setPixmap(halves(red, blue)); });
    QTest::newRow("clear") << Change([](LabelSkin& l) { l.QLabel::clear(); });
    QTest::newRow("parent's font") << Change([](LabelSkin& l) {
        QFont font = l.font();
        font.setPixelSize(25);
        l.parentWidget()->setFont(font);
    });
}

void TestLabelSkin::maskFollowsThroughPlainPointer()
{
    QFETCH(Change, change);
    Window window;
    Label label(&window);
    label.setGeometry(0, 0, 60, 60);
    label.setText("Text");
    QVERIFY(window.expose());
    const QRegion before = label.mask();
    change(label);
    QTRY_VERIFY(label.mask() != before);
    QCOMPARE(label.mask(), QRegion(label.contentsMask()));
}

void TestLabelSkin::longText()
{
    LabelSkin label;
    label.resize(100, 20);
    label.setText(QString(10000, 'm'));
    QVERIFY(!label.mask().isEmpty());
    QVERIFY(label.rect().contains(label.mask().boundingRect()));
    label.setWordWrap(true);
    label.setText(QString("word ").repeated(2000));
    QVERIFY(label.rect().contains(label.mask().boundingRect()));
    label.grab();
}

QTEST_MAIN(TestLabelSkin)
#include "tst_labelskin.moc"
