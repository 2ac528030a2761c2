#include "controls/titlebar.h"

#include "controls/imagebutton.h"
#include "qtopia/resource.h"
#include "toolkit/application.h"

#include <QPainter>

namespace
{

constexpr QRect barRect(0, 0, 480, 23);
constexpr QRect closeRect(450, 1, 20, 21);
// From the bar's edge to the title, and from there to the file name.
constexpr int textGap = 10;
constexpr QRgb titleColour = qRgb(255, 249, 178);
constexpr QRgb fileNameColour = qRgb(255, 255, 255);

// Returns where the text ends.
int drawText(QPainter& painter, int x, const QString& text, const QColor& colour)
{
    const int width = painter.fontMetrics().horizontalAdvance(text);
    painter.setPen(colour);
    painter.drawText(x, 0, width, barRect.height(), Qt::AlignLeft | Qt::AlignVCenter, text);
    return x + width;
}

} // namespace

TitleBar::TitleBar(QWidget* parent, const char* name, unsigned int flags)
    : ToolkitWidget(parent, name, flags),
      closeButton(new ImageButton(this, "close", Qt::WStyle_Customize))
{
    ToolkitWidget::setBackgroundPixmap(
        Resource::loadPixmap(skinwidgets::applicationName() + QLatin1String("/title_bg")));
    closeButton->setFocusPolicy(Qt::ClickFocus);
    closeButton->setGeometry(closeRect);
    closeButton->setButtonImage(true);
    connect(closeButton, SIGNAL(clicked()), this, SLOT(sendClicked()));
    ToolkitWidget::setGeometry(barRect);
}

TitleBar::~TitleBar() = default;

void TitleBar::setTitleBarText(QString text)
{
    title = text;
}

void TitleBar::setFileNameText(QString text)
{
    fileName = text;
    repaint(true);
}

void TitleBar::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const int end = drawText(painter, textGap, title, titleColour);
    if (!fileName.isNull())
        drawText(painter, end + textGap, fileName, fileNameColour);
}

void TitleBar::sendClicked()
{
    emit exitClicked();
}
