#include "skinbase/skinbase.h"

#include "skinbase/skinreader.h"
#include "toolkit/offscreen.h"
#include "toolkit/skinlog.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QSet>

#include <algorithm>

using skinwidgets::SkinReader;

namespace
{

QImage emptyWorkImage(const QSize& size)
{
    if (size.isEmpty())
        return {};
    QImage image(size, QImage::Format_ARGB32);
    image.fill(0x00ffffffU);
    return image;
}

// A picture of the widget's size for its background, in the palette's window colour.
QImage emptyBackground(const QWidget* widget)
{
    QImage image(widget->size(), QImage::Format_ARGB32);
    image.fill(widget->palette().color(widget->backgroundRole()).rgb());
    return image;
}

QSet<QRgb> pixelValues(const QImage& picture)
{
    QSet<QRgb> values;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            values.insert(picture.pixel(x, y));
    return values;
}

} // namespace

SkinBase::SkinBase(QWidget* parent, const char* name, WFlags f) : ToolkitWidget(parent, name, f)
{
    setFocusPolicy(Qt::StrongFocus);
    // Every pixel comes from the off-screen picture.
    setWFlags(Qt::WResizeNoErase | Qt::WRepaintNoErase);
}

SkinBase::~SkinBase()
{
    // A button whose name a later one took stands in the list only, one that a subclass entered maybe in the map only.
    QSet<SkinButton*> owned(buttonMap.begin(), buttonMap.end());
    owned.unite(QSet<SkinButton*>(buttons.begin(), buttons.end()));
    qDeleteAll(owned);
    delete backgroundImage;
    delete maskImage;
}

void SkinBase::do_configloading(QString section)
{
    SkinReader skin(this);
    skin.setGroup(section);
    delete backgroundImage;
    backgroundImage = new QImage(skin.picture(QStringLiteral("background")));
    delete maskImage;
    maskImage = new QImage(skin.picture(QStringLiteral("maskimage")));
    resize(backgroundImage->width(), backgroundImage->height());

    const int count = skin.number(QStringLiteral("count"));
    if (count > maxButtons)
        skin.report(QStringLiteral("count: only %1 buttons are loaded").arg(maxButtons));
    if (count < 1) {
        setFocusPolicy(Qt::NoFocus);
        return;
    }
    const size_t before = buttons.size();
    loadButtons(skin, section, std::min(count, maxButtons));
    if (skinLog().isDebugEnabled())
        reportUnusedMasks(skin, section, before);
}

void SkinBase::loadButtons(SkinReader& skin, const QString& section, int count)
{
    for (int i = 0; i < count; ++i) {
        skin.setGroup(section + QLatin1String("_BUTTON") + QString::number(i));
        std::unique_ptr<SkinButton> button = loadButton(skin);
        buttonMap.insert(button->name, button.get());
        buttons.push_back(button.release());
        focusButton = buttons.end();
    }
}

std::unique_ptr<SkinButton> SkinBase::loadButton(const SkinReader& skin)
{
    auto button = std::make_unique<SkinButton>();
    button->name = skin.entry(QStringLiteral("name"));
    button->mask = skin.entry(QStringLiteral("mask")).toUInt(nullptr, 16);
    button->xpos = skin.number(QStringLiteral("xpos"));
    button->ypos = skin.number(QStringLiteral("ypos"));
    button->image = skin.picture(QStringLiteral("image"));
    for (int k = 0; k < 4; ++k)
        button->stateImage[k] = get_buttonimage(button->image, k);
    button->workImage = emptyWorkImage(button->stateImage[0].size());
    return button;
}

void SkinBase::reportUnusedMasks(SkinReader& skin, const QString& section, size_t first) const
{
    const QSet<QRgb> values = pixelValues(*maskImage);
    for (size_t i = first; i < buttons.size(); ++i) {
        if (values.contains(buttons[i]->mask))
            continue;
        skin.setGroup(section + QLatin1String("_BUTTON") + QString::number(i - first));
        skin.report(
            QStringLiteral("mask: no pixel of the mask picture is %1").arg(buttons[i]->mask, 8, 16, QLatin1Char('0')));
    }
}

QImage SkinBase::get_buttonimage(QImage strip, int index)
{
    if (index < 0)
        return strip.copy();
    const int width = strip.width() / 4;
    // Any index is taken; what lies beyond the strip is empty, however far.
    const qint64 left = std::min<qint64>(qint64(width) * index, strip.width());
    return strip.copy(static_cast<int>(left), 0, width, strip.height());
}

void SkinBase::setBackgroundImage(QImage picture)
{
    delete backgroundImage;
    backgroundImage = new QImage(std::move(picture));
    setAlphaOverride(alphaOverride);
}

void SkinBase::setAlphaOverride(unsigned char alpha)
{
    alphaOverride = alpha;
    if (backgroundImage && !backgroundImage->isNull() && !size().isEmpty()) {
        QImage background = emptyBackground(this);
        bitBlt(&background, 0, 0, backgroundImage);
        skinwidgets::overwriteAlpha(background, alpha);
        ToolkitWidget::setBackgroundPixmap(skinwidgets::pixmapFromStraight(std::move(background)));
    }
    redrawButtonImages();
}

void SkinBase::setBackgroundPixmap(const QPixmap& parentBackground)
{
    if (!size().isEmpty()) {
        QImage background = emptyBackground(this);
        bitBlt(&background, QPoint(), &parentBackground, QRect(pos(), size()));
        // The panel's own alpha is not written here; the background keeps what lies beneath it.
        if (backgroundImage)
            skinwidgets::blendOver(background, *backgroundImage, QPoint());
        ToolkitWidget::setBackgroundPixmap(skinwidgets::pixmapFromStraight(std::move(background)));
    }
    redrawButtonImages();
}

void SkinBase::redrawButtonImages()
{
    for (SkinButton* button : std::as_const(buttonMap)) {
        for (int k = 0; k < 4; ++k) {
            if (button->stateImage[k].width() <= 0)
                continue;
            button->stateImage[k] = get_buttonimage(button->image, k);
            redrawImage(button->stateImage[k], button->xpos, button->ypos);
        }
    }
}

void SkinBase::redrawImage(QImage& picture, int x, int y)
{
    if (picture.isNull())
        return;
    QImage composed(picture.size(), QImage::Format_ARGB32);
    skinwidgets::fillFromBackground(composed, this, QPoint(x, y));
    skinwidgets::blendColours(composed, picture, QPoint());
    skinwidgets::overwriteAlpha(composed, alphaOverride);
    picture = std::move(composed);
}

void SkinBase::paintEvent(QPaintEvent* event)
{
    skinwidgets::paintThroughPixmap(this, event->region(), skinwidgets::Prepared::FromBackground,
                                    [this](QPixmap& target, const QRect& area) { drawButtons(&target, area); });
}

void SkinBase::drawButtons(QPixmap* target, const QRect& area)
{
    for (const SkinButton* button : std::as_const(buttonMap)) {
        // Hidden, and any value that is no state, has no picture.
        if (button->state < Normal || button->state > Disabled)
            continue;
        const int picture = button->state == Focus && !hasFocus() ? Normal : button->state;
        drawClippedImage(target, button->stateImage[picture], area, button->rect());
    }
}

void SkinBase::drawClippedImage(QPixmap* target, QImage picture, const QRect& area, const QRect& pictureRect)
{
    const QRect common = area & pictureRect;
    if (common.isEmpty())
        return;
    bitBlt(target, common.topLeft() - area.topLeft(), &picture, common.translated(-pictureRect.topLeft()));
}

void SkinBase::drawButton(const SkinButton* button)
{
    // Intended: the size counts from the panel's origin, so a margin right of and below the button is repainted too.
    update(button->rectWithMargin());
}

SkinButton* SkinBase::findButton(const QString& name) const
{
    SkinButton* button = buttonMap.value(name);
    return button && button->name == name ? button : nullptr;
}

void SkinBase::setButtonState(QString name, SkinButtonState newState)
{
    SkinButton* button = findButton(name);
    if (!button)
        return;
    if (button->state == Pressed) {
        const QPointer<SkinBase> self(this);
        releaseButton(name);
        if (!self)
            return;
    }
    if (newState == Focus)
        setButtonFocus(name);
    else
        button->state = newState;
    drawButton(button);
}

void SkinBase::hideButton(QString name)
{
    setButtonState(name, Hidden);
}

void SkinBase::showNormal(QString name)
{
    setButtonState(name, Normal);
}

void SkinBase::showFocus(QString name)
{
    setButtonState(name, Focus);
}

void SkinBase::disableButton(QString name)
{
    if (focusButton != buttons.end() && (*focusButton)->name == name)
        focusNextButton();
    setButtonState(name, Disabled);
}

void SkinBase::update_state(const QString& /*state*/) {}

void SkinBase::pressButton(QString name)
{
    if (buttonHeld)
        return;
    SkinButton* button = findButton(name);
    if (!button)
        return;
    setButtonFocus(name);
    buttonHeld = true;
    button->state = Pressed;
    drawButton(button);
}

void SkinBase::releaseButton(QString name)
{
    SkinButton* button = findButton(name);
    if (!buttonHeld || !button || button->state != Pressed)
        return;
    buttonHeld = false;
    button->state = Focus;
    drawButton(button);
    emit button_clicked(this, name);
}

QString SkinBase::getFocus()
{
    return focusButton == buttons.end() ? QLatin1String("") : (*focusButton)->name;
}

void SkinBase::setButtonFocus(QString name)
{
    if (buttonHeld)
        return;
    if (focusButton != buttons.end()) {
        SkinButton* old = *focusButton;
        if (old->name == name)
            return;
        if (old->state == Focus) {
            old->state = Normal;
            drawButton(old);
        }
    }
    focusButton = std::find(buttons.begin(), buttons.end(), findButton(name));
    if (focusButton != buttons.end())
        (*focusButton)->state = Focus;
}

void SkinBase::focusNextButton()
{
    focusNeighbour(1);
}

void SkinBase::focusPrevButton()
{
    focusNeighbour(-1);
}

void SkinBase::focusNeighbour(int step)
{
    const auto count = static_cast<int>(buttons.size());
    const auto start = static_cast<int>(focusButton - buttons.begin());
    // With no focused button the start lies past the last one, so that the first step leads to an end of the row.
    int at = start;
    for (int steps = 0; steps < count; ++steps) {
        at += step;
        if (at >= count)
            at = 0;
        else if (at < 0)
            at = count - 1;
        if (at == start)
            return;
        if (buttons[static_cast<size_t>(at)]->state != Normal)
            continue;
        setButtonFocus(buttons[static_cast<size_t>(at)]->name);
        if (focusButton != buttons.end())
            drawButton(*focusButton);
        return;
    }
}

void SkinBase::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Left:
        focusPrevButton();
        break;
    case Qt::Key_Right:
        focusNextButton();
        break;
    case Qt::Key_Return:
        for (const SkinButton* button : QMap<QString, SkinButton*>(buttonMap))
            if (button->state == Focus)
                pressButton(button->name);
        break;
    default:
        // Intended: no key is passed on to the parent.
        break;
    }
}

void SkinBase::keyReleaseEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return)
        releasePressedButtons();
}

void SkinBase::mousePressEvent(QMouseEvent* event)
{
    const QPoint at = event->position().toPoint();
    if (!maskImage || !maskImage->valid(at))
        return;
    const QRgb pixel = maskImage->pixel(at);
    for (const SkinButton* button : QMap<QString, SkinButton*>(buttonMap))
        if (button->mask == pixel && button->state != Disabled && button->state != Hidden)
            pressButton(button->name);
}

void SkinBase::mouseReleaseEvent(QMouseEvent* /*event*/)
{
    // Intended: lifting the stylus anywhere completes the click.
    releasePressedButtons();
}

void SkinBase::releasePressedButtons()
{
    const QPointer<SkinBase> self(this);
    // The panel may be deleted or loaded again by a receiver of button_clicked, so the walk has a map of its own.
    for (const SkinButton* button : QMap<QString, SkinButton*>(buttonMap)) {
        if (button->state == Pressed)
            releaseButton(button->name);
        if (!self)
            return;
    }
}

void SkinBase::focusInEvent(QFocusEvent* /*event*/)
{
    if (focusButton != buttons.end())
        drawButton(*focusButton);
}

void SkinBase::focusOutEvent(QFocusEvent* /*event*/)
{
    if (focusButton != buttons.end())
        drawButton(*focusButton);
}
