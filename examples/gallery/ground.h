#ifndef SKINWIDGETS_EXAMPLES_GALLERY_GROUND_H
#define SKINWIDGETS_EXAMPLES_GALLERY_GROUND_H

#include "qtopia/resource.h"
#include "toolkit/toolkitwidget.h"

// A picture of the skin that the window is named after.
inline QPixmap skinPicture(const QWidget* widget, const QString& name)
{
    return Resource::loadPixmap(widget->window()->objectName() + QLatin1Char('/') + name);
}

// What an application's screen is for the controls on it: a widget with a background picture of its size.
class Ground : public ToolkitWidget<QWidget>
{
public:
    Ground(const QPixmap& picture, QWidget* parent) : ToolkitWidget(parent)
    {
        setBackgroundPixmap(picture);
        setFixedSize(picture.size());
    }
};

#endif
