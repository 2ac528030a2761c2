#include "player/mediabackend.h"

#include "player/playback.h"

#include <QLibraryInfo>
#include <QLoggingCategory>
#include <QVersionNumber>

namespace
{

constexpr char backendVariable[] = "QT_MEDIA_BACKEND";

// Before 6.5 the ffmpeg backend has no clock without a sound device: it crashes on pause with an audio output and
// plays a thousand times too slowly without one.
bool ffmpegNeedsDevice()
{
    return QLibraryInfo::version() < QVersionNumber(6, 5);
}

QtMessageHandler defaultHandler = nullptr;

// The search for a sound server complains in the default category, which no logging rule can tell from our own.
void dropServerSearch(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!message.startsWith(QLatin1String("PulseAudioService:")))
        defaultHandler(type, context, message);
}

} // namespace

void mediabackend::choose()
{
    if (!qEnvironmentVariableIsSet(backendVariable) && ffmpegNeedsDevice())
        qputenv(backendVariable, "gstreamer");
}

void mediabackend::silence()
{
    if (!qEnvironmentVariableIsEmpty("QT_LOGGING_RULES"))
        return;
    QLoggingCategory::setFilterRules(QStringLiteral("qt.multimedia.*=false"));
    defaultHandler = qInstallMessageHandler(dropServerSearch);
}

QString mediabackend::problem()
{
    if (Playback::hasSoundDevice() || !ffmpegNeedsDevice() || qgetenv(backendVariable) != "ffmpeg")
        return QString();
    return QStringLiteral("the ffmpeg backend of this Qt cannot play without a sound device; unset %1")
        .arg(QLatin1String(backendVariable));
}
