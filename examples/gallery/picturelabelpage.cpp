#include "picturelabelpage.h"

#include "controls/labelimage.h"
#include "ground.h"

#include <QGridLayout>
#include <QImage>
#include <QLabel>
#include <QPainter>

namespace
{

constexpr QSize labelSize(150, 84);
constexpr QRect piece(0, 0, 190, 116);
constexpr QPoint labelPlace(20, 16);

// A see-through frame, as a skin might have under its pictures.
QImage basePicture()
{
    QImage picture(labelSize, QImage::Format_ARGB32);
    picture.fill(qRgba(255, 255, 255, 36));
    QPainter painter(&picture);
    painter.setPen(QColor(255, 160, 80, 200));
    painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
    return picture;
}

// A disc that fades out.
QImage softPicture()
{
    QImage picture(60, 60, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QRadialGradient gradient(30, 30, 30);
    gradient.setColorAt(0, QColor(255, 200, 120));
    gradient.setColorAt(0.5, QColor(255, 140, 50, 200));
    gradient.setColorAt(1, QColor(255, 120, 30, 0));
    QPainter(&picture).fillRect(picture.rect(), gradient);
    return picture;
}

struct Example {
    const char* caption;
    Qt::AlignmentFlag alignment;
    bool base;
    bool soft;
    // With a label picture at all.
    bool filled;
};

const Example examples[] = {
    {"Left", Qt::AlignLeft, false, false, true},
    {"Centred", Qt::AlignHCenter, false, false, true},
    {"Any other value", Qt::AlignTop, false, false, true},
    {"Base picture alone", Qt::AlignHCenter, true, false, false},
    {"Over a base picture", Qt::AlignHCenter, true, false, true},
    {"Soft edges over both", Qt::AlignHCenter, true, true, true},
};

QWidget* makeSample(QWidget* parent, const Example& example)
{
    const QPixmap background = skinPicture(parent, QStringLiteral("list_bg")).copy(piece);
    auto* const ground = new Ground(background, parent);
    auto* const label = new LabelImage(example.base ? new QImage(basePicture()) : nullptr, ground);
    label->setGeometry(QRect(labelPlace, labelSize));
    label->set_alignment(example.alignment);
    label->setBackgroundPixmap(background);
    if (example.filled)
        label->set_image(example.soft ? softPicture()
                                      : skinPicture(parent, QStringLiteral("cover"))
                                            .toImage()
                                            .scaled(48, 48, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    return ground;
}

} // namespace

PictureLabelPage::PictureLabelPage(QWidget* parent)
    : Page(tr("Picture label"),
           tr("Shows a picture over the piece of its parent's background that lies under it, so that it looks "
              "see-through. Each label here is 150 pixels wide."),
           parent)
{
    addExamples();
    addCover();
}

void PictureLabelPage::addExamples()
{
    QGridLayout* const table = addTable(tr("Placement and layers"), 0, 0);
    QWidget* const card = table->parentWidget();
    int index = 0;
    for (const Example& example : examples) {
        const int row = index / 3 * 2;
        table->addWidget(makeLabel(tr(example.caption), card), row, index % 3, Qt::AlignCenter);
        table->addWidget(makeSample(card, example), row + 1, index % 3, Qt::AlignCenter);
        ++index;
    }
}

void PictureLabelPage::addCover()
{
    QWidget* const place = addCard(tr("A cover in its place on the player's screen"), 0, 1);
    const QPixmap screen = skinPicture(place, QStringLiteral("player_bg"));
    auto* const ground = new Ground(screen, place);
    auto* const cover = new LabelImage(ground, "cover");
    cover->setGeometry(14, 34, 104, 104);
    cover->setBackgroundPixmap(screen);
    cover->set_image(skinPicture(place, QStringLiteral("cover")).toImage());
    placeIn(ground);
}
