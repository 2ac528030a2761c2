#include "media/sliderskin.h"

#include "skinbase/skinreader.h"
#include "toolkit/offscreen.h"
#include "toolkit/pictureloader.h"
#include "toolkit/skinlog.h"

#include <QMouseEvent>
#include <QPointer>

#include <algorithm>

using skinwidgets::Prepared;
using skinwidgets::SkinReader;

int SliderSkin::sliderStartVal = 0;

namespace
{

QImage loadFile(const QString& path)
{
    QString error;
    QImage picture = skinwidgets::loadPicture(path, &error);
    if (picture.isNull())
        qCDebug(skinLog).noquote() << path + QLatin1String(":") << error;
    return picture;
}

// Beyond any widget; positions stop there, so that rectangles can be computed from them.
int boundedPosition(qint64 position)
{
    return static_cast<int>(std::clamp<qint64>(position, -QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
}

} // namespace

SliderSkin::SliderSkin(int minValue, int maxValue, int pageStep, int value, QWidget* parent, const char* name)
    : SkinBase(parent, name),
      QRangeControl(minValue, maxValue, 1, pageStep, value)
{
    SliderSkin::do_configloading(objectName());
    init();
    // Intended: the value as given, while the bar stays at 0 until the slider is laid out.
    sliderVal = value;
}

SliderSkin::SliderSkin(QWidget* parent, const char* name) : SkinBase(parent, name), configured(true)
{
    SliderSkin::do_configloading(objectName());
    setFocusPolicy(Qt::NoFocus);
    init();
}

SliderSkin::SliderSkin(const QString& back, const QString& bar, QWidget* parent, const char* name)
    : SkinBase(parent, name),
      configured(true)
{
    setStrips(loadFile(back), loadFile(bar));
    setFocusPolicy(Qt::NoFocus);
    init();
}

SliderSkin::SliderSkin(const QString& back, const QString& bar, const QString& marker1, const QString& marker2,
                       QWidget* parent, const char* name)
    : SliderSkin(back, bar, parent, name)
{
    markerImages[Marker_1] = skinwidgets::toStraight(loadFile(marker1));
    markerImages[Marker_2] = skinwidgets::toStraight(loadFile(marker2));
    // Intended: there is no path for the third kind, which looks like the second.
    markerImages[Marker_3] = markerImages[Marker_2];
}

SliderSkin::~SliderSkin() = default;

void SliderSkin::init()
{
    state = Inactive;
    sliderPos = 0;
    sliderVal = 0;
    clickOffset = 0;
    for (SliderMarker& marker : markers)
        marker.used = false;
}

void SliderSkin::do_configloading(QString group)
{
    SkinReader skin(this);
    skin.setGroup(group);
    const QImage back = skin.picture(QStringLiteral("back_image"));
    setStrips(back, skin.picture(QStringLiteral("bar_image")));
    markerImages[Marker_1] = skinwidgets::toStraight(skin.picture(QStringLiteral("marker_1")));
    markerImages[Marker_2] = skinwidgets::toStraight(skin.picture(QStringLiteral("marker_2")));
    markerImages[Marker_3] = skinwidgets::toStraight(skin.picture(QStringLiteral("marker_3")));
}

void SliderSkin::setStrips(const QImage& back, const QImage& bar)
{
    backImage = skinwidgets::toStraight(back);
    redrawBack();
    const QImage strip = skinwidgets::toStraight(bar);
    barImage = get_image(strip, 0);
    barPressedImage = get_image(strip, 1);
    orient = grooveImage.height() < grooveImage.width() ? 0 : 1;
    resize(grooveImage.width(), grooveImage.height());
    update();
}

void SliderSkin::redrawBack()
{
    grooveImage = get_image(backImage, 0);
    fillImage = get_image(backImage, 1);
    redrawImage(grooveImage, 0, 0);
    redrawImage(fillImage, 0, 0);
}

QImage SliderSkin::get_image(QImage image, int index)
{
    if (index < 0)
        return image;
    if (index > 1)
        return {};
    const int width = image.width() / 2;
    return image.copy(width * index, 0, width, image.height());
}

void SliderSkin::setAlphaOverride(unsigned char alpha)
{
    SkinBase::setAlphaOverride(alpha);
    redrawBack();
    update();
}

void SliderSkin::setBackgroundPixmap(const QPixmap& pm)
{
    SkinBase::setBackgroundPixmap(pm);
    redrawBack();
}

void SliderSkin::setMinValue(int v)
{
    setRange(v, maxValue());
}

void SliderSkin::setMaxValue(int v)
{
    setRange(minValue(), v);
}

void SliderSkin::setLineStep(int v)
{
    setSteps(v, pageStep());
}

void SliderSkin::setPageStep(int v)
{
    setSteps(lineStep(), v);
}

void SliderSkin::setValueInit(int min, int max, int pageStep)
{
    const QPointer<SliderSkin> self(this);
    setMinValue(min);
    if (self)
        setMaxValue(max);
    if (!self)
        return;
    setPageStep(pageStep);
    configured = true;
    sliderPos = 0;
    repaint(0, 0, width(), height(), false);
}

void SliderSkin::setDisable(bool disable)
{
    // Intended: this way only; setValue() makes the slider active again.
    if (!disable)
        return;
    if (isDragged())
        update(barRect());
    state = Inactive;
}

int SliderSkin::available() const
{
    return isHorizontal() ? width() - barImage.width() : height() - barImage.height();
}

int SliderSkin::positionFromValue(int v) const
{
    return QRangeControl::positionFromValue(v, available());
}

int SliderSkin::valueFromPosition(int p) const
{
    return QRangeControl::valueFromPosition(p, available());
}

QRect SliderSkin::barRect() const
{
    return isHorizontal() ? QRect(QPoint(sliderPos, 0), barImage.size())
                          : QRect(QPoint(0, sliderPos), barPressedImage.size());
}

QRect SliderSkin::progRect() const
{
    // Intended: the groove's width is the height of a horizontal slider's rectangle.
    return {0, 0, sliderPos, isHorizontal() ? grooveImage.width() : grooveImage.height()};
}

QRect SliderSkin::playedRect() const
{
    if (isHorizontal())
        return {QPoint(0, 0), QPoint(sliderPos + barImage.width() / 2, height() - 1)};
    return {QPoint(0, sliderPos + barImage.height() / 2), QPoint(width() - 1, height() - 1)};
}

int SliderSkin::goodPart(const QPoint& p) const
{
    return isHorizontal() ? p.x() : p.y();
}

int SliderSkin::slideLength() const
{
    return style()->pixelMetric(QStyle::PM_SliderLength, nullptr, this);
}

void SliderSkin::valueChange()
{
    if (sliderVal != value()) {
        const int pos = positionFromValue(value());
        sliderVal = value();
        reallyMoveSlider(pos);
    }
    // Changes nothing but the previous value, which becomes this one.
    QRangeControl::setValue(value());
    emit valueChanged(static_cast<unsigned int>(value()));
}

void SliderSkin::rangeChange()
{
    const int pos = positionFromValue(value());
    if (pos != sliderPos)
        reallyMoveSlider(pos);
}

void SliderSkin::stepChange()
{
    rangeChange();
}

void SliderSkin::resizeEvent(QResizeEvent* event)
{
    rangeChange();
    SkinBase::resizeEvent(event);
}

int SliderSkin::insertMarker(MarkerType type, int value)
{
    if (type < Marker_1 || type > Marker_3)
        return -1;
    const auto free =
        std::find_if(std::begin(markers), std::end(markers), [](const SliderMarker& marker) { return !marker.used; });
    if (free == std::end(markers))
        return -1;
    free->image = markerImages[type];
    // Intended: markers lie along x on a vertical slider too.
    const int x = positionFromValue(value) + (barImage.width() / 2 - free->image.width() / 2);
    free->rect = QRect(QPoint(x, 0), free->image.size());
    free->used = true;
    return static_cast<int>(free - std::begin(markers));
}

void SliderSkin::removeMarker(int index)
{
    if (index < 0 || index >= maxMarkers || !markers[index].used)
        return;
    // Intended: a line for every marker that is taken away.
    qWarning(" index =%d", index);
    markers[index].used = false;
    updateMarker(index);
}

void SliderSkin::updateMarker(int index)
{
    if (index >= 0 && index < maxMarkers)
        repaint(markers[index].rect, false);
}

void SliderSkin::clearMarkers()
{
    for (int i = 0; i < maxMarkers; ++i)
        removeMarker(i);
}

void SliderSkin::paintEvent(QPaintEvent* event)
{
    // A groove as large as the slider has the background in it and leaves nothing of it to be seen.
    const bool covered = QRect(QPoint(), grooveImage.size()).contains(rect());
    const Prepared prepared = covered ? Prepared::Undefined : Prepared::FromBackground;
    skinwidgets::paintThroughPixmap(this, event->region(), prepared, [this](QPixmap& target, const QRect& area) {
        drawClippedImage(&target, grooveImage, area, rect());
        drawClippedImage(&target, fillImage, area, playedRect());
        paintSlider(&target, area);
        paintMarkers(&target, area);
    });
}

void SliderSkin::paintSlider(QPixmap* pm, const QRect& r)
{
    skinwidgets::blendIntoArea(*pm, r, isDragged() ? barPressedImage : barImage, barRect(), alphaOverride);
}

void SliderSkin::paintMarkers(QPixmap* pm, const QRect& r)
{
    for (const SliderMarker& marker : markers)
        if (marker.used)
            skinwidgets::blendIntoArea(*pm, r, marker.image, marker.rect, alphaOverride);
}

void SliderSkin::reallyMoveSlider(int newPos)
{
    const QRect before = barRect();
    sliderPos = boundedPosition(newPos);
    const QRect after = barRect();
    // Equal sizes and one axis: the united rectangle covers nothing beyond the two places and the way between.
    repaint(before | after, false);
}

void SliderSkin::moveSlider(int pos)
{
    const int shown = valueFromPosition(std::min(std::max(pos, 0), available()));
    if (shown != sliderVal) {
        const QPointer<SliderSkin> self(this);
        sliderVal = shown;
        emit sliderMoved(shown);
        if (!self)
            return;
    }
    const int snapped = positionFromValue(shown);
    if (snapped != sliderPos)
        reallyMoveSlider(snapped);
}

bool SliderSkin::isDragged() const
{
    return state > Idle && state <= Dragging;
}

int SliderSkin::dragPosition(const QMouseEvent* event) const
{
    return boundedPosition(qint64(goodPart(event->position().toPoint())) - clickOffset);
}

void SliderSkin::mousePressEvent(QMouseEvent* event)
{
    if (state == Inactive)
        return;
    const QPointer<SliderSkin> self(this);
    resetState();
    if (!self || state == Inactive)
        return;
    sliderStartVal = sliderVal;

    const QPoint at = event->position().toPoint();
    if (!QRect(QPoint(), grooveImage.size()).contains(at))
        return;
    const QRect bar = barRect();
    if (bar.contains(at)) {
        state = Dragging;
        clickOffset = goodPart(at) - sliderPos;
        update(bar);
        emit sliderPressed();
        return;
    }
    if (goodPart(bar.topLeft()) <= goodPart(at) && goodPart(at) <= goodPart(bar.bottomRight()))
        return;
    state = Dragging;
    // Intended: the offset of the last press on the bar still counts, it is not taken anew.
    moveSlider(dragPosition(event));
    if (self)
        emit sliderPressed();
}

void SliderSkin::mouseMoveEvent(QMouseEvent* event)
{
    if (state != Dragging)
        return;
    const QPointer<SliderSkin> self(this);
    const int pos = dragPosition(event);
    moveSlider(pos);
    if (self)
        QRangeControl::setValue(valueFromPosition(pos));
    // Intended: a move that changed the value tells it a second time.
    if (self)
        emit valueChanged(static_cast<unsigned int>(valueFromPosition(pos)));
}

void SliderSkin::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    resetState();
}

void SliderSkin::resetState()
{
    if (state == Inactive)
        return;
    if (isDragged()) {
        const QPointer<SliderSkin> self(this);
        // Ignored by this class, as the drag is still on; there for subclasses.
        setValue(valueFromPosition(sliderPos));
        if (self)
            emit seekReleased(static_cast<unsigned int>(sliderVal));
        // A receiver may have disabled the slider.
        if (!self || state == Inactive)
            return;
    }
    state = Idle;
    repaint(barRect(), false);
}

void SliderSkin::setValue(int v)
{
    if (state == Dragging)
        return;
    state = Idle;
    const int old = sliderPos;
    const QPointer<SliderSkin> self(this);
    QRangeControl::setValue(v);
    // Intended: the new position is the width, not the distance moved.
    if (self)
        repaint(QRect(old, 0, positionFromValue(v), grooveImage.height()), false);
}

void SliderSkin::addStep()
{
    // Intended: steps move by a page.
    addPage();
}

void SliderSkin::subtractStep()
{
    subtractPage();
}
