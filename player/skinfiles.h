#ifndef SKINWIDGETS_PLAYER_SKINFILES_H
#define SKINWIDGETS_PLAYER_SKINFILES_H

#include "qtopia/config.h"

#include <QColor>
#include <QRect>
#include <QString>
#include <QStringList>

class QWidget;

// What the player itself reads from a skin, besides what the library's widgets read.
namespace skinfiles
{

// The skins that there are, in alphabetical order: each a directory with a config.
QStringList names();

// A file of the skin that the widget's window is named after.
QString path(const QWidget* widget, const QString& file);

// A group of that skin's config, empty where there is none.
Config group(const QWidget* widget, const QString& name);

// The pixels under KEY_x and KEY_y, and for a rectangle under KEY_width and KEY_height. Bounded to what a widget's
// place can be; 0 or less is an empty side.
QPoint point(const Config& group, const QString& key);
QRect rect(const Config& group, const QString& key);

// The colour that a key names, as #rrggbb or by its name; where it names none, the other one.
QColor color(const Config& group, const QString& key, const QColor& fallback);

} // namespace skinfiles

#endif
