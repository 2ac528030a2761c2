#ifndef SKINWIDGETS_TOOLKIT_TOOLKITWIDGET_H
#define SKINWIDGETS_TOOLKIT_TOOLKITWIDGET_H

#include "toolkit/pixels.h"
#include "toolkit/toolkit.h"
#include "toolkit/widgetbackground.h"
#include "toolkit/widgetflags.h"

#include <QBitmap>
#include <QEvent>
#include <QPaintEvent>
#include <QRegion>
#include <QResizeEvent>
#include <QStyle>
#include <QWidget>

/*
 * The old interface over a widget base of today (QWidget, QFrame, QLabel, QAbstractButton): object name and widget
 * flags in the constructor, a virtual background picture with an origin, automatic masks, repaints with or without
 * erasing, and the virtual operations that today's widgets call no more.
 *
 * A widget with a background picture is erased with it before it paints, except with the flag WRepaintNoErase or the
 * mode NoBackground. The virtual operations below are called through this type; where Qt acts on a plain QWidget
 * pointer, the event that it sends (resize, focus, font, style, enabled change) reaches the handlers here instead.
 */
template <class Base>
class ToolkitWidget : public Base, public WidgetBackground
{
public:
    // The name becomes the object name, read as Latin-1. A null name leaves it empty.
    explicit ToolkitWidget(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0)
        : Base(parent),
          m_flags(f)
    {
        Base::setObjectName(QString::fromLatin1(name));
        skinwidgets::applyWidgetFlags(this, f);
    }

    // The object name in Latin-1, valid until the next call. An empty object name gives an empty string.
    const char* name() const
    {
        m_name = Base::objectName().toLatin1();
        return m_name.constData();
    }
    // Read as Latin-1; null gives an empty name.
    virtual void setName(const char* name) { Base::setObjectName(QString::fromLatin1(name)); }

    // The widget flags of the old interface that this widget has.
    bool testWFlags(WFlags f) const { return (m_flags & f) != 0; }
    WFlags getWFlags() const { return m_flags; }

    // Makes the pixmap the background picture and repaints. A null pixmap takes the picture away.
    virtual void setBackgroundPixmap(const QPixmap& pixmap)
    {
        const QPixmap old = m_pixmap;
        m_pixmap = skinwidgets::toStraight(pixmap);
        m_mode = FixedPixmap;
        backgroundPixmapChange(old);
    }
    // Where the background picture begins; repaints.
    virtual void setBackgroundOrigin(BackgroundOrigin origin)
    {
        if (m_origin == origin)
            return;
        m_origin = origin;
        Base::update();
    }
    // NoBackground: the widget is never erased. The other modes erase with the picture, where there is one.
    virtual void setBackgroundMode(BackgroundMode mode)
    {
        m_mode = mode;
        if (mode != FixedPixmap)
            m_pixmap = QPixmap();
        Base::setAttribute(Qt::WA_NoSystemBackground, mode == NoBackground);
        Base::update();
    }

    // With automatic masking on, updateMask() runs at once and at every resize and change of focus, font, style and
    // state. Switching it off clears the mask.
    bool autoMask() const { return m_autoMask; }
    virtual void setAutoMask(bool enable)
    {
        if (m_autoMask == enable)
            return;
        m_autoMask = enable;
        if (enable)
            updateMask();
        else
            Base::clearMask();
    }
    // A hook: computes the mask of a widget with an automatic one. Does nothing by default.
    virtual void updateMask() {}

    // The widget consists of the set bits of the bitmap, which has its size; clicks elsewhere fall through to what lies
    // beneath. With no bit set nothing shows. Today's setMask() would read that as no mask at all, so the widget keeps
    // a pixel outside of itself instead; mask() tells of it as the empty region.
    void setMaskBitmap(const QBitmap& bitmap)
    {
        const QRegion region = bitmap.isNull() ? QRegion() : QRegion(bitmap);
        Base::setMask(region.isEmpty() ? noPixels() : region);
    }
    // Widget coordinates; empty without a mask, and where no pixel is left.
    QRegion mask() const
    {
        const QRegion region = Base::mask();
        return region == noPixels() ? QRegion() : region;
    }

    // Prepares the widget for its style and font, unless that has happened: polish() then runs, once. It runs by itself
    // before the widget is shown.
    void constPolish() const { Base::ensurePolished(); }

    using Base::repaint;
    // Paints at once. A negative width or height reaches to the widget's edge. With erase false the background is left
    // alone by widgets that paint every pixel themselves; Qt clears the rest either way.
    void repaint(bool erase) { repaint(0, 0, Base::width(), Base::height(), erase); }
    void repaint(int x, int y, int w, int h, bool /*erase*/)
    {
        Base::repaint(x, y, w < 0 ? Base::width() - x : w, h < 0 ? Base::height() - y : h);
    }
    // The same for a rectangle in widget coordinates.
    void repaint(const QRect& rect, bool erase) { repaint(rect.x(), rect.y(), rect.width(), rect.height(), erase); }

    using Base::setFocus;
    // QWidget's operations, virtual as they were. resize() and setGeometry() update an automatic mask at once, of a
    // hidden widget too.
    virtual void setFocus() { Base::setFocus(); }
    virtual void setEnabled(bool enable) { Base::setEnabled(enable); }
    virtual void setFont(const QFont& font) { Base::setFont(font); }
    virtual void show() { Base::show(); }
    virtual void hide() { Base::hide(); }
    virtual void resize(int w, int h)
    {
        Base::resize(w, h);
        updateHiddenMask();
    }
    void resize(const QSize& size) { resize(size.width(), size.height()); }
    virtual void setGeometry(const QRect& rect)
    {
        Base::setGeometry(rect);
        updateHiddenMask();
    }
    void setGeometry(int x, int y, int w, int h) { setGeometry(QRect(x, y, w, h)); }

protected:
    // Hooks: the background picture is another one than the old one now (repaints), the style has changed (does
    // nothing, and gets the new style), the widget is prepared for being shown (does nothing).
    virtual void backgroundPixmapChange(const QPixmap& /*old*/) { Base::update(); }
    virtual void styleChange(QStyle& /*old*/) {}
    virtual void polish() {}

    // To be called after a change of what an automatic mask is made of.
    void updateAutoMask()
    {
        if (m_autoMask)
            updateMask();
    }

    // Adds widget flags and what they mean.
    void setWFlags(WFlags f)
    {
        m_flags |= f;
        skinwidgets::applyWidgetFlags(this, f);
    }

    bool event(QEvent* event) override
    {
        if (event->type() == QEvent::Paint && erasesWithPicture())
            skinwidgets::eraseWithBackground(this, static_cast<QPaintEvent*>(event)->region());
        const bool accepted = Base::event(event);
        if (event->type() == QEvent::Polish)
            polish();
        return accepted;
    }
    void resizeEvent(QResizeEvent* event) override
    {
        Base::resizeEvent(event);
        updateAutoMask();
    }
    void focusInEvent(QFocusEvent* event) override
    {
        Base::focusInEvent(event);
        updateAutoMask();
    }
    void focusOutEvent(QFocusEvent* event) override
    {
        Base::focusOutEvent(event);
        updateAutoMask();
    }
    void changeEvent(QEvent* event) override
    {
        Base::changeEvent(event);
        if (event->type() == QEvent::StyleChange)
            styleChange(*Base::style());
        if (changesContents(event->type()))
            updateAutoMask();
    }

private:
    static bool changesContents(QEvent::Type type)
    {
        return type == QEvent::StyleChange || type == QEvent::FontChange || type == QEvent::EnabledChange ||
               type == QEvent::LayoutDirectionChange;
    }
    bool erasesWithPicture() const
    {
        return backgroundPixmap() && m_mode != NoBackground && !testWFlags(Qt::WRepaintNoErase);
    }
    // A hidden widget hears of its new size only when it is shown.
    void updateHiddenMask()
    {
        if (Base::testAttribute(Qt::WA_PendingResizeEvent))
            updateAutoMask();
    }
    static QRegion noPixels() { return {-1, -1, 1, 1}; }

    WFlags m_flags;
    mutable QByteArray m_name;
    bool m_autoMask = false;
};

#endif
