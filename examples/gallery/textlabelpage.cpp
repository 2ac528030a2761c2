#include "textlabelpage.h"

#include "controls/labelskin.h"
#include "ground.h"

#include <QGridLayout>
#include <QLabel>

namespace
{

constexpr QSize groundSize(300, 116);

QPixmap plainGround(const QColor& colour)
{
    QPixmap picture(groundSize);
    picture.fill(colour);
    return picture;
}

// The middle of the cover.
QPixmap coverGround(const QPixmap& cover)
{
    const QPixmap large = cover.scaled(groundSize, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    return large.copy(QRect(QPoint(0, (large.height() - groundSize.height()) / 2), groundSize));
}

LabelSkin* addText(QWidget* ground, int y, int height, int pixels, const QColor& colour, const QString& text)
{
    auto* const label = new LabelSkin(ground);
    QFont font = label->font();
    font.setPixelSize(pixels);
    label->setFont(font);
    label->set_textColor(colour);
    label->setText(text);
    label->setGeometry(10, y, groundSize.width() - 20, height);
    return label;
}

} // namespace

TextLabelPage::TextLabelPage(QWidget* parent)
    : Page(
          tr("Text label"),
          tr("Only the pixels of its letters belong to it: whatever lies beneath shows between them, and is what a tap "
             "beside them reaches."),
          parent)
{
    const QPixmap screen = skinPicture(this, QStringLiteral("list_bg"));
    addGround(tr("On a screen's background"), screen.copy(QRect(QPoint(0, 30), groundSize)), 0, 0);
    addGround(tr("On a picture"), coverGround(skinPicture(this, QStringLiteral("cover"))), 0, 1);
    addGround(tr("On light ground"), plainGround(QColor(0xf4, 0xf5, 0xf7)), 1, 0);
    addContents();
}

void TextLabelPage::addGround(const QString& caption, const QPixmap& picture, int row, int column)
{
    auto* const ground = new Ground(picture, addCard(caption, row, column));
    const bool light = picture.toImage().pixelColor(0, 0).lightness() > 128;
    const QColor colour = light ? QColor(0x1a, 0x20, 0x2b) : QColor(0xff, 0xf9, 0xb2);
    addText(ground, 4, 22, 11, colour, tr("Eleven pixels: cannot play this file"));
    addText(ground, 26, 24, 14, colour, tr("Fourteen pixels: no such file"))->setAlignment(Qt::AlignCenter);
    addText(ground, 50, 30, 20, colour, tr("Twenty pixels"))->setAlignment(Qt::AlignRight);
    LabelSkin* const disabled = addText(ground, 84, 28, 14, colour, tr("Disabled, in the same colour"));
    disabled->setEnabled(false);
    placeIn(ground);
}

void TextLabelPage::addContents()
{
    auto* const ground = new Ground(plainGround(QColor(0x2c, 0x50, 0x7c)), addCard(tr("Other contents"), 1, 1));
    addText(ground, 4, 26, 15, Qt::white, tr("<b>Marked up</b> with <font color=\"#ffb060\">colours</font>"));
    LabelSkin* const picture = addText(ground, 32, 44, 15, Qt::white, QString());
    picture->setPixmap(skinPicture(this, QStringLiteral("marker_1")));
    picture->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    LabelSkin* const wrapped =
        addText(ground, 66, 46, 13, Qt::white, tr("A longer message that needs more than a single line of its label"));
    wrapped->setWordWrap(true);
    placeIn(ground);
}
