#ifndef SKINWIDGETS_TESTS_SKINBASE_SKINFIXTURE_H
#define SKINWIDGETS_TESTS_SKINBASE_SKINFIXTURE_H

#include "skinbase/skinbase.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <utility>

// What the programs that test SkinBase share: skins written to a directory of their own, panels that tell what happened
// to them, and windows whose repaints are counted exactly.
namespace skintest
{

constexpr QRgb red = 0xffff0000;
constexpr QRgb green = 0xff00ff00;
constexpr QRgb blue = 0xff0000ff;
constexpr QRgb yellow = 0xffffff00;
constexpr QRgb grey = 0xff808080;

inline QRgb withAlpha(QRgb pixel, int alpha)
{
    return (pixel & 0x00ffffffU) | (static_cast<QRgb>(alpha) << 24);
}

inline QImage plain(int width, int height, QRgb pixel)
{
    QImage picture(width, height, QImage::Format_ARGB32);
    picture.fill(pixel);
    return picture;
}

// A picture in which no two pixels are equal (up to 256 x 256), so that a shifted copy is seen.
inline QImage pattern(int width, int height, int blueByte = 0, int alpha = 255)
{
    QImage picture(width, height, QImage::Format_ARGB32);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            picture.setPixel(x, y, qRgba(x, y, blueByte, alpha));
    return picture;
}

// Four pictures side by side, each of one colour.
inline QImage strip(int stateWidth, int height, const QList<QRgb>& pixels)
{
    QImage picture(stateWidth * int(pixels.size()), height, QImage::Format_ARGB32);
    for (int x = 0; x < picture.width(); ++x)
        for (int y = 0; y < height; ++y)
            picture.setPixel(x, y, pixels[x / stateWidth]);
    return picture;
}

inline QImage withAlphaBytes(const QImage& picture, int alpha)
{
    QImage result = picture.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < result.height(); ++y)
        for (int x = 0; x < result.width(); ++x)
            result.setPixel(x, y, withAlpha(result.pixel(x, y), alpha));
    return result;
}

// The pixels as text where pictures differ, empty where they are equal; alpha bytes count.
inline QString difference(const QImage& actual, const QImage& expected)
{
    if (actual.size() != expected.size())
        return QStringLiteral("size %1 x %2 instead of %3 x %4")
            .arg(actual.width())
            .arg(actual.height())
            .arg(expected.width())
            .arg(expected.height());
    for (int y = 0; y < actual.height(); ++y)
        for (int x = 0; x < actual.width(); ++x)
            if (actual.pixel(x, y) != expected.pixel(x, y))
                return QStringLiteral("pixel (%1, %2) is %3 instead of %4")
                    .arg(x)
                    .arg(y)
                    .arg(actual.pixel(x, y), 8, 16, QLatin1Char('0'))
                    .arg(expected.pixel(x, y), 8, 16, QLatin1Char('0'));
    return {};
}

#define COMPARE_PICTURES(actual, expected) QCOMPARE(skintest::difference(actual, expected), QString())

// An installation directory that lives as long as the object, known through QPEDIR.
class Installation
{
public:
    Installation() { qputenv("QPEDIR", QFile::encodeName(m_root.path())); }
    ~Installation() { qunsetenv("QPEDIR"); }
    Q_DISABLE_COPY_MOVE(Installation)

    QString root() const { return m_root.path(); }
    QString skin(const QString& window) const { return m_root.path() + QLatin1String("/pics/") + window; }

    void write(const QString& window, const QString& file, const QByteArray& contents) const
    {
        QFile target(path(window, file));
        if (!target.open(QIODevice::WriteOnly) || target.write(contents) != contents.size())
            qFatal("cannot write %s", qPrintable(target.fileName()));
    }
    void config(const QString& window, const QByteArray& contents) const
    {
        write(window, QStringLiteral("config"), contents);
    }
    void picture(const QString& window, const QString& file, const QImage& contents, const char* format = "PNG") const
    {
        if (!contents.save(path(window, file), format))
            qFatal("cannot write %s", qPrintable(file));
    }

private:
    QString path(const QString& window, const QString& file) const
    {
        const QString result = skin(window) + QLatin1Char('/') + file;
        QDir().mkpath(QFileInfo(result).path());
        return result;
    }

    QTemporaryDir m_root;
};

// Everything that is printed while the object lives.
class Messages
{
public:
    struct Message {
        QtMsgType type;
        QByteArray category;
        QString text;
    };

    Messages()
    {
        all().clear();
        m_previous = qInstallMessageHandler([](QtMsgType type, const QMessageLogContext& context, const QString& text) {
            all().append({type, context.category, text});
        });
    }
    ~Messages() { qInstallMessageHandler(m_previous); }
    Q_DISABLE_COPY_MOVE(Messages)

    static QList<Message>& all()
    {
        static QList<Message> messages;
        return messages;
    }
    static QStringList texts()
    {
        QStringList result;
        for (const Message& message : all())
            result << message.text;
        return result;
    }

private:
    QtMessageHandler m_previous;
};

// A panel whose data is in the open and that writes down every call of a virtual operation, in order.
class Panel : public SkinBase
{
public:
    explicit Panel(QWidget* parent = nullptr, const char* name = "panel", WFlags f = 0) : SkinBase(parent, name, f)
    {
        connect(this, &SkinBase::button_clicked, this, [this](const QObject* panel, const QString& button) {
            calls << QStringLiteral("button_clicked(%1)").arg(button);
            clicks.append({panel, button});
        });
    }

    using SkinBase::alphaOverride;
    using SkinBase::backgroundImage;
    using SkinBase::buttonHeld;
    using SkinBase::buttonMap;
    using SkinBase::buttons;
    using SkinBase::focusButton;
    using SkinBase::focusInEvent;
    using SkinBase::focusOutEvent;
    using SkinBase::keyPressEvent;
    using SkinBase::keyReleaseEvent;
    using SkinBase::maskImage;
    using SkinBase::mousePressEvent;
    using SkinBase::mouseReleaseEvent;

    struct Blit {
        QImage picture;
        QRect area;
        QRect pictureRect;
    };

    mutable QStringList calls;
    // What each button drawn was like at that time.
    QList<int> drawnStates;
    QList<std::pair<const QObject*, QString>> clicks;
    QRegion painted;
    QList<QRegion> paintEvents;
    QList<QRect> paintedAreas;
    QList<QImage> targets;
    QList<Blit> blits;
    std::function<void(QPixmap*, const QRect&)> afterDrawButtons;

    void forget()
    {
        calls.clear();
        drawnStates.clear();
        clicks.clear();
        painted = {};
        paintEvents.clear();
        paintedAreas.clear();
        targets.clear();
        blits.clear();
    }
    // The calls whose names begin as given.
    QStringList callsOf(const QString& operation) const
    {
        return calls.filter(QRegularExpression("^" + operation + "\\("));
    }
    int state(const QString& name) const { return buttonMap.value(name)->state; }
    QString focused() const { return focusButton == buttons.end() ? QStringLiteral("none") : (*focusButton)->name; }
    QImage backgroundPixels() const { return backgroundPixmap() ? backgroundPixmap()->toImage() : QImage(); }

    void setBackgroundImage(QImage picture) override
    {
        calls << QStringLiteral("setBackgroundImage()");
        SkinBase::setBackgroundImage(picture);
    }
    void pressButton(QString name) override
    {
        calls << QStringLiteral("pressButton(%1)").arg(name);
        SkinBase::pressButton(name);
    }
    void releaseButton(QString name) override
    {
        calls << QStringLiteral("releaseButton(%1)").arg(name);
        SkinBase::releaseButton(name);
    }
    void disableButton(QString name) override
    {
        calls << QStringLiteral("disableButton(%1)").arg(name);
        SkinBase::disableButton(name);
    }
    void hideButton(QString name) override
    {
        calls << QStringLiteral("hideButton(%1)").arg(name);
        SkinBase::hideButton(name);
    }
    void showNormal(QString name) override
    {
        calls << QStringLiteral("showNormal(%1)").arg(name);
        SkinBase::showNormal(name);
    }
    void showFocus(QString name) override
    {
        calls << QStringLiteral("showFocus(%1)").arg(name);
        SkinBase::showFocus(name);
    }
    void setAlphaOverride(unsigned char alpha) override
    {
        calls << QStringLiteral("setAlphaOverride(%1)").arg(alpha);
        SkinBase::setAlphaOverride(alpha);
    }
    void update_state(const QString& state) override
    {
        calls << QStringLiteral("update_state(%1)").arg(state);
        SkinBase::update_state(state);
    }
    QString getFocus() override
    {
        calls << QStringLiteral("getFocus()");
        return SkinBase::getFocus();
    }
    void do_configloading(QString section) override
    {
        calls << QStringLiteral("do_configloading(%1)").arg(section);
        SkinBase::do_configloading(section);
    }
    void drawButtons(QPixmap* target, const QRect& area) override
    {
        calls << QStringLiteral("drawButtons()");
        paintedAreas << area;
        targets << target->toImage();
        SkinBase::drawButtons(target, area);
        if (afterDrawButtons)
            afterDrawButtons(target, area);
    }
    void drawButton(const SkinButton* button) override
    {
        calls << QStringLiteral("drawButton(%1)").arg(button->name);
        drawnStates << button->state;
        SkinBase::drawButton(button);
    }
    void drawClippedImage(QPixmap* target, QImage picture, const QRect& area, const QRect& pictureRect) override
    {
        calls << QStringLiteral("drawClippedImage()");
        blits.append({picture, area, pictureRect});
        SkinBase::drawClippedImage(target, picture, area, pictureRect);
    }
    void redrawButtonImages() override
    {
        calls << QStringLiteral("redrawButtonImages()");
        SkinBase::redrawButtonImages();
    }
    void redrawImage(QImage& picture, int x, int y) override
    {
        calls << QStringLiteral("redrawImage(%1,%2)").arg(x).arg(y);
        SkinBase::redrawImage(picture, x, y);
    }
    void setButtonState(QString name, SkinButtonState newState) override
    {
        calls << QStringLiteral("setButtonState(%1,%2)").arg(name).arg(newState);
        SkinBase::setButtonState(name, newState);
    }
    void focusNextButton() override
    {
        calls << QStringLiteral("focusNextButton()");
        SkinBase::focusNextButton();
    }
    void focusPrevButton() override
    {
        calls << QStringLiteral("focusPrevButton()");
        SkinBase::focusPrevButton();
    }
    void setButtonFocus(QString name) override
    {
        calls << QStringLiteral("setButtonFocus(%1)").arg(name);
        SkinBase::setButtonFocus(name);
    }
    QImage get_buttonimage(QImage strip, int index) override
    {
        calls << QStringLiteral("get_buttonimage(%1)").arg(index);
        return SkinBase::get_buttonimage(strip, index);
    }
    void setBackgroundPixmap(const QPixmap& parentBackground) override
    {
        calls << QStringLiteral("setBackgroundPixmap()");
        SkinBase::setBackgroundPixmap(parentBackground);
    }
    void resize(int w, int h) override
    {
        calls << QStringLiteral("resize(%1,%2)").arg(w).arg(h);
        SkinBase::resize(w, h);
    }

    void paintEvent(QPaintEvent* event) override
    {
        painted |= event->region();
        paintEvents << event->region();
        SkinBase::paintEvent(event);
    }
};

// A widget that counts its paint events.
class Witness : public QWidget
{
public:
    using QWidget::QWidget;
    int paints = 0;

protected:
    void paintEvent(QPaintEvent*) override { ++paints; }
};

// A top-level window named after its skin, with a panel at its top left corner (unless moved) and a widget beside it
// by which the end of a repaint is known.
class Stage
{
public:
    explicit Stage(const QString& skin = QStringLiteral("player"))
    {
        window.setObjectName(skin);
        window.resize(400, 300);
        m_witness.setGeometry(390, 290, 10, 10);
    }

    Witness window;
    Panel panel{&window};

    // With the keyboard focus in the window, first on nothing of the panel's.
    bool show()
    {
        window.setFocusPolicy(Qt::StrongFocus);
        window.show();
        window.activateWindow();
        const bool active = QTest::qWaitForWindowActive(&window);
        window.setFocus();
        return active && settle();
    }
    bool focusPanel()
    {
        panel.setFocus();
        return QTest::qWaitFor([this] { return panel.hasFocus(); });
    }
    bool focusElsewhere()
    {
        window.setFocus();
        return QTest::qWaitFor([this] { return !panel.hasFocus(); });
    }
    // All damage of a window is painted in one go, so once the witness is painted the panel's damage is too.
    bool settle()
    {
        const int before = m_witness.paints;
        m_witness.update();
        return QTest::qWaitFor([this, before] { return m_witness.paints > before; });
    }
    // What of the panel an action makes repaint.
    QRegion damage(const std::function<void()>& action)
    {
        if (!settle())
            return QRegion(-1, -1, 1, 1);
        panel.forget();
        action();
        return settle() ? panel.painted : QRegion(-1, -1, 1, 1);
    }

    // What the display shows where the panel is.
    QImage onScreen() const
    {
        const QRect place(panel.mapTo(&window, QPoint()), panel.size());
        return window.screen()
            ->grabWindow(window.winId(), place.x(), place.y(), place.width(), place.height())
            .toImage();
    }

private:
    Witness m_witness{&window};
};

// A skin of a panel of 100 x 40 pixels with three buttons of 10 x 6: c, a and b in the order of the file. The state
// pictures of each button are four colours of their own, and the mask has a column for each.
struct ThreeButtons {
    static constexpr QRgb maskOfC = 0xff000011;
    static constexpr QRgb maskOfA = 0xff000022;
    static constexpr QRgb maskOfB = 0xff000033;
    static constexpr QPoint pointInC{5, 5};
    static constexpr QPoint pointInA{35, 5};
    static constexpr QPoint pointInB{65, 5};
    static constexpr QPoint pointInNone{95, 35};

    static QRgb pixel(char button, int state) { return qRgb(button, 50 * (state + 1), 7); }
    static QImage stripOf(char button)
    {
        return strip(10, 6, {pixel(button, 0), pixel(button, 1), pixel(button, 2), pixel(button, 3)});
    }
    static QImage background() { return pattern(100, 40, 200); }
    static QImage mask()
    {
        QImage picture = plain(100, 40, 0xffffffff);
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 90; ++x)
                picture.setPixel(x, y, x < 30 ? maskOfC : x < 60 ? maskOfA : maskOfB);
        return picture.convertToFormat(QImage::Format_RGB32);
    }

    static void install(const Installation& installation, const QString& window = QStringLiteral("player"))
    {
        installation.picture(window, "bg.png", background());
        installation.picture(window, "mask.png", mask());
        for (const char button : {'a', 'b', 'c'})
            installation.picture(window, QString(QLatin1Char(button)) + ".png", stripOf(button));
        installation.config(window,
                            "[Control]\nbackground = bg.png\nmaskimage = mask.png\ncount = 3\n"
                            "[Control_BUTTON0]\nname = c\nimage = c.png\nxpos = 4\nypos = 3\nmask = ff000011\n"
                            "[Control_BUTTON1]\nname = a\nimage = a.png\nxpos = 34\nypos = 5\nmask = ff000022\n"
                            "[Control_BUTTON2]\nname = b\nimage = b.png\nxpos = 64\nypos = 3\nmask = ff000033\n");
    }
};

inline void sendMouse(Panel& panel, QEvent::Type type, const QPointF& at, Qt::MouseButton button = Qt::LeftButton)
{
    QMouseEvent event(type, at, panel.mapToGlobal(at), button, button, Qt::NoModifier);
    if (type == QEvent::MouseButtonPress)
        panel.mousePressEvent(&event);
    else
        panel.mouseReleaseEvent(&event);
}

inline void sendKey(Panel& panel, QEvent::Type type, int key)
{
    QKeyEvent event(type, key, Qt::NoModifier);
    if (type == QEvent::KeyPress)
        panel.keyPressEvent(&event);
    else
        panel.keyReleaseEvent(&event);
}

} // namespace skintest

#endif
