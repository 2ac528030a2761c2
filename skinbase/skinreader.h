#ifndef SKINWIDGETS_SKINBASE_SKINREADER_H
#define SKINWIDGETS_SKINBASE_SKINREADER_H

#include "qtopia/config.h"
#include "toolkit/export.h"

#include <QImage>
#include <QString>

class QWidget;

namespace skinwidgets
{

// Reads the skin that a widget is dressed by: the directory pics/NAME/ of the installation, NAME being the object name
// of the widget's window, and the file config in it. Everything missing gives its default; what was missing goes to the
// log.
class SkinReader
{
public:
    // The most pixels that one reader hands out, which bounds what a hostile config can make a widget hold.
    static constexpr qint64 mostPixels = qint64(32) * 1024 * 1024;

    explicit SkinReader(const QWidget* widget);

    // The skin directory, without a slash at the end.
    QString directory() const { return m_directory; }

    void setGroup(const QString& group);

    // The entry of a key, null where it is missing.
    QString entry(const QString& key) const;
    // The number of a key, -1 where it is missing and 0 where it is no number.
    int number(const QString& key) const;
    // The path of the picture file that a key names, relative to the skin directory.
    QString picturePath(const QString& key) const;
    // The picture that a key names, as 32-bit pixels; null where key or file are missing or the file is no picture.
    // So does one that no longer fits what all pictures of one reader may hold together.
    QImage picture(const QString& key) const;

    // Adds a line about the current group to the log.
    void report(const QString& fault) const;

private:
    void reportMissing(const QString& key) const;

    QString m_directory;
    Config m_config;
    QString m_group;
    mutable qint64 m_pixelsLeft = mostPixels;
};

} // namespace skinwidgets

#endif
