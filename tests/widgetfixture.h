#ifndef SKINWIDGETS_TESTS_WIDGETFIXTURE_H
#define SKINWIDGETS_TESTS_WIDGETFIXTURE_H

#include "skinbase/skinfixture.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <limits>

// What the tests of skinned widgets share beyond those of the panel: windows that tell when they are painted, input
// that goes straight to a widget, and pictures put together pixel by pixel.
namespace widgettest
{

using namespace skintest;

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

inline QString rectText(const QRect& rect)
{
    return QStringLiteral("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

// A picture over another one, both seen as if the lower one were opaque; the result is opaque.
inline QImage blended(const QImage& under, const QImage& over, const QPoint& at = {})
{
    QImage result(under.size(), QImage::Format_RGB32);
    for (int y = 0; y < under.height(); ++y)
        for (int x = 0; x < under.width(); ++x)
            result.setPixel(x, y, withAlpha(under.pixel(x, y), 255));
    {
        QPainter painter(&result);
        painter.drawImage(at, over);
    }
    return result.convertToFormat(QImage::Format_ARGB32);
}

// Pixels as they are, no blending. What lies outside the target is left out.
inline void put(QImage& target, const QImage& picture, const QRect& from, const QPoint& at)
{
    for (int y = 0; y < from.height(); ++y) {
        for (int x = 0; x < from.width(); ++x) {
            const QPoint source = from.topLeft() + QPoint(x, y);
            if (picture.valid(source) && target.valid(at + QPoint(x, y)))
                target.setPixel(at + QPoint(x, y), picture.pixel(source));
        }
    }
}

// A pixmap whose pixels keep their alpha byte free.
inline QPixmap pixmap(const QImage& picture)
{
    return QPixmap::fromImage(picture.convertToFormat(QImage::Format_ARGB32), Qt::NoFormatConversion);
}

// What a widget shows, alone.
inline QImage shown(QWidget& widget)
{
    return widget.grab().toImage().convertToFormat(QImage::Format_ARGB32);
}

// A picture as the contents of a file.
inline QByteArray png(const QImage& picture)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    picture.save(&buffer, "PNG");
    return bytes;
}

// The window that a skin is named by, with a way to wait until everything that was to be painted is painted.
class Window : public QWidget
{
public:
    explicit Window(const QString& skin = QStringLiteral("player"), const QSize& size = QSize(400, 300))
    {
        setObjectName(skin);
        resize(size);
        m_witness->setGeometry(size.width() - 4, size.height() - 4, 4, 4);
    }

    bool expose()
    {
        show();
        return QTest::qWaitForWindowExposed(this) && settle();
    }
    bool activate()
    {
        if (!expose())
            return false;
        activateWindow();
        return QTest::qWaitForWindowActive(this);
    }
    // All damage of a window is painted in one go, so once the witness is painted everything is.
    bool settle()
    {
        const int before = m_witness->paints;
        m_witness->update();
        return QTest::qWaitFor([this, before] { return m_witness->paints > before; });
    }

private:
    Witness* m_witness = new Witness(this);
};

inline void mouse(QWidget* widget, QEvent::Type type, const QPointF& at, Qt::MouseButton button = Qt::LeftButton)
{
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
    QMouseEvent event(type, at, at, type == QEvent::MouseMove ? Qt::NoButton : button, held, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}
inline void press(QWidget* widget, const QPointF& at, Qt::MouseButton button = Qt::LeftButton)
{
    mouse(widget, QEvent::MouseButtonPress, at, button);
}
inline void move(QWidget* widget, const QPointF& at)
{
    mouse(widget, QEvent::MouseMove, at);
}
inline void release(QWidget* widget, const QPointF& at, Qt::MouseButton button = Qt::LeftButton)
{
    mouse(widget, QEvent::MouseButtonRelease, at, button);
}
inline void key(QWidget* widget, QEvent::Type type, int code)
{
    QKeyEvent event(type, code, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace widgettest

#endif
