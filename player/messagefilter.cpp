#include "player/messagefilter.h"

#include <QLoggingCategory>

namespace
{

QtMessageHandler previousHandler = nullptr;
bool keepsBackends = false;

bool isLostMarker(QtMsgType type, const QString& message)
{
    constexpr QLatin1String start(" index =");
    return type == QtWarningMsg && message.size() == start.size() + 1 && message.startsWith(start) &&
           message.back().isDigit();
}

// The search for a sound server complains in the default category, which no logging rule can tell from our own.
bool isServerSearch(const QString& message)
{
    return message.startsWith(QLatin1String("PulseAudioService:"));
}

void filter(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (isLostMarker(type, message) || (!keepsBackends && isServerSearch(message)))
        return;
    previousHandler(type, context, message);
}

} // namespace

void installMessageFilter()
{
    keepsBackends = !qEnvironmentVariableIsEmpty("QT_LOGGING_RULES");
    if (!keepsBackends)
        QLoggingCategory::setFilterRules(QStringLiteral("qt.multimedia.*=false\nqt.gui.imageio*=false"));
    previousHandler = qInstallMessageHandler(filter);
}
