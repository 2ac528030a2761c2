#ifndef SKINWIDGETS_TESTS_SCROLL_SCROLLBARFIXTURE_H
#define SKINWIDGETS_TESTS_SCROLL_SCROLLBARFIXTURE_H

#include "quiettest.h"
#include "scroll/builtinpictures.h"
#include "scroll/scrollbarskin.h"
#include "widgetfixture.h"

#include <QPaintEvent>
#include <QPointer>
#include <QStringList>
#include <QTimer>

// What the tests of the scroll bar share: one list for everything that happens, bars whose data is in the open, and a
// window with a bar whose places are round numbers.
namespace bartest
{

using namespace widgettest;

// One list in which signals, repaints and calls of virtual operations stand in the order in which they happened.
class BarRecorder : public QObject
{
public:
    QStringList log;
    std::function<void(const QString&)> afterLine;

    void watchSignals(ScrollBarSkin* bar, const QString& who = {})
    {
        const auto line = [this, who](const char* text) {
            return [this, text = who + QLatin1String(text)] { add(text); };
        };
        connect(bar, &ScrollBarSkin::valueChanged, this,
                [this, who](int value) { add(who + QStringLiteral("valueChanged(%1)").arg(value)); });
        connect(bar, &ScrollBarSkin::sliderMoved, this,
                [this, who](int value) { add(who + QStringLiteral("sliderMoved(%1)").arg(value)); });
        connect(bar, &ScrollBarSkin::sliderPressed, this, line("sliderPressed()"));
        connect(bar, &ScrollBarSkin::sliderReleased, this, line("sliderReleased()"));
        connect(bar, &ScrollBarSkin::nextLine, this, line("nextLine()"));
        connect(bar, &ScrollBarSkin::prevLine, this, line("prevLine()"));
        connect(bar, &ScrollBarSkin::nextPage, this, line("nextPage()"));
        connect(bar, &ScrollBarSkin::prevPage, this, line("prevPage()"));
        connect(bar, &SkinBase::button_clicked, this, line("button_clicked()"));
    }
    // Every rectangle of every paint event of a widget.
    void watchPaints(QWidget* widget) { widget->installEventFilter(this); }
    void add(const QString& line)
    {
        log << line;
        if (afterLine)
            afterLine(line);
    }
    QStringList take() { return std::exchange(log, {}); }

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            for (const QRect& rect : static_cast<QPaintEvent*>(event)->region())
                add("paint " + rectText(rect));
        return false;
    }
};

// A bar whose data is in the open. With a trace it also tells which of its virtual operations are called.
class Bar : public ScrollBarSkin
{
public:
    using ScrollBarSkin::ScrollBarSkin;

    using ScrollBarSkin::addRect;
    using ScrollBarSkin::alphaOverride;
    using ScrollBarSkin::clickedAt;
    using ScrollBarSkin::clickOffset;
    using ScrollBarSkin::middleRect;
    using ScrollBarSkin::pressedControl;
    using ScrollBarSkin::repeater;
    using ScrollBarSkin::slidePrevVal;
    using ScrollBarSkin::sliderPos;
    using ScrollBarSkin::sliderStartPos;
    using ScrollBarSkin::subRect;
    using ScrollBarSkin::thumbImage;
    using ScrollBarSkin::thumbPressedImage;
    using ScrollBarSkin::thumbRect;
    using ScrollBarSkin::troughImage;

    using ScrollBarSkin::directSetValue;
    using ScrollBarSkin::prevValue;
    using ScrollBarSkin::rangeChange;
    using ScrollBarSkin::stepChange;
    using ScrollBarSkin::valueChange;

    struct Blit {
        QImage picture;
        QRect area;
        QRect pictureRect;
        QSize target;
        int depth;
    };

    BarRecorder* trace = nullptr;
    QList<Blit> blits;

    void redrawButtonImages() override
    {
        tell(QStringLiteral("redrawButtonImages()"));
        ScrollBarSkin::redrawButtonImages();
    }
    void redrawImage(QImage& picture, int x, int y) override
    {
        tell("redrawImage " + rectText(QRect(QPoint(x, y), picture.size())));
        ScrollBarSkin::redrawImage(picture, x, y);
    }
    void drawClippedImage(QPixmap* target, QImage picture, const QRect& area, const QRect& pictureRect) override
    {
        blits.append({picture, area, pictureRect, target->size(), target->depth()});
        ScrollBarSkin::drawClippedImage(target, picture, area, pictureRect);
    }

private:
    void tell(const QString& line)
    {
        if (trace)
            trace->add(line);
    }
};

// A built-in picture, as straight 32-bit pixels.
inline QImage builtin(const char* name)
{
    return QImage::fromData(skinwidgets::findBuiltinImage(name), "PNG").convertToFormat(QImage::Format_ARGB32);
}

// A shown window with a bar of 20 x 140 at its top left: buttons of 20, a trough of 100. The range 0 to 80 with page
// step 20 gives a thumb of 20 pixels whose upper edge stands at pixel 20 + v for value v.
class BarStage
{
public:
    BarStage() : bar(&window, "bar")
    {
        bar.setGeometry(0, 0, 20, 140);
        bar.setRange(0, 80);
        bar.setSteps(3, 20);
        // The steps alone leave the thumb as long as it was.
        bar.redrawThumb();
    }

    // From here on everything is recorded. The bar shows the value.
    bool begin(int value = 0)
    {
        bar.setValue(value);
        if (!window.expose())
            return false;
        recorder.watchSignals(&bar);
        recorder.watchPaints(&bar);
        return true;
    }
    QStringList take() { return recorder.take(); }

    Window window;
    BarRecorder recorder;
    Bar bar;
};

} // namespace bartest

#endif
