#ifndef SKINWIDGETS_SKINBASE_SKINBASE_H
#define SKINWIDGETS_SKINBASE_SKINBASE_H

#include "skinbase/skinbutton.h"
#include "toolkit/toolkitwidget.h"

#include <QMap>

#include <memory>
#include <vector>

namespace skinwidgets
{
class SkinReader;
}

/*
 * A panel drawn from pictures: a background that fixes its size, a mask picture that tells which place belongs to which
 * button, and buttons addressed by name.
 *
 * What a skin supplies. The skin is the directory pics/NAME/ below QPEApplication::qpeDir(), NAME being the object name
 * of the panel's window. Its file config has a group for each section that an application loads:
 *
 *     background   picture file, the panel's look and size
 *     maskimage    picture file; a press on a pixel goes to the button whose mask equals it, alpha byte included
 *     count        number of buttons, at most maxButtons
 *
 * and a group SECTION_BUTTONi, i counting from 0, for each button:
 *
 *     name         by which the application knows the button
 *     image        picture file, four equal pictures side by side: normal, pressed, focus, disabled
 *     xpos, ypos   top-left corner on the panel in pixels, -1 where missing
 *     mask         pixel value in hexadecimal digits; 0 where missing or no number
 *
 * A mask picture without alpha yields pixels whose first byte is ff, so a mask is written with eight digits: ffff00ff.
 *
 * Everything that is missing or cannot be read gives its default: an empty name, 0, -1, a null picture; what was
 * missing goes to the logging category skinwidgets.skin, which is off by default. A picture file may hold up to 16
 * Mpixel with sides up to 16384 pixels and 64 MiB, all pictures of one section together 32 Mpixel, a config file 1 MiB;
 * what is larger counts as missing.
 *
 * All coordinates are widget coordinates in pixels. Unknown button names are ignored everywhere.
 */
class SKINWIDGETS_EXPORT SkinBase : public ToolkitWidget<QWidget>
{
    Q_OBJECT

public:
    // The most buttons that one section gives; a larger count loads this many.
    static constexpr int maxButtons = 1024;

    // Reads no skin; the application calls do_configloading(). Takes the keyboard focus by Tab and by pressing.
    explicit SkinBase(QWidget* parent = nullptr, const char* name = nullptr, WFlags f = 0);
    ~SkinBase() override;

    // Replaces the background picture (a copy is kept) and rebuilds background and buttons with the current alpha.
    virtual void setBackgroundImage(QImage picture);

    // Presses the button and gives it the focus; refused while another button is held.
    virtual void pressButton(QString name);
    // Releases the button if it is the held one: it ends in state Focus, then button_clicked is emitted.
    virtual void releaseButton(QString name);

    // Disables the button; the focus moves on to the next available button first if this one has it.
    virtual void disableButton(QString name);
    // setButtonState() with Hidden, Normal and Focus.
    virtual void hideButton(QString name);
    virtual void showNormal(QString name);
    virtual void showFocus(QString name);

    // Writes alpha (0 to 255) into every pixel of background and buttons, which are composed anew; colours stay as they
    // are. A panel without a background picture keeps the background that it has.
    virtual void setAlphaOverride(unsigned char alpha);

    // A hook for subclasses; does nothing.
    virtual void update_state(const QString& state);

    // The name of the focused button, "" where none has the focus.
    virtual QString getFocus();

    // Loads a section of the skin, resizes the panel to its background and creates the buttons. A section without
    // buttons takes the focus policy away. Meant to be called once; a second call adds its buttons to those of the
    // first.
    virtual void do_configloading(QString section);

    // Painting. target stands for area of the panel: its pixel (0, 0) is the area's top-left corner.
    virtual void drawButtons(QPixmap* target, const QRect& area);
    // Schedules a repaint of the button.
    virtual void drawButton(const SkinButton* button);
    // Copies, without blending, the part of the picture at pictureRect that lies in area.
    virtual void drawClippedImage(QPixmap* target, QImage picture, const QRect& area, const QRect& pictureRect);

    // Cuts the state pictures again and composes them over the background. Does not repaint.
    virtual void redrawButtonImages();
    // Composes a picture for its place on the panel: its own alpha blends it over the background at (x, y), then every
    // pixel gets the panel's alpha. A null picture stays null.
    virtual void redrawImage(QImage& picture, int x, int y);

    // A held button is released first (which emits button_clicked). Focus moves the focus to the button.
    virtual void setButtonState(QString name, SkinButtonState newState);

    // Move the focus to the next or previous button in state Normal, in the order of the config file, around the ends.
    // Where there is none nothing changes.
    virtual void focusNextButton();
    virtual void focusPrevButton();
    // Moves the focus without repainting the button that gets it. An unknown name leaves no button focused. Refused
    // while a button is held.
    virtual void setButtonFocus(QString name);

    // State picture index (0 to 3) of a strip: a quarter of its width, rounded down. A negative index gives the whole
    // strip, one beyond 3 what QImage::copy() gives there.
    virtual QImage get_buttonimage(QImage strip, int index);

    // Takes the picture of what lies beneath the parent, lays the panel's own background over the piece under the panel
    // and composes the buttons anew.
    void setBackgroundPixmap(const QPixmap& parentBackground) override;

signals:
    // A pressed button was released: the panel itself and the button's name. Emitted last; a receiver may delete the
    // panel.
    void button_clicked(const QObject* panel, const QString name);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    // Every button by name, the order of drawing. Of equal names the later button in the config file stands here.
    QMap<QString, SkinButton*> buttonMap;
    // Every button in the order of the config file, the order of focus travel.
    std::vector<SkinButton*> buttons;
    // The focused button, buttons.end() where none has the focus.
    std::vector<SkinButton*>::iterator focusButton = buttons.end();
    // Owned; null until do_configloading() or setBackgroundImage().
    QImage* backgroundImage = nullptr;
    // Owned; null until do_configloading().
    QImage* maskImage = nullptr;
    // A button is held down, so that no other one can be pressed and the focus cannot move.
    bool buttonHeld = false;
    // What setAlphaOverride() was given last.
    unsigned char alphaOverride = 255;

private:
    SkinButton* findButton(const QString& name) const;
    void loadButtons(skinwidgets::SkinReader& skin, const QString& section, int count);
    std::unique_ptr<SkinButton> loadButton(const skinwidgets::SkinReader& skin);
    void reportUnusedMasks(skinwidgets::SkinReader& skin, const QString& section, size_t first) const;
    void focusNeighbour(int step);
    void releasePressedButtons();
};

#endif
