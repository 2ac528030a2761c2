#include "toolkit/toolkitwidget.h"

#include <QAbstractButton>
#include <QFrame>
#include <QLabel>
#include <QPainter>
#include <QStyleFactory>
#include <QTest>
#include <QWindow>

class TestToolkitWidget : public QObject
{
    Q_OBJECT

private slots:
    void nameBecomesObjectName();
    void flagsAreKept();
    void baseClasses();
    void virtualOperations();
    void autoMaskAtOnceAndOff();
    void autoMaskOfAHiddenWidget();
    void autoMaskFollowsEvents_data();
    void autoMaskFollowsEvents();
    void repaintRectangles_data();
    void repaintRectangles();
    void styleChangeHook();
    void polishHook();
    void maskBitmap_data();
    void maskBitmap();
    void emptyMaskLetsClicksThrough();
};

namespace
{

class Recorder : public ToolkitWidget<QWidget>
{
public:
    using ToolkitWidget::ToolkitWidget;

    QStringList calls;
    int masks = 0;
    QList<QRect> painted;

    void setBackgroundPixmap(const QPixmap&) override { calls << "setBackgroundPixmap"; }
    void setEnabled(bool) override { calls << "setEnabled"; }
    void setFont(const QFont&) override { calls << "setFont"; }
    void setFocus() override { calls << "setFocus"; }
    void resize(int, int) override { calls << "resize"; }
    void updateMask() override
    {
        ++masks;
        setMask(QRegion(0, 0, 3, 3));
    }

protected:
    void paintEvent(QPaintEvent* event) override { painted << event->rect(); }
    void styleChange(QStyle&) override { calls << "styleChange"; }
    void polish() override { calls << "polish"; }
};

} // namespace

void TestToolkitWidget::nameBecomesObjectName()
{
    ToolkitWidget<QWidget> widget(nullptr, "panel");
    QCOMPARE(widget.objectName(), QStringLiteral("panel"));
    QCOMPARE(widget.name(), "panel");
    widget.setObjectName(QStringLiteral("other"));
    QCOMPARE(widget.name(), "other");
    widget.setName("third");
    QCOMPARE(widget.objectName(), QStringLiteral("third"));
    const ToolkitWidget<QWidget> latin(nullptr, "caf\xe9");
    QCOMPARE(latin.objectName(), QString::fromLatin1("caf\xe9"));
    QCOMPARE(latin.name(), "caf\xe9");
    const ToolkitWidget<QWidget> unnamed;
    QCOMPARE(unnamed.name(), "");
    QVERIFY(unnamed.objectName().isEmpty());
}

void TestToolkitWidget::flagsAreKept()
{
    QWidget parent;
    const ToolkitWidget<QWidget> child(&parent, "c", Qt::WStyle_Customize | Qt::WRepaintNoErase);
    QVERIFY(child.testWFlags(Qt::WRepaintNoErase));
    QVERIFY(!child.testWFlags(Qt::WResizeNoErase));
    QCOMPARE(child.getWFlags(), Qt::WStyle_Customize | Qt::WRepaintNoErase);
    QVERIFY(!child.isWindow());
    QCOMPARE(child.parentWidget(), &parent);
    const ToolkitWidget<QWidget> window(&parent, "w", Qt::WType_TopLevel);
    QVERIFY(window.isWindow());
}

void TestToolkitWidget::baseClasses()
{
    class Button : public ToolkitWidget<QAbstractButton>
    {
    public:
        using ToolkitWidget::ToolkitWidget;
        void paintEvent(QPaintEvent*) override {}
    };
    QWidget parent;
    ToolkitWidget<QFrame> frame(&parent, "frame");
    ToolkitWidget<QLabel> label(&parent, "label");
    Button button(&parent, "button");
    QVERIFY(parent.findChild<QFrame*>("frame"));
    QVERIFY(parent.findChild<QLabel*>("label"));
    QVERIFY(parent.findChild<QAbstractButton*>("button"));
}

void TestToolkitWidget::virtualOperations()
{
    Recorder recorder;
    ToolkitWidget<QWidget>& widget = recorder;
    widget.setBackgroundPixmap(QPixmap());
    widget.setEnabled(false);
    widget.setFont(QFont());
    widget.setFocus();
    widget.resize(3, 4);
    widget.resize(QSize(3, 4));
    QCOMPARE(recorder.calls,
             QStringList({"setBackgroundPixmap", "setEnabled", "setFont", "setFocus", "resize", "resize"}));
}

void TestToolkitWidget::autoMaskAtOnceAndOff()
{
    Recorder widget;
    QVERIFY(!widget.autoMask());
    widget.setAutoMask(true);
    QVERIFY(widget.autoMask());
    QCOMPARE(widget.masks, 1);
    QCOMPARE(widget.mask(), QRegion(0, 0, 3, 3));
    widget.setAutoMask(true);
    QCOMPARE(widget.masks, 1);
    widget.setAutoMask(false);
    QVERIFY(widget.mask().isEmpty());
    QCOMPARE(widget.masks, 1);
}

void TestToolkitWidget::autoMaskOfAHiddenWidget()
{
    class Masked : public ToolkitWidget<QWidget>
    {
    public:
        QList<QSize> masks;
        void updateMask() override { masks << size(); }
    };
    Masked widget;
    widget.resize(20, 20);
    QVERIFY(widget.masks.isEmpty());
    widget.setAutoMask(true);
    widget.resize(30, 20);
    widget.setGeometry(1, 2, 40, 30);
    widget.setGeometry(QRect(1, 2, 50, 30));
    QCOMPARE(widget.masks, QList<QSize>({QSize(20, 20), QSize(30, 20), QSize(40, 30), QSize(50, 30)}));
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    widget.masks.clear();
    widget.resize(60, 30);
    QCOMPARE(widget.masks, QList<QSize>({QSize(60, 30)}));
}

void TestToolkitWidget::autoMaskFollowsEvents_data()
{
    QTest::addColumn<QString>("change");
    QTest::newRow("resize") << "resize";
    QTest::newRow("font through a base pointer") << "font";
    QTest::newRow("enabled through a base pointer") << "enabled";
    QTest::newRow("focus in") << "focus in";
    QTest::newRow("focus out") << "focus out";
}

void TestToolkitWidget::autoMaskFollowsEvents()
{
    QFETCH(QString, change);
    Recorder recorder;
    QWidget& widget = recorder;
    recorder.setAutoMask(true);
    QResizeEvent resize(QSize(5, 5), QSize(4, 4));
    QFocusEvent in(QEvent::FocusIn);
    QFocusEvent out(QEvent::FocusOut);
    QFont font = widget.font();
    font.setPointSize(font.pointSize() + 3);
    auto run = [&] {
        if (change == "resize")
            QCoreApplication::sendEvent(&widget, &resize);
        else if (change == "font")
            widget.setFont(font);
        else if (change == "enabled")
            widget.setEnabled(false);
        else if (change == "focus in")
            QCoreApplication::sendEvent(&widget, &in);
        else
            QCoreApplication::sendEvent(&widget, &out);
    };
    run();
    QCOMPARE(recorder.masks, 2);
    Recorder unmasked;
    QCoreApplication::sendEvent(&unmasked, &resize);
    QCOMPARE(unmasked.masks, 0);
}

void TestToolkitWidget::repaintRectangles_data()
{
    QTest::addColumn<QRect>("asked");
    QTest::addColumn<QRect>("painted");
    QTest::newRow("piece") << QRect(2, 3, 4, 5) << QRect(2, 3, 4, 5);
    QTest::newRow("negative width and height reach the edge") << QRect(2, 3, -1, -1) << QRect(2, 3, 48, 37);
    QTest::newRow("clipped") << QRect(45, 35, 20, 20) << QRect(45, 35, 5, 5);
}

void TestToolkitWidget::repaintRectangles()
{
    QFETCH(QRect, asked);
    QFETCH(QRect, painted);
    Recorder widget;
    static_cast<QWidget&>(widget).resize(50, 40);
    static_cast<QWidget&>(widget).show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QTRY_VERIFY(!widget.painted.isEmpty());
    const QRect area = painted & widget.rect();
    for (const bool erase : {false, true}) {
        widget.painted.clear();
        widget.repaint(asked.x(), asked.y(), asked.width(), asked.height(), erase);
        QCOMPARE(widget.painted, QList<QRect>({area}));
        widget.painted.clear();
        widget.repaint(QRect(asked.topLeft(), asked.size()), erase);
        QCOMPARE(widget.painted, QList<QRect>({area}));
    }
    widget.painted.clear();
    widget.repaint(false);
    QCOMPARE(widget.painted, QList<QRect>({widget.rect()}));
}

void TestToolkitWidget::styleChangeHook()
{
    Recorder widget;
    const std::unique_ptr<QStyle> style(QStyleFactory::create("fusion"));
    static_cast<QWidget&>(widget).setStyle(style.get());
    QVERIFY(widget.calls.contains("styleChange"));
    static_cast<QWidget&>(widget).setStyle(nullptr);
}

void TestToolkitWidget::polishHook()
{
    Recorder widget;
    QVERIFY(widget.calls.isEmpty());
    widget.constPolish();
    QCOMPARE(widget.calls, QStringList("polish"));
    widget.constPolish();
    static_cast<QWidget&>(widget).show();
    QCOMPARE(widget.calls.count("polish"), 1);
    Recorder shown;
    static_cast<QWidget&>(shown).show();
    QCOMPARE(shown.calls.count("polish"), 1);
}

void TestToolkitWidget::maskBitmap_data()
{
    QTest::addColumn<QRegion>("bits");
    QTest::addColumn<QSize>("size");
    QTest::newRow("some") << QRegion(1, 1, 2, 3).united(QRect(6, 0, 1, 1)) << QSize(8, 8);
    QTest::newRow("all") << QRegion(0, 0, 8, 8) << QSize(8, 8);
    QTest::newRow("none") << QRegion() << QSize(8, 8);
    QTest::newRow("null bitmap") << QRegion() << QSize();
}

void TestToolkitWidget::maskBitmap()
{
    QFETCH(QRegion, bits);
    QFETCH(QSize, size);
    QBitmap bitmap(size);
    bitmap.clear();
    if (!bits.isEmpty()) {
        QPainter painter(&bitmap);
        for (const QRect& rect : bits)
            painter.fillRect(rect, Qt::color1);
    }
    QWidget parent;
    ToolkitWidget<QWidget> widget(&parent);
    static_cast<QWidget&>(widget).resize(8, 8);
    widget.setMaskBitmap(bitmap);
    QCOMPARE(widget.mask(), bits);
    for (int y = 0; y < 8; ++y)
        for (int x = 0; x < 8; ++x)
            QCOMPARE(parent.childAt(x, y) == &widget, bits.contains(QPoint(x, y)));
    widget.clearMask();
    QVERIFY(widget.mask().isEmpty());
    QCOMPARE(parent.childAt(4, 4), &widget);
}

void TestToolkitWidget::emptyMaskLetsClicksThrough()
{
    class Clicked : public ToolkitWidget<QWidget>
    {
    public:
        using ToolkitWidget::ToolkitWidget;
        int clicks = 0;
        int paints = 0;

    protected:
        void mousePressEvent(QMouseEvent*) override { ++clicks; }
        void paintEvent(QPaintEvent*) override { ++paints; }
    };
    Clicked parent;
    static_cast<QWidget&>(parent).resize(30, 30);
    Clicked child(&parent);
    static_cast<QWidget&>(child).resize(30, 30);
    child.setMaskBitmap(QBitmap());
    static_cast<QWidget&>(parent).show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QTRY_VERIFY(parent.paints > 0);
    QTest::mouseClick(parent.windowHandle(), Qt::LeftButton, {}, QPoint(15, 15));
    QCOMPARE(parent.clicks, 1);
    QCOMPARE(child.clicks, 0);
    QCOMPARE(child.paints, 0);
    child.clearMask();
    QTest::mouseClick(parent.windowHandle(), Qt::LeftButton, {}, QPoint(15, 15));
    QCOMPARE(parent.clicks, 1);
    QCOMPARE(child.clicks, 1);
    QTRY_VERIFY(child.paints > 0);
}

QTEST_MAIN(TestToolkitWidget)
#include "tst_toolkitwidget.moc"
