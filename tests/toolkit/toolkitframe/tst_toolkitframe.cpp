#include "toolkit/toolkitframe.h"

#include <QPainter>
#include <QStyleFactory>
#include <QTest>

#include <functional>

class TestToolkitFrame : public QObject
{
    Q_OBJECT

private slots:
    void construction();
    void styleNumbers();
    void widths_data();
    void widths();
    void panelWithoutLines();
    void negativeWidthsCountAsNone();
    void frameRectangle();
    void hook_data();
    void hook();
    void hookNeedsAChange();
    void hookThroughPlainPointer_data();
    void hookThroughPlainPointer();
    void lineWidthThroughPlainPointerIsNoticedAtPaint();
    void rectangleAfterSilentChange();
    void contentsSurviveStyleAndParent();
    void children();
    void looks_data();
    void looks();
    void paintOrderAndClip_data();
    void paintOrderAndClip();
    void sizeHintIsTheFrame();
    void properties();
};

namespace
{

constexpr int sunkenPanel = QFrame::StyledPanel | QFrame::Sunken;

class Frame : public ToolkitFrame
{
public:
    using ToolkitFrame::ToolkitFrame;

    int changes = 0;
    QStringList drawn;
    QRect frameClip;
    QRect contentsClip;

    QFrame& plain() { return *this; }

protected:
    void frameChanged() override
    {
        ++changes;
        ToolkitFrame::frameChanged();
    }
    void drawFrame(QPainter* painter) override
    {
        drawn << "frame";
        frameClip = painter->clipRegion().boundingRect();
        ToolkitFrame::drawFrame(painter);
    }
    void drawContents(QPainter* painter) override
    {
        drawn << "contents";
        contentsClip = painter->clipRegion().boundingRect();
    }
};

int styleWidth(const QWidget& widget)
{
    return widget.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &widget);
}

QImage shown(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

QImage plainFrame(int style, int lineWidth, int midLineWidth)
{
    QFrame frame;
    frame.resize(20, 16);
    frame.setFrameStyle(style);
    frame.setLineWidth(lineWidth);
    frame.setMidLineWidth(midLineWidth);
    return shown(frame);
}

using Change = std::function<void(ToolkitFrame&)>;
using PlainChange = std::function<void(QFrame&)>;

} // namespace

Q_DECLARE_METATYPE(Change)
Q_DECLARE_METATYPE(PlainChange)

void TestToolkitFrame::construction()
{
    QWidget parent;
    const ToolkitFrame frame(&parent, "frame", Qt::WRepaintNoErase);
    QCOMPARE(frame.parentWidget(), &parent);
    QCOMPARE(frame.name(), "frame");
    QVERIFY(frame.testWFlags(Qt::WRepaintNoErase));
    QCOMPARE(frame.frameShape(), QFrame::NoFrame);
    QCOMPARE(frame.lineWidth(), 1);
    QCOMPARE(frame.margin(), 0);
    QCOMPARE(frame.frameWidth(), 0);
    QCOMPARE(frame.contentsRect(), frame.rect());
}

void TestToolkitFrame::styleNumbers()
{
    ToolkitFrame frame;
    frame.setFrameStyle(54);
    QCOMPARE(frame.frameShape(), QFrame::StyledPanel);
    QCOMPARE(frame.frameShadow(), QFrame::Sunken);
    QCOMPARE(frame.frameStyle(), sunkenPanel);
    frame.setFrameShape(QFrame::Box);
    QCOMPARE(frame.frameStyle(), QFrame::Box | QFrame::Sunken);
    frame.setFrameShadow(QFrame::Raised);
    QCOMPARE(frame.frameStyle(), QFrame::Box | QFrame::Raised);
}

void TestToolkitFrame::widths_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("lineWidth");
    QTest::addColumn<int>("midLineWidth");
    QTest::addColumn<int>("margin");
    QTest::addColumn<int>("frameWidth");
    QTest::newRow("none") << int(QFrame::NoFrame) << 3 << 2 << 0 << 0;
    QTest::newRow("none, margin") << int(QFrame::NoFrame) << 3 << 2 << 4 << 4;
    QTest::newRow("plain box") << (QFrame::Box | QFrame::Plain) << 3 << 2 << 4 << 7;
    QTest::newRow("sunken box") << (QFrame::Box | QFrame::Sunken) << 3 << 2 << 4 << 12;
    QTest::newRow("panel") << (QFrame::Panel | QFrame::Raised) << 3 << 2 << 1 << 4;
    QTest::newRow("styled panel") << sunkenPanel << 3 << 2 << 1 << 4;
    QTest::newRow("styled panel, line width 0") << sunkenPanel << 0 << 2 << 0 << 0;
    QTest::newRow("styled panel, line width 0, margin") << sunkenPanel << 0 << 0 << 5 << 5;
    QTest::newRow("win panel") << (QFrame::WinPanel | QFrame::Raised) << 5 << 2 << 1 << 3;
    QTest::newRow("line") << (QFrame::HLine | QFrame::Sunken) << 1 << 0 << 0 << 2;
}

void TestToolkitFrame::widths()
{
    QFETCH(int, style);
    QFETCH(int, lineWidth);
    QFETCH(int, midLineWidth);
    QFETCH(int, margin);
    QFETCH(int, frameWidth);
    ToolkitFrame frame;
    frame.resize(60, 50);
    frame.setFrameStyle(style);
    frame.setLineWidth(lineWidth);
    frame.setMidLineWidth(midLineWidth);
    frame.setMargin(margin);
    QCOMPARE(frame.frameWidth(), frameWidth);
    QCOMPARE(frame.frameRect(), QRect(0, 0, 60, 50));
    const QRect inner = QRect(0, 0, 60, 50).adjusted(frameWidth, frameWidth, -frameWidth, -frameWidth);
    QCOMPARE(frame.contentsRect(), inner);
    QCOMPARE(static_cast<QWidget&>(frame).contentsRect(), inner);
    frame.resize(80, 70);
    QCOMPARE(static_cast<QWidget&>(frame).contentsRect(), inner.adjusted(0, 0, 20, 20));
    QCOMPARE(frame.contentsRect(), inner.adjusted(0, 0, 20, 20));
}

void TestToolkitFrame::panelWithoutLines()
{
    Frame frame;
    frame.resize(20, 16);
    frame.setFrameStyle(sunkenPanel);
    frame.setLineWidth(styleWidth(frame));
    const QImage framed = shown(frame);
    frame.setLineWidth(0);
    QCOMPARE(frame.frameWidth(), 0);
    QCOMPARE(frame.frameStyle(), 54);
    QCOMPARE(shown(frame), plainFrame(QFrame::NoFrame, 0, 0));
    QVERIFY(framed != shown(frame));
    frame.setLineWidth(styleWidth(frame));
    QCOMPARE(frame.frameWidth(), styleWidth(frame));
    QCOMPARE(shown(frame), framed);
}

void TestToolkitFrame::negativeWidthsCountAsNone()
{
    ToolkitFrame frame;
    frame.setFrameStyle(QFrame::Box | QFrame::Sunken);
    frame.setLineWidth(-3);
    frame.setMidLineWidth(-1);
    frame.setMargin(-7);
    QCOMPARE(frame.lineWidth(), 0);
    QCOMPARE(frame.midLineWidth(), 0);
    QCOMPARE(frame.margin(), 0);
    QCOMPARE(frame.frameWidth(), 0);
    frame.setLineWidth(1 << 20);
    QCOMPARE(frame.lineWidth(), 32767);
}

void TestToolkitFrame::frameRectangle()
{
    ToolkitFrame frame;
    frame.resize(100, 80);
    frame.setFrameStyle(sunkenPanel);
    frame.setLineWidth(2);
    frame.setFrameRect(QRect(0, 0, 80, 65));
    QCOMPARE(frame.frameRect(), QRect(0, 0, 80, 65));
    QCOMPARE(frame.contentsRect(), QRect(2, 2, 76, 61));
    QCOMPARE(static_cast<QWidget&>(frame).contentsRect(), QRect(2, 2, 76, 61));
    frame.setLineWidth(0);
    QCOMPARE(frame.frameRect(), QRect(0, 0, 80, 65));
    QCOMPARE(frame.contentsRect(), QRect(0, 0, 80, 65));
    frame.resize(110, 90);
    QCOMPARE(frame.frameRect(), QRect(0, 0, 90, 75));
    frame.setFrameRect(QRect());
    QCOMPARE(frame.frameRect(), QRect(0, 0, 110, 90));
}

void TestToolkitFrame::hook_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("style") << Change([](ToolkitFrame& f) { f.setFrameStyle(QFrame::Panel | QFrame::Sunken); });
    QTest::newRow("shape") << Change([](ToolkitFrame& f) { f.setFrameShape(QFrame::NoFrame); });
    QTest::newRow("shadow") << Change([](ToolkitFrame& f) { f.setFrameShadow(QFrame::Plain); });
    QTest::newRow("line width") << Change([](ToolkitFrame& f) { f.setLineWidth(0); });
    QTest::newRow("mid line width") << Change([](ToolkitFrame& f) { f.setMidLineWidth(6); });
    QTest::newRow("margin") << Change([](ToolkitFrame& f) { f.setMargin(6); });
    QTest::newRow("rectangle") << Change([](ToolkitFrame& f) { f.setFrameRect(QRect(1, 2, 30, 20)); });
}

void TestToolkitFrame::hook()
{
    QFETCH(Change, change);
    Frame frame;
    frame.resize(40, 30);
    frame.setFrameStyle(QFrame::Box | QFrame::Raised);
    frame.changes = 0;
    change(frame);
    QCOMPARE(frame.changes, 1);
    change(frame);
    QCOMPARE(frame.changes, 1);
}

void TestToolkitFrame::hookNeedsAChange()
{
    Frame frame;
    frame.resize(40, 30);
    frame.setFrameStyle(frame.frameStyle());
    frame.setLineWidth(frame.lineWidth());
    frame.setMidLineWidth(frame.midLineWidth());
    frame.setMargin(0);
    frame.setFrameRect(frame.rect());
    frame.resize(50, 40);
    QCOMPARE(frame.changes, 0);
}

void TestToolkitFrame::hookThroughPlainPointer_data()
{
    QTest::addColumn<PlainChange>("change");
    QTest::addColumn<QRect>("frameRect");
    QTest::addColumn<int>("frameWidth");
    const QRect all(0, 0, 40, 30);
    QTest::newRow("style") << PlainChange([](QFrame& f) { f.setFrameStyle(QFrame::Panel | QFrame::Sunken); }) << all
                           << 6;
    QTest::newRow("no frame") << PlainChange([](QFrame& f) { f.setFrameShape(QFrame::NoFrame); }) << all << 4;
    QTest::newRow("line width") << PlainChange([](QFrame& f) { f.setLineWidth(3); }) << all << 10;
    QTest::newRow("rectangle") << PlainChange([](QFrame& f) { f.setFrameRect(QRect(1, 2, 30, 20)); })
                               << QRect(1, 2, 30, 20) << 8;
}

void TestToolkitFrame::hookThroughPlainPointer()
{
    QFETCH(PlainChange, change);
    QFETCH(QRect, frameRect);
    QFETCH(int, frameWidth);
    Frame frame;
    frame.resize(40, 30);
    frame.setFrameStyle(QFrame::Box | QFrame::Raised);
    frame.setLineWidth(2);
    frame.setMargin(4);
    frame.changes = 0;
    change(frame.plain());
    QCOMPARE(frame.changes, 1);
    QCOMPARE(frame.frameRect(), frameRect);
    QCOMPARE(frame.frameWidth(), frameWidth);
    const QRect inner = frameRect.adjusted(frameWidth, frameWidth, -frameWidth, -frameWidth);
    QCOMPARE(frame.contentsRect(), inner);
    QCOMPARE(static_cast<QWidget&>(frame).contentsRect(), inner);
}

void TestToolkitFrame::lineWidthThroughPlainPointerIsNoticedAtPaint()
{
    Frame frame;
    frame.resize(40, 30);
    frame.setFrameStyle(sunkenPanel);
    frame.setLineWidth(0);
    frame.changes = 0;
    frame.plain().setLineWidth(5);
    QCOMPARE(frame.frameWidth(), 5);
    QCOMPARE(frame.contentsRect(), QRect(5, 5, 30, 20));
    frame.grab();
    QCOMPARE(frame.changes, 1);
    QCOMPARE(static_cast<QWidget&>(frame).contentsRect(), QRect(5, 5, 30, 20));
    frame.grab();
    QCOMPARE(frame.changes, 1);
}

void TestToolkitFrame::rectangleAfterSilentChange()
{
    Frame frame;
    frame.resize(40, 30);
    frame.setFrameStyle(sunkenPanel);
    frame.plain().setLineWidth(3);
    frame.plain().setFrameRect(QRect(2, 2, 30, 20));
    QCOMPARE(frame.frameRect(), QRect(2, 2, 30, 20));
    QCOMPARE(static_cast<QWidget&>(frame).contentsRect(), QRect(5, 5, 24, 14));
}

void TestToolkitFrame::contentsSurviveStyleAndParent()
{
    QWidget parent;
    Frame frame;
    frame.resize(40, 30);
    frame.setFrameStyle(sunkenPanel);
    frame.setLineWidth(0);
    frame.setFrameRect(QRect(0, 0, 35, 30));
    frame.changes = 0;
    const std::unique_ptr<QStyle> windows(QStyleFactory::create("windows"));
    QVERIFY(windows);
    frame.setStyle(windows.get());
    QCOMPARE(static_cast<QWidget&>(frame).contentsRect(), QRect(0, 0, 35, 30));
    frame.setParent(&parent);
    QCOMPARE(static_cast<QWidget&>(frame).contentsRect(), QRect(0, 0, 35, 30));
    frame.constPolish();
    QCOMPARE(static_cast<QWidget&>(frame).contentsRect(), QRect(0, 0, 35, 30));
    QCOMPARE(frame.frameRect(), QRect(0, 0, 35, 30));
    QCOMPARE(frame.changes, 0);
    frame.setStyle(nullptr);
}

// A view that places its bars in the hook may change the frame's rectangle there.
void TestToolkitFrame::children()
{
    class View : public ToolkitFrame
    {
    public:
        QWidget bar{this};

    protected:
        void frameChanged() override
        {
            setFrameRect(QRect(0, 0, width() - 10, height()));
            const int edge = frameWidth();
            bar.setGeometry(width() - 10, edge, 10, height() - 2 * edge);
        }
    };
    View view;
    view.resize(50, 40);
    view.setFrameStyle(sunkenPanel);
    view.setLineWidth(3);
    QCOMPARE(view.bar.geometry(), QRect(40, 3, 10, 34));
    QCOMPARE(view.contentsRect(), QRect(3, 3, 34, 34));
    static_cast<QFrame&>(view).setFrameShape(QFrame::NoFrame);
    QCOMPARE(view.bar.geometry(), QRect(40, 0, 10, 40));
}

void TestToolkitFrame::looks_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("lineWidth");
    QTest::addColumn<int>("expectedStyle");
    const int width = QApplication::style()->pixelMetric(QStyle::PM_DefaultFrameWidth);
    QTest::newRow("styled panel of the style's width") << sunkenPanel << width << sunkenPanel;
    QTest::newRow("wide styled panel") << sunkenPanel << width + 3 << (QFrame::Panel | QFrame::Sunken);
    QTest::newRow("wide raised styled panel")
        << (QFrame::StyledPanel | QFrame::Raised) << width + 2 << (QFrame::Panel | QFrame::Raised);
    QTest::newRow("wide plain styled panel")
        << (QFrame::StyledPanel | QFrame::Plain) << width + 2 << (QFrame::Box | QFrame::Plain);
    QTest::newRow("styled panel without lines") << sunkenPanel << 0 << int(QFrame::NoFrame);
    QTest::newRow("box") << (QFrame::Box | QFrame::Sunken) << 2 << (QFrame::Box | QFrame::Sunken);
    QTest::newRow("panel") << (QFrame::Panel | QFrame::Raised) << 3 << (QFrame::Panel | QFrame::Raised);
    QTest::newRow("no frame") << int(QFrame::NoFrame) << 3 << int(QFrame::NoFrame);
}

void TestToolkitFrame::looks()
{
    QFETCH(int, style);
    QFETCH(int, lineWidth);
    QFETCH(int, expectedStyle);
    ToolkitFrame frame;
    frame.resize(20, 16);
    frame.setFrameStyle(style);
    frame.setLineWidth(lineWidth);
    frame.setMidLineWidth(1);
    QCOMPARE(shown(frame), plainFrame(expectedStyle, lineWidth, 1));
    // The margin is no part of the lines.
    frame.setMargin(4);
    QCOMPARE(shown(frame), plainFrame(expectedStyle, lineWidth, 1));
}

void TestToolkitFrame::paintOrderAndClip_data()
{
    QTest::addColumn<QRect>("damaged");
    QTest::addColumn<QStringList>("drawn");
    QTest::addColumn<QRect>("frameClip");
    QTest::addColumn<QRect>("contentsClip");
    QTest::newRow("all") << QRect(0, 0, 40, 30) << QStringList({"frame", "contents"}) << QRect(2, 0, 38, 30)
                         << QRect(5, 3, 32, 24);
    QTest::newRow("inside") << QRect(10, 10, 5, 5) << QStringList({"contents"}) << QRect() << QRect(10, 10, 5, 5);
    QTest::newRow("on the frame") << QRect(2, 0, 38, 2) << QStringList({"frame"}) << QRect(2, 0, 38, 2) << QRect();
    QTest::newRow("across") << QRect(0, 10, 8, 2) << QStringList({"frame", "contents"}) << QRect(2, 10, 6, 2)
                            << QRect(5, 10, 3, 2);
}

void TestToolkitFrame::paintOrderAndClip()
{
    QFETCH(QRect, damaged);
    QFETCH(QStringList, drawn);
    QFETCH(QRect, frameClip);
    QFETCH(QRect, contentsClip);
    Frame frame;
    frame.resize(40, 30);
    frame.setFrameStyle(sunkenPanel);
    frame.setLineWidth(2);
    frame.setMargin(1);
    frame.setFrameRect(QRect(2, 0, 38, 30));
    frame.show();
    QVERIFY(QTest::qWaitForWindowExposed(&frame));
    QTRY_VERIFY(!frame.drawn.isEmpty());
    QCoreApplication::processEvents();
    frame.drawn.clear();
    frame.frameClip = frame.contentsClip = QRect();
    frame.repaint(damaged, false);
    QCOMPARE(frame.drawn, drawn);
    QCOMPARE(frame.frameClip, frameClip);
    QCOMPARE(frame.contentsClip, contentsClip);
}

void TestToolkitFrame::sizeHintIsTheFrame()
{
    ToolkitFrame frame;
    frame.setFrameStyle(sunkenPanel);
    frame.setLineWidth(3);
    frame.setMargin(2);
    QCOMPARE(frame.sizeHint(), QSize(10, 10));
}

void TestToolkitFrame::properties()
{
    Frame frame;
    frame.resize(40, 30);
    QVERIFY(frame.setProperty("frameShape", QVariant::fromValue(QFrame::StyledPanel)));
    QVERIFY(frame.setProperty("lineWidth", 4));
    QVERIFY(frame.setProperty("margin", 2));
    QCOMPARE(frame.property("frameWidth").toInt(), 6);
    QCOMPARE(frame.property("contentsRect").toRect(), QRect(6, 6, 28, 18));
    QCOMPARE(frame.changes, 3);
}

QTEST_MAIN(TestToolkitFrame)
#include "tst_toolkitframe.moc"
