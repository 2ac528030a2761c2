#ifndef SKINWIDGETS_SKINBASE_SKINBUTTON_H
#define SKINWIDGETS_SKINBASE_SKINBUTTON_H

#include <QImage>
#include <QString>

#include <algorithm>

// What a skin button shows. The values 0 to 3 are also the index of the state picture in the button's strip.
enum SkinButtonState : int {
    Normal = 0,
    Pressed = 1,
    // Shown as Normal while the panel does not have the keyboard focus.
    Focus = 2,
    Disabled = 3,
    // Not drawn at all.
    Hidden = 4
};

// One button of a skin panel, owned by the panel.
struct SkinButton {
    // Changed by the panel's operations only, so that the focus follows.
    SkinButtonState state = Normal;
    // By which the application addresses it.
    QString name;
    // The whole strip as loaded; the state pictures are cut from it again at every change of background or alpha.
    QImage image;
    // By state, composed over the background.
    QImage stateImage[4];
    // 32 bits deep, as large as state picture 0, white with alpha 0. Free for subclasses.
    QImage workImage;
    // The pixel value by which the mask picture gives places to this button, alpha byte included.
    unsigned int mask = 0;
    // Top-left corner in widget coordinates.
    int xpos = -1;
    int ypos = -1;
    // Free for subclasses.
    bool spare = false;

    // Where the button is drawn, in widget coordinates.
    QRect rect() const { return span(xpos, ypos); }
    // The same with a margin on the right and below: width and height count from the panel's origin.
    QRect rectWithMargin() const { return span(qint64(xpos) * 2, qint64(ypos) * 2); }

private:
    // From the button's corner to where a picture of its size ends that begins at (x, y). A skin may give any position;
    // those that no screen reaches are drawn in, so that sums of coordinates fit into an int.
    QRect span(qint64 x, qint64 y) const
    {
        return {QPoint(drawnIn(xpos), drawnIn(ypos)),
                QPoint(drawnIn(x + stateImage[0].width() - 1), drawnIn(y + stateImage[0].height() - 1))};
    }
    static int drawnIn(qint64 coordinate)
    {
        constexpr qint64 farthest = 1 << 29;
        return static_cast<int>(std::clamp(coordinate, -farthest, farthest));
    }
};

#endif
