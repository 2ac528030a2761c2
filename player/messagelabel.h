#ifndef SKINWIDGETS_PLAYER_MESSAGELABEL_H
#define SKINWIDGETS_PLAYER_MESSAGELABEL_H

#include "controls/labelskin.h"

#include <QTimer>

/*
 * A message over a screen that goes away by itself. It has no ground, and an outline in a contrasting colour, so that
 * it reads on any. Clicks go through it.
 *
 * A message is broken into lines and shortened to the label's size as it is when the message comes.
 */
class MessageLabel : public LabelSkin
{
    Q_OBJECT

public:
    explicit MessageLabel(QWidget* parent = nullptr, const char* name = nullptr);
    ~MessageLabel() override;

    // Of the letters; the outline is black or white, whichever contrasts.
    void setColor(const QColor& color);

    // What shows, whole; empty where nothing does.
    const QString& message() const { return m_message; }
    // How long such a message shows, in milliseconds: longer texts take longer to read.
    static int timeFor(const QString& message);

    void updateMask() override;

public slots:
    // In place of the message that shows. An empty one takes it away.
    void showMessage(const QString& message);

signals:
    // A message came or the last one went.
    void showingChanged(bool showing);

protected:
    void drawContents(QPainter* painter) override;

private:
    QString m_message;
    QTimer m_timer{this};
};

#endif
