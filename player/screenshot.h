#ifndef SKINWIDGETS_PLAYER_SCREENSHOT_H
#define SKINWIDGETS_PLAYER_SCREENSHOT_H

#include <QObject>
#include <QTimer>

class QWidget;

/*
 * Takes one picture of a window once it has been painted on the screen and has the keyboard focus, so that the focused
 * button shows. A window that gets no focus, as on a screen in use, is taken a second after it was painted.
 */
class Screenshot : public QObject
{
    Q_OBJECT

public:
    // The picture's format follows the file name, PNG where that has no ending.
    Screenshot(QWidget* window, const QString& file);

signals:
    // The problem is empty where the picture has been written.
    void taken(const QString& problem);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool isPartOfWindow(const QObject* object) const;
    void take();

    QWidget* m_window;
    QString m_file;
    bool m_isPainted = false;
    QTimer m_takeTimer;
};

#endif
