#include "toolkit/widgetflags.h"

#include <QTest>
#include <QWidget>

using namespace skinwidgets;

class TestWidgetFlags : public QObject
{
    Q_OBJECT

private slots:
    void meanings_data();
    void meanings();
    void attributes_data();
    void attributes();
    void childStaysChild_data();
    void childStaysChild();
    void windowKeepsParent();
    void modal();
};

void TestWidgetFlags::meanings_data()
{
    QTest::addColumn<uint>("flags");
    QTest::addColumn<uint>("wanted");
    QTest::addColumn<uint>("unwanted");
    QTest::newRow("top level") << uint(Qt::WType_TopLevel) << uint(Qt::Window) << uint(Qt::FramelessWindowHint);
    QTest::newRow("popup") << uint(Qt::WType_Popup) << uint(Qt::Popup) << uint(Qt::FramelessWindowHint);
    QTest::newRow("dialog") << uint(Qt::WType_TopLevel | Qt::WStyle_Dialog) << uint(Qt::Dialog) << uint(0);
    QTest::newRow("tool") << uint(Qt::WType_TopLevel | Qt::WStyle_Tool) << uint(Qt::Tool) << uint(0);
    QTest::newRow("customised without a border")
        << uint(Qt::WStyle_Customize) << uint(Qt::FramelessWindowHint) << uint(Qt::WindowTitleHint);
    QTest::newRow("customised with title")
        << uint(Qt::WStyle_Customize | Qt::WStyle_Title) << uint(Qt::CustomizeWindowHint | Qt::WindowTitleHint)
        << uint(Qt::FramelessWindowHint | Qt::WindowSystemMenuHint);
    QTest::newRow("customised with minimise")
        << uint(Qt::WStyle_Customize | Qt::WStyle_NormalBorder | Qt::WStyle_Minimize)
        << uint(Qt::WindowMinimizeButtonHint) << uint(Qt::WindowMaximizeButtonHint);
    QTest::newRow("customised on top") << uint(Qt::WStyle_Customize | Qt::WStyle_StaysOnTop)
                                       << uint(Qt::WindowStaysOnTopHint) << uint(0);
    QTest::newRow("styles count only when customised")
        << uint(Qt::WStyle_Title | Qt::WStyle_StaysOnTop) << uint(0) << ~0U;
    QTest::newRow("no-erase flags are no window flags")
        << uint(Qt::WResizeNoErase | Qt::WRepaintNoErase | Qt::WPaintClever) << uint(0) << ~0U;
    QTest::newRow("past the window manager")
        << uint(Qt::WX11BypassWM) << uint(Qt::X11BypassWindowManagerHint) << uint(0);
    QTest::newRow("nothing") << 0U << 0U << ~0U;
}

void TestWidgetFlags::meanings()
{
    QFETCH(uint, flags);
    QFETCH(uint, wanted);
    QFETCH(uint, unwanted);
    const uint result = windowFlagsFor(flags);
    QCOMPARE(result & wanted, wanted);
    QCOMPARE(result & unwanted, 0U);
}

void TestWidgetFlags::attributes_data()
{
    QTest::addColumn<uint>("flag");
    QTest::addColumn<int>("attribute");
    QTest::newRow("destructive close") << uint(Qt::WDestructiveClose) << int(Qt::WA_DeleteOnClose);
    QTest::newRow("repaint without erasing") << uint(Qt::WRepaintNoErase) << int(Qt::WA_OpaquePaintEvent);
    QTest::newRow("static contents") << uint(Qt::WNorthWestGravity) << int(Qt::WA_StaticContents);
    QTest::newRow("mouse no mask") << uint(Qt::WMouseNoMask) << int(Qt::WA_MouseNoMask);
}

void TestWidgetFlags::attributes()
{
    QFETCH(uint, flag);
    QFETCH(int, attribute);
    QWidget parent;
    QWidget child(&parent);
    applyWidgetFlags(&child, ~flag & ~uint(Qt::WType_Mask | Qt::WStyle_Mask));
    QVERIFY(!child.testAttribute(static_cast<Qt::WidgetAttribute>(attribute)));
    applyWidgetFlags(&child, flag);
    QVERIFY(child.testAttribute(static_cast<Qt::WidgetAttribute>(attribute)));
}

void TestWidgetFlags::childStaysChild_data()
{
    QTest::addColumn<uint>("flags");
    QTest::newRow("none") << 0U;
    QTest::newRow("16 is a style") << 16U;
    QTest::newRow("no-erase") << 0x900000U;
    QTest::newRow("frame styles") << uint(Qt::WStyle_Mask & ~(Qt::WStyle_Tool | Qt::WStyle_Dialog));
    QTest::newRow("past the window manager") << uint(Qt::WX11BypassWM);
}

void TestWidgetFlags::childStaysChild()
{
    QFETCH(uint, flags);
    QWidget parent;
    QWidget child(&parent);
    const Qt::WindowFlags before = child.windowFlags();
    applyWidgetFlags(&child, flags);
    QVERIFY(!child.isWindow());
    QCOMPARE(child.windowFlags(), before);
    QCOMPARE(child.parentWidget(), &parent);
}

void TestWidgetFlags::windowKeepsParent()
{
    QWidget parent;
    QWidget window(&parent);
    applyWidgetFlags(&window, Qt::WType_TopLevel);
    QVERIFY(window.isWindow());
    QCOMPARE(window.parentWidget(), &parent);
}

void TestWidgetFlags::modal()
{
    QWidget window;
    applyWidgetFlags(&window, Qt::WType_TopLevel);
    QCOMPARE(window.windowModality(), Qt::NonModal);
    applyWidgetFlags(&window, Qt::WType_TopLevel | Qt::WType_Modal);
    QCOMPARE(window.windowModality(), Qt::ApplicationModal);
    QVERIFY(window.windowFlags() & Qt::Dialog);
}

QTEST_MAIN(TestWidgetFlags)
#include "tst_widgetflags.moc"
