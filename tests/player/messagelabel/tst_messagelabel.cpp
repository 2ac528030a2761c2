#include "player/messagelabel.h"

#include <QElapsedTimer>
#include <QImage>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

namespace
{

class Ground : public QWidget
{
public:
    int clicks = 0;

protected:
    void mousePressEvent(QMouseEvent* /*event*/) override { ++clicks; }
};

} // namespace

class TestMessageLabel : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void showsNothingAtFirst();
    void showsAndGoes();
    void newMessageTakesThePlace();
    void longerMessagesStayLonger();
    void readsOnAnyGround_data();
    void readsOnAnyGround();
    void outlineContrasts();
    void clicksGoThrough();
    void isShortenedToItsSize_data();
    void isShortenedToItsSize();
    void withoutAreaShowsNothing();

private:
    QTimer* timer() const { return m_label->findChild<QTimer*>(QStringLiteral("message")); }
    void fillGround(const QColor& color)
    {
        QPalette palette = m_ground->palette();
        palette.setColor(QPalette::Window, color);
        m_ground->setPalette(palette);
    }
    static int count(const QImage& image, const QColor& color)
    {
        int found = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                found += image.pixelColor(x, y) == color;
        return found;
    }

    std::unique_ptr<Ground> m_ground;
    MessageLabel* m_label = nullptr;
};

void TestMessageLabel::init()
{
    m_ground = std::make_unique<Ground>();
    m_ground->resize(300, 80);
    m_label = new MessageLabel(m_ground.get(), "message label");
    QFont font = m_label->font();
    font.setPixelSize(14);
    m_label->setFont(font);
    m_label->setGeometry(10, 10, 250, 58);
    m_ground->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_ground.get()));
}

void TestMessageLabel::cleanup()
{
    m_ground.reset();
}

void TestMessageLabel::showsNothingAtFirst()
{
    QVERIFY(!m_label->isVisible());
    QVERIFY(m_label->message().isEmpty());
    QSignalSpy showing(m_label, &MessageLabel::showingChanged);
    m_label->showMessage(QStringLiteral(" \n "));
    QVERIFY(!m_label->isVisible());
    QCOMPARE(showing.count(), 0);
}

void TestMessageLabel::showsAndGoes()
{
    QSignalSpy showing(m_label, &MessageLabel::showingChanged);
    m_label->showMessage(QStringLiteral("Volume 75 %"));
    QVERIFY(m_label->isVisible());
    QCOMPARE(m_label->message(), QStringLiteral("Volume 75 %"));
    QCOMPARE(m_label->text(), QStringLiteral("Volume 75 %"));
    QVERIFY(timer()->isActive());
    QCOMPARE(timer()->interval(), MessageLabel::timeFor(m_label->message()));
    // Some seconds, so that it can be read.
    QVERIFY(timer()->interval() >= 4000);
    // The rest of the time passes at once.
    timer()->start(0);
    QTRY_VERIFY(!m_label->isVisible());
    QCOMPARE(m_label->message(), QString());
    QVERIFY(!timer()->isActive());
    QCOMPARE(showing, (QList<QVariantList>{{true}, {false}}));
}

void TestMessageLabel::newMessageTakesThePlace()
{
    QSignalSpy showing(m_label, &MessageLabel::showingChanged);
    m_label->showMessage(QStringLiteral("One"));
    timer()->start(60000);
    m_label->showMessage(QStringLiteral("Two"));
    QCOMPARE(m_label->message(), QStringLiteral("Two"));
    QCOMPARE(timer()->interval(), MessageLabel::timeFor(QStringLiteral("Two")));
    QCOMPARE(showing.count(), 1);
    m_label->showMessage(QString());
    QVERIFY(!m_label->isVisible());
    QCOMPARE(showing.count(), 2);
}

void TestMessageLabel::longerMessagesStayLonger()
{
    QVERIFY(MessageLabel::timeFor(QStringLiteral("Cannot play this file: no such file")) >
            MessageLabel::timeFor(QStringLiteral("Muted")));
    const int longest = MessageLabel::timeFor(QString(1000000, QLatin1Char('x')));
    QVERIFY(longest <= 15000);
    QVERIFY(longest > MessageLabel::timeFor(QStringLiteral("Muted")));
}

void TestMessageLabel::readsOnAnyGround_data()
{
    QTest::addColumn<QColor>("ground");
    QTest::newRow("black") << QColor(Qt::black);
    QTest::newRow("white") << QColor(Qt::white);
    QTest::newRow("its own colour") << QColor(255, 233, 201);
    QTest::newRow("red") << QColor(Qt::red);
}

void TestMessageLabel::readsOnAnyGround()
{
    QFETCH(QColor, ground);
    const QColor letters(255, 233, 201);
    fillGround(ground);
    m_label->setColor(letters);
    m_label->showMessage(QStringLiteral("HIL"));
    const QImage shown = m_ground->grab().toImage();
    QVERIFY(count(shown, letters) > 20);
    // Each letter's pixel is beside others or the outline, never the ground, unless that looks alike.
    int touching = 0;
    for (int y = 1; y < shown.height() - 1; ++y)
        for (int x = 1; x < shown.width() - 1; ++x)
            for (const QPoint& beside : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)})
                touching += shown.pixelColor(x, y) == letters && shown.pixelColor(QPoint(x, y) + beside) == ground &&
                            qGray(ground.rgb()) > 0 && ground != letters;
    QCOMPARE(touching, 0);
    // Dark and light are there in any case.
    QVERIFY(count(shown, Qt::black) > 20);
}

void TestMessageLabel::outlineContrasts()
{
    fillGround(Qt::red);
    m_label->setColor(Qt::black);
    m_label->showMessage(QStringLiteral("HIL"));
    const QImage shown = m_ground->grab().toImage();
    QVERIFY(count(shown, Qt::black) > 20);
    QVERIFY(count(shown, Qt::white) > 20);
}

void TestMessageLabel::clicksGoThrough()
{
    m_label->showMessage(QString(200, QLatin1Char('M')));
    for (int x = 12; x < 250; x += 3)
        QTest::mouseClick(m_ground->windowHandle(), Qt::LeftButton, Qt::NoModifier, QPoint(x, 38));
    QCOMPARE(m_ground->clicks, 80);
}

void TestMessageLabel::isShortenedToItsSize_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("no blanks") << QString(10000, QLatin1Char('W'));
    QTest::newRow("words") << QStringLiteral("some words ").repeated(1000);
    QTest::newRow("line breaks") << QStringLiteral("line\n").repeated(2000);
    QTest::newRow("control characters") << QStringLiteral("x\u0007\u001b").repeated(3000);
    QTest::newRow("right to left") << QStringLiteral("\u05e9\u05dc\u05d5\u05dd ").repeated(2000);
    QTest::newRow("markup") << QStringLiteral("<h1>big</h1>").repeated(500);
}

void TestMessageLabel::isShortenedToItsSize()
{
    QFETCH(QString, text);
    m_label->showMessage(text);
    QVERIFY(m_label->isVisible());
    // Nothing touches the edge, where it would be cut off.
    const QRect drawn = m_label->mask().boundingRect();
    QVERIFY(!drawn.isEmpty());
    QVERIFY2(drawn.top() >= 0 && drawn.bottom() < m_label->height() - 1, qPrintable(QString::number(drawn.bottom())));
    QVERIFY2(drawn.left() >= 0 && drawn.right() < m_label->width(), qPrintable(QString::number(drawn.right())));
    QVERIFY(m_label->text().count(QLatin1Char('\n')) >= 1);
}

void TestMessageLabel::withoutAreaShowsNothing()
{
    m_label->setGeometry(0, 0, 0, 0);
    m_label->showMessage(QStringLiteral("Volume 75 %"));
    QCOMPARE(m_label->message(), QStringLiteral("Volume 75 %"));
    m_ground->grab();
}

QTEST_MAIN(TestMessageLabel)
#include "tst_messagelabel.moc"
