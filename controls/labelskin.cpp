#include "controls/labelskin.h"

#include <QPainter>

LabelSkin::LabelSkin(QWidget* parent, const char* name, unsigned int flags) : ToolkitLabel(parent, name, flags)
{
    // What is inside of the mask gets erased with the background colour.
    setAutoFillBackground(true);
    setAutoMask(true);
}

LabelSkin::~LabelSkin() = default;

void LabelSkin::set_bgColor(QColor c)
{
    QPalette colours = palette();
    colours.setColor(QPalette::Window, c);
    setPalette(colours);
}

void LabelSkin::set_textColor(QColor c)
{
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, c);
    setPalette(colours);
}

void LabelSkin::updateMask()
{
    setMaskBitmap(contentsMask());
    repaint(true);
}

void LabelSkin::drawContents(QPainter* painter)
{
    // As the mask is drawn: soft edges would be cut off in the middle by it.
    QFont crisp = painter->font();
    crisp.setStyleStrategy(QFont::NoAntialias);
    painter->setFont(crisp);
    ToolkitLabel::drawContents(painter);
}
