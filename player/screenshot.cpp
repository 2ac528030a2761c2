#include "player/screenshot.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFileInfo>
#include <QImageWriter>
#include <QPixmap>
#include <QWidget>
#include <QWindow>

#include <chrono>

using namespace std::chrono_literals;

Screenshot::Screenshot(QWidget* window, const QString& file) : QObject(window), m_window(window), m_file(file)
{
    m_takeTimer.setObjectName(QStringLiteral("take picture"));
    m_takeTimer.setSingleShot(true);
    connect(&m_takeTimer, &QTimer::timeout, this, &Screenshot::take);
    // The panel covers the window, which then has nothing to paint itself.
    QCoreApplication::instance()->installEventFilter(this);
}

bool Screenshot::eventFilter(QObject* watched, QEvent* event)
{
    if (!isPartOfWindow(watched))
        return false;
    if (event->type() == QEvent::Paint && m_window->windowHandle()->isExposed())
        m_isPainted = true;
    if (!m_isPainted)
        return false;
    if (m_window->isActiveWindow())
        m_takeTimer.start(0);
    else if (!m_takeTimer.isActive())
        m_takeTimer.start(1s);
    return false;
}

bool Screenshot::isPartOfWindow(const QObject* object) const
{
    return object->isWidgetType() && static_cast<const QWidget*>(object)->window() == m_window;
}

void Screenshot::take()
{
    QCoreApplication::instance()->removeEventFilter(this);
    const bool hasEnding = !QFileInfo(m_file).suffix().isEmpty();
    QImageWriter writer(m_file, hasEnding ? QByteArray() : QByteArrayLiteral("png"));
    emit taken(writer.write(m_window->grab().toImage()) ? QString() : writer.errorString());
}
