#include "player/mediabackend.h"
#include "player/messagefilter.h"
#include "player/ordersettings.h"
#include "player/playerwindow.h"
#include "player/playlist/playlistkeeper.h"
#include "player/screenshot.h"
#include "qtopia/qpeapplication.h"
#include "skinbase/skinbase.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QTimer>
#include <QUrl>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace
{

enum ExitCode { Done = 0, Failed = 1, NoSkin = 2 };

const QString playingScreen = QStringLiteral("playing");
const QString playlistScreen = QStringLiteral("playlist");
const QString detailsScreen = QStringLiteral("details");

struct Options {
    QString skin;
    QString screenshot;
    // Seconds, negative where the program goes on until it is closed.
    double quitAfter = -1;
    // Milliseconds.
    qint64 position = 0;
    QString screen;
    bool keepsPlaylist = true;
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

// Of a path, or of an address as other programs hand it over.
QString pathOf(const QString& argument)
{
    const QUrl address(argument);
    return QFileInfo(address.isLocalFile() ? address.toLocalFile() : argument).absoluteFilePath();
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
    const QCommandLineOption position(QStringLiteral("position"),
                                      QStringLiteral("Start the first file at <seconds>, and take a screenshot there."),
                                      QStringLiteral("seconds"));
    const QCommandLineOption screen(QStringLiteral("screen"),
                                    QStringLiteral("Start with the screen <name>: playing, playlist or details."),
                                    QStringLiteral("name"), playingScreen);
    const QCommandLineOption noKept(QStringLiteral("no-kept-playlist"),
                                    QStringLiteral("Leave the playlist of the last time alone, and keep none."));
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Plays sound files in a window drawn from pictures.\n"
                       "\n"
                       "Keys:\n"
                       "  Left, Right, Return      move among the buttons, press one\n"
                       "  Page Up, Shift+Left      seek 10 seconds backwards\n"
                       "  Page Down, Shift+Right   seek 10 seconds forwards\n"
                       "  Up, Down                 louder, softer\n"
                       "  M                        mute\n"
                       "  S, R                     shuffle, repeat\n"
                       "  B, Insert                set a bookmark, up to ten in a file\n"
                       "  Delete, Backspace        remove the nearest bookmark, with Shift all of the file\n"
                       "  P                        playlist\n"
                       "  I                        details of the file: tags, cover, lyrics\n"
                       "  Escape                   quit\n"
                       "\n"
                       "Keys in the playlist:\n"
                       "  Up, Down, Page Up, Page Down, Home, End   move, with Shift select\n"
                       "  Space, Ctrl+A                             select or not, select all\n"
                       "  letters                                   go to the next name that begins so\n"
                       "  / or Ctrl+F                               filter; Escape ends it\n"
                       "  Return                                    play\n"
                       "  Insert, Delete                            add, remove what is selected\n"
                       "  Ctrl+S                                    save as M3U\n"
                       "  Left, Right                               to the buttons, Up leads back\n"
                       "  Escape                                    return\n"
                       "\n"
                       "Keys in the details:\n"
                       "  Up, Down, Page Up, Page Down, Home, End   scroll\n"
                       "  Escape, I                                 return"));
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addOptions({skin, screenshot, quitAfter, position, screen, noKept});
    parser.addPositionalArgument(QStringLiteral("files"),
                                 QStringLiteral("Files, folders and M3U playlists to play one after the other\n"
                                                "(default: the playlist of the last time, else a sound that ships)."),
                                 QStringLiteral("[files...]"));
    parser.process(application);

    Options options;
    options.skin = parser.value(skin);
    options.screenshot = parser.value(screenshot);
    if (parser.isSet(screenshot) && options.screenshot.isEmpty())
        quit(QStringLiteral("--screenshot needs a file name"), Failed);
    if (parser.isSet(quitAfter))
        options.quitAfter = readSeconds(parser.value(quitAfter));
    if (parser.isSet(position))
        options.position = qRound64(1000 * readSeconds(parser.value(position)));
    options.screen = parser.value(screen);
    const QStringList screens{playingScreen, playlistScreen, detailsScreen};
    if (!screens.contains(options.screen))
        quit(QStringLiteral("no screen named \"%1\" (there: %2)")
                 .arg(options.screen, screens.join(QStringLiteral(", "))),
             Failed);
    options.keepsPlaylist = !parser.isSet(noKept);
    for (const QString& file : parser.positionalArguments())
        options.files << pathOf(file);
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
    QObject::connect(screenshot, &Screenshot::taken, &window, [file](const QString& problem) {
        if (!problem.isEmpty())
            complain(QStringLiteral("cannot write %1: %2").arg(file, problem));
        QCoreApplication::exit(problem.isEmpty() ? Done : Failed);
    });
}

// When everything is read, and playback has come to the position or cannot come there any more.
void takeScreenshotAt(qint64 position, PlayerWindow& window, const QString& file)
{
    auto* waiting = new QObject(&window);
    const auto check = [waiting, position, &window, file] {
        const Playback* playback = window.playback();
        if (window.loader()->isLoading() || (playback->isPlaying() && playback->position() < position))
            return;
        window.loader()->disconnect(waiting);
        window.playback()->disconnect(waiting);
        waiting->deleteLater();
        takeScreenshot(window, file);
        // The picture follows the next painting.
        window.currentScreen()->panel()->update();
    };
    QObject::connect(window.loader(), &PlaylistLoader::progressed, waiting, check);
    QObject::connect(window.playback(), &Playback::positionChanged, waiting, check);
    QObject::connect(window.playback(), &Playback::playingChanged, waiting, check);
}

void startPlaying(const Options& options, PlayerWindow& window, PlaylistKeeper* keeper)
{
    const QString shippedSound = QPEApplication::qpeDir() + QStringLiteral("sounds/night_walk.ogg");
    if (keeper)
        keeper->setUnkeptFile(shippedSound);
    if (!options.files.isEmpty())
        window.loader()->open(options.files, options.position);
    else if (!keeper || !keeper->restore())
        window.loader()->open({shippedSound}, options.position);
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
    const OrderSettings order(window.playback(), OrderSettings::standardFile());
    if (!Playback::hasSoundDevice())
        complain(QStringLiteral("no sound device found, playing silently"));

    if (options.screen == detailsScreen)
        window.showDetails();
    else if (options.screen == playlistScreen)
        window.showPlaylist();
    // Tags and lengths are known by the time that the file plays.
    if (!options.screenshot.isEmpty())
        takeScreenshotAt(std::max<qint64>(options.position, 1), window, options.screenshot);
    if (options.quitAfter >= 0) {
        const auto delay = std::chrono::milliseconds(qRound64(1000 * options.quitAfter));
        QTimer::singleShot(delay, &application, &QCoreApplication::quit);
    }
    std::unique_ptr<PlaylistKeeper> keeper;
    if (options.keepsPlaylist) {
        const QString directory = PlaylistKeeper::standardDirectory();
        keeper = std::make_unique<PlaylistKeeper>(window.playback(), window.loader(), directory);
        QObject::connect(keeper.get(), &PlaylistKeeper::failed, &window, [&window](const QString& message) {
            complain(message);
            window.setNotice(message);
        });
    }
    window.show();
    startPlaying(options, window, keeper.get());
    return QApplication::exec();
}
