#include "player/ordersettings.h"

#include "player/playback.h"

#include <QSettings>
#include <QStandardPaths>

namespace
{

const QString shuffleKey = QStringLiteral("order/shuffle");
const QString repeatKey = QStringLiteral("order/repeat");

bool isOn(const QSettings& settings, const QString& key)
{
    return settings.value(key).toString() == QLatin1String("true");
}

} // namespace

QString OrderSettings::standardFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/settings.ini");
}

OrderSettings::OrderSettings(Playback* playback, const QString& file, QObject* parent) : QObject(parent), m_file(file)
{
    const QSettings settings(m_file, QSettings::IniFormat);
    playback->setShuffled(isOn(settings, shuffleKey));
    playback->setRepeated(isOn(settings, repeatKey));
    connect(playback, &Playback::shuffledChanged, this, [this](bool on) { save(shuffleKey, on); });
    connect(playback, &Playback::repeatedChanged, this, [this](bool on) { save(repeatKey, on); });
}

void OrderSettings::save(const QString& key, bool on) const
{
    QSettings settings(m_file, QSettings::IniFormat);
    settings.setValue(key, on);
}
