#include "sliderpage.h"

#include "media/sliderskin.h"
#include "qtopia/config.h"
#include "qtopia/qpeapplication.h"

#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QTemporaryDir>

namespace
{

const char group[] = "Seek";

// Presses the slider's bar, as the stylus does it.
void takeBar(SliderSkin* slider)
{
    const QPointF at = slider->barRect().center();
    QMouseEvent press(QEvent::MouseButtonPress, at, slider->mapToGlobal(at), Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(slider, &press);
}

SliderSkin* makeSlider(QWidget* parent, int value)
{
    auto* const slider = new SliderSkin(parent, group);
    slider->setValueInit(0, 1000, 100);
    slider->setValue(value);
    slider->setFixedSize(slider->size());
    return slider;
}

void insertMarkers(SliderSkin* slider)
{
    const struct {
        MarkerType kind;
        int value;
    } markers[] = {{Marker_1, 100}, {Marker_2, 300}, {Marker_3, 500}, {Marker_1, 700}, {Marker_2, 900}};
    for (const auto& [kind, value] : markers)
        slider->insertMarker(kind, value);
}

// The strip of a standing slider: each half of a lying one's turned to the left.
QImage turned(const QImage& strip)
{
    const int width = strip.width() / 2;
    QImage result(strip.height() * 2, width, QImage::Format_ARGB32);
    for (int half = 0; half < 2; ++half) {
        const QImage piece = strip.copy(width * half, 0, width, strip.height())
                                 .transformed(QTransform().rotate(-90))
                                 .convertToFormat(QImage::Format_ARGB32);
        bitBlt(&result, strip.height() * half, 0, &piece);
    }
    return result;
}

} // namespace

SliderPage::SliderPage(QWidget* parent)
    : Page(tr("Slider"),
           tr("Groove, played part and bar are two halves of a picture each; up to ten markers lie over them. A slider "
              "ignores the stylus until it is given a value."),
           parent)
{
    addLying();
    addStanding();
}

void SliderPage::addLying()
{
    QGridLayout* const table = addTable(tr("Lying"), 0, 0);
    QWidget* const card = table->parentWidget();
    SliderSkin* const idle = makeSlider(card, 350);
    SliderSkin* const dragged = makeSlider(card, 600);
    takeBar(dragged);
    SliderSkin* const inactive = makeSlider(card, 850);
    inactive->setDisable(true);
    auto* const fresh = new SliderSkin(card, group);
    fresh->setFixedSize(fresh->size());

    SliderSkin* const marked = makeSlider(card, 500);
    insertMarkers(marked);

    const struct {
        QString caption;
        QWidget* slider;
    } rows[] = {
        {tr("Idle"), idle},
        {tr("Dragging"), dragged},
        {tr("Inactive"), inactive},
        {tr("Inactive, no value yet"), fresh},
        {tr("Markers of the three kinds"), marked},
    };
    int row = 0;
    for (const auto& [caption, slider] : rows) {
        table->addWidget(makeLabel(caption, card), row, 0, Qt::AlignRight | Qt::AlignVCenter);
        table->addWidget(slider, row, 1);
        ++row;
    }
}

void SliderPage::addStanding()
{
    QGridLayout* const table = addTable(tr("Standing: idle, dragging, inactive"), 0, 1);
    QWidget* const card = table->parentWidget();
    const QString skin = QPEApplication::qpeDir() + QLatin1String("pics/") + window()->objectName();
    Config config(skin + QLatin1String("/config"), Config::File);
    config.setGroup(QStringLiteral("Volume_SLIDER"));
    const QTemporaryDir directory;
    const QString back = directory.filePath(QStringLiteral("back.png"));
    const QString bar = directory.filePath(QStringLiteral("bar.png"));
    turned(QImage(skin + QLatin1Char('/') + config.readEntry(QStringLiteral("back_image")))).save(back);
    turned(QImage(skin + QLatin1Char('/') + config.readEntry(QStringLiteral("bar_image")))).save(bar);

    for (int column = 0; column < 3; ++column) {
        auto* const slider = new SliderSkin(back, bar, card);
        slider->setValueInit(0, 100, 10);
        slider->setValue(25 + column * 25);
        slider->setFixedSize(slider->size());
        if (column == 1)
            takeBar(slider);
        if (column == 2)
            slider->setDisable(true);
        table->addWidget(slider, 0, column, Qt::AlignCenter);
    }
}
