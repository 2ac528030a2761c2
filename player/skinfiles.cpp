#include "player/skinfiles.h"

#include "qtopia/qpeapplication.h"

#include <QDir>
#include <QFileInfo>
#include <QWidget>

#include <algorithm>

namespace
{

QDir skinRoot()
{
    return QDir(QPEApplication::qpeDir() + QStringLiteral("pics"));
}

int number(const Config& group, const QString& key, int least)
{
    return std::clamp(group.readNumEntry(key), least, QWIDGETSIZE_MAX);
}

} // namespace

QStringList skinfiles::names()
{
    const QDir root = skinRoot();
    QStringList names = root.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    names.removeIf(
        [&root](const QString& name) { return !QFileInfo(root.filePath(name + QStringLiteral("/config"))).isFile(); });
    return names;
}

QString skinfiles::path(const QWidget* widget, const QString& file)
{
    return skinRoot().filePath(widget->window()->objectName() + QLatin1Char('/') + file);
}

Config skinfiles::group(const QWidget* widget, const QString& name)
{
    Config config(path(widget, QStringLiteral("config")), Config::File);
    config.setGroup(name);
    return config;
}

QPoint skinfiles::point(const Config& group, const QString& key)
{
    return {number(group, key + QLatin1String("_x"), -QWIDGETSIZE_MAX),
            number(group, key + QLatin1String("_y"), -QWIDGETSIZE_MAX)};
}

QRect skinfiles::rect(const Config& group, const QString& key)
{
    return {point(group, key),
            QSize(number(group, key + QLatin1String("_width"), 0), number(group, key + QLatin1String("_height"), 0))};
}

QColor skinfiles::color(const Config& group, const QString& key, const QColor& fallback)
{
    const QColor read(group.readEntry(key));
    return read.isValid() ? read : fallback;
}
