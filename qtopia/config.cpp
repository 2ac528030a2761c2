#include "qtopia/config.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{

QString pathOf(const QString& name, Config::Domain domain)
{
    if (domain == Config::File)
        return name;
    return QDir::homePath() + QLatin1String("/Settings/") + name + QLatin1String(".conf");
}

QStringView headingName(QStringView heading)
{
    const QStringView name = heading.mid(1);
    const qsizetype bracket = name.indexOf(u']');
    return (bracket < 0 ? name : name.left(bracket)).trimmed();
}

// Without the line that the limit cuts.
QByteArray firstWholeLines(const QByteArray& bytes, qint64 limit)
{
    if (bytes.size() <= limit)
        return bytes;
    return bytes.left(bytes.lastIndexOf('\n', limit - 1) + 1);
}

} // namespace

Config::Config(const QString& name, Domain domain)
{
    read(pathOf(name, domain));
}

bool Config::hasKey(const QString& key) const
{
    const auto group = m_groups.constFind(m_group);
    return group != m_groups.constEnd() && group->contains(key);
}

QString Config::readEntry(const QString& key, const QString& fallback) const
{
    const auto group = m_groups.constFind(m_group);
    return group != m_groups.constEnd() ? group->value(key, fallback) : fallback;
}

int Config::readNumEntry(const QString& key, int fallback) const
{
    if (!hasKey(key))
        return fallback;
    const QString value = readEntry(key);
    // toInt() would stop reading at a NUL.
    return value.contains(QChar::Null) ? 0 : value.toInt();
}

bool Config::readBoolEntry(const QString& key, bool fallback) const
{
    if (!hasKey(key))
        return fallback;
    return readNumEntry(key) != 0 || readEntry(key).compare(QLatin1String("true"), Qt::CaseInsensitive) == 0;
}

QStringList Config::readListEntry(const QString& key, QChar separator) const
{
    return readEntry(key).split(separator, Qt::SkipEmptyParts);
}

void Config::read(const QString& path)
{
    // Qt prints warnings about names that hold a NUL, and opening what is no regular file could block.
    if (path.contains(QChar::Null) || !QFileInfo(path).isFile())
        return;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return;
    m_valid = true;
    parse(firstWholeLines(file.read(largestFile + 1), largestFile));
}

void Config::parse(const QByteArray& bytes)
{
    // Decoding skips a byte order mark and lets NUL bytes pass.
    const QString text = QString::fromUtf8(bytes);
    Group* group = nullptr;
    for (const QStringView line : QStringView(text).tokenize(u'\n'))
        group = parseLine(line.trimmed(), group);
}

// The group that the next line belongs to; null stands for the one above the first heading.
Config::Group* Config::parseLine(QStringView line, Group* group)
{
    if (line.startsWith(u'#'))
        return group;
    if (line.startsWith(u'['))
        return &m_groups[headingName(line).toString()];
    const qsizetype equals = line.indexOf(u'=');
    const QStringView key = line.left(qMax<qsizetype>(equals, 0)).trimmed();
    if (key.isEmpty())
        return group;
    if (!group)
        group = &m_groups[QString()];
    // An empty value is not null: its view stands in the text. Null is what a missing key gives.
    group->insert(key.toString(), line.mid(equals + 1).trimmed().toString());
    return group;
}
