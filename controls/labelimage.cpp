#include "controls/labelimage.h"

LabelImage::LabelImage(QImage* image, QWidget* parent, const char* name) : ToolkitWidget(parent, name), baseImage(image)
{
    init();
}

LabelImage::LabelImage(QWidget* parent, const char* name) : ToolkitWidget(parent, name)
{
    init();
}

LabelImage::~LabelImage()
{
    delete baseImage;
    delete labelImage;
    delete backPixmap;
}

void LabelImage::init()
{
    alignment = Qt::AlignHCenter;
    ToolkitWidget::resize(baseImage ? baseImage->size() : QSize(0, 0));
}

void LabelImage::set_alignment(Qt::AlignmentFlags a)
{
    alignment = a;
}

void LabelImage::set_image(const QImage& img)
{
    // Before the old one goes, which it may be. A deep copy, as the picture may stand in memory of its own.
    auto* const picture = new QImage(img.copy());
    delete labelImage;
    labelImage = picture;
    drawImageLabel(*labelImage);
}

// A picture of the label's size in the palette's window colour.
QImage LabelImage::emptyPicture() const
{
    QImage picture(size(), QImage::Format_ARGB32);
    picture.fill(palette().color(backgroundRole()).rgb());
    return picture;
}

void LabelImage::setBackgroundPixmap(const QPixmap& pm)
{
    if (pm.isNull() || size().isEmpty())
        return;
    QImage background = emptyPicture();
    bitBlt(&background, QPoint(), &pm, geometry());
    if (baseImage)
        skinwidgets::blendOver(background, *baseImage, QPoint());
    auto* const composed = new QPixmap(skinwidgets::pixmapFromStraight(std::move(background)));
    delete backPixmap;
    backPixmap = composed;
    ToolkitWidget::setBackgroundPixmap(*backPixmap);
    if (labelImage)
        drawImageLabel(*labelImage);
}

void LabelImage::drawImageLabel(const QImage& img)
{
    if (size().isEmpty())
        return;
    QImage picture = emptyPicture();
    if (!backPixmap) {
        skinwidgets::fillFromBackground(picture, this, QPoint());
        setBackgroundPixmap(skinwidgets::pixmapFromStraight(picture));
    }
    if (backPixmap)
        bitBlt(&picture, 0, 0, backPixmap);
    skinwidgets::blendOver(picture, img, get_position(img.size()));
    ToolkitWidget::setBackgroundPixmap(skinwidgets::pixmapFromStraight(std::move(picture)));
}

QPoint LabelImage::get_position(QSize s) const
{
    const int y = (height() - s.height()) / 2;
    if (alignment == Qt::AlignLeft)
        return {0, y};
    if (alignment == Qt::AlignHCenter)
        return {(width() - s.width()) / 2, y};
    // Intended: every other value stands at the right.
    return {width() - s.width(), y};
}
