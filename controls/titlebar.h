#ifndef SKINWIDGETS_CONTROLS_TITLEBAR_H
#define SKINWIDGETS_CONTROLS_TITLEBAR_H

#include "toolkit/toolkitwidget.h"

#include <QPointer>

class ImageButton;

/*
 * The strip across the top of a screen of 480 pixels: a background picture, a title, a file name after it and a button
 * that closes the screen.
 *
 * What a skin supplies. Pictures that Resource finds, APP being the application's name
 * (skinwidgets::applicationName()):
 *
 *     APP/title_bg                                                     the background, 480 x 23; none where missing
 *     APP/close_normal, APP/close_press, APP/close_focus, APP/close_disable
 *                                                                      the button, 20 x 21
 *
 * The texts are painted in the widget's font. They are as long as they are: the application shortens what would run
 * under the button or beyond the bar.
 */
class SKINWIDGETS_EXPORT TitleBar : public ToolkitWidget<QWidget>
{
    Q_OBJECT

public:
    // At (0, 0), 480 x 23 pixels, without texts.
    explicit TitleBar(QWidget* parent = nullptr, const char* name = nullptr, unsigned int flags = 0);
    ~TitleBar() override;

    // Shows with the next repaint, which this does not cause.
    void setTitleBarText(QString text);
    // Repaints the bar at once. A null text takes the file name away.
    void setFileNameText(QString text);

public slots:
    // Emits exitClicked().
    void sendClicked();

signals:
    // The close button was clicked. A receiver may delete the bar.
    void exitClicked();

protected:
    void paintEvent(QPaintEvent* event) override;

    // Null until they are set.
    QString title;
    QString fileName;
    // The child widget at (450, 1), 20 x 21 pixels; null once somebody deleted it. Takes the keyboard focus by pressing
    // only.
    QPointer<ImageButton> closeButton;
};

#endif
