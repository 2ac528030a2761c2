#include "controls/imagebutton.h"

#include "qtopia/resource.h"
#include "toolkit/application.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

namespace
{

enum State { NormalState, PressedState, FocusState, DisabledState };

// Keys of the device, which have no names.
constexpr int firstDeviceKey = 0x2104;
constexpr int lastDeviceKey = 0x2109;

bool isForParent(int key)
{
    return key == Qt::Key_Escape || (key >= firstDeviceKey && key <= lastDeviceKey);
}

QSize pieceSize(const QPixmap& strip)
{
    return {strip.width() / 4, strip.height()};
}

// Pieces that reach beyond the strip are transparent there.
void cutStrip(QPixmap (&set)[4], const QPixmap& strip, const QSize& size)
{
    for (int k = 0; k < 4; ++k) {
        set[k] = skinwidgets::createPixmap32(size);
        bitBlt(&set[k], QPoint(), &strip, QRect(QPoint(k * size.width(), 0), size));
    }
}

} // namespace

ImageButton::ImageButton(QWidget* parent, const char* name, WFlags f)
    : ToolkitWidget(parent, name, f),
      imageName(objectName())
{
    setFocusPolicy(Qt::StrongFocus);
    installEventFilter(parent);
}

ImageButton::~ImageButton() = default;

void ImageButton::setButtonImage(bool separateFiles)
{
    if (separateFiles) {
        // Intended: the stored name keeps what is put before or behind it.
        imageName.prepend(skinwidgets::applicationName() + QLatin1Char('/'));
        loadFiles(pixmaps[0], QString());
        if (toggleMode)
            loadFiles(pixmaps[1], QStringLiteral("2"));
        return;
    }
    const QPixmap strip = Resource::loadPixmap(imageName + QLatin1String("_bt"));
    cutStrip(pixmaps[0], strip, pieceSize(strip));
    if (!toggleMode)
        return;
    imageName += QLatin1Char('2');
    cutStrip(pixmaps[1], Resource::loadPixmap(imageName + QLatin1String("_bt")), pieceSize(strip));
}

void ImageButton::loadFiles(QPixmap (&set)[4], const QString& suffix) const
{
    const char* const stateNames[] = {"_normal", "_press", "_focus", "_disable"};
    for (int k = 0; k < 4; ++k)
        set[k] = Resource::loadPixmap(imageName + QLatin1String(stateNames[k]) + suffix);
}

void ImageButton::setToggle()
{
    toggleMode = true;
}

void ImageButton::changeToggleState(bool on)
{
    const QPointer<ImageButton> self(this);
    toggleOn = on;
    emit toggled(on);
    if (self)
        repaint(false);
}

void ImageButton::flip()
{
    toggleOn = !toggleOn;
    emit toggled(toggleOn);
}

// For changes that follow a signal or a change of focus: a receiver may have disabled the button.
void ImageButton::showState(int newState)
{
    if (state != DisabledState)
        state = newState;
    repaint(false);
}

void ImageButton::setEnabled(bool enable)
{
    if (enable) {
        state = savedState == FocusState ? FocusState : NormalState;
    } else {
        savedState = state;
        state = DisabledState;
    }
    repaint(false);
    // Disabled through a plain QWidget pointer, the button would stay deaf. The event of it leads here once more.
    if (enable && testAttribute(Qt::WA_ForceDisabled))
        QWidget::setEnabled(true);
}

void ImageButton::setDisabled(bool disable)
{
    setEnabled(!disable);
}

void ImageButton::changeEvent(QEvent* event)
{
    ToolkitWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange)
        setEnabled(isEnabled());
}

void ImageButton::setFocus()
{
    if (state == DisabledState)
        return;
    ToolkitWidget::setFocus();
    showState(FocusState);
}

void ImageButton::clearFocus()
{
    if (state == DisabledState)
        return;
    ToolkitWidget::clearFocus();
    showState(NormalState);
}

void ImageButton::focusInEvent(QFocusEvent* event)
{
    if (state == DisabledState)
        return;
    showState(FocusState);
    ToolkitWidget::focusInEvent(event);
}

void ImageButton::focusOutEvent(QFocusEvent* event)
{
    if (state == DisabledState)
        return;
    showState(NormalState);
    ToolkitWidget::focusOutEvent(event);
}

void ImageButton::paintEvent(QPaintEvent* /*event*/)
{
    if (state < NormalState || state > DisabledState)
        return;
    QPainter(this).drawPixmap(0, 0, pixmaps[toggleOn][state]);
}

void ImageButton::mousePressEvent(QMouseEvent* event)
{
    if (state == DisabledState)
        return;
    const QPointer<ImageButton> self(this);
    state = PressedState;
    emit pressed();
    if (!self)
        return;
    repaint(false);
    ToolkitWidget::mousePressEvent(event);
    // Today's handler would pass the stylus on to the parent, which in the old interface saw nothing of it.
    event->accept();
}

void ImageButton::mouseReleaseEvent(QMouseEvent* event)
{
    if (state == DisabledState)
        return;
    const QPointer<ImageButton> self(this);
    if (rect().contains(event->position().toPoint())) {
        if (toggleMode)
            flip();
        else
            emit clicked();
    }
    if (!self)
        return;
    showState(FocusState);
    ToolkitWidget::mouseReleaseEvent(event);
    event->accept();
}

void ImageButton::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return) {
        pressWithKey();
        return;
    }
    const QPointer<ImageButton> self(this);
    if (isForParent(event->key()))
        handToParent(event);
    if (self)
        repaint(false);
}

// Intended: a toggle button flips on the press, and the release emits clicked() all the same.
void ImageButton::pressWithKey()
{
    if (state == DisabledState)
        return;
    const QPointer<ImageButton> self(this);
    state = PressedState;
    emit pressed();
    if (self && toggleMode)
        flip();
    if (self)
        repaint(false);
}

void ImageButton::handToParent(QKeyEvent* event)
{
    if (QWidget* parent = parentWidget())
        qApp->notify(parent, event);
    // Not accepted by the parent, it would come to it a second time.
    event->accept();
}

void ImageButton::keyReleaseEvent(QKeyEvent* event)
{
    const QPointer<ImageButton> self(this);
    // Intended: any key's release shows even a disabled button focused.
    state = FocusState;
    if (event->key() == Qt::Key_Return)
        emit clicked();
    if (self)
        repaint(false);
}
