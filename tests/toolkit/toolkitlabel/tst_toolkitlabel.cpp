#include "toolkit/toolkitlabel.h"

#include <QMovie>
#include <QPainter>
#include <QPicture>
#include <QTest>
#include <QVBoxLayout>
#include <QWindow>

#include <functional>

class TestToolkitLabel : public QObject
{
    Q_OBJECT

private slots:
    void construction();
    void looksLikeALabel_data();
    void looksLikeALabel();
    void contentsHookIsWhatIsPainted();
    void penIsTheColour_data();
    void penIsTheColour();
    void maskOfText();
    void maskOfPixmap();
    void maskOfOneBitPixmap();
    void maskOfColouredText();
    void emptyMask_data();
    void emptyMask();
    void maskFollows_data();
    void maskFollows();
    void nothingToFollowWithoutAutoMask();
    void oneUpdateForOneChange();
    void plainPointerInALayout();
    void plainPointerBesideOthers();
    void plainPointerWhileHidden();
    void plainPointerNoticedAtPaint();
    void newParentIsWatched();
    void clicksFallThrough();
    void slotsAreFoundByName();
};

namespace
{

using Setup = std::function<void(QLabel&)>;

QPixmap twoHalves()
{
    QPixmap pixmap(10, 6);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.fillRect(0, 0, 5, 6, QColor(200, 30, 40));
    return pixmap;
}

QPicture cross()
{
    QPicture picture;
    QPainter painter(&picture);
    painter.fillRect(4, 2, 3, 9, Qt::red);
    painter.fillRect(2, 5, 8, 2, Qt::blue);
    painter.end();
    return picture;
}

QImage shown(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

class Label : public ToolkitLabel
{
public:
    using ToolkitLabel::ToolkitLabel;

    int masks = 0;

    using ToolkitLabel::contentsMask;
    using ToolkitLabel::drawContents;
    QLabel& plain() { return *this; }
    void updateMask() override
    {
        ++masks;
        ToolkitLabel::updateMask();
    }
};

// One pixel in the corner in place of the contents.
class Dot : public ToolkitLabel
{
protected:
    void drawContents(QPainter* painter) override { painter->drawPoint(0, 0); }
};

class ClickCounter : public QWidget
{
public:
    int clicks = 0;

protected:
    void mousePressEvent(QMouseEvent*) override { ++clicks; }
};

// What lies under the point of the window takes the click.
void clickAt(QWidget& window, const QPoint& at)
{
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {}, at);
}

} // namespace

Q_DECLARE_METATYPE(Setup)

void TestToolkitLabel::construction()
{
    QWidget parent;
    const ToolkitLabel label(&parent, "label", Qt::WRepaintNoErase);
    QCOMPARE(label.parentWidget(), &parent);
    QCOMPARE(label.name(), "label");
    QVERIFY(label.testWFlags(Qt::WRepaintNoErase));
    QVERIFY(!label.autoMask());
}

void TestToolkitLabel::looksLikeALabel_data()
{
    QTest::addColumn<Setup>("setup");
    const auto text = [](Qt::Alignment alignment) {
        return Setup([alignment](QLabel& label) {
            label.setText("Some text");
            label.setAlignment(alignment);
        });
    };
    QTest::newRow("nothing") << Setup([](QLabel&) {});
    QTest::newRow("text") << text(Qt::AlignLeft | Qt::AlignVCenter);
    QTest::newRow("text, centred") << text(Qt::AlignCenter);
    QTest::newRow("text, bottom right") << text(Qt::AlignRight | Qt::AlignBottom);
    QTest::newRow("text, top") << text(Qt::AlignTop | Qt::AlignHCenter);
    QTest::newRow("text, right to left") << Setup(
        [](QLabel& l) { l.setText(QString::fromUtf8("\u05d0\u05d1\u05d2")); });
    QTest::newRow("text in a right to left layout") << Setup([](QLabel& l) {
        l.setLayoutDirection(Qt::RightToLeft);
        l.setText("Some text");
    });
    QTest::newRow("text, indent") << Setup([](QLabel& l) {
        l.setText("Some text");
        l.setIndent(17);
    });
    QTest::newRow("text, indent at the bottom right") << Setup([](QLabel& l) {
        l.setText("Some text");
        l.setAlignment(Qt::AlignRight | Qt::AlignBottom);
        l.setIndent(9);
    });
    QTest::newRow("text, indent at the top left") << Setup([](QLabel& l) {
        l.setText("Some text");
        l.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        l.setIndent(13);
    });
    QTest::newRow("text, margin") << Setup([](QLabel& l) {
        l.setText("Some text");
        l.setMargin(11);
    });
    QTest::newRow("text in a frame") << Setup([](QLabel& l) {
        l.setText("Some text");
        l.setFrameStyle(QFrame::Box | QFrame::Raised);
        l.setLineWidth(3);
    });
    QTest::newRow("text, two lines") << Setup([](QLabel& l) { l.setText("Some\ntext"); });
    QTest::newRow("text, word wrap") << Setup([](QLabel& l) {
        l.setText("Some text that is far too long for one line of this label");
        l.setWordWrap(true);
    });
    QTest::newRow("text, ampersand") << Setup([](QLabel& l) { l.setText("Some &text"); });
    QTest::newRow("text, buddy") << Setup([](QLabel& l) {
        l.setText("Some &text");
        l.setBuddy(l.parentWidget());
    });
    QTest::newRow("text, disabled") << Setup([](QLabel& l) {
        l.setText("Some text");
        l.setEnabled(false);
    });
    QTest::newRow("text, font and colour") << Setup([](QLabel& l) {
        QFont font = l.font();
        font.setPixelSize(22);
        font.setUnderline(true);
        l.setFont(font);
        QPalette palette = l.palette();
        palette.setColor(QPalette::WindowText, Qt::blue);
        l.setPalette(palette);
        l.setText("Some text");
    });
    QTest::newRow("number") << Setup([](QLabel& l) { l.setNum(-42); });
    QTest::newRow("tags as plain text") << Setup([](QLabel& l) {
        l.setTextFormat(Qt::PlainText);
        l.setText("<b>Some</b>");
    });
    const auto rich = [](Qt::Alignment alignment) {
        return Setup([alignment](QLabel& label) {
            label.setText("<b>Some</b> <font color=red>text</font> <a href=x>and more</a>");
            label.setAlignment(alignment);
        });
    };
    QTest::newRow("rich") << rich(Qt::AlignLeft | Qt::AlignVCenter);
    QTest::newRow("rich, centred") << rich(Qt::AlignCenter);
    QTest::newRow("rich, bottom right") << rich(Qt::AlignRight | Qt::AlignBottom);
    QTest::newRow("rich, top") << rich(Qt::AlignTop);
    QTest::newRow("rich, word wrap and indent") << Setup([](QLabel& l) {
        l.setText("Some <i>text</i> that is far too long for one line of this label");
        l.setWordWrap(true);
        l.setIndent(6);
    });
    QTest::newRow("rich, disabled") << Setup([](QLabel& l) {
        l.setText("<b>Some text</b>");
        l.setEnabled(false);
    });
    QTest::newRow("rich, buddy") << Setup([](QLabel& l) {
        l.setText("<b>Some</b> &amp;text");
        l.setBuddy(l.parentWidget());
    });
    QTest::newRow("rich, colour") << Setup([](QLabel& l) {
        QPalette palette = l.palette();
        palette.setColor(QPalette::WindowText, Qt::blue);
        l.setPalette(palette);
        l.setText("<b>Some text</b>");
    });
    QTest::newRow("rich, higher than the label") << Setup([](QLabel& l) { l.setText("<h1>a<br>b<br>c<br>d</h1>"); });
    QTest::newRow("markdown") << Setup([](QLabel& l) {
        l.setTextFormat(Qt::MarkdownText);
        l.setText("Some *text*");
    });
    const auto picture = [](Qt::Alignment alignment, bool scaled, bool enabled) {
        return Setup([=](QLabel& label) {
            label.setPixmap(twoHalves());
            label.setAlignment(alignment);
            label.setScaledContents(scaled);
            label.setEnabled(enabled);
        });
    };
    QTest::newRow("pixmap") << picture(Qt::AlignLeft | Qt::AlignVCenter, false, true);
    QTest::newRow("pixmap, bottom right") << picture(Qt::AlignRight | Qt::AlignBottom, false, true);
    QTest::newRow("pixmap, centred") << picture(Qt::AlignCenter, false, true);
    QTest::newRow("pixmap, disabled") << picture(Qt::AlignCenter, false, false);
    QTest::newRow("pixmap, scaled") << picture(Qt::AlignCenter, true, true);
    QTest::newRow("pixmap, margin and right to left") << Setup([](QLabel& l) {
        l.setLayoutDirection(Qt::RightToLeft);
        l.setPixmap(twoHalves());
        l.setMargin(4);
    });
    QTest::newRow("picture") << Setup([](QLabel& l) { l.setPicture(cross()); });
    QTest::newRow("picture, bottom right") << Setup([](QLabel& l) {
        l.setPicture(cross());
        l.setAlignment(Qt::AlignRight | Qt::AlignBottom);
    });
    QTest::newRow("picture, scaled") << Setup([](QLabel& l) {
        l.setPicture(cross());
        l.setScaledContents(true);
    });
}

void TestToolkitLabel::looksLikeALabel()
{
    QFETCH(Setup, setup);
    QWidget parent;
    QLabel plain(&parent);
    ToolkitLabel label(&parent);
    for (QLabel* each : {&plain, static_cast<QLabel*>(&label)}) {
        each->QWidget::resize(130, 61);
        setup(*each);
    }
    QCOMPARE(shown(label), shown(plain));
}

void TestToolkitLabel::contentsHookIsWhatIsPainted()
{
    Dot dot;
    dot.resize(5, 5);
    dot.setText("text");
    QPalette palette;
    palette.setColor(QPalette::Window, Qt::white);
    palette.setColor(QPalette::WindowText, Qt::red);
    dot.setPalette(palette);
    QImage expected(5, 5, QImage::Format_ARGB32);
    expected.fill(Qt::white);
    expected.setPixelColor(0, 0, Qt::red);
    QCOMPARE(shown(dot), expected);
    dot.setAutoMask(true);
    QCOMPARE(dot.mask(), QRegion(0, 0, 1, 1));
}

void TestToolkitLabel::penIsTheColour_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("plain") << "Text";
    QTest::newRow("rich") << "<b>Text</b>";
}

void TestToolkitLabel::penIsTheColour()
{
    QFETCH(QString, text);
    Label label;
    label.resize(60, 30);
    label.setText(text);
    QImage image(label.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setFont(label.font());
    painter.setPen(QColor(0, 255, 0));
    label.drawContents(&painter);
    painter.end();
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            QCOMPARE(qRed(image.pixel(x, y)), 0);
            QCOMPARE(qBlue(image.pixel(x, y)), 0);
            most = std::max(most, qGreen(image.pixel(x, y)));
        }
    }
    QVERIFY(most > 128);
}

void TestToolkitLabel::maskOfText()
{
    Label label;
    label.resize(80, 30);
    label.setText("Text");
    QBitmap expected(80, 30);
    expected.clear();
    QPainter painter(&expected);
    painter.setPen(Qt::color1);
    painter.setFont(label.font());
    painter.drawText(QRect(0, 0, 80, 30), Qt::AlignLeft | Qt::AlignVCenter, "Text");
    painter.end();
    QVERIFY(!QRegion(expected).isEmpty());
    QCOMPARE(label.contentsMask().toImage(), expected.toImage());
    label.setAutoMask(true);
    QCOMPARE(label.mask(), QRegion(expected));
    label.setAutoMask(false);
    QVERIFY(label.mask().isEmpty());
}

void TestToolkitLabel::maskOfPixmap()
{
    Label label;
    label.resize(20, 10);
    label.setPixmap(twoHalves());
    label.setAutoMask(true);
    QCOMPARE(label.mask(), QRegion(0, 2, 5, 6));
    label.setScaledContents(true);
    QCOMPARE(label.mask(), QRegion(0, 0, 10, 10));
}

void TestToolkitLabel::maskOfOneBitPixmap()
{
    QBitmap bits(4, 4);
    bits.clear();
    QPainter painter(&bits);
    painter.setPen(Qt::color1);
    painter.drawPoint(1, 2);
    painter.end();
    Label label;
    label.resize(4, 4);
    label.setPixmap(bits);
    label.setAutoMask(true);
    QCOMPARE(label.mask(), QRegion(1, 2, 1, 1));
}

// Text that is white in the label is part of it all the same.
void TestToolkitLabel::maskOfColouredText()
{
    Label black;
    black.resize(80, 30);
    black.setText("<font color=black>Text</font>");
    Label white;
    white.resize(80, 30);
    white.setText("<font color=white>Text</font>");
    QVERIFY(!QRegion(white.contentsMask()).isEmpty());
    QCOMPARE(white.contentsMask().toImage(), black.contentsMask().toImage());
}

void TestToolkitLabel::emptyMask_data()
{
    QTest::addColumn<Setup>("setup");
    QTest::newRow("never set") << Setup([](QLabel&) {});
    QTest::newRow("empty text") << Setup([](QLabel& l) { l.setText(""); });
    QTest::newRow("blank text") << Setup([](QLabel& l) { l.setText("   "); });
    QTest::newRow("null pixmap") << Setup([](QLabel& l) { l.setPixmap(QPixmap()); });
    QTest::newRow("cleared") << Setup([](QLabel& l) {
        l.setText("text");
        l.clear();
    });
    QTest::newRow("no area") << Setup([](QLabel& l) {
        l.setText("text");
        l.resize(0, 0);
    });
}

void TestToolkitLabel::emptyMask()
{
    QFETCH(Setup, setup);
    Label label;
    label.resize(40, 20);
    setup(label);
    label.setAutoMask(true);
    QVERIFY(label.mask().isEmpty());
    // What Qt holds is not empty, which would mean no mask at all, and shows nothing.
    QVERIFY(!label.QWidget::mask().isEmpty());
    QVERIFY(!label.QWidget::mask().intersects(QRect(0, 0, 40, 20)));
}

void TestToolkitLabel::maskFollows_data()
{
    using Change = std::function<void(Label&)>;
    QTest::addColumn<Setup>("change");
    const auto row = [](const char* name, const Change& change) {
        QTest::newRow(name) << Setup([change](QLabel& label) { change(static_cast<Label&>(label)); });
    };
    row("setText", [](Label& l) { l.setText("Other"); });
    row("setPixmap", [](Label& l) { l.setPixmap(twoHalves()); });
    row("setPicture", [](Label& l) { l.setPicture(cross()); });
    row("setNum", [](Label& l) { l.setNum(42); });
    row("setNum of a fraction", [](Label& l) { l.setNum(4.5); });
    row("clear", [](Label& l) { l.clear(); });
    row("setAlignment", [](Label& l) { l.setAlignment(Qt::AlignBottom | Qt::AlignRight); });
    row("setIndent", [](Label& l) { l.setIndent(20); });
    row("setMargin", [](Label& l) { l.setMargin(9); });
    row("setWordWrap", [](Label& l) { l.setWordWrap(true); });
    row("setTextFormat", [](Label& l) { l.setTextFormat(Qt::RichText); });
    row("setBuddy", [](Label& l) { l.setBuddy(&l); });
    row("setFont", [](Label& l) {
        QFont font = l.font();
        font.setPixelSize(25);
        l.setFont(font);
    });
    row("resize", [](Label& l) { l.resize(90, 40); });
    row("setGeometry", [](Label& l) { l.setGeometry(3, 4, 90, 40); });
    row("frame", [](Label& l) {
        l.setFrameStyle(QFrame::Box | QFrame::Plain);
        l.setLineWidth(7);
    });
    row("property", [](Label& l) { l.setProperty("text", "Other"); });
}

void TestToolkitLabel::maskFollows()
{
    QFETCH(Setup, change);
    QWidget parent;
    Label label(&parent);
    label.resize(60, 60);
    label.setText("&Some <b>text</b> to wrap");
    label.setTextFormat(Qt::PlainText);
    label.setAutoMask(true);
    const QRegion before = label.mask();
    QVERIFY(!before.isEmpty());
    change(label);
    QVERIFY(label.mask() != before);
    QCOMPARE(label.mask(), QRegion(label.contentsMask()));
}

void TestToolkitLabel::nothingToFollowWithoutAutoMask()
{
    Label label;
    label.setText("Text");
    label.resize(60, 20);
    QCOMPARE(label.masks, 0);
    QVERIFY(label.QWidget::mask().isEmpty());
}

void TestToolkitLabel::oneUpdateForOneChange()
{
    QWidget parent;
    Label label(&parent);
    label.resize(60, 20);
    label.setAutoMask(true);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QCoreApplication::processEvents();
    label.masks = 0;
    label.setText("Text");
    QCOMPARE(label.masks, 1);
    label.setText("Text");
    QCoreApplication::processEvents();
    label.grab();
    QCoreApplication::processEvents();
    QCOMPARE(label.masks, 1);
    label.resize(70, 20);
    label.grab();
    QCoreApplication::processEvents();
    QCOMPARE(label.masks, 2);
}

void TestToolkitLabel::plainPointerInALayout()
{
    QWidget parent;
    QVBoxLayout layout(&parent);
    Label label;
    layout.addWidget(&label);
    label.setAutoMask(true);
    parent.resize(120, 60);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QVERIFY(label.mask().isEmpty());
    label.plain().setText("Text");
    QTRY_VERIFY(!label.mask().isEmpty());
    QCOMPARE(label.mask(), QRegion(label.contentsMask()));
}

void TestToolkitLabel::plainPointerBesideOthers()
{
    QWidget parent;
    Label label(&parent);
    label.resize(80, 30);
    label.setAutoMask(true);
    parent.resize(120, 60);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    label.plain().setText("Text");
    QTRY_VERIFY(!label.mask().isEmpty());
    const QRegion before = label.mask();
    label.plain().setAlignment(Qt::AlignRight | Qt::AlignBottom);
    QTRY_VERIFY(label.mask() != before);
    label.plain().clear();
    QTRY_VERIFY(label.mask().isEmpty());
}

void TestToolkitLabel::plainPointerWhileHidden()
{
    QWidget parent;
    Label label(&parent);
    label.resize(80, 30);
    label.setAutoMask(true);
    label.plain().setText("Text");
    parent.show();
    QVERIFY(!label.mask().isEmpty());
    QCOMPARE(label.mask(), QRegion(label.contentsMask()));
}

void TestToolkitLabel::plainPointerNoticedAtPaint()
{
    QWidget parent;
    Label label(&parent);
    label.resize(20, 10);
    label.setPixmap(twoHalves());
    label.setAutoMask(true);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    QCOMPARE(label.mask(), QRegion(0, 2, 5, 6));
    label.plain().setScaledContents(true);
    QTRY_COMPARE(label.mask(), QRegion(0, 0, 10, 10));
}

void TestToolkitLabel::newParentIsWatched()
{
    QWidget first;
    QWidget second;
    Label label(&first);
    label.resize(80, 30);
    label.setAutoMask(true);
    label.setParent(&second);
    label.QWidget::show();
    second.show();
    QVERIFY(QTest::qWaitForWindowExposed(&second));
    label.plain().setText("Text");
    QTRY_VERIFY(!label.mask().isEmpty());
    label.setAutoMask(false);
    label.masks = 0;
    label.plain().setText("Other");
    QCoreApplication::processEvents();
    QCOMPARE(label.masks, 0);
}

void TestToolkitLabel::clicksFallThrough()
{
    ClickCounter parent;
    parent.resize(60, 40);
    class CountingLabel : public ToolkitLabel
    {
    public:
        using ToolkitLabel::ToolkitLabel;
        int clicks = 0;

    protected:
        void mousePressEvent(QMouseEvent*) override { ++clicks; }
    };
    CountingLabel label(&parent);
    label.resize(60, 40);
    label.setAutoMask(true);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    clickAt(parent, QPoint(30, 20));
    QCOMPARE(parent.clicks, 1);
    QCOMPARE(label.clicks, 0);
    label.setScaledContents(true);
    label.setPixmap(twoHalves());
    clickAt(parent, QPoint(10, 20));
    QCOMPARE(parent.clicks, 1);
    QCOMPARE(label.clicks, 1);
    clickAt(parent, QPoint(50, 20));
    QCOMPARE(parent.clicks, 2);
    QCOMPARE(label.clicks, 1);
}

void TestToolkitLabel::slotsAreFoundByName()
{
    Label label;
    label.resize(80, 30);
    label.setAutoMask(true);
    label.masks = 0;
    QVERIFY(QMetaObject::invokeMethod(&label, "setText", Q_ARG(QString, "Text")));
    QCOMPARE(label.masks, 1);
    QVERIFY(QMetaObject::invokeMethod(&label, "setNum", Q_ARG(int, 5)));
    QCOMPARE(label.masks, 2);
    QVERIFY(QMetaObject::invokeMethod(&label, "clear"));
    QCOMPARE(label.masks, 3);
}

QTEST_MAIN(TestToolkitLabel)
#include "tst_toolkitlabel.moc"
