#ifndef SKINWIDGETS_TOOLKIT_MOVEDEVENT_H
#define SKINWIDGETS_TOOLKIT_MOVEDEVENT_H

#include <QMouseEvent>
#include <QPointingDevice>
#include <QWheelEvent>

// Events as another widget, or the contents of a view, see them: with the position in its coordinates and all else
// kept, global position included. They start out accepted, as every new event does.
namespace skinwidgets
{

inline QMouseEvent movedEvent(const QMouseEvent& event, const QPointF& position)
{
    return QMouseEvent(event.type(), position, event.scenePosition(), event.globalPosition(), event.button(),
                       event.buttons(), event.modifiers(), event.source(), event.pointingDevice());
}

inline QWheelEvent movedEvent(const QWheelEvent& event, const QPointF& position)
{
    return QWheelEvent(position, event.globalPosition(), event.pixelDelta(), event.angleDelta(), event.buttons(),
                       event.modifiers(), event.phase(), event.inverted(), event.source(), event.pointingDevice());
}

} // namespace skinwidgets

#endif
