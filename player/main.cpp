#include "player/mediabackend.h"
#include "player/messagefilter.h"
#include "player/playerwindow.h"
#include "player/screenshot.h"
#include "qtopia/qpeapplication.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QTimer>

#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace
{

enum ExitCode { Done = 0, Failed = 1, NoSkin = 2 };

struct Options {
    QString skin;
    QString screenshot;
    // Seconds, negative where the program goes on until it is closed.
    double quitAfter = -1;
    QStringList files;
};

void complain(const QString& message)
{
    std::fprintf(stderr, "skinplayer: %s\n", qPrintable(message));
}

// Only before there is a window or a player, which this does not destroy.
[[noreturn]] void quit(const QString& message, ExitCode code)
{
    complain(message);
    std::exit(code);
}

double readSeconds(const QString& text)
{
    bool ok = false;
    const double seconds = text.toDouble(&ok);
    // Written so that it is false for what is not a number, too; a timer holds 24 days at most.
    if (!ok || !(seconds >= 0 && seconds <= 1e6))
        quit(QStringLiteral("not a number of seconds: %1").arg(text), Failed);
    return seconds;
}

Options readOptions(const QCoreApplication& application)
{
    const QCommandLineOption skin(QStringLiteral("skin"), QStringLiteral("Look of the player (default: night)."),
                                  QStringLiteral("name"), QStringLiteral("night"));
    const QCommandLineOption screenshot(QStringLiteral("screenshot"),
                                        QStringLiteral("Write a picture of the window to <file> and quit."),
                                        QStringLiteral("file"));
    const QCommandLineOption quitAfter(QStringLiteral("quit-after"), QStringLiteral("Quit after <seconds>."),
                                       QStringLiteral("seconds"));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Plays sound files in a window drawn from pictures.\n"
                       "Left and Right move among the buttons, Return presses one, Escape quits."));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({skin, screenshot, quitAfter});
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QStringLiteral("Files to play one after the other (default: a sound that ships)."),
                                 QStringLiteral("[files...]"));
    parser.process(application);

    Options options;
    options.skin = parser.value(skin);
    options.screenshot = parser.value(screenshot);
    if (parser.isSet(screenshot) && options.screenshot.isEmpty())
        quit(QStringLiteral("--screenshot needs a file name"), Failed);
    if (parser.isSet(quitAfter))
        options.quitAfter = readSeconds(parser.value(quitAfter));
    for (const QString& file : parser.positionalArguments())
        options.files << QFileInfo(file).absoluteFilePath();
    return options;
}

void requireSkin(const QString& skin)
{
    const QStringList skins = PlayerWindow::skins();
    if (!skins.contains(skin))
        quit(QStringLiteral("no skin named \"%1\" in %2pics (there: %3)")
                 .arg(skin, QPEApplication::qpeDir(), skins.join(QStringLiteral(", "))),
             NoSkin);
}

void takeScreenshot(PlayerWindow& window, const QString& file)
{
    auto* screenshot = new Screenshot(&window, file);
    QObject::connect(screenshot, &Screenshot::taken, &window, [file](bool written) {
        if (!written)
            complain(QStringLiteral("cannot write %1").arg(file));
        QCoreApplication::exit(written ? Done : Failed);
    });
}

} // namespace

int main(int argc, char** argv)
{
    mediabackend::choose();
    installMessageFilter();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("skinplayer"));
    QApplication::setApplicationVersion(QStringLiteral(SKINPLAYER_VERSION));
    const Options options = readOptions(application);

    requireSkin(options.skin);
    PlayerWindow window(options.skin);
    if (!window.isSkinned()) {
        complain(QStringLiteral("the skin \"%1\" has no player panel").arg(options.skin));
        return NoSkin;
    }
    const QString problem = mediabackend::problem();
    if (!problem.isEmpty()) {
        complain(problem);
        return Failed;
    }
    if (!Playback::hasSoundDevice())
        complain(QStringLiteral("no sound device found, playing silently"));

    if (!options.screenshot.isEmpty())
        takeScreenshot(window, options.screenshot);
    if (options.quitAfter >= 0) {
        const auto delay = std::chrono::milliseconds(qRound64(1000 * options.quitAfter));
        QTimer::singleShot(delay, &application, &QCoreApplication::quit);
    }
    window.show();
    const QString shippedSound = QPEApplication::qpeDir() + QStringLiteral("sounds/night_walk.ogg");
    window.playback()->open(options.files.isEmpty() ? QStringList{shippedSound} : options.files);
    return QApplication::exec();
}
