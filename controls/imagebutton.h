#ifndef SKINWIDGETS_CONTROLS_IMAGEBUTTON_H
#define SKINWIDGETS_CONTROLS_IMAGEBUTTON_H

#include "toolkit/toolkitwidget.h"

/*
 * A push or toggle button drawn from pictures: one for each of four states, and in toggle mode four more for the
 * switched-on position.
 *
 * What a skin supplies. Pictures that Resource finds, NAME being the button's object name as it stood at construction
 * and APP the application's name (skinwidgets::applicationName()). Either separate files
 *
 *     APP/NAME_normal, APP/NAME_press, APP/NAME_focus, APP/NAME_disable
 *     APP/NAME_normal2 and so on         the switched-on position
 *
 * or strips of four pictures side by side in that order, each a quarter of the strip's width, rounded down:
 *
 *     NAME_bt
 *     NAME2_bt                           the switched-on position, cut in pieces of the first strip's size
 *
 * A picture that is missing, damaged or empty draws nothing. The button is drawn at its top-left corner and is not
 * resized to its pictures: the application sizes it.
 *
 * The button is disabled by a state of its own and stays enabled for the toolkit, so that it goes on receiving events.
 * Disabling it, or a parent, through a plain QWidget pointer shows the disabled picture too; but then the toolkit takes
 * the focus away first and delivers no input. A plain QWidget pointer's setFocus() and clearFocus() change the picture
 * when the toolkit's focus events arrive: in an inactive window not at once. They move the focus of a disabled button
 * too, which shows nothing of it.
 *
 * Any signal's receiver may delete the button or its parent, or disable the button, which then stays disabled.
 */
class SKINWIDGETS_EXPORT ImageButton : public ToolkitWidget<QWidget>
{
    Q_OBJECT

public:
    // Loads no pictures. Takes the keyboard focus by Tab and by pressing. The parent becomes an event filter of the
    // button: its eventFilter() sees every event before the button does.
    explicit ImageButton(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0);
    ~ImageButton() override;

    // Loads the pictures from separate files or from strips in place of those it has; those of the switched-on position
    // only in toggle mode. Does not repaint. Meant to be called once, after setToggle(): separate files put "APP/"
    // before the name that is looked for, the second strip a "2" behind it, and a further call starts from that name.
    void setButtonImage(bool separateFiles);

    // Makes it a toggle button, for good.
    void setToggle();
    // Sets the toggle position, emits toggled() and repaints at once, even where the position is the same.
    void changeToggleState(bool on);
    // Whether the toggle position is on.
    bool toggledState() const { return toggleOn; }

    using ToolkitWidget::setFocus;

public slots:
    // Disabling shows the disabled picture. Enabling shows the focused picture where the button showed it when it was
    // disabled last, the normal one otherwise. Disabling twice in a row forgets what it showed.
    void setEnabled(bool enable) override;
    void setDisabled(bool disable);
    // Take and give up the keyboard focus and show it, in an inactive window too. A disabled button ignores them.
    void setFocus() override;
    void clearFocus();

signals:
    // The stylus was lifted inside a plain button, or Return was released on any button, pressed here before or not.
    void clicked();
    // The stylus or Return was pressed. Emitted before toggled().
    void pressed();
    // A stylus lifted inside, a press of Return or changeToggleState() set the toggle position, which is on now.
    void toggled(bool on);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    // Escape and the device keys 0x2104 to 0x2109 go to the parent, once; other keys end here.
    void keyPressEvent(QKeyEvent* event) override;

    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;

    // The picture that shows: 0 normal, 1 pressed, 2 focused, 3 disabled. Any other number shows none.
    int state = 0;
    // What the pictures' names begin with.
    QString imageName;
    // By toggle position and state.
    QPixmap pixmaps[2][4];
    // The toggle position is on.
    bool toggleOn = false;
    // It is a toggle button.
    bool toggleMode = false;
    // The state before the button was disabled.
    int savedState = 0;

private:
    void loadFiles(QPixmap (&set)[4], const QString& suffix) const;
    void flip();
    void pressWithKey();
    void handToParent(QKeyEvent* event);
    void showState(int newState);
};

#endif
