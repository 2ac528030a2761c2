#include "skinbase/skinreader.h"

#include "qtopia/qpeapplication.h"
#include "toolkit/pictureloader.h"
#include "toolkit/skinlog.h"

#include <QFileInfo>
#include <QWidget>

namespace skinwidgets
{

namespace
{

// Window names count as Latin-1, whatever else an object name could hold today.
QString skinDirectory(const QWidget* widget)
{
    const QByteArray name = widget->window()->objectName().toLatin1();
    return QPEApplication::qpeDir() + QLatin1String("pics/") + QString::fromLatin1(name);
}

} // namespace

SkinReader::SkinReader(const QWidget* widget)
    : m_directory(skinDirectory(widget)),
      m_config(m_directory + QLatin1String("/config"), Config::File)
{
    if (skinLog().isDebugEnabled() && !QFileInfo(m_directory + QLatin1String("/config")).isFile())
        qCDebug(skinLog).noquote() << m_directory + QLatin1String("/config") << "file is missing";
}

void SkinReader::setGroup(const QString& group)
{
    m_group = group;
    m_config.setGroup(group);
    if (skinLog().isDebugEnabled() && !m_config.hasGroup(group))
        report(QStringLiteral("group is missing"));
}

QString SkinReader::entry(const QString& key) const
{
    reportMissing(key);
    return m_config.readEntry(key);
}

int SkinReader::number(const QString& key) const
{
    reportMissing(key);
    return m_config.readNumEntry(key, -1);
}

QString SkinReader::picturePath(const QString& key) const
{
    return m_directory + QLatin1Char('/') + entry(key);
}

QImage SkinReader::picture(const QString& key) const
{
    const QString path = picturePath(key);
    QString error = QStringLiteral("the skin's pictures are too large together");
    QImage picture;
    if (m_pixelsLeft > 0)
        picture = loadPicture(path, &error);
    m_pixelsLeft -= qint64(picture.width()) * picture.height();
    if (picture.isNull() && skinLog().isDebugEnabled())
        report(key + QLatin1String(": ") + path + QLatin1String(": ") + error);
    return picture;
}

void SkinReader::report(const QString& fault) const
{
    qCDebug(skinLog).noquote() << m_directory + QLatin1String("/config") << '[' + m_group + ']' << fault;
}

void SkinReader::reportMissing(const QString& key) const
{
    if (skinLog().isDebugEnabled() && !m_config.hasKey(key))
        report(key + QLatin1String(": key is missing"));
}

} // namespace skinwidgets
