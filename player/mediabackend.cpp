#include "player/mediabackend.h"

#include "player/playback.h"

#include <QLibraryInfo>
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

} // namespace

void mediabackend::choose()
{
    if (!qEnvironmentVariableIsSet(backendVariable) && ffmpegNeedsDevice())
        qputenv(backendVariable, "gstreamer");
}

QString mediabackend::problem()
{
    if (Playback::hasSoundDevice() || !ffmpegNeedsDevice() || qgetenv(backendVariable) != "ffmpeg")
        return QString();
    return QStringLiteral("the ffmpeg backend of this Qt cannot play without a sound device; unset %1")
        .arg(QLatin1String(backendVariable));
}
