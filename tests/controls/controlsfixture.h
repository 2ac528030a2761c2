#ifndef SKINWIDGETS_TESTS_CONTROLS_CONTROLSFIXTURE_H
#define SKINWIDGETS_TESTS_CONTROLS_CONTROLSFIXTURE_H

#include "controls/imagebutton.h"
#include "controls/titlebar.h"
#include "quiettest.h"
#include "widgetfixture.h"

#include <QPaintEvent>
#include <QPointer>
#include <QStringList>

#include <memory>

// What the tests of the stand-alone controls share: pictures under the application's name, one list for everything that
// happens, and widgets whose data is in the open.
namespace controlstest
{

using namespace widgettest;

// The application "app" with an installation of its own.
class Surroundings
{
public:
    Surroundings() : m_name(qApp->objectName()) { qApp->setObjectName("app"); }
    ~Surroundings() { qApp->setObjectName(m_name); }
    Q_DISABLE_COPY_MOVE(Surroundings)

    // A picture file by its name in pics/, which may hold slashes.
    void picture(const QString& name, const QImage& contents) const
    {
        installation.picture(QString(), name + ".png", contents);
    }

    Installation installation;

private:
    QString m_name;
};

// A test class with surroundings of their own for all its tests.
class ControlsTest : public QuietTest
{
protected:
    void setUp() override { surroundings = std::make_unique<Surroundings>(); }
    void tearDown() override { surroundings.reset(); }

    std::unique_ptr<Surroundings> surroundings;
};

// Signals and repaints in the order in which they happened.
class Recorder : public QObject
{
public:
    QStringList log;

    void watchPaints(QWidget* widget) { widget->installEventFilter(this); }
    void add(const QString& line) { log << line; }
    QStringList take() { return std::exchange(log, {}); }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            add("paint " + rectText(static_cast<QPaintEvent*>(event)->region().boundingRect()));
        return false;
    }
};

// A button whose data is in the open.
class Button : public ImageButton
{
public:
    using ImageButton::ImageButton;

    using ImageButton::imageName;
    using ImageButton::pixmaps;
    using ImageButton::savedState;
    using ImageButton::state;
    using ImageButton::toggleMode;
    using ImageButton::toggleOn;

    int maskUpdates = 0;
    QPointer<Recorder> trace;

    // A pixel of a colour of its own for every picture.
    static QRgb pixelOf(int toggled, int picture) { return qRgb(200 - 100 * toggled, 40 * picture, 7); }

    // Pictures of 20 x 21 without files.
    void fill()
    {
        for (int toggled = 0; toggled < 2; ++toggled)
            for (int k = 0; k < 4; ++k)
                pixmaps[toggled][k] = pixmap(plain(20, 21, pixelOf(toggled, k)));
    }
    // Every signal with the state in which it was emitted, every paint with the state that it showed.
    void watch(Recorder& recorder)
    {
        trace = &recorder;
        connect(this, &ImageButton::clicked, &recorder, [this] { tell("clicked()"); });
        connect(this, &ImageButton::pressed, &recorder, [this] { tell("pressed()"); });
        connect(this, &ImageButton::toggled, &recorder,
                [this](bool on) { tell(on ? "toggled(true)" : "toggled(false)"); });
    }
    void updateMask() override
    {
        ++maskUpdates;
        if (trace)
            tell("updateMask()");
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        if (trace)
            tell("paint " + rectText(event->region().boundingRect()));
        ImageButton::paintEvent(event);
    }

private:
    void tell(const QString& what) { trace->add(what + " in " + QString::number(state)); }
};

// A button of 20 x 21 at (10, 10) of a window, and beside it a widget to have the focus instead.
template <class AnyButton>
class ButtonScene
{
public:
    explicit ButtonScene(const char* name) : button(&window, name)
    {
        button.setGeometry(10, 10, 20, 21);
        button.fill();
        other.setGeometry(50, 10, 20, 20);
        other.setFocusPolicy(Qt::StrongFocus);
    }

    // The window is the active one, the focus is beside the button.
    bool activate()
    {
        if (!window.activate())
            return false;
        other.setFocus();
        return QTest::qWaitFor([this] { return other.hasFocus(); });
    }

    Window window;
    AnyButton button;
    QWidget other{&window};
};

// A bar whose data is in the open.
class Bar : public TitleBar
{
public:
    using TitleBar::TitleBar;

    using TitleBar::closeButton;
    using TitleBar::fileName;
    using TitleBar::title;
};

inline void setWindowColour(QWidget& widget, QRgb pixel)
{
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Window, QColor::fromRgb(pixel));
    widget.setPalette(palette);
}

// The methods of a class in the order of their declaration, its own ones only.
inline QStringList methods(const QMetaObject& type, QMetaMethod::MethodType kind)
{
    QStringList result;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i)
        if (type.method(i).methodType() == kind)
            result << type.method(i).methodSignature();
    return result;
}

// A widget that writes down the keys and presses that reach it, and accepts them or not.
class Receiver : public QWidget
{
public:
    using QWidget::QWidget;

    bool accepts = false;
    QStringList received;
    std::function<void()> act;

protected:
    bool event(QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::KeyPress:
            received << "press of " + QString::number(static_cast<QKeyEvent*>(event)->key(), 16);
            break;
        case QEvent::KeyRelease:
            received << "release of " + QString::number(static_cast<QKeyEvent*>(event)->key(), 16);
            break;
        case QEvent::MouseButtonPress:
            received << "stylus press";
            break;
        case QEvent::MouseButtonRelease:
            received << "stylus release";
            break;
        default:
            return QWidget::event(event);
        }
        event->setAccepted(accepts);
        if (act)
            act();
        return true;
    }
};

} // namespace controlstest

#endif
