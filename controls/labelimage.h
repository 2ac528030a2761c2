#ifndef SKINWIDGETS_CONTROLS_LABELIMAGE_H
#define SKINWIDGETS_CONTROLS_LABELIMAGE_H

#include "toolkit/toolkitwidget.h"

#include <QImage>
#include <QPoint>

/*
 * A picture label that looks see-through over its parent's background picture: it shows the piece of that picture that
 * lies under it, over it an optional base picture that fixes the label's size, and over that the label picture.
 *
 * The application hands the parent's background picture to setBackgroundPixmap(), again after the label was moved or
 * resized. Until then the label stands on its own background. Pictures are laid over each other with their own alpha;
 * the colours beneath count as if they were opaque. Null pictures are left out. Where a background picture does not
 * reach, the palette's window colour shows. Coordinates are pixels.
 */
class SKINWIDGETS_EXPORT LabelImage : public ToolkitWidget<QWidget>
{
    Q_OBJECT

public:
    // Takes ownership of the base picture, which may be null, and takes its size.
    explicit LabelImage(QImage* image, QWidget* parent = nullptr, const char* name = nullptr);
    // Without a base picture the label is 0 x 0 until the application resizes it.
    explicit LabelImage(QWidget* parent = nullptr, const char* name = nullptr);
    ~LabelImage() override;

    // Centres the label picture and resizes the label to the base picture. The constructors' work.
    void init();

    // Where the label picture stands: Qt::AlignLeft, Qt::AlignHCenter; any other value, Qt::AlignCenter among them,
    // means right. Always centred vertically. Shows with the next picture that is set.
    void set_alignment(Qt::AlignmentFlags a);
    // Sets the label picture; a copy is kept.
    void set_image(const QImage& img);

    // Shows the picture in place of the label picture, until one of them is set or a background is handed over.
    void drawImageLabel(const QImage& img);
    // Where a picture of that size stands; negative where it is larger than the label.
    QPoint get_position(QSize s) const;

    // Takes the picture of what lies beneath the parent: the piece at the label's place in it becomes the background.
    // A null pixmap is ignored, and any as long as the label has no area.
    void setBackgroundPixmap(const QPixmap& pm) override;

protected:
    // Owned; null without a base picture.
    QImage* baseImage = nullptr;
    // Owned; the background with the base picture over it, null before the first one.
    QPixmap* backPixmap = nullptr;
    // Owned; null before set_image().
    QImage* labelImage = nullptr;
    // Of the label picture.
    Qt::AlignmentFlags alignment = Qt::AlignHCenter;

private:
    QImage emptyPicture() const;
};

#endif
