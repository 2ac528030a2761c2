#ifndef SKINWIDGETS_BENCHMARKS_STAGE_H
#define SKINWIDGETS_BENCHMARKS_STAGE_H

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

// Shows the widget and lets everything happen that follows from it.
inline void showAndSettle(QWidget* widget)
{
    widget->show();
    for (int i = 0; i < 20; ++i)
        QCoreApplication::processEvents();
}

inline void sendMouse(QWidget* widget, QEvent::Type type, const QPointF& at)
{
    const auto button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, widget->mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

// Counts the paint events of a widget: a benchmark that paints nothing measures nothing.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }

    int count() const { return m_count; }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        m_count += event->type() == QEvent::Paint;
        return false;
    }

private:
    int m_count = 0;
};

#endif
