#include "scroll/scrollbarskin.h"

#include "scroll/builtinpictures.h"
#include "toolkit/offscreen.h"
#include "toolkit/pictureloader.h"

#include <QMouseEvent>
#include <QPointer>
#include <QProxyStyle>
#include <QTimer>

#include <algorithm>
#include <tuple>

int ScrollBarSkin::sliderStartPos = 0;

namespace
{

constexpr int thumbLeft = 6;
constexpr int leastThumbLength = 10;
// A range as large as this cannot be scaled to the trough; its thumb has the least length.
constexpr unsigned int largestScaledRange = 0x40000000U;

// The rows that a composed picture has at most: far more than any display, and a few megabytes.
constexpr int highestPicture = 65536;

constexpr int repeatDelay = 500;
constexpr int repeatInterval = 50;

QImage builtinPicture(const char* name)
{
    return skinwidgets::loadPicture(skinwidgets::findBuiltinImage(name));
}

skinwidgets::BarPieces builtinPieces(const char* top, const char* centre, const char* bottom)
{
    return {builtinPicture(top), builtinPicture(centre), builtinPicture(bottom)};
}

// Whether the style follows the one desktop on which a dragged thumb jumps back when the pointer strays too far.
bool isWindowsStyle(const QStyle* style)
{
    while (const auto* proxy = qobject_cast<const QProxyStyle*>(style))
        style = proxy->baseStyle();
    return style->inherits("QWindowsStyle");
}

bool hasStrayed(const QWidget* bar, const QPoint& at)
{
    if (!isWindowsStyle(bar->style()))
        return false;
    const int distance = bar->style()->pixelMetric(QStyle::PM_MaximumDragDistance, nullptr, bar);
    if (distance < 0)
        return false;
    const int reach = std::min(distance, QWIDGETSIZE_MAX);
    return !bar->rect().adjusted(-2 * reach, -reach, 2 * reach, reach).contains(at);
}

} // namespace

ScrollBarSkin::ScrollBarSkin(QWidget* parent, const char* name) : SkinBase(parent, name)
{
    init();
    loadPictures();
}

ScrollBarSkin::ScrollBarSkin(int minValue, int maxValue, int lineStep, int pageStep, int value, QWidget* parent,
                             const char* name)
    : SkinBase(parent, name),
      QRangeControl(minValue, maxValue, lineStep, pageStep, value)
{
    init();
}

ScrollBarSkin::ScrollBarSkin(QSize /*size*/, QWidget* parent, const char* name) : SkinBase(parent, name)
{
    init();
}

ScrollBarSkin::~ScrollBarSkin() = default;

void ScrollBarSkin::init()
{
    stopAutoRepeat();
    pressedControl = None;
    clickedAt = false;
    sliderPos = 0;
    setFocusPolicy(Qt::NoFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Minimum);
}

ScrollBarSkin::ButtonPictures ScrollBarSkin::loadButton(const char* normal, const char* pressed, const char* focus)
{
    return {builtinPicture(normal), builtinPicture(pressed), builtinPicture(focus)};
}

void ScrollBarSkin::loadPictures()
{
    addPictures = loadButton("scroll_add_normal", "scroll_add_press", "scroll_add_focus");
    subPictures = loadButton("scroll_sub_normal", "scroll_sub_press", "scroll_sub_focus");
    thumbPieces = builtinPieces("scroll_thumb_top_normal", "scroll_thumb_center_normal", "scroll_thumb_bottom_normal");
    thumbFocusPieces =
        builtinPieces("scroll_thumb_top_focus", "scroll_thumb_center_focus", "scroll_thumb_bottom_focus");
    troughPieces = builtinPieces("scroll_bg_top", "scroll_bg_middle", "scroll_bg_bottom");
    init_position();
    redrawAddButton();
    redrawSubButton();
    redrawMiddle();
    redrawThumb();
}

void ScrollBarSkin::redrawAddButton()
{
    addPictures = loadButton("scroll_add_normal", "scroll_add_press", "scroll_add_focus");
    composeButton(addPictures, addRect);
}

void ScrollBarSkin::redrawSubButton()
{
    subPictures = loadButton("scroll_sub_normal", "scroll_sub_press", "scroll_sub_focus");
    composeButton(subPictures, subRect);
}

void ScrollBarSkin::composeButton(ButtonPictures& pictures, const QRect& place)
{
    redrawImage(pictures.normal, place.left(), place.top());
    redrawImage(pictures.pressed, place.left(), place.top());
}

void ScrollBarSkin::redrawMiddle()
{
    if (middleRect.height() < troughPieces.top.height())
        return;
    troughImage = skinwidgets::composeTrough(troughPieces, std::min(middleRect.height(), highestPicture));
    // Intended: composed over the background at the top of the bar, not at the top of the trough.
    redrawImage(troughImage, middleRect.left(), subRect.top());
}

void ScrollBarSkin::redrawThumb()
{
    const QRect slider = sliderRect();
    const int length = std::min(slider.height(), highestPicture);
    std::tie(thumbImage, thumbPressedImage) = skinwidgets::composeThumbs(thumbPieces, thumbFocusPieces, length);
    thumbRect = QRect(slider.left(), slider.top(), thumbImage.width(), thumbPressedImage.height());
}

void ScrollBarSkin::setAlphaOverride(unsigned char alpha)
{
    alphaOverride = alpha;
    redrawAddButton();
    redrawMiddle();
    redrawSubButton();
}

QSize ScrollBarSkin::sizeHint() const
{
    return {20, height()};
}

void ScrollBarSkin::setValue(int value)
{
    QRangeControl::setValue(value);
}

void ScrollBarSkin::setMinValue(int value)
{
    setRange(value, maxValue());
}

void ScrollBarSkin::setMaxValue(int value)
{
    setRange(minValue(), value);
}

void ScrollBarSkin::setLineStep(int step)
{
    setSteps(step, pageStep());
}

void ScrollBarSkin::setPageStep(int step)
{
    setSteps(lineStep(), step);
}

ScrollBarSkin::Metrics ScrollBarSkin::currentMetrics() const
{
    const int button = height() > 2 * (width() - 1) ? width() : height() / 2 - 1;
    const int maxLength = height() - 2 * button;
    if (maxValue() == minValue())
        return {button, button, maxLength, button};

    const qint64 range = qint64(maxValue()) - minValue();
    int length = int(qint64(pageStep()) * maxLength / (range + pageStep()));
    if (length < leastThumbLength || range >= largestScaledRange)
        length = leastThumbLength;
    length = std::min(length, maxLength);
    return {button, button + maxLength - length, length, button};
}

void ScrollBarSkin::scrollBarMetrics(int& sliderMin, int& sliderMax, int& sliderLength, int& buttonDim) const
{
    const Metrics now = currentMetrics();
    sliderMin = now.sliderMin;
    sliderMax = now.sliderMax;
    sliderLength = now.sliderLength;
    buttonDim = now.buttonDim;
}

void ScrollBarSkin::metrics(int& sliderMin, int& sliderMax, int& sliderLength, int& buttonDim) const
{
    scrollBarMetrics(sliderMin, sliderMax, sliderLength, buttonDim);
}

void ScrollBarSkin::sliderMinMax(int& sliderMin, int& sliderMax) const
{
    const Metrics now = currentMetrics();
    sliderMin = now.sliderMin;
    sliderMax = now.sliderMax;
}

QRect ScrollBarSkin::sliderRect() const
{
    return {thumbLeft, sliderPos, thumbPieces.centre.width(), currentMetrics().sliderLength};
}

int ScrollBarSkin::rangeValueToSliderPos(int value) const
{
    const Metrics now = currentMetrics();
    return now.sliderMin + positionFromValue(value, now.sliderMax - now.sliderMin);
}

int ScrollBarSkin::sliderPosToRangeValue(int position) const
{
    const Metrics now = currentMetrics();
    const int bounded = std::clamp(position, now.sliderMin, now.sliderMax);
    return valueFromPosition(bounded - now.sliderMin, now.sliderMax - now.sliderMin);
}

int ScrollBarSkin::calculateValueFromSlider() const
{
    return sliderPosToRangeValue(sliderPos);
}

void ScrollBarSkin::positionSliderFromValue()
{
    sliderPos = rangeValueToSliderPos(value());
}

ScrollBarControl ScrollBarSkin::pointOver(const QPoint& point) const
{
    if (!rect().contains(point))
        return None;
    const Metrics now = currentMetrics();
    if (point.y() < now.sliderMin)
        return SubLine;
    if (point.y() < sliderPos)
        return SubPage;
    if (point.y() < sliderPos + now.sliderLength)
        return Slider;
    if (point.y() < now.sliderMax + now.sliderLength)
        return AddPage;
    return AddLine;
}

void ScrollBarSkin::init_position()
{
    // Its size is known before a bar has loaded it, so that the first resize finds the buttons' places.
    const bool loaded = !subPictures.normal.isNull();
    const QSize button = loaded ? subPictures.normal.size() : builtinPicture("scroll_sub_normal").size();
    subRect = QRect(QPoint(0, 0), button);
    middleRect = QRect(0, button.height(), width(), height() - 2 * button.height());
    addRect = QRect(0, height() - button.height(), width(), button.height());
}

void ScrollBarSkin::valueChange()
{
    const QRect before = sliderRect();
    positionSliderFromValue();
    const QRect after = sliderRect();
    if (after != before) {
        thumbRect = after;
        repaintPart(before | after);
    }
    emit valueChanged(value());
}

void ScrollBarSkin::rangeChange()
{
    positionSliderFromValue();
    redrawThumb();
    repaintPart(middleRect);
}

void ScrollBarSkin::stepChange() {}

void ScrollBarSkin::action(ScrollBarControl control)
{
    const QPointer<ScrollBarSkin> self(this);
    switch (control) {
    case AddLine:
        emit nextLine();
        if (self)
            addLine();
        break;
    case SubLine:
        emit prevLine();
        if (self)
            subtractLine();
        break;
    case AddPage:
        emit nextPage();
        if (self)
            addPage();
        break;
    case SubPage:
        emit prevPage();
        if (self)
            subtractPage();
        break;
    case First:
    case Last:
    case Slider:
    case None:
        break;
    }
}

void ScrollBarSkin::startAutoRepeat()
{
    if (!repeater) {
        repeater = new QTimer(this);
        repeater->setObjectName(QStringLiteral("auto-repeat timer"));
        connect(repeater, &QTimer::timeout, this, &ScrollBarSkin::doAutoRepeat);
    }
    repeater->start(repeatDelay);
}

void ScrollBarSkin::stopAutoRepeat()
{
    delete repeater;
    repeater = nullptr;
}

void ScrollBarSkin::doAutoRepeat()
{
    if (!clickedAt) {
        stopAutoRepeat();
        return;
    }
    if (repeater && repeater->interval() != repeatInterval)
        repeater->setInterval(repeatInterval);
    action(pressedControl);
    syncX();
}

void ScrollBarSkin::mousePressEvent(QMouseEvent* event)
{
    if (maxValue() == minValue())
        return;
    const QPoint at = event->position().toPoint();
    clickedAt = true;
    pressedControl = pointOver(at);
    // Intended: the other button is repainted.
    if (pressedControl == SubLine)
        repaintPart(addRect);
    if (pressedControl == Slider)
        pressThumb(at);
    else if (pressedControl != None)
        pressPart();
}

void ScrollBarSkin::pressThumb(const QPoint& at)
{
    clickOffset = at.y() - sliderPos;
    slidePrevVal = value();
    sliderStartPos = sliderPos;
    const QPointer<ScrollBarSkin> self(this);
    emit sliderPressed();
    if (self)
        repaintPart(sliderRect());
}

void ScrollBarSkin::pressPart()
{
    const ScrollBarControl control = pressedControl;
    const QPointer<ScrollBarSkin> self(this);
    action(control);
    // A receiver may have deleted the bar, hidden it or seen the stylus lifted.
    if (!self || !clickedAt)
        return;
    startAutoRepeat();
    repaintButton(control);
    // The delay counts from here, so that a slow repaint does not turn one click into two steps.
    startAutoRepeat();
}

void ScrollBarSkin::mouseMoveEvent(QMouseEvent* event)
{
    if (!isVisible())
        clickedAt = false;
    if (!clickedAt)
        return;
    const QPoint at = event->position().toPoint();
    if (pressedControl == Slider && !dragThumb(at))
        return;
    if (pointOver(at) != pressedControl) {
        stopAutoRepeat();
        return;
    }
    if (repeater)
        return;
    const QPointer<ScrollBarSkin> self(this);
    action(pressedControl);
    if (self && clickedAt)
        startAutoRepeat();
}

int ScrollBarSkin::draggedPosition(const QPoint& at) const
{
    const Metrics now = currentMetrics();
    const qint64 wanted = hasStrayed(this, at) ? sliderStartPos : qint64(at.y()) - clickOffset;
    return int(std::clamp<qint64>(wanted, now.sliderMin, now.sliderMax));
}

// False where the thumb stays where it is or the bar is gone.
bool ScrollBarSkin::dragThumb(const QPoint& at)
{
    const int position = draggedPosition(at);
    if (position == sliderPos)
        return false;
    const int dragged = sliderPosToRangeValue(position);
    if (dragged == value())
        return true;
    const QPointer<ScrollBarSkin> self(this);
    directSetValue(dragged);
    valueChange();
    if (!self)
        return false;
    // Intended: valueChange() has emitted this already.
    emit valueChanged(value());
    return !self.isNull();
}

void ScrollBarSkin::mouseReleaseEvent(QMouseEvent* event)
{
    if (!clickedAt)
        return;
    const ScrollBarControl released = pressedControl;
    clickedAt = false;
    stopAutoRepeat();
    // Only a subclass's handler does anything with it: the press is over.
    mouseMoveEvent(event);
    pressedControl = None;
    if (released == Slider)
        releaseThumb();
    else
        repaintButton(released);
}

void ScrollBarSkin::releaseThumb()
{
    directSetValue(calculateValueFromSlider());
    const bool changed = value() != prevValue();
    const QPointer<ScrollBarSkin> self(this);
    emit sliderReleased();
    if (self && changed)
        emit valueChanged(value());
    if (self)
        repaintPart(sliderRect());
}

void ScrollBarSkin::repaintButton(ScrollBarControl control)
{
    if (control == SubLine)
        repaintPart(subRect);
    else if (control == AddLine)
        repaintPart(addRect);
}

void ScrollBarSkin::repaintPart(const QRect& part)
{
    // Not left to repaint(), to which a negative length means everything up to the edge.
    if (!part.isEmpty())
        repaint(part, false);
}

void ScrollBarSkin::resizeEvent(QResizeEvent* event)
{
    SkinBase::resizeEvent(event);
    positionSliderFromValue();
    init_position();
    redrawAddButton();
    redrawSubButton();
    redrawMiddle();
    redrawThumb();
}

void ScrollBarSkin::hideEvent(QHideEvent* event)
{
    SkinBase::hideEvent(event);
    // Shown again, the bar must not go on with a press that it may not have seen the end of.
    clickedAt = false;
    pressedControl = None;
    stopAutoRepeat();
}

void ScrollBarSkin::paintEvent(QPaintEvent* event)
{
    skinwidgets::paintThroughPixmap(this, event->region(), skinwidgets::Prepared::FromBackground,
                                    [this](QPixmap& target, const QRect& area) { paintParts(target, area); });
}

void ScrollBarSkin::paintParts(QPixmap& target, const QRect& area)
{
    const QImage& sub = pressedControl == SubLine ? subPictures.pressed : subPictures.normal;
    const QImage& add = pressedControl == AddLine ? addPictures.pressed : addPictures.normal;
    drawClippedImage(&target, troughImage, area, middleRect);
    drawClippedImage(&target, sub, area, subRect);
    drawClippedImage(&target, add, area, addRect);
    paintThumb(&target, area);
}

void ScrollBarSkin::paintThumb(QPixmap* pm, const QRect& r)
{
    const QImage& thumb = pressedControl == Slider ? thumbPressedImage : thumbImage;
    skinwidgets::blendIntoArea(*pm, r, thumb, sliderRect(), alphaOverride);
}
